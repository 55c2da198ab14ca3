// The search: every thread takes the whole walk, which is cheap beside the games, and tries the
// circuits whose numbers it draws.
#include "gates/gate_search.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <barrier>
#include <chrono>
#include <cmath>
#include <memory>
#include <system_error>
#include <thread>

namespace ostrand::gates {
namespace {

/// Bytes that hold most circuits with all that is asked of them.
constexpr std::size_t circuit_memory = 1 << 16;
/// Seconds between two calls of the progress function.
constexpr double progress_pause = 0.1;

class Search {
  public:
    Search (const EquationGraph& graph, const GatePlan& plan, const SearchSettings& settings)
        : graph_ (graph), plan_ (plan), settings_ (settings),
          workers_ (static_cast<std::size_t> (std::max (settings.threads, 1))),
          stores_ (static_cast<std::size_t> (plan.job_count)),
          largest_size_ (static_cast<std::size_t> (std::max (settings.limit, 2))),
          all_there_ (std::max (settings.threads, 1)) {
        outcome_.jobs.resize (stores_.size ());
        const std::size_t seeds = graph.equations.size ();
        // A seed's share of the work falls with the enzymes that are left for it.
        work_behind_.assign (seeds + 1, 0);
        for (std::size_t i = seeds; i-- > 0;) {
            work_behind_[i] = work_behind_[i + 1] + std::pow (static_cast<double> (seeds - i),
                                                              std::max (settings.limit, 2) - 1);
        }
    }

    SearchOutcome run () {
        std::vector<std::jthread> threads;
        try {
            for (std::size_t w = 1; w < workers_.size (); ++w) {
                threads.emplace_back ([this, w] { work (w); });
            }
        } catch (const std::system_error&) {
            // The threads that could be started, at the least this one, do it all.
            for (std::size_t w = threads.size () + 1; w < workers_.size (); ++w) {
                all_there_.arrive_and_drop ();
            }
        }
        work (0);
        threads.clear (); // joins
        for (const std::unique_ptr<CircuitTrial>& worker : workers_) {
            if (worker == nullptr) continue;
            outcome_.times.gate += worker->times.gate;
            outcome_.times.model += worker->times.model;
            outcome_.times.sort += worker->times.sort;
        }
        return std::move (outcome_);
    }

  private:
    /// The largest circuits are most of all and come last, for then the gates of the smaller ones,
    /// which may stand in their way, are known to all threads.
    enum class Phase { smaller, largest };
    /// Numbers that threads draw: circuits of a phase, then jobs.
    struct Draws {
        alignas (64) std::atomic<std::uint64_t> circuit{0};
        std::atomic<std::size_t> job{0};
    };

    /// A thread's part. The first is the calling one.
    void work (std::size_t thread) {
        // Made here, so that what the thread writes lies apart from what others write.
        workers_[thread] = std::make_unique<CircuitTrial> (plan_, settings_.rules);
        CircuitTrial& worker = *workers_[thread];
        for (const Phase phase : {Phase::smaller, Phase::largest}) {
            const std::uint64_t extended = try_circuits (thread, phase);
            if (thread == 0) outcome_.circuits = extended; // of the last phase: all
            all_there_.arrive_and_wait ();
            Draws& draws = draws_of (phase);
            for (;;) {
                const std::size_t job = draws.job.fetch_add (1, std::memory_order_relaxed);
                if (job >= stores_.size ()) break;
                for (const std::unique_ptr<CircuitTrial>& other : workers_) {
                    if (other != nullptr) stores_[job].merge (std::move (other->stores[job]));
                }
                if (phase == Phase::largest) finish_job (job);
            }
            if (phase == Phase::smaller) all_there_.arrive_and_wait ();
            worker.smaller = &stores_;
        }
    }

