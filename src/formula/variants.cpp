// How does a formula grow into all its equivalent trees?
#include "formula/variants.h"

#include "formula/normalise.h"
#include "formula/rewrite.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

namespace ostrand::formula {
namespace {

/// Rewrites from tree to tree until nothing new comes.
VariantSet grow (const OperatorPtr& normal, GrowthBudget& budget) {
    static constexpr std::array<Rule, 3> rules{distribute, factor, de_morgan};
    VariantSet work;
    VariantSet result;
    if (normal != nullptr) work.insert (normal);
    while (!work.empty ()) {
        const OperatorPtr tree = std::move (work.extract (work.begin ()).value ());
        result.insert (tree);
        if (tree->node_count () >= rewriting_bound) continue;
        for (const Rule rule : rules) {
            if (!budget.tree ()) break;
            for (const OperatorPtr& next : rewritten (tree, rule)) {
                if (next != nullptr && !result.contains (next)) work.insert (next);
            }
        }
    }
    return result;
}

} // namespace

VariantSet variants (const OperatorPtr& root, const std::function<bool ()>& stop, Growth* growth,
                     const TreeUse& use) {
    GrowthBudget budget (stop);
    VariantSet result;
    if (root != nullptr) {
        result = grow (normalise (root), budget);
        result.insert (root);
        std::vector<OperatorPtr> base (result.begin (), result.end ());
        std::vector<OperatorPtr> by_size = base;
        std::stable_sort (by_size.begin (), by_size.end (), [] (const auto& a, const auto& b) {
            return a->node_count () < b->node_count ();
        });
        Alternatives alternatives (budget, use);
        for (const OperatorPtr& tree : by_size) alternatives.of (tree);
        // Where not all has room, small trees come first: they take the fewest gates.
        if (budget.state () != Growth::complete) base = std::move (by_size);
        for (const OperatorPtr& tree : base) {
            for (const OperatorPtr& alternative : alternatives.of (tree)) {
                if (result.size () < variant_bound) {
                    result.insert (alternative);
                } else if (!result.contains (alternative)) {
                    budget.full ();
                }
            }
        }
    }
    if (growth != nullptr) *growth = budget.state ();
    return result;
}

} // namespace ostrand::formula
