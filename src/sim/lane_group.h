// A few simulations of one model that go on together, in the lanes of one kernel.
// Layer: sim.
#pragma once
#include "sim/engine.h"
#include "sim/lane_kernels.h"
#include "sim/lane_program.h"

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace ostrand::sim {

/// What both engines need of a model. The steps are looked at, not owned.
struct LaneModel {
    std::span<const ElemStep> steps;
    std::uint32_t n_species = 0;
    bool stochastic = true;
};

/// Where a simulation stands between two time steps, apart from the time.
struct SimulationState {
    std::vector<std::uint32_t> counts; // of the stochastic engine, by species
    std::vector<double> amounts;       // of the deterministic one
    RandomState random;
};

/// The state at the start. counts: by species
SimulationState initial_state (const LaneModel& model, std::span<const std::uint32_t> counts,
                               const RandomState& random);

/// Simulations side by side. What comes of each is what the plain engine would make of it.
class LaneGroup {
  public:
    /// At least one state.
    LaneGroup (const LaneModel& model, std::span<const LaneKernel> kernels,
               std::span<const SimulationState> states);

    std::size_t size () const { return size_; }
    /// Goes on by an even number of time steps, from an even one.
    void advance (std::uint32_t time_steps);
    /// The count to record of a species, truncated where it is none.
    std::uint32_t count (std::uint32_t species, std::size_t simulation) const;
    SimulationState state (std::size_t simulation) const;
    /// Elementary steps that can do anything here: what a time step costs.
    std::size_t live_steps () const { return program_.n_steps; }

  private:
    void advance_plainly (std::uint32_t time_steps);

    LaneModel model_;
    std::size_t size_;
    LaneProgram program_;
    const LaneKernel* kernel_;
    std::optional<StochasticLanes> stochastic_;
    std::optional<DeterministicLanes> deterministic_;
};

/// Time steps that the group may go on by now: to the next recorded point at most, and no further
/// than a few milliseconds' work, so that a stop is answered and the clock looked at.
/// time_steps  that it has done
std::uint32_t next_portion (const LaneGroup& group, std::uint64_t time_steps);

/// How many of the steps can do anything in a simulation that begins with these counts.
std::size_t live_steps (const LaneModel& model, std::span<const std::uint32_t> counts);

} // namespace ostrand::sim
