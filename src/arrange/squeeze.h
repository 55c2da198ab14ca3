// A finished drawing made smaller, as long as that makes nothing much worse.
// Layer: arrange, internal.
#pragma once
#include "arrange/drawing.h"

namespace ostrand::arrange {

/// Moves what stands right of (below) a line to the left (up), with what would be in its way, as
/// often as what becomes worse by that is less than the page that is won: arcs become shorter than
/// they like to be or slant, and are seldom crossed for it. Nodes and squares keep their gaps. For drawings without boxes of compartments.
void squeeze (Drawing& drawing);

} // namespace ostrand::arrange
