// Improves places by trying moves: simulated annealing with few, bounded steps.
// Layer: arrange, internal.
#pragma once
#include "arrange/field.h"
#include "arrange/random.h"

namespace ostrand::arrange {

struct SearchPlan {
    std::uint64_t work = 1000000; // comparisons that may be made (Field::work)
    double hot = 40;              // a move that costs so much more is often taken at the start
    double cold = 1;              // and at the end
    double far = 160;             // nodes move about so far at the start
    double near = 8;              // and at the end
    double crowds = 0;            // share of moves of many nodes at once, towards the middle
};

/// Moves the nodes of `drawing` that are not fixed so that the costs of `field` fall.
void search (Drawing& drawing, Field& field, const Wishes& wishes, const SearchPlan& plan,
             Random& random);

} // namespace ostrand::arrange
