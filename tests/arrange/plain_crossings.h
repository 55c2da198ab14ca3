// Crossings of a drawing, and of the same graph drawn by Graphviz' own layered layout.
#pragma once
#include "arrange/graph.h"

#include <set>
#include <utility>
#include <vector>

namespace ostrand::testing {

/// The lines from a to b and from c to d cut each other in their insides.
bool cut (arrange::Point a, arrange::Point b, arrange::Point c, arrange::Point d);

/// Nodes and reactions as a graph of two kinds of nodes, its edges straight between their middles.
struct PlainDrawing {
    std::vector<arrange::Point> places;
    std::vector<arrange::Size> sizes;
    std::vector<int> boxes; // of each place the compartment; -1 none
    std::set<std::pair<int, int>> edges;

    /// Gives the number of the new node.
    int add (arrange::Point place, arrange::Size size, int box);
    /// From a substrate or modifier to its reaction, or from that to a product. Numbers below 0 add
    /// nothing, and neither does an edge that is there the other way.
    void join (int from, int to);
};

PlainDrawing plain_drawing (const arrange::Layout& layout);

int crossings (const PlainDrawing& drawing);

/// The same graph, with the same sizes of nodes, drawn by `dot`: -1 when that failed.
/// boxes  the nodes of a compartment are a cluster
int dot_crossings (const PlainDrawing& drawing, bool boxes = false);

} // namespace ostrand::testing
