// Parts of a network: copies, the text of a selection, merging, moving the origin.
#include "document/markup.h"
#include "document/network.h"

#include "base/text.h"

#include <algorithm>
#include <unordered_map>

namespace ostrand::document {

void Network::duplicate_selection (std::vector<Node*>& chosen) {
    std::unordered_map<const GraphBase*, GraphBase*> copies;
    std::vector<Node*> made;
    for (const Node* n : chosen) {
        std::unique_ptr<Char> copy = n->clone (nullptr);
        Node& added = add_node (std::unique_ptr<Node> (static_cast<Node*> (copy.release ())));
        added.x += 10;
        added.y += 10;
        copies[n] = &added;
        added.compart = n->compart;
        made.push_back (&added);
    }
    const auto copy_arc = [&copies] (const Arque& a) {
        const auto end = copies.find (a.dest ());
        if (end == copies.end () || copies.contains (&a)) return false;
        auto* source = static_cast<Node*> (copies[a.source ()]);
        Arque* copy = source->connect (*end->second, a.type);
        copy->color = a.color;
        if (a.label) copy->take_label (a.label->clone (copy));
        if (a.residu) copy->take_residu (a.residu->copy (copy));
        copies[&a] = copy;
        return true;
    };
    // Arcs between nodes come first, then those that end on a copied arc, as long as there are
    // more.
    for (const bool on_arcs : {false, true}) {
        bool more = true;
        while (more) {
            more = false;
            for (const Node* n : chosen) {
                for (std::size_t i = 0; i < n->arcs_.size (); ++i) {
                    const Arque& a = *n->arcs_[i];
                    if ((a.dest_arc () != nullptr) == on_arcs && copy_arc (a)) more = on_arcs;
                }
            }
        }
    }
    chosen = std::move (made);
    mark_layout_dirty ();
    layout ();
}

void Network::selection_sprint (PrintState& to, const std::vector<Node*>& chosen) {
    document_state ().next_id = 1;
    to.out += format_text ("[N%d 0 %d 0 0", static_cast<int> (chosen.size ()), align);
    float left = 100000;
    float top = 100000;
    for (Node* n : chosen) {
        n->copy_mark = true;
        left = std::min (left, n->x);
        top = std::min (top, n->y);
    }
    std::vector<Arque*> listed;
    for (const bool on_arcs : {false, true}) {
        for (const Node* n : chosen) {
            for (const auto& a : n->arcs_) {
                if ((a->dest_arc () != nullptr) != on_arcs || !a->dest ()->copy_mark) continue;
                a->copy_mark = true;
                listed.push_back (a.get ());
            }
        }
    }
    to.without_arcs = true; // a copy of a nested network holds none of its arcs
    for (Node* n : chosen) n->sprint (to, 20 - left, 20 - top);
    to.without_arcs = false;
    for (Arque* a : listed) {
        a->id = take_id ();
        a->sprint (to, 0, 0);
    }
    to.out += ']';
    for (Node* n : chosen) n->copy_mark = false;
    for (Arque* a : listed) a->copy_mark = false;
}

void Network::insert_network (Network& other) {
    const float shift = get_width () + 20;
    while (!other.comps_.empty ()) {
        std::unique_ptr<Compart> c = std::move (other.comps_.front ());
        other.comps_.erase (other.comps_.begin ());
        c->x += shift;
        add_compart (std::move (c));
    }
    std::vector<std::unique_ptr<Node>> moved = std::move (other.nodes_);
    other.nodes_.clear ();
    has_paths_ = has_paths_ || other.has_paths_;
    other.find_hits_.clear ();
    other.find_index = -1;
    other.under_mouse = nullptr;
    other.places_good_ = true;
    for (std::unique_ptr<Node>& n : moved) {
        n->x += shift;
        add_node (std::move (n));
    }
    mark_layout_dirty ();
    layout ();
}

std::unique_ptr<Network> Network::insert_text (std::string_view text) {
    std::unique_ptr<Network> husk = read_network (text);
    if (husk) insert_network (*husk);
    return husk;
}

void Network::normalize_origin () {
    if (is_empty ()) return;
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
        take (n->x - n->get_width () / 2 - 5, n->y - static_cast<float> (n->get_height ()) / 2 - 5);
    }
    for (const auto& c : comps_) take (c->x, c->y);
    const float dx = overhang_x < 0 ? overhang_x : std::max (margin_x, 0.0F);
    const float dy = overhang_y < 0 ? overhang_y : std::max (margin_y, 0.0F);
    if (dx == 0 && dy == 0) return;
    translate (-dx, -dy);
    for (const auto& c : comps_) {
        c->x -= dx;
        c->y -= dy;
    }
    x += dx;
    y += dy;
}

} // namespace ostrand::document
