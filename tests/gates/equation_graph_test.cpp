// The model reader and the rows that are made of a model.
#include "gates/builders.h"
#include "gates/front_end.h"
#include "gates/sbml_reader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace ostrand::gates {
namespace {

using namespace testing_builders;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

std::vector<int> values (const EquationGraph& graph, std::size_t row) {
    std::vector<int> all;
    for (int c = 0; c < graph.length (); ++c) all.push_back (graph.rows[row].value (c));
    return all;
}

TEST (equation_graph, enzymes_come_first_then_metabolites_by_name) {
    const EquationGraph graph = graph_of ({reaction ("r1", {"Z"}, {"A"}, {"F"}, {}, true),
                                           reaction ("r2", {"A"}, {"M"}, {"E"}, {"I"})});
    EXPECT_THAT (graph.names, ElementsAre ("F", "F_R", "E", "A", "I", "M", "Z"));
    EXPECT_EQ (graph.enzyme_count (), 3);
    EXPECT_EQ (graph.element_count (), 7);
}

TEST (equation_graph, rows_of_a_reversible_inhibited_reaction) {
    const EquationGraph graph = graph_of ({reaction ("r1", {"A"}, {"B"}, {"E"}, {"I"}, true)});
    ASSERT_THAT (graph.names, ElementsAre ("E", "E_R", "A", "B", "I"));
    ASSERT_EQ (graph.rows.size (), 4U);
    EXPECT_THAT (values (graph, 0), ElementsAre (2, 0, -1, 1, 0));
    EXPECT_THAT (values (graph, 1), ElementsAre (-2, 0, 0, 1, -1));
    EXPECT_THAT (values (graph, 2), ElementsAre (0, 2, 1, -1, 0));
    EXPECT_THAT (values (graph, 3), ElementsAre (0, -2, 1, 0, -1));
    EXPECT_THAT (graph.equations, ElementsAre (0, 2));
    EXPECT_THAT (graph.partner, ElementsAre (1, 0));
    EXPECT_EQ (graph.written_name (1), "E");
}

TEST (equation_graph, reaction_without_a_modifier_has_an_enzyme_named_after_itself) {
    const EquationGraph graph = graph_of ({reaction ("r7", {"A"}, {"B"}, {})});
    EXPECT_THAT (graph.names, ElementsAre ("r7", "A", "B"));
}

TEST (equation_graph, two_reactions_with_one_enzyme_share_its_column) {
    const EquationGraph graph =
        graph_of ({reaction ("r1", {"A"}, {"B"}, {"E"}), reaction ("r2", {"B"}, {"C"}, {"E"})});
    EXPECT_EQ (graph.enzyme_count (), 1);
    EXPECT_THAT (graph.equations, ElementsAre (0));
    EXPECT_THAT (graph.rows_of_enzyme[0], ElementsAre (0, 1));
}

TEST (equation_graph, reversible_reaction_with_two_enzymes_has_two_reverse_columns) {
    const EquationGraph graph = graph_of ({reaction ("r1", {"A"}, {"B"}, {"E", "F"}, {}, true)});
    // All enzymes of the reaction are numbered before their reverse ones, like their rows.
    EXPECT_THAT (graph.names, ElementsAre ("E", "F", "E_R", "F_R", "A", "B"));
    EXPECT_THAT (graph.rows_of_enzyme,
                 ElementsAre (ElementsAre (0), ElementsAre (1), ElementsAre (2), ElementsAre (3)));
    EXPECT_THAT (graph.partner, ElementsAre (2, 3, 0, 1));
    EXPECT_THAT (graph.equations, ElementsAre (0, 1, 2, 3));
}

TEST (equation_graph, reactant_listed_twice_has_one_entry) {
    const EquationGraph graph = graph_of ({reaction ("r1", {"A", "A"}, {"B"}, {"E"})});
    EXPECT_THAT (values (graph, 0), ElementsAre (2, -1, 1));
}

TEST (equation_graph, name_on_both_sides_keeps_what_is_set_last) {
    const EquationGraph graph =
        graph_of ({reaction ("r1", {"A", "C"}, {"B", "C"}, {"E"}, {"B"}, true)});
    ASSERT_THAT (graph.names, ElementsAre ("E", "E_R", "A", "B", "C"));
    EXPECT_THAT (values (graph, 0), ElementsAre (2, 0, -1, 1, 1));
    EXPECT_THAT (values (graph, 1), ElementsAre (-2, 0, 0, -1, 1)); // B inhibits and is made
    EXPECT_THAT (values (graph, 2), ElementsAre (0, 2, 1, -1, -1));
}

TEST (equation_graph, enzyme_that_is_a_metabolite_too_has_two_columns) {
    const EquationGraph graph =
        graph_of ({reaction ("r1", {"A"}, {"K"}, {"E"}), reaction ("r2", {"B"}, {"C"}, {"K"})});
    EXPECT_THAT (graph.names, ElementsAre ("E", "K", "A", "B", "C", "K"));
    EXPECT_EQ (graph.element_count (), 5);
    EXPECT_THAT (values (graph, 0), ElementsAre (2, 0, -1, 0, 0, 1));
    EXPECT_THAT (values (graph, 1), ElementsAre (0, 2, 0, -1, 1, 0));
}

TEST (equation_graph, network_of_241_enzymes_yields_no_gate_and_no_message) {
    for (const int enzymes : {240, 241}) {
        std::vector<Reaction> reactions;
        for (int i = 0; i < enzymes; ++i) {
            const std::string n = std::to_string (i);
            reactions.push_back (reaction ("r" + n, {"A" + n}, {"B" + n}, {}));
        }
        const EquationGraph graph = graph_of (reactions);
        EXPECT_EQ (is_searchable (graph), enzymes == 240);
        const Catalogue catalogue = load_catalogue (builtin_catalogue_text (), 1, 1);
        ::testing::internal::CaptureStdout ();
        const SearchOutcome outcome = search_gates (graph, {&catalogue}, {.limit = 1, .rules = {}});
        EXPECT_EQ (::testing::internal::GetCapturedStdout (), "");
        EXPECT_EQ (outcome.jobs[0].gates.size (), enzymes == 240 ? 240U : 0U);
        EXPECT_EQ (outcome.circuits, enzymes == 240 ? 240U : 0U);
    }
    EXPECT_FALSE (is_searchable (graph_of ({})));
}

constexpr const char* plain_dialect = R"(<sbml>
<species id="a" name="Alpha"/>
<species id="b"/>
<species id="e" name="Enz" />
<species id="i" name="Inh" />
<reaction id="r1">
<listOfReactants>
<speciesReference species="a"/>
<speciesReference species="e" sboTerm="SBO:0000460"/>
<speciesReference species="i" sboTerm="SBO:0000020"/>
</listOfReactants>
<listOfProducts>
<speciesReference species="b"/>
<speciesReference species="e" sboTerm="SBO:0000011"/>
</listOfProducts>
</reaction>
<reaction id="r2" reversible="false">
<listOfReactants>
<speciesReference species="b"/>
</listOfReactants>
</reaction>
)";

