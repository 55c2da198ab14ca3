// Parts of a network: copies, the text of a selection, merging, moving the origin.
#include "document/markup.h"
#include "document/network.h"
#include "document/network_listener.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

namespace ostrand::document {

void Network::duplicate_selection (std::vector<Node*>& chosen) {
    constexpr float step = 10;
    std::unordered_map<const GraphBase*, GraphBase*> copies;
    std::vector<Node*> made;
    for (const Node* const n : chosen) {
        std::unique_ptr<Char> copy = n->clone (nullptr);
        Node& added = add_node (std::unique_ptr<Node> (static_cast<Node*> (copy.release ())));
        added.set_position (added.x_ + step, added.y_ + step);
        copies[n] = &added;
        added.compart_ = n->compart_;
        made.push_back (&added);
    }
    const auto copy_arc = [&copies] (const Arque& a) {
        const auto end = copies.find (a.dest ());
        if (end == copies.end () || copies.contains (&a)) return false;
        auto* const source = static_cast<Node*> (copies[a.source ()]);
        Arque* const copy = source->connect (*end->second, a.type ());
        copy->set_own_color (a.color ());
        if (a.label () != nullptr) copy->take_label (a.label ()->clone (copy));
        if (a.residu () != nullptr) copy->take_residu (a.residu ()->copy (copy));
        copies[&a] = copy;
        return true;
    };
    // Arcs between nodes come first, then those that end on a copied arc, as long as there are
    // more.
    for (const bool on_arcs : {false, true}) {
        bool more = true;
        while (more) {
            more = false;
            for (const Node* const n : chosen) {
                for (std::size_t i = 0; i < n->arcs_.size (); ++i) {
                    const Arque& a = *n->arcs_[i];
                    if ((a.dest_arc () != nullptr) == on_arcs && copy_arc (a)) more = on_arcs;
                }
            }
        }
    }
    chosen = std::move (made);
    layout ();
}

void Network::selection_sprint (PrintState& to, const std::vector<Node*>& chosen) const {
    constexpr float margin = 20;
    to.numbering.restart ();
    to.out += "[N";
    append_int (to.out, static_cast<int> (chosen.size ()));
    to.out += " 0 ";
    append_int (to.out, align_);
    to.out += " 0 0";
    float left = 100000;
    float top = 100000;
    std::unordered_set<const GraphBase*> written (chosen.begin (), chosen.end ());
    for (const Node* const n : chosen) {
        left = std::min (left, n->x_);
        top = std::min (top, n->y_);
    }
    std::vector<const Arque*> listed;
    for (const bool on_arcs : {false, true}) {
        for (const Node* const n : chosen) {
            for (const auto& a : n->arcs_) {
                if ((a->dest_arc () != nullptr) != on_arcs || !written.contains (a->dest ())) {
                    continue;
                }
                written.insert (a.get ());
                listed.push_back (a.get ());
            }
        }
    }
    to.without_arcs = true; // a copy of a nested network holds none of its arcs
    for (const Node* const n : chosen) n->sprint (to, margin - left, margin - top);
    to.without_arcs = false;
    for (const Arque* const a : listed) {
        to.numbering.add (*a);
        a->sprint (to, 0, 0);
    }
    to.out += ']';
}

void Network::insert_network (Network& other) {
    constexpr float gap = 20;
    const float shift = get_width () + gap;
    announce_contents (other);
    std::vector<std::unique_ptr<Compart>> comps = std::move (other.comps_);
    std::vector<std::unique_ptr<Node>> nodes = std::move (other.nodes_);
    other.comps_.clear ();
    other.nodes_.clear ();
    other.find_hits_.clear ();
    other.find_index_ = -1;
    other.places_good_ = true;
    other.start_anew ();
    if (!other.multi_name ().empty ()) set_multi_name (other.multi_name ());
    for (std::unique_ptr<Compart>& c : comps) {
        c->x_ += shift;
        add_compart (std::move (c));
    }
    for (std::unique_ptr<Node>& n : nodes) {
        n->x_ += shift;
        add_node (std::move (n));
    }
    layout ();
}

std::unique_ptr<Network> Network::insert_text (std::string_view text) {
    std::unique_ptr<Network> husk = read_network (text);
    if (husk) insert_network (*husk);
    return husk;
}

bool Network::normalize_origin () {
    if (is_empty ()) return false;
    constexpr float room = 5; // around a node
    float overhang_x = 0;
    float overhang_y = 0;
    float margin_x = 100000;
    float margin_y = 100000;
    const auto take = [&] (float left, float top) {
        overhang_x = std::min (overhang_x, left);
        overhang_y = std::min (overhang_y, top);
        margin_x = std::min (margin_x, left);
        margin_y = std::min (margin_y, top);
    };
    for (const auto& n : nodes_) {
        take (n->x_ - n->get_width () / 2 - room,
              n->y_ - static_cast<float> (n->get_height ()) / 2 - room);
    }
    for (const auto& c : comps_) take (c->x_, c->y_);
    const float dx = overhang_x < 0 ? overhang_x : std::max (margin_x, 0.0F);
    const float dy = overhang_y < 0 ? overhang_y : std::max (margin_y, 0.0F);
    if (dx == 0 && dy == 0) return false;
    translate (-dx, -dy);
    for (const auto& c : comps_) c->set_position (c->x_ - dx, c->y_ - dy);
    set_origin (x_ + dx, y_ + dy);
    return true;
}

} // namespace ostrand::document
