// Finding a text in a page.
#include "manual/search.h"

#include "fixed_measure.h"
#include "manual/generator.h"
#include "manual/layout.h"
#include "manual/reader.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <random>

namespace ostrand::manual {
namespace {

using ostrand::testing::FixedMeasure;
using ostrand::testing::page_of;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct Searched {
    explicit Searched (std::string_view body, int width = 1000)
        : page (read_html (page_of (body))) {
        measure_page (page, measure);
        layout_page (page, measure, width);
        text = plain_text (page);
    }
    std::vector<Match> find (std::string_view pattern) {
        return mark_hits (page, measure, search.find_all (text, pattern), pattern.size ());
    }
    /// Blocks with marks, as "text[from,to)".
    std::vector<std::string> marked () const {
        std::vector<std::string> all;
        for (const auto& block : page.blocks) {
            for (const BlockMark& mark : block->marks) {
                std::string own;
                block->text_out (own);
                all.push_back (own + "[" + std::to_string (mark.sel_from) + "," +
                               std::to_string (mark.sel_to) + ")");
            }
        }
        return all;
    }

    FixedMeasure measure;
    Document page;
    std::string text;
    TextSearch search;
};

TEST (plain_text, has_the_words_and_a_line_end_where_y_changes) {
    EXPECT_EQ (Searched ("a <b>b</b>c<br>d<p>e").text, "a bc\nd\ne");
    EXPECT_EQ (Searched ("<ul><li>a</li><li>b</li></ul>").text, "a\nb");
    EXPECT_EQ (Searched ("a <img src=x.png> b").text, "a  b");
    EXPECT_EQ (Searched ("<h3>Two words</h3>c").text, "Two words\nc");
    EXPECT_EQ (Searched ("").text, "");
}

TEST (plain_text, has_a_line_end_in_the_stead_of_a_blank_where_a_line_is_broken) {
    EXPECT_EQ (Searched ("ab cd", 8 + 3 * 7 + 12).text, "ab\ncd");
}

TEST (plain_text, tells_every_block_its_offset) {
    const Searched made ("ab cd<br>ef");
    EXPECT_EQ (made.page.blocks[0]->offset, 0U);
    EXPECT_EQ (made.page.blocks[1]->offset, 2U);
    EXPECT_EQ (made.page.blocks[2]->offset, 3U);
    EXPECT_EQ (made.page.blocks[4]->offset, 6U);
}

TEST (plain_text, of_any_page_is_what_its_blocks_give_out) {
    const FixedMeasure measure;
    for (const int width : {60, 333, 850}) {
        Document page = read_html (generate_manual ({}));
        measure_page (page, measure);
        layout_page (page, measure, width);
        const std::string text = plain_text (page);
        std::string without_line_ends = text;
        std::erase (without_line_ends, '\n');
        std::string given;
        for (const auto& block : page.blocks) {
            std::string own;
            block->text_out (own);
            ASSERT_EQ (text.substr (block->offset, own.size ()), own);
            given += own;
        }
        EXPECT_EQ (given, without_line_ends);
    }
}

TEST (pattern, loses_blanks_and_tabs_at_its_ends) {
    EXPECT_EQ (trimmed_pattern (" \t a b\t"), "a b");
    EXPECT_EQ (trimmed_pattern ("a\tb"), "a b");
    EXPECT_EQ (trimmed_pattern (" \t "), "");
    EXPECT_EQ (trimmed_pattern (""), "");
}

TEST (hits, mark_the_part_of_the_word) {
    Searched made ("banana");
    const auto matches = made.find ("ana");
    ASSERT_EQ (matches.size (), 1U); // the second one begins within the first
    EXPECT_EQ (matches[0].first_block, 0U);
    EXPECT_THAT (made.marked (), ElementsAre ("banana[1,4)"));
    EXPECT_EQ (made.page.blocks[0]->marks[0].left, 7);
    EXPECT_EQ (made.page.blocks[0]->marks[0].right, 28);
}

TEST (hits, of_a_text_across_two_words_mark_both_and_the_blank) {
    Searched made ("initial concentration");
    EXPECT_EQ (made.find ("tial con").size (), 1U);
    EXPECT_THAT (made.marked (), ElementsAre ("initial[3,7)", " [0,1)", "concentration[0,3)"));
}

TEST (hits, two_in_one_word_are_both_marked) {
    Searched made ("abab");
    EXPECT_EQ (made.find ("ab").size (), 2U);
    EXPECT_THAT (made.marked (), ElementsAre ("abab[0,2)", "abab[2,4)"));
}

TEST (hits, go_across_styles_and_underlined_letters) {
    Searched made ("<u>O</u>p<b>en</b>");
    EXPECT_EQ (made.find ("Open").size (), 1U);
    EXPECT_THAT (made.marked (), ElementsAre ("Op[0,2)", "en[0,2)"));
}

TEST (hits, do_not_depend_on_where_lines_are_broken) {
    Searched made ("ab cd", 8 + 3 * 7 + 12);
    EXPECT_EQ (made.find ("b c").size (), 1U);
    EXPECT_THAT (made.marked (), ElementsAre ("ab[1,2)", "cd[0,1)"));
}

TEST (hits, tell_capital_letters_from_small_ones) {
    EXPECT_THAT (Searched ("Open").find ("open"), IsEmpty ());
}

TEST (hits, of_before_are_gone) {
    Searched made ("a b");
    made.find ("a");
    made.find ("b");
    EXPECT_THAT (made.marked (), ElementsAre ("b[0,1)"));
    made.find ("");
    EXPECT_THAT (made.marked (), IsEmpty ());
}

TEST (hits, a_pattern_of_256_characters_is_the_longest) {
    const std::string long_word (300, 'x');
    Searched made (long_word);
    EXPECT_EQ (made.find (std::string (256, 'x')).size (), 1U);
    EXPECT_THAT (made.find (std::string (257, 'x')), IsEmpty ());
    EXPECT_THAT (made.marked (), IsEmpty ());
}

TEST (hits, a_mark_ends_between_letters_of_more_than_one_byte) {
    Searched made ("a&le;b");
    EXPECT_EQ (made.find ("\u2264b").size (), 1U);
    EXPECT_EQ (made.page.blocks[0]->marks[0].left, 7);
    EXPECT_EQ (made.page.blocks[0]->marks[0].right, 21);
}

TEST (current, only_the_match_in_hand_is_marked_so) {
    Searched made ("ab ab");
    const auto matches = made.find ("ab");
    ASSERT_EQ (matches.size (), 2U);
    mark_current (made.page, &matches[1], 2);
    EXPECT_FALSE (made.page.blocks[0]->marks[0].matched);
    EXPECT_TRUE (made.page.blocks[2]->marks[0].matched);
    mark_current (made.page, nullptr, 2);
    EXPECT_FALSE (made.page.blocks[2]->marks[0].matched);
}

/// Plain reference: every place, from front to end, without overlap.
std::vector<std::size_t> plain_find (std::string text, std::string_view pattern) {
    std::ranges::replace (text, '\n', ' ');
    std::vector<std::size_t> hits;
    for (std::size_t at = text.find (pattern); at != std::string::npos;
         at = text.find (pattern, at + pattern.size ())) {
        hits.push_back (at);
    }
    return hits;
}

TEST (search, finds_what_a_plain_search_finds_in_random_texts) {
    std::mt19937 random (7);
    TextSearch search;
    for (int round = 0; round < 2000; ++round) {
        std::string text;
        for (auto n = random () % 60; n > 0; --n) text += "ab \n"[random () % 4];
        std::string pattern;
        for (auto n = 1 + random () % 4; n > 0; --n) pattern += "ab "[random () % 3];
        ASSERT_EQ (search.find_all (text, pattern), plain_find (text, pattern))
            << text << "|" << pattern;
    }
}

TEST (search, every_match_marks_exactly_its_letters_whatever_the_width) {
    std::mt19937 random (11);
    const std::string manual = generate_manual ({});
    const FixedMeasure measure;
    Document page = read_html (manual);
    measure_page (page, measure);
    TextSearch search;
    for (const char* pattern : {"the reaction", "e", "Ctrl+", "bio-network", "-> S"}) {
        const int width = 100 + static_cast<int> (random () % 900);
        layout_page (page, measure, width);
        const std::string text = plain_text (page);
        const auto hits = search.find_all (text, pattern);
        ASSERT_FALSE (hits.empty ()) << pattern;
        const auto matches = mark_hits (page, measure, hits, std::string_view (pattern).size ());
        ASSERT_EQ (matches.size (), hits.size ());
        std::size_t letters = 0;
        for (const auto& block : page.blocks) {
            for (const BlockMark& mark : block->marks) letters += mark.sel_to - mark.sel_from;
        }
        std::size_t wanted = 0;
        for (const std::size_t hit : hits) {
            const auto found = text.substr (hit, std::string_view (pattern).size ());
            wanted += found.size () - static_cast<std::size_t> (std::ranges::count (found, '\n'));
        }
        EXPECT_EQ (letters, wanted) << pattern;
    }
}

} // namespace
} // namespace ostrand::manual
