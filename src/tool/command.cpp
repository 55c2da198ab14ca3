// The companion's command line: finds the row, fits the words to it, runs it.
#include "tool/command.h"

#include "base/disk.h"
#include "base/long_work.h"
#include "base/platform.h"
#include "base/text.h"
#include "base/version.h"

#include <charconv>
#include <cstdio>
#include <new>

namespace ostrand::tool {
namespace {

/// The process-wide state of the companion.
struct ToolState {
    const char* commit = "unknown";
};
ToolState tool_state;

const ToolCommand* find_command (std::string_view name) {
    for (const ToolCommand* command : tool_commands ()) {
        if (name == command->name) return command;
    }
    return nullptr;
}

const ToolOption* find_option (const ToolCommand& command, std::string_view name) {
    for (const ToolOption& option : command.options) {
        if (name == option.name) return &option;
    }
    return nullptr;
}

int usage_fault (const ToolCommand& command, const std::string& fault) {
    std::fprintf (stderr, "ostrand-tool %s: %s\nusage: ostrand-tool %s [options] %s\n",
                  command.name, fault.c_str (), command.name, command.words);
    return status_usage;
}

/// Sorts the words behind the command's name into `arguments`; gives the fault, empty when none.
std::string fit_words (const ToolCommand& command, std::span<char*> words, Arguments& arguments) {
    bool options_end = false;
    for (std::size_t i = 0; i < words.size (); ++i) {
        const std::string_view word = words[i];
        const bool is_short = !word.starts_with ("--") && find_option (command, word) != nullptr;
        if (options_end || (!word.starts_with ("--") && !is_short)) {
            arguments.words.emplace_back (word);
            continue;
        }
        if (word == "--") {
            options_end = true;
            continue;
        }
        const std::size_t equals = word.find ('=');
        const std::string_view name = word.substr (0, equals);
        const ToolOption* option = find_option (command, name);
        if (option == nullptr) return "unknown option '" + std::string (name) + "'";
        std::string value;
        if (equals != std::string_view::npos) {
            if (option->value == nullptr) return std::string (name) + " takes no value";
            value = word.substr (equals + 1);
        } else if (option->value != nullptr) {
            if (i + 1 == words.size ()) return std::string (name) + " needs a value";
            value = words[++i];
        }
        arguments.options[std::string (name)] = value;
    }
    const int count = static_cast<int> (arguments.words.size ());
    if (count < command.fewest_words) return "too few words";
    if (count > command.most_words) return "too many words";
    return {};
}

} // namespace

int print_result (std::string_view text) {
    return write_standard_output (text) ? status_success : status_failure;
}

std::string Arguments::value (std::string_view option, std::string_view fallback) const {
    const auto found = options.find (option);
    return found == options.end () ? std::string (fallback) : found->second;
}

std::optional<int> Arguments::number (std::string_view option, int fallback, int least) const {
    const auto found = options.find (option);
    if (found == options.end ()) return fallback;
    const std::string& text = found->second;
    int number = 0;
    const auto [end, error] = std::from_chars (text.data (), text.data () + text.size (), number);
    if (error != std::errc () || end != text.data () + text.size () || number < least) {
        std::fprintf (stderr, "ostrand-tool: %s needs a whole number of at least %d, got '%s'\n",
                      std::string (option).c_str (), least, text.c_str ());
        return std::nullopt;
    }
    return number;
}

const char* tool_commit () { return tool_state.commit; }

int tool_main (int argc, char** argv, const char* commit) {
    tool_state.commit = commit;
    make_write_failures_errors ();
    const std::span<char*> words (argv + 1, argc > 1 ? static_cast<std::size_t> (argc - 1) : 0);
    if (words.empty ()) {
        std::fputs (general_help ().c_str (), stderr);
        return status_usage;
    }
    const std::string_view name = words[0];
    if (name == "--help" || name == "-h" || name == "help") return print_result (general_help ());
    if (name == "--version") return print_result (version_line ("ostrand-tool", commit));
    const ToolCommand* command = find_command (name);
    if (command == nullptr) {
        std::fprintf (stderr, "ostrand-tool: unknown command '%s'\n%s", words[0],
                      general_help ().c_str ());
        return status_usage;
    }
    for (const char* word : words.subspan (1)) {
        if (std::string_view (word) == "--") break;
        if (std::string_view (word) == "--help") return print_result (command_help (*command));
    }
    Arguments arguments;
    const std::string fault = fit_words (*command, words.subspan (1), arguments);
    if (!fault.empty ()) return usage_fault (*command, fault);
    try {
        return command->run (arguments);
    } catch (const std::bad_alloc&) {
        std::fprintf (stderr, "ostrand-tool %s: %s\n", command->name, out_of_memory);
        return status_failure;
    }
}

} // namespace ostrand::tool
