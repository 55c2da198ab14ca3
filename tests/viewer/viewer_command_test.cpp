// The viewer's command line, as far as no window opens.
#include "support/support.h"

#include <cstdlib>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace ostrand::viewer {
namespace {

using testing::ProgramResult;
using testing::run_program;

constexpr const char* usage = "Usage: Trivex [- / data_file] [-d][-r]\n";
constexpr const char* result = "1 1 2\na\nff0000\n0\n1\n2\n";
constexpr const char* no_display = "Cannot open a window: there is no display\n";

struct viewer_command : ::testing::Test {
    void SetUp () override {
        unsetenv ("DISPLAY");
        unsetenv ("WAYLAND_DISPLAY");
        folder.write ("data", result);
        folder.write ("bad", "nonsense\n");
    }
    ProgramResult run (std::vector<std::string> words, std::string_view input = {}) {
        words.insert (words.begin (), {"ostrand", "-v"});
        return run_program (words, folder.path (), input);
    }
    void expect (const ProgramResult& done, const std::string& error) {
        EXPECT_EQ (done.status, 1);
        EXPECT_EQ (done.error, error);
        EXPECT_EQ (done.out, "");
    }
    testing::TemporaryFolder folder;
};

TEST_F (viewer_command, no_word_is_wrong_usage) { expect (run ({}), usage); }

TEST_F (viewer_command, delete_without_a_file_is_wrong_usage) {
    expect (run ({"-d"}), usage);
    expect (run ({"-d", "-r"}), usage);
}

TEST_F (viewer_command, a_file_behind_standard_input_is_wrong_usage) {
    expect (run ({"-", "data"}), usage);
}

TEST_F (viewer_command, unknown_words_are_wrong_usage) {
    for (const char* word : {"-x", "-h", "--", "-v", "-Delete"})
        expect (run ({"data", word}), usage);
}

TEST_F (viewer_command, files_that_cannot_be_opened) {
    expect (run ({"nothing"}), "Cannot open 'nothing'\n");
    expect (run ({"data", "nothing"}), "Cannot open 'nothing'\n");
    expect (run ({"."}), "Cannot open '.'\n");
}

TEST_F (viewer_command, a_bad_file_is_told_and_no_window_opens) {
    expect (run ({"bad"}), "Format error\n");
    folder.write ("short", "1 1 3\na\nff\n0\n1\n2\n");
    expect (run ({"short", "-d"}), "data error: <0, 0, 2>\n");
    EXPECT_TRUE (std::filesystem::exists (folder / "short"));
}

TEST_F (viewer_command, endless_data_beyond_memory_end_with_a_message) {
#ifndef __SANITIZE_ADDRESS__ // it takes its address space in advance
    const auto names = run_program (
        {"bash", "-c", "ulimit -v 600000; { echo '1 4000000000 1'; yes ff; } | \"$0\" -v -",
         std::string (OSTRAND_BUILD_DIR) + "/ostrand"},
        folder.path ());
    EXPECT_EQ (names.status, 1);
    EXPECT_THAT (names.error, ::testing::MatchesRegex ("Colour-name error: c = [0-9]+\n"
                                                       "|data error: <0, 0, 0>\n"));
#endif
}

TEST_F (viewer_command, the_second_file_is_shown) {
    expect (run ({"data", "bad"}), "Format error\n");
    expect (run ({"bad", "data"}), no_display);
}

TEST_F (viewer_command, standard_input_is_read_behind_a_file_word_too) {
    expect (run ({"bad", "-"}, result), no_display);
    expect (run ({"data", "-"}, "nonsense\n"), "Format error\n");
    expect (run ({"-"}, "nonsense\n"), "Format error\n");
}

TEST_F (viewer_command, without_a_display_the_file_is_kept) {
    expect (run ({"data", "-d"}), no_display);
    EXPECT_TRUE (std::filesystem::exists (folder / "data"));
}

} // namespace
} // namespace ostrand::viewer
