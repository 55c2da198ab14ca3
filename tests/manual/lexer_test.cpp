// Tokens of HTML.
#include "manual/lexer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <vector>

namespace ostrand::manual {
namespace {

using ::testing::ElementsAre;

std::vector<Token> tokens (std::string_view source, bool preformatted = false) {
    Lexer lexer (source);
    lexer.set_preformatted (preformatted);
    std::vector<Token> all;
    for (Token token = lexer.next (); token.id != token_end_of_source; token = lexer.next ()) {
        all.push_back (token);
    }
    return all;
}

const Token tag_end{token_end_of_tag, ""};
const Token blank{token_blank, " "};
Token word (const char* text) { return {token_word, text}; }
Token tag (int id) { return {id, ""}; }

TEST (lexer, tags_have_the_numbers_of_their_places_in_the_table) {
    const std::vector<std::string_view> names{
        "a",     "b",    "bgcolor", "blockquote", "body", "br",  "center", "color",
        "face",  "font", "head",    "href",       "html", "i",   "img",    "kbd",
        "li",    "name", "offset",  "ol",         "p",    "pre", "size",   "src",
        "table", "td",   "text",    "title",      "tr",   "tt",  "ul"};
    ASSERT_EQ (names.size (), 31U);
    for (std::size_t i = 0; i < names.size (); ++i) {
        EXPECT_EQ (token_of_name (names[i]), static_cast<int> (i) + 1) << names[i];
    }
    EXPECT_EQ (token_of_name ("ul"), 31);
}

TEST (lexer, other_names_have_no_number) {
    for (const char* name : {"", "u", "aa", "div", "zz", "B"}) {
        EXPECT_EQ (token_of_name (name), token_none) << name;
    }
}

TEST (lexer, a_closing_tag_is_negative) {
    EXPECT_THAT (tokens ("<b>x</b>"),
                 ElementsAre (tag (token_b), tag_end, word ("x"), tag (-token_b), tag_end));
}

TEST (lexer, capital_letters_of_tags_count_as_small_ones) {
    EXPECT_THAT (tokens ("<BR>"), ElementsAre (tag (token_br), tag_end));
}

TEST (lexer, white_space_is_one_blank) {
    EXPECT_THAT (tokens ("a \n\t b"), ElementsAre (word ("a"), blank, word ("b")));
}

TEST (lexer, attributes_share_the_names_of_tags_and_their_values_are_words_or_quoted) {
    EXPECT_THAT (tokens ("<font color=#2020ff size = '4'>"),
                 ElementsAre (tag (token_font), tag (token_color), word ("#2020ff"),
                              tag (token_size), Token (token_quoted, "4"), tag_end));
    EXPECT_THAT (
        tokens ("<img src=\"a b.png\">"),
        ElementsAre (tag (token_img), tag (token_src), Token (token_quoted, "a b.png"), tag_end));
}

TEST (lexer, a_stray_sign_behind_a_value_belongs_to_it) {
    EXPECT_THAT (tokens ("<font size=4=><b>"),
                 ElementsAre (tag (token_font), tag (token_size), word ("4="), tag_end,
                              tag (token_b), tag_end));
}

TEST (lexer, unknown_tags_and_attributes_are_told_by_name) {
    EXPECT_THAT (tokens ("<u link=#0>"),
                 ElementsAre (Token (token_unknown, "u"), Token (token_unknown, "link"),
                              word ("#0"), tag_end));
    EXPECT_THAT (tokens ("</u>"), ElementsAre (Token (token_unknown, "/u"), tag_end));
}

TEST (lexer, entities_are_decoded_and_a_hard_blank_stays_in_its_word) {
    EXPECT_THAT (tokens ("a&nbsp;b &lt;&gt;&amp;&le;&ge;"),
                 ElementsAre (word ("a b"), blank, word ("<>&\u2264\u2265")));
}

TEST (lexer, what_is_no_entity_is_letters) {
    EXPECT_THAT (tokens ("R&D &eacute; &lt x&"),
                 ElementsAre (word ("R&D"), blank, word ("&eacute;"), blank, word ("&lt"), blank,
                              word ("x&")));
}

TEST (lexer, a_sign_of_less_without_a_name_is_a_letter) {
    EXPECT_THAT (tokens ("a <- 3 <4"), ElementsAre (word ("a"), blank, word ("<-"), blank,
                                                    word ("3"), blank, word ("<4")));
    EXPECT_THAT (tokens ("-> >"), ElementsAre (word ("->"), blank, word (">")));
}

TEST (lexer, comments_and_declarations_are_passed_over) {
    EXPECT_THAT (tokens ("<!doctype html>a<!-- <b> -->b<?x?>"),
                 ElementsAre (word ("a"), word ("b")));
}

TEST (lexer, in_pre_lines_stay_as_they_are) {
    EXPECT_THAT (tokens ("a  b\n\n c&lt;", true), ElementsAre (word ("a  b"), tag (token_line_end),
                                                               tag (token_line_end), word (" c<")));
}

TEST (lexer, in_pre_tabs_go_to_the_next_eighth_column) {
    EXPECT_THAT (tokens ("ab\tc\n\td", true),
                 ElementsAre (word ("ab      c"), tag (token_line_end), word ("        d")));
    EXPECT_THAT (tokens ("\u2264\tc", true), ElementsAre (word ("\u2264       c")));
}

TEST (lexer, a_text_that_ends_within_a_tag_ends_it) {
    EXPECT_THAT (tokens ("<b"), ElementsAre (tag (token_b), tag_end));
    EXPECT_THAT (tokens ("<font color="),
                 ElementsAre (tag (token_font), tag (token_color), tag_end));
    EXPECT_THAT (tokens ("<a href=\"x"),
                 ElementsAre (tag (token_a), tag (token_href), Token (token_quoted, "x"), tag_end));
    EXPECT_THAT (tokens ("<b<i>"), ElementsAre (tag (token_b), tag_end, tag (token_i), tag_end));
    EXPECT_THAT (tokens ("<!-- x"), ElementsAre ());
}

TEST (lexer, at_the_end_every_token_is_the_end) {
    Lexer lexer ("a");
    lexer.next ();
    EXPECT_EQ (lexer.next ().id, token_end_of_source);
    EXPECT_EQ (lexer.next ().id, token_end_of_source);
}

} // namespace
} // namespace ostrand::manual
