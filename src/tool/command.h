// What a sub-command of the companion is: a row that the command line, --help, the shell completion
// and the man page read.
// Layer: tool.
#pragma once
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace ostrand::tool {

/// Exit status of every sub-command.
inline constexpr int status_success = 0;
inline constexpr int status_failure = 1;
inline constexpr int status_usage = 2;

struct ToolOption {
    const char* name;            // with its dashes: "--depth"
    const char* value = nullptr; // name of its value, "D"; null for a switch
    const char* help = "";
};

/// A command line that fits a row's arguments and options.
class Arguments {
  public:
    std::vector<std::string> words;                          // what is no option, in order
    std::map<std::string, std::string, std::less<>> options; // the last of each wins

    bool has (std::string_view option) const { return options.find (option) != options.end (); }
    /// The option's value, or `fallback` when it was not given.
    std::string value (std::string_view option, std::string_view fallback = {}) const;
    /// The option's value as a whole number of at least `least`; `fallback` when it was not given,
    /// nothing (and a message on standard error) when it is no such number.
    std::optional<int> number (std::string_view option, int fallback, int least = 0) const;
};

struct ToolCommand {
    const char* name;
    const char* words; // "IN OUT", as usage shows it
    int fewest_words;
    int most_words;
    const char* summary; // one line
    const char* details; // what --help adds, whole lines; may be empty
    std::span<const ToolOption> options;
    int (*run) (const Arguments& arguments); // gives the exit status
    const char* choices = nullptr; // what its only word may be, with blanks between; else a file
};

/// All sub-commands, in the order in which help lists them.
std::span<const ToolCommand* const> tool_commands ();

/// Writes a command's result to standard output and gives the exit status. A result that could not
/// be written whole (closed, full) is told.
int print_result (std::string_view text);

/// The companion's whole command line; gives the exit status. Results go to standard output,
/// messages to standard error.
/// commit  that it was built from, for --version
int tool_main (int argc, char** argv, const char* commit);

/// The commit that tool_main was given; "unknown" before.
const char* tool_commit ();

/// The texts made from the rows.
std::string general_help ();
std::string command_help (const ToolCommand& command);
std::string bash_completion ();
std::string zsh_completion ();
std::string fish_completion ();
std::string man_page_tool ();
std::string man_page_ostrand ();

} // namespace ostrand::tool
