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

/// Places everything: the best of several attempts, on all processors. The same graph and options
/// give the same layout whatever their number. Safe to call from several
/// threads; their calls wait for each other where Graphviz is asked.
Layout arrange (const Graph& graph, const Options& options = {});

/// A drawing of which a part is to be arranged. Every species is one node.
struct Present {
    std::vector<Point> places; // centre of each species
    std::vector<char> chosen;  // species -> it may move
    std::vector<Box> boxes;    // of the compartments, which stay
};

/// New places for the chosen species, near where they stand; all others stay. No chosen one leaves
/// its compartment or comes into another. The answer has a place for each species: the present ones
/// when no better ones were found.
std::vector<Point> arrange_part (const Graph& graph, const Present& present, double effort = 1);

} // namespace ostrand::arrange
