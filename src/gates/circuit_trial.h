// Tries all gates of a plan on circuits: every choice of output, inputs and abundant elements.
// Layer: gates.
#pragma once
#include "gates/circuit.h"
#include "gates/gate_plan.h"
#include "gates/gate_store.h"
#include "gates/lane_games.h"

#include <cstdint>
#include <functional>
#include <stop_token>
#include <vector>

namespace ostrand::gates {

/// How gates are looked for.
struct TrialRules {
    bool evaluate_forks = true;  // also where a fork is not held abundant
    bool multiple_firing = true; // see Circuit::token_game
};

/// What one job counts.
struct TrialCounts {
    std::uint64_t evaluated_gates = 0; // "Nb Portes Evaluees": choices of inputs and states
    std::uint64_t evaluations = 0;     // "Nb Evaluations": token games, as if each was played
};

/// Seconds.
struct TrialTimes {
    double gate = 0;  // all of it
    double model = 0; // token games and comparing with the tables
    double sort = 0;  // storing
};

/// Called for every gate in the order in which they are found, replaced ones included; given to a
/// trial, it makes it play game by game.
using GateObserver = std::function<void (int job, const Gate& gate)>;

/// A thread's worker: its counts, times and stores are its own.
class CircuitTrial {
  public:
    CircuitTrial (const GatePlan& plan, const TrialRules& rules, std::stop_token stop = {});

    /// A stop ends it early; what the trial has found by then is not all.
    void evaluate (const Circuit& circuit);
    void set_observer (GateObserver observer) { observer_ = std::move (observer); }

    std::vector<TrialCounts> counts; // by job
    std::vector<GateStore> stores;   // by job
    /// By job: stores that hold all gates with fewer enzymes than the circuits that come now have.
    /// Null where there are none yet; then the trial's own stores tell what is not worth storing.
    const std::vector<GateStore>* smaller = nullptr;
    TrialTimes times;
    std::size_t stored () const; // gates in all stores

  private:
    struct OutputView;
    void evaluate_output (OutputView& view);
    // By pattern (circuit_trial_lanes.cpp).
    void play_block (const OutputView& view, std::uint64_t block);
    void test_group (const OutputView& view, std::size_t group, std::uint64_t block);
    void store_found (const OutputView& view);
    static std::vector<int> elements_of (const OutputView& view, std::uint64_t assignment);
    // Game by game (circuit_trial_single.cpp).
    void evaluate_singly (const OutputView& view, const PlannedGroup& group);

    bool stopped () const { return stop_.stop_requested (); }

    const GatePlan& plan_;
    TrialRules rules_;
    std::stop_token stop_;
    GateObserver observer_;
    LanePlayer player_;
    std::vector<std::uint64_t> fed_sets_; // subsets of the candidate inputs that are fed, by rank
    std::vector<std::uint64_t> reached_;  // by fed set and word of 64 assignments
    /// By group of the plan, then choice of inputs, then gate: needed elements of the least passes.
    std::vector<std::vector<std::vector<std::uint64_t>>> found_;
};

} // namespace ostrand::gates
