// Tokens of the model language and the table of names.
#include "base/text.h"
#include "sim/lexer.h"
#include "sim/sim_support.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace ostrand::sim {
namespace {

using testing::CaughtMessages;
using ::testing::ElementsAre;

/// A table of names for a lexer: a row of at most `room`.
struct Names {
    explicit Names (std::size_t most = 100) : room (most) {}
    Lexer lexer (std::string_view text) {
        return {text, [this] (std::string_view name) { return index (name); }, "no 100% room"};
    }
    int index (std::string_view name) {
        const auto place = std::ranges::find (all, name);
        const auto found = static_cast<int> (place - all.begin ());
        if (place != all.end ()) return found;
        if (all.size () == room) return -1;
        all.emplace_back (name);
        return found;
    }
    std::vector<std::string> all;
    std::size_t room;
};

/// The tokens of a text as "name", 1.5, #rrggbb or the token's text, joined by blanks.
std::string tokens_of (std::string_view text) {
    Names names;
    const CaughtMessages messages;
    Lexer lexer = names.lexer (text);
    std::string all;
    for (Token token = lexer.next_token (); token.kind != TokenKind::eof;
         token = lexer.next_token ()) {
        if (!all.empty ()) all += ' ';
        if (token.kind == TokenKind::ident) {
            all += "'" + std::string (token.text) + "'";
            if (token.species < 0) return all + "!";
        } else if (token.kind == TokenKind::colour) {
            all += format_text ("#%08x", token.colour);
        } else {
            all += shown (token);
        }
    }
    return messages.all.empty () ? all : "error: " + messages.all[0];
}

TEST (lexer, single_characters_arrows_and_comments) {
    EXPECT_EQ (tokens_of ("; : = [ ] | + , ( ) - ->"), "; : = [ ] | + , ( ) - ->");
    EXPECT_EQ (tokens_of ("a // b c\nd"), "'a' 'd'");
    EXPECT_EQ (tokens_of ("a//b"), "'a'");
    EXPECT_EQ (tokens_of ("a\rb c"), "'a\rb' 'c'");
    EXPECT_EQ (tokens_of ("\r\r a \r b"), "'a' 'b'");
}

TEST (lexer, a_lone_slash_is_a_name_of_no_length) {
    EXPECT_EQ (tokens_of ("a / b"), "'a' ''!");
    EXPECT_EQ (tokens_of ("\"\""), "''!");
}

TEST (lexer, units_need_what_may_follow_them) {
    EXPECT_EQ (tokens_of ("mM uM \xb5M mM-"), "mM uM uM mM -");
    EXPECT_EQ (tokens_of ("mM|uM+uM:mM;uM,"), "mM | uM + uM : mM ; uM ,");
    EXPECT_EQ (tokens_of ("mMol mM"), "'mMol' 'mM'");
    EXPECT_EQ (tokens_of ("mM/"), "'mM' ''!");
}

TEST (lexer, quoted_names_hold_anything_but_a_line_end) {
    EXPECT_EQ (tokens_of ("\"a b;c\" d"), "'a b;c' 'd'");
    EXPECT_EQ (tokens_of ("\"a\nb\""), "error: '\\n' inside a name: '\"a\nb\" ...'");
    EXPECT_EQ (tokens_of ("\"abcdef\n\""), "error: '\\n' inside a name: '\"abcd ...'");
    EXPECT_EQ (tokens_of ("\"ab\n"), "error: '\\n' inside a name: '\" ab\n ...'");
}

TEST (lexer, two_quotes_in_a_quoted_name_are_one_letter) {
    EXPECT_EQ (tokens_of ("\"A\"\"B\" : c"), "'A\"B' : 'c'");
    EXPECT_EQ (tokens_of ("\"\"\"A\" \"A\"\"\" \"\"\"\"|"), "'\"A' 'A\"' '\"' |");
    EXPECT_EQ (tokens_of ("\"a\"\"\"\"b\""), "'a\"\"b'");
    EXPECT_EQ (tokens_of ("\"a\"\"b\n\""), "error: '\\n' inside a name: '\"a\"\"b ...'");
    EXPECT_EQ (tokens_of ("\"a\"\"b"), "'a\"b'"); // never closed
    EXPECT_EQ (fault_of ("\"a\"\"b\" \"c\"\"d\" ;"), "'->' or '+' expected, got '<ident>'\n");
}

TEST (lexer, a_quoted_name_without_a_letter_is_empty_as_before) {
    EXPECT_EQ (tokens_of ("\"\" a"), "''!");
    EXPECT_EQ (fault_of ("\"\" : a -> b | 1 mM - 2;"), "syntax error: enzyme name expected\n");
}

TEST (lexer, names_with_quotes_stay_as_long_as_the_lexer) {
    Names names;
    Lexer lexer = names.lexer ("\"a\"\"b\" \"c\"\"d\" \"e\"\"f\"");
    const Token first = lexer.next_token ();
    const Token second = lexer.next_token ();
    lexer.unget_token (second);
    EXPECT_EQ (lexer.next_token ().text, "c\"d");
    EXPECT_EQ (lexer.next_token ().text, "e\"f");
    EXPECT_EQ (first.text, "a\"b");
    EXPECT_THAT (names.all, ElementsAre ("a\"b", "c\"d", "e\"f"));
}

TEST (lexer, what_is_quoted_is_read_back) {
    for (const char* name :
         {"a", "a b;c", "\"", "\"\"", "a\"", "\"a", "5\" end", "a\\", "//", "3,5"}) {
        Names names;
        const std::string text = quoted (name) + ":" + quoted ("x");
        Lexer lexer = names.lexer (text);
        EXPECT_EQ (lexer.next_token ().text, name);
        EXPECT_EQ (lexer.next_token ().kind, TokenKind::colon);
        EXPECT_EQ (lexer.next_token ().text, "x");
    }
    EXPECT_EQ (quoted ("a b"), "\"a b\""); // as ever where there is no quote
    EXPECT_EQ (quoted (""), "\"\"");
}

TEST (lexer, display_in_quotes_is_the_keyword_not_a_species) {
    EXPECT_EQ (tokens_of ("\"display\" \"duration\" linked displays"),
               "display duration linked 'displays'");
}

TEST (lexer, a_quoted_name_that_is_never_closed_is_not_caught_by_the_reader) {
    EXPECT_EQ (tokens_of ("a \"b c"), "'a' 'b c'");
    EXPECT_EQ (fault_of ("a -> \"b | 1;"), "'|' expected, got 'EOF'\n");
}

TEST (lexer, colours_have_six_or_three_digits) {
    EXPECT_EQ (tokens_of ("#1a5, #A0b1C2"), "#11aa5500 , #a0b1c200");
    EXPECT_EQ (tokens_of ("#1a5)"), "#11aa5500 )");
    EXPECT_EQ (tokens_of ("#12345678"), "#34567800 '78'");
    EXPECT_EQ (tokens_of ("#123456789abc"), "#789abc00 '789abc'");
    EXPECT_EQ (tokens_of ("#12345678912345678"), "#ffffff00 '78912345678'");
    EXPECT_EQ (tokens_of ("#12"), "error: bad colour specification: '#    12'");
    EXPECT_EQ (tokens_of ("#12345, x"), "error: bad colour specification: '#12345,'");
    EXPECT_EQ (tokens_of ("#red, b"), "error: bad colour specification: '#red, b'");
    EXPECT_EQ (tokens_of ("#1234 x"), "error: bad colour specification: '#1234 x'");
}

TEST (lexer, the_sixth_byte_behind_the_sign_is_looked_at_first) {
    EXPECT_EQ (tokens_of ("#abc, d;"), "#000abc00 ;");
}

TEST (lexer, numbers_need_what_may_follow_them) {
    EXPECT_EQ (tokens_of ("1 2.5; .5 1e3 2e 1-2 "), "1 2.5 ; 0.5 1000 2 1");
    EXPECT_EQ (tokens_of ("1e-3 1..2 1.2.3 "), "0.001 '1..2' '1.2.3'");
    EXPECT_EQ (tokens_of ("2PG 10"), "'2PG' '10'");
    EXPECT_EQ (tokens_of ("5;5\t5\n5"), "5 ; 5 5 '5'");
    EXPECT_EQ (tokens_of ("10uM,10mM;10\xb5M-10mM:"), "10 uM , 10 mM ; 10 uM - 10 mM :");
    EXPECT_EQ (tokens_of ("10mM|"), "'10mM' |");
    EXPECT_EQ (tokens_of ("1\r2 "), "'1\r2'");
    EXPECT_EQ (tokens_of ("1->2 "), "'1' -> 2");
}

TEST (lexer, a_number_before_a_comma_is_a_name) { EXPECT_EQ (tokens_of ("3,5 "), "'3' , 5"); }

TEST (lexer, a_glued_unit_must_not_be_followed_by_plus) {
    EXPECT_EQ (tokens_of ("[a] = 10uM+"), "[ 'a' ] = '10uM' +");
}

TEST (lexer, the_text_ends_at_a_nul) {
    EXPECT_EQ (tokens_of (std::string_view ("a b\0c d", 7)), "'a' 'b'");
}

TEST (lexer, each_name_has_the_index_that_the_table_gives) {
    Names names;
    Lexer lexer = names.lexer ("a \"b c\" a display 5 \"\"");
    EXPECT_EQ (lexer.next_token ().species, 0);
    EXPECT_EQ (lexer.next_token ().species, 1);
    EXPECT_EQ (lexer.next_token ().species, 0);
    EXPECT_EQ (lexer.next_token ().species, -1);
    EXPECT_EQ (lexer.next_token ().species, -1);
    EXPECT_EQ (lexer.next_token ().species, -1);
    EXPECT_EQ (lexer.intern ("d"), 2);
    EXPECT_THAT (names.all, ElementsAre ("a", "b c", "d"));
}

TEST (lexer, a_full_table_ends_the_text) {
    Names names (2);
    const CaughtMessages messages;
    Lexer lexer = names.lexer ("a b a c a");
    for (const int index : {0, 1, 0}) EXPECT_EQ (lexer.next_token ().species, index);
    EXPECT_FALSE (lexer.failed ());
    EXPECT_EQ (lexer.next_token ().kind, TokenKind::eof);
    EXPECT_TRUE (lexer.failed ());
    EXPECT_EQ (lexer.next_token ().kind, TokenKind::eof);
    EXPECT_EQ (lexer.intern ("b"), 0);
    EXPECT_THAT (messages.all, ElementsAre ("no 100% room"));
}

TEST (lexer, only_the_first_failure_is_told_and_the_text_ends_there) {
    Names names;
    const CaughtMessages messages;
    Lexer lexer = names.lexer ("a b #zz");
    const Token first = lexer.next_token ();
    lexer.unget_token (first);
    EXPECT_FALSE (lexer.model_error ("%s is %d", "a", 1));
    EXPECT_FALSE (lexer.model_error ("another"));
    EXPECT_TRUE (lexer.failed ());
    EXPECT_EQ (lexer.next_token ().kind, TokenKind::eof);
    EXPECT_EQ (lexer.next_token ().kind, TokenKind::eof);
    EXPECT_THAT (names.all, ElementsAre ("a"));
    EXPECT_THAT (messages.all, ElementsAre ("a is 1"));
}

TEST (lexer, a_token_that_was_put_back_comes_once_more) {
    Names names;
    Lexer lexer = names.lexer ("a b");
    const Token first = lexer.next_token ();
    lexer.unget_token (first);
    EXPECT_EQ (lexer.next_token ().text, "a");
    EXPECT_EQ (lexer.next_token ().text, "b");
    lexer.unget_token (lexer.next_token ());
    EXPECT_EQ (lexer.next_token ().kind, TokenKind::eof);
    EXPECT_EQ (lexer.next_token ().kind, TokenKind::eof);
}

TEST (lexer, keywords_are_known_by_the_whole_word) {
    EXPECT_EQ (keyword_of ("excess"), TokenKind::excess);
    EXPECT_EQ (keyword_of ("Excess"), TokenKind::none);
    EXPECT_EQ (keyword_of ("inputs"), TokenKind::none);
    EXPECT_EQ (keyword_of ("mM"), TokenKind::none);
    EXPECT_EQ (keyword_of (""), TokenKind::none);
}

TEST (names, hash_keeps_the_sign_of_bytes_above_127) {
    EXPECT_EQ (NameTable::hash (""), 11U);
    EXPECT_EQ (NameTable::hash ("a"), ((11U * 19U) ^ 'a') % 4096U);
    // 11 * 19 xor -75 is negative; its remainder is brought back by 4096.
    EXPECT_EQ (NameTable::hash ("\xb5"), static_cast<unsigned> (4096 + (209 ^ -75)));
}

TEST (names, a_shorter_name_is_taken_for_a_longer_one_in_its_slot) {
    // Two names whose hashes agree, one the beginning of the other.
    std::string longer;
    for (int i = 0; i < 4096 * 8 && longer.empty (); ++i) {
        const std::string name = "a" + std::to_string (i);
        if (NameTable::hash (name) == NameTable::hash ("a")) longer = name;
    }
    ASSERT_FALSE (longer.empty ());
    ModelTables tables;
    EXPECT_EQ (tables.intern_species (longer, false), 0);
    EXPECT_EQ (tables.intern_species ("a", false), 0);
    EXPECT_EQ (tables.n_species (), 1U);
    // The other way round they stay apart.
    ModelTables other;
    EXPECT_EQ (other.intern_species ("a", false), 0);
    EXPECT_EQ (other.intern_species (longer, false), 1);
    EXPECT_EQ (other.species[1]->hash, (NameTable::hash ("a") + 41) & 4095);
}

TEST (names, looking_up_makes_nothing) {
    ModelTables tables;
    EXPECT_EQ (tables.intern_species ("x", true), 0);
    EXPECT_EQ (tables.n_species (), 0U);
    EXPECT_EQ (tables.intern_species ("x", false), 0);
    EXPECT_EQ (tables.intern_species ("y", false), 1);
    EXPECT_EQ (tables.intern_species ("y", true), 1);
}

TEST (names, a_full_table_gives_minus_two) {
    ModelTables tables;
    for (unsigned i = 0; i < max_species; ++i) {
        ASSERT_EQ (tables.intern_species ("name" + std::to_string (i) + "x", false),
                   static_cast<int> (i));
    }
    EXPECT_EQ (tables.intern_species ("one more", false), -2);
    EXPECT_EQ (tables.intern_species ("name7x", false), 7);
}

} // namespace
} // namespace ostrand::sim
