// Where do boxes stand that arcs join?
// Layer: arrange, internal.
#pragma once
#include "arrange/drawing.h"

#include <vector>

namespace ostrand::arrange {

/// A box that moves as a whole, with all nodes in it.
struct Block {
    Box box;
    std::vector<int> nodes;

    void move (Drawing& drawing, double x, double y);
};

/// Puts blocks beside each other, `gap` apart, so that the arcs between them are short and the page
/// is well used; their contents may be mirrored.
/// afresh  true: as if none stood yet, the largest first; false: each is lifted out once and put
///         where it is best beside the others
void join_blocks (Drawing& drawing, std::vector<Block>& blocks, double gap, bool afresh);

} // namespace ostrand::arrange
