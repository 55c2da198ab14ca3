// A line that is edited: keys, replacement, selection, sizes, hit test.
#include "document/hit_test.h"
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
    TextPlace at{&line, 0};
    explicit Typing (const char* letters) : line (letters, 67, 0) {}
    void press (int key, bool shift = false) { at = at.line->key ({key, shift}, at.index); }
    int place () const { return at.index; }
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
    EXPECT_FALSE (t.line.chars ()[0].selected);
}

TEST (LineKeys, letters_go_before_the_cursor_in_the_style_before_it) {
    Typing t ("ab");
    t.line.sel_start = t.line.sel_end = 0;
    t.line.select_range ();
    t.line.set_style (74, no_color);
    t.press (keys::right);
    t.press ('x');
    EXPECT_EQ (t.line.chars_only (), "axb");
    EXPECT_EQ (t.line.chars ()[1].font, 74U);
    EXPECT_EQ (t.line.status, KeyStatus::changed);
    EXPECT_EQ (t.place (), 2);
    t.press (ctrl ('A'));
    t.press ('y'); // no entry before it: the style of the first
    EXPECT_EQ (t.line.chars ()[0].font, 74U);
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
    ASSERT_TRUE (t.line.sub (0));
    EXPECT_EQ (t.at.line, t.line.sub (0));
    EXPECT_EQ (t.at.line->font (), reduced_font (67));
    t.press ('1');
    EXPECT_EQ (t.at.line->chars_only (), "1");
    EXPECT_EQ (t.at.line->chars ()[0].font, reduced_font (67));
    t.press (keys::left, true);
    EXPECT_EQ (t.at.line, &t.line);
    EXPECT_EQ (t.place (), 0);
    t.press (keys::up, true);
    t.press ('2');
    t.press (keys::escape);
    EXPECT_EQ (t.place (), 0);
    PrintState to;
    t.line.fprint (to, 0);
    EXPECT_EQ (to.out, "{[Ea{<66F>1}{2}]<67F>b}");
    t.press (keys::escape); // a line of its own is not left
    EXPECT_EQ (t.at.line, &t.line);
    EXPECT_EQ (t.line.status, KeyStatus::cursor_only);
}

TEST (LineKeys, the_end_mark_takes_no_script) {
    Typing t ("");
    t.press (keys::down, true);
    EXPECT_EQ (t.at.line, &t.line);
    EXPECT_FALSE (t.line.sub (0));
}

TEST (LineKeys, other_keys_are_not_handled) {
    Typing t ("ab");
    for (const int key : {keys::up, keys::down, 13, 128, 159, 256, 0xffbe}) {
        t.press (key);
        EXPECT_EQ (t.line.status, KeyStatus::not_handled);
        EXPECT_EQ (t.place (), 0);
    }
    EXPECT_EQ (t.line.chars_only (), "ab");
}

TEST (LineKeys, control_codes_of_escape_and_delete_do_what_the_keys_do) {
    Typing t ("ab");
    t.press (keys::delete_code);
    EXPECT_EQ (t.line.chars_only (), "b");
    EXPECT_EQ (t.line.status, KeyStatus::layout_needed);
    t.press (keys::down, true);
    EXPECT_NE (t.at.line, &t.line);
    t.press (keys::escape_code);
    EXPECT_EQ (t.at, (TextPlace{&t.line, 0}));
}

TEST (LineKeys, letters_of_latin_1_are_typed) {
    Typing t ("");
    t.press (0xE9);
    t.press (0xB5);
    t.press (0xA0);
    t.press (0xFF);
    EXPECT_EQ (t.line.chars_only (), "\xE9\xB5\xA0\xFF");
    t.press (159);
    EXPECT_EQ (t.line.status, KeyStatus::not_handled);
}

TEST (LineKeys, cursor_of_the_line_is_where_the_key_left_it) {
    Typing t ("abc");
    t.press (ctrl ('E'));
    EXPECT_EQ (t.line.cursor, 3);
    t.press ('x');
    EXPECT_EQ (t.line.cursor, 4);
    t.press (keys::backspace);
    EXPECT_EQ (t.line.cursor, 3);
    t.press (ctrl ('A'));
    EXPECT_EQ (t.line.cursor, 0);
    t.press (ctrl ('D'));
    EXPECT_EQ (t.line.cursor, 0);
    t.press (ctrl ('K'));
    EXPECT_EQ (t.line.cursor, 0);
    EXPECT_EQ (t.line.count (), 1);
}

