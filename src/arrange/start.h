// First places of a connected drawing, before they are improved.
// Layer: arrange, internal.
#pragma once
#include "arrange/drawing.h"

namespace ostrand::arrange {

enum class StartKind {
    down,  // layers from top to bottom
    right, // layers from left to right
    stress // distances as in the graph: cycles are round
};

/// Gives all nodes places. False, with nothing changed, when Graphviz gave up.
bool start_places (Drawing& drawing, StartKind kind);

/// Gives all nodes places in layers, those of each compartment in a box of their own.
/// outer   compartment -> the one around it, -1 none
/// margin  between a node and the edge of its box
/// False, with nothing changed, when the drawing is too large for it or Graphviz gave up.
bool start_in_boxes (Drawing& drawing, const std::vector<int>& outer, double margin);

/// Folds a drawing that is much longer than wide into columns side by side (or one much wider than
/// high into rows), every second one reversed, so that its sides come near `aspect` (width /
/// height).
void fold (Drawing& drawing, double aspect);

/// Reaction -> 1 when it lies on no directed cycle of main arcs: these can all lead one way.
std::vector<char> acyclic_reactions (const Drawing& drawing);

} // namespace ostrand::arrange
