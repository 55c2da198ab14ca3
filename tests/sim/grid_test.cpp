// The grid of simulations.
#include "sim/grid.h"
#include "sim/sim_support.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace ostrand::sim {
namespace {

using ::testing::ElementsAre;

/// A prepared grid, with start counts in thousands of µM-molecules made small again.
struct Prepared {
    explicit Prepared (std::string_view text) : model (text) {
        const testing::CaughtMessages messages;
        ok = model.ok && prepare_run (model.tables, seeds, 1 << 28, grid);
        reported = messages.joined ();
    }
    /// The values (in µM) of a species over all simulations.
    std::vector<int> values (std::string_view name) const {
        std::vector<int> all;
        for (std::size_t i = 0; i < model.tables.species.size (); ++i) {
            if (model.tables.species[i]->name != name) continue;
            std::vector<std::uint32_t> counts (model.tables.species.size ());
            for (std::size_t s = 0; s < grid.n_simul; ++s) {
                grid.plan.write_counts (s, counts);
                all.push_back (static_cast<int> ((counts[i] + 300) / 602));
            }
        }
        return all;
    }
    ReadModel model;
    SeedSequence seeds;
    Grid grid;
    bool ok = false;
    std::string reported;
};

TEST (grid, one_value_each_is_one_simulation) {
    const Prepared run ("[a] = 1 uM; a -> b | 1;");
    EXPECT_EQ (run.grid.n_simul, 1U);
    EXPECT_EQ (run.grid.n_var_conc, 0U);
}

TEST (grid, three_and_four_values_give_twelve_simulations) {
    const Prepared run ("[a] = 1 uM, 2 uM, 3 uM; [b] = 1 uM, 2 uM, 3 uM, 4 uM;");
    EXPECT_EQ (run.grid.n_simul, 12U);
    EXPECT_EQ (run.grid.n_var_conc, 2U);
    EXPECT_THAT (run.values ("a"), ElementsAre (1, 1, 1, 1, 2, 2, 2, 2, 3, 3, 3, 3));
    EXPECT_THAT (run.values ("b"), ElementsAre (1, 2, 3, 4, 1, 2, 3, 4, 1, 2, 3, 4));
}

TEST (grid, linked_they_give_four_padded_by_the_last_value) {
    const Prepared run ("[a] = 1 uM, 2 uM, 3 uM; [b] = 1 uM, 2 uM, 3 uM, 4 uM; linked (a, b);");
    EXPECT_EQ (run.grid.n_simul, 4U);
    EXPECT_EQ (run.grid.n_var_conc, 1U);
    EXPECT_THAT (run.values ("a"), ElementsAre (1, 2, 3, 3));
    EXPECT_THAT (run.values ("b"), ElementsAre (1, 2, 3, 4));
    EXPECT_EQ (run.model.species ("a").nb, 4);
    EXPECT_EQ (run.model.species ("b").nb, 1); // the file lists a group once
}

TEST (grid, a_chain_begins_where_nothing_links_to_it) {
    const Prepared run ("[a] = 1 uM, 2 uM; [c] = 5 uM, 6 uM; [b] = 3 uM, 4 uM; linked (b, a);");
    EXPECT_EQ (run.grid.n_simul, 4U);
    // c stands before b in the table, so it varies more slowly than the chain of b and a.
    EXPECT_THAT (run.values ("c"), ElementsAre (5, 5, 6, 6));
    EXPECT_THAT (run.values ("b"), ElementsAre (3, 4, 3, 4));
    EXPECT_THAT (run.values ("a"), ElementsAre (1, 2, 1, 2));
    EXPECT_EQ (run.model.species ("a").nb, 1);
    EXPECT_EQ (run.model.species ("b").nb, 2);
}

TEST (grid, a_ring_begins_at_its_first_species) {
    const Prepared run ("[a] = 1 uM, 2 uM; [b] = 3 uM; linked (b, a, b);");
    EXPECT_EQ (run.grid.n_simul, 2U);
    EXPECT_THAT (run.values ("b"), ElementsAre (3, 3));
    EXPECT_EQ (run.model.species ("a").nb, 2);
    EXPECT_EQ (run.model.species ("b").nb, 1);
}

TEST (grid, a_species_that_two_chains_reach_belongs_to_the_first) {
    const Prepared run ("[a] = 1 uM, 2 uM; [b] = 3 uM, 4 uM, 5 uM; [c] = 6 uM; linked (a, c); "
                        "linked (b, c);");
    EXPECT_EQ (run.grid.n_simul, 6U);
    EXPECT_THAT (run.values ("c"), ElementsAre (6, 6, 6, 6, 6, 6));
    EXPECT_EQ (run.model.species ("c").nb, 1);
}

TEST (grid, a_species_linked_with_itself_is_a_group_of_one) {
    EXPECT_EQ (Prepared ("[a] = 1 uM, 2 uM; linked (a, a);").grid.n_simul, 2U);
}

TEST (grid, a_series_of_equal_values_still_counts_as_varying) {
    const Prepared run ("[a] = 1 uM, 1 uM;");
    EXPECT_EQ (run.grid.n_simul, 2U);
    EXPECT_EQ (run.grid.n_var_conc, 1U);
}

TEST (grid, a_second_run_in_the_same_process_has_different_random_numbers) {
    ReadModel model ("[a] = 1 uM;");
    SeedSequence seeds;
    Grid first;
    Grid second;
    ASSERT_TRUE (prepare_run (model.tables, seeds, 1 << 20, first));
    ASSERT_TRUE (prepare_run (model.tables, seeds, 1 << 20, second));
    EXPECT_NE (first.seed (0).rd_state0, second.seed (0).rd_state0);
}

TEST (grid, a_grid_too_large_for_memory_is_told_before_anything_is_allocated) {
    const Prepared run ("[a] = 0 mM -> 127 mM : 1 mM; [b] = 0 mM -> 127 mM : 1 mM; a -> b | 1; "
                        "display (a, b); duration = 400000;");
    EXPECT_FALSE (run.ok);
    EXPECT_EQ (run.grid.series_block, nullptr);
    const std::uint64_t bytes = 16384ULL * 4 * 2 * 400000ULL;
    EXPECT_EQ (run.reported, "too many simulations for the memory: 16384 simulations of 2 species "
                             "at 400000 points need " +
                                 std::to_string (bytes) + " bytes, 268435456 can be had\n");
}

TEST (grid, only_displayed_species_take_memory) {
    const Prepared run ("[a] = 0 mM -> 127 mM : 1 mM; [b] = 0 mM -> 127 mM : 1 mM; a -> b | 1; "
                        "duration = 400000;");
    EXPECT_TRUE (run.ok);
    EXPECT_TRUE (run.grid.recorded.empty ());
    const Prepared shown ("[a] = 1 mM; b + c -> a | 1; display (a, c); duration = 5;");
    EXPECT_THAT (shown.grid.recorded, ElementsAre (0, 2));
}

TEST (grid, a_grid_beyond_all_numbers_is_told_too) {
    std::string text;
    for (int i = 0; i < 12; ++i) {
        text += "[s" + std::to_string (i) + "x] = 0 mM -> 127 mM : 1 mM;";
    }
    const Prepared run (text);
    EXPECT_FALSE (run.ok);
    EXPECT_THAT (run.reported,
                 ::testing::HasSubstr ("over 18446744073709551615 simulations of 0 species at 0"));
}

} // namespace
} // namespace ostrand::sim
