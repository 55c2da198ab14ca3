// Lines that show what is in line.
#include "editor/guides.h"

#include "bench.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace ostrand::editor {
namespace {

using document::Extent;
using document::Node;
using test::Bench;
using Strings = std::vector<std::string>;

/// A box of 40 to 20 units around a centre.
Extent box (float x, float y) { return {x - 20, y - 10, x + 20, y + 10}; }

int count (const Guides& found, Guide::Kind kind) {
    return static_cast<int> (std::ranges::count (found.lines, kind, &Guide::kind));
}

TEST (guides, boxes_in_line_get_lines_through_edges_and_centres) {
    const Guides found = find_guides (box (100, 100), {box (100, 300)}, 3);
    ASSERT_EQ (found.lines.size (), 3U);
    for (const Guide& line : found.lines) {
        EXPECT_TRUE (line.vertical);
        EXPECT_LT (line.from, 90);
        EXPECT_GT (line.to, 310);
    }
    EXPECT_EQ (found.lines[0].at, 80);
    EXPECT_EQ (found.lines[1].at, 120);
    EXPECT_EQ (found.lines[2].at, 100);
    EXPECT_EQ (found.snap_x, 0);
    EXPECT_EQ (found.snap_y, 0);
}

TEST (guides, a_box_of_another_size_is_in_line_by_one_edge) {
    const Guides found = find_guides (box (100, 100), {{80, 200, 300, 260}}, 3);
    ASSERT_EQ (found.lines.size (), 1U);
    EXPECT_EQ (found.lines[0].at, 80);
}

TEST (guides, nothing_is_in_line_with_what_is_a_unit_off) {
    const Guides found = find_guides (box (101, 100), {box (100, 300)}, 3);
    EXPECT_TRUE (found.lines.empty ());
    EXPECT_EQ (found.snap_x, -1);
}

TEST (guides, beyond_the_reach_there_is_nothing_to_go_to) {
    EXPECT_EQ (find_guides (box (104, 100), {box (100, 300)}, 3).snap_x, 0);
}

TEST (guides, of_several_the_nearest_place_counts) {
    EXPECT_EQ (find_guides (box (102, 100), {box (100, 300), box (103, 400)}, 3).snap_x, 1);
}

TEST (guides, equal_gaps_on_both_sides_are_shown) {
    const Guides found = find_guides (box (200, 100), {box (100, 103), box (300, 97)}, 0);
    EXPECT_EQ (count (found, Guide::Kind::gap), 2);
    EXPECT_EQ (found.lines.back ().from, 220);
    EXPECT_EQ (found.lines.back ().to, 280);
    EXPECT_FALSE (found.lines.back ().vertical);
}

TEST (guides, a_box_behind_two_others_repeats_their_gap) {
    EXPECT_EQ (
        count (find_guides (box (300, 100), {box (100, 103), box (200, 97)}, 0), Guide::Kind::gap),
        2);
    EXPECT_EQ (find_guides (box (298, 100), {box (100, 103), box (200, 97)}, 3).snap_x, 2);
    EXPECT_EQ (find_guides (box (2, 100), {box (100, 103), box (200, 97)}, 3).snap_x, -2);
}

TEST (guides, a_box_between_two_others_goes_to_their_middle) {
    EXPECT_EQ (find_guides (box (198, 100), {box (100, 103), box (300, 97)}, 3).snap_x, 2);
    EXPECT_EQ (find_guides (box (100, 205), {box (103, 100), box (97, 306)}, 3).snap_y, -2);
}

TEST (guides, what_stands_elsewhere_has_no_gap) {
    const Guides found = find_guides (box (200, 100), {box (100, 500), box (300, 700)}, 0);
    EXPECT_EQ (count (found, Guide::Kind::gap), 0);
}

/// Three molecules of the same size; c is dragged.
struct Three : Bench {
    Three () {
        open_text ("[N3 0 2 8 8\n[S1 0 100 60 0 3 13{a}-]\n[S2 0 200 67 0 3 13{b}-]\n"
                   "[S3 0 291 200 0 3 13{c}-]\n]");
    }
    /// Drags c by some units and keeps the button down.
    void drag_c (float dx, float dy) {
        world.pass (1);
        const Pointer from = on (node ("c"));
        canvas ().press (1, from);
        canvas ().drag ({.x = from.x + dx, .y = from.y + dy, .modifiers = {}});
        last = {.x = from.x + dx, .y = from.y + dy, .modifiers = {}};
    }
    Pointer last;
    bool shown (bool vertical, float at) {
        return std::ranges::any_of (canvas ().gesture.guides, [&] (const Guide& guide) {
            return guide.vertical == vertical && guide.at == at;
        });
    }
};

TEST (guides, show_while_a_node_is_dragged_and_go_with_the_release) {
    Three b;
    b.drag_c (-91, 0);
    EXPECT_TRUE (b.shown (true, 200));
    b.canvas ().release (1, b.last);
    EXPECT_TRUE (b.canvas ().gesture.guides.empty ());
}

TEST (guides, do_not_move_what_is_dragged_unless_that_is_wanted) {
    Three b;
    b.drag_c (-89, 0); // two units beside b
    EXPECT_EQ (b.node ("c").x (), 202);
    b.canvas ().release (1, b.last);
    EXPECT_EQ (b.records ().back (), "move -89 0");
}

TEST (guides, move_what_is_near_when_that_is_wanted_and_the_record_tells_the_sum) {
    Three b;
    b.run (Command::snap_to_guides);
    b.drag_c (-89, 0);
    EXPECT_EQ (b.node ("c").x (), 200);
    EXPECT_TRUE (b.shown (true, 200));
    b.canvas ().drag ({.x = b.last.x + 20, .y = b.last.y, .modifiers = {}});
    EXPECT_EQ (b.node ("c").x (), 222); // the pointer's own place again
    b.canvas ().drag (b.last);
    b.canvas ().release (1, b.last);
    EXPECT_EQ (b.records ().back (), "move -91 0");
    EXPECT_EQ (b.undo_and_redo (), "");
}

TEST (guides, leave_the_grid_its_lines) {
    Three b;
    b.run (Command::snap_to_guides);
    b.canvas ().show_grid = true;
    b.drag_c (-89, 0);
    EXPECT_EQ (b.node ("c").x (), 212);
}

TEST (guides, are_not_shown_when_they_are_switched_off) {
    Three b;
    b.run (Command::show_guides);
    EXPECT_FALSE (b.bench->entry (Command::show_guides).checked);
    b.drag_c (-91, 0);
    EXPECT_TRUE (b.canvas ().gesture.guides.empty ());
    EXPECT_FALSE (b.bench->present_preferences ().guides);
}

TEST (guides, do_not_look_at_what_is_out_of_the_window) {
    Three b;
    b.canvas ().resize (400, 400);
    b.node ("b").set_position (200, 5000);
    b.drag_c (-91, 0);
    EXPECT_FALSE (b.shown (true, 200));
}

TEST (guides, several_nodes_are_one_box) {
    Three b;
    b.click (b.on (b.node ("b")));
    b.click (b.on (b.node ("c"), test::ctrl));
    b.drag_c (-95, 0);
    const Extent left = b.node ("b").extent ();
    EXPECT_NEAR (left.x, b.node ("a").extent ().x + 5, 1);
    EXPECT_TRUE (b.canvas ().gesture.guides.empty ());
    b.canvas ().drag ({.x = b.last.x - 5, .y = b.last.y, .modifiers = {}});
    EXPECT_TRUE (b.shown (true, b.node ("a").extent ().x));
}

} // namespace
} // namespace ostrand::editor
