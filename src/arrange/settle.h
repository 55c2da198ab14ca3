// The last word on places: whole pixels, no two nodes on one another, no square under a node.
// Layer: arrange, internal.
#pragma once
#include "arrange/drawing.h"
#include "arrange/rooms.h"

namespace ostrand::arrange {

/// Puts nodes on whole pixels and moves those that overlap others, lie on squares, or leave too
/// little room for their own squares to the nearest free place; spreads everything when there is
/// none. Fixed nodes stay; with fixed nodes nothing is spread, and the answer tells whether all is
/// clear. Without fixed nodes it always is. With rooms nothing is spread either, and nodes that
/// move stay where they may stand.
bool settle (Drawing& drawing, const Rooms& rooms = {});

} // namespace ostrand::arrange
