// ostrand-tool sbml-to-model: the species and reactions of an SBML file as model text.
#include "base/disk.h"
#include "files/sbml_to_model.h"
#include "tool/commands.h"

#include <cstdio>

namespace ostrand::tool {
namespace {

int run (const Arguments& arguments) {
    const std::string& path = arguments.words[0];
    const std::optional<std::string> text = read_text_file (path);
    if (!text) {
        std::fprintf (stderr, "ostrand-tool sbml-to-model: cannot open '%s'\n", path.c_str ());
        return status_failure;
    }
    std::string model;
    if (!files::sbml_to_model (*text, model)) {
        std::fprintf (stderr, "ostrand-tool sbml-to-model: cannot read '%s' as SBML\n",
                      path.c_str ());
        return status_failure;
    }
    return print_result (model);
}

} // namespace

extern const ToolCommand sbml_to_model_command{
    .name = "sbml-to-model",
    .words = "FILE",
    .fewest_words = 1,
    .most_words = 1,
    .summary = "print the reactions of an SBML file as model text",
    .details =
        "Kinetic laws and amounts are not carried over: a model text has its own kinetics.\n",
    .options = {},
    .run = run,
};

} // namespace ostrand::tool
