// Any bytes as a metabolic model: both readers, the rows, a sub-model, and a search bounded to
// small networks.
#include "gates/front_end.h"
#include "gates/gate_search.h"
#include "gates/sbml_writer.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput (const std::uint8_t* data, std::size_t size) {
    using namespace ostrand::gates;
    const std::string_view text (reinterpret_cast<const char*> (data), size);
    read_front_end_reactions (text);
    SbmlModel model = read_sbml_lines (text);
    std::vector<std::string> ids;
    for (const Reaction& reaction : model.reactions) ids.push_back (reaction.id);
    if (ids.size () < 20) sub_model_text (model, "fuzz", ids);
    add_stand_in_enzymes (model.reactions);
    const EquationGraph graph = build_equation_graph (model.reactions, model.elements);
    // The cost grows with 2 to the power of the elements.
    if (graph.enzyme_count () > 6 || graph.length () > 18 || graph.rows.size () > 40) return 0;
    const Catalogue catalogue = load_catalogue (builtin_catalogue_text (), 1, 1);
    search_gates (graph, {&catalogue}, {.limit = 2, .rules = {}, .threads = 1});
    return 0;
}
