// Which object has an id.
#include "document/network.h"

namespace ostrand::document {

void Network::list_id (GraphBase& g) const {
    // Objects without a number are many; they are not listed.
    if (g.id_ != no_id) forget_ids ();
    if (g.kind () == CharKind::node && g.nested () != nullptr) forget_ids ();
}

/// What find_by_id finds is looked up anew when it is asked next, here and in the networks around.
void Network::forget_ids () const {
    for (const Network* network = this; network != nullptr;
         network = network->holder_ == nullptr ? nullptr : network->holder_->network ()) {
        network->ids_good_ = false;
    }
}

/// An object goes. Where no two objects have one id, the others stay listed as they are.
void Network::forget_id (const GraphBase& g) const {
    const bool holds_others = g.kind () == CharKind::node && g.nested () != nullptr;
    for (const Network* network = this; network != nullptr;
         network = network->holder_ == nullptr ? nullptr : network->holder_->network ()) {
        if (holds_others || network->id_twice_) {
            network->ids_good_ = false;
        } else if (network->ids_good_ && g.id_ != no_id) {
            network->ids_.erase (g.id_);
        }
    }
}

void Network::list_ids (const Network& inner) const {
    const auto list = [this] (GraphBase& g) {
        if (g.id_ == no_id) return;
        IdTable::Entry& entry = ids_[g.id_];
        if (entry.object == nullptr) {
            entry.object = &g;
        } else {
            id_twice_ = true; // the first stays
        }
    };
    for (const auto& n : inner.nodes_) {
        list (*n);
        for (const auto& a : n->arcs_) list (*a);
        if (const Network* const deeper = n->nested ()) list_ids (*deeper);
    }
    for (const auto& c : inner.comps_) list (*c);
}

GraphBase* Network::find_by_id (int wanted) const {
    if (wanted == no_id) {
        for (const auto& n : nodes_) {
            if (n->id_ == no_id) return n.get ();
            for (const auto& a : n->arcs_) {
                if (a->id_ == no_id) return a.get ();
            }
            if (const Network* const inner = n->nested ()) {
                if (GraphBase* const found = inner->find_by_id (no_id)) return found;
            }
        }
        for (const auto& c : comps_) {
            if (c->id_ == no_id) return c.get ();
        }
        return nullptr;
    }
    if (!ids_good_) {
        ids_.clear ();
        id_twice_ = false;
        list_ids (*this);
        ids_good_ = true;
    }
    return ids_.object (wanted);
}

void Network::adopt_numbering (const Numbering& numbering) {
    const auto adopt_number = [&numbering] (GraphBase& g) { g.id_ = numbering.of (&g); };
    for (const auto& n : nodes_) {
        adopt_number (*n);
        for (const auto& a : n->arcs_) adopt_number (*a);
        if (Network* const inner = n->nested ()) inner->adopt_numbering (numbering);
    }
    for (const auto& c : comps_) adopt_number (*c);
    forget_ids ();
}

} // namespace ostrand::document
