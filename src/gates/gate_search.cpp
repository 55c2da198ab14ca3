// The search: circuits of the walk, handed to threads in batches.
#include "gates/gate_search.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cmath>
#include <memory>
#include <thread>

namespace ostrand::gates {
namespace {

/// Circuits that are gathered before the threads share them out.
constexpr std::size_t batch_size = 4096;
/// Seconds between two calls of the progress function.
constexpr double progress_pause = 0.1;

class Search {
  public:
    Search (const EquationGraph& graph, const GatePlan& plan, const SearchSettings& settings)
        : graph_ (graph), plan_ (plan), settings_ (settings) {
        const int threads = std::max (settings.threads, 1);
        for (int i = 0; i < threads; ++i) {
            workers_.push_back (std::make_unique<CircuitTrial> (plan, settings.rules));
        }
        const std::size_t seeds = graph.equations.size ();
        // A seed's share of the work falls with the enzymes that are left for it.
        work_behind_.assign (seeds + 1, 0);
        for (std::size_t i = seeds; i-- > 0;) {
            work_behind_[i] = work_behind_[i + 1] + std::pow (static_cast<double> (seeds - i),
                                                              std::max (settings.limit, 2) - 1);
        }
    }

    SearchOutcome run () {
        SearchOutcome outcome;
        outcome.circuits = walk_circuits (
            graph_, settings_.limit,
            {.circuit = [this] (std::span<const int> enzymes, int seed) { take (enzymes, seed); },
             .extend =
                 [this] (int level, std::uint64_t, std::span<const int> free) {
                     if (level == 1) branches_.assign (free.begin (), free.end ());
                 },
             .seed_done = [] (int) {}});
        finish_batch ();
        CircuitTrial& first = *workers_[0];
        for (std::size_t w = 0; w < workers_.size (); ++w) {
            CircuitTrial& worker = *workers_[w];
            outcome.times.gate += worker.times.gate;
            outcome.times.model += worker.times.model;
            outcome.times.sort += worker.times.sort;
            if (w == 0) continue;
            for (std::size_t job = 0; job < first.stores.size (); ++job) {
                first.stores[job].merge (std::move (worker.stores[job]));
                add (first.counts[job].evaluated_gates, worker.counts[job].evaluated_gates);
                add (first.counts[job].evaluations, worker.counts[job].evaluations);
            }
        }
        for (std::size_t job = 0; job < first.stores.size (); ++job) {
            outcome.jobs.push_back ({first.stores[job].gates (plan_.types), first.counts[job]});
            first.stores[job] = {};
        }
        return outcome;
    }

  private:
    struct Task {
        std::vector<int> enzymes;
        int seed;
        double fraction; // of all work, estimated, that lies before it
    };

    /// The work before a circuit: that of the seeds before its own, and of its seed's branches
    /// before its own, which get smaller as enzymes are used up.
    double fraction_before (std::span<const int> enzymes, int seed) const {
        const double left = work_behind_[static_cast<std::size_t> (seed)];
        const double left_after = work_behind_[static_cast<std::size_t> (seed) + 1];
        double branches_left = 1;
        if (enzymes.size () > 1) {
            const auto branch = std::find (branches_.begin (), branches_.end (), enzymes[1]);
            const double part = static_cast<double> (branches_.end () - branch) /
                                static_cast<double> (branches_.size ());
            branches_left = std::pow (part, std::max (settings_.limit, 2) - 1);
        }
        return 1 - (left_after + (left - left_after) * branches_left) / work_behind_[0];
    }

    static void add (std::uint64_t& sum, std::uint64_t more) { sum = saturated_sum (sum, more); }

    void take (std::span<const int> enzymes, int seed) {
        const double fraction = fraction_before (enzymes, seed);
        if (workers_.size () == 1) {
            workers_[0]->evaluate (Circuit (graph_, enzymes));
            circuits_.fetch_add (1, std::memory_order_relaxed);
            report (seed, fraction);
            return;
        }
        batch_.push_back ({{enzymes.begin (), enzymes.end ()}, seed, fraction});
        if (batch_.size () == batch_size) finish_batch ();
    }

    void finish_batch () {
        next_ = 0;
        std::vector<std::jthread> threads;
        const std::size_t count = std::min (workers_.size (), batch_.size ());
        for (std::size_t w = 1; w < count; ++w) {
            threads.emplace_back ([this, w] { work (w); });
        }
        if (!batch_.empty ()) work (0);
        threads.clear (); // joins
        batch_.clear ();
    }

    void work (std::size_t worker) {
        for (;;) {
            const std::size_t index = next_.fetch_add (1);
            if (index >= batch_.size ()) return;
            const Task& task = batch_[index];
            workers_[worker]->evaluate (Circuit (graph_, task.enzymes));
            circuits_.fetch_add (1, std::memory_order_relaxed);
            if (worker != 0) {
                gates_elsewhere_.store (workers_[worker]->stored (), std::memory_order_relaxed);
            } else {
                report (task.seed, task.fraction);
            }
        }
    }

    /// On the calling thread only.
    void report (int seed, double fraction) {
        if (!settings_.progress) return;
        const auto now = std::chrono::steady_clock::now ();
        if (now < next_report_) return;
        next_report_ = now + std::chrono::duration_cast<std::chrono::steady_clock::duration> (
                                 std::chrono::duration<double> (progress_pause));
        settings_.progress (
            {.seeds_done = seed,
             .seeds = static_cast<int> (graph_.equations.size ()),
             .circuits = circuits_.load (std::memory_order_relaxed),
             .gates = workers_[0]->stored () +
                      gates_elsewhere_.load (std::memory_order_relaxed) * (workers_.size () - 1),
             .fraction = fraction});
    }

    const EquationGraph& graph_;
    const GatePlan& plan_;
    const SearchSettings& settings_;
    std::vector<std::unique_ptr<CircuitTrial>> workers_; // the first works on the calling thread
    std::vector<int> branches_; // second enzymes of the present seed's circuits, in their order
    std::vector<Task> batch_;
    std::atomic<std::size_t> next_{0}; // of the batch
    std::atomic<std::uint64_t> circuits_{0};
    std::atomic<std::size_t> gates_elsewhere_{0}; // of one other worker, for the progress
    std::vector<double> work_behind_;             // by seed: estimated work from it on
    std::chrono::steady_clock::time_point next_report_;
};

} // namespace

bool is_searchable (const EquationGraph& graph) {
    return graph.enzyme_count () >= 1 && graph.enzyme_count () <= most_enzymes;
}

SearchOutcome search_gates (const EquationGraph& graph, const std::vector<const Catalogue*>& shares,
                            const SearchSettings& settings) {
    if (!is_searchable (graph)) {
        SearchOutcome nothing;
        nothing.jobs.resize (shares.size ());
        return nothing;
    }
    const GatePlan plan = make_gate_plan (shares);
    return Search (graph, plan, settings).run ();
}

} // namespace ostrand::gates
