// ostrand-tool metabolites: what a formula may use as input and output.
#include "gates/front_end.h"
#include "tool/commands.h"

#include <cstdio>

namespace ostrand::tool {
namespace {

int run (const Arguments& arguments) {
    const gates::GateFrontEnd front_end (arguments.words[0]);
    if (!front_end.parsed) {
        const std::string& fault = front_end.model_file.fault;
        if (!fault.empty ()) std::fprintf (stderr, "%s\n", fault.c_str ());
        std::fprintf (stderr, "'%s': format error\n", arguments.words[0].c_str ());
        return status_failure;
    }
    std::string text;
    for (const gates::Metabolite& metabolite : front_end.metabolites) {
        text += metabolite.name + "\t" + (metabolite.can_be_input ? "1" : "0") + "\t" +
                (metabolite.can_be_output ? "1" : "0") + "\n";
    }
    return print_result (text);
}

} // namespace

extern const ToolCommand metabolites_command{
    .name = "metabolites",
    .words = "MODEL.xml",
    .fewest_words = 1,
    .most_words = 1,
    .summary = "list the metabolites of a model that a formula may use",
    .details =
        "One line each, sorted by name, with tabs between the fields: the name, 1 or 0 for\n"
        "can be an input, 1 or 0 for can be an output. Only reactions with an enzyme count.\n",
    .options = {},
    .run = run,
};

} // namespace ostrand::tool
