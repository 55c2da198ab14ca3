// What both engines share: one simulation's state, the constants, and the two entries.
// Layer: sim.
#pragma once
#include "base/long_work.h"
#include "base/units.h"
#include "sim/model.h"
#include "sim/random.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <span>
#include <stop_token>

namespace ostrand::sim {

/// Time steps between two recorded points: one point per simulated second.
inline constexpr std::uint32_t stats = time_steps_per_second;

/// Collision constant of a bi-molecular step, per pair of molecules and time step.
inline constexpr float alpha = 7.4e-7F;

/// One simulation: its slices of the two blocks of a run, and its random numbers.
struct Simulation {
    std::span<std::uint32_t> all_pt;         // point t of species i at i * n_points + t
    std::span<const std::uint32_t> copy_num; // initial counts, n_species + 1 with the spare slot
    RandomState random;
};

/// What an engine reads and never changes.
struct EngineModel {
    std::span<const ElemStep> steps;
    std::uint32_t n_species = 0;
    std::uint32_t nb_gen = 0;     // time steps
    std::uint32_t n_points = 0;   // nb_gen / stats
    Progress* progress = nullptr; // told of each point before its sweeps; may be null
    std::stop_token stop = {};    // ends the engine with its points half recorded
};

/// A whole number of molecules from a float: truncated, saturating at 0 and 4294967295; 0 for
/// not-a-number.
template <class Float>
constexpr std::uint32_t to_count (Float value) {
    constexpr auto limit = static_cast<Float> (4294967296.0);
    if (!(value > 0)) return 0;
    return value >= limit ? 0xFFFFFFFFU : static_cast<std::uint32_t> (value);
}

/// Discrete-time stochastic engine: in each time step every elementary step fires a number of times
/// computed from the counts of its reactants, whose fraction fires by chance.
void run_stochastic (const EngineModel& model, Simulation& simulation);

/// The same for some time steps of a simulation that is somewhere on its way, from an even time
/// step.
/// counts      molecules by species, with the spare slot behind them
/// time_steps  an even number
void sweep_stochastic (std::span<const ElemStep> steps, std::span<std::uint32_t> counts,
                       RandomState& random, std::uint32_t time_steps);

/// Its mean-value twin: the same sweeps over real-valued counts, without chance.
void run_deterministic (const EngineModel& model, Simulation& simulation);

/// Applications of elementary steps between two looks for a stop: well under a millisecond.
inline constexpr std::uint32_t applications_per_look = 1 << 14;

/// The loop both engines run in. A point is recorded before its second is simulated, so the first
/// is the initial state; the sweeps of the time steps go forward and backward in turns.
/// record  (species) -> the count to record
/// apply   (elementary step) applies it once
template <class Record, class Apply>
void run_points (const EngineModel& model, Simulation& simulation, Record record, Apply apply) {
    const auto n_steps =
        static_cast<std::uint32_t> (std::max<std::size_t> (model.steps.size (), 1));
    const std::uint32_t look_each = std::max (applications_per_look / n_steps / 2 * 2, 2U);
    for (std::uint32_t pt = 0; pt < model.n_points; ++pt) {
        for (std::uint32_t i = 0; i < model.n_species; ++i) {
            simulation.all_pt[std::size_t{i} * model.n_points + pt] = record (i);
        }
        if (model.progress != nullptr) model.progress->add_progress (1);
        for (std::uint32_t it = 0; it < stats;) {
            if (model.stop.stop_requested ()) return;
            for (const std::uint32_t end = std::min (stats, it + look_each); it < end; it += 2) {
                for (const ElemStep& step : model.steps) apply (step);
                for (auto step = model.steps.rbegin (); step != model.steps.rend (); ++step) {
                    apply (*step);
                }
            }
        }
    }
}

} // namespace ostrand::sim
