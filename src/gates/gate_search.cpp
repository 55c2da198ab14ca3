// The search: circuits by size, and on every thread the whole walk, which is cheap beside the
// games, with those circuits tried whose numbers the thread draws.
#include "gates/gate_search.h"

#include "gates/search_work.h"

#include <algorithm>
#include <atomic>
#include <barrier>
#include <chrono>
#include <cstddef>
#include <memory>
#include <memory_resource>
#include <optional>
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
          largest_ (std::clamp (settings.limit, 2, most_enzymes)),
          workers_ (static_cast<std::size_t> (std::max (settings.threads, 1))),
          stores_ (static_cast<std::size_t> (plan.job_count)),
          all_there_ (std::max (settings.threads, 1), DrawAnew{*this}) {
        outcome_.jobs.resize (stores_.size ());
        if (settings.progress) work_.emplace (graph, largest_);
    }

    SearchOutcome run () {
        report (2, 0, 0); // the other threads may be done before this one has tried anything
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
    /// Numbers that threads draw are drawn from 0 again after each meeting.
    struct DrawAnew {
        Search& search;
        void operator() () noexcept {
            search.next_circuit_ = 0;
            search.next_job_ = 0;
        }
    };

    /// A thread's part; the first is the calling thread. Between sizes the threads put together
    /// what they have, for a gate is not worth storing when a smaller one is known.
    void work (std::size_t thread) {
        // Made here, so that what the thread writes lies apart from what others write.
        workers_[thread] = std::make_unique<CircuitTrial> (plan_, settings_.rules);
        bool is_last = false;
        for (int size = 2; !is_last; ++size) {
            const std::uint64_t tried = try_circuits (thread, size);
            // Where no circuit is, no larger one is either.
            is_last = size == largest_ || tried == 0;
            all_there_.arrive_and_wait ();
            put_together (is_last);
            if (!is_last) all_there_.arrive_and_wait ();
            workers_[thread]->smaller = &stores_;
        }
    }

    /// Tries those circuits of `size` enzymes whose numbers the thread draws; with those of two
    /// come those of one. Gives how many there are for all threads.
    std::uint64_t try_circuits (std::size_t thread, int size) {
        CircuitTrial& worker = *workers_[thread];
        std::vector<std::byte> buffer (circuit_memory);
        std::pmr::monotonic_buffer_resource memory (buffer.data (), buffer.size ());
        const auto draw = [this] { return next_circuit_.fetch_add (1, std::memory_order_relaxed); };
        const std::size_t least = size == 2 ? 1 : static_cast<std::size_t> (size);
        std::uint64_t place = 0; // of the next circuit of this size
        std::uint64_t mine = draw ();
        const auto circuit = [&] (std::span<const int> enzymes, int seed) {
            if (enzymes.size () < least || place++ != mine) return;
            mine = draw ();
            const std::size_t stored = worker.stored ();
            worker.evaluate (Circuit (graph_, enzymes, &memory));
            memory.release ();
            circuits_.fetch_add (1, std::memory_order_relaxed);
            gates_.fetch_add (worker.stored () - stored, std::memory_order_relaxed);
            if (thread == 0) report (size, seed, place);
        };
        const std::uint64_t extended =
            walk_circuits (graph_, size,
                           {.circuit = circuit,
                            .extend = [] (int, std::uint64_t, std::span<const int>) {},
                            .seed_done = [] (int) {}});
        if (thread == 0) outcome_.circuits = extended; // of the last size: all
        return place;
    }

    /// Merges what the threads have of the jobs whose numbers the thread draws.
    void put_together (bool is_last) {
        for (;;) {
            const std::size_t job = next_job_.fetch_add (1, std::memory_order_relaxed);
            if (job >= stores_.size ()) return;
            SearchResult& result = outcome_.jobs[job];
            for (const std::unique_ptr<CircuitTrial>& worker : workers_) {
                if (worker == nullptr) continue;
                stores_[job].merge (std::move (worker->stores[job]));
                if (is_last) add (result.counts, worker->counts[job]);
            }
            if (is_last) result.gates = stores_[job].take_gates (plan_.types[job]);
        }
    }

    static void add (TrialCounts& sum, const TrialCounts& more) {
        sum.evaluated_gates = saturated_sum (sum.evaluated_gates, more.evaluated_gates);
        sum.evaluations = saturated_sum (sum.evaluations, more.evaluations);
    }

    /// On the calling thread only.
    void report (int size, int seed, std::uint64_t tried) {
        if (!work_) return;
        const auto now = std::chrono::steady_clock::now ();
        if (now < next_report_) return;
        next_report_ = now + std::chrono::duration_cast<std::chrono::steady_clock::duration> (
                                 std::chrono::duration<double> (progress_pause));
        settings_.progress ({.size = size,
                             .largest = largest_,
                             .seeds_done = seed,
                             .seeds = static_cast<int> (graph_.equations.size ()),
                             .circuits = circuits_.load (std::memory_order_relaxed),
                             .gates = gates_.load (std::memory_order_relaxed),
                             .fraction = work_->part_done (size, tried)});
    }

    const EquationGraph& graph_;
    const GatePlan& plan_;
    const SearchSettings& settings_;
    int largest_;                                        // enzymes of a circuit
    std::vector<std::unique_ptr<CircuitTrial>> workers_; // by thread; null where none could start
    std::vector<GateStore> stores_;                      // by job: what has been put together
    SearchOutcome outcome_;
    std::barrier<DrawAnew> all_there_;
    std::optional<SearchWork> work_; // when progress is asked for
    std::chrono::steady_clock::time_point next_report_;
    // What all threads write often lies apart from what they read.
    alignas (64) std::atomic<std::uint64_t> next_circuit_{0}; // of a size, in the order of the walk
    std::atomic<std::size_t> next_job_{0};
    std::atomic<std::uint64_t> circuits_{0}; // tried
    std::atomic<std::size_t> gates_{0};      // stored; less when one replaces several
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
