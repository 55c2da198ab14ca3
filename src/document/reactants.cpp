// Changes of who takes part in a reaction: main product and reactant, detaching, fusing.
#include "document/markup.h"
#include "document/network.h"

#include <algorithm>

namespace ostrand::document {
namespace {

/// A text that moves to another place starts at that place.
template <class Text>
std::unique_ptr<Text> at_rest (std::unique_ptr<Text> text) {
    if (text) {
        text->x = 0;
        text->y = 0;
    }
    return text;
}

} // namespace

bool Network::change_main_product (Arque& reaction, Node& n) {
    const Node* old = reaction.dest_node ();
    if (!is_reaction (reaction.type) || old == nullptr) return false;
    if ((old->type & ~node::shared_bit) != (n.type & ~node::shared_bit)) return false;
    reaction.set_dest (&n);
    if (reaction.residu) reaction.residu->x = 0;
    mark_layout_dirty ();
    return true;
}

bool Network::swap_main_reactant (Arque& reaction, Node& n) {
    Arque* link = arc_from_to (n, reaction);
    Node* source = reaction.source ();
    if (link == nullptr || source == nullptr) return false;
    if (is_substrate_link (link->type)) {
        auto added = std::make_unique<Arque> (link->type);
        added->color = link->color;
        added->take_label (at_rest (std::move (reaction.label)));
        reaction.take_label (at_rest (std::move (link->label)));
        added->source_ = source;
        added->parent = source;
        added->set_dest (&reaction);
        std::unique_ptr<Arque>& link_slot = n.arcs_[n.place_of (*link)];
        std::unique_ptr<Arque>& reaction_slot = source->arcs_[source->place_of (reaction)];
        std::unique_ptr<Arque> gone = std::move (link_slot);
        link_slot = std::move (reaction_slot);
        reaction_slot = std::move (added);
        reaction.source_ = &n;
        reaction.parent = &n;
        gone->source_ = nullptr; // it dies here, with what ends on it
    } else if (is_product_link (link->type)) {
        Node* old = reaction.dest_node ();
        if (old == nullptr) return false;
        auto added = std::make_unique<Arque> (link->type);
        added->color = link->color;
        added->take_label (at_rest (std::move (reaction.residu)));
        reaction.take_residu (line_from_item (at_rest (std::move (link->label))));
        reaction.set_dest (&n);
        added->set_dest (&reaction);
        link->destroy ();
        old->add_arc (std::move (added));
    } else {
        return false;
    }
    mark_layout_dirty ();
    return true;
}

bool Network::can_detach (const Arque& a, const Node& n) const {
    int k = 0;
    if (a.dest () == &n) {
        k = 1;
    } else if (a.source () == &n || (is_main_reaction (a.type) && arc_from_to (n, a) != nullptr)) {
        k = 2;
    } else {
        return false;
    }
    if (n.nb_arcs () >= k) return true;
    return std::any_of (n.incoming ().begin (), n.incoming ().end (), [&a, this] (const Arque* b) {
        return b != &a && b->owner_network () == this;
    });
}

Node& Network::clone_node_for_arc (Arque& a, Node& n) {
    std::unique_ptr<Char> copy = n.clone (nullptr);
    Node& c = add_node (std::unique_ptr<Node> (static_cast<Node*> (copy.release ())));
    c.x = n.x + 10;
    c.y = n.y + 10;
    c.compart = n.compart;
    if (a.dest () == &n) {
        a.set_dest (&c);
    } else if (a.source () == &n) {
        c.add_arc (n.take_arc (a));
    } else if (is_main_reaction (a.type)) {
        if (const Arque* link = arc_from_to (n, a)) c.add_arc (n.take_arc (*link));
    }
    mark_layout_dirty ();
    return c;
}

namespace {

/// The half of can_fuse that looks at the arcs of a.
bool arcs_allow_fusing (const Node& a, const Node& b) {
    return std::none_of (a.arcs ().begin (), a.arcs ().end (), [&b] (const auto& arc) {
        if (const Arque* end = arc->dest_arc ()) {
            return end->source () == &b || end->dest () == &b ||
                   Network::arc_from_to (b, *end) != nullptr;
        }
        return arc->dest () == &b || Network::arc_from_to (b, *arc) != nullptr;
    });
}

} // namespace

bool Network::can_fuse (const Node& a, const Node& b) {
    return a.network == b.network && arcs_allow_fusing (a, b) && arcs_allow_fusing (b, a);
}

void Network::fuse_nodes (Node& keep, Node& gone) {
    if (&keep == &gone) return;
    while (!gone.arcs_.empty ()) keep.add_arc (gone.take_arc (*gone.arcs_.front ()));
    while (!gone.incoming ().empty ()) gone.incoming ().back ()->set_dest (&keep);
    gone.destroy ();
    mark_layout_dirty ();
}

} // namespace ostrand::document