    /// Tries the circuits of a phase whose numbers the thread draws; gives how often the walk
    /// extended a circuit.
    std::uint64_t try_circuits (std::size_t thread, Phase phase) {
        CircuitTrial& worker = *workers_[thread];
        std::vector<std::byte> buffer (circuit_memory);
        std::pmr::monotonic_buffer_resource memory (buffer.data (), buffer.size ());
        std::atomic<std::uint64_t>& draw = draws_of (phase).circuit;
        std::uint64_t place = 0; // of the next circuit of the phase
        std::uint64_t mine = draw.fetch_add (1, std::memory_order_relaxed);
        std::vector<int> branches; // second enzymes of the present seed's circuits, in their order
        const auto circuit = [&] (std::span<const int> enzymes, int seed) {
            const bool is_largest = enzymes.size () >= largest_size_;
            if (is_largest != (phase == Phase::largest) || place++ != mine) return;
            mine = draw.fetch_add (1, std::memory_order_relaxed);
            const std::size_t stored = worker.stored ();
            worker.evaluate (Circuit (graph_, enzymes, &memory));
            memory.release ();
            circuits_.fetch_add (1, std::memory_order_relaxed);
            gates_.fetch_add (worker.stored () - stored, std::memory_order_relaxed);
            if (thread == 0) report (phase, enzymes, seed, branches);
        };
        const auto extend = [&] (int level, std::uint64_t, std::span<const int> free) {
            if (level == 1) branches.assign (free.begin (), free.end ());
        };
        const int limit =
            phase == Phase::largest ? settings_.limit : static_cast<int> (largest_size_) - 1;
        return walk_circuits (graph_, limit,
                              {.circuit = circuit, .extend = extend, .seed_done = [] (int) {}});
    }

    void finish_job (std::size_t job) {
        SearchResult& result = outcome_.jobs[job];
        for (const std::unique_ptr<CircuitTrial>& worker : workers_) {
            if (worker == nullptr) continue;
            const TrialCounts& more = worker->counts[job];
            TrialCounts& sum = result.counts;
            sum.evaluated_gates = saturated_sum (sum.evaluated_gates, more.evaluated_gates);
            sum.evaluations = saturated_sum (sum.evaluations, more.evaluations);
        }
        result.gates = stores_[job].take_gates (plan_.types[job]);
    }

    Draws& draws_of (Phase phase) { return draws_[phase == Phase::smaller ? 0 : 1]; }

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
    void report (Phase phase, std::span<const int> enzymes, int seed,
                 const std::vector<int>& branches) {
        if (!settings_.progress) return;
        const auto now = std::chrono::steady_clock::now ();
        if (now < next_report_) return;
        next_report_ = now + std::chrono::duration_cast<std::chrono::steady_clock::duration> (
                                 std::chrono::duration<double> (progress_pause));
        const bool is_first = phase == Phase::smaller;
        settings_.progress ({.seeds_done = is_first ? 0 : seed,
                             .seeds = static_cast<int> (graph_.equations.size ()),
                             .circuits = circuits_.load (std::memory_order_relaxed),
                             .gates = gates_.load (std::memory_order_relaxed),
                             .fraction = is_first ? 0 : fraction_before (enzymes, seed, branches)});
    }

    const EquationGraph& graph_;
    const GatePlan& plan_;
    const SearchSettings& settings_;
    std::vector<std::unique_ptr<CircuitTrial>> workers_; // by thread; null where none could start
    SearchOutcome outcome_;
    std::vector<GateStore> stores_; // by job: what has been put together
    std::size_t largest_size_;      // enzymes of the largest circuits
    std::barrier<> all_there_;
    // What all threads write often lies apart from what they read.
    std::array<Draws, 2> draws_;                          // by phase
    alignas (64) std::atomic<std::uint64_t> circuits_{0}; // tried
    std::atomic<std::size_t> gates_{0};                   // stored; less when one replaces several
    alignas (64) std::vector<double> work_behind_;        // by seed: estimated work from it on
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
