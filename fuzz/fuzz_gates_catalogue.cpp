// Any bytes as a gate catalogue, tried on a small network.
#include "gates/gate_search.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace {

const ostrand::gates::EquationGraph& network () {
    using namespace ostrand::gates;
    static const EquationGraph graph = [] {
        std::vector<Reaction> reactions (2);
        reactions[0].id = "r1";
        reactions[0].enzymes = {"E"};
        reactions[0].substrates = {"A", "B"};
        reactions[0].products = {"C"};
        reactions[0].inhibitors = {"I"};
        reactions[1].id = "r2";
        reactions[1].enzymes = {"F"};
        reactions[1].substrates = {"C"};
        reactions[1].products = {"D"};
        reactions[1].reversible = false;
        return build_equation_graph (reactions, {{"A", 0}, {"B", 1}, {"C", 2}, {"D", 3}, {"I", 4}});
    }();
    return graph;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput (const std::uint8_t* data, std::size_t size) {
    using namespace ostrand::gates;
    const std::string_view text (reinterpret_cast<const char*> (data), size);
    const int partitions = size == 0 ? 1 : data[0] % 4 + 1;
    std::vector<Catalogue> catalogues;
    std::size_t gates = 0;
    for (int job = 1; job <= partitions; ++job) {
        catalogues.push_back (load_catalogue (text, partitions, job));
        for (const GateGroup& group : catalogues.back ()) gates += group.gates.size ();
    }
    if (gates > 50) return 0;
    std::vector<const Catalogue*> shares;
    for (const Catalogue& catalogue : catalogues) shares.push_back (&catalogue);
    search_gates (network (), shares, {.limit = 3, .rules = {}, .threads = 1});
    return 0;
}
