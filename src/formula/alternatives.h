// What can stand in one tree's place: its operators split into nested ones, and NOTs taken into
// mixed gates.
// Layer: formula.
#pragma once
#include "formula/operator.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <stop_token>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace ostrand::formula {

/// When growing and walking end early.
struct Patience {
    std::function<bool ()> late = {}; // asked now and then; true ends it with what there is by then
    std::stop_token stop = {};        // ends it at once, with nothing
};

/// How far the growing came.
enum class Growth {
    complete,
    stopped, // it was late
    bound_reached,
    abandoned, // a stop came: what was grown is of no use
};

/// Trees of one formula that memory is given for. An OR of nine names has more.
inline constexpr std::size_t variant_bound = 1'000'000;

/// Counts the trees that were made and knows when to end.
class GrowthBudget {
  public:
    explicit GrowthBudget (Patience patience = {}) : patience_ (std::move (patience)) {}
    /// Whether there is time for a step.
    bool step ();
    /// Whether there is memory for a tree too.
    bool tree ();
    void full () {
        if (!abandoned ()) state_ = Growth::bound_reached;
    }
    /// Looks for a stop, also where there is no budget left.
    bool abandoned ();
    Growth state () const { return state_; }

  private:
    Patience patience_;
    std::size_t steps_ = 0;
    std::size_t trees_ = 0;
    Growth state_ = Growth::complete;
};

/// What somebody can do with parts of trees. Parts that are of no use to anybody are not made, nor
/// is anything of them: an operator of many operands has far more nestings than any library of
/// gates can serve. Functions that are not set find all of use.
struct TreeUse {
    std::function<bool (const OperatorPtr& part)> useful;
    /// Operands that a node of a type can have at most.
    std::function<std::size_t (OperatorType type)> most_operands;
};

/// Makes the alternatives of each tree once for all trees that hold it.
class Alternatives {
  public:
    explicit Alternatives (GrowthBudget& budget, TreeUse use = {});
    ~Alternatives ();

    /// Every AND and OR of more than two operands as it is, and as nested nodes of the same
    /// operator in every way: for n operands that gives 1, 4, 26, 236, 2752 ... trees (n = 2, 3,
    /// ...: leaf-labelled trees without nodes of one child). In each of these, every AND and OR of
    /// two operands, of which exactly one is a NOT, as it is and as ANDNOT or ORNOT of the other
    /// operand and the negated one. The operand that is not negated comes first: a library holds
    /// each gate of two inputs in both orders and under both names, so the other order is the same
    /// gates once more.
    const std::vector<OperatorPtr>& of (const OperatorPtr& tree);

  private:
    using Trees = std::vector<OperatorPtr>;

    Trees grouped (const OperatorPtr& tree);
    Trees combined (const OperatorPtr& tree);
    void keep (OperatorPtr tree, Trees& out);

    GrowthBudget& budget_;
    TreeUse use_;
    std::unordered_map<std::string, Trees> known_; // by canonical text
    // What the alternatives were made of, and what was in the making when a stop came. To free half
    // a million trees takes longer than whoever waits for a stop has patience, so all goes at once,
    // with this object.
    std::vector<std::unique_ptr<class Grouping>> groupings_;
    std::vector<std::vector<Trees>> left_choices_;

    friend class Grouping; // the one that makes them
};

} // namespace ostrand::formula
