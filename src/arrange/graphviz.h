// The one door to Graphviz' libraries: places of the nodes of a plain graph, in layers or by
// stress. Graphviz keeps process-wide state and serves one caller at a time; calls wait for each
// other. Layer: arrange, internal.
#pragma once
#include "arrange/graph.h"

#include <optional>
#include <vector>

namespace ostrand::arrange {

enum class Method {
    layers, // dot: layers from top to bottom
    stress, // neato: distances in the drawing like those in the graph; memory grows by the square
    springs // sfdp: multilevel springs, for graphs of many thousand nodes
};

struct PlainEdge {
    int from;
    int to;
    double length; // wanted, pixels; not used by layers
    int weight;    // layers: how straight and short
};

struct PlainGraph {
    std::vector<Size> nodes;
    std::vector<PlainEdge> edges; // none from a node to itself
    double layer_gap = 24;        // between the boxes of two layers
    double node_gap = 16;         // between the boxes of a layer
    // Layers only: groups that keep their nodes in boxes of their own, which may hold each other.
    std::vector<int> group_of;    // node -> group, -1 none; empty: there are no groups
    std::vector<int> group_outer; // group -> the one around it, -1 none
    double group_margin = 8;      // between the box of a group and what is in it
};

/// Centres of the nodes, y down. Nothing when Graphviz gave up.
std::optional<std::vector<Point>> place_by_graphviz (const PlainGraph& graph, Method method);

} // namespace ostrand::arrange
