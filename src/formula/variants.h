// The family of equivalent trees of a formula.
// Layer: formula.
#pragma once
#include "formula/alternatives.h"
#include "formula/operator.h"

#include <functional>
#include <set>

namespace ostrand::formula {

/// Trees with as many nodes as this, leaves counted, are kept but not rewritten further.
inline constexpr std::size_t rewriting_bound = 12;

/// Orders trees by canonical text. One text may have several trees, which differ in the operand
/// that a mixed gate negates (a xor b has some); they stand in the order of their ordered texts.
struct TextOrder {
    bool operator() (const OperatorPtr& a, const OperatorPtr& b) const {
        const int order = a->text ().compare (b->text ());
        return order != 0 ? order < 0 : a->ordered_text () < b->ordered_text ();
    }
};
using VariantSet = std::set<OperatorPtr, TextOrder>;

/// Every tree that distribution, factoring and De Morgan make of a formula, and all alternatives of
/// each; the formula as written too. Empty for a null root.
/// stop    asked now and then; true ends the growing
/// growth  out, when given
/// use     leaves out alternatives that are of no use
VariantSet variants (const OperatorPtr& root, const std::function<bool ()>& stop = {},
                     Growth* growth = nullptr, const TreeUse& use = {});

} // namespace ostrand::formula
