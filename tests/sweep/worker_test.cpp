// Workers, ledger and coordinator: what is cut in any way is whole again.
#include "sweep/coordinator.h"
#include "sweep/sweep_support.h"

#include <algorithm>
#include <chrono>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <random>
#include <thread>

namespace ostrand::sweep {
namespace {

using ::testing::ElementsAre;
using testing::TemporaryFolder;

/// A sweep in the making, with a journal of its own.
struct Making {
    explicit Making (std::string_view text, const SweepChoice& choice = {}, unsigned workers = 2)
        : plan (plan_of (text, choice)), own_journal (folder / "j"),
          ledger (plan->identity (), plan->units ()) {
        if (!own_journal.begin (plan->identity ())) throw std::runtime_error ("no journal");
        coordinator = std::make_unique<Coordinator> (*plan, own_journal, ledger,
                                                     sim::widest (sim::lane_kernels ()), workers);
    }
    RecordSink sink () {
        return [this] (RecordKind kind, std::string_view content) {
            return coordinator->take (kind, content);
        };
    }
    /// All units one after the other, unpacked.
    std::string text () const {
        std::string bytes;
        sim::GzipMember member ([&bytes] (std::string_view more) {
            bytes += more;
            return true;
        });
        for (std::uint64_t i = 0; i < plan->units ().count (); ++i) {
            const auto record = UnitRecord::from_bytes (own_journal.read (ledger.unit (i).place));
            if (!record) return "(no unit " + std::to_string (i) + ")";
            member.append (record->text);
        }
        member.finish ();
        return unpacked (bytes);
    }