TEST (LineKeys, shift_left_leaves_a_script_and_plain_left_walks_in_it) {
    Typing t ("ab");
    t.press (keys::up, true);
    t.press ('1');
    t.press ('2');
    t.press (keys::left);
    EXPECT_EQ (t.at, (TextPlace{t.line.sup (0), 1}));
    t.press (keys::left, true);
    EXPECT_EQ (t.at, (TextPlace{&t.line, 0}));
    t.press (keys::up, true); // the same script again
    EXPECT_EQ (t.at, (TextPlace{t.line.sup (0), 0}));
    EXPECT_EQ (t.at.line->chars_only (), "12");
}

TEST (LineKeys, kill_to_the_end_keeps_what_is_before_the_cursor) {
    Typing t ("abcd");
    t.press (keys::right);
    t.press (keys::right);
    t.press (ctrl ('K'));
    EXPECT_EQ (t.line.chars_only (), "ab");
    t.press (ctrl ('K'));
    EXPECT_EQ (t.line.chars_only (), "ab");
    EXPECT_EQ (t.line.status, KeyStatus::cursor_only);
}

TEST (LineKeys, a_wild_place_counts_as_the_end) {
    Typing t ("ab");
    t.at.index = 77;
    t.press ('x');
    EXPECT_EQ (t.line.chars_only (), "abx");
    t.at.index = -5;
    t.press (keys::backspace);
    EXPECT_EQ (t.line.chars_only (), "ab");
}

TEST (Line, replace_takes_markup_and_keeps_the_end_mark) {
    Line line ("abc", 74, 9);
    const int behind = line.replace (1, 2, "x_{y}z");
    EXPECT_EQ (line.count (), 5);
    EXPECT_EQ (behind, 3);
    EXPECT_EQ (line.chars ()[1].font, 74U);
    EXPECT_EQ (line.chars ()[1].color, 9U);
    EXPECT_EQ (line.replace (9, -1, "q"), -1);
    line.replace (-3, -1, "");
    EXPECT_EQ (line.count (), 1);
    line.replace (0, 50, "n", 66, 4);
    EXPECT_EQ (line.chars_only (), "n");
    EXPECT_EQ (line.chars ()[0].font, 66U);
    EXPECT_EQ (Line::prev_of (1), 0);
    EXPECT_EQ (Line::prev_of (0), 0);
}

TEST (Line, words_are_selected_up_to_blanks) {
    Line line ("one two six", 67, 0);
    line.select_word (5);
    EXPECT_EQ (line.sel_start, 4);
    EXPECT_EQ (line.sel_end, 6);
    PrintState to;
    line.selected_sprint (to, 0, 0);
    EXPECT_EQ (to.out, "two");
    line.select_word (10);
    EXPECT_EQ (line.sel_end, 10); // not the end mark
    EXPECT_EQ (line.replace_selection ("2"), 9);
    EXPECT_EQ (line.chars_only (), "one two 2");
    EXPECT_EQ (line.sel_start, -1);
    EXPECT_EQ (line.replace_selection ("3"), -1);
    line.select_word (3); // a blank stands for itself
    EXPECT_EQ (line.sel_start, 3);
    EXPECT_EQ (line.sel_end, 3);
}

TEST (Line, all_of_it_is_selected_but_the_end_mark) {
    Line line ("abc", 67, 0);
    line.select_all ();
    EXPECT_EQ (line.sel_start, 0);
    EXPECT_EQ (line.sel_end, 2);
    EXPECT_TRUE (line.chars ()[2].selected);
    EXPECT_FALSE (line.chars ()[3].selected);
    Line empty ("", 67, 0);
    empty.select_all ();
    EXPECT_EQ (empty.sel_start, -1);
}

