// The companion's command line and the texts made from its rows.
#include "support/support.h"
#include "tool/command.h"
#include "tool/mode_switches.h"

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

TEST (command, every_command_stands_in_the_completion_of_each_shell) {
    for (const std::string& script : {bash_completion (), zsh_completion (), fish_completion ()}) {
        for (const ToolCommand* command : tool_commands ()) {
            EXPECT_NE (script.find (command->name), std::string::npos) << command->name;
            for (const ToolOption& option : command->options) {
                const std::string_view name = option.name;
                EXPECT_NE (script.find (name.substr (name.find_first_not_of ('-'))),
                           std::string::npos)
                    << name;
            }
        }
    }
}

TEST (command, fish_completes_commands_options_and_words) {
    if (run_program ({"sh", "-c", "command -v fish"}).status != 0)
        GTEST_SKIP () << "there is no fish";
    testing::TemporaryFolder folder;
    const std::string script = folder.write ("completion.fish", fish_completion ());
    const auto complete = [&] (const std::string& line) {
        const auto done = run_program (
            {"fish", "--no-config", "-c", "source " + script + "; complete -C '" + line + "'"},
            folder.path ());
        EXPECT_EQ (done.error, "");
        return done.out;
    };
    EXPECT_EQ (complete ("ostrand-tool comp"),
               "completion\tprint the completion script of a shell (bash), of both programs\n");
    EXPECT_EQ (complete ("ostrand-tool convert --dar"), "--dark\tpaint on a dark ground\n");
    EXPECT_EQ (complete ("ostrand-tool completion z"), "zsh\n");
    EXPECT_EQ (complete ("ostrand --rest"), "--restore\tedit; what was left behind is opened\n");
    EXPECT_THAT (complete ("ostrand -a -det"), ::testing::HasSubstr ("-deterministic\t"));
}

TEST (command, zsh_takes_its_script) {
    if (run_program ({"sh", "-c", "command -v zsh"}).status != 0)
        GTEST_SKIP () << "there is no zsh";
    testing::TemporaryFolder folder;
    const auto result = run_program ({"zsh", "-f", "-n", folder.write ("_x", zsh_completion ())});
    EXPECT_EQ (result.status, 0);
    EXPECT_EQ (result.error, "");
}

TEST (command, completion_prints_the_script_of_the_shell_that_is_named) {
    EXPECT_EQ (run_program ({"ostrand-tool", "completion"}).out, bash_completion ());
    EXPECT_EQ (run_program ({"ostrand-tool", "completion", "bash"}).out, bash_completion ());
    EXPECT_EQ (run_program ({"ostrand-tool", "completion", "zsh"}).out, zsh_completion ());
    EXPECT_EQ (run_program ({"ostrand-tool", "completion", "fish"}).out, fish_completion ());
    const auto wrong = run_program ({"ostrand-tool", "completion", "other"});
    EXPECT_EQ (wrong.status, 1);
    EXPECT_EQ (wrong.error, "ostrand-tool completion: no script for 'other'\n");
}

/// A name as a man page writes it.
std::string in_page (std::string_view name) {
    std::string out;
    for (const char c : name) {
        if (c == '-') out += '\\';
        out += c;
    }
    return out;
}

TEST (command, the_man_page_tells_every_command_and_option) {
    const std::string page = testing::source_file ("packaging/man/ostrand-tool.1");
    for (const ToolCommand* command : tool_commands ()) {
        const std::size_t begin = page.find (".SS " + in_page (command->name) + ' ');
        ASSERT_NE (begin, std::string::npos) << command->name;
        const std::string part = page.substr (begin, page.find ("\n.S", begin) - begin);
        for (const ToolOption& option : command->options)
            EXPECT_NE (part.find (" " + in_page (option.name)), std::string::npos)
                << command->name << ' ' << option.name;
    }
    const std::string other = testing::source_file ("packaging/man/ostrand.1");
    for (const ModeSwitch& row : mode_switches)
        EXPECT_NE (other.find (in_page (row.name)), std::string::npos) << row.name;
    for (const FirstWord& word : first_words)
        EXPECT_NE (other.find (in_page (word.name)), std::string::npos) << word.name;
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
