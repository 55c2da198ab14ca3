// Model text and SBML there and back; what a model text leaves out; merging files.
#include "base/text.h"
#include "document/line.h"
#include "files/document_io.h"
#include "files/import.h"
#include "files/import_steps.h"
#include "files/model_gaps.h"
#include "files/model_write.h"
#include "files/native.h"
#include "support/random_document.h"
#include "support/support.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <set>
#include <sstream>

namespace ostrand::files {
namespace {

using document::Network;
using document::Node;
using ostrand::testing::CaughtMessages;
using ostrand::testing::TemporaryFolder;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

Document opened (const std::string& text, const std::string& path) {
    Document document;
    CaughtMessages messages;
    EXPECT_EQ (open_text (text, path, {}, document), LoadStatus::loaded) << text;
    EXPECT_THAT (messages.all, IsEmpty ());
    return document;
}

/// What a model text says, whatever the order: reactions, concentrations, displayed species.
struct Meaning {
    std::multiset<std::string> statements;
    std::optional<int> duration;

    bool operator== (const Meaning&) const = default;
};

std::ostream& operator<< (std::ostream& out, const Meaning& m) {
    for (const std::string& s : m.statements) {
        out << s << "\n";
    }
    return out << "duration " << m.duration.value_or (-1);
}

Meaning meaning (const std::string& model) {
    Meaning m;
    ImportTables& t = import_tables ();
    import_reset ();
    t.duration.reset ();
    EXPECT_TRUE (read_statements (model, t)) << model;
    m.duration = t.duration;
    const auto numbers = [] (const std::vector<float>& list) {
        std::string text;
        for (const float v : list) {
            text += " " + format_g (v);
        }
        return text;
    };
    for (const ImportReaction* r : t.reactions) {
        std::string s = r->enzyme->name + " :";
        // The main species come first, the others in any order.
        for (const auto* side : {&r->substrates, &r->products}) {
            std::vector<std::string> names;
            for (const ImportSpecies* species : *side) {
                names.push_back (species->name);
            }
            std::sort (names.begin () + 1, names.end ());
            for (const std::string& n : names) {
                s += " " + n;
            }
            s += " ->";
        }
        std::vector<float> km = r->km;
        std::sort (km.begin (), km.end ());
        m.statements.insert (s + numbers (km) + " - " + format_g (r->kcat));
    }
    for (const auto& species : t.names) {
        if (!species) {
            continue;
        }
        if (!species->conc.empty ()) {
            m.statements.insert ("[" + species->name + "]" + numbers (species->conc));
        }
        if (species->displayed) {
            m.statements.insert ("display " + species->name);
        }
    }
    import_reset ();
    return m;
}

std::string written (Document& document) {
    return write_model (*document.network, document.duration, document.network->multi_name ());
}

const char* const pathway = "duration = 25;\n"
                            "[a] = 1 mM -> 5 mM : 1 mM;\n[b] = 20 uM;\n[atp] = 2 mM, 3 mM, 7 mM;\n"
                            "display (b, c, \"d\\ e\");\n"
                            "hk : a + atp -> b + adp | 10 uM, 20 uM - 5 ;\n"
                            "pgi : b -> c | 300 uM - 50 ;\n"
                            "pfk : c + atp -> \"d\\ e\" + adp | 1 mM, 2 mM - 7.5 ;\n"
                            "ald : \"d\\ e\" -> f + g | 4 uM - 1 ;\n"
                            "tpi : g -> f | 5 uM - 2 ;\n";

TEST (ModelRoundTrip, a_model_comes_back_with_all_that_it_says) {
    Document document = opened (pathway, "p.ssa");
    EXPECT_EQ (document.duration, 25);
    EXPECT_EQ (meaning (written (document)), meaning (pathway));
}

TEST (ModelRoundTrip, random_models_come_back_with_all_that_they_say) {
    ostrand::testing::Dice dice (11);
    for (int round = 0; round < 60; ++round) {
        std::string model = "duration = " + std::to_string (1 + dice.below (50)) + ";\n";
        const int count = 1 + dice.below (15);
        for (int i = 0; i < count; ++i) {
            const auto name = [&dice] { return "s" + std::to_string (dice.below (12)); };
            const std::string main = name ();
            std::string side;
            std::string km = std::to_string (1 + dice.below (90)) + " uM";
            // A node that is substrate twice has one arc of a kind to a reaction.
            if (dice.one_in (3)) {
                side = " + x" + std::to_string (dice.below (5));
                km += ", " + std::to_string (1 + dice.below (9)) + " mM";
            }
            model += "e" + std::to_string (i) + " : " + main + side + " -> " + name () +
                     (dice.one_in (3) ? " + y" + std::to_string (dice.below (5)) : "") + " | " +
                     km + " - " + std::to_string (1 + dice.below (100)) + " ;\n";
            if (dice.one_in (3)) {
                model += "[" + main + "] = " + km.substr (0, km.find (',')) + ";\n";
            }
            if (dice.one_in (4)) {
                model += "display (" + main + ");\n";
            }
        }
        Document document = opened (model, "m.ssa");
        EXPECT_EQ (meaning (written (document)), meaning (model)) << model;
        // And once more, from the drawing's own file.
        const std::string native = write_native (*document.network);
        Document again = opened (native, "m.net");
        again.duration = document.duration;
        EXPECT_EQ (meaning (written (again)), meaning (model));
    }
}

TEST (ModelRoundTrip, a_drawn_network_keeps_what_a_model_says) {
    for (const int nodes : {20, 100, 400}) {
        auto network = ostrand::testing::metabolic_network (nodes);
        int i = 0;
        for (const auto& n : network->nodes ()) {
            if (++i % 3 == 0) {
                n->set_user_data (std::to_string (i) + " uM");
            }
            if (i % 5 == 0) {
                n->set_calyx_display (true);
            }
            for (const auto& a : n->arcs ()) {
                if (document::is_reaction (a->type ())) {
                    a->set_label ("10 uM");
                    a->set_residu ("5");
                }
                if (document::is_substrate_link (a->type ())) {
                    a->set_label ("20 uM");
                }
            }
        }
        Document document;
        document.network = std::move (network);
        document.network->update_shared_nodes ();
        const std::string model = written (document);
        Document back = opened (model, "m.ssa");
        // Inhibitors come back on the enzyme, where a model does not say them.
        Meaning before = meaning (model);
        EXPECT_EQ (meaning (written (back)), before);
        EXPECT_GT (before.statements.size (), static_cast<std::size_t> (nodes) / 4);
    }
}

TEST (SbmlRoundTrip, a_drawing_comes_back_from_its_annotation) {
    const TemporaryFolder folder;
    Document document = opened (pathway, "p.ssa");
    document.network->set_multi_name (""); // the block has no word for it
    const std::string before = write_native (*document.network);
    const std::string path = (folder / "deep.er.xml").string ();
    std::string error;
    ASSERT_TRUE (save_document (document, path, error)) << error;
    const std::string text = ostrand::testing::file_text (path);
    EXPECT_THAT (text, HasSubstr ("<model id=\"deep.er\">"));
    Document back;
    ASSERT_EQ (open_document (path, {}, back), LoadStatus::loaded);
    EXPECT_EQ (write_native (*back.network), before);
    EXPECT_EQ (back.duration, default_duration); // an annotation tells none
}

TEST (SbmlRoundTrip, without_the_annotation_it_is_laid_out_afresh) {
    const TemporaryFolder folder;
    Document document = opened ("e : a + c -> b | 1 mM, 2 mM - 3 ; f : b -> d ;", "p.ssa");
    document.network->nodes ()[0]->set_position (700, 300);
    const std::string path = (folder / "p.xml").string ();
    std::string error;
    ASSERT_TRUE (save_document (document, path, error));
    Document back;
    ASSERT_EQ (open_document (path, {.use_annotation = false}, back), LoadStatus::loaded);
    EXPECT_LT (back.network->nodes ()[0]->x (), 100);
    const Meaning m = meaning (written (back));
    EXPECT_EQ (m.statements,
               (std::multiset<std::string>{"e : a c -> b -> - 0", "f : b -> d -> - 0"}));
}

TEST (DocumentFormats, files_are_chosen_by_their_last_letters_in_any_case) {
    EXPECT_STREQ (reading_format ("a.xml").name, "SBML");
    EXPECT_STREQ (reading_format ("a.ssa").name, "model text");
    EXPECT_STREQ (reading_format (".xml").name, "native text"); // the name must be longer
    EXPECT_STREQ (reading_format ("a.XML").name, "SBML");
    EXPECT_STREQ (reading_format ("a.Sbml").name, "SBML");
    EXPECT_STREQ (reading_format ("a.xml.gz").name, "SBML");
    EXPECT_STREQ (reading_format ("a.SSA.GZ").name, "model text");
    EXPECT_STREQ (reading_format ("a.net", "\n<?xml version='1.0'?>").name, "SBML");
    EXPECT_STREQ (reading_format ("a.xml", "# Lattrix: 1.2\n").name, "native text");
    EXPECT_STREQ (writing_format ("a.b.xml").name, "SBML");
    EXPECT_STREQ (writing_format ("a.ssa").name, "model text");
    EXPECT_STREQ (writing_format ("a.sbml").name, "native text");
}

TEST (DocumentFormats, a_model_without_duration_keeps_the_present_one) {
    Document document;
    document.duration = 33;
    ASSERT_EQ (open_text ("e : a -> b ;", "m.ssa", {}, document), LoadStatus::loaded);
    EXPECT_EQ (document.duration, 33);
}

TEST (DocumentFormats, a_failed_import_leaves_the_document_as_it_was) {
    Document document = opened ("e : a -> b ;", "m.ssa");
    const Network* before = document.network.get ();
    CaughtMessages messages;
    EXPECT_EQ (open_text ("e : a -> ;", "m.ssa", {}, document), LoadStatus::not_readable);
    EXPECT_EQ (open_text ("<sbml/>", "m.xml", {}, document), LoadStatus::not_readable);
    EXPECT_EQ (document.network.get (), before);
    EXPECT_THAT (messages.all, ElementsAre ("'<ident>' expected, got: ';'",
                                            "SBML, line 1: no <model> was found."));
}

TEST (DocumentFormats, the_species_on_multiple_planes_is_taken_over) {
    const Document document =
        opened ("[\"Ca^{2+}\"] = 1 mM, 2 mM; e : \"Ca^{2+}\" -> b ;", "m.ssa");
    EXPECT_EQ (document.network->multi_name (), "Ca^{2+}");
}

TEST (Insertion, files_are_merged_to_the_right) {
    const TemporaryFolder folder;
    const std::string net =
        folder.write ("a.net", "# Lattrix: 1.2\n[N1 0 2 8 8[S1 0 9 9 0 3 13{q}-]]\n");
    const std::string sbml = ostrand::testing::source_path ("tests/files/data/level2_plain.xml");
    Document document;
    ASSERT_EQ (insert_document (net, {}, document), LoadStatus::loaded); // into nothing: opened
    EXPECT_EQ (document.network->nb_nodes (), 1);
    ASSERT_EQ (insert_document (sbml, {}, document), LoadStatus::loaded);
    EXPECT_GT (document.network->nb_nodes (), 5);
    const int count = document.network->nb_nodes ();
    Document drawn = opened ("e : a -> b ;", "m.ssa");
    std::string error;
    const std::string annotated = (folder / "b.xml").string ();
    ASSERT_TRUE (save_document (drawn, annotated, error));
    ASSERT_EQ (insert_document (annotated, {}, document), LoadStatus::loaded);
    EXPECT_EQ (document.network->nb_nodes (), count + 3);
    const float left = document.network->nodes ()[0]->x ();
    for (int i = count; i < count + 3; ++i) {
        EXPECT_GT (document.network->nodes ()[static_cast<std::size_t> (i)]->x (), left);
    }
}

TEST (Insertion, a_failure_leaves_the_document_as_it_was) {
    const TemporaryFolder folder;
    Document document = opened ("e : a -> b ;", "m.ssa");
    const std::string before = write_native (*document.network);
    CaughtMessages messages;
    EXPECT_EQ (insert_document ((folder / "none.net").string (), {}, document),
               LoadStatus::not_found);
    // A comment that is no header opens as a file of its own, but is not merged.
    EXPECT_EQ (insert_document (folder.write ("c.net", "# mine\n[N0 0 2]\n"), {}, document),
               LoadStatus::not_readable);
    EXPECT_EQ (insert_document (folder.write ("m.ssa", "e : a -> b ;"), {}, document),
               LoadStatus::not_readable);
    EXPECT_EQ (insert_document (folder.write ("m.xml", "<sbml/>"), {}, document),
               LoadStatus::not_readable);
    EXPECT_EQ (write_native (*document.network), before);
}

TEST (Insertion, first_lines_that_are_taken) {
    for (const char* good :
         {"# Lattrix: 1.2\n", "#Lattrix:.5", "# Lattrix:5", "[N1 2 3\n", "[U1: 2 3 4]\n"}) {
        EXPECT_TRUE (is_insertable_text (good)) << good;
    }
    for (const char* bad :
         {"", "# Lattrix: x", "# other", "[N1 2\n", "[U1 2 3 4]", "e : a -> b ;"}) {
        EXPECT_FALSE (is_insertable_text (bad)) << bad;
    }
}

TEST (ModelGaps, all_that_is_said_leaves_no_gap) {
    Document document = opened (pathway, "p.ssa");
    EXPECT_THAT (model_gaps (*document.network), IsEmpty ());
}

TEST (ModelGaps, what_is_left_out_is_named_item_by_item) {
    Network network;
    Node& a = network.add_node (std::make_unique<Node> (10.F, 20.F, 13U, 3U, "A"));
    Node& b = network.add_node (std::make_unique<Node> (210.F, 20.F, 13U, 3U, "B"));
    Node& e = network.add_node (std::make_unique<Node> (110.F, 90.F, 9U, 3U, "E"));
    Node& none = network.add_node (std::make_unique<Node> (5.F, 7.5F, 13U, 3U));
    Node& i = network.add_node (std::make_unique<Node> (150.F, 90.F, 13U, 3U, "I"));
    Node& holder = network.add_node (std::make_unique<Node> (300.F, 40.F, 9U, 3U));
    auto inner = std::make_unique<Network> ();
    inner->add_node (std::make_unique<Node> (1.F, 1.F, 13U, 3U, "x"));
    holder.take_label (std::move (inner));
    a.connect (b, document::arc::reaction);    // nothing catalyses it
    none.connect (b, document::arc::reaction); // its source has no label
    document::Arque* r = b.connect (a, document::arc::reaction);
    r->set_label ("K_m");
    r->set_residu ("fast");
    e.connect (*r, document::arc::catalysis);
    i.connect (*r, document::arc::inhibition)->set_label ("Ki");
    i.connect (e, document::arc::inhibition);
    i.connect (*r, document::arc::activation);
    e.connect (b, document::arc::catalysis);
    EXPECT_THAT (
        model_gaps (network),
        ElementsAre ("left out: reaction \"A\" -> \"B\", nothing catalyses it",
                     "no number: \"K_m\", label of reaction \"B\" -> \"A\"",
                     "no number: \"fast\", second label of reaction \"B\" -> \"A\"",
                     "left out: arc from \"E\" to \"B\", a model text has no word for it",
                     "left out: the node without label at (5, 7.5)",
                     "left out: reaction the node without label at (5, 7.5) -> \"B\", its source "
                     "has no label",
                     "no number: \"Ki\", label of the arc from \"I\" to reaction \"B\" -> \"A\"",
                     "left out: inhibition from \"I\" to \"E\", it ends on no reaction",
                     "left out: arc from \"I\" to the arc from \"B\", a model text has no word for "
                     "it",
                     "left out: the network inside the node at (300, 40), 1 nodes"));
}

TEST (ModelGaps, an_enzyme_without_name_is_told) {
    Document document = opened ("a -> b | 5 ;", "m.ssa");
    EXPECT_THAT (model_gaps (*document.network),
                 ElementsAre ("no name: the enzyme of reaction \"a\" -> \"b\", which the simulator "
                              "refuses"));
}

TEST (ModelGaps, concentrations_that_the_simulator_refuses_are_told) {
    const auto gaps_of = [] (const char* text) {
        Network network;
        network.add_node (std::make_unique<Node> (10.F, 20.F, 13U, 3U, "A")).set_user_data (text);
        return model_gaps (network);
    };
    for (const char* good : {"0 uM", "5 mM", "5uM", ".5 mM", "1 mM, 2 mM", "1 mM, 2 mM, 3 mM",
                             "5 mM -> 1 mM : 500 uM", "(b, c) 1 uM , 2 uM", "1e-3 mM"}) {
        EXPECT_THAT (gaps_of (good), IsEmpty ()) << good;
    }
    for (const char* bad : {"", "abc", "5", "5 M", "-5 mM", "1 mM -> 2 mM", "1 mM -> 2 mM : 0 uM",
                            "1 mM,", "1 mM 2", "(b", "3 mM -> 1 mM : -1000 uM", "8000 mM",
                            "0 mM -> 128 mM : 1 mM", "1 mM; [b] = 2 mM"}) {
        EXPECT_THAT (gaps_of (bad), ElementsAre ("no concentration that the simulator reads: \"" +
                                                 std::string (bad) + "\", of \"A\""));
    }
    // Written as series: downwards, and of equal values.
    EXPECT_THAT (
        gaps_of ("3 mM, 2 mM, 1 mM"),
        ElementsAre ("no concentration that the simulator reads: \"3 mM -> 1 mM : -1 mM\", "
                     "of \"A\""));
    EXPECT_THAT (gaps_of ("1 uM, 1 uM, 1 uM"),
                 ElementsAre ("no concentration that the simulator reads: \"1 uM -> 1 uM : 0 uM\", "
                              "of \"A\""));
}

/// One line for each species of a result with its counts, whatever the order of species.
std::multiset<std::string> counts_by_name (const std::string& result, std::size_t species) {
    std::istringstream in (result);
    std::string line;
    std::getline (in, line);
    std::vector<std::string> rows (species);
    for (std::string& name : rows) {
        std::getline (in, name);
        std::getline (in, line); // the colour
    }
    std::vector<std::string> values;
    while (std::getline (in, line)) {
        values.push_back (line);
    }
    const std::size_t each = values.size () / species;
    for (std::size_t i = 0; i < species; ++i) {
        for (std::size_t k = 0; k < each; ++k) {
            rows[i] += " " + values[i * each + k];
        }
    }
    return {rows.begin (), rows.end ()};
}

TEST (ModelRoundTrip, the_simulation_is_the_same_count_for_count) {
    const std::filesystem::path program = std::filesystem::path (OSTRAND_BUILD_DIR) / "ostrand";
    if (!std::filesystem::exists (program)) {
        GTEST_SKIP () << program << " is not built";
    }
    const TemporaryFolder folder;
    const std::string model = "duration = 20;\n[a] = 20 uM;\n[b] = 5 uM;\n[atp] = 50 uM;\n"
                              "[hk] = 1 uM;\n[pgi] = 2 uM;\n[pfk] = 1 uM;\n"
                              "display (a, b, c, d);\n"
                              "hk : a + atp -> b + adp | 10 uM, 20 uM - 5 ;\n"
                              "pgi : b -> c | 30 uM - 50 ;\n"
                              "pfk : c + atp -> d + adp | 10 uM, 20 uM - 7.5 ;\n";
    Document document = opened (model, "m.ssa");
    std::vector<std::multiset<std::string>> results;
    for (const std::string& text : {model, written (document)}) {
        const std::string path = folder.write ("m.ssa", text);
        const std::string out = (folder / "d.gz").string ();
        const auto run = ostrand::testing::run_program (
            {"ostrand", "-a", path, "-sequential", "-out", out}, folder.path ());
        ASSERT_EQ (run.status, 0) << run.error;
        results.push_back (counts_by_name (ostrand::testing::unzipped_file (out), 4));
    }
    EXPECT_GT (results[0].begin ()->size (), 50U);
    EXPECT_EQ (results[0], results[1]);
}

} // namespace
} // namespace ostrand::files