TEST (Line, style_is_set_on_selected_letters_only) {
    Line line ("abc", 67, 0);
    line.sel_start = line.sel_end = 1;
    line.select_range ();
    const float before = line.get_width ();
    EXPECT_TRUE (line.set_style (74, 4));
    EXPECT_EQ (line.chars ()[0].font, 67U);
    EXPECT_EQ (line.chars ()[1].font, 74U);
    EXPECT_EQ (line.chars ()[1].color, 4U);
    EXPECT_NE (line.get_width (), before);
    EXPECT_FALSE (line.set_style (74, 4)); // is so already
    EXPECT_FALSE (line.set_style (no_font, no_color));
}

TEST (Line, style_without_a_selection_is_set_on_the_letter_at_the_cursor) {
    Line line ("abc", 67, 0);
    EXPECT_FALSE (line.set_style (74, 4)); // no cursor either
    line.cursor = 2;
    EXPECT_TRUE (line.set_style (no_font, 4));
    EXPECT_EQ (line.chars ()[1].color, 0U);
    EXPECT_EQ (line.chars ()[2].color, 4U);
    EXPECT_EQ (line.chars ()[2].font, 67U);
    line.cursor = 3; // what is typed first into an empty line takes the end mark's style
    EXPECT_TRUE (line.set_style (74, no_color));
    EXPECT_EQ (line.chars ()[3].font, 74U);
}

TEST (Line, markup_is_pasted_at_the_cursor_or_over_the_selection) {
    Line line ("abc", 74, 4);
    line.cursor = 1;
    EXPECT_TRUE (line.paste_markup ("x_{1}<66F>y"));
    EXPECT_EQ (line.chars_only (), "axybc");
    EXPECT_EQ (line.cursor, 3);
    EXPECT_EQ (line.chars ()[1].font, 67U); // markup says its own style
    EXPECT_EQ (line.chars ()[2].font, 66U);
    EXPECT_TRUE (line.sub (1));
    line.select_all ();
    EXPECT_TRUE (line.paste_markup ("z"));
    EXPECT_EQ (line.chars_only (), "z");
    EXPECT_FALSE (line.paste_markup (""));
    EXPECT_EQ (line.sel_start, -1);
}

TEST (Line, letters_are_pasted_as_they_stand) {
    Line line ("abc", 74, 4);
    line.cursor = 3;
    EXPECT_TRUE (line.paste_letters ("x_{1}\n\x80\xE9"));
    EXPECT_EQ (line.chars_only (), "abcx_{1}\xE9");
    EXPECT_EQ (line.chars ()[4].font, 74U);
    EXPECT_EQ (line.chars ()[4].color, 4U);
    EXPECT_EQ (line.cursor, 9);
    line.sel_start = 0;
    line.sel_end = 7;
    line.select_range ();
    EXPECT_TRUE (line.paste_letters ("q"));
    EXPECT_EQ (line.chars_only (), "q\xE9");
    EXPECT_EQ (line.cursor, 1);
    EXPECT_FALSE (line.paste_letters ("\n\x90"));
}

TEST (Line, copied_markup_pastes_as_it_was) {
    const auto from = line_from_markup ("a<74F><4C>b_{c}<66F>d", 67, 0);
    from->select_all ();
    PrintState to;
    from->selected_sprint (to, 0, 0);
    Line line ("", 66, 9);
    EXPECT_TRUE (line.paste_markup (to.out));
    PrintState pasted;
    line.fprint (pasted, 0);
    EXPECT_EQ (pasted.out, '{' + to.out + '}');
}

TEST (Line, cursor_follows_a_distance) {
    Line line ("aa bb cc", 67, 0);
    line.cursor = 0;
    const float wide = line.width_at (0);
    EXPECT_TRUE (line.move_cursor_to (wide * 1.5F));
    EXPECT_EQ (line.cursor, 1);
    EXPECT_FALSE (line.move_cursor_to (wide * 0.5F));
    EXPECT_TRUE (line.move_cursor_to (-100));
    EXPECT_EQ (line.cursor, 0);
    EXPECT_TRUE (line.move_cursor_to (1e9F));
    EXPECT_EQ (line.cursor, 8);
}

