// ostrand-tool man: the man page of either program.
#include "tool/commands.h"

#include <cstdio>

namespace ostrand::tool {
namespace {

int run (const Arguments& arguments) {
    const std::string page = arguments.words.empty () ? "ostrand-tool" : arguments.words[0];
    if (page != "ostrand" && page != "ostrand-tool") {
        std::fprintf (stderr, "ostrand-tool man: no page '%s'\n", page.c_str ());
        return status_failure;
    }
    const std::string text = page == "ostrand" ? man_page_ostrand () : man_page_tool ();
    return print_result (text);
}

} // namespace

extern const ToolCommand man_command{
    .name = "man",
    .words = "[ostrand|ostrand-tool]",
    .fewest_words = 0,
    .most_words = 1,
    .summary = "print a man page",
    .details = "Read it with:  ostrand-tool man | man -l -\n",
    .options = {},
    .run = run,
    .choices = "ostrand ostrand-tool",
};

} // namespace ostrand::tool
