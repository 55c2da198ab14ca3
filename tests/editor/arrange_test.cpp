// Arranging in the editor: one step of the history, what moves and what stays, the flight to the new
// places, and the SBML that is opened and exported.
#include "bench.h"

#include "document/markup.h"
#include "editor/document_files.h"
#include "tidy/measures.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <map>

namespace ostrand::editor {
namespace {

using test::Bench;
using ::testing::HasSubstr;
using ::testing::Not;
using Places = std::map<const document::Node*, document::Point>;

Places places (const document::Network& network) {
    Places all;
    for (const auto& n : network.nodes ()) all[n.get ()] = {n->x (), n->y ()};
    return all;
}

/// Ten reactions of a chain, all with ATP and ADP, drawn one on the other.
void open_heap (Bench& b) {
    document::Network made;
    made.set_origin (8, 8);
    const auto add = [&made] (const std::string& name, float x) -> document::Node& {
        return made.add_node (
            std::make_unique<document::Node> (x, 100.F, document::node::molecule, 3U, name));
    };
    document::Node& atp = add ("ATP", 50);
    document::Node& adp = add ("ADP", 60);
    document::Node* last = &add ("m1", 100);
    for (int i = 2; i <= 11; ++i) {
        document::Node& next = add ("m" + std::to_string (i), 100 + 3 * static_cast<float> (i));
        document::Arque& reaction = *last->connect (next, document::arc::reaction);
        atp.connect (reaction, document::arc::substrate);
        adp.connect (reaction, document::arc::product);
        last = &next;
    }
    document::PrintState state;
    made.fprint (state, 0);
    b.open_text (state.out);
}

TEST (arrange, a_heap_becomes_a_drawing_in_one_step_and_one_undo_brings_it_back) {
    Bench b;
    open_heap (b);
    const std::string before = b.text ();
    const int arcs = b.network ().count_arcs ();
    b.run (Command::arrange);
    EXPECT_EQ (b.record_count (), 2U);
    const testing::NetworkMeasures m = testing::measure (b.network ());
    EXPECT_EQ (m.overlaps + m.covered + m.off_page, 0);
    EXPECT_EQ (b.network ().count_arcs (), arcs);
    EXPECT_GT (b.network ().nb_nodes (), 13); // ATP and ADP have clones now
    const std::string after = b.text ();
    b.canvas ().undo ();
    EXPECT_EQ (b.text (), before);
    b.canvas ().redo ();
    EXPECT_EQ (b.text (), after);
    EXPECT_EQ (b.undo_and_redo (), "");
}

TEST (arrange, an_arranged_network_stays_as_it_is_and_nothing_is_written) {
    for (const bool heap : {true, false}) {
        Bench b;
        heap ? open_heap (b) : b.open_rich ();
        b.run (Command::arrange);
        const std::string once = b.text ();
        const std::size_t records = b.record_count ();
        b.run (Command::arrange);
        EXPECT_EQ (b.text (), once);
        EXPECT_EQ (b.record_count (), records);
    }
}

TEST (arrange, an_arc_that_goes_to_a_copy_is_no_longer_marked) {
    Bench b;
    open_heap (b);
    b.run (Command::select_all);
    for (const auto& a : b.node ("ATP").arcs ()) b.canvas ().selection.add (*a);
    b.run (Command::arrange);
    for (const auto& n : b.network ().nodes ())
        for (const auto& a : n->arcs ())
            EXPECT_EQ (a->selected, b.canvas ().selection.contains (*a));
}

TEST (arrange, of_a_selection_moves_the_selected_only) {
    Bench b;
    open_heap (b);
    b.canvas ().selection.set ({&b.node ("m1"), &b.node ("m2"), &b.node ("m3")});
    const Places before = places (b.network ());
    b.run (Command::arrange);
    EXPECT_EQ (b.network ().nb_nodes (), 13);
    int moved = 0;
    for (const auto& [node, at] : places (b.network ())) {
        if (at == before.at (node)) continue;
        ++moved;
        EXPECT_TRUE (node->selected) << node->name ();
    }
    EXPECT_GE (moved, 2);
    EXPECT_EQ (b.selected ().size (), 3U);
    EXPECT_EQ (b.undo_and_redo (), "");
}

TEST (arrange, of_a_selection_keeps_everybody_in_the_own_compartment) {
    Bench b;
    b.open_rich ();
    std::map<const document::Node*, const document::Compart*> home;
    for (const auto& n : b.network ().nodes ()) home[n.get ()] = n->compart ();
    b.canvas ().selection.set (
        {&b.node ("glc"), &b.node ("HK"), &b.node ("ADP"), &b.node ("G"), &b.node ("f6p")});
    b.run (Command::arrange);
    for (const auto& n : b.network ().nodes ())
        EXPECT_EQ (n->compart (), home[n.get ()]) << n->name ();
    EXPECT_EQ (testing::measure (b.network ()).overlaps, 0);
}

TEST (arrange, of_a_selected_reaction_moves_its_nodes) {
    Bench b;
    open_heap (b);
    b.canvas ().selection.set ({&b.arc ("m4")});
    const Places before = places (b.network ());
    b.run (Command::arrange);
    for (const auto& [node, at] : places (b.network ())) {
        const bool is_end = node->name () == "m4" || node->name () == "m5";
        EXPECT_EQ (at != before.at (node), is_end) << node->name ();
    }
    EXPECT_EQ (b.record_count (), 2U);
}

TEST (arrange, of_the_whole_keeps_species_in_round_compartments) {
    Bench b;
    b.open_text ("[N4 1 2 8 8\n[C5 12 0 0 400 300{Cell}]\n[S1 1 150 150 0 3 13{a}-]\n"
                 "[S2 1 250 150 0 3 13{b}-]\n[S3 1 200 200 0 3 13{c}-]\n[S4 0 700 700 0 3 13{d}-]\n"
                 "[A6 0 272 1 1 2--]\n[A7 0 272 2 1 3--]\n[A8 0 272 3 1 4--]\n]");
    b.run (Command::arrange);
    for (const char* name : {"a", "b", "c"}) {
        ASSERT_NE (b.node (name).compart (), nullptr) << name;
        EXPECT_EQ (b.node (name).compart ()->name (), "Cell");
    }
    EXPECT_EQ (b.node ("d").compart (), nullptr);
}

TEST (arrange, of_an_empty_document_does_nothing) {
    Bench b;
    b.run (Command::arrange);
    EXPECT_EQ (b.record_count (), 0U);
}

TEST (flight, shows_the_way_and_ends_at_exactly_the_new_places) {
    Bench b;
    open_heap (b);
    const document::Point from{b.node ("m1").x (), b.node ("m1").y ()};
    b.run (Command::arrange);
    ASSERT_NE (&b.canvas ().shown (), &b.network ());
    const document::Node* const flying = b.canvas ().shown ().nodes ()[2].get ();
    EXPECT_EQ (flying->x (), from.x);
    EXPECT_EQ (flying->y (), from.y);
    const std::string final_text = b.text ();
    b.world.pass (Flight::duration / 2);
    ASSERT_NE (&b.canvas ().shown (), &b.network ());
    EXPECT_NE (flying->y (), from.y);
    EXPECT_NE (flying->y (), b.node ("m1").y ());
    EXPECT_EQ (b.text (), final_text); // the document is there already
    b.world.pass (Flight::duration);
    EXPECT_EQ (&b.canvas ().shown (), &b.network ());
    EXPECT_EQ (b.text (), final_text);
}

TEST (flight, is_ended_at_once_by_Escape_a_press_undo_and_any_command) {
    const std::vector<std::function<void (Bench&)>> ways{
        [] (Bench& b) { b.key (document::keys::escape); },
        [] (Bench& b) { b.click (b.beside ()); },
        [] (Bench& b) { b.canvas ().undo (); },
        [] (Bench& b) { b.run (Command::zoom_in); },
        [] (Bench& b) { b.run (Command::new_protein); },
    };
    for (std::size_t i = 0; i < ways.size (); ++i) {
        Bench b;
        open_heap (b);
        b.run (Command::arrange);
        ASSERT_NE (&b.canvas ().shown (), &b.network ()) << i;
        const std::string text = b.text ();
        ways[i](b);
        EXPECT_EQ (&b.canvas ().shown (), &b.network ()) << i;
        EXPECT_EQ (b.text () == text, i < 2 || i == 3) << i;
        b.world.pass (1); // its clock is gone
    }
}

TEST (flight, follows_the_scrolled_document) {
    Bench b;
    open_heap (b);
    b.run (Command::arrange);
    b.network ().set_origin (-70, -30);
    EXPECT_EQ (b.canvas ().shown ().x (), -70);
    EXPECT_EQ (b.canvas ().shown ().y (), -30);
}

TEST (flight, is_switched_off_by_a_setting_that_is_kept) {
    Bench b;
    EXPECT_TRUE (b.bench->entry (Command::animate).checked);
    b.run (Command::animate);
    open_heap (b);
    b.run (Command::arrange);
    EXPECT_EQ (&b.canvas ().shown (), &b.network ());
    EXPECT_FALSE (b.bench->present_preferences ().animate);
    Preferences off;
    off.animate = false;
    Bench later (off);
    EXPECT_FALSE (later.bench->entry (Command::animate).checked);
}

const char* const foreign =
    "<?xml version=\"1.0\"?>\n<sbml xmlns=\"http://www.sbml.org/sbml/level2/version4\" level=\"2\" "
    "version=\"4\"><model id=\"m\"><listOfCompartments><compartment id=\"c\"/>"
    "</listOfCompartments><listOfSpecies><species id=\"A\" compartment=\"c\"/><species id=\"B\" "
    "compartment=\"c\"/></listOfSpecies><listOfReactions><reaction id=\"r\"><listOfReactants>"
    "<speciesReference species=\"A\"/></listOfReactants><listOfProducts><speciesReference "
    "species=\"B\" stoichiometry=\"2\"/></listOfProducts></reaction></listOfReactions></model>"
    "</sbml>\n";

TEST (arrange, of_opened_SBML_is_switched_off_by_a_setting_that_is_kept) {
    std::string texts[2];
    for (const bool on : {true, false}) {
        Preferences preferences;
        preferences.arrange_opened = on;
        Bench b (preferences);
        EXPECT_EQ (b.bench->entry (Command::arrange_opened).checked, on);
        EXPECT_EQ (b.bench->present_preferences ().arrange_opened, on);
        ASSERT_TRUE (open_file (b.canvas (), b.folder.write ("foreign.xml", foreign)));
        texts[on ? 0 : 1] = b.text ();
        EXPECT_EQ (&b.canvas ().shown (), &b.network ()); // nothing flies
    }
    EXPECT_NE (texts[0], texts[1]);
}

TEST (standard_export, writes_SBML_that_reads_back_as_the_same_document) {
    Bench b;
    b.open_rich ();
    const std::string text = b.text ();
    const std::string path = (b.folder / "out.xml").string ();
    b.world.file_answers = {{path}};
    b.run (Command::export_standard_sbml);
    EXPECT_EQ (b.world.status, "Written: " + path);
    EXPECT_THAT (testing::file_text (path), HasSubstr ("level=\"3\" version=\"2\""));
    EXPECT_EQ (b.text (), text);
    EXPECT_EQ (b.record_count (), 1U);
    EXPECT_FALSE (b.canvas ().modified ());
    EXPECT_THAT (*b.canvas ().file_name (), Not (HasSubstr ("out.xml")));
    Bench other;
    ASSERT_TRUE (open_file (other.canvas (), path));
    EXPECT_EQ (other.text (), text);
}

TEST (standard_export, tells_when_the_file_cannot_be_written) {
    Bench b;
    b.open_rich ();
    const std::string path = (b.folder / "no" / "folder" / "out.xml").string ();
    b.world.file_answers = {{path}};
    b.run (Command::export_standard_sbml);
    EXPECT_THAT (b.world.status, HasSubstr ("Cannot write '" + path + "': "));
}

} // namespace
} // namespace ostrand::editor
