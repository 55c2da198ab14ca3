// The reaction table, the gate file, the reports, the front end and the sub-model writer.
#include "base/text.h"
#include "gates/builders.h"
#include "gates/front_end.h"
#include "gates/gate_csv.h"
#include "gates/reaction_table.h"
#include "gates/sbml_writer.h"
#include "gates/summary_report.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace ostrand::gates {
namespace {

using namespace testing_builders;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr const char* table_legend =
    "LEGEND;Reversibilite;TypeCinetique;Nb Substrats;Substrat 1;Coef Cinetique 1;Substrat 2;"
    "Coef Cinetique 2;Substrat 3;Coef Cinetique 3;Substrat 4;Coef Cinetique 4;Nb Produits;"
    "Produit 1;Coef Cinetique 1;Produit 2;Coef Cinetique 2;Produit 3;Coef Cinetique 3;Produit 4;"
    "Coef Cinetique 4;Nb Inhibiteurs;\n";

/// Numbers 0, 1, 2 … for tests that want to see the draws.
RandomNumbers counting () {
    auto next = std::make_shared<int> (0);
    return [next] { return (*next)++; };
}

std::string table_line (const Reaction& one, const RandomNumbers& random) {
    const std::string text = reaction_table_text ("m.xml", {one}, random);
    const std::string head = "LEGEND;Reseau Metabolique;m.xml\n" + std::string (table_legend);
    EXPECT_TRUE (text.starts_with (head));
    return text.substr (head.size ());
}

TEST (reaction_table, line_of_a_reaction) {
    EXPECT_EQ (table_line (reaction ("r1", {"A", "B"}, {"C", "D"}, {"E", "F"}, {"I", "J"}, true),
                           counting ()),
               "REACBEGIN;1;RANDOM_SEQ;2;A;0.1 mM;B;0.2 mM;;;;;2;C;52;D;53;;;;;2;I;J;E;F;\n");
}

TEST (reaction_table, more_products_than_substrates_share_one_value) {
    EXPECT_EQ (table_line (reaction ("r1", {"A"}, {"B", "C"}, {"E"}), counting ()),
               "REACBEGIN;0;RANDOM_SEQ;1;A;0.1 mM;;;;;;;2;B;51;C;51;;;;;0;E;\n");
}

TEST (reaction_table, two_substrates_and_two_products_draw_each) {
    const std::string line =
        table_line (reaction ("r1", {"A", "B"}, {"C", "D"}, {"E"}), seeded_numbers (1));
    const std::vector<std::string> fields = split_fields (line);
    EXPECT_NE (fields[14], fields[16]);
}

TEST (reaction_table, five_substrates_have_their_count_and_four_names) {
    const std::string line =
        table_line (reaction ("r1", {"A", "B", "C", "D", "X"}, {"P"}, {"E"}), counting ());
    EXPECT_EQ (line, "REACBEGIN;0;RANDOM_SEQ;5;A;0.1 mM;B;0.2 mM;C;0.3 mM;D;0.4 mM;1;P;54;;;;;;;0;"
                     "E;\n");
    // Read again the count runs over the product's fields: wrong names, which cost a match only.
    const std::vector<Reaction> read = read_reaction_table (line);
    ASSERT_EQ (read.size (), 1U);
    EXPECT_THAT (read[0].substrates, ElementsAre ("A", "B", "C", "D", "1"));
}

TEST (reaction_table, ranges_of_the_coefficients) {
    const auto constant = [] (int value) { return [value] { return value; }; };
    const Reaction one = reaction ("r", {"A"}, {"B"}, {"E"});
    EXPECT_THAT (table_line (one, constant (499)), HasSubstr ("A;50 mM;"));
    EXPECT_THAT (table_line (one, constant (122)), HasSubstr ("A;12.3 mM;"));
    EXPECT_THAT (table_line (one, constant (349)), HasSubstr ("B;399;"));
    EXPECT_THAT (table_line (one, constant (350)), HasSubstr ("B;50;"));
}

TEST (reaction_table, model_without_enzymes_yields_two_legend_lines) {
    EXPECT_EQ (reaction_table_text ("x", {reaction ("r", {"A"}, {"B"}, {})}, counting ()),
               "LEGEND;Reseau Metabolique;x\n" + std::string (table_legend));
}

TEST (reaction_table, same_seed_same_table) {
    const std::vector<Reaction> reactions{reaction ("r", {"A", "B"}, {"C"}, {"E"})};
    EXPECT_EQ (reaction_table_text ("x", reactions, seeded_numbers (7)),
               reaction_table_text ("x", reactions, seeded_numbers (7)));
    EXPECT_NE (reaction_table_text ("x", reactions, seeded_numbers (7)),
               reaction_table_text ("x", reactions, seeded_numbers (8)));
}

TEST (reaction_table, reads_back_with_the_first_enzyme_only) {
    const std::vector<Reaction> read = read_reaction_table (reaction_table_text (
        "x", {reaction ("r", {"A", "B"}, {"C"}, {"E", "F"}, {"I"}, true)}, counting ()));
    ASSERT_EQ (read.size (), 1U);
    EXPECT_TRUE (read[0].reversible);
    EXPECT_EQ (read[0].kinetic_type, "RANDOM_SEQ");
    EXPECT_THAT (read[0].substrates, ElementsAre ("A", "B"));
    EXPECT_THAT (read[0].products, ElementsAre ("C"));
    EXPECT_THAT (read[0].inhibitors, ElementsAre ("I"));
    EXPECT_THAT (read[0].enzymes, ElementsAre ("E"));
    EXPECT_EQ (read[0].coefficients.at ("B"), "0.2 mM");
    EXPECT_EQ (read[0].coefficients.at ("C"), "52");
}

TEST (reaction_table, malformed_lines_do_no_harm) {
    EXPECT_THAT (read_reaction_table (""), IsEmpty ());
    EXPECT_THAT (read_reaction_table ("REACBEGIN"), IsEmpty ());
    EXPECT_THAT (read_reaction_table ("REACBEGIN;1;T;2000000000;A"), IsEmpty ());
    EXPECT_THAT (read_reaction_table ("REACBEGIN;1;T;0;;;;;;;;;0;;;;;;;;;99999999999;I;E;"),
                 IsEmpty ());
    const auto odd = read_reaction_table ("x REACBEGIN;-1;T;-5;;;;;;;;;-5;;;;;;;;;-1;E;\n");
    ASSERT_EQ (odd.size (), 1U);
    EXPECT_THAT (odd[0].enzymes, ElementsAre ("-1"));
    EXPECT_THAT (odd[0].substrates, IsEmpty ());
}

TEST (reaction_table, file_that_cannot_be_opened_is_told) {
    const testing::TemporaryFolder folder;
    ::testing::internal::CaptureStdout ();
    EXPECT_THAT (CSVCineticReader (TextFile (folder / "none")), IsEmpty ());
    EXPECT_EQ (::testing::internal::GetCapturedStdout (),
               "CSVCineticReader: Impossible d'ouvrir le fichier en lecture.\n");
}

/// The lines of the gate file for one network, without its first line.
std::vector<std::string> gate_lines (const std::vector<Reaction>& reactions,
                                     const std::vector<Reaction>& table, int job = 6) {
    GateExtractor extractor;
    extractor.request.input_path = "in.xml";
    extractor.model.reactions = reactions;
    add_stand_in_enzymes (extractor.model.reactions);
    extractor.graph = graph_of (reactions);
    GateJob& one = extractor.jobs.emplace_back ();
    one.catalogue = load_catalogue (builtin_catalogue_text (), 8, job);
    one.result =
        search_gates (extractor.graph, {&one.catalogue}, {.limit = 3, .rules = {}}).jobs[0];
    std::vector<std::string> lines = split_fields (gate_csv_text (extractor, table), '\n');
    EXPECT_EQ (lines[0], "metabolism;in.xml");
    lines.erase (lines.begin ());
    return lines;
}

TEST (gate_csv, gate_without_kinetics) {
    EXPECT_THAT (gate_lines ({reaction ("R1", {"A"}, {"B"}, {"E"}, {}, true)}, {}),
                 ElementsAre ("E/S;1;A;1;B;YES;ENZ;1;E;ELNEC;0;ELABS;0;REACTIONS;1;"
                              "REACBEGIN;R1;1;;SUBS;1;A;;PROD;1;B;;ENZY;1;E;INHI;0;REACEND;",
                              "E/S;1;B;1;A;YES;ENZ;1;E;ELNEC;0;ELABS;0;REACTIONS;1;"
                              "REACBEGIN;R1;1;;SUBS;1;A;;PROD;1;B;;ENZY;1;E;INHI;0;REACEND;"));
}

TEST (gate_csv, two_input_gate_with_kinetics) {
    const std::vector<Reaction> reactions{reaction ("R1", {"B", "A"}, {"C"}, {"E"})};
    const auto table = read_reaction_table (reaction_table_text ("x", reactions, counting ()));
    EXPECT_THAT (gate_lines (reactions, table, 2),
                 ElementsAre ("E/S;2;A;B;1;C;AND;ENZ;1;E;ELNEC;0;ELABS;0;REACTIONS;1;REACBEGIN;R1;"
                              "0;RANDOM_SEQ;SUBS;2;B;0.1 mM;A;0.2 mM;PROD;1;C;52;ENZY;1;E;INHI;0;"
                              "REACEND;"));
}

TEST (gate_csv, later_match_overwrites_and_several_enzymes_never_match) {
    std::vector<Reaction> table{reaction ("", {"A"}, {"B"}, {"E"}),
                                reaction ("", {"A"}, {"B"}, {"E"})};
    table[0].kinetic_type = "FIRST";
    table[1].kinetic_type = "SECOND";
    EXPECT_THAT (gate_lines ({reaction ("R1", {"A"}, {"B"}, {"E"})}, table)[0],
                 HasSubstr ("REACBEGIN;R1;0;SECOND;"));
    EXPECT_THAT (gate_lines ({reaction ("R1", {"A"}, {"B"}, {"E", "F"})}, table)[0],
                 HasSubstr ("REACBEGIN;R1;0;;"));
}

TEST (gate_csv, all_reactions_of_an_enzyme_stand_in_model_order) {
    const auto lines = gate_lines (
        {reaction ("R2", {"A"}, {"B"}, {"E"}), reaction ("R1", {"B"}, {"C"}, {"E"})}, {});
    EXPECT_THAT (lines, ElementsAre (HasSubstr ("REACTIONS;2;REACBEGIN;R2;0;;SUBS;1;A;;PROD;1;B;;"
                                                "ENZY;1;E;INHI;0;REACEND;REACBEGIN;R1;")));
}

TEST (gate_csv, job_without_a_gate_adds_no_line) {
    EXPECT_THAT (gate_lines ({reaction ("R1", {"A"}, {"B"}, {"E"})}, {}, 1), IsEmpty ());
}

TEST (reports, shares_without_gates_and_unused_metabolites_have_their_lines) {
    const testing::TemporaryFolder folder;
    GateExtractor extractor;
    extractor.request.input_path =
        folder.write ("m.xml", model_text ({reaction ("r1", {"A"}, {"B"}, {"E"}, {}, true),
                                            reaction ("r2", {"Q", "Q"}, {"Q"}, {"F"})}));
    extractor.request.output_base = (folder / "m").string ();
    extractor.request.partition_count = 14;
    extractor.request.kinetics_path = folder.write ("k.csv", "");
    extractor.request.verbose = true;
    ASSERT_TRUE (extractor.run ().done ());
    const std::string table = testing::file_text (folder / "m.csv");
    EXPECT_TRUE (table.starts_with ("Fichier d'entree;" + extractor.request.input_path +
                                    "\nFichier de sortie;" + extractor.request.output_base +
                                    ".txt\n\nTemps;\nTemps total(s)  ;"));
    EXPECT_THAT (table, HasSubstr ("Parametres du graphe;\nNb Enzymes \t: ;3\n"
                                   "Nb Elements \t\t: ;6\n"));
    EXPECT_THAT (table, HasSubstr ("Nb Limite\t \t\t\t: ;3\nNb Circuits \t\t\t: ;3\n"));
    EXPECT_THAT (table, HasSubstr ("Nb Portes \t\t\t\t: ;2\nDont Nb Portes fourche  : ;0\n"));
    EXPECT_THAT (table, HasSubstr ("Repartition des portes;\n: ;0\nAND : ;0\n"));
    EXPECT_THAT (table, HasSubstr ("Nombre d'enzymes par type de portes \nNb Enzymes;AND;OR;"));
    EXPECT_THAT (table, HasSubstr ("\n1;0;0;0;0;0;0;0;0;0;0;0;0;2;\n"));
    EXPECT_THAT (table,
                 HasSubstr ("\nE;0;0;0;0;0;0;0;0;0;0;0;0;2;\nF;0;0;0;0;0;0;0;0;0;0;0;0;0;\n"));
    EXPECT_THAT (table, HasSubstr ("YES Total;YES Entree;YES Sortie;\nA;"));
    EXPECT_TRUE (table.ends_with ("\nA;" + std::string ("0;0;0;0;0;0;0;0;0;0;0;0;0;0;0;0;0;0;0;0;0;"
                                                        "0;0;0;0;0;0;0;0;0;0;0;0;0;0;0;2;1;1;\nB;"
                                                        "0;0;0;0;0;0;0;0;0;0;0;0;0;0;0;0;0;0;0;0;0;"
                                                        "0;0;0;0;0;0;0;0;0;0;0;0;0;0;0;2;1;1;\nQ;"
                                                        "0;0;0;0;0;0;0;0;0;0;0;0;0;0;0;0;0;0;0;0;0;"
                                                        "0;0;0;0;0;0;0;0;0;0;0;0;0;0;0;0;0;0;\n")));
    const std::string text = testing::file_text (folder / "m.txt");
    EXPECT_THAT (text, HasSubstr ("\n\n" + std::string (46, '-') + "\n\nFichier d'entree  : "));
    EXPECT_THAT (text, HasSubstr ("Fichier de Porte  : builtin\nFichier de sortie : "));
    EXPECT_THAT (text,
                 HasSubstr ("\n\nListe portes : \nE/S : A=B\nType YES\nEnzymes presents : E \n"
                            "Elements necessaires : \nElements absents : \n;\n"));
    EXPECT_THAT (text, HasSubstr ("#Portes  : 0\n#Portes  AND : 0\n"));
    EXPECT_THAT (text, HasSubstr ("Nb Enzymes \t: 3\n"));
}

TEST (reports, fractions_of_a_zero_total_are_shown_as_they_divide) {
    const std::string block = times_block ({}, 0, ";");
    EXPECT_THAT (block, HasSubstr ("nan\n"));
    EXPECT_THAT (times_block ({1, 0, 0}, 0, ";"), HasSubstr ("Temps fraction   ;inf\n"));
}

TEST (reports, console_summary_of_a_share) {
    GateExtractor extractor;
    GateJob job;
    job.catalogue = load_catalogue (builtin_catalogue_text (), 8, 2);
    EXPECT_EQ (console_summary (extractor, job),
               "Portes : [AND , ORNOT]\nNb Circuits\t\t: 0\nNb Portes Evaluées\t: 0\n"
               "Nb Evaluations\t\t: 0\nNb Portes\t\t: 0\nTemps reel (s)\t\t: 0\nFin\n");
    job.catalogue = load_catalogue (builtin_catalogue_text (), 8, 5);
    EXPECT_THAT (console_summary (extractor, job), HasSubstr ("Portes : [NAND][NOT]\n"));
    job.catalogue = load_catalogue ("GATE;;2;1;\nGATE;Z;2;1;\n", 1, 1); // one has no name
    EXPECT_THAT (console_summary (extractor, job), HasSubstr ("Portes : [ , Z]\n"));
}

TEST (reports, trace_of_a_job) {
    const testing::TemporaryFolder folder;
    GateExtractor extractor;
    extractor.request.input_path =
        folder.write ("m.xml", model_text ({reaction ("r1", {"X"}, {"Y"}, {"E"}, {"A"}, true),
                                            reaction ("r2", {"Y"}, {"LongMetabolite"}, {})}));
    extractor.request.output_base = (folder / "m").string ();
    extractor.request.partition_count = 1;
    extractor.request.kinetics_path = folder.write ("k.csv", "");
    extractor.request.trace = true;
    ASSERT_TRUE (extractor.run ().done ());
    const std::string text = testing::file_text (folder / "m_N1_N1.txt");
    EXPECT_TRUE (text.starts_with ("\n\n\n" + std::string (46, '-') +
                                   "\n\nFichier d'entrée  : " + extractor.request.input_path +
                                   "\nFichier de Porte  : builtin\nFichier de sortie : " +
                                   extractor.request.output_base + "_N1_N1.txt\n"));
    for (const char* part :
         {"Parsage fichier : ",
          "Liste éléments répertoriés (Code/Nom) \n",
          "s1 E\n",
          "Nb ligne du fichier : ",
          "\n\nMatrice des réactions : \nA       LongMetaX       Y       \n",
          "0       0       -1      1       E \n",
          "0       1       0       -1         Pas d'enzyme precise \n",
          "\nElements inseres (Nom/Code Interne) : \nE = 0\nE_R = 1\nr2 = 2\nA = 3\n",
          "\nRéactions inserees : \nNom : r1 Reversibilité : 1\nInteraction Standard 0: ",
          "Interaction Inbibitrice 0 : ",
          "Inhibiteurs : A\nEnzymes : E\nEnzymes Rev : E_R\n",
          "\n\nMatrice des interactions : \nid         0       1       ",
          "\nCreation Primaire Circuit : \nEquations internes utilisées : \nEntree ",
          "profondeur récursive : 1\ncompteur de circuit 1\nEq disp 2, \n",
          "Creation Secondaire Circuit : \n",
          "Pred : ",
          "Portes internes détéctées : \n",
          "\nEquation primaires utilisées : 1/3\n\n\n\n",
          "\n\nListe portes : \nE/S : ",
          "\nE/S : 3=6\nType NOT\n",
          "Nb Equations Ini \t: 3\n",
          "Nb Evaluations\t\t\t: ",
          "Temps total(s)  : "}) {
        EXPECT_THAT (text, HasSubstr (part));
    }
}

TEST (front_end, base_is_the_path_without_its_extension) {
    EXPECT_EQ (base_of_model ("a/model.xml"), "a/model");
    EXPECT_EQ (base_of_model ("dir.d/model"), "dir.d/model");
    EXPECT_EQ (base_of_model ("model"), "model");
    EXPECT_EQ (base_of_model ("a.b.xml"), "a.b");
    EXPECT_EQ (base_of_model (".xml"), "");
}

TEST (front_end, metabolites_and_what_they_can_be) {
    const testing::TemporaryFolder folder;
    const GateFrontEnd front_end (
        folder.write ("m.xml", model_text ({reaction ("r1", {"b", "A"}, {"C"}, {"E"}, {"I"}),
                                            reaction ("r2", {"C"}, {"D"}, {"F"}, {}, true),
                                            reaction ("r3", {"Free"}, {"Loose"}, {})})));
    std::string told;
    for (const Metabolite& one : front_end.metabolites) {
        told += one.name + (one.can_be_input ? "1" : "0") + (one.can_be_output ? "1 " : "0 ");
    }
    EXPECT_EQ (told, "A10 C11 D11 b10 ");
}

TEST (front_end, file_that_cannot_be_opened_is_not_parsed_and_one_without_reactions_is) {
    const testing::TemporaryFolder folder;
    EXPECT_FALSE (GateFrontEnd ((folder / "none.xml").string ()).parsed);
    EXPECT_TRUE (GateFrontEnd (folder.write ("empty.xml", "")).parsed);
}

TEST (front_end, up_to_date_compares_times_only) {
    namespace fs = std::filesystem;
    const testing::TemporaryFolder folder;
    GateFrontEnd front_end (folder.write ("m.xml", ""));
    EXPECT_FALSE (front_end.up_to_date ());
    const std::string gates = folder.write ("m_gates.csv", "");
    const fs::file_time_type now = fs::last_write_time (front_end.model_path);
    fs::last_write_time (gates, now - std::chrono::seconds (1));
    EXPECT_FALSE (front_end.up_to_date ());
    EXPECT_FALSE (front_end.extracted);
    fs::last_write_time (gates, now); // the same time counts as up to date
    EXPECT_TRUE (front_end.up_to_date ());
    EXPECT_TRUE (front_end.extracted);
    fs::last_write_time (gates, now + std::chrono::seconds (1));
    EXPECT_TRUE (front_end.up_to_date ());
    fs::remove (front_end.model_path); // only an existing model can be later
    EXPECT_TRUE (front_end.up_to_date ());
}

TEST (front_end, extractions_in_one_directory_use_the_table_one_after_another) {
    const testing::TemporaryFolder folder;
    const std::filesystem::path before = std::filesystem::current_path ();
    std::filesystem::current_path (folder.path ());
    for (const char* name : {"a.xml", "b.xml"}) {
        GateFrontEnd front_end (
            folder.write (name, model_text ({reaction ("r1", {"A"}, {"B"}, {"E"})})));
        const Outcome outcome = FrontEndExtraction (front_end, 3).run ();
        EXPECT_TRUE (outcome.done ()) << outcome.reason;
        EXPECT_TRUE (front_end.extracted);
    }
    std::filesystem::current_path (before);
    EXPECT_THAT (folder.names (), ElementsAre ("a.xml", "a_gates.csv", "b.xml", "b_gates.csv"));
    EXPECT_THAT (testing::file_text (folder / "a_gates.csv"), HasSubstr (";RANDOM_SEQ;SUBS;1;A;"));
}

TEST (examples, yield_the_gates_that_the_guide_tells) {
    const std::string guide = testing::source_file ("docs/gates.md");
    const std::vector<std::pair<const char*, int>> known{
        {"glycolysis-upper", 210}, {"pentose-salvage", 254}, {"tca-shuttles", 1816}};
    for (const auto& [name, gates] : known) {
        const testing::TemporaryFolder folder;
        const std::string file = "examples/" + std::string (name) + ".xml";
        GateExtractor extractor;
        extractor.request.input_path = testing::source_path (file).string ();
        extractor.request.output_base = (folder / "m").string ();
        extractor.request.kinetics_path = folder.write ("k.csv", "");
        ASSERT_TRUE (extractor.run ().done ());
        EXPECT_EQ (extractor.gate_count (), gates);
        const std::size_t line = guide.find ("| `" + file + "`");
        ASSERT_NE (line, std::string::npos);
        EXPECT_THAT (guide.substr (line, guide.find ('\n', line) - line),
                     HasSubstr ("| " + std::to_string (extractor.graph.enzyme_count ()) + " | " +
                                std::to_string (gates) + " |"));
    }
}

TEST (sbml_writer, sub_model_of_some_reactions) {
    std::string text = model_text (
        {reaction ("r1", {"A"}, {"B"}, {"E"}), reaction ("r2", {"B"}, {"C"}, {"F"}, {"A"})});
    text = "<celldesigner:modelDisplay sizeX=\"600\" sizeY=\"400\"/>\n"
           "<celldesigner:protein id=\"p1\" name=\"P\">\n</celldesigner:protein>\n"
           "<celldesigner:speciesAlias id=\"a1\" species=\"s1\">\n<x/>\n"
           "</celldesigner:speciesAlias>\n<compartment id=\"default\"/>\n" +
           text;
    const SbmlModel model = read_sbml_lines (text);
    const std::string written = sub_model_text (model, "part", Names{"r2", "none"});
    EXPECT_TRUE (written.starts_with (
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<sbml xmlns=\"http://www.sbml.org/sbml/level2/"
        "version4\" xmlns:celldesigner=\"http://www.sbml.org/2001/ns/celldesigner\" level=\"2\" "
        "version=\"4\">\n<model metaid=\"part\" id=\"part\" name=\"part\">\n<annotation>\n"));
    EXPECT_THAT (written, HasSubstr ("<celldesigner:modelDisplay sizeX=\"600\" sizeY=\"400\"/>\n"));
    EXPECT_THAT (written,
                 HasSubstr ("<celldesigner:listOfProteins>\n<celldesigner:protein id=\"p1\""
                            " name=\"P\">\n</celldesigner:protein>\n"
                            "</celldesigner:listOfProteins>\n"));
    EXPECT_THAT (written,
                 HasSubstr ("\t<unitDefinition metaid=\"area\" id=\"area\" name=\"area\">\n"
                            "<listOfUnits>\n\t<unit metaid=\"CDMT00012\" kind=\"metre\" "
                            "exponent=\"2\"/>\n</listOfUnits>\n</unitDefinition>\n"));
    EXPECT_THAT (written, HasSubstr ("<listOfCompartments>\n<compartment id=\"default\"/>\n"
                                     "</listOfCompartments>\n"));
    const SbmlModel again = read_sbml_lines (written);
    ASSERT_EQ (again.reactions.size (), 1U);
    EXPECT_EQ (again.reactions[0].id, "r2");
    EXPECT_THAT (again.reactions[0].enzymes, ElementsAre ("F"));
    EXPECT_THAT (again.reactions[0].inhibitors, ElementsAre ("A"));
    EXPECT_EQ (again.species, model.species);
}

TEST (sbml_writer, file_that_cannot_be_written_is_told) {
    const testing::TemporaryFolder folder;
    ::testing::internal::CaptureStdout ();
    EXPECT_FALSE (sbmlWriter ({}, (folder / "no/where.xml").string (), {}));
    EXPECT_EQ (::testing::internal::GetCapturedStdout (),
               "sbmlWriter: Impossible d'ouvrir le fichier.\n");
    EXPECT_TRUE (sbmlWriter ({}, (folder / "here.xml").string (), {}));
    EXPECT_THAT (testing::file_text (folder / "here.xml"), HasSubstr ("<model metaid=\"here\""));
}

} // namespace
} // namespace ostrand::gates
