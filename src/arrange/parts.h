// A drawing taken apart into its connected parts.
// Layer: arrange, internal.
#pragma once
#include "arrange/drawing.h"

namespace ostrand::arrange {

/// A connected part, indexed, with the numbers that its nodes and links have in the whole.
struct Part {
    Drawing drawing;
    std::vector<int> nodes;
    std::vector<int> links;
};

/// All parts, in the order of their first nodes. Reactions and links between compartments connect
/// nothing and belong to no part.
std::vector<Part> connected_parts (const Drawing& whole);

} // namespace ostrand::arrange
