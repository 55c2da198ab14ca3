// Arcs that join the same two nodes.
// Layer: document.
#pragma once
#include "document/node.h"

namespace ostrand::document {

/// Calls visit (arc) for each arc from one node to another, in the order of the source's arcs. Both
/// ends know them; the end that has fewer is asked first, since one arc or none has no order.
template <typename Visit>
void each_arc_between (const Node& from, const Node& to, const Visit& visit) {
    if (from.arcs ().size () > to.incoming ().size ()) {
        Arque* only = nullptr;
        int count = 0;
        for (Arque* const b : to.incoming ()) {
            if (b->source () != &from) continue;
            only = b;
            ++count;
        }
        if (count == 1) visit (*only);
        if (count <= 1) return;
    }
    for (std::size_t i = 0; i < from.arcs ().size (); ++i) {
        if (from.arcs ()[i]->dest () == &to) visit (*from.arcs ()[i]);
    }
}

} // namespace ostrand::document
