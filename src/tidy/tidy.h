// Arranges a network: new places, copies of species that many reactions use, boxes of compartments.
// Layer: tidy.
#pragma once
#include "document/network.h"

namespace ostrand::tidy {

/// How much work is spent on good places.
enum class Care {
    full,  // seconds for thousands of reactions
    quick, // large networks get plainer drawings, in a fraction of that
};

/// Gives every node of the network a new place and every compartment a new size, so that no two
/// nodes overlap and no reaction's square is covered. A species that many reactions use gets copies
/// beside them, and copies that are not needed go. Labels, types, numbers and links stay what they
/// are. The same network gives the same places. Nested networks stay as they are inside their
/// nodes. Nodes that nothing links keep together in a block.
void arrange_network (document::Network& network, Care care = Care::full);

} // namespace ostrand::tidy
