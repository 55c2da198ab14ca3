// The walk over all circuits of a network: sets of enzymes that touch each other, grown one enzyme
// at a time. One walk serves all jobs, for they differ in their share of the catalogue only.
// Layer: gates.
#pragma once
#include "gates/circuit_trial.h"

#include <cstdint>
#include <functional>
#include <span>
#include <vector>

namespace ostrand::gates {

struct SearchProgress {
    int size = 0;       // enzymes of the circuits that are tried now; 0 when they come mixed
    int largest = 0;    // enzymes of a circuit at most
    int seeds_done = 0; // for circuits of this size
    int seeds = 0;
    std::uint64_t circuits = 0; // tried so far
    std::size_t gates = 0;      // in the stores now
    double fraction = 0;        // of the work, estimated; 0 to 1
};

struct SearchSettings {
    int limit = 3; // "Nb Limite": enzymes of a circuit; two are tried whatever it says
    TrialRules rules;
    int threads = 1;
    /// Called now and then on the calling thread; may be empty.
    std::function<void (const SearchProgress&)> progress;
};

/// One job's result.
struct SearchResult {
    std::vector<Gate> gates; // in the order of GateStore::take_gates
    TrialCounts counts;
};

struct SearchOutcome {
    std::vector<SearchResult> jobs;
    std::uint64_t circuits = 0; // "Nb Circuits": how often a circuit was extended
    TrialTimes times;           // summed over the threads
};

/// True when the network has as many enzymes as a search takes on: 1 to 240.
bool is_searchable (const EquationGraph& graph);

/// What the walk does, for a caller that wants to see each step. All functions are set.
struct WalkVisitor {
    /// A circuit, as the columns of its enzymes in the order in which they came; `seed` is the
    /// number of the seed row that it grew from.
    std::function<void (std::span<const int> enzymes, int seed)> circuit;
    /// A circuit is going to be extended by each of `free`, ascending, at this depth of recursion.
    std::function<void (int level, std::uint64_t counter, std::span<const int> free)> extend;
    /// All circuits of a seed are done.
    std::function<void (int seed)> seed_done;
};

/// Walks all circuits of a searchable graph; gives how often one was extended.
std::uint64_t walk_circuits (const EquationGraph& graph, int limit, const WalkVisitor& visitor);

/// Tries the shares of all jobs on all circuits. A graph that is not searchable gives no gate and
/// counts nothing. The outcome does not depend on the number of threads.
SearchOutcome search_gates (const EquationGraph& graph, const std::vector<const Catalogue*>& shares,
                            const SearchSettings& settings);

} // namespace ostrand::gates
