// Every entry of the table of presses, and series of presses.
#include "rich_bench.h"

#include "editor/popup_menus.h"

#include <gtest/gtest.h>

namespace ostrand::editor {
namespace {

using document::Node;
using test::Bench;
using test::Rich;
namespace arc = document::arc;
using Strings = std::vector<std::string>;

// Button 1.

TEST (press, mouse_1_selects_a_node_an_arc_and_a_compartment) {
    Rich b;
    b.click (b.on (b.glc ()));
    EXPECT_EQ (b.world.pointer, PointerShape::arrow); // after the release, by what is under it
    b.click (b.on (b.reaction ()));
    const document::Compart& cell = *b.network ().comps ().front ();
    b.click (b.at (cell.x () + 2, cell.y () + 40));
    EXPECT_EQ (b.added (),
               (Strings{"selection " + b.id (b.glc ()), "selection " + b.id (b.reaction ()),
                        "selection " + b.id (cell)}));
    EXPECT_EQ (b.canvas ().mode, Mode::selection);
    EXPECT_FALSE (b.canvas ().modified ());
}

TEST (press, mouse_1_on_a_letter_edits_its_text_and_writes_no_record) {
    Rich b;
    b.click (b.on (b.glc ()));
    b.click (b.on_letter (b.node ("g6p"), 1));
    EXPECT_EQ (b.canvas ().mode, Mode::text);
    ASSERT_NE (b.canvas ().selection.edit_line (), nullptr);
    EXPECT_EQ (b.canvas ().selection.edit_line ()->cursor, 1);
    EXPECT_EQ (b.added ().size (), 1U);
    EXPECT_FALSE (b.glc ().selected);
    EXPECT_EQ (b.selected (), (std::vector<std::int32_t>{b.node ("g6p").id ()}));
}

TEST (press, the_style_on_show_is_that_of_the_letter) {
    Rich b;
    b.click (b.on_letter (b.glc (), 0));
    b.bench->set_font_size (9);
    b.bench->toggle_bold ();
    b.bench->set_text_colour (4);
    b.click (b.beside ());
    EXPECT_EQ (b.bench->style ().font_word, document::start_font);
    EXPECT_EQ (b.bench->style ().colour, 0U);
    b.click (b.on_letter (b.glc (), 0));
    EXPECT_EQ (document::size_index (b.bench->style ().font_word), 9U);
    EXPECT_TRUE (document::is_bold (b.bench->style ().font_word));
    EXPECT_EQ (b.bench->style ().colour, 4U);
}

TEST (press, mouse_1_beside_everything_lets_the_selection_go) {
    Rich b;
    b.click (b.beside ());
    EXPECT_EQ (b.added (), Strings ()); // nothing was selected
    b.click (b.on (b.glc ()));
    b.click (b.beside ());
    EXPECT_EQ (b.added (), (Strings{"selection " + b.id (b.glc ()), "selection"}));
    EXPECT_EQ (b.canvas ().mode, Mode::free);
}

TEST (press, mouse_1_on_a_selected_object_keeps_the_selection) {
    Rich b;
    b.click (b.on (b.glc ()));
    b.click (b.on (b.node ("G"), test::ctrl));
    b.click (b.on (b.glc ()));
    EXPECT_EQ (b.selected ().size (), 2U);
    EXPECT_EQ (b.added ().size (), 2U);
    b.click (b.on (b.node ("R")));
    EXPECT_EQ (b.selected (), (std::vector<std::int32_t>{b.node ("R").id ()}));
}

TEST (press, shift_mouse_1_on_an_arc_links_the_selected_node) {
    Rich b;
    b.click (b.on (b.node ("G")));
    const int arcs = b.network ().count_arcs ();
    b.click (b.on (b.arc ("g6p"), test::shift));
    EXPECT_EQ (b.network ().count_arcs (), arcs + 1);
    EXPECT_EQ (b.added ().back (), "snapshot");
    EXPECT_EQ (b.undo_and_redo (), "");
}

TEST (press, shift_mouse_1_on_an_arc_gives_it_stoichiometry_labels) {
    Rich b;
    b.click (b.on (b.reaction (), test::shift));
    EXPECT_NE (b.reaction ().stoech_src (), nullptr);
    EXPECT_NE (b.reaction ().stoech_dest (), nullptr);
    EXPECT_EQ (b.added (), Strings{"snapshot"});
    b.click (b.on (b.reaction (), test::shift)); // they are there
    b.click (b.on (b.arc ("HK"), test::shift));  // a catalysis has none
    EXPECT_EQ (b.added (), Strings{"snapshot"});
    EXPECT_EQ (b.undo_and_redo (), "");
}

TEST (press, shift_mouse_1_on_a_node_links_to_it_or_tells_why_not) {
    Rich b;
    b.click (b.on (b.node ("f6p")));
    b.click (b.on (b.glc (), test::shift));
    EXPECT_EQ (b.node ("f6p").arcs ().size (), 1U);
    EXPECT_EQ (b.added ().back (), "snapshot");
    b.click (b.on (b.node ("ADP")));
    const std::size_t records = b.record_count ();
    b.click (b.on (b.node ("HK"), test::shift));
    EXPECT_EQ (b.world.alerts.size () + (b.record_count () - records), 1U);
}

TEST (press, a_third_reaction_between_the_same_two_nodes_is_refused) {
    Bench b;
    b.open_text ("[N2 0 2 8 8\n[S1 0 50 60 0 3 13{a}-]\n[S2 0 250 60 0 3 13{b}-]\n]");
    b.click (b.on (b.node ("a")));
    b.click (b.on (b.node ("b"), test::shift));
    b.click (b.on (b.node ("b")));
    b.click (b.on (b.node ("a"), test::shift));
    const std::size_t records = b.record_count ();
    b.click (b.on (b.node ("b"), test::shift)); // aligns itself at most
    b.click (b.on (b.node ("a")));
    b.click (b.on (b.node ("b"), test::shift));
    EXPECT_EQ (
        b.world.alerts,
        (Strings{"No more than two reaction arcs between the same molecular species nodes."}));
    EXPECT_EQ (b.network ().count_arcs (), 2);
    EXPECT_EQ (b.records (records), (Strings{"selection " + std::to_string (b.node ("a").id ())}));
}

TEST (press, shift_mouse_1_on_a_node_aligns_it_when_nothing_else_is_selected) {
    Bench b;
    b.open_text ("[N2 0 2 8 8\n[S1 1 50 60 0 3 13{a}-]\n[S2 0 250 70 0 3 13{b}-]\n"
                 "[A3 0 272 2 1 2--]\n]");
    b.click (b.on (b.node ("b"), test::shift));
    EXPECT_EQ (b.node ("b").y (), 60);
    EXPECT_EQ (b.records (1), Strings{"snapshot"});
    b.click (b.on (b.node ("b"), test::shift)); // is in line
    EXPECT_EQ (b.records (1), Strings{"snapshot"});
    b.canvas ().undo ();
    EXPECT_EQ (b.node ("b").y (), 70);
}

TEST (press, shift_mouse_1_with_a_reaction_swaps_its_main_reactants) {
    Rich b;
    b.click (b.on (b.reaction ()));
    b.click (b.on (b.node ("ATP"), test::shift));
    EXPECT_TRUE (document::is_main_reaction (b.arc ("ATP").type ()));
    EXPECT_EQ (b.arc ("ATP").dest (), &b.node ("g6p"));
    EXPECT_EQ (b.arc ("glc").dest (), &b.arc ("ATP"));
    EXPECT_EQ (b.added ().back (), "snapshot");
    EXPECT_EQ (b.undo_and_redo (), "");
}

TEST (press, shift_mouse_1_with_a_reaction_changes_its_main_product) {
    Rich b;
    b.click (b.on (b.reaction ()));
    b.click (b.on (b.node ("f6p"), test::shift));
    EXPECT_EQ (b.reaction ().dest (), &b.node ("f6p"));
    EXPECT_EQ (b.undo_and_redo (), "");
}

TEST (press, a_reactions_own_source_cannot_become_its_product) {
    Rich b;
    b.click (b.on (b.reaction ()));
    const std::size_t records = b.record_count ();
    b.click (b.on (b.glc (), test::shift));
    EXPECT_EQ (b.reaction ().dest (), &b.node ("g6p"));
    EXPECT_EQ (b.record_count (), records);
}

TEST (press, the_main_product_chosen_again_writes_nothing) {
    Rich b;
    b.click (b.on (b.reaction ()));
    const std::size_t records = b.record_count ();
    b.click (b.on (b.node ("g6p"), test::shift));
    EXPECT_EQ (b.record_count (), records);
    EXPECT_FALSE (b.canvas ().modified ());
}

TEST (press, ctrl_mouse_1_adds_with_a_record_and_takes_out_without) {
    Rich b;
    b.click (b.on (b.glc (), test::ctrl));
    b.click (b.on (b.reaction (), test::ctrl));
    EXPECT_EQ (b.added (), (Strings{"selection " + b.id (b.glc ()),
                                    "selection " + b.id (b.glc ()) + ' ' + b.id (b.reaction ())}));
    b.click (b.on (b.glc (), test::ctrl));
    EXPECT_EQ (b.added ().size (), 2U);
    EXPECT_EQ (b.selected (), (std::vector<std::int32_t>{b.reaction ().id ()}));
}

TEST (press, a_move_after_an_object_was_taken_out_is_told_the_selection_first) {
    Rich b;
    b.click (b.on (b.glc ()));
    b.click (b.on (b.node ("G"), test::ctrl));
    b.click (b.on (b.glc (), test::ctrl));
    b.key (document::keys::right);
    EXPECT_EQ (b.records (3), (Strings{"selection " + b.id (b.node ("G")), "move 1 0"}));
    EXPECT_EQ (b.undo_and_redo (), "");
}

TEST (press, ctrl_mouse_1_on_what_cannot_be_selected_leaves_an_edited_text_alone) {
    Rich b;
    b.glc ().set_selectable (false);
    b.click (b.on_letter (b.node ("G"), 0));
    ASSERT_EQ (b.canvas ().mode, Mode::text);
    b.click (b.on (b.glc (), test::ctrl));
    EXPECT_EQ (b.canvas ().mode, Mode::text);
    b.type ("x");
    EXPECT_EQ (b.node ("xG").name (), "xG");
}

TEST (press, ctrl_shift_mouse_1_marks_the_species_of_several_concentrations) {
    Rich b;
    b.click (b.on (b.node ("G"), test::ctrl_shift));
    EXPECT_EQ (b.added (), Strings ());
    b.click (b.on (b.glc (), test::ctrl_shift));
    EXPECT_EQ (b.network ().multi_name (), "glc");
    EXPECT_EQ (b.added (), Strings{"snapshot"});
    b.click (b.on (b.glc (), test::ctrl_shift)); // is so already
    EXPECT_EQ (b.added (), Strings{"snapshot"});
    b.canvas ().undo ();
    EXPECT_EQ (b.network ().multi_name (), "");
    b.canvas ().redo ();
    EXPECT_EQ (b.network ().multi_name (), "glc");
}

// Button 2.

TEST (press, mouse_2_on_the_arc_of_a_selected_reactant_gives_it_a_node_of_its_own) {
    Rich b;
    b.click (b.on (b.node ("g6p"))); // has another link
    b.click (b.on (b.reaction ()), 2);
    ASSERT_EQ (b.network ().nb_nodes (), 11);
    const Node& copy = *b.network ().nodes ().back ();
    EXPECT_EQ (b.reaction ().dest (), &copy);
    EXPECT_EQ (copy.x (), b.node ("g6p").x () + 10);
    EXPECT_EQ (copy.y (), b.node ("g6p").y () + 10);
    EXPECT_EQ (b.added ().back (), "snapshot");
    EXPECT_EQ (b.undo_and_redo (), "");
}

TEST (press, alt_and_mouse_1_is_mouse_2) {
    Rich b;
    b.world.value_answers = {"3 uM"};
    b.click (b.on (b.node ("G"), test::alt));
    EXPECT_EQ (b.world.questions, (Strings{"Concentration: |Init. Concentration|"}));
    EXPECT_EQ (b.node ("G").user_data () ? *b.node ("G").user_data () : "", "3 uM");
}

TEST (press, mouse_2_on_a_node_asks_for_its_concentration) {
    for (const Modifiers held : {test::no_keys, test::ctrl}) {
        Rich b;
        b.world.value_answers = {"5 uM"};
        b.click (b.on (b.glc (), held), 2);
        EXPECT_EQ (b.world.questions, (Strings{"Concentration: |Init. Concentration|1 mM, 2 mM"}));
        EXPECT_EQ (*b.glc ().user_data (), "5 uM");
        EXPECT_EQ (b.added (), Strings{"snapshot"});
        EXPECT_EQ (b.undo_and_redo (), "");
    }
}

TEST (press, mouse_2_beside_everything_duplicates_the_selected_nodes) {
    Rich b;
    b.click (b.beside (), 2);
    EXPECT_EQ (b.added (), Strings ());
    b.click (b.on (b.reaction ()));
    b.click (b.on (b.node ("G"), test::ctrl));
    b.click (b.beside (), 2);
    ASSERT_EQ (b.network ().nb_nodes (), 11);
    EXPECT_EQ (b.selected (), (std::vector<std::int32_t>{b.network ().nodes ().back ()->id ()}));
    EXPECT_FALSE (b.reaction ().selected);
    EXPECT_EQ (b.added ().back (), "snapshot");
}

TEST (press, shift_mouse_2_shows_the_clones_and_hides_them) {
    Rich b;
    b.click (b.on (b.glc (), test::shift), 2); // is not shared
    EXPECT_EQ (b.glc ().highlight, document::no_highlight);
    b.click (b.on (b.node ("ATP"), test::shift), 2);
    int lit = 0;
    for (const auto& n : b.network ().nodes ())
        lit += n->highlight != document::no_highlight ? 1 : 0;
    EXPECT_EQ (lit, 2);
    EXPECT_EQ (b.world.mouse_help[mouse_help_slot (2, 1)], "hide clones");
    b.click (b.on (b.node ("ATP"), test::shift), 2);
    EXPECT_EQ (b.node ("ATP").highlight, document::no_highlight);
    EXPECT_EQ (b.added (), Strings ());
}

TEST (press, ctrl_shift_mouse_2_selects_what_hangs_together) {
    Rich b;
    b.click (b.on (b.glc (), test::ctrl_shift), 2);
    EXPECT_EQ (b.selected ().size (), 7U);
    EXPECT_EQ (b.added ().size (), 1U);
    EXPECT_TRUE (b.added ()[0].starts_with ("selection "));
    EXPECT_EQ (b.canvas ().mode, Mode::selection);
}

// Button 3.

TEST (press, mouse_3_moves_the_text_of_an_arc) {
    Rich b;
    document::Line& text = *b.reaction ().label_line ();
    const Pointer from = b.on_text (b.reaction (), text);
    b.drag (from, {{.x = from.x + 12, .y = from.y + 5, .modifiers = {}}}, 3);
    EXPECT_EQ (text.x (), 12);
    EXPECT_EQ (text.y (), 5);
    EXPECT_EQ (b.added (), (Strings{"labels " + b.id (b.reaction ()) + " {0.1}(12 5){}{}{}"}));
    EXPECT_EQ (b.undo_and_redo (), "");
}

TEST (press, a_text_dragged_there_and_back_writes_nothing) {
    Rich b;
    const Pointer from = b.on_text (b.reaction (), *b.reaction ().label_line ());
    b.drag (from, {{.x = from.x + 12, .y = from.y + 5, .modifiers = {}}, from}, 3);
    EXPECT_EQ (b.added (), Strings ());
    EXPECT_FALSE (b.canvas ().modified ());
    EXPECT_EQ (b.bench->window_title (), "rich.net");
}

TEST (press, mouse_3_on_a_node_chooses_its_kind) {
    Rich b;
    b.world.popup_answers = {document::node::kind::protein};
    b.click (b.on (b.glc ()), 3);
    EXPECT_EQ (b.glc ().type (), document::node::protein);
    EXPECT_EQ (b.added (), Strings{"kind " + b.id (b.glc ()) + " 3"});
    EXPECT_EQ (b.undo_and_redo (), "");
}

TEST (press, mouse_3_on_the_text_of_a_node_is_the_nodes) {
    Rich b;
    b.click (b.on_letter (b.glc (), 0), 3);
    ASSERT_FALSE (b.world.last_popup.empty ());
    EXPECT_EQ (b.world.last_popup.front ().label, "Receptor");
}

TEST (press, shift_mouse_3_on_a_reaction_gives_it_kinetic_labels) {
    Rich b;
    b.world.popup_answers = {static_cast<int> (arc::reaction)};
    b.click (b.on (b.arc ("g6p"), test::shift), 3);
    EXPECT_NE (b.arc ("g6p").residu (), nullptr);
    EXPECT_EQ (b.added (), Strings{"snapshot"});
    EXPECT_EQ (b.undo_and_redo (), "");
    b.click (b.on (b.arc ("g6p"), test::shift), 3); // they are there
    EXPECT_EQ (b.added (), Strings{"snapshot"});
}

TEST (press, shift_mouse_3_on_a_node_displays_it) {
    Rich b;
    EXPECT_FALSE (b.glc ().calyx_display ());
    b.click (b.on (b.glc (), test::shift), 3);
    EXPECT_TRUE (b.glc ().calyx_display ());
    EXPECT_EQ (b.added (), Strings{"snapshot"});
    EXPECT_TRUE (b.canvas ().modified ());
    EXPECT_EQ (b.undo_and_redo (), "");
}

TEST (press, ctrl_mouse_3_chooses_a_colour) {
    Rich b;
    b.world.popup_answers = {1, 2, 3};
    b.click (b.on (b.glc (), test::ctrl), 3);
    b.click (b.on (b.reaction (), test::ctrl), 3);
    const document::Compart& cell = *b.network ().comps ().front ();
    b.click (b.at (cell.x () + 2, cell.y () + 40, test::ctrl), 3);
    EXPECT_EQ (b.glc ().bg_color (), 1U);
    EXPECT_EQ (b.reaction ().color (), 2U);
    EXPECT_EQ (cell.color (), 3U);
    EXPECT_EQ (b.added (),
               (Strings{"colour " + b.id (b.glc ()) + " 1", "colour " + b.id (b.reaction ()) + " 2",
                        "colour " + b.id (cell) + " 3"}));
    EXPECT_EQ (b.undo_and_redo (), "");
}

TEST (press, custom_shows_the_present_colour_and_asks_for_another) {
    Rich b;
    b.world.popup_answers = {255, 255};
    b.world.colour_answers = {0x102030, 0xff0000};
    b.click (b.on (b.glc (), test::ctrl), 3);
    EXPECT_EQ (b.world.last_popup.front ().label, "Custom");
    EXPECT_EQ (b.world.questions, Strings{"Color Selection"});
    EXPECT_EQ (b.glc ().bg_color (), 0x10203000U);
    b.click (b.on (b.glc (), test::ctrl), 3);
    EXPECT_EQ (b.world.last_popup.front ().label, "#102030");
    EXPECT_EQ (b.glc ().bg_color (), 1U); // red has an index
    EXPECT_EQ (b.world.last_popup.size (), 18U);
}

TEST (press, a_chooser_given_up_leaves_the_colour) {
    Rich b;
    b.world.popup_answers = {255};
    b.click (b.on (b.glc (), test::ctrl), 3);
    EXPECT_EQ (b.added (), Strings ());
}

TEST (press, every_kind_of_a_node_can_be_chosen_and_undone) {
    for (int kind = 0; kind <= 9; ++kind) {
        for (const char* label : {"glc", "HK", "G", "R"}) {
            Rich b;
            b.bench->set_text_colour (kind % 2 == 0 ? 0 : 4);
            const std::string before = b.text ();
            b.world.popup_answers = {kind};
            b.click (b.on (b.node (label)), 3);
            if (b.text () == before)
                EXPECT_EQ (b.added (), Strings ()) << kind << label;
            else
                EXPECT_EQ (b.added ().size (), 1U) << kind << label;
            b.bench->set_text_colour (1); // what is replayed does not depend on it
            EXPECT_EQ (b.undo_and_redo (), "") << kind << label;
        }
    }
}

TEST (press, a_state_in_black_is_a_record_and_in_another_colour_a_snapshot) {
    Rich b;
    b.world.popup_answers = {8, 9, 8};
    b.click (b.on (b.node ("HK")), 3);
    b.click (b.on (b.node ("HK")), 3);
    b.bench->set_text_colour (4);
    b.click (b.on (b.node ("HK")), 3);
    const std::string id = b.id (b.node ("HK"));
    EXPECT_EQ (b.added (), (Strings{"kind " + id + " 8", "kind " + id + " 9", "snapshot"}));
    EXPECT_EQ (b.undo_and_redo (), "");
}

TEST (press, the_arc_menu_keeps_reactions_and_links_apart) {
    Rich b;
    b.click (b.on (b.reaction ()), 3);
    ASSERT_EQ (b.world.last_popup.size (), 12U);
    for (std::size_t i = 0; i < 12; ++i) EXPECT_EQ (b.world.last_popup[i].active, i < 3) << i;
    b.click (b.on (b.arc ("HK")), 3);
    for (std::size_t i = 0; i < 12; ++i) EXPECT_EQ (b.world.last_popup[i].active, i >= 3) << i;
}

TEST (press, a_transport_can_be_turned_back) {
    Rich b;
    b.world.popup_answers = {static_cast<int> (arc::transport), static_cast<int> (arc::reaction)};
    b.click (b.on (b.reaction ()), 3);
    EXPECT_EQ (b.reaction ().type (), arc::transport);
    b.click (b.on (b.reaction ()), 3);
    EXPECT_EQ (b.reaction ().type (), arc::reaction);
    EXPECT_EQ (b.undo_and_redo (), "");
}

TEST (press, side_arcs_follow_a_reaction_that_becomes_reversible) {
    Rich b;
    b.world.popup_answers = {static_cast<int> (arc::reversible_reaction),
                             static_cast<int> (arc::reaction)};
    b.click (b.on (b.reaction ()), 3);
    EXPECT_EQ (b.arc ("ATP").type (), 529U);
    EXPECT_EQ (b.arc ("ADP").type (), 1041U);
    EXPECT_EQ (b.arc ("HK").type (), arc::catalysis);
    EXPECT_EQ (b.added (), (Strings{"kind " + b.id (b.reaction ()) + " 273",
                                    "kind " + b.id (b.arc ("ATP")) + " 529",
                                    "kind " + b.id (b.arc ("ADP")) + " 1041"}));
    b.click (b.on (b.reaction ()), 3);
    EXPECT_EQ (b.arc ("ATP").type (), 512U);
    EXPECT_EQ (b.arc ("ADP").type (), 1025U);
    EXPECT_EQ (b.undo_and_redo (), "");
}

TEST (press, the_kind_that_an_arc_has_changes_nothing_else_either) {
    Rich b;
    b.world.popup_answers = {4, static_cast<int> (arc::reaction)};
    b.click (b.on (b.reaction (), test::ctrl), 3);
    b.click (b.on (b.reaction ()), 3);
    EXPECT_EQ (b.reaction ().color (), 4U);
    EXPECT_EQ (b.added ().size (), 1U);
}

TEST (press, a_kind_goes_to_the_selected_objects_of_the_same_class) {
    Rich b;
    b.click (b.on (b.glc ()));
    b.click (b.on (b.node ("G"), test::ctrl));
    b.click (b.on (b.reaction (), test::ctrl));
    b.world.popup_answers = {document::node::kind::protein};
    b.click (b.on (b.glc ()), 3);
    EXPECT_EQ (b.glc ().type (), document::node::protein);
    EXPECT_EQ (b.node ("G").type (), document::node::protein);
    EXPECT_EQ (b.reaction ().type (), arc::reaction);
    EXPECT_EQ (b.undo_and_redo (), "");
}

TEST (press, a_compartments_shape_is_chosen) {
    Rich b;
    const document::Compart& cell = *b.network ().comps ().front ();
    b.world.popup_answers = {1};
    b.click (b.at (cell.x () + 2, cell.y () + 40), 3);
    EXPECT_EQ (cell.shape (), document::shape::ellipse);
    EXPECT_EQ (b.added (), Strings{"kind " + b.id (cell) + " 1"});
    EXPECT_EQ (b.undo_and_redo (), "");
}

TEST (press, mouse_3_beside_everything_scrolls) {
    Rich b;
    b.drag (b.beside (), {{.x = 810, .y = 480, .modifiers = {}}}, 3);
    EXPECT_EQ (b.network ().x (), 18);
    EXPECT_EQ (b.network ().y (), -12);
    EXPECT_EQ (b.added (), Strings ());
    EXPECT_EQ (b.world.pointer, PointerShape::arrow);
}

// Series.

TEST (press, two_presses_with_different_buttons_are_two_first_presses) {
    Rich b;
    b.canvas ().press (1, b.on (b.glc ()));
    b.canvas ().release (1, b.on (b.glc ()));
    b.world.pass (0.1);
    b.world.last_popup.clear ();
    b.canvas ().press (3, b.on (b.glc ()));
    EXPECT_FALSE (b.world.last_popup.empty ());
}

TEST (press, a_second_press_selects_the_word_a_third_the_line_and_a_fourth_begins_anew) {
    Bench b;
    b.open_text ("[N1 0 2 8 8\n[S1 0 90 60 0 3 9{one two}-]\n]");
    const Pointer at = b.on_letter (*b.network ().nodes ().front (), 1);
    const auto press = [&] {
        b.canvas ().press (1, at);
        b.canvas ().release (1, at);
        b.world.pass (0.1);
    };
    press ();
    const document::Line& line = *b.canvas ().selection.edit_line ();
    EXPECT_EQ (line.sel_start, -1);
    press ();
    EXPECT_EQ (line.sel_start, 0);
    EXPECT_EQ (line.sel_end, 2);
    press ();
    EXPECT_EQ (line.sel_end, 6);
    press ();
    EXPECT_EQ (line.sel_start, -1);
    EXPECT_EQ (b.record_count (), 1U);
}

TEST (press, a_press_goes_on_with_a_series_only_near_and_soon) {
    Bench b;
    b.open_text ("[N1 0 2 8 8\n[S1 0 90 60 0 3 9{one two}-]\n]");
    const Pointer at = b.on_letter (*b.network ().nodes ().front (), 1);
    for (const auto& [wait, far] : {std::pair{0.25, 0.0F}, std::pair{0.1, 5.0F}}) {
        b.world.pass (1);
        b.canvas ().press (1, at);
        b.canvas ().release (1, at);
        b.world.pass (wait);
        b.canvas ().press (1, {.x = at.x + far, .y = at.y, .modifiers = {}});
        EXPECT_EQ (b.canvas ().selection.edit_line ()->sel_start, -1);
        b.canvas ().release (1, at);
    }
}

TEST (press, the_second_press_of_another_button_drags_nothing) {
    Rich b;
    const Pointer at = b.beside ();
    b.canvas ().press (3, at);
    b.canvas ().release (3, at);
    b.world.pass (0.1);
    b.canvas ().press (3, at);
    b.canvas ().drag ({.x = at.x + 30, .y = at.y, .modifiers = {}});
    b.canvas ().release (3, at);
    EXPECT_EQ (b.network ().x (), 8);
}

} // namespace
} // namespace ostrand::editor
