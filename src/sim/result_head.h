// The head of a result's text.
// Layer: sim.
#pragma once
#include "sim/model.h"

#include <cstdint>
#include <string>

namespace ostrand::sim {

/// What of a grid the head tells.
struct ResultShape {
    std::uint32_t n_simul = 1; // replicates included
    std::uint32_t n_points = 0;
    std::uint32_t n_var_conc = 0;
    std::uint32_t replicates = 1; // more than one stand behind the model's own concentrations
};

/// Number of simulations, displayed species and points; name and colour of each displayed species;
/// the varying concentrations. Replicates are one more of these, "replicate", with the values 1, 2,
/// and so on.
std::string format_head (const ModelTables& tables, const ResultShape& shape);

} // namespace ostrand::sim
