// Drags that come near the window's border.
#include "bench.h"

#include "editor/border_scroll.h"

#include <cmath>
#include <gtest/gtest.h>

namespace ostrand::editor {
namespace {

using document::Node;
using test::Bench;
using Strings = std::vector<std::string>;

/// The rich drawing in a window of 600 to 400 pixels, without smart move.
struct Near : Bench {
    Near () {
        open_rich ();
        canvas ().smart_move = false;
        canvas ().resize (600, 400);
    }
    Strings added () { return records (1); }
    std::string id (const document::GraphBase& object) { return std::to_string (object.id ()); }
    /// A press on the gene and a drag to a place of the window; the button stays down.
    void take_gene (Pointer to) {
        world.pass (1);
        const Node& gene = node ("G");
        canvas ().press (1, at (gene.extent ().x + 2, gene.y ()));
        canvas ().drag (to);
    }
    /// Where a node is in the window.
    float window_x (const Node& n) { return at (n.x (), n.y ()).x; }
    float window_y (const Node& n) { return at (n.x (), n.y ()).y; }
};

constexpr Pointer at_right{.x = 590, .y = 200, .modifiers = {}};
constexpr Pointer inside{.x = 300, .y = 200, .modifiers = {}};

TEST (border, a_step_grows_with_the_depth_and_ends_growing_far_outside) {
    EXPECT_EQ (border_step (300, 600), 0);
    EXPECT_EQ (border_step (border_zone, 600), 0);
    EXPECT_LT (border_step (20, 600), 0);
    EXPECT_LT (border_step (2, 600), border_step (20, 600));
    EXPECT_EQ (border_step (598, 600), -border_step (2, 600));
    EXPECT_GT (border_step (640, 600), border_step (599, 600));
    EXPECT_EQ (border_step (5000, 600), border_step (50000, 600));
}

TEST (border, a_window_without_room_for_a_place_inside_does_not_scroll) {
    EXPECT_EQ (border_step (1, 2 * border_zone), 0);
}

TEST (border, a_selection_held_at_the_border_goes_on_and_stays_under_the_pointer) {
    Near b;
    Node& gene = b.node ("G");
    const float start = gene.x ();
    const float origin = b.network ().x ();
    b.take_gene (at_right);
    const float seen = b.window_x (gene);
    const float moved = gene.x () - start;
    b.world.pass (2);
    const float scrolled = origin - b.network ().x ();
    EXPECT_GT (scrolled, 100);
    EXPECT_EQ (gene.x () - start, moved + scrolled);
    EXPECT_EQ (b.window_x (gene), seen);
    const int total = static_cast<int> (gene.x () - start);
    b.canvas ().release (1, at_right);
    ASSERT_EQ (b.added ().size (), 2U);
    EXPECT_TRUE (b.added ().back ().starts_with ("move " + std::to_string (total) + ' '))
        << b.added ().back ();
    EXPECT_EQ (b.undo_and_redo (), "");
}

TEST (border, at_each_zoom_what_is_dragged_moves_by_whole_units_with_the_view) {
    for (const float zoom : {0.3F, 0.7F, 1.7F, 2.0F}) {
        Near b;
        Node& gene = b.node ("G");
        b.canvas ().resize (600, 800);
        b.canvas ().zoom_to (zoom, 0, 0);
        const float start = gene.x ();
        b.network ().layout ();
        b.take_gene (at_right);
        ASSERT_TRUE (b.canvas ().selection.contains (gene));
        const float seen = b.window_x (gene);
        b.world.pass (1);
        EXPECT_NEAR (b.window_x (gene), seen, zoom + 0.01F) << zoom;
        EXPECT_EQ (gene.x () - start, std::trunc (gene.x () - start));
        b.canvas ().release (1, at_right);
        EXPECT_TRUE (b.added ().back ().starts_with ("move ")) << b.added ().back ();
        EXPECT_EQ (b.undo_and_redo (), "");
    }
}

TEST (border, the_scroll_waits_a_moment_and_stops_inside) {
    Near b;
    const float origin = b.network ().x ();
    b.take_gene (at_right);
    b.world.pass (border_first_wait / 2);
    EXPECT_EQ (b.network ().x (), origin);
    b.canvas ().drag (inside);
    b.world.pass (2);
    EXPECT_EQ (b.network ().x (), origin);
}

TEST (border, the_scroll_stops_at_the_release) {
    Near b;
    b.take_gene (at_right);
    b.world.pass (1);
    b.canvas ().release (1, at_right);
    const float origin = b.network ().x ();
    b.world.pass (2);
    EXPECT_EQ (b.network ().x (), origin);
}

TEST (border, escape_stops_the_scroll_until_the_pointer_was_inside) {
    Near b;
    b.take_gene (at_right);
    b.world.pass (1);
    b.key (document::keys::escape_code);
    const float origin = b.network ().x ();
    EXPECT_TRUE (b.added ().back ().starts_with ("move "));
    b.canvas ().drag ({.x = 591, .y = 201, .modifiers = {}});
    b.world.pass (2);
    EXPECT_EQ (b.network ().x (), origin);
    b.canvas ().drag (inside);
    b.canvas ().drag (at_right);
    b.world.pass (2);
    EXPECT_LT (b.network ().x (), origin);
}

TEST (border, a_band_grows_over_what_comes_into_view) {
    Near b;
    b.canvas ().resize (320, 400);
    b.world.pass (1);
    b.canvas ().press (1, b.at (8, 220));
    b.canvas ().drag ({.x = 315, .y = 20, .modifiers = {}});
    EXPECT_FALSE (b.canvas ().selection.contains (b.node ("f6p")));
    const float left = b.canvas ().gesture.band_x - b.network ().x ();
    for (int i = 0; i < 100 && !b.canvas ().selection.contains (b.node ("f6p")); ++i)
        b.world.pass (0.1);
    EXPECT_TRUE (b.canvas ().selection.contains (b.node ("f6p")));
    EXPECT_TRUE (b.canvas ().selection.contains (b.node ("glc"))); // its other end has stayed
    EXPECT_EQ (b.canvas ().gesture.band_x - b.network ().x (), left);
    b.canvas ().release (1, {.x = 315, .y = 20, .modifiers = {}});
    EXPECT_TRUE (b.added ().back ().starts_with ("selection "));
    EXPECT_FALSE (b.canvas ().modified ());
}

TEST (border, a_band_stops_where_the_network_would_leave_the_window) {
    Near b;
    b.world.pass (1);
    b.canvas ().press (1, b.at (20, 250));
    b.canvas ().drag ({.x = 5, .y = 5, .modifiers = {}});
    b.world.pass (60);
    EXPECT_EQ (b.network ().x (), 600 - least_in_view);
    EXPECT_EQ (b.network ().y (), 400 - least_in_view);
}

TEST (border, a_compartments_edge_goes_on_with_the_view) {
    Near b;
    const document::Compart& cell = *b.network ().comps ().front ();
    const float width = cell.width ();
    const Pointer grip = b.at (cell.x () + cell.width () - 2,
                               cell.y () + static_cast<float> (cell.get_height ()) / 2);
    b.world.pass (1);
    b.canvas ().press (1, grip);
    b.canvas ().drag (at_right);
    const float seen = b.at (cell.x () + cell.width (), 0).x;
    b.world.pass (2);
    EXPECT_GT (cell.width (), width + 300);
    EXPECT_EQ (b.at (cell.x () + cell.width (), 0).x, seen);
    b.canvas ().release (1, at_right);
    EXPECT_EQ (b.added (), (Strings{"selection " + b.id (cell), "snapshot"}));
    EXPECT_EQ (b.undo_and_redo (), "");
}

TEST (border, a_label_goes_on_with_the_view) {
    Near b;
    document::Arque& reaction = b.arc ("glc");
    const Pointer grip = b.on_text (reaction, *reaction.label_line ());
    b.world.pass (1);
    b.canvas ().press (3, grip);
    b.canvas ().drag (at_right);
    const float x = reaction.label ()->x ();
    const float origin = b.network ().x ();
    b.world.pass (1);
    EXPECT_EQ (reaction.label ()->x () - x, origin - b.network ().x ());
    EXPECT_LT (b.network ().x (), origin);
    b.canvas ().release (3, at_right);
    EXPECT_TRUE (b.added ().back ().starts_with ("labels "));
    EXPECT_EQ (b.undo_and_redo (), "");
}

TEST (border, an_arc_a_text_and_a_lift_scroll_nothing) {
    Near b;
    const float origin = b.network ().x ();
    for (const Pointer& from : {b.on (b.arc ("glc")), b.on_letter (b.node ("glc"), 1)}) {
        b.world.pass (1);
        b.canvas ().press (1, from);
        b.canvas ().drag (at_right);
        b.world.pass (2);
        b.canvas ().release (1, at_right);
        EXPECT_EQ (b.network ().x (), origin);
    }
    b.world.pass (1);
    b.canvas ().press (1, {.x = 595, .y = 20, .modifiers = {}});
    EXPECT_TRUE (b.canvas ().view.lift_y.grabbed);
    const float top = b.network ().y ();
    b.world.pass (2);
    EXPECT_EQ (b.network ().x (), origin);
    EXPECT_EQ (b.network ().y (), top);
}

TEST (border, a_canvas_that_goes_meanwhile_leaves_no_timer) {
    Near b;
    b.bench->add_tab (std::nullopt);
    b.bench->select_tab (0);
    b.take_gene (at_right);
    b.world.yes_no_answers = {true};
    b.bench->close_tab (0);
    b.world.pass (2);
    EXPECT_EQ (b.bench->tabs ().count (), 1);
}

} // namespace
} // namespace ostrand::editor
