// Both engines, step by step.
#include "base/text.h"
#include "sim/engine.h"
#include "sim/sim_support.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace ostrand::sim {
namespace {

using ::testing::ElementsAre;

/// One molecule is 1 / 602252 mM: a concentration that gives this count.
std::string count (std::uint32_t molecules_wanted) {
    for (double mm = molecules_wanted / 602252.0;; mm *= 1.0000001) {
        if (molecules (static_cast<float> (mm)) == molecules_wanted) {
            return format_g (static_cast<double> (static_cast<float> (mm)), 9) + " mM";
        }
    }
}

std::string start (std::string_view name, std::uint32_t molecules_wanted) {
    return "[" + std::string (name) + "] = " + count (molecules_wanted) + "; ";
}

TEST (random, the_generator_and_the_seeds_are_fixed) {
    Seeds seeds;
    RandomState first = seeds.next ();
    EXPECT_EQ (first.rd_state0, 0x44E2068BF01FB7U);
    EXPECT_EQ (first.rd_state1, 0x12BB113D13EAF7FU);
    std::uint64_t x = 3;
    std::uint64_t second = 0;
    for (int i = 0; i < 3; ++i) {
        x = x * 1103515245 + 12345;
        if (i == 1) second = x;
    }
    const RandomState next = seeds.next ();
    EXPECT_EQ (next.rd_state0, second);
    EXPECT_EQ (next.rd_state1, x);
    const float u = first.draw ();
    EXPECT_GE (u, 0.0F);
    EXPECT_LE (u, 1.0F);
    EXPECT_EQ (first.rd_state0, 0x12BB113D13EAF7FU);
}

TEST (engine, counts_saturate_where_no_conversion_is_defined) {
    EXPECT_EQ (to_count (-1.0F), 0U);
    EXPECT_EQ (to_count (0.99F), 0U);
    EXPECT_EQ (to_count (7.9), 7U);
    EXPECT_EQ (to_count (5e9F), 4294967295U);
    EXPECT_EQ (to_count (std::numeric_limits<float>::infinity ()), 4294967295U);
    EXPECT_EQ (to_count (std::numeric_limits<double>::quiet_NaN ()), 0U);
}

TEST (engine, no_reactions_leave_all_points_at_the_initial_counts) {
    const FinishedRun run (start ("a", 70) + "duration = 3;");
    for (std::uint32_t t = 0; t < 3; ++t) EXPECT_EQ (run.count (0, "a", t), 70U);
}

TEST (engine, no_duration_records_nothing) {
    for (const bool stochastic : {true, false}) {
        const FinishedRun run (start ("a", 70) + "a -> b | 1;", stochastic);
        EXPECT_EQ (run.grid.n_points, 0U);
        EXPECT_TRUE (run.grid.series (0).empty ());
    }
}

TEST (engine, one_second_has_exactly_one_point_the_initial_state) {
    const FinishedRun run (start ("a", 70) + "a -> b | 0.5; duration = 1;");
    EXPECT_EQ (run.grid.n_points, 1U);
    EXPECT_EQ (run.count (0, "a", 0), 70U);
    EXPECT_EQ (run.count (0, "b", 0), 0U);
}

/// Counts of all species after one simulated second of the stochastic engine.
std::vector<std::uint32_t> after_a_second (std::string_view text,
                                           std::vector<std::uint32_t> initial) {
    const ReadModel model (text);
    const std::uint32_t n_species = model.tables.n_species ();
    initial.push_back (0); // the spare slot
    std::vector<std::uint32_t> points (std::size_t{n_species} * 2);
    Simulation simulation{points, initial, {1, 2}};
    run_stochastic ({model.tables.steps, n_species, 2 * stats, 2, nullptr}, simulation);
    std::vector<std::uint32_t> result;
    for (std::uint32_t i = 0; i < n_species; ++i) result.push_back (points[i * 2 + 1]);
    return result;
}

TEST (engine, a_constant_of_one_fires_for_every_molecule) {
    // The mean is a whole number, its fraction is 0 and never above u: n is that number exactly.
    EXPECT_THAT (after_a_second ("a -> b | 1;", {1000, 0}), ElementsAre (0, 1000));
}

TEST (engine, a_reactant_that_is_also_a_product_grows_by_what_fires) {
    // The product is written last, from the count before: a does not stay, it grows.
    const auto counts = after_a_second ("a -> a + b | 1;", {1, 0});
    // Each firing of a doubles a (a = a + n with n = a) and adds the same to b, wrapping at 2^32.
    EXPECT_EQ (counts[0], 0U);
    EXPECT_EQ (counts[1], 4294967295U);
}

TEST (engine, a_product_given_twice_counts_once) {
    EXPECT_THAT (after_a_second ("a -> b + b | 1;", {500, 0}), ElementsAre (0, 500));
}

TEST (engine, a_reactant_given_twice_is_taken_once) {
    // a + a -> b: the second write of a overrides the first, so each b costs one a.
    EXPECT_THAT (after_a_second ("a + a -> b | 1e7 ;", {700, 0}), ElementsAre (0, 700));
}

TEST (engine, a_bimolecular_step_is_clipped_to_its_scarcer_reactant) {
    EXPECT_THAT (after_a_second ("a + c -> b | 1e9 ;", {1, 1000, 0}), ElementsAre (0, 999, 1));
}

TEST (engine, a_monomolecular_constant_above_one_wraps_the_count) {
    // The first step takes two of one molecule. From then on the mean is beyond all counts: the
    // whole part saturates, the one that the fraction adds wraps it to 0, and nothing moves any
    // more.
    EXPECT_THAT (after_a_second ("a -> b | 2 ;", {1, 0}), ElementsAre (4294967295U, 2));
}

TEST (engine, a_fraction_fires_only_when_it_is_above_the_number_drawn) {
    // One molecule that fires with 1 / 4 a step: as many draws as until the first one below that.
    const ReadModel model ("a -> b | 0.25 ;");
    const RandomState seed{0x123456789ABCDEF, 0xFEDCBA9876543210};
    std::vector<std::uint32_t> points (4);
    std::vector<std::uint32_t> start_counts{1, 0, 0};
    Simulation simulation{points, start_counts, seed};
    run_stochastic ({model.tables.steps, 2, 2 * stats, 2, nullptr}, simulation);
    EXPECT_EQ (points[3], 1U);
    RandomState by_hand = seed;
    int draws = 1;
    while (!(0.25F > by_hand.draw ())) ++draws;
    EXPECT_GT (draws, 1); // at first the number drawn was above the fraction, and n stayed 0
    EXPECT_EQ (simulation.random.rd_state1, by_hand.rd_state1);
}

TEST (engine, a_dead_reaction_draws_no_random_number) {
    const std::string alive = start ("a", 4000) + "a -> b | 0.0001 ; duration = 4;";
    const FinishedRun without (alive);
    const FinishedRun with (alive + "x -> y | 0.5 ;");
    for (std::uint32_t t = 0; t < 4; ++t) {
        EXPECT_EQ (without.count (0, "b", t), with.count (0, "b", t));
    }
    const FinishedRun drawing (alive + start ("x", 9) + "x -> y | 0 ;");
    EXPECT_NE (without.count (0, "b", 2), drawing.count (0, "b", 2));
}

TEST (engine, a_step_whose_second_reactant_is_missing_still_draws) {
    const std::string alive = start ("a", 4000) + "a -> b | 0.0001 ; duration = 4;";
    const FinishedRun without (alive);
    const FinishedRun with (alive + start ("x", 9) + "x + z -> y | 0.5 ;");
    EXPECT_NE (without.count (0, "b", 2), with.count (0, "b", 2));
}

TEST (engine, closing_steps_make_all_four_products) {
    const FinishedRun run (start ("e", 50) + start ("s", 3000) +
                           "e : s -> p + q + r + t | 1 uM - 500; duration = 6;");
    const std::uint32_t p = run.count (0, "p", 5);
    EXPECT_GT (p, 2000U);
    EXPECT_EQ (run.count (0, "q", 5), p);
    EXPECT_EQ (run.count (0, "r", 5), p);
    EXPECT_EQ (run.count (0, "t", 5), p);
    EXPECT_EQ (run.count (0, "e", 5) + run.count (0, "Fcplx_1", 5), 50U);
}

TEST (engine, sweeps_alternate_between_forward_and_backward) {
    // Forward, b gives back at once what it got from a. Backward, it has nothing to give first, and
    // keeps what it gets. Each pair of time steps ends backward.
    EXPECT_THAT (after_a_second ("a -> b | 1; b -> a | 1;", {5, 0}), ElementsAre (0, 5));
}

TEST (deterministic, a_species_below_one_molecule_is_a_spent_reactant) {
    // 3 -> 1.5 -> 0.75: after two steps nothing is consumed any more.
    const FinishedRun run (start ("a", 3) + "a -> b | 0.5 ; duration = 2;", false);
    EXPECT_EQ (run.count (0, "a", 1), 0U); // 0.75, truncated
    EXPECT_EQ (run.count (0, "b", 1), 2U); // 2.25
}

TEST (deterministic, simulations_with_the_same_start_are_identical) {
    const std::string text = "[a] = 5 uM, 5 uM; a -> b | 0.0001 ; duration = 5;";
    const FinishedRun same (text, false);
    const FinishedRun chance (text, true);
    bool differs = false;
    for (std::uint32_t t = 0; t < 5; ++t) {
        EXPECT_EQ (same.count (0, "b", t), same.count (1, "b", t));
        differs = differs || chance.count (0, "b", t) != chance.count (1, "b", t);
    }
    EXPECT_TRUE (differs);
}

TEST (deterministic, a_bimolecular_step_is_clipped) {
    const FinishedRun run (start ("a", 5) + start ("c", 1000) + "a + c -> b | 1e9 ; duration = 2;",
                           false);
    EXPECT_EQ (run.count (0, "a", 1), 0U);
    EXPECT_EQ (run.count (0, "c", 1), 995U);
    EXPECT_EQ (run.count (0, "b", 1), 5U);
}

TEST (engine, results_do_not_depend_on_the_threads) {
    const std::string text =
        "[a] = 1 uM -> 7 uM : 1 uM; a -> b | 0.0002 ; b + a -> c | 3 ; duration = 3;";
    ModelTables tables;
    ASSERT_TRUE (read_model (text, tables));
    for (const bool stochastic : {true, false}) {
        std::vector<std::vector<std::uint32_t>> all;
        for (const bool sequential : {true, false}) {
            ModelTables copy;
            ASSERT_TRUE (read_model (text, copy));
            SeedSequence seeds;
            Grid grid;
            ASSERT_TRUE (prepare_run (copy, seeds, 1 << 30, grid, {}, Recording::all));
            run_simulations ({copy.steps, copy.n_species (), stochastic}, grid, sequential);
            const std::size_t size = std::size_t{grid.n_simul} * copy.n_species () * grid.n_points;
            all.emplace_back (grid.series_block.get (), grid.series_block.get () + size);
        }
        EXPECT_EQ (all[0], all[1]);
    }
}

} // namespace
} // namespace ostrand::sim
