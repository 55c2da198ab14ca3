// Arranges a network: new places, copies of species that many reactions use, boxes of compartments.
// Layer: tidy.
#pragma once
#include "document/network.h"

namespace ostrand::tidy {

/// Up to so many arcs of reactions an arrangement is drawn with all care, which takes seconds;
/// larger networks get a plainer one.
inline constexpr int most_careful_reactions = 2500;

/// Gives every node of the network a new place and every compartment a new size, so that no two
/// nodes overlap and no reaction's square is covered. A species that many reactions use gets copies
/// beside them, and copies that are not needed go. Labels, types, numbers and links stay what they
/// are. The same network gives the same places. Nested networks stay as they are inside their
/// nodes. Nodes that nothing links keep together in a block.
void arrange_network (document::Network& network);

} // namespace ostrand::tidy
