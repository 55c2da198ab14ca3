// SBML: the writer, the reader of any tool's files, names.
#include "document/line.h"
#include "document/markup.h"
#include "files/document_io.h"
#include "files/import.h"
#include "files/native.h"
#include "files/sbml_to_model.h"
#include "files/sbml_write.h"
#include "files/xml_scan.h"
#include "names/name_markup.h"
#include "names/species_names.h"
#include "sim/lexer.h"
#include "support/random_document.h"
#include "support/support.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>

namespace ostrand::files {
namespace {

using document::Network;
using document::Node;
using names::model_name;
using names::ModelNames;
using names::name_markup;
using ostrand::testing::CaughtMessages;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

std::string data (const std::string& name) {
    return ostrand::testing::source_file ("tests/files/data/" + name);
}

std::string model_of (std::string_view sbml) {
    std::string out;
    EXPECT_TRUE (sbml_to_model (sbml, out));
    return out;
}

/// A model of these species ("a", "b" ... with these names) and reactions.
std::string sbml (const std::string& species, const std::string& reactions) {
    return "<sbml><model id=\"m\">\n<listOfSpecies>\n" + species +
           "</listOfSpecies>\n<listOfReactions>\n" + reactions +
           "</listOfReactions>\n</model></sbml>\n";
}
const std::string abc = "<species id=\"a\" name=\"A\"/>\n<species id=\"b\" name=\"B\"/>\n"
                        "<species id=\"c\" name=\"C\"/>\n";
std::string reference (const std::string& id, const std::string& more = "") {
    return "<speciesReference species=\"" + id + "\"" + more + "/>";
}
std::string reaction (const std::string& reactants, const std::string& products,
                      const std::string& modifiers = "") {
    return "<reaction id=\"r\"><listOfReactants>" + reactants +
           "</listOfReactants><listOfProducts>" + products + "</listOfProducts>" +
           (modifiers.empty () ? "" : "<listOfModifiers>" + modifiers + "</listOfModifiers>") +
           "</reaction>\n";
}

TEST (SbmlWriter, a_small_network_in_full) {
    Network network;
    network.set_origin (8, 8);
    auto comp = std::make_unique<document::Compart> (8, 0.F, 0.F, 50.F, 50.F);
    comp->set_own_color (0);
    network.add_compart (std::move (comp));
    Node& a = network.add_node (std::make_unique<Node> (10.F, 20.F, 13U, 3U, "A b"));
    Node& b = network.add_node (std::make_unique<Node> (210.F, 20.F, 13U, 3U, "B"));
    Node& e = network.add_node (std::make_unique<Node> (110.F, 90.F, 9U, 3U, "E"));
    Node& i = network.add_node (std::make_unique<Node> (150.F, 90.F, 13U, 3U));
    Node& s = network.add_node (std::make_unique<Node> (30.F, 90.F, 13U, 3U, "B"));
    network.assign_compart (a);
    document::Arque* r = a.connect (b, document::arc::reversible_reaction);
    e.connect (*r, document::arc::catalysis);
    i.connect (*r, document::arc::inhibition);
    s.connect (*r, document::arc::substrate);
    i.connect (*r, document::arc::product);
    const std::string text = write_sbml (network, "small");
    EXPECT_TRUE (text.starts_with (
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        "<sbml xmlns=\"http://www.sbml.org/sbml/level2/version4\" level=\"2\" version=\"4\">\n"
        "<model id=\"small\">\n<listOfUnitDefinitions>\n"
        "<unitDefinition id=\"substance\" name=\"substance\">\n<listOfUnits>\n"
        "<unit kind=\"mole\"/>\n</listOfUnits>\n</unitDefinition>\n"));
    EXPECT_THAT (text, HasSubstr ("<unitDefinition id=\"time\" name=\"time\">\n<listOfUnits>\n"
                                  "<unit kind=\"second\"/>\n</listOfUnits>\n</unitDefinition>\n"
                                  "</listOfUnitDefinitions>\n<annotation>\n<lattrix:network "));
    const std::string after = text.substr (text.find ("</lattrix:network>"));
    EXPECT_EQ (after,
               "</lattrix:network>\n</annotation>\n<listOfCompartments>\n"
               "<compartment id=\"default\" size=\"1\" units=\"volume\">\n</compartment>\n"
               "<compartment id=\"c1\" name=\"defcomp\" outside=\"default\" size=\"1\" "
               "units=\"volume\">\n</compartment>\n</listOfCompartments>\n<listOfSpecies>\n"
               "<species id=\"s2\" name=\"A\\ b\" compartment=\"c1\">\n</species>\n"
               "<species id=\"s3\" name=\"B\" compartment=\"default\">\n</species>\n"
               "<species id=\"s4\" name=\"E\" compartment=\"default\">\n</species>\n"
               "<species id=\"s5\" name=\"s5\" compartment=\"default\">\n</species>\n"
               "</listOfSpecies>\n<listOfReactions>\n<reaction id=\"re6\" reversible=\"true\">\n"
               "<listOfReactants>\n<speciesReference species=\"s2\" mainsubstract=\"true\">\n"
               "</speciesReference>\n<speciesReference species=\"s3\">\n</speciesReference>\n"
               "</listOfReactants>\n<listOfProducts>\n"
               "<speciesReference species=\"s3\" mainproduct=\"true\">\n</speciesReference>\n"
               "<speciesReference species=\"s5\">\n</speciesReference>\n</listOfProducts>\n"
               "<listOfModifiers>\n"
               "<speciesReference species=\"s4\" sboTerm=\"SBO:0000460\" />\n"
               "<speciesReference species=\"s5\" sboTerm=\"SBO:0000020\" />\n"
               "</listOfModifiers>\n</reaction>\n</listOfReactions>\n</model>\n</sbml>\n");
}

TEST (SbmlWriter, transports_are_not_reversible_and_a_quote_does_not_end_a_name) {
    Network network;
    Node& a = network.add_node (std::make_unique<Node> (0.F, 0.F, 13U, 3U, "say\"hi"));
    Node& b = network.add_node (std::make_unique<Node> (90.F, 0.F, 13U, 3U, "B"));
    a.connect (b, document::arc::transport);
    const std::string text = write_sbml (network, "m");
    EXPECT_THAT (text, HasSubstr ("reversible=\"false\""));
    EXPECT_THAT (text, HasSubstr ("name=\"say&quot;hi\""));
    EXPECT_THAT (text, Not (HasSubstr ("listOfModifiers")));
}

TEST (SbmlReader, a_reaction_without_modifiers_gets_no_enz) {
    EXPECT_EQ (model_of (sbml (abc, reaction (reference ("a") + reference ("c"), reference ("b")))),
               "\"no-enz\" : \"A\" + \"C\" -> \"B\" ;\n");
}

TEST (SbmlReader, each_enzyme_states_the_reaction_and_inhibitors_their_enzymes) {
    const std::string species = abc + "<species id=\"e\"/><species id=\"f\"/><species id=\"i\"/>";
    EXPECT_EQ (
        model_of (sbml (species, reaction (reference ("a"), reference ("b") + reference ("c"),
                                           reference ("e", " sboTerm=\"SBO:0000460\"") +
                                               reference ("i", " sboTerm=\"SBO:0000020\"") +
                                               reference ("f")))),
        "\"e\" : \"A\" -> \"B\" + \"C\" ;\n"
        "\"e\" : \"i\" ;\n\"f\" : \"i\" ;\n"
        "\"f\" : \"A\" -> \"B\" + \"C\" ;\n");
}

TEST (SbmlReader, the_main_species_comes_first) {
    EXPECT_EQ (model_of (sbml (
                   abc, reaction (reference ("a") + reference ("b") +
                                      reference ("c", " mainsubstract=\"true\""),
                                  reference ("b") + reference ("a", " mainproduct=\"true\"")))),
               "\"no-enz\" : \"C\" + \"B\" + \"A\" -> \"A\" + \"B\" ;\n");
}

TEST (SbmlReader, mainsubstrate_in_the_other_spelling_is_no_flag) {
    EXPECT_EQ (
        model_of (sbml (abc, reaction (reference ("a") + reference ("c", " mainsubstrate=\"true\""),
                                       reference ("b")))),
        "\"no-enz\" : \"A\" + \"C\" -> \"B\" ;\n");
}

TEST (SbmlReader, an_inhibitor_without_enzyme_gives_no_statement_and_is_told) {
    CaughtMessages messages;
    std::string out;
    EXPECT_TRUE (sbml_to_model (sbml (abc, reaction (reference ("a"), reference ("b"),
                                                     reference ("c", " sboTerm=\"SBO:0000020\""))),
                                out));
    EXPECT_EQ (out, "");
    EXPECT_THAT (messages.all, ElementsAre ("SBML, line 8: reaction 'r' has inhibitors but no "
                                            "enzyme and is left out."));
}

TEST (SbmlReader, the_same_species_twice_is_written_twice) {
    EXPECT_EQ (model_of (sbml ("<species id=\"a\"/><species id=\"b\"/>",
                               reaction (reference ("a") + reference ("a"), reference ("b")))),
               "\"no-enz\" : \"a\" + \"a\" -> \"b\" ;\n");
}

TEST (SbmlReader, the_empty_form_of_a_reference_is_read_like_the_open_one) {
    const std::string species = "<species id=\"a\"/><species id=\"b\"></species>";
    EXPECT_EQ (model_of (sbml (species, reaction ("<speciesReference species=\"a\"/>",
                                                  "<speciesReference species=\"b\"/>"))),
               model_of (sbml (species,
                               reaction ("<speciesReference species=\"a\">\n</speciesReference>",
                                         "<speciesReference species=\"b\"></speciesReference>"))));
}

TEST (SbmlReader, unknown_elements_are_harmless) {
    const std::string text = "<sbml><model id=\"m\"><listOfRules><assignmentRule variable=\"a\"/>"
                             "</listOfRules><strange><listOfSpecies/></strange></model></sbml>";
    EXPECT_EQ (model_of (text), "");
}

TEST (SbmlReader, white_space_may_separate_the_slash_of_an_empty_element) {
    const std::string species = "<species id = \"a\" name=\"A\" / >\n<species id=\"b\" /\n>\n";
    EXPECT_EQ (model_of (sbml (species, reaction ("<speciesReference species=\"a\" / >",
                                                  "<speciesReference species=\"b\" /\t>"))),
               "\"no-enz\" : \"A\" -> \"b\" ;\n");
}

TEST (SbmlReader, an_unknown_species_is_told_and_becomes_an_empty_name) {
    CaughtMessages messages;
    std::string out;
    EXPECT_TRUE (sbml_to_model (
        sbml ("<species id=\"a\"/>\n", reaction (reference ("a"), reference ("nobody"))), out));
    EXPECT_EQ (out, "\"no-enz\" : \"a\" -> \"\" ;\n");
    EXPECT_FALSE (import_text (out));
    EXPECT_THAT (messages.all, ElementsAre ("SBML, line 6: unknown species 'nobody'.",
                                            "'<ident>' expected, got: ''"));
}

std::string refusal (std::string_view text) {
    CaughtMessages messages;
    std::string out;
    EXPECT_FALSE (sbml_to_model (text, out)) << text;
    EXPECT_EQ (messages.all.size (), 1U) << text;
    return messages.joined ();
}

TEST (SbmlReader, what_is_not_sbml_is_refused_with_its_line) {
    EXPECT_THAT (refusal ("no xml at all"), HasSubstr ("SBML, line 1: no <model> was found."));
    EXPECT_THAT (refusal ("<sbml>\n<model>\n<listOfSpecies>\n<compartment/></listOfSpecies>"),
                 HasSubstr ("SBML, line 4: <compartment> where <species> is expected."));
    EXPECT_THAT (refusal ("<sbml><model><listOfSpecies></listOfReactions>"),
                 HasSubstr ("SBML, line 1: </listOfReactions> where <species> is expected."));
    EXPECT_THAT (refusal ("<sbml><model>\n<listOfSpecies><species id=\"a\"/>"),
                 HasSubstr ("SBML, line 2: <listOfSpecies> is not closed."));
    EXPECT_THAT (refusal ("<sbml><model>\n<listOfSpecies><species id=\"a\">"),
                 HasSubstr ("SBML, line 2: <species> is not closed."));
    EXPECT_THAT (refusal ("<sbml><model>\n<listOfRules><a>"),
                 HasSubstr ("SBML, line 2: <listOfRules> is not closed."));
    EXPECT_THAT (refusal ("<sbml><model>\n</sbml>"), HasSubstr ("line 2: </sbml> closes nothing."));
    EXPECT_THAT (refusal ("<sbml>\n<model>"), HasSubstr ("line 2: <model> is not closed."));
    EXPECT_THAT (refusal ("<model><listOfReactions>\n<reaction id=\"r\"></model>"),
                 HasSubstr ("line 2: </model> where </reaction> is expected."));
    EXPECT_THAT (refusal ("<model><listOfReactions>\n<reaction id=\"r\">"),
                 HasSubstr ("line 2: <reaction> is not closed."));
    EXPECT_THAT (refusal ("<model><listOfReactions><reaction id=\"r\"><listOfProducts><species/>"),
                 HasSubstr ("<species> where <speciesReference> is expected."));
    EXPECT_THAT (refusal ("<model><listOfReactions><reaction id=\"r\"><listOfProducts>"),
                 HasSubstr ("<listOfProducts> is not closed."));
    EXPECT_THAT (refusal ("<model><listOfReactions><reaction id=\"r\"><annotation>"),
                 HasSubstr ("<annotation> is not closed."));
    EXPECT_THAT (refusal (std::string ("\xFF\xFE<\0", 4)), HasSubstr ("UTF-16"));
}

TEST (SbmlReader, lists_hold_sixteen_entries) {
    std::string many;
    for (int i = 0; i < 16; ++i) {
        many += reference ("a");
    }
    EXPECT_NE (model_of (sbml (abc, reaction (many, reference ("b") + reference ("c")))), "");
    EXPECT_THAT (refusal (sbml (abc, reaction (many + reference ("a"), reference ("b")))),
                 HasSubstr ("line 8: too many entries of <listOfReactants> (max = 16)."));
}

TEST (SbmlReader, species_with_one_name_and_species_without_reaction_are_told) {
    CaughtMessages messages;
    std::string out;
    EXPECT_TRUE (
        sbml_to_model (sbml ("<species id=\"a\" name=\"X\"/>\n<species id=\"b\" name=\"X\"/>\n"
                             "<species id=\"c\"/><species id=\"d\"/><species id=\"d\"/>",
                             reaction (reference ("a"), reference ("b"))),
                       out));
    EXPECT_THAT (messages.all,
                 ElementsAre ("SBML, line 4: species 'a' and 'b' have the same name 'X' and are "
                              "drawn as one.",
                              "SBML, line 5: species 'd' stands twice, the first is taken.",
                              "SBML, line 5: species 'd' and 'd' have the same name 'd' and are "
                              "drawn as one.",
                              "SBML: 3 species take part in no reaction and are not drawn: 'c', "
                              "'d', 'd'."));
}

TEST (SbmlFiles, styles_of_common_tools) {
    CaughtMessages messages;
    const std::string plain = "\"E\" : \"A\" + \"C\" -> \"B\" ;\n\"E\" : \"s5\" ;\n"
                              "\"no-enz\" : \"B\" -> \"C\" ;\n";
    EXPECT_EQ (model_of (data ("level2_plain.xml")), plain);
    EXPECT_EQ (model_of (data ("bom_crlf.xml")), plain);
    EXPECT_EQ (model_of (data ("level3_kinetic_law.xml")), "\"MKK\" : \"MAPK\" -> \"MAPK-P\" ;\n");
    EXPECT_EQ (model_of (data ("prefixed.xml")), "\"no-enz\" : \"it's \"\"A\"\"\" -> \"B's\" ;\n");
    EXPECT_EQ (model_of (data ("notes_and_cdata.xml")), "\"no-enz\" : \"X\" -> \"Y\" ;\n");
    EXPECT_EQ (model_of (data ("diagram_editor.xml")),
               "\"Ras\" : \"Raf\" -> \"Raf*\" ;\n\"Ras\" : \"PKA\" ;\n");
    EXPECT_EQ (model_of (data ("flux_balance.xml")),
               "\"no-enz\" : \"D-Glucose\" + \"ATP C10H12N5O13P3\" -> \"D-Glucose 6-phosphate\" + "
               "\"ADP C10H12N5O10P2\" ;\n");
    EXPECT_EQ (model_of (data ("latin1.xml")), "\"no-enz\" : \"prot\xC3\xA9"
                                               "eine\" -> \"P\" ;\n");
    EXPECT_THAT (messages.all, IsEmpty ());
}

TEST (SbmlFiles, entities_quotes_backslashes_and_line_ends_in_names) {
    EXPECT_EQ (model_of (data ("entities.xml")),
               "\"back\\\\slash\" : \"A&B\" + \"beta<1>\" -> \"alpha-ketoglutarate\" + \"say "
               "\"\"hi\"\"\" ;\n"
               "\"\\display\" : \"alpha-ketoglutarate\" + \"two lines\" -> \"caf\xC3\xA9\" + \"a } "
               "brace { and [N\" ;\n"
               "\"no-enz\" : \"caf\xC3\xA9\" -> \"Ca^{2+}\" ;\n");
    Document document;
    CaughtMessages messages;
    ASSERT_EQ (open_text (data ("entities.xml"), "e.xml", {}, document), LoadStatus::loaded);
    EXPECT_THAT (messages.all, IsEmpty ());
    std::vector<std::string> names;
    for (const auto& n : document.network->nodes ()) {
        if (n->master () == nullptr) {
            names.push_back (n->name ());
        }
    }
    std::sort (names.begin (), names.end ());
    EXPECT_THAT (names, ::testing::UnorderedElementsAre (
                            "A&B", "Ca^{2+}", "a\\ }\\ brace\\ {\\ and\\ [N", "alpha-ketoglutarate",
                            "back\\slash", "beta<1>", "caf\xC3\xA9", "display", "no-enz",
                            "say\\ \"hi\"", "two\\ lines"));
}

TEST (SbmlFiles, missing_sides_are_drawn_and_told) {
    CaughtMessages messages;
    EXPECT_EQ (model_of (data ("sources_and_sinks.xml")),
               "\"gene\" : \"no-sub\" -> \"mRNA\" ;\n\"mRNA\" : \"no-sub\" -> \"protein\" ;\n"
               "\"no-enz\" : \"mRNA\" -> \"no-prod\" ;\n"
               "\"no-enz\" : \"protein\" -> \"no-prod\" ;\n");
    EXPECT_THAT (messages.all,
                 ElementsAre ("SBML, line 13: reaction 'nothing' has neither reactants nor "
                              "products and is left out.",
                              "SBML: 2 reactions without reactants start from 'no-sub'.",
                              "SBML: 2 reactions without products end on 'no-prod'.",
                              "SBML: 1 species take part in no reaction and are not drawn: "
                              "'alone'."));
}

TEST (SbmlFiles, inputs_outputs_and_excess_are_coloured) {
    CaughtMessages messages;
    EXPECT_EQ (model_of (data ("logic_roles.xml")),
               "input [\"A\"] ;\noutput [\"B\"] ;\nexcess [\"ATP\"] ;\n"
               "\"E\" : \"A\" + \"ATP\" -> \"B\" ;\n");
    Document document;
    ASSERT_EQ (load_text_document (data ("logic_roles.xml"), document), LoadStatus::loaded);
    std::map<std::string, unsigned> colours;
    for (const auto& n : document.network->nodes ()) {
        colours[n->name ()] = n->bg_color ();
    }
    EXPECT_EQ (colours["A"], 0x7fffbf00U);
    EXPECT_EQ (colours["B"], 0xffb67f00U);
    EXPECT_EQ (colours["ATP"], 0xbf91bf00U);
    EXPECT_EQ (colours["E"], 247U);
}

TEST (SbmlFiles, a_missing_file_gives_no_message) {
    CaughtMessages messages;
    std::string out;
    EXPECT_FALSE (sbml_file_to_model ("/nonexistent.xml", out));
    EXPECT_THAT (messages.all, IsEmpty ());
    EXPECT_TRUE (sbml_file_to_model (
        ostrand::testing::source_path ("tests/files/data/level2_plain.xml"), out));
}

TEST (SbmlFiles, damaged_texts_are_read_without_harm) {
    ostrand::testing::Dice dice (9);
    CaughtMessages messages;
    for (const char* name : {"level2_plain.xml", "diagram_editor.xml", "notes_and_cdata.xml",
                             "entities.xml", "prefixed.xml"}) {
        const std::string whole = data (name);
        for (int round = 0; round < 150; ++round) {
            std::string text = whole;
            for (int i = 0; i < 4; ++i) {
                const auto at =
                    static_cast<std::size_t> (dice.below (static_cast<int> (text.size ())));
                if (dice.one_in (2)) {
                    text[at] = static_cast<char> (dice.below (256));
                } else {
                    text.erase (at, static_cast<std::size_t> (1 + dice.below (30)));
                }
            }
            std::string out;
            if (sbml_to_model (text, out)) {
                import_text (out);
            }
        }
    }
}

TEST (ModelNames, ordinary_names_stay_as_they_are) {
    for (const char* name : {"ATP", "a b", "G_6_P", "x^{2}", "D-Glucose 6-phosphate", "p(1~U).R!2",
                             "caf\xC3\xA9", "a\\ b", "a\\_b"}) {
        EXPECT_EQ (model_name (name), name);
    }
}

TEST (ModelNames, backslashes_and_braces_given_by_number_are_letters) {
    const auto name_of = [] (std::string_view raw) {
        std::vector<bool> by_number;
        const std::string text = decode_attribute (raw, &by_number);
        EXPECT_EQ (by_number.size (), text.size ());
        return model_name (text, by_number);
    };
    EXPECT_EQ (name_of ("a&#92;_{x}"), "a\\\\_{x}");
    EXPECT_EQ (name_of ("a_{&#123;&#125;&#x7D;}"), "a_{\\{\\}\\}}");
    EXPECT_EQ (name_of ("&#945;&#92; &lt;&#95;x"), "alpha\\\\ <_x");
    EXPECT_EQ (name_of ("a\\_b\\ c{d}"), "a\\_b\\ c{d}");
}

TEST (ModelNames, letters_without_a_label_form_are_spelled_out) {
    EXPECT_EQ (model_name ("\xCE\x94G \xCF\x89"), "DeltaG omega");
    EXPECT_EQ (model_name ("A\xE2\x86\x92"
                           "B"),
               "A->B");
    EXPECT_EQ (model_name ("H\xE2\x82\x82O"), "H2O");
    EXPECT_EQ (model_name ("\xE4\xB8\xAD"), "(U+4E2D)");
    EXPECT_EQ (model_name ("\xF0\x9F\xA7\xAC"), "(U+1F9EC)");
    EXPECT_EQ (model_name ("\xE2\x82"), "\xC3\xA2\xC2\x82"); // no UTF-8: Latin-1
}

TEST (ModelNames, names_that_would_become_one_are_kept_apart) {
    ModelNames names;
    EXPECT_EQ (names.take ("a->b", "a->b", "s1"), "a->b");
    EXPECT_EQ (names.take ("a->b",
                           "a\xE2\x86\x92"
                           "b",
                           "s2"),
               "a->b (s2)");
    EXPECT_EQ (names.take ("a->b", "a->b", "s3"), "a->b"); // the same name is the same species
}

TEST (NameMarkup, a_label_shows_the_name) {
    const auto shown = [] (std::string_view name) {
        const auto line = document::line_from_markup (name_markup (name), 67, 0);
        return line->name ();
    };
    for (const char* name : {"a<b", "x}y", "x{y", "tail_", "tail^", "[Nx", "[Ex]", "[P0]", "[x]",
                             "a{b}c", "caf\xC3\xA9"}) {
        std::string expected;
        for (const char* c = name; *c != '\0'; ++c) {
            if (*c == '_' || *c == '^') {
                expected += '\\';
            }
            expected += *c;
        }
        EXPECT_EQ (shown (name), expected) << name;
    }
    EXPECT_EQ (shown ("Ca^{2+}"), "Ca^{2+}");
    EXPECT_EQ (shown ("a\\_b"), "a\\_b");
    EXPECT_EQ (shown ("x_{a}b}c"), "x_{a}b}c");
    EXPECT_EQ (shown ("end\\"), "end\\");
    EXPECT_EQ (name_markup ("plain name (1)"), "plain name (1)");
}

TEST (NameMarkup, no_name_breaks_the_drawing) {
    ostrand::testing::Dice dice (3);
    for (int round = 0; round < 2000; ++round) {
        std::string name;
        const int length = 1 + dice.below (8);
        for (int i = 0; i < length; ++i) {
            name += dice.one_in (3) ? static_cast<char> (1 + dice.below (255))
                                    : "a<[{}_^\\NEP\xC3\xC2\xB5#\""[dice.below (16)];
        }
        if (name.find ('\n') != std::string::npos || name == "a") {
            continue;
        }
        const auto imported = import_text ("e : " + sim::quoted (name) + " -> qq ;");
        ASSERT_TRUE (imported) << name;
        CaughtMessages messages;
        const auto network = read_native (imported->native);
        ASSERT_NE (network, nullptr);
        EXPECT_THAT (messages.all, IsEmpty ()) << name;
        EXPECT_EQ (network->nb_nodes (), 3) << name;
        EXPECT_EQ (network->count_arcs (), 2) << name;
    }
}

TEST (XmlScanner, attributes_of_both_quotes_and_lines) {
    XmlScanner scanner ("\n<a x = '1' y=\"2 > 1\" z=3>\n<!-- <b> --></a>");
    XmlTag tag = scanner.next ();
    EXPECT_TRUE (tag.starts ("a"));
    EXPECT_EQ (tag.line, 2);
    EXPECT_EQ (*tag.attribute ("x"), "1");
    EXPECT_EQ (*tag.attribute ("y"), "2 > 1");
    EXPECT_EQ (*tag.attribute ("z"), "3");
    EXPECT_EQ (tag.attribute ("w"), nullptr);
    tag = scanner.next ();
    EXPECT_TRUE (tag.ends ("a"));
    EXPECT_EQ (tag.line, 3);
    EXPECT_EQ (scanner.next ().kind, XmlTag::Kind::none);
}

TEST (XmlScanner, declarations_comments_and_sections_hold_no_tags) {
    XmlScanner scanner ("<?xml a=\"<b>\"?><!DOCTYPE x [<!ELEMENT y (z)> <!ENTITY w \"<u>\">]>"
                        "<!DOCTYPE v><!-- <c> --><![CDATA[<d>]]><e/>");
    const XmlTag tag = scanner.next ();
    EXPECT_EQ (tag.name, "e");
    EXPECT_TRUE (tag.is_empty);
    XmlScanner open ("<!DOCTYPE x [<!ELEMENT y (z)>");
    EXPECT_EQ (open.next ().kind, XmlTag::Kind::none);
}

TEST (XmlScanner, an_element_of_our_drawing_is_passed_over_whole) {
    const auto next = [] (std::string_view text) {
        XmlScanner scanner (text);
        const XmlTag tag = scanner.next ();
        return std::string (tag.name) + " " + std::to_string (tag.line);
    };
    EXPECT_EQ (next ("<lattrix:node label=\"<!-- <a> > \" /><b/>"), "b 1");
    EXPECT_EQ (next ("<lattrix:comp id=\"1\" label=\"</x>\" />\n<c/>"), "c 2");
    EXPECT_EQ (next ("<lattrix:arc id=\"1\" label=\"cut <x>\n<d/>"),
               "d 2"); // a value has no line end
    EXPECT_EQ (next ("<lattrix:network x=\"1\">\n<lattrix:node id=\"<e>\" />"),
               "lattrix:network 1");
    EXPECT_EQ (next ("<lattrix:logic type=\"INPUT\"/>"), "lattrix:logic 1");
}

TEST (XmlScanner, references_are_decoded_and_others_stay) {
    EXPECT_EQ (decode_attribute ("a&lt;b&gt;&amp;&quot;&apos;&#65;&#x42;"), "a<b>&\"'AB");
    EXPECT_EQ (decode_attribute ("&#945;"), "\xCE\xB1");
    EXPECT_EQ (decode_attribute ("&lab; & &; &#; &#x110000; &#0;"),
               "&lab; & &; &#; &#x110000; &#0;");
    EXPECT_EQ (decode_attribute ("a\n\tb"), "a  b");
}

/// Every real model that lies beside the project: it opens, and its drawing has all its reactions.
TEST (RealModels, each_opens_with_its_reactions) {
    const auto folder = ostrand::testing::source_path ("../shared/data");
    if (!std::filesystem::exists (folder)) {
        GTEST_SKIP () << "no " << folder;
    }
    int files = 0;
    for (const auto& entry : std::filesystem::directory_iterator (folder)) {
        if (entry.path ().extension () != ".xml") {
            continue;
        }
        ++files;
        CaughtMessages messages;
        Document document;
        ASSERT_EQ (open_document (entry.path (), {.arranging = Arranging::never}, document),
                   LoadStatus::loaded)
            << entry.path ();
        std::size_t reactions = 0;
        for (const document::Arque* a : document.network->all_arcs ()) {
            reactions += document::is_reaction (a->type ()) ? 1U : 0U;
        }
        const std::string text = ostrand::testing::file_text (entry.path ());
        std::size_t told = 0;
        for (std::size_t at = 0; (at = text.find ("<reaction ", at)) != std::string::npos; ++at) {
            ++told;
        }
        EXPECT_EQ (reactions, told) << entry.path ();
    }
    EXPECT_GE (files, 6);
}

} // namespace
} // namespace ostrand::files
