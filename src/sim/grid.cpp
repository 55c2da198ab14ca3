// The grid of simulations.
#include "sim/grid.h"

#include "base/report.h"
#include "sim/engine.h"

#include <limits>
#include <new>

namespace ostrand::sim {
namespace {

/// Product that stays at the largest value instead of wrapping.
std::uint64_t saturating_product (std::uint64_t a, std::uint64_t b) {
    std::uint64_t product = 0;
    return __builtin_mul_overflow (a, b, &product) ? std::numeric_limits<std::uint64_t>::max ()
                                                   : product;
}

bool report_too_large (std::uint64_t simulations, std::uint32_t points, std::size_t species,
                       std::uint64_t bytes, std::uint64_t memory) {
    constexpr auto most = std::numeric_limits<std::uint64_t>::max ();
    report_message ("too many simulations for the memory: %s%llu simulations of %zu species at %u "
                    "points need %s%llu bytes, %llu can be had",
                    simulations == most ? "over " : "",
                    static_cast<unsigned long long> (simulations), species, points,
                    bytes == most ? "over " : "", static_cast<unsigned long long> (bytes),
                    static_cast<unsigned long long> (memory));
    return false;
}

} // namespace

bool prepare_run (ModelTables& tables, SeedSequence& seeds, std::uint64_t memory, Grid& grid,
                  const std::stop_token& stop, Recording recording) {
    if (stop.stop_requested ()) return false;
    grid.plan = GridPlan (tables);
    grid.recorded.clear ();
    for (std::uint32_t i = 0; i < tables.n_species (); ++i) {
        if (recording == Recording::all || tables.species[i]->displayed) {
            grid.recorded.push_back (i);
        }
    }
    const std::uint64_t n_simul = grid.plan.n_simul ();
    grid.n_points = tables.nb_gen / stats;
    grid.n_var_conc = grid.plan.n_var_conc ();
    const std::uint64_t series = std::uint64_t{grid.recorded.size ()} * grid.n_points;
    const std::uint64_t bytes = saturating_product (n_simul, series * sizeof (std::uint32_t));
    if (bytes > memory || n_simul > std::numeric_limits<std::uint32_t>::max ()) {
        return report_too_large (n_simul, grid.n_points, grid.recorded.size (), bytes, memory);
    }
    grid.n_simul = static_cast<std::uint32_t> (n_simul);
    try {
        grid.series_block = std::make_unique_for_overwrite<std::uint32_t[]> (n_simul * series);
    } catch (const std::bad_alloc&) {
        return report_too_large (n_simul, grid.n_points, grid.recorded.size (), bytes, memory);
    }
    grid.seeds = seeds.take (n_simul);
    return true;
}

} // namespace ostrand::sim
