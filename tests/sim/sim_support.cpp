// Helpers of the simulator's tests.
#include "sim/sim_support.h"

namespace ostrand::sim {

FinishedRun::FinishedRun (std::string_view text, bool stochastic) {
    SeedSequence seeds;
    if (!read_model (text, tables)) throw std::runtime_error ("model does not read");
    if (!prepare_run (tables, seeds, std::uint64_t{1} << 30, grid)) {
        throw std::runtime_error ("grid does not fit");
    }
    const EngineModel model{tables.steps, tables.n_species (), tables.nb_gen, grid.n_points,
                            nullptr};
    run_simulations (model, grid.simulations, true, stochastic);
}

std::uint32_t FinishedRun::count (std::size_t simulation, std::string_view name,
                                  std::uint32_t point) const {
    for (std::size_t i = 0; i < tables.species.size (); ++i) {
        if (tables.species[i]->name == name) {
            return grid.simulations.at (simulation).all_pt[i * grid.n_points + point];
        }
    }
    throw std::runtime_error ("no species " + std::string (name));
}

} // namespace ostrand::sim
