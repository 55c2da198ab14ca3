// The family of equivalent trees of a formula.
// Layer: formula.
#pragma once
#include "formula/operator.h"

#include <functional>
#include <set>

namespace ostrand::formula {

/// Trees with as many nodes as this, leaves counted, are kept but not rewritten further.
inline constexpr std::size_t rewriting_bound = 12;

/// Trees of one formula that memory is given for. An OR of nine names has more.
inline constexpr std::size_t variant_bound = 1'000'000;

/// Operands of one operator up to which its nestings are made; those of ten are more than
/// variant_bound by far.
inline constexpr std::size_t nesting_operands_bound = 16;

/// Orders trees by canonical text. One text may have several trees, which differ in the operand
/// that a mixed gate negates (a xor b has some); they stand in the order of their ordered texts.
struct TextOrder {
    bool operator() (const OperatorPtr& a, const OperatorPtr& b) const {
        const int order = a->text ().compare (b->text ());
        return order != 0 ? order < 0 : a->ordered_text () < b->ordered_text ();
    }
};
using VariantSet = std::set<OperatorPtr, TextOrder>;

/// How far the growing came.
enum class Growth { complete, stopped, bound_reached };

/// Every tree that distribution, factoring and De Morgan make of a formula, in each with all
/// nestings of operators with more than two operands, and in each all ways of taking a NOT into a
/// mixed gate; the formula as written too. Empty for a null root.
/// stop    asked now and then; true ends the growing
/// growth  out, when given
VariantSet variants (const OperatorPtr& root, const std::function<bool ()>& stop = {},
                     Growth* growth = nullptr);

/// All nestings of one tree: every AND and OR of more than two operands as it is, and as nested
/// nodes of the same operator in every way. For n operands that gives 1, 4, 26, 236, 2752 ... trees
/// (n = 2, 3, ...: leaf-labelled trees without nodes of one child).
std::vector<OperatorPtr> nestings (const OperatorPtr& tree);

/// One tree with each AND or OR of two operands, of which exactly one is a NOT, as it is and as
/// ANDNOT or ORNOT of the other operand and the negated one, in all combinations. The operand that
/// is not negated comes first: a library holds each gate of two inputs in both orders and under
/// both names, so the other order is the same gates once more.
std::vector<OperatorPtr> mixed_gates (const OperatorPtr& tree);

} // namespace ostrand::formula
