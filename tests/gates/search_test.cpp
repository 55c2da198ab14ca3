// Single cases of the search: which gates small networks yield, and what is counted.
#include "gates/builders.h"
#include "gates/gate_csv.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace ostrand::gates {
namespace {

using namespace testing_builders;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;

SearchOutcome search (const EquationGraph& graph, int depth, TrialRules rules = {},
                      int partitions = 1, int job = 1) {
    const Catalogue catalogue = load_catalogue (builtin_catalogue_text (), partitions, job);
    return search_gates (graph, {&catalogue}, {.limit = depth, .rules = rules});
}

/// "A+B=C AND E1,E2 needed X absent Y forks Z", by names.
std::vector<std::string> told (const EquationGraph& graph, const SearchOutcome& outcome) {
    std::vector<std::string> all;
    const auto joined = [&] (const std::vector<int>& columns, const char* joint) {
        std::string text;
        for (const std::string& name : names_of (graph, columns)) {
            text += (text.empty () ? "" : joint) + name;
        }
        return text;
    };
    for (const Gate& gate : outcome.jobs[0].gates) {
        std::string text = joined (gate.inputs, "+") + "=" + joined ({gate.output}, "") + " " +
                           gate.type + " " + joined (gate.enzymes, ",");
        if (!gate.needed.empty ()) text += " needed " + joined (gate.needed, ",");
        if (!gate.absent.empty ()) text += " absent " + joined (gate.absent, ",");
        if (!gate.open_forks.empty ()) text += " forks " + joined (gate.open_forks, ",");
        all.push_back (text);
    }
    return all;
}

TEST (search, one_row_gives_yes_and_no_not) {
    const EquationGraph graph = graph_of ({reaction ("r1", {"A"}, {"B"}, {"E"})});
    const SearchOutcome outcome = search (graph, 3);
    EXPECT_THAT (told (graph, outcome), ElementsAre ("A=B YES E"));
    EXPECT_EQ (outcome.circuits, 1U);
    // One choice of one input, nothing else to assign; NOT fails in its first row, YES plays both.
    EXPECT_EQ (outcome.jobs[0].counts.evaluated_gates, 1U);
    EXPECT_EQ (outcome.jobs[0].counts.evaluations, 3U);
}

TEST (search, gates_of_two_inputs_need_two_candidates) {
    const EquationGraph graph = graph_of ({reaction ("r1", {"A"}, {"B"}, {"E"})});
    const SearchOutcome outcome = search (graph, 3, {}, 8, 2); // AND, ORNOT
    EXPECT_THAT (outcome.jobs[0].gates, IsEmpty ());
    EXPECT_EQ (outcome.jobs[0].counts.evaluated_gates, 0U);
    EXPECT_EQ (outcome.jobs[0].counts.evaluations, 0U);
}

TEST (search, circuit_with_no_final_product_is_extended_all_the_same) {
    const EquationGraph graph =
        graph_of ({reaction ("r1", {"A"}, {"B"}, {"E"}), reaction ("r2", {"B"}, {"A"}, {"F"}),
                   reaction ("r3", {"B"}, {"C"}, {"G"})});
    const SearchOutcome outcome = search (graph, 3);
    // {E,F} alone has no product; {E,F,G} makes C of nothing that is primary.
    EXPECT_THAT (told (graph, outcome), Contains ("A=C YES E,G"));
    EXPECT_EQ (outcome.circuits, 6U); // E, EF, EG, F, FG, G
}

TEST (search, not_arises_from_an_inhibitor) {
    const EquationGraph graph = graph_of ({reaction ("r1", {"X"}, {"Y"}, {"E"}, {"A"})});
    const SearchOutcome outcome = search (graph, 3);
    EXPECT_THAT (told (graph, outcome), Contains ("A=Y NOT E needed X"));
    EXPECT_THAT (told (graph, outcome), Contains ("X=Y YES E absent A"));
    EXPECT_THAT (told (graph, outcome), Contains ("A+X=Y NOTAND E"));
}

TEST (search, choice_that_leaves_no_other_element_runs_once) {
    const EquationGraph graph = graph_of ({reaction ("r1", {"A", "B"}, {"C"}, {"E"})});
    const SearchOutcome outcome = search (graph, 3, {}, 8, 2); // AND, ORNOT
    EXPECT_THAT (told (graph, outcome), ElementsAre ("A+B=C AND E"));
    EXPECT_EQ (outcome.jobs[0].counts.evaluated_gates, 1U);
    EXPECT_EQ (outcome.jobs[0].counts.evaluations, 4U + 1U);
}

TEST (search, partition_without_gates_walks_the_same_circuits_and_counts_nothing) {
    const EquationGraph graph =
        graph_of ({reaction ("r1", {"A"}, {"B"}, {"E"}), reaction ("r2", {"B"}, {"C"}, {"F"})});
    const SearchOutcome outcome = search (graph, 3, {}, 20, 1);
    EXPECT_EQ (outcome.circuits, search (graph, 3).circuits);
    EXPECT_THAT (outcome.jobs[0].gates, IsEmpty ());
    EXPECT_EQ (outcome.jobs[0].counts.evaluated_gates, 0U);
    EXPECT_EQ (outcome.jobs[0].counts.evaluations, 0U);
}

TEST (search, depth_one_and_two_try_two_enzymes_and_three_tries_three) {
    const EquationGraph graph =
        graph_of ({reaction ("r1", {"A"}, {"B"}, {"E"}), reaction ("r2", {"B"}, {"C"}, {"F"}),
                   reaction ("r3", {"C"}, {"D"}, {"G"}), reaction ("r4", {"D"}, {"Z"}, {"H"})});
    const std::vector<std::size_t> largest{2, 2, 3, 4, 4};
    for (int depth = 1; depth <= 5; ++depth) {
        std::size_t most = 0;
        walk_circuits (graph, depth,
                       {.circuit = [&] (std::span<const int> enzymes,
                                        int) { most = std::max (most, enzymes.size ()); },
                        .extend = [] (int, std::uint64_t, std::span<const int>) {},
                        .seed_done = [] (int) {}});
        EXPECT_EQ (most, largest[static_cast<std::size_t> (depth - 1)]);
    }
}

TEST (search, reversible_reaction_is_never_used_in_both_directions) {
    const EquationGraph graph = graph_of (
        {reaction ("r1", {"A"}, {"B"}, {"E"}, {}, true), reaction ("r2", {"B"}, {"C"}, {"F"})});
    std::vector<std::vector<int>> circuits;
    walk_circuits (
        graph, 3,
        {.circuit = [&] (std::span<const int> enzymes,
                         int) { circuits.emplace_back (enzymes.begin (), enzymes.end ()); },
         .extend = [] (int, std::uint64_t, std::span<const int>) {},
         .seed_done = [] (int) {}});
    using Set = std::vector<int>;
    EXPECT_THAT (circuits, ElementsAre (Set{0}, Set{0, 2}, Set{1}, Set{1, 2}, Set{2}));
}

TEST (search, each_set_of_enzymes_arises_once) {
    std::mt19937 random (8);
    for (int i = 0; i < 100; ++i) {
        const EquationGraph graph = graph_of (random_network (random));
        std::set<std::vector<int>> seen;
        walk_circuits (graph, 4,
                       {.circuit =
                            [&] (std::span<const int> enzymes, int) {
                                std::vector<int> sorted (enzymes.begin (), enzymes.end ());
                                std::sort (sorted.begin (), sorted.end ());
                                EXPECT_TRUE (seen.insert (sorted).second);
                            },
                        .extend = [] (int, std::uint64_t, std::span<const int>) {},
                        .seed_done = [] (int) {}});
    }
}

TEST (search, fork_gates_are_left_out_when_forks_are_not_evaluated) {
    const EquationGraph graph =
        graph_of ({reaction ("r1", {"A"}, {"B"}, {"E"}), reaction ("r2", {"A"}, {"C"}, {"F"})});
    const SearchOutcome with = search (graph, 2);
    const SearchOutcome without = search (graph, 2, {.evaluate_forks = false});
    EXPECT_THAT (told (graph, with), ElementsAre ("A=B YES E", "A=C YES F"));
    EXPECT_EQ (told (graph, with), told (graph, without));
    EXPECT_EQ (with.jobs[0].counts.evaluated_gates, without.jobs[0].counts.evaluated_gates);
    EXPECT_GT (with.jobs[0].counts.evaluations, without.jobs[0].counts.evaluations);
}

TEST (search, keys_are_ordered_as_texts) {
    std::vector<Reaction> reactions;
    for (int i = 0; i < 12; ++i) {
        const std::string n (1, static_cast<char> ('a' + i));
        reactions.push_back (reaction ("r" + n, {"A" + n}, {"B" + n}, {"E" + n}));
    }
    const EquationGraph graph = graph_of (reactions);
    const SearchOutcome outcome = search (graph, 1);
    std::vector<std::string> keys;
    for (const Gate& gate : outcome.jobs[0].gates) {
        keys.push_back (gate_key (gate.inputs, gate.output));
    }
    EXPECT_EQ (keys.size (), 12U);
    EXPECT_TRUE (std::is_sorted (keys.begin (), keys.end ()));
}

TEST (search, progress_tells_sizes_and_a_rising_part) {
    std::vector<Reaction> reactions;
    for (int i = 0; i < 40; ++i) {
        reactions.push_back (reaction ("r" + std::to_string (i), {"M" + std::to_string (i)},
                                       {"M" + std::to_string (i + 1)}, {}));
    }
    const EquationGraph graph = graph_of (reactions);
    const Catalogue catalogue = load_catalogue (builtin_catalogue_text (), 1, 1);
    for (const int threads : {1, 2}) {
        SearchProgress progress;
        std::atomic<bool> ended{false};
        std::thread watcher ([&] {
            float last = 0;
            int size = 0;
            while (!ended) {
                const int size_now = progress.size;
                const float now = progress.progress_fraction ();
                EXPECT_LE (now, 1.0F);
                EXPECT_GE (now, last);
                EXPECT_GE (size_now, size);
                last = now;
                size = size_now;
            }
        });
        const SearchOutcome outcome =
            search_gates (graph, {&catalogue},
                          {.limit = 4, .rules = {}, .threads = threads, .progress = &progress});
        ended = true;
        watcher.join ();
        EXPECT_EQ (progress.progress_fraction (), 1.0F);
        EXPECT_EQ (progress.size, 4);
        EXPECT_EQ (progress.largest, 4);
        EXPECT_EQ (progress.seeds, 40);
        EXPECT_EQ (progress.circuits, 40U + 39U + 38U + 37U); // a chain's connected parts
        EXPECT_EQ (progress.results (), outcome.jobs[0].gates.size ());
    }
}

std::shared_ptr<const GateSite> site_of (std::vector<int> enzymes) {
    return std::make_shared<const GateSite> (GateSite{std::move (enzymes), {}, {}});
}

TEST (gate_store, smaller_reaction_sets_replace_larger_ones_in_either_order) {
    for (const bool small_first : {true, false}) {
        GateStore store;
        const auto add = [&] (const std::vector<int>& enzymes) {
            store.add ({5}, 6, 0, site_of (enzymes), {{7}});
        };
        if (small_first) add ({1});
        add ({1, 2});
        add ({2, 3});
        if (!small_first) add ({1});
        EXPECT_EQ (store.size (), 2U);
        std::vector<std::vector<int>> left;
        for (const Gate& gate : store.take_gates ({"YES"})) left.push_back (gate.enzymes);
        using Set = std::vector<int>;
        EXPECT_THAT (left, ElementsAre (Set{1}, Set{2, 3}));
        EXPECT_EQ (store.size (), 0U);
    }
}

TEST (gate_store, fewer_needed_elements_replace_more_on_the_same_rows) {
    GateStore store;
    const auto add = [&] (std::vector<int> needed, int type) {
        store.add ({5}, 6, type, site_of ({1}), {std::move (needed)});
    };
    add ({7, 8}, 0);
    add ({8, 9}, 0);
    add ({7}, 0);
    add ({7, 10}, 0);
    add ({7, 8}, 1); // another type is not compared
    EXPECT_EQ (store.size (), 3U);
    std::vector<std::vector<int>> left;
    for (const Gate& gate : store.take_gates ({"YES", "NOT"})) left.push_back (gate.needed);
    using Set = std::vector<int>;
    EXPECT_THAT (left, ElementsAre (Set{7}, Set{8, 9}, Set{7, 8}));
}

TEST (gate_plan, counts_saturate) {
    EXPECT_EQ (subset_count (5, 2), 10U);
    EXPECT_EQ (subset_count (5, 0), 1U);
    EXPECT_EQ (subset_count (2, 3), 0U);
    EXPECT_EQ (subset_count (62, 31), 465428353255261088U);
    EXPECT_EQ (subset_count (1000, 500), ~std::uint64_t{0});
    EXPECT_EQ (saturated_power_of_two (64), ~std::uint64_t{0});
    EXPECT_EQ (saturated_sum (~std::uint64_t{0}, 1), ~std::uint64_t{0});
    EXPECT_EQ (saturated_product (~std::uint64_t{0} / 2, 3), ~std::uint64_t{0});
    EXPECT_EQ (saturated_product (0, 3), 0U);
}

} // namespace
} // namespace ostrand::gates
