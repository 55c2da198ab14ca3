// How does a formula grow into all its equivalent trees?
#include "formula/variants.h"

#include "formula/normalise.h"
#include "formula/rewrite.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

namespace ostrand::formula {

VariantGrowth::VariantGrowth (Patience patience, TreeUse use)
    : budget_ (std::move (patience)), alternatives_ (budget_, std::move (use)) {}

/// Rewrites from tree to tree until nothing new comes.
void VariantGrowth::rewrite (const OperatorPtr& normal) {
    static constexpr std::array<Rule, 3> rules{distribute, factor, de_morgan};
    if (normal != nullptr) waiting_.insert (normal);
    while (!waiting_.empty () && !budget_.abandoned ()) {
        const OperatorPtr tree = std::move (waiting_.extract (waiting_.begin ()).value ());
        trees_.insert (tree);
        if (tree->node_count () >= rewriting_bound) continue;
        for (const Rule rule : rules) {
            if (!budget_.tree ()) break;
            for (const OperatorPtr& next : rewritten (tree, rule)) {
                if (next != nullptr && !trees_.contains (next)) waiting_.insert (next);
            }
        }
    }
}

void VariantGrowth::grow (const OperatorPtr& root) {
    if (root == nullptr) return;
    rewrite (normalise (root));
    trees_.insert (root);
    std::vector<OperatorPtr> base (trees_.begin (), trees_.end ());
    std::vector<OperatorPtr> by_size = base;
    std::stable_sort (by_size.begin (), by_size.end (), [] (const auto& a, const auto& b) {
        return a->node_count () < b->node_count ();
    });
    for (const OperatorPtr& tree : by_size) {
        if (budget_.abandoned ()) return;
        alternatives_.of (tree);
    }
    // Where not all has room, small trees come first: they take the fewest gates.
    if (budget_.state () != Growth::complete) base = std::move (by_size);
    for (const OperatorPtr& tree : base) {
        for (const OperatorPtr& alternative : alternatives_.of (tree)) {
            if (budget_.abandoned ()) return;
            if (trees_.size () < variant_bound) {
                trees_.insert (alternative);
            } else if (!trees_.contains (alternative)) {
                budget_.full ();
            }
        }
    }
}

VariantSet variants (const OperatorPtr& root, const Patience& patience, Growth* growth,
                     const TreeUse& use) {
    VariantGrowth grown (patience, use);
    grown.grow (root);
    if (growth != nullptr) *growth = grown.growth ();
    return grown.take_trees ();
}

} // namespace ostrand::formula
