// Kinetics: what the deterministic simulator makes of a model against its differential equations.
#include "sbml_in/builders.h"
#include "sbml_in/plain_ode.h"
#include "sbml_in/read_sbml.h"
#include "sbml_in/simulated.h"
#include "support/support.h"

#include "document/network.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <map>

namespace ostrand::sbml_in {
namespace {

using namespace ostrand::testing;

/// Every species ends within 2 % of what the equations say, of its own largest value at least.
void expect_follows_equations (const std::string& xml, const std::vector<std::string>& species,
                               int seconds, double step = 1e-3) {
    const Compared c = simulate (xml, species, seconds);
    EXPECT_THAT (c.error, ::testing::Not (::testing::HasSubstr ("rate law")));
    PlainOde ode (xml);
    std::map<std::string, double> largest;
    for (const std::string& s : species) largest[s] = std::fabs (ode.concentration (s));
    // Simulations record the start of each second.
    ode.run_to (seconds - 1, step);
    for (const std::string& s : species) {
        const double expected = ode.concentration (s);
        const double scale = std::max (expected, 0.05 * largest[s]);
        ASSERT_TRUE (c.simulated.contains (s)) << s << "\n" << c.model;
        EXPECT_NEAR (c.simulated.at (s), expected, 0.02 * scale + 0.01) << s << "\n" << c.model;
    }
}

TEST (Kinetics, decay_runs_as_its_equation) {
    expect_follows_equations (sbml_lists (sbml_species ("A", "10") + sbml_species ("B"),
                                          sbml_reaction ({.id = "r",
                                                          .reactants = "A",
                                                          .products = "B",
                                                          .math = mathml_of ("(* cell k A)"),
                                                          .parameters = sbml_local ("k", "0.3")})),
                              {"A", "B"}, 6);
}

TEST (Kinetics, reversible_binding_runs_as_its_equation) {
    expect_follows_equations (
        sbml_lists (
            sbml_species ("A", "10") + sbml_species ("B", "4") + sbml_species ("AB", "1"),
            sbml_reaction ({.id = "r",
                            .reactants = "A B",
                            .products = "AB",
                            .math = mathml_of ("(* cell (- (* k1 A B) (* k2 AB)))"),
                            .parameters = sbml_local ("k1", "0.05") + sbml_local ("k2", "0.1"),
                            .reversible = true})),
        {"A", "B", "AB"}, 8);
}

TEST (Kinetics, dimers_take_two_and_splitting_gives_two) {
    expect_follows_equations (
        sbml_lists (
            sbml_species ("A", "10") + sbml_species ("D", "2"),
            sbml_reaction ({.id = "r",
                            .reactants = "2*A",
                            .products = "D",
                            .math = mathml_of ("(- (* k1 (^ A 2)) (* k2 D))"),
                            .parameters = sbml_local ("k1", "0.02") + sbml_local ("k2", "0.1"),
                            .reversible = true})),
        {"A", "D"}, 8);
}

TEST (Kinetics, what_makes_more_of_itself_grows) {
    expect_follows_equations (sbml_lists (sbml_species ("V", "1"),
                                          sbml_reaction ({.id = "r",
                                                          .reactants = "V",
                                                          .products = "2*V",
                                                          .math = mathml_of ("(* k V)"),
                                                          .parameters = sbml_local ("k", "0.4")})),
                              {"V"}, 6);
}

TEST (Kinetics, sources_sinks_and_catalysts_run_as_their_equations) {
    expect_follows_equations (
        sbml_lists (sbml_species ("G", "0.5") + sbml_species ("R") + sbml_species ("P"),
                    sbml_reaction ({.id = "r1",
                                    .products = "R",
                                    .modifiers = sbml_modifier ("G"),
                                    .math = mathml_of ("(* k G)"),
                                    .parameters = sbml_local ("k", "4")}) +
                        sbml_reaction ({.id = "r2",
                                        .reactants = "R",
                                        .math = mathml_of ("(* d R)"),
                                        .parameters = sbml_local ("d", "0.2")}) +
                        sbml_reaction ({.id = "r3",
                                        .products = "P",
                                        .math = mathml_of ("v"),
                                        .parameters = sbml_local ("v", "1.5")}) +
                        sbml_reaction ({.id = "r4",
                                        .reactants = "P R",
                                        .products = "R",
                                        .math = mathml_of ("(* q P R)"),
                                        .parameters = sbml_local ("q", "0.03")})),
        {"G", "R", "P"}, 8);
}

TEST (Kinetics, what_is_held_stays_and_feeds) {
    expect_follows_equations (
        sbml_lists (sbml_species ("S", "5", " boundaryCondition=\"true\"") + sbml_species ("A"),
                    sbml_reaction ({.id = "r",
                                    .reactants = "S",
                                    .products = "A",
                                    .math = mathml_of ("(* k S)"),
                                    .parameters = sbml_local ("k", "0.2")}) +
                        sbml_reaction ({.id = "q",
                                        .reactants = "A",
                                        .products = "S",
                                        .math = mathml_of ("(* k A)"),
                                        .parameters = sbml_local ("k", "0.1")})),
        {"S", "A"}, 8);
}

TEST (Kinetics, a_maximal_velocity_runs_as_its_equation) {
    expect_follows_equations (
        sbml_lists (
            sbml_species ("S", "300") + sbml_species ("P"),
            sbml_reaction ({.id = "r",
                            .reactants = "S",
                            .products = "P",
                            .math = mathml_of ("(/ (* cell V S) (+ Km S))"),
                            .parameters = sbml_local ("V", "30") + sbml_local ("Km", "150")})),
        {"S", "P"}, 11);
}

/// The arc leads from Glc; ATP's constant stays on ATP's link.
TEST (Kinetics, each_substrate_has_its_own_constant_whichever_the_arc_leads_from) {
    const std::string xml = sbml_lists (
        sbml_species ("ATP", "60") + sbml_species ("Glc", "500") + sbml_species ("ADP") +
            sbml_species ("G6P"),
        sbml_reaction ({.id = "r",
                        .reactants = "ATP Glc",
                        .products = "ADP G6P",
                        .math = mathml_of ("(/ (* V ATP Glc) (* (+ Ka ATP) (+ Kg Glc)))"),
                        .parameters = sbml_local ("V", "8") + sbml_local ("Ka", "20") +
                                      sbml_local ("Kg", "900")}));
    const Reading reading = read_sbml (xml);
    ASSERT_NE (reading.network, nullptr);
    std::map<std::string, std::string> constants;
    for (const document::Arque* a : reading.network->all_arcs ()) {
        if (a->label () == nullptr) continue;
        constants[a->source ()->name ()] =
            static_cast<const document::Line*> (a->label ())->chars_only ();
    }
    EXPECT_EQ (constants,
               (std::map<std::string, std::string>{{"ATP", "20 uM"}, {"Glc", "900 uM"}}));
    expect_follows_equations (xml, {"ATP", "G6P"}, 9);
}

/// Scarce and plenty, in every mixture: random binding to one enzyme would be up to twenty times as
/// fast as the law.
TEST (Kinetics, a_product_of_saturations_runs_as_its_equation) {
    struct Case {
        const char *a, *b;
    };
    for (const Case& c :
         {Case{"5", "8"}, Case{"2000", "8"}, Case{"30", "900"}, Case{"1500", "2500"}}) {
        SCOPED_TRACE (std::string (c.a) + " and " + c.b);
        expect_follows_equations (
            sbml_lists (
                sbml_species ("A", c.a) + sbml_species ("B", c.b) + sbml_species ("P") +
                    sbml_species ("Q"),
                sbml_reaction ({.id = "r",
                                .reactants = "A B",
                                .products = "2*P Q",
                                .math = mathml_of ("(/ (* V A B) (* (+ Ka A) (+ Kb B)))"),
                                .parameters = sbml_local ("V", "12") + sbml_local ("Ka", "60") +
                                              sbml_local ("Kb", "150")})),
            {"A", "B", "P", "Q"}, 11);
    }
}

TEST (Kinetics, a_product_of_saturations_by_an_enzyme_or_of_three_substrates_runs_as_its_equation) {
    expect_follows_equations (
        sbml_lists (
            sbml_species ("A", "90") + sbml_species ("H", "70") + sbml_species ("E", "0.4") +
                sbml_species ("P"),
            sbml_reaction ({.id = "r",
                            .reactants = "A H",
                            .products = "P",
                            .modifiers = sbml_modifier ("E"),
                            .math = mathml_of ("(/ (* kcat E A H) (* (+ Ka A) (+ Kh H)))"),
                            .parameters = sbml_local ("kcat", "30") + sbml_local ("Ka", "80") +
                                          sbml_local ("Kh", "200")})),
        {"A", "H", "P"}, 11);
    expect_follows_equations (
        sbml_lists (
            sbml_species ("A", "200") + sbml_species ("B", "90") + sbml_species ("C", "300") +
                sbml_species ("P"),
            sbml_reaction ({.id = "r",
                            .reactants = "A B C",
                            .products = "P",
                            .math = mathml_of ("(/ (* V A B C) (* (+ Ka A) (+ Kb B) (+ Kc C)))"),
                            .parameters = sbml_local ("V", "20") + sbml_local ("Ka", "100") +
                                          sbml_local ("Kb", "60") + sbml_local ("Kc", "400")})),
        {"A", "B", "C", "P"}, 11);
}

TEST (Kinetics, an_enzyme_with_a_function_of_its_own_runs_as_its_equation) {
    const std::string function =
        "<listOfFunctionDefinitions><functionDefinition id=\"mm\"><math "
        "xmlns=\"http://www.w3.org/1998/Math/MathML\"><lambda><bvar><ci>s</ci></bvar><bvar><ci>k"
        "</ci></bvar><apply><divide/><ci>s</ci><apply><plus/><ci>k</ci><ci>s</ci></apply></apply>"
        "</lambda></math></functionDefinition></listOfFunctionDefinitions>\n";
    std::string xml = sbml_lists (
        sbml_species ("S", "400") + sbml_species ("P") + sbml_species ("E", "0.5"),
        sbml_reaction ({.id = "r",
                        .reactants = "S",
                        .products = "P",
                        .modifiers = sbml_modifier ("E"),
                        .math = mathml_of ("(* cell kcat E (mm S Km))"),
                        .parameters = sbml_local ("kcat", "60") + sbml_local ("Km", "200")}));
    xml.insert (xml.find ("<listOfUnitDefinitions>"), function);
    expect_follows_equations (xml, {"S", "P"}, 11);
}

TEST (Kinetics, a_competitive_inhibitor_slows_its_reaction) {
    const std::string xml = sbml_lists (
        sbml_species ("S", "300") + sbml_species ("P") + sbml_species ("I", "100"),
        sbml_reaction ({.id = "r",
                        .reactants = "S",
                        .products = "P",
                        .modifiers = sbml_modifier ("I"),
                        .math = mathml_of ("(/ (* V S) (+ (* Km (+ 1 (/ I Ki))) S))"),
                        .parameters = sbml_local ("V", "30") + sbml_local ("Km", "150") +
                                      sbml_local ("Ki", "50")}));
    expect_follows_equations (xml, {"S", "P"}, 9);
}

TEST (Kinetics, reactants_and_strangers_among_the_modifiers_do_not_hide_the_law) {
    const std::string modifiers =
        sbml_modifier ("E") + sbml_modifier ("S") + sbml_modifier ("X") + sbml_modifier ("E");
    struct Case {
        const char* law;
        const char* k;
        const char* enzyme;
    };
    for (const Case& one : {Case{"(* cell k E S)", "0.002", "40"},
                            Case{"(* cell k E (/ S (+ Km S)))", "60", "0.5"}}) {
        SCOPED_TRACE (one.law);
        expect_follows_equations (
            sbml_lists (
                sbml_species ("S", "300") + sbml_species ("P") + sbml_species ("E", one.enzyme) +
                    sbml_species ("X", "7"),
                sbml_reaction ({.id = "r",
                                .reactants = "S",
                                .products = "P",
                                .modifiers = modifiers,
                                .math = mathml_of (one.law),
                                .parameters = sbml_local ("k", one.k) + sbml_local ("Km", "200")})),
            {"S", "P"}, 11);
    }
}

TEST (Kinetics, a_little_catalyst_with_a_large_flux_stays_what_it_is) {
    expect_follows_equations (
        sbml_lists (sbml_species ("S", "300") + sbml_species ("P") + sbml_species ("E", "0.5"),
                    sbml_reaction ({.id = "r",
                                    .reactants = "S",
                                    .products = "2*P",
                                    .modifiers = sbml_modifier ("E"),
                                    .math = mathml_of ("(* cell k E S)"),
                                    .parameters = sbml_local ("k", "0.3")})),
        {"S", "P", "E"}, 11);
}

TEST (Kinetics, a_single_gene_is_not_lost_by_chance) {
    // One molecule, which makes 2 a second for ten minutes.
    const TemporaryFolder folder;
    folder.write ("m.xml", sbml_lists (sbml_species ("G", "0.0017") + sbml_species ("R"),
                                       sbml_reaction ({.id = "r",
                                                       .products = "R",
                                                       .modifiers = sbml_modifier ("G"),
                                                       .math = mathml_of ("(* k G)"),
                                                       .parameters = sbml_local ("k", "2")})));
    ASSERT_EQ (run_program ({"ostrand-tool", "convert", "m.xml", "m.ssa", "--duration", "600"},
                            folder.path ())
                   .status,
               0);
    folder.write ("m.ssa", file_text (folder / "m.ssa") + "display (\"G\", \"R\");\n");
    ASSERT_EQ (run_program ({"ostrand", "-a", "m.ssa", "-o", "m.gz"}, folder.path ()).status, 0);
    const std::map<std::string, double> last = final_amounts (folder / "m.gz").at (0);
    EXPECT_NEAR (last.at ("G") * 602.252, 1, 0.01);
    EXPECT_NEAR (last.at ("R") * 602.252, 1198, 5 * std::sqrt (1198.0));
}

TEST (Kinetics, units_of_the_model_become_micromoles_litres_and_seconds) {
    std::string xml =
        sbml_lists (sbml_species ("A", "0.01") + sbml_species ("B", "0.004") + sbml_species ("C"),
                    sbml_reaction ({.id = "r",
                                    .reactants = "A B",
                                    .products = "C",
                                    .math = mathml_of ("(* k A B)"),
                                    .parameters = sbml_local ("k", "300")}));
    // Millimoles and minutes: 10 uM, 300 / mM / min = 0.005 / uM / s.
    xml.replace (xml.find ("scale=\"-6\""), 10, "scale=\"-3\"");
    xml.replace (xml.find ("timeUnits=\"second\""), 18, "timeUnits=\"minute\"");
    xml.insert (xml.find ("</listOfUnitDefinitions>"),
                "<unitDefinition id=\"minute\"><listOfUnits><unit kind=\"second\" exponent=\"1\" "
                "scale=\"0\" multiplier=\"60\"/></listOfUnits></unitDefinition>");
    const Compared c = simulate (xml, {"A"}, 10);
    EXPECT_THAT (c.model, ::testing::HasSubstr ("[\"A\"] = 10 uM;\n[\"B\"] = 4 uM;\n"));
    PlainOde ode (xml);
    ode.run_to (9 / 60.0, 1e-4);
    EXPECT_NEAR (c.simulated.at ("A"), ode.concentration ("A") * 1000, 0.2);
}

TEST (Kinetics, a_simulation_shows_what_known_laws_change) {
    const Compared c =
        convert (sbml_lists (sbml_species ("A", "10") + sbml_species ("B") +
                                 sbml_species ("C", "1") + sbml_species ("E", "1"),
                             sbml_reaction ({.id = "known",
                                             .reactants = "A",
                                             .products = "B",
                                             .modifiers = sbml_modifier ("E"),
                                             .math = mathml_of ("(* k E A)"),
                                             .parameters = sbml_local ("k", "0.3")}) +
                                 sbml_reaction ({.id = "strange",
                                                 .reactants = "B",
                                                 .products = "C",
                                                 .math = mathml_of ("(^ B 0.5)")})),
                 6);
    EXPECT_THAT (c.model, ::testing::HasSubstr ("display (\"A\", \"B\");"));
}

/// Model texts know no plus sign in an exponent.
TEST (Kinetics, large_concentrations_are_written_as_model_texts_read_them) {
    expect_follows_equations (sbml_lists (sbml_species ("A", "2000000") + sbml_species ("B"),
                                          sbml_reaction ({.id = "r",
                                                          .reactants = "A",
                                                          .products = "B",
                                                          .math = mathml_of ("(* k A)"),
                                                          .parameters = sbml_local ("k", "0.2")})),
                              {"A", "B"}, 6);
}

TEST (Kinetics, a_law_of_another_form_is_named_and_left_out) {
    const Compared c = simulate (
        sbml_lists (
            sbml_species ("A", "3") + sbml_species ("B"),
            sbml_reaction ({.id = "hill",
                            .reactants = "A",
                            .products = "B",
                            .math = mathml_of ("(/ (^ A 2) (+ 4 (^ A 2)))")}) +
                sbml_reaction ({.id = "good",
                                .reactants = "A",
                                .products = "B",
                                .math = mathml_of ("(* 2 A)")}) +
                sbml_reaction ({.id = "odd",
                                .reactants = "A",
                                .products = "B",
                                .math = mathml_of ("(* 2 B)")}) +
                sbml_reaction ({.id = "unsaturated",
                                .reactants = "A",
                                .products = "B",
                                .modifiers = sbml_modifier ("B"),
                                .math = mathml_of ("(/ (* 3 A) (+ 1 (/ B 2)))")}) +
                sbml_reaction (
                    {.id = "zero", .reactants = "A", .products = "B", .math = mathml_of ("2")})),
        {"A"}, 2);
    for (const char* id : {"'hill'", "'odd'", "'unsaturated'", "'zero'"}) {
        EXPECT_THAT (c.error, ::testing::HasSubstr (std::string ("the rate law of reaction ") + id +
                                                    " is not taken over"));
    }
    EXPECT_THAT (c.model, ::testing::Not (::testing::HasSubstr (" : ")));
}

} // namespace
} // namespace ostrand::sbml_in
