// ostrand-tool model: the model text of a document.
#include "files/model_write.h"
#include "tool/commands.h"
#include "tool/open_input.h"

namespace ostrand::tool {
namespace {

constexpr ToolOption duration_option{"--duration", "S", "seconds that the simulation takes"};

int run (const Arguments& arguments) {
    files::Document document;
    const std::optional<int> duration = arguments.number ("--duration", files::default_duration);
    if (!duration) return status_usage;
    document.duration = *duration;
    if (!open_input ("model", arguments.words[0], document)) return status_failure;
    if (arguments.has ("--duration")) document.duration = *duration;
    document.network->update_shared_nodes ();
    tell_model_gaps (document);
    const std::string text =
        files::write_model (*document.network, document.duration, document.network->multi_name ());
    return print_result (text);
}

} // namespace

extern const ToolCommand model_command{
    .name = "model",
    .words = "FILE",
    .fewest_words = 1,
    .most_words = 1,
    .summary = "print a network as model text for 'ostrand -a'",
    .details =
        "What is not written is named on standard error, item by item: reactions without an\n"
        "enzyme, inhibitors of an enzyme, nodes without label, labels that are no numbers,\n"
        "concentrations that the simulator does not read.\n",
    .options = {&duration_option, 1},
    .run = run,
};

} // namespace ostrand::tool
