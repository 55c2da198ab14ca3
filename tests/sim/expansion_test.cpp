// Enzyme and inhibitor statements as elementary steps.
#include "sim/sim_support.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace ostrand::sim {
namespace {

using ::testing::ElementsAre;

TEST (expansion, one_substrate_gives_three_steps_and_its_complex_is_made_first) {
    const ReadModel model ("e : s -> p | 1 mM - 100;");
    ASSERT_TRUE (model.ok) << model.reported;
    EXPECT_THAT (model.names (), ElementsAre ("e", "s", "p", "Fcplx_1"));
    EXPECT_THAT (model.steps (),
                 ElementsAre ("e + s -> Fcplx_1", "Fcplx_1 -> e + s", "Fcplx_1 -> e + p"));
}

TEST (expansion, constants_mix_single_and_double_precision) {
    const ReadModel model ("e : s -> p | 0.3 mM - 123;");
    const float s = static_cast<float> (123.0 / 10000.0 + 123.0 / 100000.0);
    const float square = s * s;
    const float square_and_one = square + 1.0F;
    const double d = static_cast<double> (square_and_one) * 0.448;
    EXPECT_EQ (model.tables.steps[0].k,
               static_cast<float> (static_cast<double> (s) / (static_cast<double> (0.3F) * d)));
    EXPECT_EQ (model.tables.steps[1].k, static_cast<float> (123.0 / 100000.0));
    EXPECT_EQ (model.tables.steps[2].k, 123.0F / 10000.0F);
}

TEST (expansion, two_substrates_give_nine_steps) {
    const ReadModel model ("e : a + b -> p + q | 1 mM, 2 mM - 100;");
    EXPECT_THAT (model.names (),
                 ElementsAre ("e", "a", "b", "p", "q", "Fcplx_1", "E0_cplx_1", "E1_cplx_1"));
    EXPECT_THAT (model.steps (), ElementsAre ("e + a -> E0_cplx_1", "E0_cplx_1 -> e + a",
                                              "E0_cplx_1 + b -> Fcplx_1",
                                              "Fcplx_1 -> E0_cplx_1 + b", "e + b -> E1_cplx_1",
                                              "E1_cplx_1 -> e + b", "E1_cplx_1 + a -> Fcplx_1",
                                              "Fcplx_1 -> E1_cplx_1 + a", "Fcplx_1 -> e + p + q"));
    EXPECT_EQ (model.tables.steps[0].k, model.tables.steps[6].k);
    EXPECT_NE (model.tables.steps[0].k, model.tables.steps[2].k);
}

TEST (expansion, three_substrates_give_twenty_five_steps_with_the_last_pair_out_of_line) {
    const ReadModel model ("e : a + b + c -> p | 1 mM, 2 mM, 3 mM - 100;");
    EXPECT_THAT (model.names (),
                 ElementsAre ("e", "a", "b", "c", "p", "Fcplx_1", "E0_cplx_1", "E01_cplx_1",
                              "E1_cplx_1", "E02_cplx_1", "E2_cplx_1", "E03_cplx_1"));
    EXPECT_THAT (
        model.steps (),
        ElementsAre ("e + a -> E0_cplx_1", "E0_cplx_1 -> e + a", "E0_cplx_1 + b -> E01_cplx_1",
                     "E01_cplx_1 -> E0_cplx_1 + b", "E0_cplx_1 + c -> E02_cplx_1",
                     "E02_cplx_1 -> E0_cplx_1 + c", "E03_cplx_1 + a -> Fcplx_1",
                     "Fcplx_1 -> E03_cplx_1 + a", "e + b -> E1_cplx_1", "E1_cplx_1 -> e + b",
                     "E1_cplx_1 + a -> E01_cplx_1", "E01_cplx_1 -> E1_cplx_1 + a",
                     "E1_cplx_1 + c -> E03_cplx_1", "E03_cplx_1 -> E1_cplx_1 + c",
                     "E02_cplx_1 + b -> Fcplx_1", "Fcplx_1 -> E02_cplx_1 + b", "e + c -> E2_cplx_1",
                     "E2_cplx_1 -> e + c", "E2_cplx_1 + a -> E02_cplx_1",
                     "E02_cplx_1 -> E2_cplx_1 + a", "E2_cplx_1 + b -> E03_cplx_1",
                     "E03_cplx_1 -> E2_cplx_1 + b", "E01_cplx_1 + c -> Fcplx_1",
                     "Fcplx_1 -> E01_cplx_1 + c", "Fcplx_1 -> e + p"));
}

TEST (expansion, four_substrates_give_sixty_five_steps) {
    const ReadModel model ("e : a + b + c + d -> p | 1 mM, 2 mM, 3 mM, 4 mM - 100;");
    ASSERT_EQ (model.tables.steps.size (), 65U);
    EXPECT_THAT (model.names (),
                 ElementsAre ("e", "a", "b", "c", "d", "p", "Fcplx_1", "E0_cplx_1", "E1_cplx_1",
                              "E2_cplx_1", "E3_cplx_1", "E01_cplx_1", "E02_cplx_1", "E03_cplx_1",
                              "E12_cplx_1", "E13_cplx_1", "E23_cplx_1", "E012_cplx_1",
                              "E013_cplx_1", "E023_cplx_1", "E123_cplx_1"));
    EXPECT_EQ (model.step (0), "e + a -> E0_cplx_1");
    EXPECT_EQ (model.step (8), "E0_cplx_1 + b -> E01_cplx_1");
    EXPECT_EQ (model.step (31), "E23_cplx_1 -> E3_cplx_1 + c");
    // Each pair: both bindings, then both releases.
    EXPECT_EQ (model.step (32), "E01_cplx_1 + c -> E012_cplx_1");
    EXPECT_EQ (model.step (33), "E01_cplx_1 + d -> E013_cplx_1");
    EXPECT_EQ (model.step (34), "E012_cplx_1 -> E01_cplx_1 + c");
    EXPECT_EQ (model.step (35), "E013_cplx_1 -> E01_cplx_1 + d");
    EXPECT_EQ (model.step (52), "E23_cplx_1 + a -> E023_cplx_1");
    EXPECT_EQ (model.step (56), "E123_cplx_1 + a -> Fcplx_1");
    EXPECT_EQ (model.step (62), "E012_cplx_1 + d -> Fcplx_1");
    EXPECT_EQ (model.step (64), "Fcplx_1 -> e + p");
}

TEST (expansion, two_statements_never_share_a_complex) {
    const ReadModel model ("e : s -> p | 1 mM - 1; e : s -> p | 1 mM - 1; e : i | 1 mM;");
    EXPECT_THAT (model.names (), ElementsAre ("e", "s", "p", "Fcplx_1", "Fcplx_2", "i", "Icplx_3"));
}

TEST (expansion, a_mass_action_takes_a_number_too) {
    const ReadModel model ("a -> b | 1; e : s -> p | 1 mM - 1;");
    EXPECT_EQ (model.names ().back (), "Fcplx_2");
}

TEST (expansion, the_fifth_product_is_read_and_dropped) {
    const ReadModel model ("e : s -> a + b + c + d + f | 1 mM - 1;");
    ASSERT_TRUE (model.ok);
    EXPECT_EQ (model.step (2), "Fcplx_1 -> e + a + b + c + d");
    EXPECT_EQ (model.names ()[6], "f");
}

TEST (expansion, a_substrate_that_appears_twice_is_two_binding_sites) {
    const ReadModel model ("e : s + s -> p | 1 mM, 1 mM - 1;");
    EXPECT_EQ (model.step (0), "e + s -> E0_cplx_1");
    EXPECT_EQ (model.step (4), "e + s -> E1_cplx_1");
}

TEST (expansion, a_kcat_of_nothing_binds_nothing) {
    const ReadModel model ("e : s -> p | 1 mM - 0;");
    EXPECT_TRUE (model.ok);
    for (const ElemStep& step : model.tables.steps) EXPECT_EQ (step.k, 0.0F);
}

TEST (expansion, a_km_of_nothing_is_no_fault) {
    const ReadModel model ("e : s -> p | 0 mM - 1;");
    EXPECT_TRUE (model.ok);
    EXPECT_TRUE (std::isinf (model.tables.steps[0].k));
}

TEST (expansion, an_inhibitor_gives_two_steps) {
    const ReadModel model ("e : i | 0.25 mM;");
    EXPECT_THAT (model.steps (), ElementsAre ("e + i -> Icplx_1", "Icplx_1 -> e + i"));
    EXPECT_EQ (model.tables.steps[0].k, static_cast<float> (0.001 / (0.25 * 0.448000448)));
    EXPECT_EQ (model.tables.steps[1].k, 0.001F);
}

TEST (expansion, complexes_are_species_that_can_be_displayed) {
    const ReadModel model ("e : s -> p | 1 mM - 1; display (Fcplx_1);");
    EXPECT_TRUE (model.species ("Fcplx_1").displayed);
}

} // namespace
} // namespace ostrand::sim