    TemporaryFolder folder;
    std::unique_ptr<SweepPlan> plan;
    Journal own_journal;
    Ledger ledger;
    std::unique_ptr<Coordinator> coordinator;
    Progress progress;
};

std::string expected_text (std::string_view text, bool stochastic = true) {
    const TemporaryFolder folder;
    return plain_result (folder, folder.write ("m.ssa", text), stochastic);
}

TEST (worker, a_task_for_a_whole_unit_leaves_the_packed_unit_and_nothing_else) {
    Making making (small_model, {}, 1);
    Worker worker (*making.plan, sim::lane_kernels (), making.progress);
    std::vector<RecordKind> kinds;
    Task task;
    task.simulations = 12;
    task.unit = 0;
    const auto begin = std::chrono::steady_clock::now ();
    ASSERT_TRUE (worker.run (task,
                             [&] (RecordKind kind, std::string_view content) {
                                 kinds.push_back (kind);
                                 return making.coordinator->take (kind, content);
                             },
                             {}));
    // What is longer at work keeps parts of it on the way.
    if (std::chrono::steady_clock::now () - begin < longest_unkept) {
        EXPECT_THAT (kinds, ElementsAre (RecordKind::unit));
    }
    ASSERT_FALSE (kinds.empty ());
    EXPECT_EQ (kinds.back (), RecordKind::unit);
    EXPECT_EQ (std::count (kinds.begin (), kinds.end (), RecordKind::unit), 1);
    EXPECT_EQ (making.progress.amount_done (), 12U * 5);
    EXPECT_EQ (making.text (), expected_text (small_model));
}

TEST (worker, a_stop_keeps_what_was_done_to_the_last_time_step) {
    // Long enough that a stop comes in the middle.
    const std::string text = std::string (small_model) + "duration = 400;";
    Making making (text, {}, 1);
    std::stop_source stop;
    std::optional<NumberedTask> task = making.coordinator->next ();
    ASSERT_TRUE (task);
    Worker worker (*making.plan, sim::lane_kernels (), making.progress);
    std::thread stopper ([&] {
        while (making.progress.amount_done () < 100) std::this_thread::yield ();
        stop.request_stop ();
    });
    const bool done = worker.run (task->task, making.sink (), stop.get_token ());
    stopper.join ();
    if (done) GTEST_SKIP () << "the machine was faster than the stop";
    ASSERT_FALSE (making.ledger.runs ().empty ());
    std::uint64_t kept = 0;
    for (const auto& [first, run] : making.ledger.runs ()) {
        kept += std::uint64_t{run.simulations} * run.points;
    }
    EXPECT_EQ (kept, making.progress.amount_done ());
}

TEST (coordinator, tasks_done_in_any_order_make_the_result) {
    const std::string expected = expected_text (small_model);
    for (unsigned workers : {1U, 2U, 5U}) {
        Making making (small_model, {}, workers);
        std::vector<NumberedTask> tasks;
        std::mt19937 random (workers);
        Worker worker (*making.plan, sim::lane_kernels (), making.progress);
        while (!making.coordinator->finished ()) {
            // As many tasks as there are workers are out at once.
            while (tasks.size () < workers) {
                auto task = making.coordinator->next ();
                if (!task) break;
                tasks.push_back (std::move (*task));
            }
            ASSERT_FALSE (tasks.empty ());
            std::swap (tasks[random () % tasks.size ()], tasks.back ());
            ASSERT_TRUE (worker.run (tasks.back ().task, making.sink (), {}));
            making.coordinator->done (tasks.back ().number, 0.01);
            tasks.pop_back ();
        }
        EXPECT_EQ (making.text (), expected) << workers;
        EXPECT_FALSE (making.coordinator->next ());
    }
}

TEST (coordinator, few_simulations_are_shared_out_evenly) {
    Making making ("duration = 9; [a] = 1 uM, 2 uM, 3 uM, 4 uM, 5 uM; a -> b | 0.1; display (a);");
    const auto first = making.coordinator->next ();
    const auto second = making.coordinator->next ();
    ASSERT_TRUE (first && second);
    EXPECT_EQ (first->task.simulations, 3U);
    EXPECT_EQ (second->task.simulations, 2U);
    EXPECT_FALSE (making.coordinator->next ());
}

TEST (coordinator, costly_simulations_come_first) {
    // 800,000 lines each, a unit of its own; without a nothing happens in the first.
    Making making ("duration = 400000; [a] = 0 uM, 2 uM; a -> b | 0.1; b -> c | 0.1; "
                   "display (b, c);",
                   {}, 1);
    const auto first = making.coordinator->next ();
    ASSERT_TRUE (first);
    EXPECT_EQ (first->task.first_simulation, 1U);
}

TEST (coordinator, a_record_that_does_not_belong_ends_the_sweep) {
    Making making (small_model);
    SeriesRecord record;
    record.first_simulation = 11;
    record.simulations = 2; // one too many
    record.points = 5;
    record.counts.resize (2 * 3 * 5);
    EXPECT_FALSE (making.coordinator->take (RecordKind::series, record.to_bytes ()));
    EXPECT_FALSE (making.coordinator->take (RecordKind::unit, "noise"));
    EXPECT_EQ (making.coordinator->failure (), "a result that does not belong to the sweep");
    EXPECT_FALSE (making.coordinator->next ());
    EXPECT_FALSE (making.coordinator->wait_for_next ({}));
}

TEST (coordinator, waiting_ends_with_a_stop) {
    Making making (small_model, {}, 1);
    const auto only = making.coordinator->next ();
    ASSERT_TRUE (only);
    std::stop_source stop;
    std::thread stopper ([&stop] { stop.request_stop (); });
    EXPECT_FALSE (making.coordinator->wait_for_next (stop.get_token ()));
    stopper.join ();
}

// ---- the ledger ----------------------------------------------------------------------------

SeriesRecord slice (std::uint64_t first, std::uint32_t simulations, std::uint32_t first_point,
                    std::uint32_t points, bool finished) {
    SeriesRecord record;
    record.first_simulation = first;
    record.simulations = simulations;
    record.first_point = first_point;
    record.points = points;
    record.time_steps = std::uint64_t{first_point + points - 1} * 10'000;
    record.counts.resize (std::size_t{simulations} * 3 * points);
    if (!finished) record.states.resize (simulations);
    return record;
}

TEST (ledger, slices_must_follow_each_other) {
    const auto plan = plan_of (small_model);
    Ledger ledger (plan->identity (), plan->units ());
    EXPECT_FALSE (ledger.enter_series (slice (0, 4, 1, 2, false), {}));
    EXPECT_TRUE (ledger.enter_series (slice (0, 4, 0, 2, false), {}));
    EXPECT_FALSE (ledger.enter_series (slice (0, 4, 0, 2, false), {})); // again
    EXPECT_FALSE (ledger.enter_series (slice (0, 4, 3, 1, false), {})); // one is missing
    EXPECT_FALSE (ledger.enter_series (slice (0, 5, 2, 1, false), {})); // more than there were
    EXPECT_FALSE (ledger.enter_series (slice (2, 4, 0, 2, false), {})); // overlaps
    EXPECT_FALSE (ledger.enter_series (slice (0, 4, 2, 2, true), {}));  // not finished
    EXPECT_TRUE (ledger.enter_series (slice (0, 4, 2, 3, true), {}));
    EXPECT_FALSE (ledger.enter_series (slice (0, 4, 5, 0, true), {})); // finished already
    EXPECT_TRUE (ledger.enter_series (slice (4, 8, 0, 5, true), {}));
    EXPECT_FALSE (ledger.enter_series (slice (12, 1, 0, 5, true), {})); // there is none
}

TEST (ledger, a_part_of_a_run_may_go_on_alone) {
    const auto plan = plan_of (small_model);
    for (const auto& [first, simulations] : {std::pair (0U, 2U), {1U, 2U}, {2U, 2U}, {0U, 4U}}) {
        Ledger ledger (plan->identity (), plan->units ());
        ASSERT_TRUE (ledger.enter_series (slice (0, 4, 0, 2, false), {}));
        ASSERT_TRUE (ledger.enter_series (slice (first, simulations, 2, 3, true), {}));
        std::uint64_t at = 0;
        for (const auto& [begin, run] : ledger.runs ()) {
            EXPECT_EQ (begin, at);
            at += run.simulations;
            EXPECT_EQ (run.finished, begin == first);
            EXPECT_EQ (run.points, begin == first ? 5U : 2U);
            // The others still can, and nobody twice.
            EXPECT_EQ (ledger.enter_series (slice (begin, run.simulations, 2, 3, true), {}),
                       begin != first);
        }
        EXPECT_EQ (at, 4U);
    }
}

TEST (ledger, an_interrupted_slice_stands_where_its_points_say) {
    const auto plan = plan_of (small_model);
    Ledger ledger (plan->identity (), plan->units ());
    SeriesRecord record = slice (0, 4, 0, 2, false);
    record.time_steps = 25'000; // that would be three points
    EXPECT_FALSE (ledger.enter_series (record, {}));
    record.time_steps = 19'998;
    EXPECT_TRUE (ledger.enter_series (record, {}));
}

TEST (ledger, a_shard_takes_its_own_simulations_only) {
    const auto plan = plan_of (small_model, {.shard = Shard{2, 3}}); // 4 to 7
    Ledger ledger (plan->identity (), plan->units ());
    EXPECT_FALSE (ledger.enter_series (slice (3, 2, 0, 5, true), {}));
    EXPECT_FALSE (ledger.enter_series (slice (7, 2, 0, 5, true), {}));
    EXPECT_FALSE (ledger.enter_unit (0, {1, 1})); // has other shards' simulations too
    EXPECT_TRUE (ledger.enter_series (slice (4, 4, 0, 5, true), {}));
}

} // namespace
} // namespace ostrand::sweep
