// Walks over the graph: distances from a node, and what hangs together with it.
#include "document/network.h"

#include <cstdio>
#include <deque>

namespace ostrand::document {
namespace {

constexpr int not_reached = 1000000;

/// The node that an arc leads to: its destination, or the product of the reaction it ends on.
Node* next_node (const Arque& a) {
    if (Node* n = a.dest_node ()) return n;
    const Arque* reaction = a.dest_arc ();
    return reaction != nullptr && is_reaction (reaction->type) ? reaction->dest_node () : nullptr;
}

} // namespace

void Network::distances_from (Node& n) {
    for (const auto& other : nodes_) {
        other->path_dist = not_reached;
        other->path_prev = nullptr;
        other->mark = false;
    }
    has_paths_ = true;
    n.path_dist = 0;
    std::deque<Node*> queue{&n};
    n.mark = true; // is in the queue
    while (!queue.empty ()) {
        Node* from = queue.front ();
        queue.pop_front ();
        from->mark = false;
        for (const auto& a : from->arcs ()) {
            Node* next = next_node (*a);
            if (next == nullptr) {
                std::fprintf (stderr, "type d'arc : %s\n", arc_type_name (a->type));
                continue;
            }
            if (next->network != this || next->path_dist <= from->path_dist + 1) continue;
            next->path_dist = from->path_dist + 1;
            next->path_prev = from;
            if (next->mark) continue;
            next->mark = true;
            queue.push_back (next);
        }
    }
    for (const auto& other : nodes_) {
        if (other->path_dist != not_reached) other->set_residu (std::to_string (other->path_dist));
    }
}

namespace {

/// Marks all that is reached from `start` over arcs in their direction and, at a reaction, to both
/// of its ends. Links of products (type 1025) are not followed from their product.
void walk (GraphBase& start) {
    std::vector<GraphBase*> open{&start};
    while (!open.empty ()) {
        GraphBase* g = open.back ();
        open.pop_back ();
        if (g == nullptr || g->mark) continue;
        g->mark = true;
        if (g->kind () == CharKind::arque) {
            const auto& a = static_cast<const Arque&> (*g);
            open.push_back (a.dest ());
            open.push_back (a.source ());
        } else if (g->kind () == CharKind::node) {
            for (const auto& a : static_cast<const Node&> (*g).arcs ()) {
                if (a->mark || a->type == arc::product) continue;
                a->mark = true;
                open.push_back (a->dest ());
            }
        }
    }
}

} // namespace

void Network::mark_connected (Node& n) {
    clear_marks ();
    for (const auto& c : comps_) c->mark = false;
    walk (n);
    for (const auto& other : nodes_) {
        if (other->mark) continue;
        for (const auto& a : other->arcs_) {
            const Arque* end = a->dest_arc ();
            if (end == nullptr || !end->mark) continue;
            walk (*other);
            break;
        }
    }
}

} // namespace ostrand::document
