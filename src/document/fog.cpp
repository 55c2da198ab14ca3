// How fog spreads over arcs and the nodes that they leave without a clear one.
#include "document/network.h"

#include <algorithm>

namespace ostrand::document {
namespace {

/// Sets the flag on these arcs and on all that it spreads to from arc to arc: those that end on a
/// changed one, and an arc that a changed one ends on. True when one changed.
bool fog_arcs (std::vector<Arque*> open, bool on) {
    bool changed = false;
    while (!open.empty ()) {
        Arque* a = open.back ();
        open.pop_back ();
        if (a == nullptr || a->foggy == on) continue;
        changed = true;
        a->foggy = on;
        for (Char* text : {a->label.get (), static_cast<Char*> (a->residu.get ()),
                           static_cast<Char*> (a->stoech_src.get ()),
                           static_cast<Char*> (a->stoech_dest.get ())}) {
            if (text != nullptr) text->set_fog (on);
        }
        for (Arque* b : a->incoming ()) {
            if (b->owner_network () == a->owner_network ()) open.push_back (b);
        }
        open.push_back (a->dest_arc ());
    }
    return changed;
}

/// The nodes follow: fog takes those that no clear arc touches, clearing takes all; nodes without
/// arcs stay as they are.
void fog_nodes (const Network& network, bool on, void (*set) (Node&, bool)) {
    for (const auto& n : network.nodes ()) {
        if (n->arcs ().empty () && n->incoming ().empty ()) continue;
        const auto clear = [] (const auto& a) { return !a->foggy; };
        if (on && (std::any_of (n->arcs ().begin (), n->arcs ().end (), clear) ||
                   std::any_of (n->incoming ().begin (), n->incoming ().end (), clear))) {
            continue;
        }
        set (*n, on);
    }
}

} // namespace

void Node::set_fog (bool on) {
    set_own_fog (on);
    std::vector<Arque*> touching (incoming ());
    for (const auto& a : arcs_) touching.push_back (a.get ());
    const bool changed = fog_arcs (std::move (touching), on);
    if (!changed || network == nullptr) return;
    // Clearing goes on to the arcs of every cleared node; each step takes in more until all is
    // clear that hangs on anything.
    fog_nodes (*network, on, [] (Node& n, bool value) { n.set_own_fog (value); });
    if (!on) {
        for (Arque* a : network->all_arcs ()) fog_arcs ({a}, false);
    }
}

void Arque::set_fog (bool on) {
    if (!fog_arcs ({this}, on)) return;
    const Network* network = owner_network ();
    if (network == nullptr) return;
    fog_nodes (*network, on, [] (Node& n, bool value) {
        n.foggy = value;
        if (n.label) n.label->set_fog (value);
        if (n.residu) n.residu->set_fog (value);
    });
    if (!on) {
        for (Arque* a : network->all_arcs ()) fog_arcs ({a}, false);
    }
}

void Network::set_fog (bool on) {
    foggy = on;
    for (const auto& n : nodes_) {
        n->set_own_fog (on);
        for (const auto& a : n->arcs_) fog_arcs ({a.get ()}, on);
    }
}

} // namespace ostrand::document
