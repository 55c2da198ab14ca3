// From HTML to blocks.
#include "manual/reader.h"

#include "fixed_measure.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace ostrand::manual {
namespace {

using ostrand::testing::page_of;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// One letter for each block: words as their text, a blank "_", and so on.
std::string sketch (const Document& page) {
    std::string text;
    for (const auto& block : page.blocks) {
        switch (block->kind) {
        case BlockKind::word: text += "[" + static_cast<Word&> (*block).text + "]"; break;
        case BlockKind::preformat: text += "|" + static_cast<Word&> (*block).text + "|"; break;
        case BlockKind::heading: text += "#" + static_cast<Word&> (*block).text + "#"; break;
        case BlockKind::blank: text += "_"; break;
        case BlockKind::img: text += "(" + static_cast<Img&> (*block).source + ")"; break;
        case BlockKind::breaker: text += "/"; break;
        case BlockKind::paragraph: text += "P"; break;
        case BlockKind::list: text += static_cast<List&> (*block).opens ? "L<" : ">L"; break;
        case BlockKind::block_quote:
            text += static_cast<BlockQ&> (*block).opens ? "Q<" : ">Q";
            break;
        case BlockKind::center: text += static_cast<Center&> (*block).opens ? "C<" : ">C"; break;
        case BlockKind::item: {
            const auto& item = static_cast<Item&> (*block);
            text += "*" + std::to_string (item.number) + "." + std::to_string (item.level);
            break;
        }
        }
    }
    return text;
}

std::string body (std::string_view html) { return sketch (read_html (page_of (html))); }

const Word& word_at (const Document& page, std::size_t index) {
    return static_cast<const Word&> (*page.blocks[index]);
}

TEST (kinds, have_the_numbers_that_the_layout_goes_by) {
    EXPECT_EQ (static_cast<int> (BlockKind::word), 0);
    EXPECT_EQ (static_cast<int> (BlockKind::preformat), 1);
    EXPECT_EQ (static_cast<int> (BlockKind::blank), 2);
    EXPECT_EQ (static_cast<int> (BlockKind::img), 3);
    EXPECT_EQ (static_cast<int> (BlockKind::breaker), 4);
    EXPECT_EQ (static_cast<int> (BlockKind::paragraph), 6);
    EXPECT_EQ (static_cast<int> (BlockKind::list), 7);
    EXPECT_EQ (static_cast<int> (BlockKind::block_quote), 8);
    EXPECT_EQ (static_cast<int> (BlockKind::item), 9);
    EXPECT_EQ (static_cast<int> (BlockKind::center), 10);
    EXPECT_EQ (static_cast<int> (BlockKind::heading), 13);
}

TEST (elements, each_makes_its_block) {
    EXPECT_EQ (body ("a b<br>c<p>d"), "[a]_[b]/[c]P[d]");
    EXPECT_EQ (body ("<center><img src=/tmp/x.png></center>"), "C<(/tmp/x.png)>C");
    EXPECT_EQ (body ("<blockquote>a</blockquote>"), "Q<[a]>Q");
    EXPECT_EQ (body ("<h3>A <b>heading</b></h3>"), "#A heading#");
}

TEST (elements, lists_number_their_items_and_count_their_levels) {
    EXPECT_EQ (body ("<ol><li>a</li><li>b<ul><li>c</li></ul></li><li>d</ol>"),
               "L<*1.1[a]*2.1[b]L<*0.2[c]>L*3.1[d]>L");
    EXPECT_EQ (body ("<li>a"), "*0.0[a]");
}

TEST (elements, white_space_counts_once_and_not_at_the_beginning_of_a_line) {
    EXPECT_EQ (body (" \n a \n b <br> c"), "[a]_[b]_/[c]");
    EXPECT_EQ (body ("<ul>\n<li> a</li>\n</ul>\nb"), "L<*0.1[a]_>L[b]");
    EXPECT_EQ (body ("a <b> b</b>"), "[a]_[b]");
}

TEST (elements, an_unknown_tag_says_nothing_and_breaks_no_word) {
    const Document page = read_html (page_of ("<u>O</u>pen <div>it"));
    EXPECT_EQ (sketch (page), "[Open]_[it]");
    EXPECT_THAT (page.faults, IsEmpty ());
}

TEST (elements, a_word_in_two_styles_is_two_blocks_that_belong_together) {
    const Document page = read_html (page_of ("<b>O</b>pen it"));
    ASSERT_EQ (sketch (page), "[O][pen]_[it]");
    EXPECT_FALSE (page.blocks[0]->joined);
    EXPECT_TRUE (page.blocks[1]->joined);
    EXPECT_FALSE (page.blocks[3]->joined);
}

TEST (elements, tables_are_lines_with_cells_parted_by_blanks) {
    EXPECT_EQ (body ("a<table><tr><td>b</td><td>c</td></tr><tr><td>d<td>e</table>f"),
               "[a]/[b]_[c]/[d]_[e]/[f]");
}

TEST (elements, pre_keeps_its_lines) {
    EXPECT_EQ (body ("a<pre>\nx  y\n\n z\n</pre>b"), "[a]/|x  y|//| z|/[b]");
    EXPECT_EQ (body ("<pre>x<b>y</b></pre>"), "|x||y|/");
}

TEST (styles, apply_to_what_they_enclose) {
    const Document page = read_html (
        page_of ("a<b>b<i>c</i></b><tt>d</tt>-<kbd>e</kbd><font size=4 color=#2020ff>f</font>g"));
    ASSERT_EQ (sketch (page), "[a][b][c][d][-][e][f][g]");
    const TextStyle plain;
    EXPECT_EQ (word_at (page, 0).style, plain);
    EXPECT_EQ (word_at (page, 1).style, (TextStyle{.bold = true}));
    EXPECT_EQ (word_at (page, 2).style, (TextStyle{.bold = true, .italic = true}));
    EXPECT_EQ (word_at (page, 3).style, (TextStyle{.font = fixed_font}));
    EXPECT_EQ (word_at (page, 5).style, (TextStyle{.font = fixed_font}));
    EXPECT_EQ (word_at (page, 6).style, (TextStyle{.size = 20}));
    EXPECT_EQ (word_at (page, 6).colour, 0x2020ff00U);
    EXPECT_EQ (word_at (page, 7).style, plain);
    EXPECT_EQ (word_at (page, 7).colour, 0U);
}

TEST (styles, the_fixed_font_keeps_the_size) {
    const Document page = read_html (page_of ("<font size=4><tt>a</tt></font>"));
    EXPECT_EQ (word_at (page, 0).style, (TextStyle{.font = fixed_font, .size = 20}));
}

TEST (styles, closed_out_of_turn_leave_the_others) {
    const Document page = read_html (page_of ("<b><i>a</b>b</i>c"));
    EXPECT_EQ (word_at (page, 1).style, (TextStyle{.italic = true}));
    EXPECT_EQ (word_at (page, 2).style, TextStyle{});
    EXPECT_THAT (page.faults, IsEmpty ());
}

TEST (styles, nest_deeper_than_four) {
    const Document page =
        read_html (page_of ("<b><i><tt><font size=1><font size=2><font size=3>a</font></font>"
                            "</font></tt></i>b</b>c"));
    EXPECT_EQ (word_at (page, 0).style,
               (TextStyle{.font = fixed_font, .size = 18, .bold = true, .italic = true}));
    EXPECT_EQ (word_at (page, 1).style, (TextStyle{.bold = true}));
    EXPECT_EQ (word_at (page, 2).style, TextStyle{});
}

TEST (styles, each_step_of_size_adds_two_points_to_twelve) {
    EXPECT_EQ (size_of_step (1), 14);
    EXPECT_EQ (size_of_step (4), 20);
    EXPECT_EQ (size_of_step (0), 14);
    EXPECT_EQ (size_of_step (99), 26);
    // The stray sign of the keyboard heading.
    EXPECT_EQ (word_at (read_html (page_of ("<font size=4=>a</font>")), 0).style.size, 20);
}

TEST (styles, the_toolkits_number_of_a_face_counts_bold_and_italic) {
    EXPECT_EQ (TextStyle{}.font_number (), 8);
    EXPECT_EQ ((TextStyle{.bold = true}.font_number ()), 9);
    EXPECT_EQ ((TextStyle{.font = fixed_font, .italic = true}.font_number ()), 6);
    EXPECT_EQ ((TextStyle{.bold = true, .italic = true}.font_number ()), 11);
}

TEST (body_colours, are_taken_shifted_by_eight_bits) {
    const Document page =
        read_html ("<html><head></head><body text=#ffffff bgcolor=#102030></body></html>");
    EXPECT_EQ (page.text, 0xffffff00U);
    EXPECT_EQ (page.background, 0x10203000U);
    EXPECT_EQ (read_html (page_of ("")).text, 0U);
}

TEST (body_colours, a_ground_below_two_fifths_of_brightness_is_dark) {
    Document page;
    page.background = 0;
    EXPECT_TRUE (page.is_dark ());
    EXPECT_EQ (page.colours ().found, 0x8a4e8a00U);
    EXPECT_EQ (page.colours ().current, 0x70700000U);
    page.background = 0xffffff00;
    EXPECT_FALSE (page.is_dark ());
    page.background = 0x65656500; // 101 / 255 = 0.396
    EXPECT_TRUE (page.is_dark ());
    page.background = 0x66666600; // 102 / 255 = 0.4
    EXPECT_FALSE (page.is_dark ());
    page.background = 0x00ff0000; // green counts most: 0.59
    EXPECT_FALSE (page.is_dark ());
    page.background = 0xff000000; // red: 0.3
    EXPECT_TRUE (page.is_dark ());
}

TEST (links, hold_for_the_blocks_they_enclose) {
    const Document page = read_html (page_of ("a <a href=#x>b c</a>d <a name=x>e</a>"));
    ASSERT_EQ (sketch (page), "[a]_[b]_[c][d]_[e]");
    EXPECT_EQ (page.blocks[0]->link, nullptr);
    ASSERT_NE (page.blocks[2]->link, nullptr);
    EXPECT_EQ (page.blocks[2]->link->href, "#x");
    EXPECT_EQ (page.blocks[4]->link, page.blocks[2]->link);
    EXPECT_EQ (page.blocks[5]->link, nullptr);
    EXPECT_EQ (page.blocks[7]->link, nullptr);
    EXPECT_EQ (page.target_of (*page.blocks[2]->link), 7U);
}

TEST (links, a_name_within_a_word_parts_it_but_does_not_break_it) {
    const Document page = read_html (page_of ("foo<a name=x></a>bar <a href=#x>go</a>"));
    ASSERT_EQ (sketch (page), "[foo][bar]_[go]");
    EXPECT_TRUE (page.blocks[1]->joined);
    EXPECT_EQ (page.target_of (*page.blocks[3]->link), 1U);
}

TEST (links, to_anything_but_a_name_of_the_page_are_ignored) {
    for (const char* href : {"#nowhere", "x", "file.html#x", "http://a/#x", "#end"}) {
        const Document page = read_html (
            page_of ("<a name=x>x</a><a href=" + std::string (href) + ">go</a><a name=end></a>"));
        ASSERT_NE (page.blocks[1]->link, nullptr) << href;
        EXPECT_EQ (page.target_of (*page.blocks[1]->link), std::nullopt) << href;
    }
}

TEST (links, of_two_equal_names_the_first_counts) {
    const Document page = read_html (page_of ("<a name=x>a</a> <a name=x>b</a> <a href=#x>c</a>"));
    EXPECT_EQ (page.target_of (*page.blocks[4]->link), 0U);
}

TEST (structure, a_sound_page_has_no_fault) {
    EXPECT_THAT (read_html (page_of ("a")).faults, IsEmpty ());
    EXPECT_THAT (read_html ("<html>\n<head>\n<title>A <b>title</title>\n</head>\n<body text=#0>\n"
                            "a\n</body>\n</html>\n")
                     .faults,
                 IsEmpty ());
}

TEST (structure, a_head_that_is_not_closed_is_told) {
    const Document page = read_html ("<html><head><title>t</title><body>a</body></html>");
    EXPECT_THAT (page.faults, ElementsAre ("No </head>...\n"));
    EXPECT_EQ (sketch (page), "[a]");
}

TEST (structure, a_token_out_of_place_is_told_and_passed_over) {
    const Document page = read_html ("<html><head></head>x<p><body>a</body></html>");
    EXPECT_THAT (page.faults, ElementsAre ("syntax error\n", "syntax error\n"));
    EXPECT_EQ (sketch (page), "[a]");
    EXPECT_THAT (read_html (page_of ("a</b>b")).faults, ElementsAre ("syntax error\n"));
    EXPECT_THAT (read_html (page_of ("</center>")).faults, ElementsAre ("syntax error\n"));
    EXPECT_THAT (read_html (page_of ("</blockquote>")).faults, ElementsAre ("syntax error\n"));
    EXPECT_THAT (read_html (page_of ("<ul></ol></ul>")).faults, ElementsAre ("syntax error\n"));
    EXPECT_THAT (read_html (page_of ("<size>")).faults, ElementsAre ("syntax error\n"));
    EXPECT_THAT (read_html (page_of ("a") + "b").faults, ElementsAre ("syntax error\n"));
}

TEST (structure, what_is_left_open_ends_with_the_body) {
    EXPECT_THAT (read_html (page_of ("<pre>a")).faults, IsEmpty ());
    EXPECT_THAT (read_html (page_of ("<h3>a")).faults, IsEmpty ());
    const Document page = read_html ("<html><head><title>t</head><body>a</body></html>");
    EXPECT_EQ (sketch (page), "[a]");
}

TEST (structure, text_alone_is_told_and_shown) {
    const Document page = read_html ("just words");
    EXPECT_FALSE (page.faults.empty ());
    EXPECT_EQ (sketch (page), "[just]_[words]");
}

TEST (structure, a_page_that_ends_early_is_told_and_shown) {
    const Document page = read_html ("<html><head></head><body>a <b>b");
    EXPECT_THAT (page.faults, ElementsAre ("syntax error\n"));
    EXPECT_EQ (sketch (page), "[a]_[b]");
    EXPECT_EQ (sketch (read_html ("")), "");
}

TEST (structure, an_attribute_named_body_is_no_body) {
    const Document page = read_html ("<img body=1 src=a.png>b");
    EXPECT_EQ (sketch (page), "(a.png)[b]");
}

} // namespace
} // namespace ostrand::manual
