// Walks over the graph: distances from a node, and what hangs together with it.
#include "document/network.h"

#include <cstdio>
#include <deque>
#include <string>
#include <unordered_map>
#include <unordered_set>

namespace ostrand::document {
namespace {

/// The node that an arc leads to: its destination, or the product of the reaction it ends on.
Node* next_node (const Arque& a) {
    if (Node* const n = a.dest_node ()) return n;
    const Arque* const reaction = a.dest_arc ();
    return reaction != nullptr && is_reaction (reaction->type ()) ? reaction->dest_node ()
                                                                  : nullptr;
}

} // namespace

void Network::distances_from (Node& n) {
    std::unordered_map<const Node*, int> distances{{&n, 0}};
    std::deque<Node*> queue{&n};
    while (!queue.empty ()) {
        const Node& from = *queue.front ();
        queue.pop_front ();
        const int distance = distances[&from] + 1;
        for (const auto& a : from.arcs ()) {
            Node* const next = next_node (*a);
            if (next == nullptr) {
                std::fprintf (stderr, "type d'arc : %s\n", arc_type_name (a->type ()));
                continue;
            }
            // The queue is in order of distance, so the first way to a node is a shortest one.
            if (next->network_ != this || !distances.emplace (next, distance).second) continue;
            queue.push_back (next);
        }
    }
    for (const auto& other : nodes_) {
        const auto found = distances.find (other.get ());
        if (found != distances.end ()) other->set_residu (std::to_string (found->second));
    }
}

namespace {

using Marks = std::unordered_set<const GraphBase*>;

/// Marks all that is reached from `start` over arcs in their direction and, at a reaction, to both
/// of its ends. Links of products (type 1025) are not followed from their product.
void walk (GraphBase& start, Marks& marks) {
    std::vector<GraphBase*> open{&start};
    while (!open.empty ()) {
        GraphBase* const g = open.back ();
        open.pop_back ();
        if (g == nullptr || !marks.insert (g).second) continue;
        if (g->kind () == CharKind::arque) {
            const auto& a = static_cast<const Arque&> (*g);
            open.push_back (a.dest ());
            open.push_back (a.source ());
        } else if (g->kind () == CharKind::node) {
            for (const auto& a : static_cast<const Node&> (*g).arcs ()) {
                if (a->type () == arc::product || !marks.insert (a.get ()).second) continue;
                open.push_back (a->dest ());
            }
        }
    }
}

} // namespace

std::vector<GraphBase*> Network::mark_connected (Node& n) const {
    Marks marks;
    walk (n, marks);
    for (const auto& other : nodes_) {
        if (marks.contains (other.get ())) continue;
        for (const auto& a : other->arcs_) {
            if (a->dest_arc () == nullptr || !marks.contains (a->dest ())) continue;
            walk (*other, marks);
            break;
        }
    }
    std::vector<GraphBase*> connected;
    for (const auto& other : nodes_) {
        if (marks.contains (other.get ())) connected.push_back (other.get ());
    }
    for (Arque* const a : all_arcs ()) {
        if (marks.contains (a)) connected.push_back (a);
    }
    return connected;
}

} // namespace ostrand::document
