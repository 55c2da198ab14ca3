// The grammar of the model language: what each statement does, and each fault's message.
#include "sim/sim_support.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace ostrand::sim {
namespace {

using ::testing::ElementsAre;

TEST (read_model, an_empty_text_is_a_model_of_nothing) {
    const ReadModel model (" // only a comment");
    EXPECT_TRUE (model.ok);
    EXPECT_EQ (model.tables.n_species (), 0U);
}

TEST (read_model, a_model_without_duration_has_no_time_steps) {
    EXPECT_EQ (ReadModel ("a -> b | 1;").tables.nb_gen, 0U);
}

TEST (read_model, duration_counts_whole_seconds_and_the_last_one_holds) {
    EXPECT_EQ (ReadModel ("duration = 2.9;").tables.nb_gen, 20000U);
    EXPECT_EQ (ReadModel ("duration = 5; duration = 3;").tables.nb_gen, 30000U);
    EXPECT_EQ (ReadModel ("duration = 429496;").tables.nb_gen, 4294960000U);
}

TEST (read_model, display_marks_and_colours_species) {
    const ReadModel model ("display (a, b #1a5, z #102030 #a0b0c0);");
    ASSERT_TRUE (model.ok) << model.reported;
    EXPECT_TRUE (model.species ("a").displayed);
    EXPECT_EQ (model.species ("a").colour, no_colour);
    EXPECT_EQ (model.species ("b").colour, 0x11AA5500U);
    EXPECT_EQ (model.species ("z").colour, 0xA0B0C000U);
}

TEST (read_model, links_chain_names_in_their_order) {
    const ReadModel model ("linked (a, b, c); linked (a);");
    ASSERT_TRUE (model.ok);
    EXPECT_EQ (model.species ("a").next_linked, nullptr);
    EXPECT_EQ (model.species ("b").prev_linked, &model.species ("a"));
    EXPECT_EQ (model.species ("b").next_linked, &model.species ("c"));
    EXPECT_EQ (model.species ("c").prev_linked, &model.species ("b"));
}

TEST (read_model, a_group_before_a_concentration_links_the_bracketed_species_first) {
    const ReadModel model ("[a] = (b, c) 1 uM, 2 uM;");
    ASSERT_TRUE (model.ok) << model.reported;
    EXPECT_EQ (model.species ("a").prev_linked, nullptr);
    EXPECT_EQ (model.species ("a").next_linked, &model.species ("b"));
    EXPECT_EQ (model.species ("b").next_linked, &model.species ("c"));
    EXPECT_THAT (model.counts ("a"), ElementsAre (602, 1204));
}

TEST (read_model, concentrations_are_molecules_at_602_252_a_micromolar) {
    const ReadModel model ("[a] = 10 uM; [b]=10uM; [c] = 0.01 mM; input [d] = 1 mM; output [e] = 1 "
                           "uM; excess [f] = 2 mM;");
    ASSERT_TRUE (model.ok) << model.reported;
    EXPECT_THAT (model.counts ("a"), ElementsAre (molecules (10.0F / 1000.0F)));
    EXPECT_EQ (model.counts ("a"), model.counts ("b"));
    EXPECT_EQ (model.counts ("a"), model.counts ("c"));
    EXPECT_THAT (model.counts ("d"), ElementsAre (602252));
    EXPECT_THAT (model.counts ("e"), ElementsAre (602));
    EXPECT_THAT (model.counts ("f"), ElementsAre (1204504));
}

TEST (read_model, a_spaced_and_a_glued_unit_read_the_same) {
    EXPECT_EQ (ReadModel ("[a] = 10 uM;").counts ("a"), ReadModel ("[a]=10uM;").counts ("a"));
}

TEST (read_model, a_series_runs_upward_from_its_lower_end) {
    const std::vector<std::uint32_t> one_to_five{molecules (1), molecules (2), molecules (3),
                                                 molecules (4), molecules (5)};
    EXPECT_EQ (ReadModel ("[a] = 1 mM -> 5 mM : 1 mM;").counts ("a"), one_to_five);
    EXPECT_EQ (ReadModel ("[a] = 5 mM -> 1 mM : 1 mM;").counts ("a"), one_to_five);
    EXPECT_THAT (ReadModel ("[a] = 1 mM -> 5 mM : 9 mM;").counts ("a"),
                 ElementsAre (molecules (1)));
}

TEST (read_model, a_series_goes_on_from_the_last_value_stored) {
    EXPECT_THAT (
        ReadModel ("[a] = 1 mM -> 3 mM : 1 mM -> 5 mM : 2 mM, 1 mM;").counts ("a"),
        ElementsAre (molecules (1), molecules (2), molecules (3), molecules (5), molecules (1)));
    EXPECT_THAT (ReadModel ("[a] = 4 mM -> 1 mM : 2 mM -> 4 mM : 1 mM;").counts ("a"),
                 ElementsAre (molecules (1), molecules (3), molecules (4)));
}

TEST (read_model, a_running_value_adds_up_in_single_precision) {
    std::vector<std::uint32_t> expected;
    for (float value = 0.1F; value <= 1.0F; value += 0.1F) expected.push_back (molecules (value));
    EXPECT_EQ (ReadModel ("[a] = 0.1 mM -> 1 mM : 0.1 mM;").counts ("a"), expected);
}

TEST (read_model, equal_ends_append_nothing_and_a_step_of_nothing_runs_into_the_limit) {
    EXPECT_EQ (ReadModel ("[a] = 1 mM -> 1 mM : 1 mM;").counts ("a").size (), 1U);
    EXPECT_EQ (fault_of ("[a] = 1 mM -> 2 mM : 0 mM;"),
               "too much initial concentrations (max = 128)\n");
}

TEST (read_model, a_hundred_and_twenty_eight_values_fit_and_one_more_is_a_fault) {
    std::string list = "[a] = 0 mM";
    for (int i = 1; i < 128; ++i) list += ", 1 uM";
    EXPECT_EQ (ReadModel (list + ";").counts ("a").size (), 128U);
    EXPECT_EQ (fault_of (list + ", 1 uM;"), "too much initial concentrations (max = 128)\n");
    EXPECT_EQ (ReadModel ("[a] = 0 mM -> 127 mM : 1 mM;").counts ("a").size (), 128U);
    EXPECT_EQ (fault_of ("[a] = 0 mM -> 128 mM : 1 mM;"),
               "too much initial concentrations (max = 128)\n");
}

TEST (read_model, a_later_concentration_replaces_an_earlier_one) {
    EXPECT_THAT (ReadModel ("[a] = 1 mM, 2 mM, 3 mM; [a] = 5 mM;").counts ("a"),
                 ElementsAre (molecules (5)));
}

TEST (read_model, mass_actions_are_steps_at_once) {
    const ReadModel model ("a -> b | 0.5; a + b -> c + d | 2;");
    ASSERT_TRUE (model.ok) << model.reported;
    EXPECT_THAT (model.steps (), ElementsAre ("a -> b", "a + b -> c + d"));
    EXPECT_EQ (model.tables.steps[0].k, 0.5F);
    EXPECT_EQ (model.tables.steps[0].q, no_species);
    EXPECT_EQ (model.tables.steps[0].p, (std::array<std::uint16_t, 5>{1, 4, 4, 4, 4}));
    EXPECT_EQ (model.tables.complex_counter, 2);
}

TEST (read_model, statements_may_stand_in_any_order) {
    const ReadModel model ("a -> b | 1; display (b); [a] = 1 uM; duration = 1;");
    EXPECT_TRUE (model.ok);
    EXPECT_THAT (model.names (), ElementsAre ("a", "b"));
    EXPECT_THAT (model.counts ("b"), ElementsAre (0));
}

TEST (read_model, a_unit_cannot_be_the_last_thing_in_the_text) {
    EXPECT_EQ (fault_of ("[a] = 1 mM"), "uM or mM expected, got <ident>\n");
}

TEST (read_model, faults_of_what_is_expected_name_what_is_there) {
    EXPECT_EQ (fault_of ("duration 5;"), "'=' expected, got: '5'\n");
    EXPECT_EQ (fault_of ("duration = x;"), "'<float>' expected, got: 'x'\n");
    EXPECT_EQ (fault_of ("duration = 5 s;"), "';' expected, got: 's'\n");
    EXPECT_EQ (fault_of ("duration = 5 1.5 ;"), "';' expected, got: '1.5'\n");
    EXPECT_EQ (fault_of ("display a;"), "'(' expected, got: 'a'\n");
    EXPECT_EQ (fault_of ("display (-);"), "'<ident>' expected, got: '-'\n");
    EXPECT_EQ (fault_of ("linked (a, display);"), "'<ident>' expected, got: 'display'\n");
    EXPECT_EQ (fault_of ("[a = 1 mM;"), "']' expected, got: '='\n");
    EXPECT_EQ (fault_of ("[a] 1 mM;"), "'=' expected, got: '1'\n");
    EXPECT_EQ (fault_of ("[a] = -1 mM;"), "'<float>' expected, got: '-'\n");
    EXPECT_EQ (fault_of ("[a] = 1 mM -> 2 mM, 1 mM;"), "':' expected, got: ','\n");
    EXPECT_EQ (fault_of ("input a;"), "'[' expected, got: 'a'\n");
    EXPECT_EQ (fault_of ("a + b | 1;"), "'->' expected, got: '|'\n");
    EXPECT_EQ (fault_of ("a -> b + c + d | 1;"), "'|' expected, got: '+'\n");
    EXPECT_EQ (fault_of ("a -> b | c;"), "'<float>' expected, got: 'c'\n");
    EXPECT_EQ (fault_of ("a -> / | 1;"), "'<ident>' expected, got: ''\n");
    EXPECT_EQ (fault_of ("a -> \"\" | 1;"), "'<ident>' expected, got: ''\n");
}

TEST (read_model, a_model_that_ends_without_its_last_semicolon_fails) {
    EXPECT_EQ (fault_of ("duration = 5 "), "';' expected, got: 'EOF'\n");
}

TEST (read_model, faults_of_lists) {
    EXPECT_EQ (fault_of ("linked (a b);"), "',' or ')' expected, got '<ident>'\n");
    EXPECT_EQ (fault_of ("linked (a"), "',' or ')' expected, got 'EOF'\n");
    EXPECT_EQ (fault_of ("[a] = (b; 1 mM;"), "',' or ')' expected, got ';'\n");
    EXPECT_EQ (fault_of ("display (a b);"), "',', ')', #rrggbb or #rgb expected, got '<ident>'\n");
    EXPECT_EQ (fault_of ("display (a #123 :);"), "',', ')', #rrggbb or #rgb expected, got ':'\n");
}

TEST (read_model, faults_of_units) {
    EXPECT_EQ (fault_of ("[a] = 1 ;"), "uM or mM expected, got ;\n");
    EXPECT_EQ (fault_of ("[a] = 1 nM;"), "uM or mM expected, got <ident>\n");
    EXPECT_EQ (fault_of ("[a] = 1 2 ;"), "uM or mM expected, got <float>\n");
    EXPECT_EQ (fault_of ("e : i | 3 ;"), "uM or mM expected, got ;\n");
}

TEST (read_model, faults_of_a_statements_beginning) {
    for (const char* text : {";", "5 ;", "+", "/;", "\"\";", "#123 ;", "mM ;", "-> a;"}) {
        EXPECT_EQ (fault_of (text), "syntax error: enzyme name expected\n") << text;
    }
    EXPECT_EQ (fault_of ("a;"), "'->' or '+' expected, got ';'\n");
    EXPECT_EQ (fault_of ("a b"), "'->' or '+' expected, got '<ident>'\n");
}

TEST (read_model, an_empty_statement_is_a_fault) {
    EXPECT_EQ (fault_of ("duration = 5;;"), "syntax error: enzyme name expected\n");
}

TEST (read_model, a_mass_action_misses_its_bar) {
    EXPECT_EQ (fault_of ("a -> b 1 ;"), "'|' expected, got '<float>'\n");
    EXPECT_EQ (fault_of ("a -> b ;"), "'|' expected, got ';'\n");
}

TEST (read_model, faults_of_enzyme_statements) {
    EXPECT_EQ (fault_of ("e : s p | 1 mM - 3;"), "arrow expected, got <ident>\n");
    EXPECT_EQ (fault_of ("e : s + t ; "), "arrow expected, got ;\n");
    EXPECT_EQ (fault_of ("e : s -> p - 3;"), "vertical bar expected, got -\n");
    EXPECT_EQ (fault_of ("e : s -> p | 1 mM;"), "Kcat missing\n");
    EXPECT_EQ (fault_of ("e : s -> p | 1 mM 3 ;"), "Kcat missing\n");
    EXPECT_EQ (fault_of ("e : s -> p | 1 mM - x;"), "'<float>' expected, got: 'x'\n");
    EXPECT_EQ (fault_of ("e : -> p | 1 mM - 3;"), "'<ident>' expected, got: '->'\n");
}

TEST (read_model, more_kms_than_substrates) {
    EXPECT_EQ (fault_of ("e : s -> p | 1 mM, 2 mM - 3;"), "more KM's (2) than substates (1)\n");
    EXPECT_EQ (fault_of ("e : s + t -> p | 1 mM, 2 mM, nonsense"),
               "more KM's (3) than substates (2)\n");
}

TEST (read_model, more_substrates_than_kms) {
    EXPECT_EQ (fault_of ("e : a + b -> p | 1 mM - 3;"), "more substates (2) than KM's (1)\n");
}

TEST (read_model, more_than_four_substrates) {
    EXPECT_EQ (fault_of ("e : a + b + c + d + f -> p | 1 mM, 1 mM, 1 mM, 1 mM, 1 mM - 3;"),
               "reactions with more than 4 substrates are not implemented\n");
}

TEST (read_model, only_the_first_fault_is_told) {
    EXPECT_EQ (fault_of ("display (; linked +; ["), "'<ident>' expected, got: ';'\n");
}

TEST (read_model, what_does_not_fit_32_bits_is_a_fault) {
    EXPECT_EQ (fault_of ("duration = 429497;"), "duration too long: 429497 s (max = 429496 s)\n");
    EXPECT_EQ (fault_of ("duration = 1e99 ;"), "duration too long: inf s (max = 429496 s)\n");
    EXPECT_EQ (fault_of ("[a] = 8000 mM;"),
               "initial concentration of 'a' too high: 8000 mM (max = 7131.51 mM)\n");
    EXPECT_EQ (fault_of ("[a] = 1e40 mM;"),
               "initial concentration of 'a' too high: inf mM (max = 7131.51 mM)\n");
    EXPECT_TRUE (ReadModel ("[a] = 7131 mM;").ok);
}

TEST (read_model, more_species_than_fit_are_a_fault) {
    std::string text = "display (s0x";
    for (int i = 1; i < 4095; ++i) text += ", s" + std::to_string (i) + "x";
    EXPECT_TRUE (ReadModel (text + ");").ok);
    EXPECT_EQ (fault_of (text + ", another);"), "too many species (max = 4095)\n");
}

TEST (read_model, more_steps_than_fit_are_a_fault) {
    std::string text;
    for (int i = 0; i < 2048; ++i) text += "a -> b | 1;";
    const ReadModel model (text);
    EXPECT_TRUE (model.ok);
    EXPECT_EQ (model.tables.n_reactions (), 2048U);
    EXPECT_EQ (fault_of (text + "a -> b | 1;"), "too many elementary steps (max = 2048)\n");
    EXPECT_EQ (fault_of (text + "a : b | 1 mM;"), "too many elementary steps (max = 2048)\n");
    EXPECT_EQ (fault_of (text + "a : b -> c | 1 mM - 1;"),
               "too many elementary steps (max = 2048)\n");
}

TEST (read_model, messages_may_be_longer_than_any_buffer) {
    const std::string name (5000, 'x');
    EXPECT_EQ (fault_of ("duration = " + name + ";"), "'<float>' expected, got: '" + name + "'\n");
}

} // namespace
} // namespace ostrand::sim
