// Which arcs touch a node, and which arcs run side by side?
#include "arrange/drawing.h"

#include "arrange/arc_place.h"

#include <algorithm>
#include <map>
#include <utility>

namespace ostrand::arrange {
namespace {

/// Two arcs in one direction get -2 and 2, two in opposite directions 1 and -1, as they are drawn.
void choose_sides (std::vector<DrawnReaction>& reactions) {
    std::map<std::pair<int, int>, std::vector<std::size_t>> by_nodes;
    for (std::size_t r = 0; r < reactions.size (); ++r) {
        reactions[r].side = 0;
        by_nodes[std::minmax (reactions[r].from, reactions[r].to)].push_back (r);
    }
    for (const auto& [nodes, arcs] : by_nodes) {
        if (arcs.size () < 2) continue;
        // More than two are told apart before this point (copies.cpp); here they share places.
        const bool same = reactions[arcs[0]].from == reactions[arcs[1]].from;
        for (std::size_t i = 0; i < arcs.size (); ++i) {
            reactions[arcs[i]].side = i % 2 == 0 ? (same ? -2 : 1) : (same ? 2 : -1);
        }
    }
}

} // namespace

void Drawing::index () {
    node_reactions.assign (nodes.size (), {});
    node_links.assign (nodes.size (), {});
    reaction_links.assign (reactions.size (), {});
    for (std::size_t r = 0; r < reactions.size (); ++r) {
        const DrawnReaction& reaction = reactions[r];
        node_reactions[static_cast<std::size_t> (reaction.from)].push_back (static_cast<int> (r));
        if (reaction.to != reaction.from)
            node_reactions[static_cast<std::size_t> (reaction.to)].push_back (static_cast<int> (r));
    }
    for (std::size_t l = 0; l < links.size (); ++l) {
        node_links[static_cast<std::size_t> (links[l].node)].push_back (static_cast<int> (l));
        reaction_links[static_cast<std::size_t> (links[l].reaction)].push_back (
            static_cast<int> (l));
    }
    choose_sides (reactions);
}

void Drawing::set_ideal_lengths () {
    for (std::size_t r = 0; r < reactions.size (); ++r) {
        const bool side =
            std::any_of (reaction_links[r].begin (), reaction_links[r].end (), [this] (int l) {
                return links[static_cast<std::size_t> (l)].end != LinkEnd::square;
            });
        reactions[r].ideal = side ? side_arc : least_arc;
    }
}

bool Drawing::hangs (int node) const {
    const auto& own = node_links[static_cast<std::size_t> (node)];
    if (own.empty () || !node_reactions[static_cast<std::size_t> (node)].empty ()) return false;
    const auto ends = [&] (int l) {
        const int r = links[static_cast<std::size_t> (l)].reaction;
        const DrawnReaction& reaction = reactions[static_cast<std::size_t> (r)];
        return std::minmax (reaction.from, reaction.to);
    };
    return std::all_of (own.begin (), own.end (),
                        [&] (int l) { return ends (l) == ends (own[0]); });
}

Box bounds_of (const Drawing& drawing) {
    Box box;
    bool first = true;
    for (const DrawnNode& node : drawing.nodes) {
        const Box own{node.at.x - node.half_width, node.at.y - node.half_height,
                      node.at.x + node.half_width, node.at.y + node.half_height};
        if (first) box = own;
        first = false;
        box.left = std::min (box.left, own.left);
        box.top = std::min (box.top, own.top);
        box.right = std::max (box.right, own.right);
        box.bottom = std::max (box.bottom, own.bottom);
    }
    return box;
}

} // namespace ostrand::arrange
