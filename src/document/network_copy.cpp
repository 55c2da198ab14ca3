// Copies of networks.
#include "document/network.h"

namespace ostrand::document {

void Network::copy_objects (Network& to, CopyMap& map) const {
    to.set_origin (x_, y_);
    to.align_ = align_;
    to.foggy_ = foggy_;
    for (const auto& c : comps_) {
        std::unique_ptr<Char> copy = c->clone (&to);
        map[c.get ()] =
            &to.add_compart (std::unique_ptr<Compart> (static_cast<Compart*> (copy.release ())));
    }
    for (const auto& n : nodes_) {
        Node& added = to.add_node (n->clone_objects (&to, map));
        const auto comp = map.find (n->compart_);
        added.compart_ = comp == map.end () ? nullptr : static_cast<Compart*> (comp->second);
    }
}

void Network::collect_arcs (std::vector<const Arque*>& arcs) const {
    for (const auto& n : nodes_) {
        for (const auto& a : n->arcs_) arcs.push_back (a.get ());
        if (const Network* const inner = n->nested ()) inner->collect_arcs (arcs);
    }
}

void Network::copy_arcs (CopyMap& map) const {
    std::vector<const Arque*> arcs;
    collect_arcs (arcs);
    for (const Arque* const a : arcs) {
        std::unique_ptr<Char> copy = a->clone (nullptr);
        map[a] = static_cast<Arque*> (copy.get ());
        static_cast<Node*> (map[a->source ()])
            ->add_arc (std::unique_ptr<Arque> (static_cast<Arque*> (copy.release ())));
    }
    std::vector<Arque*> loose; // what they end on was not copied
    for (const Arque* const a : arcs) {
        auto* const copy = static_cast<Arque*> (map[a]);
        const auto end = map.find (a->dest ());
        if (end == map.end ()) {
            loose.push_back (copy);
        } else {
            copy->set_dest (end->second);
        }
    }
    Arque::destroy_all (loose);
}

std::unique_ptr<Network> Network::copy (Char* new_parent) const {
    auto other = std::make_unique<Network> ();
    CopyMap map;
    copy_objects (*other, map);
    copy_arcs (map);
    adopt (*other, new_parent);
    other->multi_name_ = multi_name_;
    return other;
}

std::unique_ptr<Char> Network::clone (Char* new_parent) const { return copy (new_parent); }

} // namespace ostrand::document
