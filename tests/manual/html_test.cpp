// The viewer: pages, views, links, search, and what is painted.
#include "manual/html.h"

#include "fixed_measure.h"
#include "manual/generator.h"
#include "manual/layout.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace ostrand::manual {
namespace {

using ostrand::testing::FixedMeasure;
using ostrand::testing::page_of;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr int line = 14;
constexpr int ascent = 11;

/// "w0<br>w1<br>...": line i has its base line at 14 i + 11.
std::string lines_of_words (int count) {
    std::string text;
    for (int i = 0; i < count; ++i) text += "w" + std::to_string (i) + "<br>";
    return text;
}

struct Shown {
    explicit Shown (std::string_view body, int width = 850, int height = 140) : html (measure) {
        measure.images = {{"tall.png", {30, 400}}};
        html.resize (width, height);
        html.value (page_of (body));
    }
    std::vector<std::string> painted_texts () const {
        std::vector<std::string> all;
        for (const auto& primitive :
             html.paint_list (html.scroll ().scroll_y (), html.scroll ().window_height ())) {
            if (const auto* run = std::get_if<TextRun> (&primitive)) all.push_back (run->text);
        }
        return all;
    }

    FixedMeasure measure;
    HTML html;
};

TEST (viewer, paints_only_what_is_in_view) {
    Shown shown (lines_of_words (1000));
    EXPECT_THAT (shown.painted_texts (),
                 ElementsAre ("w0", "w1", "w2", "w3", "w4", "w5", "w6", "w7", "w8", "w9"));
    shown.html.scroll_to (500 * line + 7);
    EXPECT_EQ (shown.painted_texts ().front (), "w500");
    EXPECT_EQ (shown.painted_texts ().back (), "w510");
    const auto [first, last] = shown.html.visible_blocks (500 * line + 7, 140);
    EXPECT_LE (last - first, 22U); // words and line ends of eleven lines
}

TEST (viewer, paints_places_relative_to_the_view) {
    const Shown shown (lines_of_words (100));
    const PaintList list = shown.html.paint_list (10 * line, line);
    ASSERT_EQ (list.size (), 1U);
    const auto& run = std::get<TextRun> (list[0]);
    EXPECT_EQ (run.text, "w10");
    EXPECT_EQ (run.x, 8);
    EXPECT_EQ (run.y, ascent);
    EXPECT_EQ (run.style, TextStyle{});
    EXPECT_EQ (run.colour, 0U);
}

TEST (viewer, paints_a_line_as_long_as_a_pixel_of_it_is_in_view) {
    const Shown shown (lines_of_words (3));
    EXPECT_EQ (shown.html.paint_list (13, 1).size (), 1U);
    EXPECT_EQ (shown.html.paint_list (13, 2).size (), 2U);
    EXPECT_THAT (shown.html.paint_list (3 * line, 50), IsEmpty ());
    EXPECT_THAT (shown.html.paint_list (-50, 50), IsEmpty ());
    EXPECT_EQ (shown.html.paint_list (-50, 51).size (), 1U);
}

TEST (viewer, paints_pictures_by_their_names_and_unknown_ones_not_at_all) {
    const Shown shown ("<img src=C:\\x\\tall.png><br><img src=none.png>");
    const PaintList list = shown.html.paint_list (0, 2000);
    ASSERT_EQ (list.size (), 1U);
    EXPECT_EQ (std::get<PlacedImage> (list[0]), (PlacedImage{"tall.png", 8, 0, 30, 400}));
}

TEST (viewer, paints_a_tall_picture_whose_top_is_out_of_view) {
    Shown shown ("<img src=tall.png><br>" + lines_of_words (20));
    const PaintList list = shown.html.paint_list (300, 10);
    ASSERT_EQ (list.size (), 1U);
    EXPECT_EQ (std::get<PlacedImage> (list[0]).y, -300);
}

TEST (viewer, paints_the_marks_of_items) {
    const auto marks = [] (std::string_view body) {
        const Shown shown (body);
        std::vector<TextRun> all;
        for (const auto& primitive : shown.html.paint_list (0, 5000)) {
            const auto& run = std::get<TextRun> (primitive);
            if (run.text != "x") all.push_back (run);
        }
        return all;
    };
    const auto bullets = marks ("<ul><li>x<ul><li>x<ul><li>x</ul></ul></ul>");
    ASSERT_EQ (bullets.size (), 3U);
    EXPECT_EQ (bullets[0].text, "\u2022");
    EXPECT_EQ (bullets[0].style, (TextStyle{.font = 4, .size = 20}));
    EXPECT_EQ (bullets[0].x, 48 - 16);
    EXPECT_EQ (bullets[1].text, "\u2023");
    EXPECT_EQ (bullets[1].style, (TextStyle{.font = 4, .size = 16}));
    EXPECT_EQ (bullets[2].text, ".");

    std::string ten = "<ol>";
    for (int i = 0; i < 10; ++i) ten += "<li>x";
    const auto numbers = marks (ten + "</ol>");
    ASSERT_EQ (numbers.size (), 10U);
    EXPECT_EQ (numbers[8].text, "9)");
    EXPECT_EQ (numbers[8].x, 32);
    EXPECT_EQ (numbers[9].text, "10)");
    EXPECT_EQ (numbers[9].x, 32 - 7); // by a digit
    EXPECT_EQ (numbers[9].style, (TextStyle{.font = 8, .size = 14}));
}

TEST (viewer, paints_links_in_their_colour) {
    const Shown shown ("a <a href=#x>b</a> <a name=x>c</a>");
    const PaintList list = shown.html.paint_list (0, 100);
    EXPECT_EQ (std::get<TextRun> (list[0]).colour, 0U);
    EXPECT_EQ (std::get<TextRun> (list[1]).colour, 0x00d0d000U);
    EXPECT_EQ (std::get<TextRun> (list[2]).colour, 0U);
}

TEST (links, a_click_goes_to_fourteen_above_the_target) {
    Shown shown ("<a href=#far>go</a> there<br>" + lines_of_words (50) +
                 "<a name=far>here</a><br>" + lines_of_words (50));
    EXPECT_NE (shown.html.link_at (10, 5), nullptr);
    EXPECT_EQ (shown.html.link_at (30, 5), nullptr); // "there"
    EXPECT_EQ (shown.html.link_at (10, 20), nullptr);
    EXPECT_FALSE (shown.html.follow_link (30, 5));
    EXPECT_TRUE (shown.html.follow_link (10, 5));
    EXPECT_EQ (shown.html.scroll ().scroll_y (), 51 * line + ascent - 14);
}

TEST (links, are_found_where_the_view_shows_them) {
    Shown shown ("<a name=top>top</a><br>" + lines_of_words (49) + "<a href=#top>up</a><br>" +
                 lines_of_words (50));
    EXPECT_EQ (shown.html.link_at (10, 5), nullptr);
    shown.html.scroll_to (50 * line);
    EXPECT_NE (shown.html.link_at (10, 5), nullptr);
    EXPECT_TRUE (shown.html.follow_link (10, 5));
    EXPECT_EQ (shown.html.scroll ().scroll_y (), 0);
}

TEST (links, that_lead_nowhere_are_none) {
    const Shown shown ("<a href=elsewhere.html>go</a>");
    EXPECT_EQ (shown.html.link_at (10, 5), nullptr);
}

TEST (find, takes_the_first_match_at_or_below_the_top_of_the_view) {
    Shown shown (lines_of_words (100));
    shown.html.scroll_to (30 * line);
    EXPECT_EQ (shown.html.find ("w"), 100);
    EXPECT_EQ (shown.html.current_match (), 30);
    EXPECT_EQ (shown.html.scroll ().scroll_y (), 30 * line); // it is in view
}

TEST (find, takes_the_first_match_of_all_when_none_is_below) {
    Shown shown (lines_of_words (100));
    shown.html.scroll_to (30 * line);
    EXPECT_EQ (shown.html.find ("w7"), 11);
    EXPECT_EQ (shown.html.current_match (), 1); // w70 is below
    EXPECT_EQ (shown.html.find ("w0"), 1);
    EXPECT_EQ (shown.html.current_match (), 0);
    EXPECT_EQ (shown.html.scroll ().scroll_y (), 0);
}

TEST (find, brings_a_match_out_of_view_to_forty_below_the_top) {
    Shown shown (lines_of_words (100));
    EXPECT_EQ (shown.html.find ("w50"), 1);
    EXPECT_EQ (shown.html.scroll ().scroll_y (), 50 * line + ascent - 40);
    EXPECT_TRUE (shown.html.scroll ().fading ());
}

TEST (find, counts_a_match_that_is_cut_by_the_edge_as_out_of_view) {
    Shown shown (lines_of_words (100));
    shown.html.scroll_to (5);
    shown.html.find ("w0"); // its top is above the view
    EXPECT_EQ (shown.html.scroll ().scroll_y (), 0);
}

TEST (find, marks_both_words_of_a_text_across_two) {
    Shown shown ("initial concentration");
    EXPECT_EQ (shown.html.find ("l c"), 1);
    std::vector<MatchFrame> frames;
    for (const auto& primitive : shown.html.paint_list (0, 100)) {
        if (const auto* frame = std::get_if<MatchFrame> (&primitive)) frames.push_back (*frame);
    }
    const unsigned current = shown.html.page ().colours ().current;
    EXPECT_THAT (frames, ElementsAre (MatchFrame{8 + 42, 0, 7, 14, current},
                                      MatchFrame{8 + 49, 0, 7, 14, current},
                                      MatchFrame{8 + 56, 0, 7, 14, current}));
}

TEST (find, frames_stand_behind_their_letters_and_the_match_in_hand_has_its_own_colour) {
    Shown shown ("ab ab");
    shown.html.find ("ab");
    const PaintList list = shown.html.paint_list (0, 100);
    ASSERT_EQ (list.size (), 4U);
    const PageColours colours = shown.html.page ().colours ();
    EXPECT_EQ (std::get<MatchFrame> (list[0]).colour, colours.current);
    EXPECT_EQ (std::get<TextRun> (list[1]).text, "ab");
    EXPECT_EQ (std::get<MatchFrame> (list[2]).colour, colours.found);
    EXPECT_NE (colours.current, colours.found);
}

TEST (find, trims_its_pattern) {
    Shown shown ("initial concentration");
    EXPECT_EQ (shown.html.find ("\tinitial\tcon "), 1);
}

TEST (find, of_nothing_or_of_too_much_ends_the_search) {
    Shown shown ("aaaa");
    EXPECT_EQ (shown.html.find ("a"), 4);
    EXPECT_EQ (shown.html.find (std::string (257, 'a')), 0);
    EXPECT_EQ (shown.html.current_match (), -1);
    shown.html.find ("a");
    EXPECT_EQ (shown.html.find ("  "), 0);
    EXPECT_EQ (shown.html.paint_list (0, 100).size (), 1U); // no frame
    EXPECT_FALSE (shown.html.next_match (true));
}

TEST (next_match, goes_around_both_ends) {
    Shown shown ("ab<br>ab<br>ab");
    ASSERT_EQ (shown.html.find ("ab"), 3);
    EXPECT_EQ (shown.html.current_match (), 0);
    EXPECT_TRUE (shown.html.next_match (false));
    EXPECT_EQ (shown.html.current_match (), 2);
    EXPECT_TRUE (shown.html.next_match (true));
    EXPECT_EQ (shown.html.current_match (), 0);
    EXPECT_TRUE (shown.html.next_match (true));
    EXPECT_EQ (shown.html.current_match (), 1);
}

TEST (next_match, brings_its_match_into_view) {
    Shown shown (lines_of_words (20) + "x<br>" + lines_of_words (60) + "x<br>" +
                 lines_of_words (30));
    shown.html.find ("x");
    shown.html.next_match (true);
    EXPECT_EQ (shown.html.scroll ().scroll_y (), 81 * line + ascent - 40);
    shown.html.next_match (true);
    EXPECT_EQ (shown.html.scroll ().scroll_y (), 20 * line + ascent - 40);
}

TEST (resize, keeps_the_matches_and_the_one_in_hand) {
    Shown shown ("aa bb aa bb aa bb aa bb");
    ASSERT_EQ (shown.html.find ("b a"), 3);
    shown.html.next_match (true);
    shown.html.resize (60, 140); // a word or two a line
    EXPECT_EQ (shown.html.matches ().size (), 3U);
    EXPECT_EQ (shown.html.current_match (), 1);
}

TEST (resize, keeps_what_stands_at_the_top) {
    std::string body;
    for (int i = 0; i < 300; ++i) body += "word" + std::to_string (i) + " ";
    Shown shown (body, 850, 100);
    shown.html.scroll_to (8 * line + 3);
    const std::string top = shown.painted_texts ().front ();
    shown.html.resize (400, 100);
    EXPECT_THAT (shown.painted_texts (), ::testing::Contains (top));
    const auto [first, last] = shown.html.visible_blocks (shown.html.scroll ().scroll_y (), 1);
    bool in_top_line = false;
    for (std::size_t i = first; i < last; ++i) {
        std::string own;
        shown.html.page ().blocks[i]->text_out (own);
        in_top_line = in_top_line || own == top;
    }
    EXPECT_TRUE (in_top_line);
}

TEST (resize, in_height_only_keeps_the_place) {
    Shown shown (lines_of_words (100));
    shown.html.scroll_to (333);
    shown.html.resize (850, 200);
    EXPECT_EQ (shown.html.scroll ().scroll_y (), 333);
}

TEST (value, another_text_keeps_the_place_and_ends_the_search) {
    Shown shown (lines_of_words (100));
    shown.html.find ("w");
    shown.html.scroll_to (333);
    shown.html.value (page_of (lines_of_words (90)));
    EXPECT_EQ (shown.html.scroll ().scroll_y (), 333);
    EXPECT_EQ (shown.html.current_match (), -1);
    EXPECT_TRUE (shown.html.matches ().empty ());
    shown.html.value (page_of ("short"));
    EXPECT_EQ (shown.html.scroll ().scroll_y (), 0);
}

TEST (value, faults_go_to_standard_error) {
    FixedMeasure measure;
    HTML html (measure);
    ::testing::internal::CaptureStderr ();
    html.value ("<html><head><body>a</b></body></html>");
    EXPECT_EQ (::testing::internal::GetCapturedStderr (), "No </head>...\nsyntax error\n");
}

TEST (whole_manual, is_read_without_a_fault_in_both_grounds) {
    FixedMeasure measure;
    for (const bool dark : {false, true}) {
        HTML html (measure);
        html.resize (850, 950);
        ::testing::internal::CaptureStderr ();
        html.value (generate_manual ({.dark = dark}));
        EXPECT_EQ (::testing::internal::GetCapturedStderr (), "");
        EXPECT_EQ (html.background (), dark ? 0U : 0xffffff00U);
        EXPECT_EQ (html.page ().is_dark (), dark);
    }
}

TEST (whole_manual, every_link_of_the_contents_can_be_clicked) {
    FixedMeasure measure;
    HTML html (measure);
    html.resize (850, 950);
    html.value (generate_manual ({}));
    int clicked = 0;
    for (const auto& block : html.page ().blocks) {
        if (block->link == nullptr || block->width == 0) continue;
        html.scroll_to (block->y - 100);
        const int y = block->y - html.scroll ().scroll_y () - 1;
        ASSERT_TRUE (html.follow_link (static_cast<int> (block->x) + 1, y));
        ++clicked;
    }
    EXPECT_GE (clicked, 10);
}

TEST (whole_manual, painted_screen_by_screen_shows_every_word_once) {
    FixedMeasure measure;
    HTML html (measure);
    html.resize (850, 950);
    html.value (generate_manual ({}));
    std::string painted;
    // Line by line, so that no word stands in two of the pieces.
    for (const PageLine& one : html.page ().lines) {
        for (const auto& primitive : html.paint_list (one.top, one.bottom - one.top)) {
            const auto* run = std::get_if<TextRun> (&primitive);
            if (run != nullptr && run->style.size != 20) painted += run->text;
        }
    }
    std::string words;
    for (const auto& block : html.page ().blocks) {
        if (block->kind == BlockKind::item) {
            const auto& item = static_cast<const Item&> (*block);
            if (item.number > 0) words += std::to_string (item.number) + ")";
            continue;
        }
        if (block->kind == BlockKind::blank) continue;
        if (block->kind == BlockKind::word && static_cast<const Word&> (*block).style.size == 20) {
            continue;
        }
        block->text_out (words);
    }
    EXPECT_EQ (painted, words);
}

} // namespace
} // namespace ostrand::manual
