// Places of blocks, by numbers: letters are 7 wide, lines 14 high (11 above the base line).
#include "manual/layout.h"

#include "fixed_measure.h"
#include "manual/generator.h"
#include "manual/reader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace ostrand::manual {
namespace {

using ostrand::testing::FixedMeasure;
using ostrand::testing::page_of;

constexpr int letter = 7;
constexpr int line = 14;
constexpr int ascent = 11;

struct LaidOut {
    LaidOut (std::string_view body, int width) : page (read_html (page_of (body))) {
        measure.images = {{"tall.png", {30, 100}}, {"wide.png", {500, 5}}};
        measure_page (page, measure);
        layout_page (page, measure, width);
    }
    /// The block that shows a word.
    const Block& word (std::string_view text) const {
        for (const auto& block : page.blocks) {
            std::string own;
            block->text_out (own);
            if (own == text) return *block;
        }
        ADD_FAILURE () << "no word " << text;
        return *page.blocks.front ();
    }
    const Block& of_kind (BlockKind kind) const {
        for (const auto& block : page.blocks) {
            if (block->kind == kind) return *block;
        }
        ADD_FAILURE () << "no such block";
        return *page.blocks.front ();
    }

    FixedMeasure measure;
    Document page;
};

/// A window as wide as its margins, its bar and so many letters.
constexpr int room_for (int letters) { return left_margin + letters * letter + bar_width; }

TEST (layout, begins_at_the_left_margin) {
    const LaidOut made ("ab cd", 400);
    EXPECT_EQ (made.word ("ab").x, 8);
    EXPECT_EQ (made.word ("ab").y, ascent);
    EXPECT_EQ (made.word ("cd").x, 8 + 3 * letter);
    EXPECT_EQ (made.word ("cd").y, ascent);
    EXPECT_EQ (made.page.height_of_text, line);
}

TEST (layout, a_word_fits_up_to_the_scroll_bar_and_not_a_pixel_more) {
    EXPECT_EQ (LaidOut ("ab cd", room_for (5)).word ("cd").y, ascent);
    EXPECT_EQ (LaidOut ("ab cd", room_for (5) - 1).word ("cd").y, line + ascent);
    EXPECT_EQ (LaidOut ("ab cd", room_for (5) - 1).word ("cd").x, 8);
}

TEST (layout, a_window_narrower_than_a_word_gives_it_a_line_of_its_own) {
    const LaidOut made ("a loooong b", room_for (3));
    EXPECT_EQ (made.word ("a").y, ascent);
    EXPECT_EQ (made.word ("loooong").y, line + ascent);
    EXPECT_EQ (made.word ("loooong").x, 8);
    EXPECT_EQ (made.word ("b").y, 2 * line + ascent);
    EXPECT_EQ (made.page.height_of_text, 3 * line);
}

TEST (layout, a_window_without_any_width_still_has_a_line_for_each_word) {
    const LaidOut made ("a b c", 0);
    EXPECT_EQ (made.page.height_of_text, 3 * line);
}

TEST (layout, a_word_in_two_styles_is_not_broken) {
    const LaidOut made ("aa <i>bb</i>. c", room_for (5));
    EXPECT_EQ (made.word ("bb").y, line + ascent);
    EXPECT_EQ (made.word (".").y, line + ascent);
    EXPECT_EQ (made.word (".").x, 8 + 2 * letter);
}

TEST (layout, a_word_in_two_styles_that_no_line_holds_is_broken_between_them) {
    const LaidOut made ("<i>aaaa</i>bbbb", room_for (5));
    EXPECT_EQ (made.word ("aaaa").y, ascent);
    EXPECT_EQ (made.word ("bbbb").y, line + ascent);
}

TEST (layout, a_blank_at_the_end_of_a_line_is_nothing) {
    const LaidOut made ("ab cd", room_for (3));
    const auto& blank = static_cast<const Blank&> (*made.page.blocks[1]);
    EXPECT_TRUE (blank.swallowed);
    EXPECT_FALSE (static_cast<const Blank&> (*LaidOut ("ab cd", 400).page.blocks[1]).swallowed);
}

TEST (layout, a_blank_without_room_ends_its_line_for_narrow_letters_too) {
    // One pixel is left behind "ab": no room for the blank, but there would be for nothing else.
    LaidOut made ("ab<br>", room_for (2) + 1);
    made.page.blocks.insert (made.page.blocks.begin () + 1, std::make_unique<Blank> (TextStyle{}));
    made.page.blocks.insert (made.page.blocks.begin () + 2,
                             std::make_unique<Word> ("", TextStyle{}, 0U)); // no width at all
    measure_page (made.page, made.measure);
    layout_page (made.page, made.measure, room_for (2) + 1);
    EXPECT_EQ (made.page.blocks[2]->y, line + ascent);
}

TEST (layout, a_line_is_as_high_as_its_highest_word) {
    const LaidOut made ("a <font size=4>B</font> c<br>d", 400);
    // Size 20: 17 above, 3 below.
    EXPECT_EQ (made.word ("a").y, 17);
    EXPECT_EQ (made.word ("B").y, 17);
    EXPECT_EQ (made.word ("d").y, 20 + ascent);
}

TEST (layout, br_ends_the_line_and_an_empty_line_has_the_default_height) {
    const LaidOut made ("a<br><br>b", 400);
    EXPECT_EQ (made.word ("b").y, 2 * line + ascent);
}

TEST (layout, p_ends_the_line_and_adds_its_gap) {
    const LaidOut made ("a<p>b", 400);
    EXPECT_EQ (made.word ("b").y, line + paragraph_gap + ascent);
    EXPECT_EQ (made.page.height_of_text, 2 * line + paragraph_gap);
    // An empty line is not ended a second time.
    EXPECT_EQ (LaidOut ("a<br><p>b", 400).word ("b").y, line + paragraph_gap + ascent);
}

TEST (layout, the_empty_line_behind_the_last_one_does_not_count) {
    EXPECT_EQ (LaidOut ("a", 400).page.height_of_text, line);
    EXPECT_EQ (LaidOut ("a<br>", 400).page.height_of_text, line);
    EXPECT_EQ (LaidOut ("", 400).page.height_of_text, 0);
}

TEST (layout, a_quote_is_indented_by_forty_and_its_top_moves_four_up) {
    const LaidOut made ("a<blockquote>b<br>c</blockquote>d", 400);
    EXPECT_EQ (made.word ("b").x, 48);
    EXPECT_EQ (made.word ("b").y, line + 4 + ascent);
    EXPECT_EQ (made.word ("c").x, 48);
    EXPECT_EQ (made.word ("c").y, 2 * line + 4 + ascent);
    EXPECT_EQ (made.word ("d").x, 8);
    EXPECT_EQ (made.word ("d").y, 3 * line + 4 + ascent);
}

TEST (layout, an_item_hangs_sixteen_left_of_its_text_and_its_top_moves_six_up) {
    const LaidOut made ("a<ul><li>b</li><li>c</li></ul>d", 400);
    EXPECT_EQ (made.word ("b").x, 48);
    EXPECT_EQ (made.word ("b").y, line + 6 + ascent);
    const Block& mark = made.of_kind (BlockKind::item);
    EXPECT_EQ (mark.x, 48 - 16);
    EXPECT_EQ (mark.y, made.word ("b").y);
    EXPECT_EQ (made.word ("c").y, 2 * line + 12 + ascent);
    EXPECT_EQ (made.word ("d").x, 8);
    EXPECT_EQ (made.word ("d").y, 3 * line + 12 + ascent);
}

TEST (layout, each_level_of_lists_is_indented_by_forty) {
    const LaidOut made ("<ul><li>a<ul><li>b</ul><li>c</ul>", 400);
    EXPECT_EQ (made.word ("a").x, 48);
    EXPECT_EQ (made.word ("b").x, 88);
    EXPECT_EQ (made.word ("c").x, 48);
}

TEST (layout, an_item_without_text_has_a_line) {
    const LaidOut made ("<ul><li></li><li>b</li></ul>", 400);
    EXPECT_EQ (made.word ("b").y, line + 12 + ascent);
}

TEST (layout, center_moves_a_line_by_half_of_its_free_space) {
    const LaidOut made ("a<center>bb cc</center>d", room_for (15));
    // Five letters of fifteen: ten are free.
    EXPECT_EQ (made.word ("bb").x, 8 + 5 * letter);
    EXPECT_EQ (made.word ("cc").x, 8 + 8 * letter);
    EXPECT_EQ (made.word ("bb").y, line + ascent);
    EXPECT_EQ (made.word ("d").x, 8);
    EXPECT_EQ (made.of_kind (BlockKind::center).width, 5 * letter);
}

TEST (layout, center_measures_its_widest_line) {
    const LaidOut made ("<center>a<br>bbb<br>cc</center>", 400);
    EXPECT_EQ (made.of_kind (BlockKind::center).width, 3 * letter);
}

TEST (layout, a_line_wider_than_the_window_is_not_moved) {
    EXPECT_EQ (LaidOut ("<center>abcdefgh</center>", room_for (3)).word ("abcdefgh").x, 8);
}

TEST (layout, a_picture_taller_than_its_line_makes_it_as_high) {
    const LaidOut made ("a <img src=/x/tall.png> b<br>c", 400);
    const Block& picture = made.of_kind (BlockKind::img);
    EXPECT_EQ (picture.y, 100); // the base line, on which it stands
    EXPECT_EQ (made.word ("a").y, 100);
    EXPECT_EQ (made.word ("c").y, 100 + 3 + ascent); // 3 below the base line
    EXPECT_EQ (made.word ("b").x, 8 + letter + letter + 30 + letter);
}

TEST (layout, a_picture_that_is_not_known_takes_no_room) {
    const LaidOut made ("a<img src=none.png>b", 400);
    EXPECT_EQ (made.word ("b").x, 8 + letter);
    EXPECT_EQ (made.word ("b").y, ascent);
}

TEST (layout, a_heading_has_a_line_and_extra_space_of_its_own) {
    const LaidOut made ("a<h3>Two words</h3>b", 400);
    // Size 16: 13 above, 3 below; 8 more above and 4 below.
    EXPECT_EQ (made.word ("Two words").y, line + 8 + 13);
    EXPECT_EQ (made.word ("Two words").x, 8);
    EXPECT_EQ (made.word ("b").y, line + 8 + 16 + 4 + ascent);
}

TEST (layout, pre_is_not_broken) {
    const LaidOut made ("<pre>one two three\nfour</pre>", room_for (4));
    EXPECT_EQ (made.word ("one two three").y, ascent);
    EXPECT_EQ (made.word ("four").y, line + ascent);
}

TEST (layout, pre_is_not_broken_between_its_styles) {
    const LaidOut made ("<pre>one <b>two</b> three</pre>", room_for (4));
    EXPECT_EQ (made.word ("two").y, ascent);
    EXPECT_EQ (made.word (" three").y, ascent);
}

TEST (layout, lines_follow_each_other_and_hold_all_blocks) {
    Document page = read_html (generate_manual ({}));
    const FixedMeasure measure;
    measure_page (page, measure);
    for (const int width : {0, 50, 300, 850, 3000}) {
        layout_page (page, measure, width);
        std::size_t next = 0;
        int bottom = 0;
        for (const PageLine& one : page.lines) {
            ASSERT_EQ (one.first, next);
            ASSERT_LT (one.first, one.last);
            ASSERT_GE (one.top, bottom);
            ASSERT_GE (one.bottom, one.top);
            for (std::size_t i = one.first; i < one.last; ++i) {
                const Block& block = *page.blocks[i];
                ASSERT_GE (block.y - block.ascent, one.top);
                ASSERT_LE (block.y + block.descent, one.bottom);
            }
            next = one.last;
            bottom = one.bottom;
        }
        ASSERT_EQ (next, page.blocks.size ());
    }
}

TEST (layout, nothing_passes_the_right_limit_but_what_stands_alone) {
    Document page = read_html (generate_manual ({}));
    const FixedMeasure measure;
    measure_page (page, measure);
    const int width = 500;
    layout_page (page, measure, width);
    for (const PageLine& one : page.lines) {
        int words = 0;
        float right = 0;
        for (std::size_t i = one.first; i < one.last; ++i) {
            const Block& block = *page.blocks[i];
            if (block.kind != BlockKind::word && block.kind != BlockKind::img) continue;
            ++words;
            right = std::max (right, block.x + block.width);
        }
        if (words > 1) {
            EXPECT_LE (right, width - bar_width);
        }
    }
}

TEST (layout, done_again_for_the_same_width_gives_the_same) {
    Document page = read_html (generate_manual ({}));
    const FixedMeasure measure;
    measure_page (page, measure);
    const auto places = [&] {
        std::vector<std::pair<float, int>> all;
        for (const auto& block : page.blocks) all.emplace_back (block->x, block->y);
        return all;
    };
    layout_page (page, measure, 600);
    const auto before = places ();
    layout_page (page, measure, 123);
    EXPECT_NE (places (), before);
    layout_page (page, measure, 600);
    EXPECT_EQ (places (), before);
}

} // namespace
} // namespace ostrand::manual
