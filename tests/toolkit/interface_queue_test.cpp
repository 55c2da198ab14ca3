// Calls that any thread hands over to the interface thread.
#include "toolkit/interface_queue.h"

#include <FL/Fl.H>
#include <array>
#include <chrono>
#include <gtest/gtest.h>
#include <memory>
#include <thread>
#include <vector>

namespace ostrand::toolkit {
namespace {

/// A queue whose wakings are counted and answered by hand.
struct queue : ::testing::Test {
    bool run_all () {
        const bool any = waiting > 0;
        while (waiting > 0) {
            --waiting;
            tasks.run ();
        }
        return any;
    }
    int waiting = 0; // wakings that were not answered
    bool deaf = false;
    InterfaceQueue tasks{[this] {
        if (deaf) return false;
        ++waiting;
        return true;
    }};
    std::vector<int> done;
};

TEST_F (queue, tasks_run_in_the_order_in_which_they_were_posted) {
    for (int i = 0; i < 5; ++i) tasks.post ([this, i] { done.push_back (i); });
    EXPECT_EQ (done, std::vector<int> ());
    run_all ();
    EXPECT_EQ (done, (std::vector<int>{0, 1, 2, 3, 4}));
}

TEST_F (queue, one_waking_is_enough_until_it_is_answered) {
    for (int i = 0; i < 100; ++i) tasks.post ([] {});
    EXPECT_EQ (waiting, 1);
    run_all ();
    tasks.post ([] {});
    EXPECT_EQ (waiting, 1);
}

TEST_F (queue, each_task_runs_once_and_goes) {
    auto held = std::make_shared<int> (0);
    tasks.post ([held] { ++*held; });
    run_all ();
    tasks.run (); // nothing is left
    EXPECT_EQ (*held, 1);
    EXPECT_EQ (held.use_count (), 1);
}

TEST_F (queue, a_task_may_post_another) {
    tasks.post ([this] {
        done.push_back (1);
        tasks.post ([this] { done.push_back (3); });
    });
    tasks.post ([this] { done.push_back (2); });
    run_all ();
    EXPECT_EQ (done, (std::vector<int>{1, 2, 3}));
}

TEST_F (queue, an_event_loop_inside_a_task_goes_on_with_the_tasks_behind_it) {
    tasks.post ([this] {
        EXPECT_TRUE (run_all ());
        done.push_back (3);
    });
    tasks.post ([this] { done.push_back (1); });
    tasks.post ([this] { done.push_back (2); });
    run_all ();
    EXPECT_EQ (done, (std::vector<int>{1, 2, 3}));
}

TEST_F (queue, what_could_not_be_told_is_told_with_the_next_task) {
    deaf = true;
    tasks.post ([this] { done.push_back (1); });
    deaf = false;
    tasks.post ([this] { done.push_back (2); });
    run_all ();
    EXPECT_EQ (done, (std::vector<int>{1, 2}));
}

TEST (interface_queue, tasks_of_all_threads_run_on_the_thread_of_the_event_loop) {
    constexpr std::size_t each = 500;
    const std::thread::id here = std::this_thread::get_id ();
    std::array<std::size_t, 4> done{}; // no lock: one thread only
    std::size_t elsewhere = 0;
    std::size_t out_of_order = 0;
    InterfaceQueue& tasks = interface_queue ();
    std::vector<std::thread> threads;
    for (std::size_t t = 0; t < done.size (); ++t) {
        threads.emplace_back ([&, t] {
            for (std::size_t i = 0; i < each; ++i) {
                tasks.post ([&, t, i] {
                    elsewhere += std::this_thread::get_id () != here;
                    out_of_order += done[t] != i;
                    ++done[t];
                });
            }
        });
    }
    const auto end = std::chrono::steady_clock::now () + std::chrono::seconds (20);
    const std::array<std::size_t, 4> all{each, each, each, each};
    while (done != all && std::chrono::steady_clock::now () < end) Fl::wait (0.5);
    for (std::thread& thread : threads) thread.join ();
    EXPECT_EQ (done, all);
    EXPECT_EQ (elsewhere, 0U);
    EXPECT_EQ (out_of_order, 0U);
}

TEST (interface_queue, a_sleeping_event_loop_is_woken) {
    bool done = false;
    InterfaceQueue& tasks = interface_queue ();
    std::thread other ([&] {
        std::this_thread::sleep_for (std::chrono::milliseconds (50));
        tasks.post ([&done] { done = true; });
    });
    // Without a waking, this would sleep for its whole time.
    const auto start = std::chrono::steady_clock::now ();
    while (!done && std::chrono::steady_clock::now () - start < std::chrono::seconds (20)) {
        Fl::wait (60);
    }
    other.join ();
    EXPECT_TRUE (done);
    EXPECT_LT (std::chrono::steady_clock::now () - start, std::chrono::seconds (20));
}

} // namespace
} // namespace ostrand::toolkit
