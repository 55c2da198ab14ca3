// Drags of objects, texts and the view, and the wheel.
#include "rich_bench.h"

#include <gtest/gtest.h>

namespace ostrand::editor {
namespace {

using document::Node;
using test::Bench;
using test::Rich;
namespace arc = document::arc;
using Strings = std::vector<std::string>;

// Drags.

TEST (drag, a_node_is_moved_by_whole_units_in_one_record) {
    Rich b;
    b.canvas ().smart_move = false;
    Node& gene = b.node ("G");
    const float x = gene.x ();
    const Pointer from = b.on (gene);
    b.drag (from, {{.x = from.x + 10.4F, .y = from.y, .modifiers = {}},
                   {.x = from.x + 20.9F, .y = from.y - 7, .modifiers = {}}});
    EXPECT_EQ (gene.x (), x + 20);
    EXPECT_EQ (b.added (), (Strings{"selection " + b.id (gene), "move 20 -7"}));
    EXPECT_TRUE (b.canvas ().modified ());
    EXPECT_EQ (b.undo_and_redo (), "");
}

TEST (drag, what_a_motion_has_beyond_whole_units_waits_for_the_next) {
    Rich b;
    b.canvas ().smart_move = false;
    Node& moved = b.node ("HK");
    const float x = moved.x ();
    b.canvas ().zoom_to (2, 0, 0);
    const Pointer from = b.on (moved);
    std::vector<Pointer> steps;
    for (int i = 1; i <= 9; ++i)
        steps.push_back ({.x = from.x + static_cast<float> (i), .y = from.y, .modifiers = {}});
    b.drag (from, steps);
    EXPECT_EQ (moved.x (), x + 4); // 9 pixels at 200 %
}

TEST (drag, a_node_dragged_there_and_back_writes_nothing) {
    Rich b;
    b.canvas ().smart_move = false;
    const Pointer from = b.on (b.node ("G"));
    b.drag (from, {{.x = from.x + 12, .y = from.y + 5, .modifiers = {}}, from});
    EXPECT_EQ (b.added ().size (), 1U); // its selection
    EXPECT_FALSE (b.canvas ().modified ());
}

TEST (drag, an_arc_is_not_moved_and_nothing_is_written) {
    Rich b;
    const std::string before = b.text ();
    const Pointer from = b.on (b.reaction ());
    b.drag (from, {{.x = from.x + 12, .y = from.y + 5, .modifiers = {}}});
    EXPECT_EQ (b.text (), before);
    EXPECT_EQ (b.added ().size (), 1U);
    EXPECT_FALSE (b.canvas ().modified ());
}

TEST (drag, with_modifiers_nothing_is_moved) {
    Rich b;
    const std::string before = b.text ();
    const Pointer from = b.on (b.node ("G"));
    b.drag (from, {{.x = from.x + 12, .y = from.y + 5, .modifiers = test::shift}});
    EXPECT_EQ (b.text (), before);
}

TEST (drag, three_nodes_move_together_and_come_back_together) {
    Rich b;
    for (const char* label : {"G", "R", "f6p"}) b.click (b.on (b.node (label), test::ctrl));
    const std::string before = b.text ();
    b.key (document::keys::right);
    EXPECT_EQ (b.records (4), Strings{"move 1 0"});
    const std::string after = b.text ();
    b.canvas ().undo ();
    EXPECT_EQ (b.text (), before);
    EXPECT_EQ (b.selected ().size (), 3U);
    b.canvas ().redo ();
    EXPECT_EQ (b.text (), after);
}

TEST (drag, a_band_selects_the_nodes_whose_centres_it_holds) {
    Rich b;
    b.drag (b.at (70, 70), {b.at (170, 180)});
    EXPECT_EQ (b.canvas ().mode, Mode::free);
    EXPECT_EQ (b.added (), (Strings{"selection " + b.id (b.glc ()) + ' ' + b.id (b.node ("ATP"))}));
    EXPECT_FALSE (b.canvas ().gesture.has_band ());
    // Drawn from the other corner, at another zoom.
    b.canvas ().zoom_to (0.5F, 0, 0);
    b.drag (b.at (170, 180), {b.at (70, 70)});
    EXPECT_EQ (b.selected ().size (), 2U);
}

TEST (drag, a_band_that_holds_nothing_writes_nothing) {
    Rich b;
    b.drag (b.beside (), {{.x = 850, .y = 550, .modifiers = {}}});
    EXPECT_EQ (b.added (), Strings ());
}

TEST (drag, a_node_dropped_on_one_of_its_kind_is_fused_with_it) {
    Bench b;
    b.open_text ("[N2 0 2 8 8\n[S1 0 90 60 0 3 13{a}-]\n[S2 0 250 60 0 3 13{b}-]\n]");
    b.canvas ().press (1, b.on (b.node ("a")));
    b.canvas ().drag (b.at (250, 66));
    EXPECT_EQ (b.canvas ().fuse_shown (), &b.node ("b"));
    EXPECT_EQ (b.world.mouse_help[0], "fuse node");
    b.canvas ().drag (b.at (250, 160));
    EXPECT_EQ (b.canvas ().fuse_shown (), nullptr);
    EXPECT_EQ (b.world.mouse_help[0], "move selection");
    b.canvas ().drag (b.at (250, 66));
    b.canvas ().release (1, b.at (250, 66));
    EXPECT_EQ (b.network ().nb_nodes (), 1);
    EXPECT_EQ (b.selected ().size (), 0U);
    EXPECT_EQ (b.records (1), (Strings{"selection 1", "snapshot"}));
    EXPECT_EQ (b.undo_and_redo (), "");
}

TEST (drag, a_compartment_is_moved_by_a_record_and_resized_by_a_snapshot) {
    Rich b;
    const document::Compart& cell = *b.network ().comps ().front ();
    const Pointer from = b.at (cell.x () + 2, cell.y () + 40);
    b.drag (from, {{.x = from.x + 5, .y = from.y + 6, .modifiers = {}}});
    EXPECT_EQ (cell.x (), 45);
    EXPECT_EQ (cell.y (), 11);
    const float width = cell.width ();
    const Pointer grip = b.at (cell.x () + cell.width () - 2,
                               cell.y () + static_cast<float> (cell.get_height ()) / 2);
    b.drag (grip, {{.x = grip.x + 30, .y = grip.y, .modifiers = {}}});
    EXPECT_EQ (b.network ().comps ().front ()->width (), width + 30);
    EXPECT_EQ (b.added (), (Strings{"selection " + b.id (cell), "move 5 6", "snapshot"}));
    EXPECT_EQ (b.undo_and_redo (), "");
}

TEST (drag, a_compartment_stops_at_its_least_size) {
    Rich b;
    const document::Compart& cell = *b.network ().comps ().front ();
    const Pointer grip = b.at (cell.x () + cell.width () - 2,
                               cell.y () + static_cast<float> (cell.get_height ()) / 2);
    b.drag (grip, {{.x = grip.x - 1000, .y = grip.y, .modifiers = {}}});
    EXPECT_EQ (cell.width (), 320);
    EXPECT_EQ (b.added ().size (), 1U);
}

TEST (drag, with_the_grid_the_first_nodes_centre_stands_on_its_lines) {
    Rich b;
    b.canvas ().show_grid = true;
    b.canvas ().smart_move = false;
    Node& gene = b.node ("G");
    const Pointer from = b.on (gene);
    b.drag (from, {{.x = from.x + 20, .y = from.y + 20, .modifiers = {}}});
    EXPECT_EQ (gene.x (), 24 * 5 - 4); // nearest to 120
    EXPECT_EQ (gene.y (), 24 * 15 - 4);
    EXPECT_EQ (b.added ().back (), "move 16 26");
    EXPECT_EQ (b.undo_and_redo (), "");
}

TEST (drag, with_the_grid_a_move_by_fractions_ends_in_a_snapshot) {
    Bench b;
    b.open_text ("[N1 0 2 8 8\n[S1 0 90.5 60 0 3 13{a}-]\n]");
    b.canvas ().show_grid = true;
    const Pointer from = b.on (b.node ("a"));
    b.drag (from, {{.x = from.x + 20, .y = from.y, .modifiers = {}}});
    EXPECT_EQ (b.node ("a").x (), 116);
    EXPECT_EQ (b.records ().back (), "snapshot");
    EXPECT_EQ (b.undo_and_redo (), "");
}

TEST (drag, with_the_grid_a_key_between_two_motions_is_not_taken_back) {
    Bench b;
    b.open_text ("[N1 0 2 8 8\n[S1 0 92 68 0 3 13{a}-]\n]"); // on the lines
    b.canvas ().show_grid = true;
    const Pointer from = b.on (b.node ("a"));
    b.canvas ().press (1, from);
    b.canvas ().drag ({.x = from.x + 3, .y = from.y, .modifiers = {}}); // to the lines it stands on
    b.key (document::keys::left);
    b.canvas ().drag ({.x = from.x + 4, .y = from.y, .modifiers = {}});
    b.canvas ().release (1, {.x = from.x + 4, .y = from.y, .modifiers = {}});
    EXPECT_EQ (b.node ("a").x (), 92);
    EXPECT_EQ (b.records (2), (Strings{"move -1 0", "move 1 0"}));
    EXPECT_EQ (b.undo_and_redo (), "");
}

TEST (drag, smart_move_that_moves_others_ends_in_a_snapshot) {
    Rich b;
    const Pointer from = b.on (b.node ("g6p"));
    b.drag (from, {{.x = from.x + 60, .y = from.y, .modifiers = {}}});
    EXPECT_NE (b.node ("HK").x (), 200);
    EXPECT_EQ (b.added ().back (), "snapshot");
    EXPECT_EQ (b.undo_and_redo (), "");
}

TEST (drag, a_node_finds_the_compartment_that_holds_it_now) {
    Rich b;
    b.canvas ().smart_move = false;
    EXPECT_EQ (b.node ("G").compart (), nullptr);
    const Pointer from = b.on (b.node ("G"));
    b.drag (from, {{.x = from.x, .y = from.y - 200, .modifiers = {}}});
    EXPECT_EQ (b.node ("G").compart (), b.network ().comps ().front ().get ());
    b.canvas ().undo ();
    EXPECT_EQ (b.node ("G").compart (), nullptr);
    b.canvas ().redo ();
    EXPECT_EQ (b.node ("G").compart (), b.network ().comps ().front ().get ());
}

TEST (drag, a_key_that_comes_meanwhile_finds_the_drag_recorded) {
    Rich b;
    b.canvas ().smart_move = false;
    const Pointer from = b.on (b.node ("G"));
    b.canvas ().press (1, from);
    b.canvas ().drag ({.x = from.x + 10, .y = from.y, .modifiers = {}});
    b.key (document::keys::down);
    b.canvas ().drag ({.x = from.x + 15, .y = from.y, .modifiers = {}});
    b.canvas ().release (1, {.x = from.x + 15, .y = from.y, .modifiers = {}});
    EXPECT_EQ (b.records (2), (Strings{"move 10 0", "move 0 1", "move 5 0"}));
    EXPECT_EQ (b.undo_and_redo (), "");
}

TEST (drag, undo_while_a_button_is_down_undoes_the_drag) {
    Rich b;
    b.canvas ().smart_move = false;
    const std::string before = b.text ();
    const Pointer from = b.on (b.node ("G"));
    b.canvas ().press (1, from);
    b.canvas ().drag ({.x = from.x + 10, .y = from.y, .modifiers = {}});
    b.canvas ().undo ();
    EXPECT_EQ (b.text (), before);
    b.canvas ().drag ({.x = from.x + 30, .y = from.y, .modifiers = {}});
    b.canvas ().release (1, from);
    EXPECT_EQ (b.text (), before);
    EXPECT_TRUE (b.canvas ().history ().can_redo ());
}

TEST (drag, a_selection_of_letters_follows_the_pointer) {
    Bench b;
    b.open_text ("[N1 0 2 8 8\n[S1 0 90 60 0 3 9{one two}-]\n]");
    const Node& n = *b.network ().nodes ().front ();
    b.drag (b.on_letter (n, 1), {b.on_letter (n, 3)});
    const document::Line& line = *b.canvas ().selection.edit_line ();
    EXPECT_EQ (line.sel_start, 1);
    EXPECT_EQ (line.sel_end, 3);
    EXPECT_EQ (b.record_count (), 1U);
}

TEST (drag, the_wheel_scrolls_32_units_at_every_zoom_and_zooms_with_ctrl) {
    Rich b;
    const Pointer at = b.beside ();
    b.canvas ().zoom_to (0.5F, 0, 0);
    const float x = b.network ().x ();
    const float y = b.network ().y ();
    b.canvas ().wheel (0, 1, at);
    EXPECT_EQ (b.network ().y (), y - 32);
    b.canvas ().wheel (0, -2, {.x = 0, .y = 0, .modifiers = test::shift});
    EXPECT_EQ (b.network ().x (), x + 64);
    b.canvas ().wheel (0, -1, {.x = 0, .y = 0, .modifiers = test::ctrl});
    EXPECT_FLOAT_EQ (b.canvas ().view.zoom (), 0.6F);
    b.canvas ().wheel (0, 1, {.x = 0, .y = 0, .modifiers = test::ctrl});
    EXPECT_FLOAT_EQ (b.canvas ().view.zoom (), 0.5F);
}

} // namespace
} // namespace ostrand::editor
