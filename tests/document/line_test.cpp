// A line that is edited: keys, replacement, selection, sizes, hit test.
#include "document/document_state.h"
#include "document/line.h"
#include "document/markup.h"
#include "document/node.h"
#include "support/support.h"

#include <gtest/gtest.h>

namespace ostrand::document {
namespace {

constexpr int ctrl (char c) { return c - 'A' + 1; }

/// A line with a cursor, as an editor drives it.
struct Typing {
    Line line;
    Line* active = &line;
    Char* cursor;
    explicit Typing (const char* letters)
        : line (letters, 67, 0), cursor (line.chars ()[0].get ()) {}
    void press (int key, bool shift = false) {
        Line* out = nullptr;
        cursor = active->key ({key, shift}, cursor, out);
        active = out;
    }
    int place () const { return active->index_of (cursor); }
};

TEST (LineKeys, movement) {
    Typing t ("abc");
    t.press (ctrl ('E'));
    EXPECT_EQ (t.place (), 3);
    EXPECT_EQ (t.line.status, KeyStatus::cursor_only);
    t.press (ctrl ('F'));
    EXPECT_EQ (t.place (), 3);
    t.press (ctrl ('B'));
    t.press (keys::left);
    EXPECT_EQ (t.place (), 1);
    t.press (keys::right);
    EXPECT_EQ (t.place (), 2);
    t.press (ctrl ('A'));
    EXPECT_EQ (t.place (), 0);
    t.press (keys::left);
    EXPECT_EQ (t.place (), 0);
}

TEST (LineKeys, movement_clears_the_selection) {
    Typing t ("abc");
    t.line.sel_start = 0;
    t.line.sel_end = 1;
    t.line.select_range ();
    t.press (keys::right);
    EXPECT_EQ (t.line.sel_start, -1);
    EXPECT_FALSE (t.line.chars ()[0]->selected);
}

TEST (LineKeys, letters_go_before_the_cursor_in_the_style_before_it) {
    Typing t ("ab");
    static_cast<StdChar&> (*t.line.chars ()[0]).font = 74;
    t.press (keys::right);
    document_state ().layout_dirty = false;
    t.press ('x');
    EXPECT_EQ (t.line.chars_only (), "axb");
    EXPECT_EQ (t.line.chars ()[1]->font, 74U);
    EXPECT_EQ (t.line.status, KeyStatus::changed);
    EXPECT_TRUE (document_state ().layout_dirty);
    EXPECT_EQ (t.place (), 2);
    t.press (ctrl ('A'));
    t.press ('y'); // no entry before it: the style of the first
    EXPECT_EQ (t.line.chars ()[0]->font, 74U);
}

TEST (LineKeys, deletion) {
    Typing t ("abcd");
    t.press (ctrl ('D'));
    EXPECT_EQ (t.line.chars_only (), "bcd");
    EXPECT_EQ (t.line.status, KeyStatus::layout_needed);
    EXPECT_EQ (t.place (), 0);
    t.press (ctrl ('H'));
    EXPECT_EQ (t.line.chars_only (), "bcd"); // at the first entry nothing
    EXPECT_EQ (t.line.status, KeyStatus::cursor_only);
    t.press (keys::right);
    t.press (keys::backspace);
    EXPECT_EQ (t.line.chars_only (), "cd");
    t.press (keys::right);
    t.press (ctrl ('K'));
    EXPECT_EQ (t.line.chars_only (), "c");
    t.press (keys::backspace);
    EXPECT_EQ (t.line.count (), 1);
    t.press (keys::delete_key);
    EXPECT_EQ (t.line.count (), 1); // a line of one entry stays
    EXPECT_EQ (t.line.status, KeyStatus::cursor_only);
}

TEST (LineKeys, selection_is_deleted_or_replaced) {
    Typing t ("abcd");
    t.line.sel_start = 1;
    t.line.sel_end = 2;
    t.line.select_range ();
    t.press ('x');
    EXPECT_EQ (t.line.chars_only (), "axd");
    EXPECT_EQ (t.line.status, KeyStatus::changed);
    t.line.sel_start = 0;
    t.line.sel_end = 1;
    t.press (keys::delete_key);
    EXPECT_EQ (t.line.chars_only (), "d");
    EXPECT_EQ (t.line.status, KeyStatus::layout_needed);
}

TEST (LineKeys, scripts_are_entered_made_and_left) {
    Typing t ("ab");
    t.press (keys::down, true);
    ASSERT_TRUE (static_cast<StdChar&> (*t.line.chars ()[0]).sub);
    EXPECT_NE (t.active, &t.line);
    EXPECT_EQ (t.active->font, reduced_font (67));
    t.press ('1');
    EXPECT_EQ (t.active->chars_only (), "1");
    EXPECT_EQ (t.active->chars ()[0]->font, reduced_font (67));
    t.press (keys::left, true);
    EXPECT_EQ (t.active, &t.line);
    EXPECT_EQ (t.place (), 0);
    t.press (keys::up, true);
    t.press ('2');
    t.press (keys::escape);
    EXPECT_EQ (t.place (), 0);
    PrintState to;
    t.line.fprint (to, 0);
    EXPECT_EQ (to.out, "{[Ea{<66F>1}{2}]<67F>b}");
    t.press (keys::escape); // a line of its own is not left
    EXPECT_EQ (t.active, &t.line);
    EXPECT_EQ (t.line.status, KeyStatus::cursor_only);
}

TEST (LineKeys, the_end_mark_takes_no_script) {
    Typing t ("");
    t.press (keys::down, true);
    EXPECT_EQ (t.active, &t.line);
    EXPECT_FALSE (static_cast<StdChar&> (*t.line.chars ()[0]).sub);
}

TEST (LineKeys, other_keys_are_not_handled) {
    Typing t ("ab");
    for (const int key : {keys::up, keys::down, 13, 127, 0xffbe}) {
        t.press (key);
        EXPECT_EQ (t.line.status, KeyStatus::not_handled);
        EXPECT_EQ (t.place (), 0);
    }
    EXPECT_EQ (t.line.chars_only (), "ab");
}

TEST (Line, replace_takes_markup_and_keeps_the_end_mark) {
    Line line ("abc", 74, 9);
    Char* behind = line.replace (1, 2, "x_{y}z");
    EXPECT_EQ (line.count (), 5);
    EXPECT_EQ (behind, line.chars ()[3].get ());
    EXPECT_EQ (line.chars ()[1]->font, 74U);
    EXPECT_EQ (line.chars ()[1]->color, 9U);
    EXPECT_EQ (line.replace (9, -1, "q"), nullptr);
    line.replace (-3, -1, "");
    EXPECT_EQ (line.count (), 1);
    line.replace (0, 50, "n", 66, 4);
    EXPECT_EQ (line.chars_only (), "n");
    EXPECT_EQ (line.chars ()[0]->font, 66U);
    EXPECT_EQ (line.prev_of (line.chars ()[1].get ()), line.chars ()[0].get ());
    EXPECT_EQ (line.prev_of (line.chars ()[0].get ()), line.chars ()[0].get ());
}

TEST (Line, words_are_selected_up_to_blanks) {
    Line line ("one two six", 67, 0);
    line.select_word (line.chars ()[5].get ());
    EXPECT_EQ (line.sel_start, 4);
    EXPECT_EQ (line.sel_end, 6);
    PrintState to;
    line.selected_sprint (to, 0, 0);
    EXPECT_EQ (to.out, "two");
    line.select_word (line.chars ()[10].get ());
    EXPECT_EQ (line.sel_end, 10); // not the end mark
    line.replace_selection ("2");
    EXPECT_EQ (line.chars_only (), "one two 2");
    EXPECT_EQ (line.sel_start, -1);
}

TEST (Line, style_is_set_on_selected_letters_only) {
    Line line ("abc", 67, 0);
    line.sel_start = line.sel_end = 1;
    line.select_range ();
    line.set_style (74, 4);
    EXPECT_EQ (line.chars ()[0]->font, 67U);
    const auto& b = static_cast<StdChar&> (*line.chars ()[1]);
    EXPECT_EQ (b.font, 74U);
    EXPECT_EQ (b.color, 4U);
    EXPECT_EQ (b.metrics, font_metrics (74));
}

TEST (Line, cursor_and_selection_follow_a_distance) {
    Line line ("aa bb cc", 67, 0);
    line.cursor = line.chars ()[0].get ();
    const float wide = line.chars ()[0]->get_width ();
    bool changed = false;
    EXPECT_EQ (line.move_cursor_to (wide * 1.5F, changed), line.chars ()[1].get ());
    EXPECT_TRUE (changed);
    line.move_cursor_to (-100, changed);
    EXPECT_EQ (line.cursor, line.chars ()[0].get ());
    line.extend_selection_to (wide * 2.5F + line.chars ()[2]->get_width (), changed);
    EXPECT_TRUE (changed);
    EXPECT_EQ (line.sel_start, 0);
    EXPECT_EQ (line.sel_end, 4);
    line.move_cursor_to (1e9F, changed);
    EXPECT_EQ (line.cursor, line.chars ().back ().get ());
}

TEST (Line, offset_stays_behind_its_limits) {
    Line line ("a", 67, 0);
    EXPECT_TRUE (line.set_offset (-50, 3, -20, -10));
    EXPECT_EQ (line.x, -20.0F);
    EXPECT_EQ (line.y, 3.0F);
    EXPECT_FALSE (line.set_offset (-60, 3, -20, -10));
}

TEST (Line, contains_a_run_of_letters) {
    const Line line ("glucose", 67, 0);
    EXPECT_TRUE (line.contains (Line ("cos", 74, 4)));
    EXPECT_TRUE (line.contains (Line ("glucose", 67, 0)));
    EXPECT_FALSE (line.contains (Line ("coz", 67, 0)));
    EXPECT_FALSE (line.contains (Line ("glucoses", 67, 0)));
}

TEST (Line, plain_letters_leave_scripted_ones_out) {
    const auto line = line_from_markup ("aK_{m}b", 67, 0);
    EXPECT_EQ (line->chars_only (), "aKb");
    EXPECT_EQ (line->plain_chars (), "ab");
}

TEST (Line, size_is_the_sum_of_widths_and_the_largest_heights) {
    Line line ("ab", 67, 0);
    EXPECT_EQ (line.get_width (), line.chars ()[0]->get_width () + line.chars ()[1]->get_width ());
    EXPECT_EQ (line.get_height (), line.get_ascent () + line.get_descent ());
    EXPECT_EQ (Line ("", 67, 0).get_width (), 0.0F);
    EXPECT_EQ (Line ("", 67, 0).get_height (), line.get_height ());
}

TEST (Line, scripts_stand_beside_their_letter) {
    const auto line = line_from_markup ("a_{b}^{cc}", 67, 0);
    const auto& a = static_cast<StdChar&> (*line->chars ()[0]);
    const float w = a.metrics->width_of ('a');
    EXPECT_EQ (a.get_width (), w + a.sup->get_width () + 1);
    EXPECT_EQ (a.sup->x, w + 1);
    EXPECT_EQ (a.sup->y, static_cast<float> (7 - a.metrics->ascent));
    EXPECT_EQ (a.sub->x, w + 1);
    EXPECT_EQ (a.sub->y, static_cast<float> (a.sub->get_ascent () - 8));
    EXPECT_EQ (a.get_ascent (), a.metrics->ascent + a.sup->get_ascent () - 7);
    EXPECT_EQ (a.get_descent (), std::max (a.metrics->descent, a.sub->get_height () - 8));
}

TEST (Line, end_mark_is_as_wide_as_an_n) {
    const Line line ("n", 67, 0);
    EXPECT_EQ (line.chars ()[1]->get_width (), line.chars ()[0]->get_width ());
}

TEST (Line, hit_test_gives_the_letter_and_the_script) {
    const auto line = line_from_markup ("xa_{b}", 67, 0);
    line->x = 10;
    line->y = 50;
    const float w = line->chars ()[0]->get_width ();
    HitPlace place;
    EXPECT_EQ (line->find_at (11, 50, place), line->chars ()[0].get ());
    EXPECT_EQ (place.line, line.get ());
    EXPECT_EQ (place.rel_x, 1.0F);
    auto& a = static_cast<StdChar&> (*line->chars ()[1]);
    a.get_width ();
    EXPECT_EQ (line->find_at (10 + w + a.sub->x + 1, 50 + a.sub->y, place),
               a.sub->chars ()[0].get ());
    EXPECT_EQ (place.line, a.sub.get ());
    EXPECT_EQ (line->find_at (9, 50, place), nullptr);
    EXPECT_EQ (line->find_at (10 + line->get_width (), 50, place), nullptr);
    EXPECT_EQ (line->find_at (11, 50 + static_cast<float> (line->get_descent ()) + 1, place),
               nullptr);
}

TEST (Line, equality_looks_at_letters_and_scripts_only) {
    const auto a = line_from_markup ("K_{m}", 67, 0);
    const auto b = line_from_markup ("K_{m}", 74, 4);
    const auto c = line_from_markup ("K^{m}", 67, 0);
    EXPECT_TRUE (a->equals (*b));
    EXPECT_FALSE (a->equals (*c));
    EXPECT_FALSE (a->equals (Line ("K", 67, 0)));
    EXPECT_FALSE (a->equals (*a->chars ()[0]));
}

TEST (Char, ancestor_that_is_a_graph_object) {
    Node n (0, 0, node::protein, 7, "a_");
    EXPECT_EQ (n.label_line ()->chars ()[0]->get_object (), &n);
    Line loose ("a", 67, 0);
    ::testing::internal::CaptureStderr ();
    EXPECT_EQ (loose.chars ()[0]->get_object (), nullptr);
    EXPECT_EQ (::testing::internal::GetCapturedStderr (), "get_object: ancestor == 0\n");
}

} // namespace
} // namespace ostrand::document
