// ostrand-tool sbml-to-model: the species and reactions of an SBML file as model text.
#include "files/document_io.h"
#include "files/foreign_model.h"
#include "files/sbml_road.h"
#include "files/sbml_to_model.h"
#include "tool/commands.h"

#include <cstdio>

namespace ostrand::tool {
namespace {

int run (const Arguments& arguments) {
    const std::string& path = arguments.words[0];
    const std::optional<std::string> text = files::read_document_text (path);
    if (!text) {
        std::fprintf (stderr, "ostrand-tool sbml-to-model: cannot open '%s'\n", path.c_str ());
        return status_failure;
    }
    std::string model;
    bool good = false;
    if (files::is_plain_sbml (*text)) {
        good = files::sbml_to_model (*text, model);
    } else if (auto foreign = files::foreign_sbml_to_model (*text)) {
        model = std::move (*foreign);
        good = true;
    }
    if (!good) {
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
        "Of SBML of other tools, concentrations and the laws of mass action and Michaelis-Menten "
        "are\n"
        "carried over; other reactions stand without rates. What is left out is named on standard\n"
        "error.\n",
    .options = {},
    .run = run,
};

} // namespace ostrand::tool