TEST (Line, selection_follows_a_distance_by_words_or_by_letters) {
    Line line ("aa bb cc", 67, 0);
    line.cursor = 1;
    const float to_b = line.width_at (1) + line.width_at (2) + 1;
    EXPECT_TRUE (line.extend_selection_to (to_b, SelectBy::words));
    EXPECT_EQ (line.sel_start, 0);
    EXPECT_EQ (line.sel_end, 4);
    EXPECT_FALSE (line.extend_selection_to (to_b, SelectBy::words));
    EXPECT_TRUE (line.extend_selection_to (to_b, SelectBy::letters));
    EXPECT_EQ (line.sel_start, 1);
    EXPECT_EQ (line.sel_end, 3);
    EXPECT_TRUE (line.chars ()[3].selected);
    EXPECT_FALSE (line.chars ()[4].selected);
    EXPECT_TRUE (line.extend_selection_to (-1, SelectBy::letters)); // backwards
    EXPECT_EQ (line.sel_start, 0);
    EXPECT_EQ (line.sel_end, 1);
    EXPECT_EQ (line.cursor, 1);
}

TEST (Line, changes_of_the_text_keep_the_cursor_on_its_entry) {
    Line line ("abcd", 67, 0);
    line.cursor = 2;
    line.replace (0, 1, "xyz");
    EXPECT_EQ (line.cursor, 4);
    EXPECT_EQ (line.chars ()[4].code, static_cast<unsigned> ('c'));
    line.replace (3, 5, ""); // b and c themselves
    EXPECT_EQ (line.cursor, 3);
    line.replace (0, 1, "");
    EXPECT_EQ (line.cursor, 2);
    line.insert_before (2, StdChar ('q', 67, 0));
    EXPECT_EQ (line.cursor, 3);
}

TEST (Line, offset_stays_behind_its_limits) {
    Line line ("a", 67, 0);
    EXPECT_TRUE (line.set_offset (-50, 3, -20, -10));
    EXPECT_EQ (line.x (), -20.0F);
    EXPECT_EQ (line.y (), 3.0F);
    EXPECT_FALSE (line.set_offset (-60, 3, -20, -10));
}

TEST (Line, a_limit_never_moves_against_the_direction) {
    Line line ("a", 67, 0);
    line.set_offset (-50, -30);
    EXPECT_FALSE (line.set_offset (-60, -31, -20, -10)); // stays where it is
    EXPECT_EQ (line.x (), -50.0F);
    EXPECT_TRUE (line.set_offset (-45, -29, -20, -10)); // nearer, though not behind them yet
    EXPECT_EQ (line.x (), -45.0F);
    EXPECT_EQ (line.y (), -29.0F);
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
    const Line line ("ab", 67, 0);
    EXPECT_EQ (line.get_width (), line.width_at (0) + line.width_at (1));
    EXPECT_EQ (line.get_height (), line.get_ascent () + line.get_descent ());
    EXPECT_EQ (Line ("", 67, 0).get_width (), 0.0F);
    EXPECT_EQ (Line ("", 67, 0).get_height (), line.get_height ());
}

TEST (Line, size_follows_every_change_also_deep_inside) {
    Node n (0, 0, node::protein, 7, "ab");
    Line& line = *n.label_line ();
    const float before = n.get_width ();
    line.set_script (0, false, std::make_unique<Line> ("x", 66, 0));
    const float with_script = n.get_width ();
    EXPECT_GT (with_script, before);
    line.sub (0)->insert_before (-1, StdChar ('y', 66, 0));
    EXPECT_GT (n.get_width (), with_script);
    line.sub (0)->set_script (0, true, std::make_unique<Line> ("zz", 65, 0));
    const float deeper = n.get_width ();
    line.sub (0)->sup (0)->replace (0, -1, "");
    EXPECT_LT (n.get_width (), deeper);
}

TEST (Line, scripts_stand_beside_their_letter) {
    const auto line = line_from_markup ("a_{b}^{cc}", 67, 0);
    const FontMetrics& metrics = *font_metrics (67);
    const Line& sub = *line->sub (0);
    const Line& sup = *line->sup (0);
    const float w = metrics.width_of ('a');
    EXPECT_EQ (line->width_at (0), w + sup.get_width () + 1);
    EXPECT_EQ (line->script_place (0, true),
               (Point{w + 1, static_cast<float> (7 - metrics.ascent)}));
    EXPECT_EQ (line->script_place (0, false),
               (Point{w + 1, static_cast<float> (sub.get_ascent () - 8)}));
    EXPECT_EQ (line->size_at (0).ascent, metrics.ascent + sup.get_ascent () - 7);
    EXPECT_EQ (line->size_at (0).descent, std::max (metrics.descent, sub.get_height () - 8));
}

