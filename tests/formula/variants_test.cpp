// Normal form, rewriting rules, nestings, mixed gates, and the family they make.
#include "formula/made_up.h"
#include "formula/normalise.h"
#include "formula/parse.h"
#include "formula/plain_variants.h"
#include "formula/rewrite.h"
#include "formula/variants.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace ostrand::formula {
namespace {

using Texts = std::vector<std::string>;

OperatorPtr parsed (const std::string& formula) { return FormCreator ().parse (formula); }
OperatorPtr normal (const std::string& formula) { return normalise (parsed (formula)); }

std::string normal_text (const std::string& formula) {
    const OperatorPtr tree = normal (formula);
    return tree == nullptr ? "null" : tree->text ();
}

Texts texts (const std::vector<OperatorPtr>& trees) {
    Texts all;
    for (const OperatorPtr& tree : trees) all.push_back (tree->text ());
    std::sort (all.begin (), all.end ());
    return all;
}

Texts variant_texts (const std::string& formula) {
    Texts all;
    for (const OperatorPtr& tree : variants (parsed (formula))) all.push_back (tree->text ());
    return all;
}

/// The truth table as text, over these names.
std::string truth (const Operator& tree, const std::set<std::string>& names) {
    std::string table;
    const std::vector<std::string> order (names.begin (), names.end ());
    for (unsigned row = 0; row < (1U << order.size ()); ++row) {
        table += evaluate (tree,
                           [&] (const std::string& name) {
                               const auto place = std::find (order.begin (), order.end (), name);
                               return ((row >> (place - order.begin ())) & 1U) != 0;
                           })
                     ? '1'
                     : '0';
    }
    return table;
}

TEST (normalise, equal_operands_are_kept_once) {
    EXPECT_EQ (normal_text ("a + a"), "a");
    EXPECT_EQ (normal ("a + a")->type (), OperatorType::leaf);
    EXPECT_EQ (normal_text ("(a . b) + (b . a)"), "( a . b )");
    EXPECT_EQ (normal_text ("a . b . a"), "( a . b )");
}

TEST (normalise, operands_of_the_same_operator_move_up) {
    EXPECT_EQ (normal_text ("(a + b) + (c + (d + a))"), "( a + b + c + d )");
    EXPECT_EQ (normal_text ("a . (b . c)"), "( a . b . c )");
    EXPECT_EQ (normal_text ("a . (b + c)"), "( ( b + c ) . a )");
}

TEST (normalise, double_nots_fall_away) {
    EXPECT_EQ (normal_text ("!!a"), "a");
    EXPECT_EQ (normal_text ("!!!a"), "!a");
    EXPECT_EQ (normal_text ("!!(a + b) + c"), "( a + b + c )");
}

TEST (normalise, a_node_with_one_child_is_that_child) {
    EXPECT_EQ (normal_text ("a +"), "a");
    EXPECT_EQ (normal_text ("!(a .)"), "!a");
}

TEST (normalise, unknown_operators_stay) { EXPECT_EQ (normal_text ("a b"), "?( a ? b )"); }

TEST (normalise, operators_without_operands_are_dropped) {
    EXPECT_EQ (normal_text ("!"), "null");
    EXPECT_EQ (normal_text ("a + !"), "a");
    EXPECT_EQ (normalise (nullptr), nullptr);
}

TEST (reduce, nots_move_down_to_the_leaves) {
    EXPECT_EQ (reduce (parsed ("!(a . b)"))->text (), "( !a + !b )");
    EXPECT_EQ (reduce (parsed ("!(a + b)"))->text (), "( !a . !b )");
    EXPECT_EQ (reduce (parsed ("!(a . !(b . c))"))->text (), "( !a + ( b . c ) )");
}

TEST (reduce, products_are_expanded) {
    EXPECT_EQ (reduce (parsed ("a . (b + c)"))->text (), "( ( a . b ) + ( a . c ) )");
    EXPECT_EQ (reduce (parsed ("(a + b) . (c + d)"))->text (),
               "( ( a . c ) + ( a . d ) + ( b . c ) + ( b . d ) )");
    EXPECT_EQ (reduce (nullptr), nullptr);
}

TEST (rules, distribution_expands_each_or_of_an_and) {
    EXPECT_EQ (texts (distribute (*normal ("a . (b + c)"))), Texts{"( ( a . b ) + ( a . c ) )"});
    EXPECT_EQ (texts (distribute (*normal ("(a + b) . (c + d)"))),
               (Texts{"( ( ( a + b ) . c ) + ( ( a + b ) . d ) )",
                      "( ( ( c + d ) . a ) + ( ( c + d ) . b ) )"}));
    EXPECT_TRUE (distribute (*normal ("a . b . c")).empty ());
    EXPECT_TRUE (distribute (*normal ("a + (b . c)")).empty ());
}

TEST (rules, factoring_takes_a_common_operand_out) {
    EXPECT_EQ (texts (factor (*normal ("(a . b) + (a . c)"))), Texts{"( ( b + c ) . a )"});
    EXPECT_EQ (texts (factor (*normal ("(a . b) + (a . c) + d"))),
               Texts{"( ( ( b + c ) . a ) + d )"});
    EXPECT_EQ (texts (factor (*normal ("(a . b . x) + (a . b . y)"))),
               (Texts{"( ( ( a . x ) + ( a . y ) ) . b )", "( ( ( b . x ) + ( b . y ) ) . a )"}));
    EXPECT_TRUE (factor (*normal ("(a . b) + (c . d)")).empty ());
    EXPECT_TRUE (factor (*normal ("a + (a . b)")).empty ());
}

TEST (rules, de_morgan_works_in_both_directions) {
    EXPECT_EQ (texts (de_morgan (*normal ("a . b"))), Texts{"!( !a + !b )"});
    EXPECT_EQ (texts (de_morgan (*normal ("a + !b"))), Texts{"!( !a . b )"});
    EXPECT_TRUE (de_morgan (*normal ("!a")).empty ());
    EXPECT_EQ (texts (rewritten (normal ("!(a . b)"), de_morgan)), Texts{"( !a + !b )"});
}

TEST (rules, work_at_every_node) {
    EXPECT_EQ (texts (rewritten (normal ("(a . b) + (c . d)"), de_morgan)),
               (Texts{"!( !( a . b ) . !( c . d ) )", "( !( !a + !b ) + ( c . d ) )",
                      "( !( !c + !d ) + ( a . b ) )"}));
}

std::vector<OperatorPtr> alternatives (const OperatorPtr& tree) {
    GrowthBudget budget;
    return Alternatives (budget).of (tree);
}

TEST (alternatives, are_all_groupings_of_the_operands) {
    EXPECT_EQ (
        texts (alternatives (parsed ("a + b + c"))),
        (Texts{"( ( a + b ) + c )", "( ( a + c ) + b )", "( ( b + c ) + a )", "( a + b + c )"}));
    // Series-reduced trees with labelled leaves, of 2, 3, ... leaves.
    const std::size_t counts[] = {1, 4, 26, 236, 2752};
    std::string formula = "a";
    for (int i = 0; i < 5; ++i) {
        formula += std::string (" . ") + static_cast<char> ('b' + i);
        auto all = texts (alternatives (parsed (formula)));
        EXPECT_EQ (all.size (), counts[i]);
        all.erase (std::unique (all.begin (), all.end ()), all.end ());
        EXPECT_EQ (all.size (), counts[i]);
    }
}

TEST (alternatives, take_a_not_into_a_gate_of_two) {
    const auto one = [] (const std::string& formula) {
        const auto all = alternatives (parsed (formula));
        return all.size () == 2 ? all[1] : nullptr;
    };
    const OperatorPtr and_not = one ("a . !b");
    ASSERT_NE (and_not, nullptr);
    EXPECT_EQ (and_not->type (), OperatorType::and_not);
    EXPECT_EQ (and_not->ordered_text (), "( a !.! b )");
    EXPECT_EQ (one ("!b . a")->ordered_text (), "( a !.! b )");
    EXPECT_EQ (one ("b . !a")->ordered_text (), "( b !.! a )");
    EXPECT_EQ (one ("b . !a")->text (), "( a !.! b )");
    EXPECT_EQ (one ("a + !b")->type (), OperatorType::or_not);
    EXPECT_EQ (alternatives (parsed ("!a . !b")).size (), 1U);
    // The three of them, (a . !b) . c, (a . c) . !b and (c . !b) . a, and a mixed gate in each.
    EXPECT_EQ (alternatives (parsed ("a . !b . c")).size (), 7U);
    EXPECT_EQ (alternatives (parsed ("(a . !b) + !(c + !d)")).size (), 8U);
}

TEST (variants, small_families_are_known) {
    EXPECT_EQ (variant_texts ("a"), Texts{"a"});
    EXPECT_EQ (variant_texts ("!a"), Texts{"!a"});
    EXPECT_EQ (variant_texts ("a . b"), (Texts{"!( !a + !b )", "( a . b )"}));
    EXPECT_EQ (variant_texts ("a . !b"),
               (Texts{"!( !a + b )", "!( a !+! b )", "( !b . a )", "( a !.! b )"}));
    EXPECT_EQ (variant_texts ("a b"), Texts{"?( a ? b )"});
    EXPECT_TRUE (variants (nullptr).empty ());
}

TEST (variants, the_formula_as_written_is_one) {
    EXPECT_EQ (variant_texts ("a + a"), (Texts{"( a + a )", "a"}));
    EXPECT_EQ (variant_texts ("!!a"), (Texts{"!!a", "a"}));
}

TEST (variants, one_text_can_have_two_trees) {
    const auto all = variants (parsed ("(a . !b) + (b . !a)"));
    EXPECT_TRUE (std::adjacent_find (all.begin (), all.end (), [] (const auto& x, const auto& y) {
                     return x->text () == y->text ();
                 }) != all.end ());
}

TEST (variants, trees_of_twelve_nodes_are_kept_and_not_rewritten) {
    // 12 nodes: 7 names, 5 operators; splitting still works on it, De Morgan does not.
    const OperatorPtr large = normal ("(a . b . c) + (d . e) + (f . (g + h))");
    ASSERT_EQ (large->node_count (), 13U);
    const auto all = variants (large);
    EXPECT_EQ (all.size (), alternatives (large).size ());
    EXPECT_EQ (all.size (), 4U * 4U); // of the OR and of the AND of three operands
    const OperatorPtr twelve = normal ("(a . b . c) + (d . e) + f + (g . h)");
    ASSERT_EQ (twelve->node_count (), 12U);
    EXPECT_EQ (variants (twelve).size (), 4U * 26U);
    const OperatorPtr eleven = normal ("(a . b) + (d . e) + f + (g . h)");
    ASSERT_EQ (eleven->node_count (), 11U);
    EXPECT_GT (variants (eleven).size (), 26U);
}

TEST (variants, growing_can_be_stopped) {
    Growth growth = Growth::complete;
    variants (parsed ("a+b+c+d+e+f+g+h"), {.late = [] { return true; }}, &growth);
    EXPECT_EQ (growth, Growth::stopped);
    variants (parsed ("a+b+c+d+e"), {}, &growth);
    EXPECT_EQ (growth, Growth::complete);
    std::string wide = "a";
    for (int i = 0; i < 40; ++i) wide += "+b" + std::to_string (i);
    EXPECT_GT (variants (parsed (wide), {}, &growth).size (), 0U);
    EXPECT_EQ (growth, Growth::bound_reached);
}

TEST (variants, all_roads_to_a_value_agree) {
    made_up::Numbers numbers (17);
    const std::vector<std::string> names{"a", "b", "c", "d"};
    for (int round = 0; round < 300; ++round) {
        const std::string formula = made_up::formula_text (numbers, names, numbers.below (5));
        SCOPED_TRACE (formula);
        FormCreator creator;
        const OperatorPtr root = creator.parse (formula);
        const auto& used = creator.variables ();
        const std::string table = truth (*root, used);
        // print and read again
        const OperatorPtr again = parsed (root->text ());
        EXPECT_EQ (again->text (), root->text ());
        EXPECT_EQ (truth (*again, used), table);
        // normal and reduced forms, which read back too
        EXPECT_EQ (truth (*normalise (root), used), table);
        EXPECT_EQ (normalise (normalise (root))->text (), normalise (root)->text ());
        EXPECT_EQ (truth (*reduce (root), used), table);
        EXPECT_EQ (truth (*parsed (reduce (root)->text ()), used), table);
        // every variant
        for (const OperatorPtr& tree : variants (root)) {
            ASSERT_EQ (truth (*tree, used), table) << tree->ordered_text ();
        }
    }
}

TEST (variants, equal_the_family_that_the_plain_rules_make) {
    made_up::Numbers numbers (5);
    const std::vector<std::string> names{"a", "b", "c", "d", "e"};
    std::size_t all = 0;
    for (int round = 0; round < 150; ++round) {
        const std::string formula = made_up::formula_text (numbers, names, numbers.below (5));
        SCOPED_TRACE (formula);
        const OperatorPtr root = parsed (formula);
        std::set<std::string> fast;
        for (const OperatorPtr& tree : variants (root)) fast.insert (tree->ordered_text ());
        EXPECT_EQ (fast, plain::variant_texts (plain::tree_of (*root)));
        all += fast.size ();
    }
    EXPECT_GT (all, 1000U);
}

} // namespace
} // namespace ostrand::formula
