// Puts boxes side by side into a rectangle near a wanted shape.
// Layer: arrange, internal.
#pragma once
#include "arrange/graph.h"

#include <vector>

namespace ostrand::arrange {

/// A part to be packed: its rectangles in its own coordinates. Parts keep `gap` apart.
struct Shape {
    std::vector<Box> boxes;
};

/// How far each shape is to be moved, so that no two boxes of different shapes overlap and the
/// whole comes near `aspect` (width / height). Larger shapes come first, into the upper left.
std::vector<Point> pack_shapes (const std::vector<Shape>& shapes, double gap, double aspect);

} // namespace ostrand::arrange
