// The formula reader.
#include "formula/normalise.h"
#include "formula/parse.h"
#include "formula/variants.h"
#include "support/support.h"

#include <gtest/gtest.h>

namespace ostrand::formula {
namespace {

/// The canonical text of what was read; "null" when nothing was.
std::string read (const std::string& formula) {
    FormCreator creator;
    const OperatorPtr root = creator.parse (formula);
    return root == nullptr ? "null" : root->text ();
}

std::set<std::string> names (const std::string& formula) {
    FormCreator creator;
    creator.parse (formula);
    return creator.variables ();
}

using Names = std::set<std::string>;

TEST (parse, one_name_is_a_leaf) {
    FormCreator creator;
    const OperatorPtr root = creator.parse ("a");
    ASSERT_NE (root, nullptr);
    EXPECT_EQ (root->type (), OperatorType::leaf);
    EXPECT_EQ (root->name (), "a");
    EXPECT_EQ (creator.variables (), Names{"a"});
}

TEST (parse, a_not_has_one_child) {
    FormCreator creator;
    const OperatorPtr root = creator.parse ("!a");
    ASSERT_NE (root, nullptr);
    EXPECT_EQ (root->type (), OperatorType::not_gate);
    ASSERT_EQ (root->children ().size (), 1U);
    EXPECT_EQ (root->children ()[0]->name (), "a");
}

TEST (parse, a_group_under_a_not_is_folded_into_its_or) {
    FormCreator creator;
    const OperatorPtr root = creator.parse ("!(a + b)");
    ASSERT_NE (root, nullptr);
    EXPECT_EQ (root->type (), OperatorType::not_gate);
    ASSERT_EQ (root->children ().size (), 1U);
    EXPECT_EQ (root->children ()[0]->type (), OperatorType::or_gate);
    EXPECT_EQ (root->text (), "!( a + b )");
}

TEST (parse, and_and_or_have_one_rank_and_group_from_the_left) {
    EXPECT_EQ (read ("a.b+c.d"), "( ( ( a . b ) + c ) . d )");
    EXPECT_EQ (read ("a + b . c"), "( ( a + b ) . c )");
    EXPECT_EQ (read ("a . b + c"), "( ( a . b ) + c )");
    EXPECT_EQ (read ("a + (b . c)"), "( ( b . c ) + a )");
}

TEST (parse, a_run_of_one_operator_is_one_node) {
    FormCreator creator;
    const OperatorPtr root = creator.parse ("a + b + c");
    ASSERT_NE (root, nullptr);
    EXPECT_EQ (root->children ().size (), 3U);
}

TEST (parse, quoted_names_hold_signs) {
    EXPECT_EQ (names ("\"x-1\" + y"), (Names{"x-1", "y"}));
    EXPECT_EQ (read ("\"x-1\" + y"), "( x-1 + y )");
    EXPECT_EQ (names ("'a b' . c"), (Names{"a b", "c"}));
    EXPECT_EQ (names ("'it (is) + ok' . c"), (Names{"it (is) + ok", "c"}));
    EXPECT_EQ (names ("'a\" . b"), (Names{"a", "b"})); // either quote ends it
}

TEST (parse, a_quoted_name_begins_at_its_first_letter_or_digit) {
    EXPECT_EQ (names ("\" -x-1\" . y"), (Names{"x-1", "y"}));
    EXPECT_EQ (read ("'(a' . b"), "( a . b )");
    EXPECT_EQ (names ("\"x-1"), Names{"x-1"}); // no closing quote
    EXPECT_EQ (names ("\""), Names{});
}

TEST (parse, other_bytes_are_skipped) {
    EXPECT_EQ (read (" a\t.\n b #"), "( a . b )");
    EXPECT_EQ (read ("a_b"), "?( a ? b )");
    EXPECT_EQ (read ("\xc3\xa9 + a"), "( a )");
}

TEST (parse, two_names_without_an_operator_are_unknown) {
    FormCreator creator;
    const OperatorPtr root = creator.parse ("a b");
    ASSERT_NE (root, nullptr);
    EXPECT_EQ (root->type (), OperatorType::unknown);
    EXPECT_EQ (gate_name (root->type ()), "UNKNOW");
    EXPECT_EQ (root->children ().size (), 2U);
    EXPECT_EQ (root->text (), "?( a ? b )");
    EXPECT_EQ (read ("(a b)"), "?( a ? b )");
    EXPECT_EQ (read ("(a b) + c"), "( ?( a ? b ) + c )");
}

TEST (parse, nots_close_behind_names_and_groups) {
    EXPECT_EQ (read ("!!a"), "!!a");
    EXPECT_EQ (read ("!a . !b"), "( !a . !b )");
    EXPECT_EQ (read ("!(!(a))"), "!!a");
    EXPECT_EQ (read ("!a b + c"), "( !a + b + c )");
}

TEST (parse, a_closing_bracket_too_many_ends_the_formula) {
    EXPECT_EQ (read ("a + b) . c"), "( a + b )");
    EXPECT_EQ (names ("a + b) . c"), (Names{"a", "b"}));
    EXPECT_EQ (read (")"), "null");
    EXPECT_EQ (read ("(a))"), "a");
}

TEST (parse, what_is_open_at_the_end_is_closed) {
    EXPECT_EQ (read ("(a + b"), "( a + b )");
    EXPECT_EQ (read ("((a + b"), "( a + b )");
    EXPECT_EQ (read ("c . (a + b"), "( ( a + b ) . c )");
    EXPECT_EQ (read ("!(a + b"), "!( a + b )");
    EXPECT_EQ (read ("x . (y + (a . b"), "( ( ( a . b ) + y ) . x )");
    EXPECT_EQ (normalise (FormCreator ().parse ("x + ((a"))->text (), "( a + x )");
}

TEST (parse, nothing_to_read_gives_no_tree) {
    for (const char* text : {"", "  ", "()", "(())", "''", ",;"}) EXPECT_EQ (read (text), "null");
}

TEST (parse, operators_without_operands_are_not_complete) {
    for (const char* text : {"a + !", "+", "a . (!)"}) {
        const OperatorPtr root = FormCreator ().parse (text);
        ASSERT_NE (root, nullptr) << text;
        EXPECT_FALSE (root->complete ()) << text;
    }
    EXPECT_TRUE (FormCreator ().parse ("a + ()")->complete ());
}

TEST (parse, formulas_beyond_the_bounds_are_refused_with_a_message) {
    testing::CaughtMessages messages;
    EXPECT_EQ (read (std::string (100000, '!') + "a"), "null");
    EXPECT_EQ (messages.joined (), "The formula is nested deeper than 1000 operators.\n");
    messages.all.clear ();
    EXPECT_EQ (read (std::string (100000, '(') + "a"), "null");
    EXPECT_EQ (messages.joined (), "The formula is nested deeper than 1000 operators.\n");
    messages.all.clear ();
    std::string wide = "a";
    for (int i = 0; i < 5000; ++i) wide += "+a";
    EXPECT_EQ (read (wide), "null");
    EXPECT_EQ (messages.joined (), "The formula has more than 4000 names and operators.\n");
    messages.all.clear ();
    EXPECT_EQ (read (std::string (900, '!') + "a"), std::string (900, '!') + "a");
    EXPECT_EQ (messages.joined (), "");
}

TEST (canonical_text, does_not_show_the_order_of_operands) {
    EXPECT_EQ (read ("b . a"), read ("a . b"));
    EXPECT_EQ (read ("(c + d) . (b + a)"), read ("(a + b) . (d + c)"));
    EXPECT_NE (read ("a . b"), read ("a + b"));
}

TEST (canonical_text, every_type_has_its_separator_and_name) {
    const std::vector<OperatorPtr> two{make_leaf ("a"), make_leaf ("b")};
    const auto text = [&] (OperatorType type) { return make_operator (type, two)->text (); };
    EXPECT_EQ (text (OperatorType::unknown), "?( a ? b )");
    EXPECT_EQ (text (OperatorType::and_gate), "( a . b )");
    EXPECT_EQ (text (OperatorType::or_gate), "( a + b )");
    EXPECT_EQ (text (OperatorType::not_gate), "!a");
    EXPECT_EQ (text (OperatorType::and_not), "( a !.! b )");
    EXPECT_EQ (text (OperatorType::not_and), "( a !.! b )");
    EXPECT_EQ (text (OperatorType::or_not), "( a !+! b )");
    EXPECT_EQ (text (OperatorType::not_or), "( a !+! b )");
    EXPECT_EQ (text (OperatorType::or3), "( a 3+3 b )");
    EXPECT_EQ (text (OperatorType::and3), "( a 3.3 b )");
    const char* const gates[] = {"UNKNOW", "AND",   "OR",    "NOT", "ANDNOT",
                                 "NOTAND", "ORNOT", "NOTOR", "OR3", "AND3"};
    for (int code = 0; code < operator_type_count; ++code) {
        EXPECT_EQ (gate_name (static_cast<OperatorType> (code)), gates[code]);
    }
    EXPECT_EQ (gate_name (OperatorType::leaf), "");
}

TEST (canonical_text, a_null_tree_is_told_on_standard_output) {
    ::testing::internal::CaptureStdout ();
    EXPECT_EQ (canonical_text (nullptr), "");
    EXPECT_EQ (::testing::internal::GetCapturedStdout (),
               "BUGGGGGGGGGGGGGGGGGGGGGGGGGGGGGGGGGGGGGGGGG\n");
}

} // namespace
} // namespace ostrand::formula
