// The family of equivalent trees of a formula.
// Layer: formula.
#pragma once
#include "formula/alternatives.h"
#include "formula/operator.h"

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

/// Grows every tree that distribution, factoring and De Morgan make of a formula, and all
/// alternatives of each; the formula as written too. The trees live as long as this object, and may
/// take a second to free.
class VariantGrowth {
  public:
    /// use  leaves out alternatives that are of no use
    explicit VariantGrowth (Patience patience = {}, TreeUse use = {});

    /// Grows the variants of one formula; none of a null root.
    void grow (const OperatorPtr& root);

    const VariantSet& trees () const { return trees_; }
    VariantSet take_trees () { return std::move (trees_); }
    Growth growth () const { return budget_.state (); }

  private:
    void rewrite (const OperatorPtr& normal);

    GrowthBudget budget_;
    Alternatives alternatives_;
    VariantSet trees_;
    VariantSet waiting_; // not yet rewritten
};

/// The same in one call.
/// growth  out, when given
VariantSet variants (const OperatorPtr& root, const Patience& patience = {},
                     Growth* growth = nullptr, const TreeUse& use = {});

} // namespace ostrand::formula
