// Changes of who takes part in a reaction: main product and reactant, detaching, fusing.
#include "document/markup.h"
#include "document/network.h"

#include <algorithm>

namespace ostrand::document {
namespace {

/// A text that moves to another place starts at that place.
template <class Text>
std::unique_ptr<Text> at_rest (std::unique_ptr<Text> text) {
    if (text && text->kind () == CharKind::line) {
        static_cast<Line&> (static_cast<Char&> (*text)).set_offset (0, 0);
    }
    return text;
}

} // namespace

bool Network::change_main_product (Arque& reaction, Node& n) {
    const Node* const old = reaction.dest_node ();
    if (!is_reaction (reaction.type ()) || old == nullptr) return false;
    if ((old->type () & ~node::shared_bit) != (n.type () & ~node::shared_bit)) return false;
    reaction.set_dest (&n);
    if (Line* const residu = reaction.residu ()) residu->set_offset (0, residu->y ());
    return true;
}

bool Network::swap_main_reactant (Arque& reaction, Node& n) {
    Arque* const link = arc_from_to (n, reaction);
    Node* const source = reaction.source ();
    if (link == nullptr || source == nullptr) return false;
    const auto new_link = [link] {
        auto added = std::make_unique<Arque> (link->type ());
        added->set_own_color (link->color ());
        return added;
    };
    if (is_substrate_link (link->type ())) {
        auto added = new_link ();
        added->take_label (at_rest (reaction.release_label ()));
        reaction.take_label (at_rest (link->release_label ()));
        added->set_dest (&reaction);
        const std::size_t link_place = n.place_of (*link);
        const std::size_t reaction_place = source->place_of (reaction);
        n.take_arc (*link); // it dies here, with what ends on it
        std::unique_ptr<Arque> moved = source->release_arc (reaction);
        // In one list the front goes first, so that both come to stand where the other stood.
        const bool added_first = &n == source && reaction_place < link_place;
        if (added_first) source->add_arc (std::move (added), reaction_place);
        n.add_arc (std::move (moved), link_place);
        if (!added_first) source->add_arc (std::move (added), reaction_place);
        return true;
    }
    if (is_product_link (link->type ())) {
        Node* const old = reaction.dest_node ();
        if (old == nullptr) return false;
        auto added = new_link ();
        added->take_label (at_rest (reaction.release_residu ()));
        reaction.take_residu (line_from_item (at_rest (link->release_label ())));
        reaction.set_dest (&n);
        added->set_dest (&reaction);
        link->destroy ();
        old->add_arc (std::move (added));
        return true;
    }
    return false;
}

bool Network::can_detach (const Arque& a, const Node& n) const {
    int k = 0;
    if (a.dest () == &n) {
        k = 1;
    } else if (a.source () == &n ||
               (is_main_reaction (a.type ()) && arc_from_to (n, a) != nullptr)) {
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
    constexpr float step = 10;
    std::unique_ptr<Char> copy = n.clone (nullptr);
    Node& c = add_node (std::unique_ptr<Node> (static_cast<Node*> (copy.release ())));
    c.set_position (n.x_ + step, n.y_ + step);
    c.compart_ = n.compart_;
    if (a.dest () == &n) {
        a.set_dest (&c);
    } else if (a.source () == &n) {
        c.add_arc (n.release_arc (a));
    } else if (is_main_reaction (a.type ())) {
        if (const Arque* const link = arc_from_to (n, a)) c.add_arc (n.release_arc (*link));
    }
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
    return a.network () == b.network () && arcs_allow_fusing (a, b) && arcs_allow_fusing (b, a);
}

void Network::fuse_nodes (Node& keep, Node& gone) {
    if (&keep == &gone) return;
    std::vector<std::unique_ptr<Arque>> moved;
    while (gone.nb_arcs () > 0) moved.push_back (gone.release_arc (*gone.arcs_.back ()));
    while (!moved.empty ()) {
        keep.add_arc (std::move (moved.back ()));
        moved.pop_back ();
    }
    while (!gone.incoming ().empty ()) gone.incoming ().front ()->set_dest (&keep);
    gone.destroy ();
}

} // namespace ostrand::document