TEST (sbml_reader, roles_by_term) {
    const SbmlModel model = read_sbml_lines (plain_dialect);
    ASSERT_EQ (model.reactions.size (), 2U);
    const Reaction& first = model.reactions[0];
    EXPECT_EQ (first.id, "r1");
    EXPECT_TRUE (first.reversible);
    EXPECT_THAT (first.substrates, ElementsAre ("Alpha", "Enz", "Inh"));
    EXPECT_THAT (first.products, ElementsAre ("b", "Enz")); // b has no name: it goes by its id
    EXPECT_THAT (first.enzymes, ElementsAre ("Enz"));
    EXPECT_THAT (first.inhibitors, ElementsAre ("Inh"));
    EXPECT_FALSE (model.reactions[1].reversible);
    EXPECT_THAT (model.reactions[1].enzymes, IsEmpty ());
    EXPECT_EQ (model.elements,
               (std::map<std::string, int>{{"Alpha", 0}, {"Enz", 1}, {"Inh", 2}, {"b", 3}}));
    EXPECT_EQ (model.line_count, 21);
}

constexpr const char* modifiers_by_term = R"(<species id="a"/>
<species id="e"/>
<reaction id="r1" reversible="false">
<listOfReactants>
<speciesReference species="a"/>
</listOfReactants>
<listOfProducts>
<speciesReference species="b"/>
</listOfProducts>
<listOfModifiers>
<speciesReference species="e" sboTerm="SBO:0000460" />
<speciesReference species="i" sboTerm="SBO:0000020" />
<speciesReference species="x" />
</listOfModifiers>
</reaction>
)";

TEST (sbml_reader, terms_of_modifiers_give_roles_and_no_substrates) {
    const SbmlModel model = read_sbml_lines (modifiers_by_term);
    ASSERT_EQ (model.reactions.size (), 1U);
    EXPECT_THAT (model.reactions[0].substrates, ElementsAre ("a"));
    EXPECT_THAT (model.reactions[0].products, ElementsAre ("b"));
    EXPECT_THAT (model.reactions[0].enzymes, ElementsAre ("e"));
    EXPECT_THAT (model.reactions[0].inhibitors, ElementsAre ("i"));
    EXPECT_EQ (model.elements, (std::map<std::string, int>{{"a", 0}, {"b", 1}, {"i", 2}}));
}

