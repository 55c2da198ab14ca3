// How does a formula grow into all its equivalent trees?
#include "formula/variants.h"

#include "formula/normalise.h"
#include "formula/rewrite.h"

#include <array>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace ostrand::formula {
namespace {

using Trees = std::vector<OperatorPtr>;

bool is_and_or (OperatorType type) {
    return type == OperatorType::and_gate || type == OperatorType::or_gate;
}

/// Counts the trees that were made and knows when to end.
class Budget {
  public:
    explicit Budget (const std::function<bool ()>& stop) : stop_ (stop) {}
    /// False when nothing more may be made.
    bool more () {
        if (state_ != Growth::complete) return false;
        if (++made_ > 2 * variant_bound) state_ = Growth::bound_reached;
        if (made_ % 256 == 0 && stop_ && stop_ ()) state_ = Growth::stopped;
        return state_ == Growth::complete;
    }
    void full () { state_ = Growth::bound_reached; }
    Growth state () const { return state_; }

  private:
    const std::function<bool ()>& stop_;
    std::size_t made_ = 0;
    Growth state_ = Growth::complete;
};

/// Makes the alternatives of each node once for all trees that hold it.
class Alternatives {
  public:
    explicit Alternatives (Budget& budget) : budget_ (budget) {}

    const Trees& nestings (const OperatorPtr& tree) {
        const auto known = nested_.find (tree->text ());
        if (known != nested_.end ()) return known->second;
        Trees result;
        for (const Trees& operands : operand_choices (tree, &Alternatives::nestings)) {
            if (is_and_or (tree->type ())) {
                nest (tree->type (), operands, result);
            } else {
                result.push_back (same_kind (tree, operands));
            }
        }
        return nested_.emplace (tree->text (), std::move (result)).first->second;
    }

    const Trees& mixed (const OperatorPtr& tree) {
        const auto known = mixed_.find (tree->text ());
        if (known != mixed_.end ()) return known->second;
        Trees result;
        for (const Trees& operands : operand_choices (tree, &Alternatives::mixed)) {
            result.push_back (same_kind (tree, operands));
            if (!is_and_or (tree->type ()) || operands.size () != 2) continue;
            const bool first_negated = is_negation (*operands[0]);
            if (first_negated == is_negation (*operands[1])) continue;
            const OperatorPtr& negated = operands[first_negated ? 0 : 1];
            result.push_back (
                make_operator (tree->type () == OperatorType::and_gate ? OperatorType::and_not
                                                                       : OperatorType::or_not,
                               {operands[first_negated ? 1 : 0], negated->children ()[0]}));
        }
        return mixed_.emplace (tree->text (), std::move (result)).first->second;
    }

  private:
    using Maker = const Trees& (Alternatives::*)(const OperatorPtr&);

    static bool is_negation (const Operator& tree) {
        return tree.type () == OperatorType::not_gate && !tree.children ().empty ();
    }

    static OperatorPtr same_kind (const OperatorPtr& tree, const Trees& operands) {
        return tree->type () == OperatorType::leaf || operands == tree->children ()
                   ? tree
                   : make_operator (tree->type (), operands);
    }

    /// Every choice of one alternative for each operand.
    std::vector<Trees> operand_choices (const OperatorPtr& tree, Maker maker) {
        std::vector<Trees> choices{{}};
        for (const OperatorPtr& child : tree->children ()) {
            const Trees& alternatives = (this->*maker) (child);
            std::vector<Trees> longer;
            for (const Trees& choice : choices) {
                for (const OperatorPtr& alternative : alternatives) {
                    if (!budget_.more () && !longer.empty ()) break;
                    longer.push_back (choice);
                    longer.back ().push_back (alternative);
                }
            }
            choices = std::move (longer);
        }
        return choices;
    }

    /// Appends every nesting of these operands under one operator.
    void nest (OperatorType type, const Trees& operands, Trees& out) {
        out.push_back (make_operator (type, operands));
        if (operands.size () < 3) return;
        if (operands.size () > nesting_operands_bound) {
            budget_.full ();
            return;
        }
        std::vector<Trees> blocks;
        divide (type, operands, 0, blocks, out);
    }

