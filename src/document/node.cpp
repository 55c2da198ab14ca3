// A node: its arcs, label, size and kind.
#include "document/node.h"

#include "document/compart.h"
#include "document/network.h"
#include "document/network_listener.h"
#include "document/numbers.h"

#include <algorithm>
#include <array>

namespace ostrand::document {
namespace {

/// A label wider than this makes an ellipse or a receptor larger around it.
constexpr float wide_label = 50;
constexpr int more_height = 4; // of a node with a wide label, a bar below it, or a residu

} // namespace

Node::Node (float new_x, float new_y, unsigned new_type, unsigned new_bg_color,
            std::optional<std::string_view> letters)
    : bg_color_ (new_bg_color), type_ (new_type) {
    x_ = new_x;
    y_ = new_y;
    color_ = 0;
    if (letters) set_label (*letters);
}

Node::~Node () {
    if (!goes_with_all_) destroy_arcs ();
    if (sharing_) {
        set_master (nullptr);
        while (!clones ().empty ()) clones ().back ()->set_master (nullptr);
    }
    if (Network* const inner = nested ()) inner->holder_ = nullptr;
    drop_texts ();
}

Node::Sharing& Node::sharing () {
    if (!sharing_) sharing_ = std::make_unique<Sharing> ();
    return *sharing_;
}

bool Node::set_master (Node* new_master) {
    if (new_master == master ()) return false;
    Sharing& own = sharing ();
    if (own.master != nullptr) {
        std::vector<Node*>& all = own.master->sharing_->clones;
        all[own.place] = all.back ();
        all[own.place]->sharing_->place = own.place;
        all.pop_back ();
    }
    own.master = new_master;
    if (new_master == nullptr) return true;
    std::vector<Node*>& all = new_master->sharing ().clones;
    own.place = all.size ();
    all.push_back (this);
    return true;
}

void Node::content_changed () {
    size_generation_ = 0;
    note ();
}

// Arcs

std::size_t Node::place_of (const Arque& arc) const {
    if (arc.source_ != this) return arcs_.size ();
    if (!arc_places_good_) {
        for (std::size_t i = 0; i < arcs_.size (); ++i) {
            arcs_[i]->place_ = static_cast<std::uint32_t> (i);
        }
        arc_places_good_ = true;
    }
    return arc.place_;
}

std::unique_ptr<Arque> Node::release_arc (const Arque& arc) {
    const std::size_t place = place_of (arc);
    if (place == arcs_.size ()) return nullptr;
    std::unique_ptr<Arque> taken = std::move (arcs_[place]);
    arcs_.erase (arcs_.begin () + static_cast<std::ptrdiff_t> (place));
    arc_places_good_ = place == arcs_.size ();
    if (network_ != nullptr) network_->forget (*taken);
    taken->note_links ();
    taken->release_parallels ();
    taken->source_ = nullptr;
    adopt (*taken, nullptr);
    return taken;
}

std::unique_ptr<Arque> Node::take_arc (const Arque& arc) {
    const std::size_t place = place_of (arc);
    if (place == arcs_.size ()) return nullptr;
    announce_leaving (static_cast<GraphBase&> (*arcs_[place]));
    return release_arc (arc);
}

void Node::add_arc (std::unique_ptr<Arque> arc, std::size_t place) {
    Arque& added = *arc;
    added.source_ = this;
    adopt (added, this);
    place = std::min (place, arcs_.size ());
    if (place == arcs_.size ()) {
        added.place_ = static_cast<std::uint32_t> (place);
    } else {
        arc_places_good_ = false;
    }
    arcs_.insert (arcs_.begin () + static_cast<std::ptrdiff_t> (place), std::move (arc));
    if (network_ != nullptr) network_->take_in (added);
    added.note_side ();
    added.note_links ();
}

Arque* Node::connect (GraphBase& dest, unsigned arc_type) {
    auto made = std::make_unique<Arque> (arc_type);
    Arque* const arc = made.get ();
    arc->set_dest (&dest);
    add_arc (std::move (made));
    return arc;
}

/// The arcs at both ends go, and what hangs on them.
void Node::destroy_arcs () {
    destroyed_ = true;
    std::vector<Arque*> touching (incoming ().begin (), incoming ().end ());
    for (const auto& a : arcs_) touching.push_back (a.get ());
    Arque::destroy_all (touching);
}

void Node::touch_arcs () {
    for (const auto& a : arcs_) a->note_side ();
    for (Arque* const a : incoming ()) a->note_side ();
}

// Texts and marks

void Node::take_label (std::unique_ptr<Char> new_label) {
    if (label_) announce_leaving (*label_);
    if (Network* const inner = nested ()) {
        inner->holder_ = nullptr;
        if (network_ != nullptr) network_->forget_ids ();
    }
    label_ = std::move (new_label);
    if (Network* const inner = nested ()) {
        inner->holder_ = this;
        adopt (*inner, network_);
        if (network_ != nullptr) network_->forget_ids ();
    } else if (label_) {
        adopt (*label_, this);
    }
    content_changed ();
}

bool Node::set_type (unsigned new_type) {
    if (type_ == new_type) return false;
    type_ = new_type;
    content_changed ();
    return true;
}

bool Node::set_user_data (std::optional<std::string> text) {
    if (text ? user_data_ && *user_data_ == *text : !user_data_) return false;
    user_data_ = text ? std::make_unique<std::string> (std::move (*text)) : nullptr;
    return true;
}

bool Node::set_calyx_display (bool on) {
    const bool changed = calyx_display_ != on;
    calyx_display_ = on;
    return changed;
}

bool Node::set_multi_conc (bool on) {
    const bool changed = multi_conc_ != on;
    multi_conc_ = on;
    return changed;
}

bool Node::set_concentration (std::string_view new_text) {
    const std::string text (new_text);
    bool changed = set_user_data (text);
    if (!is_shared ()) return changed;
    Node* const first = master () != nullptr ? master () : this;
    changed = first->set_user_data (text) || changed;
    for (Node* const clone : first->clones ()) {
        if (clone == this) continue;
        changed = clone->set_user_data (std::nullopt) || changed;
        changed = clone->set_calyx_display (true) || changed;
    }
    return changed;
}

void Node::toggle_display () {
    calyx_display_ = !calyx_display_;
    if (!is_shared ()) return;
    Node* const first = master () != nullptr ? master () : this;
    first->calyx_display_ = calyx_display_;
    for (Node* const clone : first->clones ()) clone->calyx_display_ = calyx_display_;
}

bool Node::is_reactant () const {
    return std::any_of (arcs_.begin (), arcs_.end (), [] (const auto& a) {
        const auto has = [t = a->type ()] (unsigned bits) { return (t & bits) == bits; };
        return has (arc::reaction) || has (arc::substrate_bit) || has (arc::catalysis) ||
               has (arc::activation);
    });
}

std::unique_ptr<Node> Node::clone_objects (Char* new_parent, CopyMap& map) const {
    auto copy = std::make_unique<Node> (x_, y_, type_, bg_color_);
    map[this] = copy.get ();
    adopt (*copy, new_parent);
    copy->color_ = color_;
    copy->foggy_ = foggy_;
    copy->set_selectable (selectable ());
    copy->set_thickness (thickness ());
    if (user_data_) copy->set_user_data (*user_data_);
    copy->calyx_display_ = calyx_display_;
    copy->multi_conc_ = multi_conc_;
    if (const Network* const inner = nested ()) {
        auto inner_copy = std::make_unique<Network> ();
        inner->copy_objects (*inner_copy, map);
        copy->take_label (std::move (inner_copy));
    } else if (label_) {
        copy->take_label (label_->clone (copy.get ()));
    }
    if (residu_) copy->take_residu (residu_->copy (copy.get ()));
    return copy;
}

std::unique_ptr<Char> Node::clone (Char* new_parent) const {
    CopyMap map;
    std::unique_ptr<Node> copy = clone_objects (new_parent, map);
    if (const Network* const inner = nested ()) inner->copy_arcs (map);
    return copy;
}

// Size and places

/// More height is needed than that of the label.
bool Node::is_roomy (bool shared) const {
    const bool wide = (group () == node::molecule_group || group () == node::receptor_group) &&
                      label_->get_width () > wide_label;
    return wide || shared || residu_ != nullptr;
}

int Node::height_as (bool shared) const {
    if (!label_) return get_height ();
    const auto more = [this] (bool as) { return is_roomy (as) ? more_height : 0; };
    return get_height () - more (is_shared ()) + more (shared);
}

const Node::Size& Node::size () const {
    const unsigned now = metrics_generation ();
    if (size_generation_ == now) return size_;
    size_ = {2, 2};
    if (label_) {
        const float text_width = label_->get_width ();
        size_.width = text_width + 10;
        if (group () == node::molecule_group && text_width > wide_label) size_.width += 16;
        size_.height = label_->get_height () + 8;
        if (is_roomy (is_shared ())) size_.height += more_height;
    }
    // What is nested and not laid out yet may have another size in a moment.
    const bool settled = nested () == nullptr || nested ()->is_laid_out ();
    size_generation_ = settled ? now : 0;
    return size_;
}

void Node::lay_out () {
    GraphBase::lay_out ();
    size_generation_ = 0; // something inside may have been laid out
    if (label_) {
        // Relative to the node's corner.
        float right = 5;
        auto down = static_cast<float> (label_->get_ascent () + 4);
        if (group () == node::receptor_group) down += 7;
        if (residu_) {
            down += 2;
        } else if (group () == node::molecule_group && label_->get_width () > wide_label) {
            down += 2;
            right += 8;
        }
        if (is_shared ()) down -= 2;
        place (*label_, right, down);
    }
    if (residu_) {
        // In the network's coordinates.
        place (*residu_, x_ - get_width () / 2 + 10, y_ - static_cast<float> (get_height ()) / 2);
    }
}

bool Node::set_position (float new_x, float new_y) {
    if (new_x == x_ && new_y == y_) return false;
    x_ = new_x;
    y_ = new_y;
    note ();
    return true;
}

void Node::text (std::string& out) const {
    if (label_) label_->text (out);
}

void Node::print_plain (std::string& out) const {
    if (label_) label_->print_plain (out);
}

Anchor Node::anchor (unsigned) const {
    const Extent box = extent ();
    return {box.x, box.y, to_pixels (get_width () * 0.5F), get_height () / 2};
}

Extent Node::extent () const {
    const float half_w = get_width () * 0.5F;
    const float half_h = static_cast<float> (get_height ()) * 0.5F;
    return {x_ - half_w, y_ - half_h, x_ + half_w, y_ + half_h};
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
    static constexpr std::array<unsigned, 8> types{
        node::receptor,       node::gene,     node::shared_gene,     node::protein,
        node::shared_protein, node::molecule, node::shared_molecule, node::no_border};
    if (k == node::kind::with_state) {
        if ((group () != node::protein_group && group () != node::receptor_group) || residu_) {
            return false;
        }
        take_residu (std::make_unique<Line> ("P", kinetic_font, document_state ().default_color));
        return true;
    }
    if (k == node::kind::without_state) {
        if (!residu_) return false;
        take_residu (nullptr);
        return true;
    }
    if (k < 0 || k >= static_cast<int> (types.size ())) return false;
    const unsigned old = type_;
    if (!set_type (types[static_cast<std::size_t> (k)])) return false;
    if (k != node::kind::no_border && (old & node::background_bit) == 0) bg_color_ = 7;
    const bool keeps_state =
        k == node::kind::receptor || k == node::kind::protein || k == node::kind::shared_protein;
    if (residu_ && !keeps_state) take_residu (nullptr);
    return true;
}

bool Node::set_color (unsigned c) {
    const bool changed = bg_color_ != c;
    bg_color_ = c;
    return changed;
}

void Node::destroy () {
    if (destroyed_) return;
    destroy_arcs ();
    if (network_ != nullptr) network_->detach_node (*this); // and with it the last owner
}

} // namespace ostrand::document
