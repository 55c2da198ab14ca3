// Messages of ranks as bytes.
#include "ranks/rank_words.h"

#include <gtest/gtest.h>

namespace ostrand::ranks {
namespace {

TEST (rank_words, a_start_comes_back_from_its_bytes) {
    Start start;
    start.model = std::string ("a -> b | 1;\0 ", 13);
    start.choice.replicates = 7;
    start.choice.stochastic = false;
    start.threads = 3;
    for (const bool more : {false, true}) {
        if (more) {
            start.choice.seed = 1234567890123;
            start.choice.shard = sweep::Shard{2, 5};
        }
        const auto back = Start::from_bytes (start.to_bytes ());
        ASSERT_TRUE (back);
        EXPECT_EQ (back->model, start.model);
        EXPECT_EQ (back->choice.replicates, 7U);
        EXPECT_FALSE (back->choice.stochastic);
        EXPECT_EQ (back->choice.seed, start.choice.seed);
        EXPECT_EQ (back->choice.shard, start.choice.shard);
        EXPECT_EQ (back->threads, 3U);
    }
    EXPECT_FALSE (Start::from_bytes ("")); // there is nothing to do
}

TEST (rank_words, an_ask_comes_back_from_its_bytes) {
    const auto first = Ask::from_bytes (Ask{.thread = 2}.to_bytes ());
    ASSERT_TRUE (first);
    EXPECT_EQ (first->thread, 2U);
    EXPECT_FALSE (first->done);
    const auto second = Ask::from_bytes (Ask{.thread = 0, .done = 9, .seconds = 0.25}.to_bytes ());
    ASSERT_TRUE (second);
    EXPECT_EQ (second->done, 9U);
    EXPECT_EQ (second->seconds, 0.25);
}

TEST (rank_words, what_is_finished_and_tasks_come_back_from_their_bytes) {
    const Finished finished{12, sweep::RecordKind::unit, std::string ("\0abc", 4)};
    const auto back = Finished::from_bytes (finished.to_bytes ());
    ASSERT_TRUE (back);
    EXPECT_EQ (back->points, 12U);
    EXPECT_EQ (back->kind, sweep::RecordKind::unit);
    EXPECT_EQ (back->content, finished.content);
    sweep::Task task;
    task.first_simulation = 5;
    task.simulations = 8;
    std::uint64_t number = 0;
    const auto same = read_task (task_bytes (77, task), number);
    ASSERT_TRUE (same);
    EXPECT_EQ (number, 77U);
    EXPECT_EQ (same->first_simulation, 5U);
    EXPECT_EQ (same->simulations, 8U);
}

TEST (rank_words, shortened_ones_are_none) {
    const std::string start = Start{"a", {}, 1}.to_bytes ();
    const std::string ask = Ask{}.to_bytes ();
    const std::string finished = Finished{1, sweep::RecordKind::series, "x"}.to_bytes ();
    const std::string task = task_bytes (1, {});
    std::uint64_t number = 0;
    for (std::size_t i = 0; i < start.size (); ++i) {
        EXPECT_FALSE (Start::from_bytes (start.substr (0, i)));
    }
    for (std::size_t i = 0; i < ask.size (); ++i)
        EXPECT_FALSE (Ask::from_bytes (ask.substr (0, i)));
    for (std::size_t i = 0; i < finished.size (); ++i) {
        EXPECT_FALSE (Finished::from_bytes (finished.substr (0, i)));
    }
    for (std::size_t i = 0; i < task.size (); ++i) {
        EXPECT_FALSE (read_task (task.substr (0, i), number));
    }
}

} // namespace
} // namespace ostrand::ranks
