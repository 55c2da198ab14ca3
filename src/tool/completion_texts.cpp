// The completion scripts of zsh and fish, made from the rows of the sub-commands.
#include "tool/mode_switches.h"

#include <algorithm>

namespace ostrand::tool {
namespace {

/// A text inside single quotes of zsh or fish, the signs of `marked` behind a backslash.
/// apostrophe  what stands for one there
std::string quoted (std::string_view text, std::string_view marked, std::string_view apostrophe) {
    std::string out = "'";
    for (const char c : text) {
        if (c == '\'') {
            out += apostrophe;
            continue;
        }
        if (marked.find (c) != std::string_view::npos) out += '\\';
        out += c;
    }
    return out + "'";
}

/// One word of zsh's _arguments: an option with its explanation, and its value, which may be a
/// file.
std::string zsh_option (std::string_view name, std::string_view help, const char* value) {
    std::string text = std::string (name) + '[';
    for (const char c : help) {
        if (c == '[' || c == ']' || c == '\\') text += '\\';
        text += c;
    }
    text += ']';
    if (value != nullptr) text += std::string (":") + value + ":_files";
    return quoted (text, "", "'\\''");
}

std::string fish_text (std::string_view text) { return quoted (text, "\\", "\\'"); }

/// How fish names an option: with two dashes -l, with one and a letter -s, else -o.
std::string fish_name (std::string_view name) {
    if (name.starts_with ("--")) return "-l " + std::string (name.substr (2));
    return (name.size () == 2 ? "-s " : "-o ") + std::string (name.substr (1));
}

} // namespace

// Zsh makes the whole script the function _ostrand, so none in it may have this name.
std::string zsh_completion () {
    std::string text = "#compdef ostrand ostrand-tool\n"
                       "# zsh completion of ostrand-tool and ostrand\n"
                       "_ostrand_tool () {\n"
                       "    if (( CURRENT == 2 )); then\n"
                       "        local -a commands=(\n";
    for (const ToolCommand* command : tool_commands ()) {
        text += "            " +
                quoted (std::string (command->name) + ':' + command->summary, "\\", "'\\''") + '\n';
    }
    text += "        )\n"
            "        _describe -t commands command commands\n"
            "        _arguments '--help[list the commands]' '--version[which build this is]'\n"
            "        return\n"
            "    fi\n"
            "    case $words[2] in\n";
    for (const ToolCommand* command : tool_commands ()) {
        text += std::string ("        (") + command->name + ") _arguments '--help[tell more]'";
        for (const ToolOption& option : command->options) {
            text += " \\\n            " + zsh_option (option.name, option.help, option.value);
        }
        if (command->choices != nullptr) {
            text += std::string (" '2:word:(") + command->choices + ")'";
        } else if (command->most_words > 0) {
            text += " '*:file:_files'";
        }
        text += " ;;\n";
    }
    text += "    esac\n"
            "}\n"
            "_ostrand_program () {\n"
            "    if (( CURRENT == 2 )); then\n"
            "        _arguments";
    for (const FirstWord& word : first_words) {
        text += " \\\n            " + zsh_option (word.name, word.help, nullptr);
    }
    text += " '*:file:_files'\n"
            "        return\n"
            "    fi\n"
            "    case $words[2] in\n";
    for (const std::string_view mode : {"-a", "-v"}) {
        text += "        (" + std::string (mode) + ") _arguments";
        for (const ModeSwitch& row : mode_switches) {
            if (mode == row.mode) {
                text += " \\\n            " + zsh_option (row.name, row.help, nullptr);
            }
        }
        text += " '*:file:_files' ;;\n";
    }
    return text + "        (*) _files ;;\n"
                  "    esac\n"
                  "}\n"
                  "case $service in\n"
                  "    (ostrand-tool) _ostrand_tool ;;\n"
                  "    (ostrand) _ostrand_program ;;\n"
                  "esac\n";
}

std::string fish_completion () {
    std::string text = "# fish completion of ostrand-tool and ostrand\n"
                       "complete -c ostrand-tool -n __fish_use_subcommand -f\n"
                       "complete -c ostrand-tool -n __fish_use_subcommand -l help -d 'list the "
                       "commands'\n"
                       "complete -c ostrand-tool -n __fish_use_subcommand -l version -d 'which "
                       "build this is'\n";
    for (const ToolCommand* command : tool_commands ()) {
        text += std::string ("complete -c ostrand-tool -n __fish_use_subcommand -a ") +
                command->name + " -d " + fish_text (command->summary) + '\n';
        const std::string head =
            std::string ("complete -c ostrand-tool -n '__fish_seen_subcommand_from ") +
            command->name + "' ";
        text += head + "-l help -d 'tell more'\n";
        if (command->choices != nullptr) {
            text += head + "-f -a " + fish_text (command->choices) + '\n';
        }
        for (const ToolOption& option : command->options) {
            text += head + fish_name (option.name) + (option.value != nullptr ? " -r" : "") +
                    " -d " + fish_text (option.help) + '\n';
        }
    }
    for (const FirstWord& word : first_words) {
        text += "complete -c ostrand -n 'test (count (commandline -opc)) -eq 1' " +
                fish_name (word.name) + " -d " + fish_text (word.help) + '\n';
    }
    for (const ModeSwitch& row : mode_switches) {
        // Fish sees "-a" and "-v" as options, so the words of the line are looked at.
        text +=
            format_text ("complete -c ostrand -n 'contains -- %s (commandline -opc)' ", row.mode) +
            fish_name (row.name) + " -d " + fish_text (row.help) + '\n';
    }
    return text;
}

} // namespace ostrand::tool
