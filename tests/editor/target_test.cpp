// What the mouse does, by keys alone.
#include "bench.h"

#include "editor/popup_menus.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <set>

namespace ostrand::editor {
namespace {

using document::Node;
using test::Bench;
using Strings = std::vector<std::string>;

constexpr int f6 = 0xffc3;
constexpr int f7 = 0xffc4;
constexpr int f8 = 0xffc5;
constexpr int f9 = 0xffc6;
constexpr int f10 = 0xffc7;
constexpr int menu_key = 0xff67;

struct Rich : Bench {
    Rich () { open_rich (); }
    Strings added () { return records (1); }
    std::string id (const document::GraphBase& object) { return std::to_string (object.id ()); }
    bool press_key (int key, Modifiers held = {}) { return canvas ().key_down ({key, {}, held}); }
    /// F6 until the pointer is on an object; false when it never is.
    bool go_to (const document::GraphBase& object) {
        for (int i = 0; i < 100; ++i) {
            press_key (f6);
            if (canvas ().hover () == &object) return true;
        }
        return false;
    }
};

TEST (keyboard_pointer, F6_goes_to_every_object_and_comes_round) {
    Rich b;
    std::set<const document::GraphBase*> seen;
    for (int i = 0; i < 60; ++i) {
        EXPECT_TRUE (b.press_key (f6));
        if (b.canvas ().hover () != nullptr) seen.insert (b.canvas ().hover ());
    }
    for (const auto& n : b.network ().nodes ()) {
        EXPECT_TRUE (seen.contains (n.get ())) << n->id ();
        for (const auto& a : n->arcs ()) EXPECT_TRUE (seen.contains (a.get ())) << a->id ();
    }
    for (const auto& c : b.network ().comps ()) EXPECT_TRUE (seen.contains (c.get ())) << c->id ();
    EXPECT_EQ (b.added (), Strings ());
}

TEST (keyboard_pointer, Shift_F6_goes_back) {
    Rich b;
    b.press_key (f6);
    b.press_key (f6);
    const Gesture there = b.canvas ().gesture;
    b.press_key (f6);
    b.press_key (f6, test::shift);
    EXPECT_EQ (b.canvas ().gesture.pointer_x, there.pointer_x);
    EXPECT_EQ (b.canvas ().gesture.pointer_y, there.pointer_y);
}

TEST (keyboard_pointer, F7_selects_and_with_Shift_links) {
    Rich b;
    ASSERT_TRUE (b.go_to (b.node ("G")));
    b.press_key (f7);
    EXPECT_EQ (b.added (), Strings{"selection " + b.id (b.node ("G"))});
    ASSERT_TRUE (b.go_to (b.node ("R")));
    b.world.pass (1);
    b.press_key (f7, test::shift);
    EXPECT_NE (document::Network::arc_from_to (b.node ("G"), b.node ("R")), nullptr);
    EXPECT_EQ (b.undo_and_redo (), "");
}

TEST (keyboard_pointer, F7_with_Ctrl_adds_to_the_selection) {
    Rich b;
    b.go_to (b.node ("G"));
    b.press_key (f7);
    b.go_to (b.node ("R"));
    b.world.pass (1);
    b.press_key (f7, test::ctrl);
    EXPECT_EQ (b.selected ().size (), 2U);
    b.press_key (document::keys::right);
    EXPECT_EQ (b.added ().back (), "move 1 0");
}

TEST (keyboard_pointer, F7_on_a_text_edits_it) {
    Rich b;
    for (int i = 0; i < 60 && b.canvas ().mode != Mode::text; ++i) {
        b.press_key (f6);
        b.world.pass (1);
        b.press_key (f7);
    }
    ASSERT_EQ (b.canvas ().mode, Mode::text);
    b.key ('x');
    EXPECT_TRUE (b.added ().back ().starts_with ("labels "));
    EXPECT_EQ (b.undo_and_redo (), "");
}

TEST (keyboard_pointer, F8_asks_for_a_concentration) {
    Rich b;
    b.go_to (b.node ("glc"));
    b.world.value_answers = {"5 mM"};
    b.press_key (f8);
    EXPECT_EQ (b.world.questions.back (), "Concentration: |Init. Concentration|1 mM, 2 mM");
    ASSERT_NE (b.node ("glc").user_data (), nullptr);
    EXPECT_EQ (*b.node ("glc").user_data (), "5 mM");
}

TEST (keyboard_pointer, F9_the_menu_key_and_Shift_F10_open_the_menu_of_an_object) {
    for (const auto& [key, held] :
         {std::pair{f9, test::no_keys}, std::pair{menu_key, test::no_keys},
          std::pair{f10, test::shift}}) {
        Rich b;
        b.go_to (b.node ("G"));
        b.world.popup_answers = {document::node::kind::protein};
        b.press_key (key, held);
        EXPECT_EQ (b.added ().size (), 1U) << key;
        EXPECT_TRUE (b.added ().back ().starts_with ("kind ")) << key;
    }
}

TEST (keyboard_pointer, F9_with_Ctrl_chooses_a_colour) {
    Rich b;
    b.go_to (b.node ("G"));
    b.world.popup_answers = {1};
    b.press_key (f9, test::ctrl);
    EXPECT_EQ (b.added (), Strings{"colour " + b.id (b.node ("G")) + " 1"});
}

TEST (keyboard_pointer, F10_alone_is_left_to_the_menu_bar) {
    Rich b;
    EXPECT_FALSE (b.press_key (f10));
}

TEST (keyboard_pointer, arrow_keys_move_the_text_of_an_arc_that_is_pointed_at) {
    Rich b;
    for (int i = 0; i < 60 && b.canvas ().selected_field () == nullptr; ++i) b.press_key (f6);
    ASSERT_NE (b.canvas ().selected_field (), nullptr);
    b.press_key (document::keys::down);
    EXPECT_TRUE (b.added ().back ().starts_with ("labels "));
    EXPECT_EQ (b.undo_and_redo (), "");
}

TEST (keyboard_pointer, what_is_out_of_the_window_comes_into_it) {
    Rich b;
    b.canvas ().resize (200, 150);
    ASSERT_TRUE (b.go_to (b.node ("f6p")));
    EXPECT_GT (b.canvas ().gesture.pointer_x, 0);
    EXPECT_LT (b.canvas ().gesture.pointer_x, 200);
    EXPECT_GT (b.canvas ().gesture.pointer_y, 0);
    EXPECT_LT (b.canvas ().gesture.pointer_y, 150);
    b.press_key (f7);
    EXPECT_TRUE (b.canvas ().selection.contains (b.node ("f6p")));
}

TEST (keyboard_pointer, an_empty_canvas_and_a_deleted_object_are_no_trouble) {
    Bench empty;
    EXPECT_TRUE (empty.canvas ().key_down ({f6, {}, {}}));
    Rich b;
    b.go_to (b.node ("G"));
    b.press_key (f7);
    b.key (document::keys::delete_code);
    EXPECT_TRUE (b.press_key (f6));
}

TEST (pinch, zooms_around_the_place_between_the_fingers) {
    Rich b;
    const Pointer at{.x = 300, .y = 200, .modifiers = {}};
    const float x = at.x / b.canvas ().view.zoom () - b.network ().x ();
    b.canvas ().pinch (50, at);
    EXPECT_FLOAT_EQ (b.canvas ().view.zoom (), 1.5F);
    EXPECT_NEAR (at.x / b.canvas ().view.zoom () - b.network ().x (), x, 1);
    b.canvas ().pinch (-100, at);
    EXPECT_FLOAT_EQ (b.canvas ().view.zoom (), least_zoom);
    b.canvas ().pinch (100000, at);
    EXPECT_FLOAT_EQ (b.canvas ().view.zoom (), most_zoom);
}

TEST (wheel, scrolls_along_both_axes_at_once) {
    Rich b;
    const float x = b.network ().x ();
    const float y = b.network ().y ();
    b.canvas ().wheel (1, -2, {.x = 100, .y = 100, .modifiers = {}});
    EXPECT_EQ (b.network ().x (), x - 32);
    EXPECT_EQ (b.network ().y (), y + 64);
}

} // namespace
} // namespace ostrand::editor
