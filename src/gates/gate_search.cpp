// The search: every thread takes the whole walk, which is cheap beside the games, and tries the
// circuits whose numbers it draws.
#include "gates/gate_search.h"

#include <algorithm>
#include <atomic>
#include <barrier>
#include <chrono>
#include <cmath>
#include <memory>
#include <thread>

namespace ostrand::gates {
namespace {

/// Seconds between two calls of the progress function.
constexpr double progress_pause = 0.1;

class Search {
  public:
    Search (const EquationGraph& graph, const GatePlan& plan, const SearchSettings& settings)
        : graph_ (graph), plan_ (plan), settings_ (settings),
          all_tried_ (std::max (settings.threads, 1)) {
        for (int i = 0; i < std::max (settings.threads, 1); ++i) {
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
        outcome_.jobs.resize (static_cast<std::size_t> (plan_.job_count));
        std::vector<std::jthread> threads;
        for (std::size_t w = 1; w < workers_.size (); ++w) {
            threads.emplace_back ([this, w] { work (w); });
        }
        outcome_.circuits = work (0);
        threads.clear (); // joins
        for (const std::unique_ptr<CircuitTrial>& worker : workers_) {
            outcome_.times.gate += worker->times.gate;
            outcome_.times.model += worker->times.model;
            outcome_.times.sort += worker->times.sort;
        }
        return std::move (outcome_);
    }

  private:
    /// A thread's part; gives how often the walk extended a circuit.
    std::uint64_t work (std::size_t number) {
        CircuitTrial& worker = *workers_[number];
        std::uint64_t place = 0; // of the next circuit of the walk
        std::uint64_t mine = next_circuit_.fetch_add (1, std::memory_order_relaxed);
        std::vector<int> branches; // second enzymes of the present seed's circuits, in their order
        const auto circuit = [&] (std::span<const int> enzymes, int seed) {
            if (place++ != mine) return;
            mine = next_circuit_.fetch_add (1, std::memory_order_relaxed);
            const std::size_t before = worker.stored ();
            worker.evaluate (Circuit (graph_, enzymes));
            circuits_.fetch_add (1, std::memory_order_relaxed);
            gates_.fetch_add (worker.stored () - before, std::memory_order_relaxed);
            if (number == 0) report (enzymes, seed, branches);
        };
        const auto extend = [&] (int level, std::uint64_t, std::span<const int> free) {
            if (level == 1) branches.assign (free.begin (), free.end ());
        };
        const std::uint64_t extended =
            walk_circuits (graph_, settings_.limit,
                           {.circuit = circuit, .extend = extend, .seed_done = [] (int) {}});
        all_tried_.arrive_and_wait ();
        for (;;) {
            const std::size_t job = next_job_.fetch_add (1, std::memory_order_relaxed);
            if (job >= outcome_.jobs.size ()) return extended;
            finish_job (job);
        }
    }

    /// Puts together what the threads have of a job.
    void finish_job (std::size_t job) {
        GateStore& store = workers_[0]->stores[job];
        TrialCounts& counts = outcome_.jobs[job].counts;
        for (const std::unique_ptr<CircuitTrial>& worker : workers_) {
            const TrialCounts& more = worker->counts[job];
            counts.evaluated_gates = saturated_sum (counts.evaluated_gates, more.evaluated_gates);
            counts.evaluations = saturated_sum (counts.evaluations, more.evaluations);
            if (worker != workers_[0]) store.merge (std::move (worker->stores[job]));
        }
        outcome_.jobs[job].gates = store.gates (plan_.types);
        store = {};
    }

    /// The work before a circuit, estimated, as a part of all: that of the seeds before its own,
    /// and of its seed's branches before its own, which get smaller as enzymes are used up.
    double fraction_before (std::span<const int> enzymes, int seed,
                            const std::vector<int>& branches) const {
        const double left = work_behind_[static_cast<std::size_t> (seed)];
        const double left_after = work_behind_[static_cast<std::size_t> (seed) + 1];
        double branches_left = 1;
        if (enzymes.size () > 1) {
            const auto branch = std::find (branches.begin (), branches.end (), enzymes[1]);
            const double part = static_cast<double> (branches.end () - branch) /
                                static_cast<double> (branches.size ());
            branches_left = std::pow (part, std::max (settings_.limit, 2) - 1);
        }
        return 1 - (left_after + (left - left_after) * branches_left) / work_behind_[0];
    }

    /// On the calling thread only.
    void report (std::span<const int> enzymes, int seed, const std::vector<int>& branches) {
        if (!settings_.progress) return;
        const auto now = std::chrono::steady_clock::now ();
        if (now < next_report_) return;
        next_report_ = now + std::chrono::duration_cast<std::chrono::steady_clock::duration> (
                                 std::chrono::duration<double> (progress_pause));
        settings_.progress ({.seeds_done = seed,
                             .seeds = static_cast<int> (graph_.equations.size ()),
                             .circuits = circuits_.load (std::memory_order_relaxed),
                             .gates = gates_.load (std::memory_order_relaxed),
                             .fraction = fraction_before (enzymes, seed, branches)});
    }

    const EquationGraph& graph_;
    const GatePlan& plan_;
    const SearchSettings& settings_;
    std::vector<std::unique_ptr<CircuitTrial>> workers_; // the first works on the calling thread
    SearchOutcome outcome_;
    std::atomic<std::uint64_t> next_circuit_{0}; // of the walk
    std::barrier<> all_tried_;
    std::atomic<std::size_t> next_job_{0};
    std::atomic<std::uint64_t> circuits_{0};
    std::atomic<std::size_t> gates_{0}; // in all stores; falls when one replaces several
    std::vector<double> work_behind_;   // by seed: estimated work from it on
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
