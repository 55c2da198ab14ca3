// How often is a graph arranged?
// Layer: arrange, internal.
#pragma once
#include "arrange/drawing.h"

namespace ostrand::arrange {

/// How many attempts are made, and how much effort each gets.
struct Plan {
    std::size_t attempts = 1;
    double effort = 1;
};

/// apart   boxes of compartments are joined by arcs, which takes no less time with few elements
/// effort  as in Options
Plan plan_for (const Drawing& drawing, bool apart, double effort);

} // namespace ostrand::arrange
