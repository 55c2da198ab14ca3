// How fog spreads over arcs and the nodes that they leave without a clear one.
#include "document/network.h"

#include <algorithm>

namespace ostrand::document {
namespace {

/// Sets the flag on these arcs and on all that it spreads to from arc to arc: those that end on a
/// changed one, and an arc that a changed one ends on. True when one changed.
/// set_own  sets the flag of one arc and of its texts
template <typename SetOwn>
bool fog_arcs (std::vector<Arque*> open, bool on, const SetOwn& set_own) {
    bool changed = false;
    while (!open.empty ()) {
        Arque* const a = open.back ();
        open.pop_back ();
        if (a == nullptr || a->foggy () == on) continue;
        changed = true;
        set_own (*a);
        for (Arque* const b : a->incoming ()) {
            if (b->owner_network () == a->owner_network ()) open.push_back (b);
        }
        open.push_back (a->dest_arc ());
    }
    return changed;
}

/// The nodes follow: fog takes those that no clear arc touches, clearing takes all; nodes without
/// arcs stay as they are.
template <typename SetOwn>
void fog_nodes (const Network& network, bool on, const SetOwn& set_own) {
    for (const auto& n : network.nodes ()) {
        if (n->arcs ().empty () && n->incoming ().empty ()) continue;
        const auto clear = [] (const auto& a) { return !a->foggy (); };
        if (on && (std::any_of (n->arcs ().begin (), n->arcs ().end (), clear) ||
                   std::any_of (n->incoming ().begin (), n->incoming ().end (), clear))) {
            continue;
        }
        set_own (*n);
    }
}

} // namespace

bool Network::fog_from (std::vector<Arque*> arcs, bool on) {
    const auto set_own = [on] (GraphBase& g) { g.set_own_fog (on); };
    if (!fog_arcs (std::move (arcs), on, set_own)) return false;
    // Clearing goes on to the arcs of every cleared node; each step takes in more until all is
    // clear that hangs on anything.
    fog_nodes (*this, on, set_own);
    if (!on) fog_arcs (all_arcs (), false, set_own);
    return true;
}

bool Node::set_fog (bool on) {
    const bool changed = set_own_fog (on);
    std::vector<Arque*> touching (incoming ().begin (), incoming ().end ());
    for (const auto& a : arcs_) touching.push_back (a.get ());
    return (network_ != nullptr && network_->fog_from (std::move (touching), on)) || changed;
}

bool Arque::set_fog (bool on) {
    Network* const network = owner_network ();
    return network == nullptr ? set_own_fog (on) : network->fog_from ({this}, on);
}

bool Network::set_fog (bool on) {
    bool changed = Char::set_fog (on);
    const auto set_own = [on] (GraphBase& g) { g.set_own_fog (on); };
    for (const auto& n : nodes_) {
        changed = n->set_own_fog (on) || changed;
        for (const auto& a : n->arcs_) changed = fog_arcs ({a.get ()}, on, set_own) || changed;
    }
    return changed;
}

} // namespace ostrand::document
