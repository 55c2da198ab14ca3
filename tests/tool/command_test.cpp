// The companion's command line and the texts made from its rows.
#include "support/support.h"
#include "tool/command.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace ostrand::tool {
namespace {

using testing::run_program;

TEST (command, no_word_is_wrong_usage) {
    const auto result = run_program ({"ostrand-tool"});
    EXPECT_EQ (result.status, 2);
    EXPECT_EQ (result.out, "");
    EXPECT_EQ (result.error, general_help ());
}

TEST (command, help_goes_to_standard_output) {
    const auto result = run_program ({"ostrand-tool", "--help"});
    EXPECT_EQ (result.status, 0);
    EXPECT_EQ (result.out, general_help ());
    for (const ToolCommand* command : tool_commands ()) {
        const auto help = run_program ({"ostrand-tool", command->name, "--help"});
        EXPECT_EQ (help.status, 0);
        EXPECT_EQ (help.out, command_help (*command));
    }
}

TEST (command, the_version_tells_name_number_and_commit) {
    for (const std::string program : {"ostrand", "ostrand-tool"}) {
        const auto result = run_program ({program, "--version"});
        EXPECT_EQ (result.status, 0);
        EXPECT_EQ (result.error, "");
        EXPECT_THAT (result.out,
                     ::testing::MatchesRegex (program + " [0-9]+\\.[0-9]+\\.[0-9]+, commit "
                                                        "(unknown|[0-9a-f]+(-modified)?)\n"));
    }
    EXPECT_EQ (run_program ({"ostrand-tool", "convert", "--version"}).status, 2);
    const std::string program = std::string (OSTRAND_BUILD_DIR) + "/ostrand-tool";
    EXPECT_EQ (run_program ({"bash", "-c", "exec \"$0\" --version >/dev/full", program}).status, 1);
}

TEST (command, results_that_cannot_be_written_are_a_failure) {
    const std::string program = std::string (OSTRAND_BUILD_DIR) + "/ostrand-tool";
    const auto full = run_program ({"bash", "-c", "exec \"$0\" man >/dev/full", program});
    EXPECT_EQ (full.status, 1);
    EXPECT_EQ (full.error, "Cannot write standard output: No space left on device\n");
    const auto closed = run_program ({"bash", "-c", "exec \"$0\" man >&-", program});
    EXPECT_EQ (closed.status, 1);
    EXPECT_EQ (closed.error, "Cannot write standard output: Bad file descriptor\n");
}

TEST (command, unknown_commands_and_options_and_counts_of_words_are_wrong_usage) {
    EXPECT_EQ (run_program ({"ostrand-tool", "nothing"}).status, 2);
    EXPECT_EQ (run_program ({"ostrand-tool", "man", "--nothing"}).status, 2);
    EXPECT_EQ (run_program ({"ostrand-tool", "man", "a", "b"}).status, 2);
    EXPECT_EQ (run_program ({"ostrand-tool", "man", "nothing"}).status, 1);
}

TEST (command, every_command_stands_in_completion_and_manual) {
    const std::string completion = bash_completion ();
    const std::string page = man_page_tool ();
    for (const ToolCommand* command : tool_commands ()) {
        EXPECT_NE (completion.find (std::string (" ") + command->name), std::string::npos);
        EXPECT_NE (page.find (std::string (".SS ") + command->name), std::string::npos);
    }
}

TEST (command, completion_is_a_script_that_bash_takes) {
    testing::TemporaryFolder folder;
    const std::string script = folder.write ("completion", bash_completion ());
    const auto result =
        run_program ({"bash", "-c",
                      "source \"$1\"; COMP_WORDS=(ostrand-tool comp); COMP_CWORD=1; _ostrand_tool; "
                      "echo \"${COMPREPLY[@]}\"",
                      "bash", script});
    EXPECT_EQ (result.error, "");
    EXPECT_EQ (result.out, "completion\n");
}

} // namespace
} // namespace ostrand::tool
