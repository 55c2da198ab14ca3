// The grid of simulations: one for each combination of initial concentrations.
// Layer: sim.
#pragma once
#include "sim/engine.h"
#include "sim/model.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace ostrand::sim {

/// A full factorial design over groups of species; linked species count once.
struct Grid {
    std::uint32_t n_simul = 1;
    std::uint32_t n_points = 0;
    std::uint32_t n_var_conc = 0;                  // groups with at least two values
    std::unique_ptr<std::uint32_t[]> copy_block;   // n_simul * (n_species + 1)
    std::unique_ptr<std::uint32_t[]> series_block; // n_simul * n_species * n_points
    std::vector<Simulation> simulations;
};

/// Plans and allocates the grid of the model, seeds its simulations and distributes the
/// concentrations. A chain of linked species has the longest of its members' lists, the others are
/// filled up with their last value; afterwards all but a chain's first species have `nb` 1. The
/// group whose first species stands first in the table varies slowest.
/// memory  bytes that may be taken
/// False, reported and before anything is allocated, when the grid needs more; false and silent
/// when a stop was asked for.
bool prepare_run (ModelTables& tables, SeedSequence& seeds, std::uint64_t memory, Grid& grid,
                  const std::stop_token& stop = {});

} // namespace ostrand::sim
