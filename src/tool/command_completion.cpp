// ostrand-tool completion: the completion script for bash.
#include "tool/commands.h"

namespace ostrand::tool {
namespace {

int run (const Arguments&) { return print_result (bash_completion ()); }

} // namespace

extern const ToolCommand completion_command{
    .name = "completion",
    .words = "",
    .fewest_words = 0,
    .most_words = 0,
    .summary = "print the completion script for bash, of both programs",
    .details = "Use it with:  source <(ostrand-tool completion)\n",
    .options = {},
    .run = run,
};

} // namespace ostrand::tool
