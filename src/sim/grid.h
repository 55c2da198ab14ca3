// The grid of simulations: one for each combination of initial concentrations.
// Layer: sim.
#pragma once
#include "sim/grid_plan.h"
#include "sim/model.h"
#include "sim/random.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <stop_token>
#include <vector>

namespace ostrand::sim {

/// Which species' points are kept. The result has the displayed ones.
enum class Recording { displayed, all };

/// The simulations of a run with the room for their points. What each of them begins with is worked
/// out when it is asked for.
struct Grid {
    std::uint32_t n_simul = 1;
    std::uint32_t n_points = 0;
    std::uint32_t n_var_conc = 0;                  // groups with at least two values
    std::vector<std::uint32_t> recorded;           // species, in the order of the table
    std::unique_ptr<std::uint32_t[]> series_block; // n_simul * recorded species * n_points
    GridPlan plan;
    Seeds seeds; // of the first simulation, then of the others

    /// The recorded points of a simulation: point t of recorded species r at r * n_points + t.
    std::span<std::uint32_t> series (std::size_t simulation) const {
        const std::size_t size = recorded.size () * n_points;
        return {series_block.get () + simulation * size, size};
    }
    RandomState seed (std::uint64_t simulation) const {
        Seeds own = seeds;
        own.skip (simulation);
        return own.next ();
    }
};

/// Plans the grid of the model and takes the seeds and the memory for it. See GridPlan for what
/// becomes of the tables, which are looked at as long as the grid is used.
/// memory  bytes that may be taken
/// False, reported and before anything is allocated, when the grid needs more; false and silent
/// when a stop was asked for.
bool prepare_run (ModelTables& tables, SeedSequence& seeds, std::uint64_t memory, Grid& grid,
                  const std::stop_token& stop = {}, Recording recording = Recording::displayed);

} // namespace ostrand::sim
