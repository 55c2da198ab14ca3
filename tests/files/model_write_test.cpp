// Model text: statements, their order, series of concentrations, the check of fields.
#include "files/model_write.h"
#include "sim/concentration.h"

#include "files/native.h"
#include "support/support.h"

#include <gtest/gtest.h>

namespace ostrand::files {
namespace {

using document::Line;
using document::Network;
using document::Node;

std::string model_of (const std::string& text, int duration = 0, const char* multi_name = "") {
    auto network = read_native (text);
    EXPECT_TRUE (network);
    network->update_shared_nodes ();
    return write_model (*network, duration, multi_name);
}

std::string concentration (const char* text) {
    std::string out;
    write_concentration (out, "a", text);
    return out;
}

const std::string reaction = "[S1 0 0 0 0 3 13{s}-][S2 0 0 0 0 3 13{p}-][S3 0 0 0 0 3 9{e}-]"
                             "[A11 0 272 2 1 2{0.1}{2}][A12 0 32 2 3 11]";

TEST (ModelText, one_reaction) {
    EXPECT_EQ (model_of ("[N3 0 2 8 8" + reaction + "]"), "\"e\" : \"s\" -> \"p\" | 0.1 - 2 ;\n");
}

TEST (ModelText, further_reactants_and_their_constants) {
    EXPECT_EQ (model_of ("[N5 0 2 8 8" + reaction +
                         "[S4 0 0 0 0 3 13{s 2}-][S5 0 0 0 0 3 13{p_{2}}-]"
                         "[A13 0 512 2 4 11{0.3}][A14 0 1025 2 5 11{0.9}]]"),
               "\"e\" : \"s\" + \"s\\ 2\" -> \"p\" + \"p_{2}\" | 0.1, 0.3 - 2 ;\n");
}

TEST (ModelText, two_catalysts_state_the_reaction_twice) {
    EXPECT_EQ (model_of ("[N4 0 2 8 8" + reaction + "[S4 0 0 0 0 3 9{f}-][A13 0 32 2 4 11]]"),
               "\"e\" : \"s\" -> \"p\" | 0.1 - 2 ;\n\"f\" : \"s\" -> \"p\" | 0.1 - 2 ;\n");
}

TEST (ModelText, a_product_may_catalyse_its_reaction_and_a_source_may_not) {
    const std::string two = "[N2 0 2 8 8[S1 0 0 0 0 3 13{s}-][S2 0 0 0 0 3 13{p}-]"
                            "[A3 0 272 2 1 2{0.1}{2}]";
    EXPECT_EQ (model_of (two + "[A4 0 32 2 2 3]]"), "\"p\" : \"s\" -> \"p\" | 0.1 - 2 ;\n");
    EXPECT_EQ (model_of (two + "[A4 0 32 2 1 3]]"), "");
}

TEST (ModelText, a_reaction_without_enzyme_writes_nothing) {
    EXPECT_EQ (model_of ("[N2 0 2 8 8[S1 0 0 0 0 3 13{s}-][S2 0 0 0 0 3 13{p}-]"
                         "[A3 0 272 2 1 2{0.1}{2}]]"),
               "");
}

TEST (ModelText, a_source_without_label_skips_the_reaction) {
    EXPECT_EQ (model_of ("[N3 0 2 8 8[S1 0 0 0 0 3 13--][S2 0 0 0 0 3 13{p}-]"
                         "[S3 0 0 0 0 3 9{e}-][A4 0 272 2 1 2][A5 0 32 2 3 4]]"),
               "");
}

TEST (ModelText, transport_counts_as_a_reaction) {
    EXPECT_EQ (model_of ("[N3 0 2 8 8[S1 0 0 0 0 3 13{s}-][S2 0 0 0 0 3 13{p}-]"
                         "[S3 0 0 0 0 3 9{e}-][A4 0 400 2 1 2][A5 0 32 2 3 4]]"),
               "\"e\" : \"s\" -> \"p\" ;\n");
}

TEST (ModelText, inhibitors_lose_their_constants_behind_one_without) {
    EXPECT_EQ (model_of ("[N6 0 2 8 8" + reaction +
                         "[S4 0 0 0 0 3 13{i}-][S5 0 0 0 0 3 13{j}-][S6 0 0 0 0 3 13{k}-]"
                         "[A13 0 48 2 4 11{7}][A14 0 48 2 5 11][A15 0 48 2 6 11{9}]]"),
               "\"e\" : \"s\" -> \"p\" | 0.1 - 2 ;\n\"e\" : \"i\" | 7;\n\"e\" : \"j\" ;\n"
               "\"e\" : \"k\" ;\n");
}

TEST (ModelText, an_unreplaced_constant_goes_out_as_bare_letters) {
    EXPECT_EQ (model_of ("[N3 0 2 8 8[S1 0 0 0 0 3 13{s}-][S2 0 0 0 0 3 13{p}-]"
                         "[S3 0 0 0 0 3 9{e}-][A4 0 272 2 1 2{K_{m}}][A5 0 32 2 3 4]]"),
               "\"e\" : \"s\" -> \"p\" | K ;\n");
}

TEST (ModelText, more_than_fifteen_substrates_are_cut) {
    std::string text = "[N22 0 2 8 8" + reaction;
    for (int i = 0; i < 19; ++i) {
        const std::string id = std::to_string (20 + i);
        text += "[S" + id + " 0 0 0 0 3 13{m" + id + "}-]";
    }
    for (int i = 0; i < 19; ++i) {
        text += "[A" + std::to_string (60 + i) + " 0 512 2 " + std::to_string (20 + i) + " 11]";
    }
    const std::string model = model_of (text + "]");
    EXPECT_NE (model.find ("\"m33\" -> "), std::string::npos) << model;
    EXPECT_EQ (model.find ("\"m34\""), std::string::npos) << model;
}

TEST (ModelText, order_of_the_statements) {
    EXPECT_EQ (model_of ("[N4 0 2 8 8[S1 0 0 0 0 3 13{s}-%10 uM][S2 0 0 0 0 3 13{p}-%0 uM]"
                         "[S3 0 0 0 0 3 9{e 1}-1 mM][S4 0 0 0 0 3 13{s}-%5 uM]"
                         "[A11 0 272 2 1 2][A12 0 32 2 3 11]]",
                         20),
               "[\"s\"] = 10 uM;\n[\"e\\ 1\"] = 1 mM;\n\ndisplay (\"s\", \"p\");\n"
               "duration = 20;\n\n\"e\\ 1\" : \"s\" -> \"p\" ;\n");
}

TEST (ModelText, the_species_on_several_planes_comes_last) {
    EXPECT_EQ (model_of ("[N2 0 2 8 8[S1 0 0 0 0 3 13{s}-1 uM][S2 0 0 0 0 3 13{p}-2 uM]]", 0, "s"),
               "[\"p\"] = 2 uM;\n[\"s\"] = 1 uM;\n");
}

TEST (ModelText, zero_micromolar_writes_nothing_and_other_zeros_do) {
    EXPECT_EQ (model_of ("[N3 0 2 8 8[S1 0 0 0 0 3 13{a}-0 uM][S2 0 0 0 0 3 13{b}-0 mM]"
                         "[S3 0 0 0 0 3 13{c}-0]]"),
               "[\"b\"] = 0 mM;\n[\"c\"] = 0;\n");
}

TEST (ModelText, a_network_without_nodes_writes_the_duration_only) {
    EXPECT_EQ (model_of ("[N0 0 2 8 8]", 7), "duration = 7;\n\n");
    EXPECT_EQ (model_of ("[N0 0 2 8 8]"), "");
}

TEST (ModelText, a_displayed_clone_is_left_to_its_master) {
    EXPECT_EQ (model_of ("[N2 0 2 8 8[S1 0 0 0 0 3 13{a}-][S2 0 0 0 0 3 13{a}-%]]"),
               "\ndisplay (\"a\");\n");
}

TEST (ModelText, nested_nodes_are_not_written) {
    EXPECT_EQ (model_of ("[N1 0 2 8 8[S1 0 0 0 0 3 9[N1 0 2[S2 0 0 0 0 3 13{x}-5 uM]]-]]"), "");
}

TEST (Concentration, series_of_three_evenly_spaced_values) {
    EXPECT_EQ (concentration ("1 uM, 2 uM, 3 uM"), "[\"a\"] = 1 uM -> 3 uM : 1 uM;\n");
    EXPECT_EQ (concentration ("1000 uM, 2000 uM, 3000 uM"), "[\"a\"] = 1 mM -> 3 mM : 1 mM;\n");
    EXPECT_EQ (concentration ("3 uM,2uM , 1 uM"), "[\"a\"] = 3 uM,2uM , 1 uM;\n"); // " ,": no list
    EXPECT_EQ (concentration ("3 uM,2uM,1 uM"), "[\"a\"] = 3 uM -> 1 uM : -1 uM;\n");
}

TEST (Concentration, two_values_stay_as_they_are) {
    EXPECT_EQ (concentration ("1 mM, 2 mM"), "[\"a\"] = 1 mM, 2 mM;\n");
    EXPECT_EQ (concentration ("10 uM"), "[\"a\"] = 10 uM;\n");
}

TEST (Concentration, a_mix_of_units_counts_after_conversion) {
    EXPECT_EQ (concentration ("500 uM, 1 mM, 1500 uM"), "[\"a\"] = 0.5 mM -> 1.5 mM : 0.5 mM;\n");
}

TEST (Concentration, uneven_lists_and_ranges_stay_as_they_are) {
    EXPECT_EQ (concentration ("1 uM, 2 uM, 4 uM"), "[\"a\"] = 1 uM, 2 uM, 4 uM;\n");
    EXPECT_EQ (concentration ("1 uM -> 3 uM : 1 uM, 2 uM, 3 uM"),
               "[\"a\"] = 1 uM -> 3 uM : 1 uM, 2 uM, 3 uM;\n");
    EXPECT_EQ (concentration ("0.1 uM, 0.2 uM, 0.3 uM"), // not exact in floats
               "[\"a\"] = 0.1 uM, 0.2 uM, 0.3 uM;\n");
}

TEST (Concentration, a_list_of_more_than_sixteen_values_stays_whole) {
    std::string list = "1 uM";
    for (int i = 2; i <= 16; ++i) list += ", " + std::to_string (i) + " uM";
    EXPECT_EQ (concentration (list.c_str ()), "[\"a\"] = 1 uM -> 16 uM : 1 uM;\n");
    list += ", 17 uM";
    EXPECT_EQ (concentration (list.c_str ()), "[\"a\"] = " + list + ";\n");
}

std::string fault (const char* text, bool concentration_field) {
    const testing::CaughtMessages messages;
    const bool good = check_field (Line (text, 67, 0), concentration_field);
    EXPECT_EQ (good, messages.all.empty ());
    return messages.joined ();
}

TEST (CheckField, kinetic_constants) {
    EXPECT_EQ (fault ("", false), "");
    EXPECT_EQ (fault ("0.5", false), "");
    EXPECT_EQ (fault ("1e-3", false), "");
    EXPECT_NE (fault ("Km", false).find ("Number expected: Km."), std::string::npos);
}

TEST (CheckField, concentrations) {
    EXPECT_EQ (fault ("", true), "");
    EXPECT_EQ (fault ("10 uM", true), "");
    EXPECT_EQ (fault ("0.1mM", true), "");
    EXPECT_NE (
        fault ("10 nM", true).find ("Invalid concentration unit: expected mM or uM, got: nM."),
        std::string::npos);
    EXPECT_NE (fault ("10", true).find ("Invalid concentration spec: 10."), std::string::npos);
    EXPECT_NE (fault ("much", true).find ("Invalid concentration spec: much."), std::string::npos);
}

TEST (CheckField, takes_the_concentrations_that_the_simulator_takes_and_no_others) {
    for (const char* good : {"1 uM, 2 uM", "1 mM -> 5 mM : 1 mM", "(b) 1 uM, 2 uM"}) {
        EXPECT_EQ (fault (good, true), "") << good;
        EXPECT_FALSE (sim::concentration_fault (good)) << good;
    }
    for (const std::string bad : {"-1 uM", "1 uM 2", "1 uM,", "9000 mM", "1 uM; [b] = 2 uM"}) {
        EXPECT_EQ (fault (bad.c_str (), true), "Invalid concentration spec: " + bad + ".\n");
        EXPECT_TRUE (sim::concentration_fault (bad)) << bad;
    }
}

} // namespace
} // namespace ostrand::files
