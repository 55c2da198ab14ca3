// A node: its arcs, label, size and kind.
#include "document/node.h"

#include "document/compart.h"
#include "document/network.h"
#include "document/numbers.h"

#include <algorithm>

namespace ostrand::document {
namespace {

/// A label wider than this makes an ellipse or a receptor larger around it.
constexpr float wide_label = 50;

} // namespace

Node::Node (float new_x, float new_y, unsigned new_type, unsigned new_bg_color,
            std::optional<std::string_view> letters)
    : bg_color (new_bg_color), type (new_type) {
    x = new_x;
    y = new_y;
    color = 0;
    if (letters) set_label (*letters);
}

Node::~Node () {
    destroyed = true;
    std::vector<Arque*> touching (incoming ());
    for (const auto& a : arcs_) touching.push_back (a.get ());
    Arque::destroy_all (touching);
    set_master (nullptr);
    while (!clones_.empty ()) clones_.back ()->set_master (nullptr);
    if (Network* inner = nested ()) inner->holder = nullptr;
}

void Node::set_master (Node* new_master) {
    if (master_ != nullptr) {
        std::vector<Node*>& all = master_->clones_;
        all[clone_place_] = all.back ();
        all[clone_place_]->clone_place_ = clone_place_;
        all.pop_back ();
    }
    master_ = new_master;
    if (master_ == nullptr) return;
    clone_place_ = master_->clones_.size ();
    master_->clones_.push_back (this);
}

std::size_t Node::place_of (const Arque& arc) const {
    const auto found = std::find_if (arcs_.begin (), arcs_.end (),
                                     [&arc] (const auto& a) { return a.get () == &arc; });
    return static_cast<std::size_t> (found - arcs_.begin ());
}

std::unique_ptr<Arque> Node::take_arc (const Arque& arc) {
    const std::size_t place = place_of (arc);
    if (place == arcs_.size ()) return nullptr;
    std::unique_ptr<Arque> taken = std::move (arcs_[place]);
    arcs_.erase (arcs_.begin () + static_cast<std::ptrdiff_t> (place));
    taken->source_ = nullptr;
    taken->parent = nullptr;
    return taken;
}

void Node::add_arc (std::unique_ptr<Arque> arc, std::size_t place) {
    arc->source_ = this;
    arc->parent = this;
    place = std::min (place, arcs_.size ());
    arcs_.insert (arcs_.begin () + static_cast<std::ptrdiff_t> (place), std::move (arc));
    mark_layout_dirty ();
}

Arque* Node::connect (GraphBase& dest, unsigned arc_type) {
    auto made = std::make_unique<Arque> (arc_type);
    Arque* arc = made.get ();
    add_arc (std::move (made));
    arc->set_dest (&dest);
    return arc;
}

void Node::take_label (std::unique_ptr<Char> new_label) {
    if (Network* inner = nested ()) inner->holder = nullptr;
    GraphBase::take_label (std::move (new_label));
    if (Network* inner = nested ()) {
        inner->holder = this;
        inner->parent = network;
    }
}

void Node::set_concentration (std::string_view text) {
    user_data = std::string (text);
    if (!is_shared ()) return;
    Node* first = master_ != nullptr ? master_ : this;
    first->user_data = user_data;
    for (Node* clone : first->clones_) {
        if (clone == this) continue;
        clone->user_data.reset ();
        clone->calyx_display = true;
    }
}

void Node::toggle_display () {
    calyx_display = !calyx_display;
    if (!is_shared ()) return;
    Node* first = master_ != nullptr ? master_ : this;
    first->calyx_display = calyx_display;
    for (Node* clone : first->clones_) clone->calyx_display = calyx_display;
}

bool Node::is_reactant () const {
    return std::any_of (arcs_.begin (), arcs_.end (), [] (const auto& a) {
        const unsigned t = a->type;
        return (t & 0x110U) == 0x110U || (t & 0x220U) != 0 || (t & 48U) == 48U || (t & 64U) != 0;
    });
}

std::unique_ptr<Node> Node::clone_objects (Char* new_parent, CopyMap& map) const {
    auto copy = std::make_unique<Node> (x, y, type, bg_color);
    map[this] = copy.get ();
    copy->parent = new_parent;
    copy->color = color;
    copy->font = font;
    copy->foggy = foggy;
    copy->selectable = selectable;
    copy->thickness = thickness;
    copy->user_data = user_data;
    copy->calyx_display = calyx_display;
    copy->multi_conc = multi_conc;
    if (const Network* inner = nested ()) {
        auto inner_copy = std::make_unique<Network> ();
        inner->copy_objects (*inner_copy, map);
        copy->take_label (std::move (inner_copy));
    } else if (label) {
        copy->take_label (label->clone (copy.get ()));
    }
    if (residu) copy->take_residu (residu->copy (copy.get ()));
    return copy;
}

std::unique_ptr<Char> Node::clone (Char* new_parent) const {
    CopyMap map;
    std::unique_ptr<Node> copy = clone_objects (new_parent, map);
    if (const Network* inner = nested ()) inner->copy_arcs (map);
    return copy;
}

float Node::get_width () const {
    const unsigned now = document_state ().layout_generation;
    if (width_stamp == now) return width;
    width = 2;
    if (label) {
        const float text_width = label->get_width ();
        width = text_width + 10;
        if (group () == node::molecule_group && text_width > wide_label) width += 16;
    }
    width_stamp = now;
    return width;
}

int Node::get_height () const {
    const unsigned now = document_state ().layout_generation;
    if (height_stamp == now) return to_pixels (height);
    int high = 2;
    if (label) {
        high = label->get_height () + 8;
        const bool roomy = group () == node::molecule_group || group () == node::receptor_group;
        if ((roomy && label->get_width () > wide_label) || is_shared () || residu) high += 4;
    }
    height = static_cast<float> (high);
    height_stamp = now;
    return high;
}

bool Node::set_position (float new_x, float new_y) {
    x = new_x;
    y = new_y;
    mark_layout_dirty ();
    return true;
}

void Node::text (std::string& out) const {
    if (label) label->text (out);
}

void Node::print_plain (std::string& out) const {
    if (label) label->print_plain (out);
}

Popup* Node::menu (int row) const {
    return document_state ().node_menus[static_cast<std::size_t> (row) & 3U];
}

Anchor Node::anchor (unsigned) const {
    const Extent box = extent ();
    return {box.x, box.y, to_pixels (get_width () * 0.5F), get_height () / 2};
}

Extent Node::extent () const {
    const float half_w = get_width () * 0.5F;
    const float half_h = static_cast<float> (get_height ()) * 0.5F;
    return {x - half_w, y - half_h, x + half_w, y + half_h};
}

Extent Node::extent_with_arcs () const {
    Extent box = extent ();
    const auto join = [&box] (const Arque& a) {
        box.join (a.extent ());
        for (const Arque* b : a.incoming ()) box.join (b->extent ());
    };
    for (const auto& a : arcs_) join (*a);
    for (const Arque* a : incoming ()) join (*a);
    return box;
}

bool Node::set_kind (int k) {
    const unsigned old = type;
    switch (k) {
    case 0: type = 17; break;
    case 1: type = 5; break;
    case 2: type = 7; break;
    case 3: type = 9; break;
    case 4: type = 11; break;
    case 5: type = 13; break;
    case 6: type = 15; break;
    case 7: type = 0; break;
    case 8:
        if ((group () != node::protein_group && group () != node::receptor_group) || residu) {
            return false;
        }
        take_residu (std::make_unique<Line> ("P", kinetic_font, document_state ().default_color));
        return true;
    case 9:
        if (!residu) return false;
        take_residu (nullptr);
        return true;
    default: return false;
    }
    if (k <= 6 && (old & node::background_bit) == 0) bg_color = 7;
    if (k == 1 || k == 2 || k >= 5) take_residu (nullptr);
    if (old != type) mark_layout_dirty ();
    return old != type;
}

bool Node::set_color (unsigned c) {
    const bool changed = bg_color != c;
    bg_color = c;
    return changed;
}

void Node::destroy () {
    if (destroyed) return;
    if (network != nullptr) {
        network->detach_node (*this); // and with it the last owner
        return;
    }
    std::vector<Arque*> touching (incoming ());
    for (const auto& a : arcs_) touching.push_back (a.get ());
    Arque::destroy_all (touching);
}

} // namespace ostrand::document
