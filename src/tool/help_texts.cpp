// Help, the completion of bash and man pages, all made from the rows of the sub-commands.
#include "tool/mode_switches.h"

#include <algorithm>

namespace ostrand::tool {
namespace {

std::string option_words (const ToolOption& option) {
    return option.value == nullptr ? std::string (option.name)
                                   : format_text ("%s %s", option.name, option.value);
}

/// Troff takes a backslash, a leading dot and a dash as its own.
std::string troff (std::string_view text) {
    std::string out;
    bool line_start = true;
    for (const char c : text) {
        if (line_start && (c == '.' || c == '\'')) out += "\\&";
        if (c == '-' || c == '\\') out += '\\';
        if (c == '\\') {
            out += 'e';
        } else {
            out += c;
        }
        line_start = c == '\n';
    }
    return out;
}

} // namespace

std::string general_help () {
    std::string text = "usage: ostrand-tool COMMAND [options] words\n\ncommands:\n";
    std::size_t widest = 0;
    for (const ToolCommand* command : tool_commands ()) {
        widest = std::max (widest, std::string_view (command->name).size ());
    }
    for (const ToolCommand* command : tool_commands ()) {
        text += format_text ("  %-*s  %s\n", static_cast<int> (widest), command->name,
                             command->summary);
    }
    text += "\n'ostrand-tool COMMAND --help' tells more of each.\n"
            "'ostrand-tool --version' tells name, version and commit.\n"
            "exit status: 0 done, 1 failed, 2 wrong usage\n";
    return text;
}

std::string command_help (const ToolCommand& command) {
    std::string text =
        format_text ("usage: ostrand-tool %s%s%s%s\n%s\n", command.name,
                     command.options.empty () ? "" : " [options]",
                     *command.words == '\0' ? "" : " ", command.words, command.summary);
    if (*command.details != '\0') text += std::string ("\n") + command.details;
    if (!command.options.empty ()) text += "\noptions:\n";
    std::size_t widest = 0;
    for (const ToolOption& option : command.options) {
        widest = std::max (widest, option_words (option).size ());
    }
    for (const ToolOption& option : command.options) {
        text += format_text ("  %-*s  %s\n", static_cast<int> (widest),
                             option_words (option).c_str (), option.help);
    }
    return text;
}

std::string bash_completion () {
    std::string text = "# bash completion of ostrand-tool and ostrand\n"
                       "_ostrand_tool () {\n"
                       "    local word=${COMP_WORDS[COMP_CWORD]}\n"
                       "    if [ \"$COMP_CWORD\" = 1 ]; then\n"
                       "        COMPREPLY=($(compgen -W '--help --version";
    for (const ToolCommand* command : tool_commands ()) text += std::string (" ") + command->name;
    text += "' -- \"$word\"))\n        return\n    fi\n    local options='--help'\n"
            "    case ${COMP_WORDS[1]} in\n";
    for (const ToolCommand* command : tool_commands ()) {
        if (command->options.empty ()) continue;
        text += format_text ("        %s) options='--help", command->name);
        for (const ToolOption& option : command->options) text += std::string (" ") + option.name;
        text += "' ;;\n";
    }
    text += "    esac\n"
            "    case $word in\n"
            "        -*) COMPREPLY=($(compgen -W \"$options\" -- \"$word\")) ;;\n"
            "        *)  COMPREPLY=($(compgen -f -- \"$word\")) ;;\n"
            "    esac\n"
            "}\n"
            "complete -o filenames -F _ostrand_tool ostrand-tool\n"
            "_ostrand () {\n"
            "    local word=${COMP_WORDS[COMP_CWORD]} options='";
    std::string_view between;
    for (const FirstWord& word : first_words) {
        text.append (between).append (word.name);
        between = " ";
    }
    text += "'\n"
            "    if [ \"$COMP_CWORD\" -gt 1 ]; then\n"
            "        case ${COMP_WORDS[1]} in\n";
    for (const std::string_view mode : {"-a", "-v"}) {
        text += "            " + std::string (mode) + ") options='";
        std::string_view gap;
        for (const ModeSwitch& row : mode_switches) {
            if (mode != row.mode) continue;
            text.append (gap).append (row.name);
            gap = " ";
        }
        text += "' ;;\n";
    }
    text += "            *) options='' ;;\n"
            "        esac\n"
            "    fi\n"
            "    case $word in\n"
            "        -*) COMPREPLY=($(compgen -W \"$options\" -- \"$word\")) ;;\n"
            "        *)  COMPREPLY=($(compgen -f -- \"$word\")) ;;\n"
            "    esac\n"
            "}\n"
            "complete -o filenames -F _ostrand ostrand\n";
    return text;
}

std::string man_page_tool () {
    std::string text =
        ".TH OSTRAND-TOOL 1\n.SH NAME\nostrand\\-tool \\- biochemical networks "
        "without a window\n.SH SYNOPSIS\n.B ostrand\\-tool\nCOMMAND [options] words\n"
        ".SH COMMANDS\n";
    for (const ToolCommand* command : tool_commands ()) {
        text += format_text (".SS %s %s\n%s.\n", command->name, troff (command->words).c_str (),
                             troff (command->summary).c_str ());
        if (*command->details != '\0') text += ".PP\n.nf\n" + troff (command->details) + ".fi\n";
        for (const ToolOption& option : command->options) {
            text += ".TP\n.B " + troff (option_words (option)) + "\n" + troff (option.help) + "\n";
        }
    }
    text += ".SH VERSION\n.B ostrand\\-tool \\-\\-version\nprints name, version and commit.\n"
            ".SH EXIT STATUS\n0 done, 1 failed, 2 wrong usage. Results go to standard output, "
            "messages to standard error.\n.SH SEE ALSO\n.BR ostrand (1)\n";
    return text;
}

std::string man_page_ostrand () {
    std::string text =
        ".TH OSTRAND 1\n.SH NAME\nostrand \\- workbench for biochemical networks\n"
        ".SH SYNOPSIS\n.B ostrand \\-a\n[switches] model\n.br\n.B ostrand \\-v\n"
        "[switches] file\n.br\n.B ostrand\n[files]\n.SH DESCRIPTION\n"
        "With \\-a as its first word the program simulates a model, with \\-v it shows "
        "a result file as curves; otherwise it edits networks. With \\-h or \\-\\-help "
        "anywhere else it prints its usage, with \\-\\-version its version.\n";
    for (const std::string_view mode : {"-a", "-v"}) {
        text += mode == "-a" ? ".SH SWITCHES OF THE SIMULATOR (\\-a)\n"
                               "Each may be shortened to any beginning of itself.\n"
                             : ".SH SWITCHES OF THE VIEWER (\\-v)\n"
                               "A lone \\- reads standard input.\n";
        for (const ModeSwitch& row : mode_switches) {
            if (mode != row.mode) continue;
            text += ".TP\n.B " + troff (row.name) + "\n" + troff (row.help) + "\n";
        }
    }
    text += ".SH EXIT STATUS\n0 done, 1 failed.\n.SH SEE ALSO\n.BR ostrand\\-tool (1)\n";
    return text;
}

} // namespace ostrand::tool
