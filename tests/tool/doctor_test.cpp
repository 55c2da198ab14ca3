// The doctor: what it makes of a machine's facts, and the command on this machine.
#include "support/support.h"
#include "tool/doctor.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>

namespace ostrand::tool {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

Answer says (const std::string& text) { return {Answer::End::ended, 0, text, ""}; }

/// A machine where nothing is wrong.
MachineFacts healthy () {
    MachineFacts facts;
    facts.version = "ostrand-tool 0.1.0, commit abc\n";
    facts.editor = says ("ostrand 0.1.0, commit abc\n");
    facts.display = says ("screen 1920x1080\nscale 1.5\nrenderer llvmpipe\nopengl 4.5 Mesa\n"
                          "font DejaVu Sans\nfont Liberation Sans\n");
    facts.ranks = says ("ostrand-mpi 0.1.0, commit abc\n");
    facts.has_mpirun = true;
    facts.home = "/home/ada";
    return facts;
}

/// Runs what stands behind it on a display of its own.
std::string with_display () { return testing::source_path ("scripts/with-display.sh").string (); }

int faults_of (const MachineFacts& facts) {
    int count = 0;
    for (const Finding& finding : examine (facts)) count += finding.fine ? 0 : 1;
    return count;
}

std::string text_of (const MachineFacts& facts) { return doctor_text (examine (facts)); }

TEST (doctor, is_content_with_a_healthy_machine) {
    EXPECT_EQ (faults_of (healthy ()), 0);
    const std::string text = text_of (healthy ());
    EXPECT_THAT (text, HasSubstr ("1920x1080 at scale 1.5\n"));
    EXPECT_THAT (text, HasSubstr ("4.5 Mesa, drawn by llvmpipe\n"));
    EXPECT_THAT (text, HasSubstr ("2 families, Liberation Sans for labels\n"));
    EXPECT_THAT (text, ::testing::EndsWith ("All is fine.\n"));
    EXPECT_THAT (text, Not (HasSubstr ("apt install")));
}

TEST (doctor, names_the_package_of_a_missing_editor_and_asks_no_display_of_it) {
    MachineFacts facts = healthy ();
    facts.editor = {};
    facts.display = {};
    EXPECT_EQ (faults_of (facts), 1);
    EXPECT_THAT (text_of (facts), HasSubstr ("To install:  apt install ostrand\n"));
}

TEST (doctor, names_the_package_of_a_missing_library) {
    MachineFacts facts = healthy ();
    facts.editor = {Answer::End::ended, 127, "",
                    "/usr/bin/ostrand: error while loading shared libraries: libGLU.so.1: cannot "
                    "open shared object file: No such file or directory\n"};
    EXPECT_THAT (text_of (facts), HasSubstr ("ostrand needs libGLU.so.1\n"));
    EXPECT_THAT (text_of (facts), HasSubstr ("apt install libglu1-mesa\n"));
    EXPECT_THAT (text_of (facts), HasSubstr ("One thing is wrong.\n"));
}

TEST (doctor, tells_of_a_display_without_opengl_or_with_a_driver_that_breaks) {
    MachineFacts facts = healthy ();
    facts.display = says ("screen 800x600\nscale 1\nfont Arial\n");
    EXPECT_EQ (faults_of (facts), 1);
    EXPECT_THAT (text_of (facts), HasSubstr ("apt install libgl1-mesa-dri\n"));
    facts.display = {Answer::End::ended, 128 + 11, "", ""};
    EXPECT_EQ (faults_of (facts), 1);
    EXPECT_THAT (text_of (facts), HasSubstr ("ostrand was ended by signal 11\n"));
    facts.display = {Answer::End::no_answer, 137, "", ""};
    EXPECT_EQ (faults_of (facts), 1);
    EXPECT_THAT (text_of (facts), HasSubstr ("ostrand does not answer\n"));
}

TEST (doctor, tells_of_missing_fonts_and_display) {
    MachineFacts facts = healthy ();
    facts.display = says ("screen 800x600\nscale 1\nrenderer x\nopengl 1\nfont Wingdings\n");
    EXPECT_EQ (faults_of (facts), 1);
    EXPECT_THAT (text_of (facts), HasSubstr ("apt install fonts-liberation\n"));
    facts.display = {Answer::End::ended, 1, "", "There is no display. Is DISPLAY set?\n"};
    EXPECT_EQ (faults_of (facts), 1);
    EXPECT_THAT (text_of (facts), HasSubstr ("There is no display. Is DISPLAY set?\n"));
}

TEST (doctor, tells_of_the_home) {
    MachineFacts facts = healthy ();
    facts.home_fault = "Read-only file system";
    EXPECT_EQ (faults_of (facts), 1);
    EXPECT_THAT (text_of (facts), HasSubstr ("/home/ada cannot be written: Read-only file system"));
    facts.home.clear ();
    EXPECT_THAT (text_of (facts), HasSubstr ("HOME is not set"));
}

TEST (doctor, lists_locks_and_what_was_left_behind_which_are_no_faults) {
    MachineFacts facts = healthy ();
    facts.histories = {{".kill_stack_0.dat", true}, {".kill_stack_3.dat", false}};
    EXPECT_EQ (faults_of (facts), 0);
    EXPECT_THAT (text_of (facts), HasSubstr ("held by editors that run: .kill_stack_0.dat\n"));
    EXPECT_THAT (text_of (facts), HasSubstr ("--restore"));
    EXPECT_THAT (text_of (facts), HasSubstr (": .kill_stack_3.dat\n"));
}

TEST (doctor, another_build_of_the_editor_is_a_fault_and_missing_ranks_are_none) {
    MachineFacts facts = healthy ();
    facts.ranks = {};
    EXPECT_EQ (faults_of (facts), 0);
    EXPECT_THAT (text_of (facts), HasSubstr ("package ostrand-mpi"));
    facts.editor = says ("ostrand 0.1.0, commit def\n");
    EXPECT_EQ (faults_of (facts), 1);
    facts = healthy ();
    facts.has_mpirun = false;
    EXPECT_THAT (text_of (facts), HasSubstr ("apt install openmpi-bin\n"));
}

TEST (doctor, knows_the_package_of_every_library_that_the_programs_name) {
    const auto done = testing::run_program (
        {"sh", "-c",
         "LC_ALL=C readelf -d \"$@\" | sed -n 's/.*Shared library: \\[\\(.*\\)\\]/\\1/p' | sort -u",
         "libraries", OSTRAND_BUILD_DIR "/ostrand", OSTRAND_BUILD_DIR "/ostrand-tool"});
    if (done.out.empty ()) GTEST_SKIP () << "there is no readelf";
    std::istringstream lines (done.out);
    int known = 0;
    for (std::string library; std::getline (lines, library);) {
        // Those that every program has, and those of sanitizers.
        const bool everywhere = std::ranges::any_of (
            std::initializer_list<std::string_view>{"libc.", "libm.", "libstdc++.", "libgcc_s.",
                                                    "ld-linux", "libasan.", "libubsan.", "libtsan.",
                                                    "libdl.", "libpthread."},
            [&] (std::string_view begin) { return library.starts_with (begin); });
        if (everywhere) continue;
        EXPECT_NE (package_of_library (library), "") << library;
        ++known;
    }
    EXPECT_GE (known, 10);
    EXPECT_EQ (package_of_library ("libnobody.so.1"), "");
}

TEST (doctor, is_content_on_a_display_of_this_machine) {
    const testing::TemporaryFolder home;
    const auto done =
        // What the library of ranks leaves to the system at its end is not ours to mend.
        testing::run_program ({with_display (), "env", "HOME=" + home.path ().string (),
                               "ASAN_OPTIONS=detect_leaks=0", OSTRAND_BUILD_DIR "/ostrand-tool",
                               "doctor"});
    EXPECT_EQ (done.status, 0) << done.out;
    EXPECT_EQ (done.error, "");
    EXPECT_THAT (done.out, ::testing::EndsWith ("All is fine.\n"));
    EXPECT_TRUE (home.names ().empty ()); // it leaves nothing
}

TEST (doctor, without_a_display_the_status_is_1) {
    const testing::TemporaryFolder home;
    const auto done = testing::run_program ({"env", "-u", "DISPLAY", "-u", "WAYLAND_DISPLAY",
                                             "HOME=" + home.path ().string (),
                                             OSTRAND_BUILD_DIR "/ostrand-tool", "doctor"});
    EXPECT_EQ (done.status, 1);
    EXPECT_THAT (done.out, HasSubstr ("There is no display"));
}

TEST (doctor, a_home_that_is_no_folder_is_told) {
    const auto done = testing::run_program (
        {with_display (), "env", "HOME=/dev/null", OSTRAND_BUILD_DIR "/ostrand-tool", "doctor"});
    EXPECT_EQ (done.status, 1);
    EXPECT_THAT (done.out, HasSubstr ("/dev/null cannot be written: "));
}

} // namespace
} // namespace ostrand::tool
