// The head of a result.
#include "sim/result_head.h"

#include "base/text.h"

namespace ostrand::sim {

std::string format_head (const ModelTables& tables, const ResultShape& shape) {
    std::uint32_t n_displayed = 0;
    for (const auto& species : tables.species) n_displayed += species->displayed ? 1U : 0U;
    std::string head = format_text ("%u %u %u\n", shape.n_simul, n_displayed, shape.n_points);
    for (const auto& species : tables.species) {
        if (species->displayed) {
            head += species->name;
            head += format_text ("\n%x\n", species->colour);
        }
    }
    const bool replicated = shape.replicates > 1;
    head += format_text ("%u\n", shape.n_var_conc + (replicated ? 1 : 0));
    for (const auto& species : tables.species) {
        if (species->nb == 1) continue;
        head += species->name;
        head += format_text ("\n%d\n", species->nb);
        for (std::int32_t v = 0; v < species->nb; ++v) {
            append_decimal (head, species->conc[static_cast<std::size_t> (v)]);
            head += '\n';
        }
    }
    if (replicated) {
        head += format_text ("replicate\n%u\n", shape.replicates);
        for (std::uint64_t value = 1; value <= shape.replicates; ++value) {
            append_decimal (head, value);
            head += '\n';
        }
    }
    return head;
}

} // namespace ostrand::sim