TEST (Line, end_mark_is_as_wide_as_an_n) {
    const Line line ("n", 67, 0);
    EXPECT_EQ (line.width_at (1), line.width_at (0));
}

TEST (Line, hit_test_gives_the_letter_and_the_script) {
    const auto line = line_from_markup ("xa_{b}", 67, 0);
    line->set_offset (10, 50);
    const float w = line->width_at (0);
    const Hit x = line->find_at (11, 50, {});
    EXPECT_EQ (x.kind (), CharKind::std_char);
    EXPECT_EQ (x.line, line.get ());
    EXPECT_EQ (x.letter, 0);
    EXPECT_EQ (x.rel_x, 1.0F);
    const Point place = line->script_place (1, false);
    const Hit b = line->find_at (10 + w + place.x + 1, 50 + place.y, {});
    EXPECT_EQ (b.line, line->sub (1));
    EXPECT_EQ (b.letter, 0);
    EXPECT_FALSE (line->find_at (9, 50, {}));
    EXPECT_FALSE (line->find_at (10 + line->get_width (), 50, {}));
    const float bottom = 50 + static_cast<float> (line->get_descent ());
    const float top = 50 - static_cast<float> (line->get_ascent ());
    EXPECT_TRUE (line->find_at (11, bottom, {})); // the edges are in
    EXPECT_TRUE (line->find_at (11, top, {}));
    EXPECT_FALSE (line->find_at (11, bottom + 1, {}));
    EXPECT_FALSE (line->find_at (11, top - 1, {}));
}

TEST (Line, hit_test_gives_a_picture_where_it_stands) {
    const auto line = line_from_markup ("x[P0 20 10 none.png]", 67, 0);
    line->lay_out ();
    const float w = line->width_at (0);
    const Hit hit = line->find_at (w + 5, -5, {});
    ASSERT_TRUE (hit);
    EXPECT_EQ (hit.kind (), CharKind::picture);
    EXPECT_EQ (hit.object, line->chars ()[1].item ());
    EXPECT_EQ (hit.line, line.get ());
    EXPECT_EQ (line->find_at (w - 1, -5, {}).letter, 0);
}

TEST (Line, equality_looks_at_letters_and_scripts_only) {
    const auto a = line_from_markup ("K_{m}", 67, 0);
    const auto b = line_from_markup ("K_{m}", 74, 4);
    const auto c = line_from_markup ("K^{m}", 67, 0);
    EXPECT_TRUE (a->equals (*b));
    EXPECT_FALSE (a->equals (*c));
    EXPECT_FALSE (a->equals (Line ("K", 67, 0)));
}

TEST (Line, equal_lines_have_one_identity) {
    const auto identity = [] (const char* markup) {
        Identity value;
        EXPECT_TRUE (line_from_markup (markup, 67, 0)->add_identity (value));
        return value.value ();
    };
    EXPECT_EQ (identity ("K_{m}"), identity ("<74F><4C>K_{m}"));
    EXPECT_NE (identity ("K_{m}"), identity ("K^{m}"));
    EXPECT_NE (identity ("K_{m}"), identity ("K_{m}^{}"));
    EXPECT_NE (identity ("ab"), identity ("ba"));
    EXPECT_NE (identity ("a"), identity ("aa"));
}

TEST (Char, ancestor_that_is_a_graph_object) {
    Node n (0, 0, node::protein, 7, "a_");
    EXPECT_EQ (n.label_line ()->get_object (), &n);
    n.label_line ()->set_script (0, false, std::make_unique<Line> ("x", 66, 0));
    EXPECT_EQ (n.label_line ()->sub (0)->get_object (), &n);
    Line loose ("a", 67, 0);
    ::testing::internal::CaptureStderr ();
    EXPECT_EQ (loose.get_object (), nullptr);
    EXPECT_EQ (::testing::internal::GetCapturedStderr (), "get_object: ancestor == 0\n");
    EXPECT_EQ (loose.find_object (), nullptr); // asks without a word
}

} // namespace
} // namespace ostrand::document
