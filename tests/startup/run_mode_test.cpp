// Which of the three programs a command line asks for.
#include "base/path.h"
#include "base/version.h"
#include "startup/run_mode.h"
#include "support/support.h"
#include "support/virtual_display.h"

#include <cstdlib>
#include <gtest/gtest.h>

namespace ostrand::startup {
namespace {

RunMode mode (std::vector<const char*> words) { return choose_mode (words); }

TEST (run_mode, no_argument_is_the_editor) { EXPECT_EQ (mode ({}), RunMode::editor); }

TEST (run_mode, only_the_first_word_chooses_a_mode) {
    EXPECT_EQ (mode ({"-a", "model"}), RunMode::simulator);
    EXPECT_EQ (mode ({"-v"}), RunMode::viewer);
    EXPECT_EQ (mode ({"file.net", "-a", "model"}), RunMode::editor);
    EXPECT_EQ (mode ({"-vx"}), RunMode::editor);
    EXPECT_EQ (mode ({"-ab"}), RunMode::editor);
    EXPECT_EQ (mode ({"-x", "file"}), RunMode::editor);
}

TEST (run_mode, a_first_word_asks_for_the_dialog_or_the_display) {
    EXPECT_EQ (mode ({"--choose-result"}), RunMode::choose_result);
    EXPECT_EQ (mode ({"--show-display"}), RunMode::show_display);
    EXPECT_EQ (mode ({"file.net", "--choose-result"}), RunMode::editor);
    EXPECT_EQ (mode ({"--show-displays"}), RunMode::editor);
}

TEST (run_mode, the_display_tells_its_size_who_draws_and_its_fonts) {
    const testing::VirtualDisplay display;
    const auto done = testing::run_program ({"ostrand", "--show-display"});
    EXPECT_EQ (done.status, 0);
    EXPECT_EQ (done.out.substr (0, 7), "screen ");
    EXPECT_NE (done.out.find ("\nrenderer "), std::string::npos) << done.out;
    EXPECT_NE (done.out.find ("\nopengl "), std::string::npos) << done.out;
    EXPECT_NE (done.out.find ("\nfont "), std::string::npos) << done.out;
}

TEST (run_mode, without_a_display_there_is_a_word_and_status_1) {
    const std::vector<std::string> nowhere{"env", "-u", "DISPLAY", "-u", "WAYLAND_DISPLAY"};
    for (const char* const word : {"--choose-result", "--show-display"}) {
        std::vector<std::string> words = nowhere;
        words.push_back ((std::filesystem::path (OSTRAND_BUILD_DIR) / "ostrand").string ());
        words.emplace_back (word);
        const auto done = testing::run_program (words);
        EXPECT_EQ (done.status, 1) << word;
        EXPECT_NE (done.error.find ("no display"), std::string::npos) << done.error;
    }
}

TEST (run_mode, a_chosen_result_is_asked_for_in_a_dialog) {
    const testing::VirtualDisplay display;
    testing::RunningProgram program ({"ostrand", "--choose-result"});
    display.place_window ("Open a Result");
    EXPECT_TRUE (program.running ());
}

TEST (run_mode, a_word_that_begins_with_h_asks_for_the_usage) {
    EXPECT_EQ (mode ({"-h"}), RunMode::usage);
    EXPECT_EQ (mode ({"file", "-h"}), RunMode::usage);
    EXPECT_EQ (mode ({"-help"}), RunMode::usage);
    EXPECT_EQ (mode ({"-hxyz"}), RunMode::usage);
    EXPECT_EQ (mode ({"-a", "-h"}), RunMode::simulator);
    EXPECT_EQ (mode ({"-v", "-h"}), RunMode::viewer);
}

TEST (run_mode, long_words_ask_for_usage_and_version) {
    EXPECT_EQ (mode ({"--help"}), RunMode::usage);
    EXPECT_EQ (mode ({"file", "--help"}), RunMode::usage);
    EXPECT_EQ (mode ({"--version"}), RunMode::version);
    EXPECT_EQ (mode ({"file", "--version"}), RunMode::version);
    EXPECT_EQ (mode ({"--version", "-h"}), RunMode::version); // the first one counts
    EXPECT_EQ (mode ({"--helpless"}), RunMode::editor);
    EXPECT_EQ (mode ({"--versions"}), RunMode::editor);
    EXPECT_EQ (mode ({"-a", "--version"}), RunMode::simulator);
    EXPECT_EQ (mode ({"-v", "--help"}), RunMode::viewer);
}

TEST (run_mode, the_version_is_one_line_on_standard_output) {
    const auto done = testing::run_program ({"ostrand", "--version"});
    EXPECT_EQ (done.status, 0);
    EXPECT_EQ (done.error, "");
    EXPECT_EQ (done.out.substr (0, 8), "ostrand ");
    EXPECT_EQ (version_line ("ostrand", "0123456789ab").substr (0, 8), "ostrand ");
    EXPECT_TRUE (version_line ("x", "abc").ends_with (", commit abc\n"));
}

/// What the build writes about the commit of a tree.
std::string commit_file (const std::filesystem::path& tree, const testing::TemporaryFolder& out) {
    const auto done = testing::run_program (
        {"cmake", "-DTREE=" + tree.string (), "-DFILE=" + (out / "commit.cpp").string (), "-P",
         testing::source_path ("cmake/WriteCommit.cmake").string ()});
    EXPECT_EQ (done.status, 0) << done.error;
    return testing::file_text (out / "commit.cpp");
}

TEST (commit, outside_a_git_tree_is_unknown) {
    const testing::TemporaryFolder folder;
    EXPECT_NE (commit_file (folder.path (), folder).find ("return \"unknown\";"),
               std::string::npos);
}

TEST (commit, of_a_git_tree_is_found_and_written_only_when_it_changes) {
    const testing::TemporaryFolder tree;
    const testing::TemporaryFolder out;
    const auto git = [&] (const std::string& words) {
        const auto done = testing::run_program (
            {"bash", "-c", "git -c user.name=a -c user.email=a@b " + words}, tree.path ());
        EXPECT_EQ (done.status, 0) << done.error;
        return done.out;
    };
    git ("init -q");
    tree.write ("f", "text");
    git ("add f");
    git ("commit -q -m first");
    const std::string first = git ("rev-parse HEAD").substr (0, 12);
    EXPECT_NE (commit_file (tree.path (), out).find ("\"" + first + "\""), std::string::npos);
    const auto written = std::filesystem::last_write_time (out / "commit.cpp");
    commit_file (tree.path (), out);
    EXPECT_EQ (std::filesystem::last_write_time (out / "commit.cpp"), written);
    tree.write ("f", "changed");
    EXPECT_NE (commit_file (tree.path (), out).find ("\"" + first + "-modified\""),
               std::string::npos);
    git ("commit -q -a -m second");
    EXPECT_EQ (commit_file (tree.path (), out).find (first), std::string::npos);
}

TEST (run_mode, the_usage_goes_to_standard_error_with_status_0) {
    const std::string name = std::string (OSTRAND_BUILD_DIR) + "/ostrand";
    for (const std::vector<std::string>& words :
         {std::vector<std::string>{"-h"}, {"file", "-h"}, {"-help"}, {"--help"}}) {
        std::vector<std::string> line{"ostrand"};
        line.insert (line.end (), words.begin (), words.end ());
        const auto done = testing::run_program (line);
        EXPECT_EQ (done.status, 0);
        EXPECT_EQ (done.out, "");
        EXPECT_EQ (done.error, general_usage (name));
    }
    EXPECT_EQ (
        general_usage ("X"),
        "Usage:\n 1. to run as Stochora:\tX -a model\n\t\t\t    [-v(erbose)]\n\t\t\t    "
        "[-o(ut) output-file]\n\t\t\t    [-d(etrministic)]\n\t\t\t    [-s(equential)]\n\t\t\t"
        "    [-npt (number of cores)]\n\n 2. to run as Trivex:\tX -v\n\t\t\t    [- / "
        "data_file]\n\t\t\t    [-d(elete)]\n\t\t\t    [-r(everse video)]\n\n    . if no data "
        "file is specified 'data.gz' is used\n    . '-' specifies the standard input\n    . "
        "gzipped input data files are welcome\n    . '-d' removes the data file after "
        "loading it\n\n 3. otherwise the editor is launched with one tab per file:\n        "
        "X [file_1 [file_2 ... file_N]]\n    The files arguments are not mandatory: without "
        "argument\n    an empty tab is created\n");
}

TEST (run_mode, the_viewer_answers_h_with_its_own_usage_line) {
    const auto done = testing::run_program ({"ostrand", "-v", "-h"});
    EXPECT_EQ (done.status, 1);
    EXPECT_EQ (done.error, "Usage: Trivex [- / data_file] [-d][-r]\n");
}

/// Puts a variable of the environment and the folder back.
struct Surroundings {
    Surroundings () : folder (std::filesystem::current_path ()) {
        for (const char* name : {"USERPROFILE", "HOME"}) {
            const char* value = std::getenv (name);
            values.emplace_back (name, value == nullptr ? "" : value);
        }
    }
    ~Surroundings () {
        std::filesystem::current_path (folder);
        for (const auto& [name, value] : values) {
            if (value.empty ()) {
                unsetenv (name.c_str ());
            } else {
                setenv (name.c_str (), value.c_str (), 1);
            }
        }
    }
    std::filesystem::path folder;
    std::vector<std::pair<std::string, std::string>> values;
};

TEST (run_mode, the_editor_notes_where_it_started_and_moves_to_the_home) {
    const Surroundings surroundings;
    const testing::TemporaryFolder home;
    setenv ("USERPROFILE", home.path ().c_str (), 1);
    const EditorStart start = prepare_editor ("build/ostrand");
    EXPECT_EQ (start.starting_directory, surroundings.folder);
    EXPECT_TRUE (start.executable.is_absolute ());
    EXPECT_TRUE (std::filesystem::exists (start.executable));
    EXPECT_EQ (std::filesystem::current_path (), std::filesystem::canonical (home.path ()));
    EXPECT_EQ (current_directory (), std::filesystem::current_path ().string ());
}

TEST (run_mode, userprofile_unset_takes_the_home_and_without_a_home_the_start_stays) {
    const Surroundings surroundings;
    const testing::TemporaryFolder home;
    unsetenv ("USERPROFILE");
    setenv ("HOME", home.path ().c_str (), 1);
    prepare_editor ("ostrand");
    EXPECT_EQ (std::filesystem::current_path (), std::filesystem::canonical (home.path ()));
    std::filesystem::current_path (surroundings.folder);
    unsetenv ("HOME");
    prepare_editor ("ostrand");
    EXPECT_EQ (std::filesystem::current_path (), surroundings.folder);
}

} // namespace
} // namespace ostrand::startup
