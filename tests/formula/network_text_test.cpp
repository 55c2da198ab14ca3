// Thresholds and the SBML text of an implementation.
#include "formula/network_text.h"
#include "formula/tectrix.h"
#include "support/support.h"

#include <gtest/gtest.h>

namespace ostrand::formula {
namespace {

using Pair = std::pair<double, double>;

SearchResult searched (const std::string& csv, const std::string& formula,
                       const std::string& output) {
    auto library = std::make_unique<Lib_v1> ();
    library->read (csv);
    return search (std::move (library), formula, output);
}

/// An implementation over these reactions, which it looks at.
Implementation made_of (const std::vector<LibReaction>& reactions, const std::string& output) {
    Implementation one;
    one.output = output;
    for (const LibReaction& reaction : reactions) one.reactions.insert (&reaction);
    return one;
}

LibReaction reaction (const std::string& id, std::vector<std::string> substrates,
                      std::vector<std::string> products) {
    LibReaction one;
    one.id = id;
    one.substrates = std::move (substrates);
    one.products = std::move (products);
    return one;
}

TEST (thresholds, a_single_reaction_hands_them_to_its_substrate) {
    const std::vector<LibReaction> reactions{reaction ("r", {"a"}, {"out"})};
    Implementation one = made_of (reactions, "out");
    set_thresholds (one, 50, 500);
    EXPECT_EQ (one.thresholds, (std::map<std::string, Pair>{{"out", {50, 500}}, {"a", {50, 500}}}));
}

TEST (thresholds, two_reactions_for_the_output_halve_the_lower_one) {
    const std::vector<LibReaction> reactions{reaction ("r1", {"a"}, {"out"}),
                                             reaction ("r2", {"b"}, {"out"})};
    Implementation one = made_of (reactions, "out");
    set_thresholds (one, 50, 500);
    EXPECT_EQ (one.thresholds.at ("a"), Pair (25, 500));
    EXPECT_EQ (one.thresholds.at ("b"), Pair (25, 500));
    EXPECT_EQ (one.thresholds.at ("out"), Pair (50, 500));
}

TEST (thresholds, go_back_along_chains_and_each_reaction_counts_once) {
    const std::vector<LibReaction> reactions{
        reaction ("r1", {"b"}, {"out"}), reaction ("r2", {"c"}, {"out"}),
        reaction ("r3", {"d"}, {"b"}), reaction ("r4", {"e", "out"}, {"b"}),
        reaction ("r5", {"x"}, {"y"})};
    Implementation one = made_of (reactions, "out");
    set_thresholds (one, 50, 500);
    EXPECT_EQ (one.thresholds.at ("d"), Pair (12.5, 500));
    EXPECT_EQ (one.thresholds.at ("e"), Pair (12.5, 500));
    EXPECT_EQ (one.thresholds.at ("out"), Pair (12.5, 500)); // it is a substrate of r4
    EXPECT_FALSE (one.thresholds.contains ("x"));
    set_thresholds (one, 1, 2); // earlier ones are forgotten
    EXPECT_EQ (one.thresholds.at ("c"), Pair (0.5, 2));
}

TEST (thresholds, without_reactions_only_the_output_has_them) {
    Implementation one = made_of ({}, "out");
    set_thresholds (one, 50, 500);
    EXPECT_EQ (one.thresholds, (std::map<std::string, Pair>{{"out", {50, 500}}}));
}

const char* const yes_gate =
    "E/S;1;A;1;B;YES;ENZ;1;E;ELNEC;1;K;ELABS;1;X;REACTIONS;1;"
    "REACBEGIN;R1;1;RANDOM_SEQ;SUBS;2;A;12.3 mM;K;0.5 mM;PROD;2;B;240;A;77;ENZY;1;E;INHI;1;X;"
    "REACEND;\n";

TEST (network_text, a_single_yes_gate_is_written_to_the_letter) {
    SearchResult result = searched (yes_gate, "A", "B");
    ASSERT_EQ (result.implementations.size (), 1U);
    EXPECT_EQ (implementation_text (result, 0),
               R"(<?xml version="1.0" encoding="UTF-8"?>
<sbml xmlns="http://www.sbml.org/sbml/level2/version4" level="2" version="4">
<model id="untitled">
<listOfUnitDefinitions>
<unitDefinition id="substance" name="substance">
<listOfUnits>
<unit kind="mole"/>
</listOfUnits>
</unitDefinition>
<unitDefinition id="volume" name="volume">
<listOfUnits>
<unit kind="litre"/>
</listOfUnits>
</unitDefinition>
<unitDefinition id="area" name="area">
<listOfUnits>
<unit kind="metre" exponent="2"/>
</listOfUnits>
</unitDefinition>
<unitDefinition id="length" name="length">
<listOfUnits>
<unit kind="metre"/>
</listOfUnits>
</unitDefinition>
<unitDefinition id="time" name="time">
<listOfUnits>
<unit kind="second"/>
</listOfUnits>
</unitDefinition>
</listOfUnitDefinitions>
<listOfCompartments>
<compartment id="default" size="1" units="volume">
</compartment>
</listOfCompartments>
<listOfSpecies>
<species id="s1" name="A" compartment="default" initialAmount="0">
<annotation>
<lattrix:logic type="INPUT" />
<lattrix:thresholds s1="50" s2="500" />
</annotation>
</species>
<species id="s2" name="B" compartment="default" initialAmount="0">
<annotation>
<lattrix:logic type="OUTPUT" />
<lattrix:thresholds s1="50" s2="500" />
</annotation>
</species>
<species id="s3" name="E" compartment="default" initialAmount="0">
</species>
<species id="s4" name="K" compartment="default" initialAmount="0">
<annotation>
<lattrix:logic type="EXCESS" />
<lattrix:thresholds s1="50" s2="500" />
</annotation>
</species>
<species id="s5" name="X" compartment="default" initialAmount="0">
<annotation>
<lattrix:logic type="FORBIDDEN" />
<lattrix:thresholds s1="0" s2="0" />
</annotation>
</species>
</listOfSpecies>
<listOfReactions>
<reaction id="R1" reversible="true">
<annotation>
<lattrix:reactionkinetics type="RANDOM_SEQ" />
</annotation>
<listOfReactants>
<speciesReference species="s1" mainsubstrate="true" >
<annotation>
<lattrix:kinetics cc="12.3 mM" />
</annotation>
</speciesReference>
<speciesReference species="s4" >
<annotation>
<lattrix:kinetics cc="0.5 mM" />
</annotation>
</speciesReference>
</listOfReactants>
<listOfProducts>
<speciesReference species="s2" mainproduct="true" >
<annotation>
<lattrix:kinetics cc="240" />
</annotation>
</speciesReference>
<speciesReference species="s1" >
<annotation>
<lattrix:kinetics cc="77" />
</annotation>
</speciesReference>
</listOfProducts>
<listOfModifiers>
<speciesReference species="s3" sboTerm="SBO:0000460" />
<speciesReference species="s5" sboTerm="SBO:0000020" />
</listOfModifiers>
</reaction>
</listOfReactions>
</model>
</sbml>
)");
}

TEST (network_text, a_species_that_is_input_and_excess_has_two_annotations) {
    SearchResult result =
        searched ("E/S;1;A;1;B;YES;ENZ;0;ELNEC;1;A;ELABS;0;REACTIONS;1;REACBEGIN;R1;0;;SUBS;1;A;;"
                  "PROD;1;B;;ENZY;1;E;INHI;0;REACEND;\n",
                  "A", "B");
    EXPECT_NE (implementation_text (result, 0).find (
                   "<annotation>\n<lattrix:logic type=\"INPUT\" />\n"
                   "<lattrix:thresholds s1=\"50\" s2=\"500\" />\n</annotation>\n"
                   "<annotation>\n<lattrix:logic type=\"EXCESS\" />\n"
                   "<lattrix:thresholds s1=\"50\" s2=\"500\" />\n</annotation>\n</species>\n"),
               std::string::npos);
}

TEST (network_text, a_gate_without_reactions_adds_nothing) {
    SearchResult result =
        searched ("E/S;1;A;1;B;YES;ENZ;0;ELNEC;0;ELABS;0;REACTIONS;0;\n", "A", "B");
    ASSERT_EQ (result.implementations.size (), 1U);
    EXPECT_TRUE (result.implementations[0].species.empty ());
    const std::string text = implementation_text (result, 0);
    EXPECT_NE (text.find ("<listOfSpecies>\n</listOfSpecies>\n<listOfReactions>\n"
                          "</listOfReactions>\n"),
               std::string::npos);
}

TEST (network_text, names_keep_their_entities_and_cannot_end_an_attribute) {
    Implementation one;
    LibReaction odd = reaction ("R", {"A&amp;a"}, {"B\"<"});
    one.reactions.insert (&odd);
    one.species = {"A&amp;a", "B\"<"};
    write_network (one);
    EXPECT_NE (one.text.find ("name=\"A&amp;a\""), std::string::npos);
    EXPECT_NE (one.text.find ("name=\"B&quot;&lt;\""), std::string::npos);
}

TEST (network_text, an_index_behind_the_last_has_no_text) {
    SearchResult result = searched (yes_gate, "A", "B");
    EXPECT_EQ (implementation_text (result, 1), "");
}

TEST (network_text, files_are_written_under_their_number) {
    testing::TemporaryFolder folder;
    SearchResult result = searched (yes_gate, "A", "B");
    EXPECT_TRUE (write_network (result.implementations[0], 3, folder.path ()));
    EXPECT_EQ (folder.names (), std::vector<std::string>{"reseau_3.xml"});
    EXPECT_EQ (testing::file_text (folder / "reseau_3.xml"), result.implementations[0].text);
    testing::CaughtMessages messages;
    EXPECT_FALSE (write_network (result.implementations[0], 0, folder / "none"));
    EXPECT_EQ (messages.all.size (), 1U);
}

} // namespace
} // namespace ostrand::formula
