// Groups of simulations.
#include "sim/lane_group.h"

#include <algorithm>

namespace ostrand::sim {
namespace {

/// Applications of steps to a lane between two looks at the counts. A run of time steps that a
/// kernel has to give up is not longer.
constexpr std::size_t applications_a_run = 1 << 17;

/// Applications of steps to a lane between two looks at anything else.
constexpr std::size_t applications_a_portion = 1 << 18;

/// An even number of time steps.
std::uint32_t time_steps_a_run (std::size_t n_steps) {
    const std::size_t time_steps = applications_a_run / std::max<std::size_t> (n_steps, 1);
    return static_cast<std::uint32_t> (std::clamp<std::size_t> (time_steps, 2, 5000) / 2 * 2);
}

std::vector<bool> present_species (const LaneModel& model,
                                   std::span<const SimulationState> states) {
    std::vector<bool> present (model.n_species);
    for (const SimulationState& state : states) {
        for (std::uint32_t i = 0; i < model.n_species; ++i) {
            // Not-a-number is never too little to react.
            const bool some = model.stochastic ? state.counts[i] != 0 : !(state.amounts[i] == 0);
            present[i] = present[i] || some;
        }
    }
    return present;
}

} // namespace

SimulationState initial_state (const LaneModel& model, std::span<const std::uint32_t> counts,
                               const RandomState& random) {
    const auto own = counts.first (model.n_species);
    SimulationState state;
    state.random = random;
    if (model.stochastic) {
        state.counts.assign (own.begin (), own.end ());
    } else {
        state.amounts.assign (own.begin (), own.end ());
    }
    return state;
}

LaneGroup::LaneGroup (const LaneModel& model, std::span<const LaneKernel> kernels,
                      std::span<const SimulationState> states)
    : model_ (model), size_ (states.size ()),
      program_ (compile_lanes (model.steps, model.n_species, present_species (model, states),
                               model.stochastic)),
      kernel_ (choose_kernel (kernels, size_)) {
    const auto used = static_cast<unsigned> (size_);
    if (model.stochastic) {
        StochasticLanes& lanes = stochastic_.emplace (model.n_species, kernel_->width, used);
        for (std::size_t lane = 0; lane < size_; ++lane) {
            for (std::uint32_t i = 0; i < model.n_species; ++i) {
                lanes.counts[std::size_t{i} * lanes.width + lane] = states[lane].counts[i];
            }
            lanes.state0[lane] = states[lane].random.rd_state0;
            lanes.state1[lane] = states[lane].random.rd_state1;
        }
        return;
    }
    DeterministicLanes& lanes = deterministic_.emplace (model.n_species, kernel_->width, used);
    for (std::size_t lane = 0; lane < size_; ++lane) {
        for (std::uint32_t i = 0; i < model.n_species; ++i) {
            lanes.amounts[std::size_t{i} * lanes.width + lane] = states[lane].amounts[i];
        }
    }
}

void LaneGroup::advance (std::uint32_t time_steps) {
    if (program_.forward.empty ()) return; // nothing reacts
    if (deterministic_) {
        kernel_->deterministic (program_, *deterministic_, time_steps);
        return;
    }
    const std::uint32_t a_run = time_steps_a_run (program_.n_steps);
    for (std::uint32_t done = 0; done < time_steps;) {
        const std::uint32_t now = std::min (a_run, time_steps - done);
        if (!program_.finite || !kernel_->stochastic (program_, *stochastic_, now)) {
            advance_plainly (now);
        }
        done += now;
    }
}

void LaneGroup::advance_plainly (std::uint32_t time_steps) {
    StochasticLanes& lanes = *stochastic_;
    std::vector<std::uint32_t> counts (std::size_t{model_.n_species} + 1); // with the spare slot
    for (std::size_t lane = 0; lane < size_; ++lane) {
        for (std::uint32_t i = 0; i < model_.n_species; ++i) {
            counts[i] = lanes.counts[std::size_t{i} * lanes.width + lane];
        }
        RandomState random{lanes.state0[lane], lanes.state1[lane]};
        sweep_stochastic (model_.steps, counts, random, time_steps);
        for (std::uint32_t i = 0; i < model_.n_species; ++i) {
            lanes.counts[std::size_t{i} * lanes.width + lane] = counts[i];
        }
        lanes.state0[lane] = random.rd_state0;
        lanes.state1[lane] = random.rd_state1;
    }
}

std::uint32_t LaneGroup::count (std::uint32_t species, std::size_t simulation) const {
    if (stochastic_) {
        return stochastic_->counts[std::size_t{species} * stochastic_->width + simulation];
    }
    return to_count (
        deterministic_->amounts[std::size_t{species} * deterministic_->width + simulation]);
}

SimulationState LaneGroup::state (std::size_t simulation) const {
    SimulationState state;
    if (stochastic_) {
        for (std::uint32_t i = 0; i < model_.n_species; ++i) {
            state.counts.push_back (count (i, simulation));
        }
        state.random = {stochastic_->state0[simulation], stochastic_->state1[simulation]};
        return state;
    }
    for (std::uint32_t i = 0; i < model_.n_species; ++i) {
        state.amounts.push_back (
            deterministic_->amounts[std::size_t{i} * deterministic_->width + simulation]);
    }
    return state;
}

std::uint32_t next_portion (const LaneGroup& group, std::uint64_t time_steps) {
    const std::size_t portion =
        applications_a_portion / std::max<std::size_t> (group.live_steps (), 1);
    const auto to_point = static_cast<std::size_t> (stats - time_steps % stats);
    return static_cast<std::uint32_t> (
        std::min (std::max<std::size_t> (portion / 2 * 2, 2), to_point));
}

std::size_t live_steps (const LaneModel& model, std::span<const std::uint32_t> counts) {
    std::vector<bool> present (model.n_species);
    for (std::uint32_t i = 0; i < model.n_species; ++i) present[i] = counts[i] != 0;
    return compile_lanes (model.steps, model.n_species, std::move (present), model.stochastic)
        .n_steps;
}

} // namespace ostrand::sim