TEST (sbml_reader, roles_by_modification_lines) {
    const std::vector<Reaction> written{reaction ("r1", {"A", "B"}, {"C"}, {"E", "F"}, {"I"}, true),
                                        reaction ("r2", {"C"}, {"D"}, {"G"})};
    const SbmlModel model = read_sbml_lines (model_text (written));
    ASSERT_EQ (model.reactions.size (), 2U);
    EXPECT_THAT (model.reactions[0].enzymes, ElementsAre ("E", "F"));
    EXPECT_THAT (model.reactions[0].inhibitors, ElementsAre ("I"));
    EXPECT_TRUE (model.reactions[0].reversible);
    EXPECT_THAT (model.reactions[1].enzymes, ElementsAre ("G"));
    EXPECT_EQ (model.elements.count ("I"), 1U);
    EXPECT_EQ (model.elements.count ("E"), 0U);
}

TEST (sbml_reader, modification_type_is_kept_for_the_whole_file_and_the_last_wins) {
    const auto modifier = [] (const char* type) {
        const std::string line = *type == '\0' ? ""
                                               : "<celldesigner:modification type=\"" +
                                                     std::string (type) + "\" modifiers=\"m\">\n";
        return "<reaction id=\"r\" reversible=\"\">\n" + line +
               "<modifierSpeciesReference species=\"m\"/>\n</reaction>\n";
    };
    const SbmlModel model =
        read_sbml_lines (modifier ("") + modifier ("CATALYSIS") + modifier ("") +
                         modifier ("INHIBITION") + modifier ("") + modifier ("TRIGGER"));
    ASSERT_EQ (model.reactions.size (), 6U);
    EXPECT_TRUE (model.reactions[0].reversible);
    const auto roles = [&] (std::size_t i) {
        return std::to_string (model.reactions[i].enzymes.size ()) +
               std::to_string (model.reactions[i].inhibitors.size ());
    };
    EXPECT_EQ (roles (0), "00");
    EXPECT_EQ (roles (1), "10");
    EXPECT_EQ (roles (2), "10");
    EXPECT_EQ (roles (3), "01");
    EXPECT_EQ (roles (4), "01");
    EXPECT_EQ (roles (5), "00");
}

TEST (sbml_reader, unknown_species_keeps_its_id_and_stray_references_are_ignored) {
    const SbmlModel model = read_sbml_lines (
        "<speciesReference species=\"x\"/>\n<modifierSpeciesReference species=\"y\"/>\n"
        "</listOfReactants>\n</reaction>\n<reaction id=\"r\" reversible=\"maybe\">\n"
        "<listOfReactants>\n<speciesReference species=\"x\"/>\n<speciesReference />\n"
        "</listOfReactants>\n</reaction>\n<reaction id=\"open\">\n");
    ASSERT_EQ (model.reactions.size (), 1U);
    EXPECT_THAT (model.reactions[0].substrates, ElementsAre ("x"));
    EXPECT_FALSE (model.reactions[0].reversible);
}

TEST (sbml_reader, file_that_cannot_be_opened_is_told_and_gives_empty_lists) {
    const testing::TemporaryFolder folder;
    ::testing::internal::CaptureStdout ();
    const SbmlModel model = sbmlReader (TextFile (folder / "none.xml"));
    EXPECT_EQ (::testing::internal::GetCapturedStdout (),
               "sbmlReader: Impossible d'ouvrir le fichier en lecture.\n");
    EXPECT_FALSE (model.opened);
    EXPECT_THAT (model.reactions, IsEmpty ());
}

TEST (sbml_reader, line_ends_of_either_kind) {
    const testing::TemporaryFolder folder;
    std::string text = model_text ({reaction ("r1", {"A"}, {"B"}, {"E"}, {"I"}, true)});
    const SbmlModel unix_lines = sbmlReader (TextFile (folder.write ("a.xml", text)));
    for (std::size_t at = 0; (at = text.find ('\n', at)) != std::string::npos; at += 2) {
        text.replace (at, 1, "\r\n");
    }
    const SbmlModel other = sbmlReader (TextFile (folder.write ("b.xml", text)));
    EXPECT_EQ (other.reactions[0].enzymes, unix_lines.reactions[0].enzymes);
    EXPECT_EQ (other.raw.reactions, unix_lines.raw.reactions);
}

TEST (front_end_reader, gives_what_the_search_reads) {
    std::mt19937 random (3);
    for (int i = 0; i < 200; ++i) {
        std::string text = model_text (random_network (random));
        if (i == 0) text = plain_dialect;
        if (i == 1) text = modifiers_by_term;
        const std::vector<Reaction> front = read_front_end_reactions (text);
        const std::vector<Reaction> search = read_sbml_lines (text).reactions;
        ASSERT_EQ (front.size (), search.size ());
        for (std::size_t r = 0; r < front.size (); ++r) {
            EXPECT_EQ (front[r].id, search[r].id);
            EXPECT_EQ (front[r].reversible, search[r].reversible);
            EXPECT_EQ (front[r].substrates, search[r].substrates);
            EXPECT_EQ (front[r].products, search[r].products);
            EXPECT_EQ (front[r].enzymes, search[r].enzymes);
            EXPECT_EQ (front[r].inhibitors, search[r].inhibitors);
        }
    }
}

} // namespace
} // namespace ostrand::gates
