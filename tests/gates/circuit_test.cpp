// What a circuit derives of its rows, the required levels and the token game.
#include "gates/builders.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace ostrand::gates {
namespace {

using namespace testing_builders;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// Plays with tokens by name; enzymes hold their mark.
int play (const EquationGraph& graph, const Circuit& circuit,
          const std::map<std::string, int>& start, const std::string& watched,
          bool multiple = true) {
    std::vector<int> tokens (static_cast<std::size_t> (graph.length ()));
    for (const int enzyme : circuit.enzymes) tokens[static_cast<std::size_t> (enzyme)] = 2;
    for (const auto& [name, count] : start) {
        tokens[static_cast<std::size_t> (column (graph, name))] = count;
    }
    return circuit.token_game (tokens,
                               multiple)[static_cast<std::size_t> (column (graph, watched))];
}

TEST (circuit, sets_of_a_chain) {
    const EquationGraph graph =
        graph_of ({reaction ("r1", {"A"}, {"B"}, {"E"}), reaction ("r2", {"B"}, {"C"}, {"F"})});
    const Circuit circuit = whole_circuit (graph);
    EXPECT_THAT (names_of (graph, circuit.primary_substrates), ElementsAre ("A"));
    EXPECT_THAT (names_of (graph, circuit.final_products), ElementsAre ("C"));
    EXPECT_THAT (names_of (graph, circuit.all_substrates), ElementsAre ("A", "B"));
    EXPECT_THAT (names_of (graph, circuit.touched), ElementsAre ("E", "F", "A", "B", "C"));
    EXPECT_THAT (circuit.forks, IsEmpty ());
    EXPECT_EQ (circuit.firing_limit, 22);
}

TEST (circuit, fork_is_a_column_that_more_than_one_row_consumes) {
    const EquationGraph graph =
        graph_of ({reaction ("r1", {"A"}, {"B"}, {"E"}), reaction ("r2", {"A"}, {"C"}, {"F"})});
    EXPECT_THAT (names_of (graph, whole_circuit (graph).forks), ElementsAre ("A"));
}

TEST (circuit, cycle_has_no_primary_substrate_and_no_final_product) {
    const EquationGraph graph =
        graph_of ({reaction ("r1", {"A"}, {"B"}, {"E"}), reaction ("r2", {"B"}, {"A"}, {"F"})});
    const Circuit circuit = whole_circuit (graph);
    EXPECT_THAT (circuit.primary_substrates, IsEmpty ());
    EXPECT_THAT (circuit.final_products, IsEmpty ());
}

TEST (circuit, upstream_holds_competing_consumers_and_inhibitors) {
    // C of the second row competes for A; I inhibits the first.
    const EquationGraph graph = graph_of ({reaction ("r1", {"A"}, {"B"}, {"E"}, {"I"}),
                                           reaction ("r2", {"A", "C"}, {"D"}, {"F"}),
                                           reaction ("r3", {"X"}, {"Y"}, {"G"})});
    const Circuit circuit = whole_circuit (graph);
    EXPECT_THAT (names_of (graph, circuit.upstream (column (graph, "B"))),
                 ElementsAre ("A", "C", "I"));
    EXPECT_THAT (names_of (graph, circuit.upstream (column (graph, "Y"))), ElementsAre ("X"));
}

TEST (circuit, level_of_a_chain_is_ten_all_along) {
    const EquationGraph graph =
        graph_of ({reaction ("r1", {"A"}, {"B"}, {"E"}), reaction ("r2", {"B"}, {"C"}, {"F"})});
    const Circuit circuit = whole_circuit (graph);
    for (const char* name : {"A", "B", "C"}) EXPECT_EQ (level (graph, circuit, "C", name), 10.0);
}

TEST (circuit, level_of_a_join_is_ten_for_both) {
    const EquationGraph graph = graph_of ({reaction ("r1", {"A", "B"}, {"C"}, {"E"})});
    const Circuit circuit = whole_circuit (graph);
    EXPECT_EQ (level (graph, circuit, "C", "A"), 10.0);
    EXPECT_EQ (level (graph, circuit, "C", "B"), 10.0);
}

TEST (circuit, level_of_two_branches_is_their_sum) {
    const EquationGraph graph =
        graph_of ({reaction ("r1", {"A"}, {"B"}, {"E"}), reaction ("r2", {"A"}, {"C"}, {"F"}),
                   reaction ("r3", {"B"}, {"D"}, {"G"}), reaction ("r4", {"C"}, {"D"}, {"H"})});
    const Circuit circuit = whole_circuit (graph);
    EXPECT_EQ (level (graph, circuit, "D", "B"), 10.0);
    EXPECT_EQ (level (graph, circuit, "D", "C"), 10.0);
    EXPECT_EQ (level (graph, circuit, "D", "A"), 20.0);
}

TEST (circuit, co_substrate_that_comes_late_inherits_its_partners_demand) {
    // S is no ancestor over a product of its own, so it is not in the frontier beside P.
    const EquationGraph graph = graph_of (
        {reaction ("r1", {"P"}, {"O"}, {"E"}), reaction ("r2", {"P", "S"}, {"W"}, {"F"})});
    const Circuit circuit = whole_circuit (graph);
    EXPECT_EQ (level (graph, circuit, "O", "P"), 10.0);
    EXPECT_EQ (level (graph, circuit, "O", "S"), 10.0);
}

TEST (circuit, levels_come_to_an_end_on_rings) {
    const EquationGraph graph =
        graph_of ({reaction ("r1", {"A"}, {"B"}, {"E"}), reaction ("r2", {"B"}, {"A", "C"}, {"F"}),
                   reaction ("r3", {"C", "A"}, {"D", "B"}, {"G"})});
    const Circuit circuit = whole_circuit (graph);
    EXPECT_GE (level (graph, circuit, "D", "C"), 10.0);
}

TEST (token_game, tokens_flow_down_a_chain) {
    const EquationGraph graph =
        graph_of ({reaction ("r1", {"A"}, {"B"}, {"E"}), reaction ("r2", {"B"}, {"C"}, {"F"})});
    const Circuit circuit = whole_circuit (graph);
    EXPECT_EQ (play (graph, circuit, {{"A", 10}}, "C"), 10);
    EXPECT_EQ (play (graph, circuit, {{"A", 10}}, "A"), 0);
    EXPECT_EQ (play (graph, circuit, {}, "C"), 0);
}

TEST (token_game, abundant_column_is_consumed_up_to_the_firing_limit_and_never_more) {
    const EquationGraph graph = graph_of ({reaction ("r1", {"A"}, {"B"}, {"E"})});
    const Circuit circuit = whole_circuit (graph);
    EXPECT_EQ (play (graph, circuit, {{"A", 1000000}}, "B"), 21);
    EXPECT_EQ (play (graph, circuit, {{"A", 1000000}}, "A"), 1000000 - 21);
}

TEST (token_game, firing_limit_stops_a_cycle_with_abundant_tokens) {
    const EquationGraph graph = graph_of (
        {reaction ("r1", {"A"}, {"B"}, {"E"}), reaction ("r2", {"B"}, {"A", "C"}, {"F"})});
    const Circuit circuit = whole_circuit (graph);
    EXPECT_EQ (play (graph, circuit, {{"A", 1000000}}, "C"), 22);
}

TEST (token_game, not_by_an_inhibitor) {
    const EquationGraph graph = graph_of ({reaction ("r1", {"X"}, {"Y"}, {"E"}, {"A"})});
    const Circuit circuit = whole_circuit (graph);
    EXPECT_EQ (play (graph, circuit, {{"X", abundant_level}}, "Y"), 22);
    EXPECT_EQ (play (graph, circuit, {{"X", abundant_level}, {"A", 10}}, "Y"), 3);
    // The two tokens of the enzyme are spent on two of the inhibitor.
    EXPECT_EQ (play (graph, circuit, {{"X", abundant_level}, {"A", 10}}, "A"), 8);
}

TEST (token_game, rows_that_compete_may_both_fire_and_overdraw) {
    const EquationGraph graph =
        graph_of ({reaction ("r1", {"A"}, {"B"}, {"E"}), reaction ("r2", {"A"}, {"C"}, {"F"})});
    const Circuit circuit = whole_circuit (graph);
    EXPECT_EQ (play (graph, circuit, {{"A", 1}}, "A"), -1);
    EXPECT_EQ (play (graph, circuit, {{"A", 1}}, "B"), 1);
    EXPECT_EQ (play (graph, circuit, {{"A", 1}}, "C"), 1);
}

TEST (token_game, single_firing_moves_one_token_of_a_column_in_a_pass) {
    const EquationGraph graph =
        graph_of ({reaction ("r1", {"A"}, {"B"}, {"E"}), reaction ("r2", {"A"}, {"B"}, {"F"})});
    const Circuit circuit = whole_circuit (graph);
    EXPECT_EQ (play (graph, circuit, {{"A", 6}}, "B", true), 6);
    EXPECT_EQ (play (graph, circuit, {{"A", 6}}, "A", false), 0);
    EXPECT_EQ (play (graph, circuit, {{"A", 6}}, "B", false), 6);
    EXPECT_EQ (play (graph, circuit, {{"A", 5}}, "A", true), -1);
}

TEST (token_game, no_rows_end_at_once) {
    const EquationGraph graph = graph_of ({reaction ("r1", {"A"}, {"B"}, {"E"})});
    const Circuit circuit (graph, {});
    const std::vector<int> tokens{2, 5, 7};
    EXPECT_EQ (circuit.token_game (tokens, true), tokens);
    EXPECT_THAT (circuit.touched, IsEmpty ());
}

} // namespace
} // namespace ostrand::gates
