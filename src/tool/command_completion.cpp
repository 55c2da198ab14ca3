// ostrand-tool completion: the completion script of a shell.
#include "tool/commands.h"

#include <cstdio>

namespace ostrand::tool {
namespace {

int run (const Arguments& arguments) {
    const std::string shell = arguments.words.empty () ? "bash" : arguments.words[0];
    if (shell == "bash") return print_result (bash_completion ());
    if (shell == "zsh") return print_result (zsh_completion ());
    if (shell == "fish") return print_result (fish_completion ());
    std::fprintf (stderr, "ostrand-tool completion: no script for '%s'\n", shell.c_str ());
    return status_failure;
}

} // namespace

extern const ToolCommand completion_command{
    .name = "completion",
    .words = "[bash|zsh|fish]",
    .fewest_words = 0,
    .most_words = 1,
    .summary = "print the completion script of a shell (bash), of both programs",
    .details = "Use it with:  source <(ostrand-tool completion)\n"
               "         or:  ostrand-tool completion fish | source\n"
               "For zsh, write it to a file _ostrand in a folder of $fpath.\n",
    .options = {},
    .run = run,
    .choices = "bash zsh fish",
};

} // namespace ostrand::tool
