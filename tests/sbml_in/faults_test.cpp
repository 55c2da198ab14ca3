// What other tools' files bring: each of these once went wrong.
#include "sbml_in/builders.h"
#include "sbml_in/read_sbml.h"
#include "support/support.h"

#include "document/network.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <set>
#include <zlib.h>

namespace ostrand::sbml_in {
namespace {

using namespace ostrand::testing;
using document::Arque;
using document::Node;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

Reading read (const std::string& text) {
    Reading reading = read_sbml (text);
    EXPECT_NE (reading.network, nullptr) << ::testing::PrintToString (reading.notes);
    if (reading.network == nullptr) reading.network = std::make_unique<document::Network> ();
    return reading;
}

std::multiset<std::string> names (const document::Network& network) {
    std::multiset<std::string> all;
    for (const auto& n : network.nodes ()) {
        if (n->label () != nullptr) all.insert (n->name ());
    }
    return all;
}

const Arque* reaction (const document::Network& network, std::size_t index = 0) {
    for (const Arque* a : network.all_arcs ()) {
        if (document::is_reaction (a->type ()) && index-- == 0) return a;
    }
    return nullptr;
}

std::size_t reactions (const document::Network& network) {
    std::size_t n = 0;
    while (reaction (network, n) != nullptr) ++n;
    return n;
}

std::string letters (const document::Char* line) {
    return line == nullptr ? "" : static_cast<const document::Line*> (line)->chars_only ();
}

std::string many (const std::string& prefix, int n) {
    std::string all;
    for (int i = 0; i < n; ++i) all += (i > 0 ? " " : "") + prefix + std::to_string (i);
    return all;
}
std::string many_species (const std::string& prefix, int n) {
    std::string all;
    for (int i = 0; i < n; ++i) all += sbml_species (prefix + std::to_string (i));
    return all;
}

TEST (ForeignSbml, a_reaction_of_sixty_reactants_is_whole) {
    const Reading r = read (sbml_lists (
        many_species ("s", 60) + sbml_species ("P"),
        sbml_reaction ({.id = "biomass", .reactants = many ("s", 60), .products = "P"})));
    ASSERT_EQ (reactions (*r.network), 1U);
    EXPECT_EQ (r.network->arcs_to (*reaction (*r.network)).size (), 59U);
}

TEST (ForeignSbml, a_species_of_three_hundred_reactions_has_them_all) {
    std::string list;
    for (int i = 0; i < 300; ++i) {
        list += sbml_reaction ({.id = "r" + std::to_string (i),
                                .reactants = "hub",
                                .products = "s" + std::to_string (i)});
    }
    const Reading r = read (sbml_lists (sbml_species ("hub") + many_species ("s", 300), list));
    EXPECT_EQ (reactions (*r.network), 300U);
}

TEST (ForeignSbml, twenty_inhibitors_stand_at_their_own_reaction_only) {
    std::string inhibitors;
    for (int i = 0; i < 20; ++i) inhibitors += sbml_modifier ("i" + std::to_string (i), "0000020");
    const Reading r = read (sbml_lists (
        sbml_species ("A") + sbml_species ("B") + sbml_species ("E") + many_species ("i", 20),
        sbml_reaction ({.id = "r1",
                        .reactants = "A",
                        .products = "B",
                        .modifiers = sbml_modifier ("E") + inhibitors}) +
            sbml_reaction ({.id = "r2",
                            .reactants = "B",
                            .products = "A",
                            .modifiers = sbml_modifier ("E")})));
    EXPECT_EQ (r.network->arcs_to (*reaction (*r.network, 0)).size (), 21U);
    const auto second = r.network->arcs_to (*reaction (*r.network, 1));
    ASSERT_EQ (second.size (), 1U);
    EXPECT_EQ (second[0]->type (), document::arc::catalysis);
}

TEST (ForeignSbml, level_1_version_1_with_specie_is_read) {
    const Reading r = read (
        "<sbml xmlns=\"http://www.sbml.org/sbml/level1\" level=\"1\" version=\"1\"><model "
        "name=\"m\"><listOfCompartments><compartment name=\"c\"/></listOfCompartments>"
        "<listOfSpecies><specie name=\"A\" compartment=\"c\" initialAmount=\"1\"/><specie "
        "name=\"B\" compartment=\"c\" initialAmount=\"0\"/></listOfSpecies><listOfReactions>"
        "<reaction name=\"r\"><listOfReactants><specieReference specie=\"A\" stoichiometry=\"3\"/>"
        "</listOfReactants><listOfProducts><specieReference specie=\"B\"/></listOfProducts>"
        "</reaction></listOfReactions></model></sbml>");
    EXPECT_THAT (names (*r.network), UnorderedElementsAre ("A", "B"));
    ASSERT_EQ (reactions (*r.network), 1U);
    EXPECT_EQ (letters (reaction (*r.network)->stoech_src ()), "3");
}

TEST (ForeignSbml, species_listed_behind_the_reactions_and_empty_names_are_read) {
    const std::string text =
        "<sbml xmlns=\"http://www.sbml.org/sbml/level2/version4\" level=\"2\" version=\"4\">"
        "<model id=\"m\"><listOfCompartments><compartment id=\"c\"/></listOfCompartments>"
        "<listOfReactions><reaction id=\"r\"><listOfReactants><speciesReference species=\"A\"/>"
        "</listOfReactants><listOfProducts><speciesReference species=\"B\"/></listOfProducts>"
        "</reaction></listOfReactions><listOfSpecies><species id=\"A\" name=\"\" "
        "compartment=\"c\"/><species id=\"B\" compartment=\"c\"/></listOfSpecies></model></sbml>";
    const Reading r = read (text);
    EXPECT_THAT (names (*r.network), UnorderedElementsAre ("A", "B"));
    EXPECT_EQ (reactions (*r.network), 1U);
}

TEST (ForeignSbml, v_to_two_v_keeps_its_two) {
    const Reading r = read (sbml_lists (
        sbml_species ("V"), sbml_reaction ({.id = "r", .reactants = "V", .products = "2*V"})));
    const Arque* arc = reaction (*r.network);
    ASSERT_NE (arc, nullptr);
    EXPECT_EQ (arc->stoech_src (), nullptr);
    EXPECT_EQ (letters (arc->stoech_dest ()), "2");
    EXPECT_THAT (names (*r.network), UnorderedElementsAre ("V", "V"));
    EXPECT_NE (arc->source (), arc->dest_node ());
}

TEST (ForeignSbml, broken_stoichiometries_are_labels) {
    const Reading r = read (
        sbml_lists (sbml_species ("A") + sbml_species ("B") + sbml_species ("C"),
                    sbml_reaction ({.id = "r", .reactants = "A 0.25*B", .products = "1.5*C"})));
    const Arque* arc = reaction (*r.network);
    EXPECT_EQ (letters (arc->stoech_dest ()), "1.5");
    const auto links = r.network->arcs_to (*arc);
    ASSERT_EQ (links.size (), 1U);
    EXPECT_EQ (letters (links[0]->stoech_src ()), "0.25");
}

TEST (ForeignSbml, the_arc_follows_the_path_and_cofactors_stand_beside_it) {
    const Reading r = read (sbml_lists (
        sbml_species ("ATP") + sbml_species ("Glc") + sbml_species ("ADP") + sbml_species ("G6P"),
        sbml_reaction ({.id = "r", .reactants = "2*ATP Glc", .products = "3*ADP G6P"})));
    const Arque* arc = reaction (*r.network);
    ASSERT_NE (arc, nullptr);
    EXPECT_EQ (arc->source ()->name (), "Glc");
    EXPECT_EQ (arc->dest_node ()->name (), "G6P");
    EXPECT_EQ (arc->stoech_src (), nullptr);
    EXPECT_EQ (arc->stoech_dest (), nullptr);
    const auto links = r.network->arcs_to (*arc);
    ASSERT_EQ (links.size (), 2U);
    EXPECT_EQ (links[0]->source ()->name (), "ATP");
    EXPECT_EQ (links[0]->type (), document::arc::substrate);
    EXPECT_EQ (letters (links[0]->stoech_src ()), "2");
    EXPECT_EQ (links[1]->source ()->name (), "ADP");
    EXPECT_EQ (links[1]->type (), document::arc::product);
    EXPECT_EQ (letters (links[1]->stoech_src ()), "3");
}

TEST (ForeignSbml, reversible_reactions_are_drawn_both_ways) {
    const Reading r = read (sbml_lists (
        sbml_species ("A") + sbml_species ("B") + sbml_species ("C"),
        sbml_reaction ({.id = "r", .reactants = "A B", .products = "C", .reversible = true}) +
            sbml_reaction ({.id = "q", .reactants = "B", .products = "C"})));
    EXPECT_EQ (reaction (*r.network, 0)->type (), document::arc::reversible_reaction);
    EXPECT_EQ (reaction (*r.network, 1)->type (), document::arc::reaction);
    EXPECT_EQ (r.network->arcs_to (*reaction (*r.network, 0))[0]->type (),
               document::arc::reversible_substrate);
}

TEST (ForeignSbml, a_reaction_with_inhibitors_only_stays) {
    const Reading r = read (sbml_lists (
        sbml_species ("mRNA") + sbml_species ("TetR"),
        sbml_reaction (
            {.id = "r", .products = "mRNA", .modifiers = sbml_modifier ("TetR", "0000536")})));
    ASSERT_EQ (reactions (*r.network), 1U);
    const auto links = r.network->arcs_to (*reaction (*r.network));
    ASSERT_EQ (links.size (), 1U);
    EXPECT_EQ (links[0]->type (), document::arc::inhibition);
    EXPECT_EQ (reaction (*r.network)->source ()->label (), nullptr); // the small mark of a source
}

TEST (ForeignSbml, equal_names_are_told_apart_by_compartment_or_id) {
    const Reading r =
        read (sbml_model ("<listOfCompartments>" + sbml_compartment ("cyt", " name=\"cytosol\"") +
                          sbml_compartment ("nuc") + "</listOfCompartments><listOfSpecies>" +
                          sbml_species ("a", "0", " name=\"AKT1\"", "cyt") +
                          sbml_species ("b", "0", " name=\"AKT1\"", "nuc") +
                          sbml_species ("c", "0", " name=\"GSK\"", "cyt") +
                          sbml_species ("d", "0", " name=\"GSK\"", "cyt") +
                          sbml_species ("e", "0", " name=\"ERK\"", "cyt") + "</listOfSpecies>"));
    EXPECT_THAT (names (*r.network), UnorderedElementsAre ("AKT1\\ (cytosol)", "AKT1\\ (nuc)",
                                                           "GSK\\ (c)", "GSK\\ (d)", "ERK"));
}

TEST (ForeignSbml, two_modifiers_draw_one_reaction) {
    const Reading r = read (sbml_lists (
        sbml_species ("A") + sbml_species ("B") + sbml_species ("E") + sbml_species ("F"),
        sbml_reaction ({.id = "r",
                        .reactants = "A",
                        .products = "B",
                        .modifiers = sbml_modifier ("E") + sbml_modifier ("F")})));
    EXPECT_EQ (reactions (*r.network), 1U);
    EXPECT_EQ (r.network->arcs_to (*reaction (*r.network)).size (), 2U);
}

TEST (ForeignSbml, roles_come_from_the_ontology_and_from_modification_lines) {
    std::string modifiers;
    std::string species = sbml_species ("A") + sbml_species ("B");
    const std::vector<std::pair<std::string, unsigned>> terms{
        {"0000013", document::arc::catalysis},  {"0000460", document::arc::catalysis},
        {"0000020", document::arc::inhibition}, {"0000207", document::arc::inhibition},
        {"0000459", document::arc::activation}, {"0000461", document::arc::necessary_activation},
        {"0000019", document::arc::catalysis},  {"", document::arc::catalysis}};
    for (std::size_t i = 0; i < terms.size (); ++i) {
        const std::string id = "m" + std::to_string (i);
        species += sbml_species (id);
        modifiers += sbml_modifier (id, terms[i].first);
    }
    species += sbml_species ("x");
    modifiers += sbml_modifier ("x");
    std::string text = sbml_lists (
        species,
        sbml_reaction ({.id = "r", .reactants = "A", .products = "B", .modifiers = modifiers}));
    text.insert (text.find ("<listOfReactants>"),
                 "<annotation><cd:extension xmlns:cd=\"urn:editor\"><cd:modification "
                 "type=\"TRANSCRIPTIONAL_INHIBITION\" modifiers=\"y,x\"/></cd:extension>"
                 "</annotation>");
    const Reading r = read (text);
    std::map<std::string, unsigned> types;
    for (const Arque* a : r.network->arcs_to (*reaction (*r.network))) {
        types[a->source ()->name ()] = a->type ();
    }
    for (std::size_t i = 0; i < terms.size (); ++i) {
        EXPECT_EQ (types["m" + std::to_string (i)], terms[i].second) << terms[i].first;
    }
    EXPECT_EQ (types["x"], document::arc::inhibition);
}

TEST (ForeignSbml, only_digits_or_a_brace_make_a_script) {
    const Reading r = read (sbml_lists (sbml_species ("IkB_alpha") + sbml_species ("x_12") +
                                            sbml_species ("c", "0", " name=\"Ca^{2+}\"") +
                                            sbml_species ("d", "0", " name=\"a^b_\""),
                                        ""));
    EXPECT_THAT (names (*r.network),
                 UnorderedElementsAre ("IkB\\_alpha", "x_{12}", "Ca^{2+}", "a\\^b\\_"));
}

TEST (ForeignSbml, a_file_without_reactions_and_what_it_says_beyond_them_are_told) {
    const Reading r = read (sbml_model (
        "<listOfCompartments>" + sbml_compartment ("cell") +
        "</listOfCompartments><listOfSpecies>" + sbml_species ("A") + sbml_species ("B") +
        "</listOfSpecies><listOfRules><rateRule variable=\"A\"><math "
        "xmlns=\"http://www.w3.org/1998/Math/MathML\"><cn>1</cn></math></rateRule>"
        "<assignmentRule variable=\"B\"><math xmlns=\"http://www.w3.org/1998/Math/MathML\">"
        "<cn>1</cn></math></assignmentRule></listOfRules>"));
    EXPECT_THAT (r.notes, ElementsAre ("SBML: a drawing has no place for 1 assignment rule, 1 rate "
                                       "rule.",
                                       "SBML: the model has no reactions."));
    EXPECT_THAT (names (*r.network), UnorderedElementsAre ("A", "B"));
}

TEST (ForeignSbml, what_cannot_stand_is_left_out_alone_and_named_with_its_line) {
    const Reading r =
        read (sbml_lists (sbml_species ("A") + sbml_species ("B"),
                          sbml_reaction ({.id = "good", .reactants = "A nobody", .products = "B"}) +
                              sbml_reaction ({.id = "empty"})));
    EXPECT_EQ (reactions (*r.network), 1U);
    ASSERT_EQ (r.notes.size (), 2U);
    EXPECT_THAT (r.notes[0], ::testing::MatchesRegex (
                                 "SBML, line [1-9][0-9]*: reaction 'good' names an unknown species "
                                 "'nobody', which is left out."));
    EXPECT_THAT (r.notes[1],
                 ::testing::MatchesRegex ("SBML, line [1-9][0-9]*: reaction 'empty' has neither "
                                          "reactants nor products and is left out."));
}

TEST (ForeignSbml, what_is_no_sbml_is_refused_with_its_line) {
    for (const char* text : {"", "no xml", "<sbml>", "<?xml version=\"1.0\"?><a><b></a>",
                             "<sbml xmlns=\"http://www.sbml.org/sbml/level3/version1/core\" "
                             "level=\"3\" version=\"1\">\n<model></sbml>"}) {
        const Reading r = read_sbml (text);
        EXPECT_EQ (r.network, nullptr) << text;
        ASSERT_EQ (r.notes.size (), 1U) << text;
        EXPECT_THAT (r.notes[0], ::testing::StartsWith ("SBML, line ")) << text;
    }
}

TEST (ForeignSbml, formulas_of_any_depth_and_length_are_refused_or_read) {
    const auto with_law = [] (const std::string& math) {
        return sbml_lists (
            sbml_species ("A", "1") + sbml_species ("B"),
            sbml_reaction ({.id = "r", .reactants = "A", .products = "B", .math = math}));
    };
    std::string deep = "<cn>1</cn>";
    for (int i = 0; i < 15; ++i) deep = "<apply><plus/><cn>1</cn>" + deep + "</apply>";
    EXPECT_NE (read_sbml (with_law (deep)).network, nullptr);
    std::string open;
    std::string close;
    for (int i = 0; i < 50000; ++i) {
        open += "<apply><plus/><cn>1</cn>";
        close += "</apply>";
    }
    const Reading refused = read_sbml (with_law (open + "<cn>1</cn>" + close));
    EXPECT_EQ (refused.network, nullptr);
    EXPECT_THAT (refused.notes, ElementsAre (HasSubstr ("elements are nested too deeply")));
    std::string wide = "<apply><plus/>";
    for (int i = 0; i < 20000; ++i) wide += "<cn>1</cn>";
    EXPECT_NE (read_sbml (with_law (wide + "</apply>")).network, nullptr);
    std::string sum = "1";
    for (int i = 0; i < 50000; ++i) sum += "+1";
    const Reading level_1 = read_sbml (
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<sbml "
        "xmlns=\"http://www.sbml.org/sbml/level1\" level=\"1\" version=\"2\"><model name=\"m\">"
        "<listOfReactions><reaction name=\"r\">\n<kineticLaw formula=\"" +
        sum + "\"/></reaction></listOfReactions></model></sbml>");
    EXPECT_THAT (level_1.notes, ElementsAre ("SBML, line 3: the formula is too long."));
}

TEST (ForeignSbml, arrows_in_names_nest_nothing) {
    std::string species;
    for (int i = 0; i < 1500; ++i) {
        species += sbml_species ("s" + std::to_string (i), "0",
                                 " name=\"A->B " + std::to_string (i) + "\"");
    }
    EXPECT_EQ (read (sbml_lists (species, "")).network->nb_nodes (), 1500);
}

TEST (ForeignSbml, submodels_are_put_together) {
    const std::string comp = "http://www.sbml.org/sbml/level3/version1/comp/version1";
    std::string text = sbml_model (
        "<comp:listOfSubmodels><comp:submodel comp:id=\"one\" comp:modelRef=\"part\"/>"
        "<comp:submodel comp:id=\"two\" comp:modelRef=\"part\"/></comp:listOfSubmodels>");
    text.insert (text.find (" level=\"3\""), " xmlns:comp=\"" + comp + "\" comp:required=\"true\"");
    const std::string inner =
        sbml_lists (sbml_species ("A") + sbml_species ("B"),
                    sbml_reaction ({.id = "r", .reactants = "A", .products = "B"}));
    std::string definition = inner.substr (inner.find ("<listOfCompartments>"));
    definition.resize (definition.find ("</model>"));
    text.insert (text.find ("</sbml>"),
                 "<comp:listOfModelDefinitions><comp:modelDefinition id=\"part\">" + definition +
                     "</comp:modelDefinition></comp:listOfModelDefinitions>");
    const Reading r = read (text);
    EXPECT_EQ (reactions (*r.network), 2U);
    EXPECT_EQ (names (*r.network).size (), 4U);
}

TEST (ForeignSbml, places_of_the_layout_package_are_used) {
    const auto folder = models_folder ();
    if (!folder) GTEST_SKIP () << "the folder of models is not there";
    const Reading r = read (file_text (*folder / "layout-l3.xml"));
    EXPECT_TRUE (r.has_places);
    EXPECT_EQ (reactions (*r.network), 2U);
}

TEST (Unpacked, gzip_is_told_by_its_content_and_bounded) {
    std::string packed (1000, '\0');
    const std::string text = "<sbml/> " + std::string (5000, 'x');
    z_stream stream{};
    ASSERT_EQ (deflateInit2 (&stream, 9, Z_DEFLATED, 31, 8, Z_DEFAULT_STRATEGY), Z_OK);
    stream.next_in = reinterpret_cast<Bytef*> (const_cast<char*> (text.data ()));
    stream.avail_in = static_cast<uInt> (text.size ());
    stream.next_out = reinterpret_cast<Bytef*> (packed.data ());
    stream.avail_out = static_cast<uInt> (packed.size ());
    ASSERT_EQ (deflate (&stream, Z_FINISH), Z_STREAM_END);
    packed.resize (stream.total_out);
    deflateEnd (&stream);
    EXPECT_EQ (unpacked (packed, 1 << 20), text);
    EXPECT_EQ (unpacked (packed, 100), std::nullopt);
    EXPECT_EQ (unpacked (packed.substr (0, packed.size () / 2), 1 << 20), std::nullopt);
    EXPECT_EQ (unpacked ("plain", 100), "plain");
}

TEST (ForeignSbml, damaged_texts_do_no_harm) {
    const std::string whole = sbml_lists (sbml_species ("A", "3") + sbml_species ("B"),
                                          sbml_reaction ({.id = "r",
                                                          .reactants = "A",
                                                          .products = "2*B",
                                                          .modifiers = sbml_modifier ("B"),
                                                          .math = mathml_of ("(* k A B)"),
                                                          .parameters = sbml_local ("k", "1"),
                                                          .reversible = true}));
    unsigned state = 7;
    const auto next = [&state] (std::size_t n) {
        state = state * 1664525U + 1013904223U;
        return static_cast<std::size_t> (state >> 8) % n;
    };
    for (int round = 0; round < 300; ++round) {
        std::string text = whole;
        for (int i = 0; i < 3; ++i) {
            const std::size_t at = next (text.size ());
            if (next (2) == 0)
                text[at] = static_cast<char> (next (256));
            else
                text.erase (at, 1 + next (40));
        }
        const Reading r = read_sbml (text);
        EXPECT_TRUE (r.network != nullptr || r.notes.size () == 1);
    }
}

} // namespace
} // namespace ostrand::sbml_in
