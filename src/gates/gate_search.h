// The walk over all circuits of a network: sets of enzymes that touch each other, grown one enzyme
// at a time. One walk serves all jobs, for they differ in their share of the catalogue only.
// Layer: gates.
#pragma once
#include "base/long_work.h"
#include "gates/circuit_trial.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <span>
#include <stop_token>
#include <vector>

namespace ostrand::gates {

/// How far a search is: the part of the work that is done is estimated, results are the gates in
/// the stores.
struct SearchProgress : Progress {
    std::atomic<int> size{0};    // enzymes of the circuits that are tried now; 0: they come mixed
    std::atomic<int> largest{0}; // enzymes of a circuit at most
    std::atomic<int> seeds_done{0}; // for circuits of this size
    std::atomic<int> seeds{0};
    std::atomic<std::uint64_t> circuits{0}; // tried so far
};

struct SearchSettings {
    int limit = 3; // "Nb Limite": enzymes of a circuit; two are tried whatever it says
    TrialRules rules = {};
    int threads = 1;
    SearchProgress* progress = nullptr; // null: nobody asks, and the work is not estimated
    std::stop_token stop = {};
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
    bool stopped = false;       // a stop ended the search, and nothing else of this counts
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

/// Walks all circuits of a searchable graph; gives how often one was extended. A stop ends the walk
/// early.
std::uint64_t walk_circuits (const EquationGraph& graph, int limit, const WalkVisitor& visitor,
                             const std::stop_token& stop = {});

/// Tries the shares of all jobs on all circuits. A graph that is not searchable gives no gate and
/// counts nothing. The outcome does not depend on the number of threads. What goes wrong on any of
/// them is thrown when all have ended.
SearchOutcome search_gates (const EquationGraph& graph, const std::vector<const Catalogue*>& shares,
                            const SearchSettings& settings);

} // namespace ostrand::gates
