// Helpers of the simulator's tests.
#include "sim/sim_support.h"

namespace ostrand::sim {

FinishedRun::FinishedRun (std::string_view text, bool stochastic) {
    SeedSequence seeds;
    if (!read_model (text, tables)) throw std::runtime_error ("model does not read");
    if (!prepare_run (tables, seeds, std::uint64_t{1} << 30, grid, {}, Recording::all)) {
        throw std::runtime_error ("grid does not fit");
    }
    run_simulations ({tables.steps, tables.n_species (), stochastic}, grid, true);
}

std::uint32_t FinishedRun::count (std::size_t simulation, std::string_view name,
                                  std::uint32_t point) const {
    for (std::size_t i = 0; i < tables.species.size (); ++i) {
        if (tables.species[i]->name == name) {
            return grid.series (simulation)[i * grid.n_points + point];
        }
    }
    throw std::runtime_error ("no species " + std::string (name));
}

} // namespace ostrand::sim