    /// Puts operand `next` and those behind it into blocks in every way; each division into two
    /// blocks or more, one of them with several operands, is a nesting.
    void divide (OperatorType type, const Trees& operands, std::size_t next,
                 std::vector<Trees>& blocks, Trees& out) {
        if (next == operands.size ()) {
            if (blocks.size () > 1 && blocks.size () < operands.size ()) {
                Trees parts;
                combine (type, blocks, parts, out);
            }
            return;
        }
        if (budget_.state () != Growth::complete) return;
        for (std::size_t i = 0; i < blocks.size (); ++i) {
            blocks[i].push_back (operands[next]);
            divide (type, operands, next + 1, blocks, out);
            blocks[i].pop_back ();
        }
        blocks.push_back ({operands[next]});
        divide (type, operands, next + 1, blocks, out);
        blocks.pop_back ();
    }

    /// Appends the operator over one nesting of each block, for all choices.
    void combine (OperatorType type, const std::vector<Trees>& blocks, Trees& parts, Trees& out) {
        if (parts.size () == blocks.size ()) {
            if (budget_.more ()) out.push_back (make_operator (type, parts));
            return;
        }
        const Trees& block = blocks[parts.size ()];
        Trees nested;
        if (block.size () == 1) {
            nested = block;
        } else {
            nest (type, block, nested);
        }
        for (const OperatorPtr& part : nested) {
            if (budget_.state () != Growth::complete) return;
            parts.push_back (part);
            combine (type, blocks, parts, out);
            parts.pop_back ();
        }
    }

    Budget& budget_;
    std::unordered_map<std::string, Trees> nested_;
    std::unordered_map<std::string, Trees> mixed_;
};

/// Rewrites from tree to tree until nothing new comes.
VariantSet grow (const OperatorPtr& normal, Budget& budget) {
    static constexpr std::array<Rule, 3> rules{distribute, factor, de_morgan};
    VariantSet work;
    VariantSet result;
    if (normal != nullptr) work.insert (normal);
    while (!work.empty ()) {
        const auto first = work.begin ();
        const OperatorPtr tree =
            *first; // NOLINT(performance-unnecessary-copy-initialization): it moves
        result.insert (work.extract (first));
        if (tree->node_count () >= rewriting_bound) continue;
        for (const Rule rule : rules) {
            if (!budget.more ()) break;
            for (const OperatorPtr& next : rewritten (tree, rule)) {
                if (next != nullptr && !result.contains (next)) work.insert (next);
            }
        }
    }
    return result;
}

/// Adds all alternatives of all trees.
template <typename Maker>
void add_alternatives (VariantSet& trees, Budget& budget, const Maker& maker) {
    const Trees base (trees.begin (), trees.end ());
    for (const OperatorPtr& tree : base) {
        for (const OperatorPtr& alternative : maker (tree)) {
            if (trees.size () >= variant_bound) {
                budget.full ();
                return;
            }
            trees.insert (alternative);
        }
        if (!budget.more ()) return;
    }
}

} // namespace

VariantSet variants (const OperatorPtr& root, const std::function<bool ()>& stop, Growth* growth) {
    Budget budget (stop);
    VariantSet result;
    if (root != nullptr) {
        result = grow (normalise (root), budget);
        result.insert (root);
        Alternatives alternatives (budget);
        add_alternatives (result, budget, [&] (const OperatorPtr& tree) -> const Trees& {
            return alternatives.nestings (tree);
        });
        add_alternatives (result, budget, [&] (const OperatorPtr& tree) -> const Trees& {
            return alternatives.mixed (tree);
        });
    }
    if (growth != nullptr) *growth = budget.state ();
    return result;
}

std::vector<OperatorPtr> nestings (const OperatorPtr& tree) {
    const std::function<bool ()> no_stop;
    Budget budget (no_stop);
    return Alternatives (budget).nestings (tree);
}

std::vector<OperatorPtr> mixed_gates (const OperatorPtr& tree) {
    const std::function<bool ()> no_stop;
    Budget budget (no_stop);
    return Alternatives (budget).mixed (tree);
}

} // namespace ostrand::formula
