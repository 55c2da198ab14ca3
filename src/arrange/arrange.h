// Gives a network places that are good to read: the one call for a whole network, and one for a
// part of a drawing of which the rest stays.
// Layer: arrange.
#pragma once
#include "arrange/graph.h"

namespace ostrand::arrange {

struct Options {
    bool copies = true;     // cofactors and enzymes of many reactions get copies beside them
    double aspect = 4. / 3; // wanted width / height of the page
    double margin = 10;     // around everything, pixels
    double effort = 1;      // of the search for good places; its time grows with it
};

/// Places everything. The same graph and options give the same layout. Safe to call from several
/// threads; their calls wait for each other where Graphviz is asked.
Layout arrange (const Graph& graph, const Options& options = {});

} // namespace ostrand::arrange
