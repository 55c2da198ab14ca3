// In which ways can an operator's operands be grouped?
#include "formula/alternatives.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <map>
#include <utility>

namespace ostrand::formula {
namespace {

using Trees = std::vector<OperatorPtr>;

/// A set of operands, one bit each, limits their number.
constexpr std::size_t most_grouped = 64;
/// More operands have more nestings than memory is given for, 12,818,912 for nine, so none are made
/// when all are of use.
constexpr std::size_t most_grouped_freely = 8;

bool is_and_or (OperatorType type) {
    return type == OperatorType::and_gate || type == OperatorType::or_gate;
}

bool is_negation (const Operator& tree) {
    return tree.type () == OperatorType::not_gate && !tree.children ().empty ();
}

} // namespace

bool GrowthBudget::abandoned () {
    if (patience_.stop.stop_requested ()) state_ = Growth::abandoned;
    return state_ == Growth::abandoned;
}

bool GrowthBudget::step () {
    if (abandoned () || state_ != Growth::complete) return false;
    if (++steps_ % 256 == 0 && patience_.late && patience_.late ()) state_ = Growth::stopped;
    return state_ == Growth::complete;
}

bool GrowthBudget::tree () {
    if (state_ == Growth::complete && ++trees_ > 2 * variant_bound) full ();
    return step ();
}

/// The groupings of one operator's operands. Sets of operands come by size, so that the blocks of a
/// set, which are smaller, are there when it is put together.
class Grouping {
  public:
    Grouping (Alternatives& alternatives, const Operator& tree)
        : alternatives_ (alternatives), budget_ (alternatives.budget_), type_ (tree.type ()),
          count_ (tree.children ().size ()),
          most_ (alternatives.use_.most_operands
                     ? std::max (alternatives.use_.most_operands (type_), std::size_t{2})
                     : count_),
          blocks_ (count_) {
        for (std::size_t i = 0; i < count_; ++i) {
            const OperatorPtr& operand = tree.children ()[i];
            Block block{
                .set = std::uint64_t{1} << i, .size = 1, .trees = alternatives_.of (operand)};
            if (is_negation (*operand)) block.negated = alternatives_.of (operand->children ()[0]);
            if (!block.trees.empty () || !block.negated.empty ()) {
                blocks_[i].push_back (std::move (block));
            }
        }
    }

    /// The trees over all operands.
    Trees all () {
        for (std::size_t size = 2; size <= count_; ++size) {
            put_together (0, 0, size);
            for (auto& [set, trees] : made_) {
                if (size == count_) return std::move (trees);
                blocks_[lowest (set)].push_back (
                    {.set = set, .size = size, .trees = std::move (trees)});
            }
            made_.clear ();
        }
        return {};
    }

  private:
    /// Operands under one node, and the trees that this node can be.
    struct Block {
        std::uint64_t set = 0;
        std::size_t size = 0;
        Trees trees{};
        Trees negated{}; // of a single NOT: what stands under it
    };

    static std::size_t lowest (std::uint64_t set) {
        return static_cast<std::size_t> (std::countr_zero (set));
    }

    /// Chooses further blocks, in the order of their first operands, until `missing` operands more
    /// are taken; each choice of two blocks or more is a grouping.
    void put_together (std::size_t first, std::uint64_t taken, std::size_t missing) {
        if (missing == 0) {
            make_trees (taken);
            return;
        }
        if (chosen_.size () == most_) return;
        for (std::size_t i = first; i < count_; ++i) {
            for (const Block& block : blocks_[i]) {
                if (!budget_.step ()) return;
                if (block.size > missing || (block.set & taken) != 0) continue;
                chosen_.push_back (&block);
                put_together (i + 1, taken | block.set, missing - block.size);
                chosen_.pop_back ();
            }
        }
    }

    void make_trees (std::uint64_t set) {
        Trees& all = made_[set];
        Trees parts;
        choose_parts (parts, all);
        if (chosen_.size () == 2) add_mixed (all);
        if (all.empty ()) made_.erase (set);
    }

    void choose_parts (Trees& parts, Trees& out) {
        if (parts.size () == chosen_.size ()) {
            alternatives_.keep (make_operator (type_, parts), out);
            return;
        }
        for (const OperatorPtr& part : chosen_[parts.size ()]->trees) {
            if (!budget_.step ()) return;
            parts.push_back (part);
            choose_parts (parts, out);
            parts.pop_back ();
        }
    }

    void add_mixed (Trees& out) {
        const bool first_negated = !chosen_[0]->negated.empty ();
        if (first_negated == !chosen_[1]->negated.empty ()) return;
        const OperatorType type =
            type_ == OperatorType::and_gate ? OperatorType::and_not : OperatorType::or_not;
        for (const OperatorPtr& plain : chosen_[first_negated ? 1 : 0]->trees) {
            for (const OperatorPtr& negated : chosen_[first_negated ? 0 : 1]->negated) {
                if (!budget_.step ()) return;
                alternatives_.keep (make_operator (type, {plain, negated}), out);
            }
        }
    }

    Alternatives& alternatives_;
    GrowthBudget& budget_;
    OperatorType type_;
    std::size_t count_;                      // operands
    std::size_t most_;                       // blocks of a grouping
    std::vector<std::vector<Block>> blocks_; // by first operand, then by size
    std::vector<const Block*> chosen_;
    std::map<std::uint64_t, Trees> made_; // of the present size, by set
};

Alternatives::Alternatives (GrowthBudget& budget, TreeUse use)
    : budget_ (budget), use_ (std::move (use)) {}

void Alternatives::keep (OperatorPtr tree, Trees& out) {
    if (use_.useful && !use_.useful (tree)) return;
    if (budget_.tree ()) out.push_back (std::move (tree));
}

Alternatives::~Alternatives () = default;

Alternatives::Trees Alternatives::grouped (const OperatorPtr& tree) {
    const std::size_t operands = tree->children ().size ();
    if (operands > (use_.useful ? most_grouped : most_grouped_freely)) {
        budget_.full ();
        return {};
    }
    return groupings_.emplace_back (std::make_unique<Grouping> (*this, *tree))->all ();
}

Alternatives::Trees Alternatives::combined (const OperatorPtr& tree) {
    const Trees& operands = tree->children ();
    std::vector<Trees> choices{{}}; // one alternative of each operand
    for (const OperatorPtr& operand : operands) {
        std::vector<Trees> longer;
        const Trees& alternatives = of (operand);
        for (const Trees& choice : choices) {
            for (const OperatorPtr& alternative : alternatives) {
                if (!budget_.step ()) break;
                longer.push_back (choice);
                longer.back ().push_back (alternative);
            }
        }
        std::swap (choices, longer);
        if (budget_.abandoned ()) left_choices_.push_back (std::move (longer));
    }
    Trees made;
    for (Trees& choice : choices) {
        if (budget_.abandoned ()) break;
        keep (operands.empty () ? tree : make_operator (tree->type (), std::move (choice)), made);
    }
    if (budget_.abandoned ()) left_choices_.push_back (std::move (choices));
    return made;
}

const Alternatives::Trees& Alternatives::of (const OperatorPtr& tree) {
    const auto known = known_.find (tree->text ());
    if (known != known_.end ()) return known->second;
    const bool is_group = is_and_or (tree->type ()) && tree->children ().size () >= 2;
    return known_.emplace (tree->text (), is_group ? grouped (tree) : combined (tree))
        .first->second;
}

} // namespace ostrand::formula
