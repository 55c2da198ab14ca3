// Long work, on the caller's thread and on its own.
#include "base/background_work.h"
#include "base/report.h"
#include "base/workers.h"
#include "support/failing_memory.h"
#include "support/support.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <latch>
#include <new>
#include <stdexcept>
#include <thread>

namespace ostrand {
namespace {

using ::testing::ElementsAre;

/// Work that is whatever a test says.
class AnyWork : public LongWork {
  public:
    using Step = std::function<Outcome (const std::stop_token&, Progress&)>;
    explicit AnyWork (Step step, std::function<void ()> tidy = {})
        : step_ (std::move (step)), tidy_ (std::move (tidy)) {}
    void tidy () override {
        if (tidy_) tidy_ ();
    }

  protected:
    Outcome work (const std::stop_token& stop) override { return step_ (stop, progress_); }

  private:
    Step step_;
    std::function<void ()> tidy_;
};

std::shared_ptr<AnyWork> any_work (AnyWork::Step step, std::function<void ()> tidy = {}) {
    return std::make_shared<AnyWork> (std::move (step), std::move (tidy));
}

/// Goes on until it is stopped.
Outcome endless (const std::stop_token& stop, Progress&) {
    while (!stop.stop_requested ()) std::this_thread::yield ();
    return Outcome::stop ();
}

TEST (progress, is_the_part_of_what_is_expected) {
    Progress progress;
    EXPECT_EQ (progress.progress_fraction (), 0.0F); // nothing to do is not yet done
    progress.expect (40000);
    progress.add_progress (10000);
    EXPECT_EQ (progress.progress_fraction (), 0.25F);
    progress.add_progress (10000);
    EXPECT_EQ (progress.progress_fraction (), 0.5F);
    progress.add_progress (90000);
    EXPECT_EQ (progress.progress_fraction (), 1.0F);
    progress.expect (4);
    EXPECT_EQ (progress.progress_fraction (), 0.0F);
}

TEST (progress, may_be_estimated_and_counts_results) {
    Progress progress;
    progress.estimate (-1);
    EXPECT_EQ (progress.progress_fraction (), 0.0F);
    progress.estimate (0.75);
    EXPECT_EQ (progress.progress_fraction (), 0.75F);
    progress.estimate (0.25); // of a slower thread: it never goes back
    EXPECT_EQ (progress.progress_fraction (), 0.75F);
    progress.estimate (7);
    EXPECT_EQ (progress.progress_fraction (), 1.0F);
    progress.add_results (3);
    progress.add_results (static_cast<std::uint64_t> (-1)); // one was replaced
    EXPECT_EQ (progress.results (), 2U);
}

TEST (long_work, ends_done_stopped_or_failed) {
    EXPECT_TRUE (any_work ([] (auto&, auto&) { return Outcome::success (); })->run ().done ());
    std::stop_source stop;
    stop.request_stop ();
    EXPECT_TRUE (any_work (endless)->run (stop.get_token ()).stopped ());
    const Outcome failed =
        any_work ([] (auto&, auto&) { return Outcome::failure ("so it is"); })->run ();
    EXPECT_TRUE (failed.failed ());
    EXPECT_EQ (failed.reason, "so it is");
}

TEST (long_work, what_is_thrown_is_a_failure) {
    const auto run = [] (auto thrown) {
        return any_work ([=] (auto&, auto&) -> Outcome { throw thrown; })->run ();
    };
    EXPECT_EQ (run (std::bad_alloc ()).reason, "out of memory");
    EXPECT_EQ (run (std::runtime_error ("odd")).reason, "odd");
    EXPECT_TRUE (run (std::runtime_error ("odd")).failed ());
}

TEST (long_work, what_is_thrown_on_a_helper_thread_is_a_failure_too) {
    const auto work = any_work ([] (auto&, auto&) {
        WorkerThreads helpers;
        helpers.start ([] { throw std::bad_alloc (); });
        helpers.join ();
        return Outcome::success ();
    });
    EXPECT_EQ (work->run ().reason, "out of memory");
}

TEST (workers, join_waits_for_all_and_throws_what_left_one) {
    std::atomic<int> ended{0};
    WorkerThreads helpers;
    EXPECT_TRUE (helpers.start ([&] {
        ++ended;
        throw std::runtime_error ("first");
    }));
    for (int i = 0; i < 3; ++i) EXPECT_TRUE (helpers.start ([&] { ++ended; }));
    EXPECT_THROW (helpers.join (), std::runtime_error);
    EXPECT_EQ (ended, 4);
    helpers.join (); // told once
}

TEST (workers, their_messages_go_where_those_of_their_maker_go) {
    const testing::CaughtMessages messages;
    WorkerThreads helpers;
    for (int i = 0; i < 8; ++i) helpers.start ([] { report_message ("from a helper"); });
    report_message ("from the maker");
    helpers.join ();
    EXPECT_EQ (messages.all.size (), 9U);
}

TEST (workers, without_memory_no_thread_is_started_and_nothing_is_lost) {
    for (std::uint64_t served = 0;; ++served) {
        std::atomic<int> ran{0};
        bool started = false;
        bool failed = false;
        {
            WorkerThreads helpers;
            const std::function<void ()> work = [&ran] { ++ran; };
            const testing::FailingMemory memory (served);
            started = helpers.start (work);
            failed = memory.failed ();
        }
        ASSERT_EQ (ran, started ? 1 : 0) << served;
        if (!failed) {
            ASSERT_TRUE (started);
            break;
        }
    }
}

TEST (background_work, is_watched_and_ends_with_an_outcome) {
    std::latch half (1);
    std::latch seen (1);
    BackgroundWork work (any_work ([&] (const std::stop_token&, Progress& progress) {
        progress.expect (4);
        progress.add_progress (2);
        half.count_down ();
        seen.wait ();
        return Outcome::success ();
    }));
    half.wait ();
    EXPECT_FALSE (work.finished ());
    EXPECT_EQ (work.outcome (), std::nullopt);
    EXPECT_EQ (work.progress ().progress_fraction (), 0.5F);
    seen.count_down ();
    EXPECT_TRUE (work.wait ().done ());
    EXPECT_TRUE (work.finished ());
}

TEST (background_work, is_stopped) {
    BackgroundWork work (any_work (endless));
    EXPECT_FALSE (work.finished ());
    work.stop ();
    EXPECT_TRUE (work.wait ().stopped ());
}

TEST (background_work, that_nobody_wants_any_more_is_stopped) {
    std::atomic<bool> stopped{false};
    {
        const BackgroundWork work (any_work ([&] (const std::stop_token& stop, Progress& progress) {
            Outcome outcome = endless (stop, progress);
            stopped = true;
            return outcome;
        }));
    }
    EXPECT_TRUE (stopped);
}

TEST (background_work, hands_its_messages_over_in_order_and_calls_nobody_with_them) {
    const testing::CaughtMessages not_here;
    std::atomic<int> woken{0};
    std::atomic<int> ended{0};
    BackgroundWork work (any_work ([] (auto&, auto&) {
                             report_message ("one");
                             WorkerThreads helpers;
                             helpers.start ([] { report_message ("two, from a helper"); });
                             helpers.join ();
                             report_message ("three");
                             return Outcome::failure ("told by whoever asked");
                         }),
                         {.on_message = [&] { ++woken; }, .on_end = [&] { ++ended; }});
    EXPECT_TRUE (work.wait ().failed ());
    EXPECT_EQ (woken, 3);
    EXPECT_EQ (ended, 1);
    EXPECT_THAT (work.take_messages (), ElementsAre ("one", "two, from a helper", "three"));
    EXPECT_TRUE (work.take_messages ().empty ());
    EXPECT_TRUE (not_here.all.empty ());
}

TEST (background_work, tells_its_listener_behind_the_outcome) {
    std::unique_ptr<BackgroundWork> work;
    std::latch made (1);
    std::atomic<bool> outcome_was_there{false};
    work = std::make_unique<BackgroundWork> (
        any_work ([&] (auto&, auto&) {
            made.wait ();
            return Outcome::success ();
        }),
        WorkListener{.on_end = [&] { outcome_was_there = work->outcome ().has_value (); }});
    made.count_down ();
    work->wait ();
    EXPECT_TRUE (outcome_was_there);
}

TEST (background_work, gives_memory_back_behind_its_answer) {
    // As long as the memory is not freed nobody waits for it, not even the end of the work's
    // handle.
    auto free_it = std::make_shared<std::latch> (1);
    auto freed = std::make_shared<std::latch> (1);
    {
        BackgroundWork work (any_work (endless, [free_it, freed] {
            free_it->wait ();
            freed->count_down ();
        }));
        work.stop ();
        EXPECT_TRUE (work.wait ().stopped ());
    }
    EXPECT_FALSE (freed->try_wait ());
    free_it->count_down ();
    freed->wait ();
}

TEST (background_work, two_go_on_at_once) {
    std::latch both (2);
    const auto meet = [&] (auto&, auto&) {
        both.arrive_and_wait (); // alone it would wait for ever
        return Outcome::success ();
    };
    const BackgroundWork first (any_work (meet));
    const BackgroundWork second (any_work (meet));
    EXPECT_TRUE (first.wait ().done ());
    EXPECT_TRUE (second.wait ().done ());
}

TEST (background_work, is_a_failure_where_memory_ends) {
    bool failed = true;
    for (std::uint64_t served = 0; failed; served = testing::FailingMemory::next (served)) {
        const testing::FailingMemory memory (served);
        try {
            BackgroundWork work (any_work ([] (auto&, auto&) {
                report_message ("%s", "a message");
                return Outcome::success ();
            }));
            const Outcome outcome = work.wait ();
            failed = memory.failed ();
            if (outcome.done ()) continue;
            const bool told =
                outcome.reason == "out of memory" || outcome.reason == "no thread can be started";
            EXPECT_TRUE (told) << outcome.reason << " behind " << served;
        } catch (const std::bad_alloc&) {
            failed = true; // no room for the handle itself
        }
    }
}

} // namespace
} // namespace ostrand
