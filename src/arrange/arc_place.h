// Where a straight arc leaves and meets its nodes and where its square falls, by the rules by which
// arcs are drawn.
// Layer: arrange, internal.
#pragma once
#include "arrange/drawing.h"

namespace ostrand::arrange {

inline constexpr double square_size = 14;     // edge of a reaction's square
inline constexpr double square_span = 50;     // further substrates and products end this far apart
inline constexpr double parallel_offset = 8;  // of each of two arcs between the same nodes
inline constexpr double arrow_shortening = 5; // the arc's line ends this far before its tip
inline constexpr double least_arc = 44; // between the boxes of a reaction: square, arrow, two gaps
inline constexpr double side_arc = 62;  // when further substrates or products meet it

struct ArcPlace {
    Point start; // on the edge of the source's box
    Point end;   // on the edge of the destination's box, where the arrow's tip is
    Point square;
    Point substrate_end; // where links of further substrates end
    Point product_end;   // likewise of further products
    double length = 0;   // from start to end
};

/// The arc of a reaction from `from` to `to`. side: 0 on the line between the centres, -2 one step
/// aside, any other value one step to the other side.
ArcPlace arc_place (const DrawnNode& from, const DrawnNode& to, int side);

/// Where the line from the middle of a box towards `target` leaves the box.
Point leaving_point (const DrawnNode& node, Point target);

} // namespace ostrand::arrange
