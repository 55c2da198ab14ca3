// Arranges a network: new places, copies of species that many reactions use, boxes of compartments.
// Layer: tidy.
#pragma once
#include "document/network.h"

#include <vector>

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
/// An arranged network stays as it is.
void arrange_network (document::Network& network, Care care = Care::full);

/// Gives the chosen nodes of a network better places near where they stand; everything else stays,
/// and no node comes into another compartment. False, with nothing changed, when no better places
/// were found.
bool arrange_nodes (document::Network& network, const std::vector<document::Node*>& chosen);

} // namespace ostrand::tidy
