// The drawing while it is being arranged: nodes with boxes, reactions as straight arcs between two
// nodes, links as straight arcs from a node to the square of a reaction.
// Layer: arrange, internal.
#pragma once
#include "arrange/graph.h"

#include <cstdint>
#include <span>
#include <vector>

namespace ostrand::arrange {

/// Where a link ends: behind the square, on it, or before it.
enum class LinkEnd : std::uint8_t { substrate, square, product };

struct DrawnNode {
    Point at; // centre
    double half_width = 1;
    double half_height = 1;
    int species = -1; // -1: a mark
    int compartment = -1;
    bool fixed = false; // stays where it is
};

struct DrawnLink {
    int node = -1;
    int reaction = -1;
    LinkEnd end = LinkEnd::square;
};

struct DrawnReaction {
    int from = -1; // nodes
    int to = -1;
    int side = 0; // 0 the only arc between its nodes; else which way it steps aside (arc_place.h)
    bool reversible = false;
    double ideal = 60; // length of the arc between the two boxes at its best
    Size start_label;
    Size end_label;
};

/// Indexes of links and reactions by node and by reaction are made by `index`.
struct Drawing {
    std::vector<DrawnNode> nodes;
    std::vector<DrawnReaction> reactions;
    std::vector<DrawnLink> links;

    std::vector<std::vector<int>> node_reactions; // main arcs that touch a node, ascending
    std::vector<std::vector<int>> node_links;     // ascending
    std::vector<std::vector<int>> reaction_links; // ascending

    /// Brings the three indexes and the sides of parallel arcs up to date.
    void index ();
    /// Sets the best lengths of all main arcs: longer where further substrates or products meet
    /// them. Indexed before.
    void set_ideal_lengths ();
    /// The node has links only, and they all lead to one square or to two squares side by side: it
    /// goes where they go.
    bool hangs (int node) const;
    std::size_t degree (int node) const {
        const auto n = static_cast<std::size_t> (node);
        return node_reactions[n].size () + node_links[n].size ();
    }
};

/// Box around nodes; all zero when there is none.
Box bounds_of (const Drawing& drawing);

} // namespace ostrand::arrange
