// Texts of arcs beside what they would lie on.
// Layer: tidy.
#pragma once
#include "document/network.h"

namespace ostrand::tidy {

/// Every kinetic text of an arc that would lie on a node, a square or a text placed before it goes
/// to the nearest place around its own where it lies on the least; all others stand at their own.
/// The same places of nodes give the same places of texts. Laid out before; true when a text moved.
bool place_labels (document::Network& network);

} // namespace ostrand::tidy
