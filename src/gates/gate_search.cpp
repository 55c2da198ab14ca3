// The search: circuits by size, and on every thread the whole walk, which is cheap beside the
// games, with those circuits tried whose numbers the thread draws.
#include "gates/gate_search.h"

#include "base/workers.h"
#include "gates/search_work.h"

#include <algorithm>
#include <atomic>
#include <barrier>
#include <cstddef>
#include <exception>
#include <memory>
#include <memory_resource>
#include <mutex>
#include <optional>

namespace ostrand::gates {
namespace {

/// Bytes that hold most circuits with all that is asked of them.
constexpr std::size_t circuit_memory = 1 << 16;

class Search {
  public:
    Search (const EquationGraph& graph, const GatePlan& plan, const SearchSettings& settings)
        : graph_ (graph), plan_ (plan), settings_ (settings),
          largest_ (std::clamp (settings.limit, 2, most_enzymes)),
          workers_ (static_cast<std::size_t> (std::max (settings.threads, 1))),
          stores_ (static_cast<std::size_t> (plan.job_count)),
          with_the_search_ (settings.stop, EndStep{end_}),
          all_there_ (std::max (settings.threads, 1), BetweenSizes{*this}) {
        outcome_.jobs.resize (stores_.size ());
        if (settings.progress == nullptr) return;
        settings.progress->largest = largest_;
        settings.progress->seeds = static_cast<int> (graph.equations.size ());
        work_.emplace (graph, largest_, end_.get_token ());
    }

    SearchOutcome run () {
        WorkerThreads threads;
        std::size_t missing = 0;
        for (std::size_t w = 1; w < workers_.size (); ++w) {
            if (missing > 0 || !threads.start ([this, w] { work (w); })) ++missing;
        }
        // The threads that could be started, at the least this one, do it all.
        for (; missing > 0; --missing) all_there_.arrive_and_drop ();
        work (0);
        threads.join ();
        if (fault_) std::rethrow_exception (fault_);
        outcome_.stopped = over_;
        if (settings_.progress != nullptr && !over_) settings_.progress->estimate (1);
        for (const std::unique_ptr<CircuitTrial>& worker : workers_) {
            if (worker == nullptr) continue;
            outcome_.times.gate += worker->times.gate;
            outcome_.times.model += worker->times.model;
            outcome_.times.sort += worker->times.sort;
        }
        return std::move (outcome_);
    }

  private:
    struct EndStep {
        std::stop_source& end;
        void operator() () const noexcept { end.request_stop (); }
    };
    /// When all threads have met: numbers that they draw are drawn from 0 again, and whether there
    /// is more to do is settled for all of them alike.
    struct BetweenSizes {
        Search& search;
        void operator() () noexcept {
            search.next_circuit_ = 0;
            search.next_job_ = 0;
            search.over_ = search.end_.stop_requested ();
        }
    };

    /// A thread's part; the first is the calling thread. Between sizes the threads put together
    /// what they have, for a gate is not worth storing when a smaller one is known.
    void work (std::size_t thread) {
        bool is_last = false;
        for (int size = 2; !is_last; ++size) {
            std::uint64_t tried = 0;
            guard ([&] {
                // Made here, so that what the thread writes lies apart from what others write.
                if (workers_[thread] == nullptr) {
                    workers_[thread] =
                        std::make_unique<CircuitTrial> (plan_, settings_.rules, end_.get_token ());
                }
                tried = try_circuits (thread, size);
            });
            all_there_.arrive_and_wait ();
            if (over_) return;
            // Where no circuit is, no larger one is either.
            is_last = size == largest_ || tried == 0;
            guard ([&] { put_together (is_last); });
            all_there_.arrive_and_wait ();
            if (over_) return;
            workers_[thread]->smaller = &stores_;
        }
    }

    /// Keeps the first thing that goes wrong, which ends the search on all threads: each of them
    /// still has to come to the next meeting.
    template <class Step>
    void guard (const Step& step) {
        try {
            step ();
        } catch (...) {
            const std::lock_guard lock (fault_lock_);
            if (!fault_) fault_ = std::current_exception ();
            end_.request_stop ();
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
        // Told here, for the others may draw all circuits of this size.
        if (thread == 0 && settings_.progress != nullptr) tell (size, 0, 0);
        std::uint64_t place = 0; // of the next circuit of this size
        std::uint64_t mine = draw ();
        const auto circuit = [&] (std::span<const int> enzymes, int seed) {
            if (enzymes.size () < least || place++ != mine) return;
            mine = draw ();
            const std::size_t stored = worker.stored ();
            worker.evaluate (Circuit (graph_, enzymes, &memory));
            memory.release ();
            if (settings_.progress == nullptr) return;
            settings_.progress->circuits.fetch_add (1, std::memory_order_relaxed);
            settings_.progress->add_results (worker.stored () - stored);
            if (thread == 0) tell (size, seed, place);
        };
        const std::uint64_t extended =
            walk_circuits (graph_, size,
                           {.circuit = circuit,
                            .extend = [] (int, std::uint64_t, std::span<const int>) {},
                            .seed_done = [] (int) {}},
                           end_.get_token ());
        if (thread == 0) outcome_.circuits = extended; // of the last size: all
        return place;
    }

    /// Merges what the threads have of the jobs whose numbers the thread draws.
    void put_together (bool is_last) {
        while (!end_.stop_requested ()) {
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
    void tell (int size, int seed, std::uint64_t tried) {
        settings_.progress->size = size;
        settings_.progress->seeds_done = seed;
        settings_.progress->estimate (work_->part_done (size, tried));
    }

    const EquationGraph& graph_;
    const GatePlan& plan_;
    const SearchSettings& settings_;
    int largest_;                                        // enzymes of a circuit
    std::vector<std::unique_ptr<CircuitTrial>> workers_; // by thread; null where none could start
    std::vector<GateStore> stores_;                      // by job: what has been put together
    SearchOutcome outcome_;
    std::optional<SearchWork> work_; // when progress is asked for

    std::stop_source end_; // asked for when the search is stopped and when a thread fails
    std::stop_callback<EndStep> with_the_search_;
    std::mutex fault_lock_;
    std::exception_ptr fault_;
    bool over_ = false; // written at meetings only
    std::barrier<BetweenSizes> all_there_;
    // What all threads write often lies apart from what they read.
    alignas (64) std::atomic<std::uint64_t> next_circuit_{0}; // of a size, in the order of the walk
    std::atomic<std::size_t> next_job_{0};
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
