// The network as a container: what it holds, and how objects come and go.
#include "document/network.h"

#include "document/layout_index.h"
#include "document/network_listener.h"
#include "document/numbers.h"

#include <algorithm>

namespace ostrand::document {

Network::Network () {
    constexpr float first_origin = 8;
    x_ = first_origin;
    y_ = first_origin;
}

Network::~Network () {
    if (listener_ != nullptr) announce_contents (*this);
    index_.reset ();
    drop_objects ();
}

/// All objects are about to go at once. Arcs among them need no care; those that lead elsewhere are
/// taken off what they end on, and those from elsewhere that end here go as they always do.
void Network::drop_objects () {
    std::vector<Arque*> from_elsewhere;
    const auto part = [&] (GraphBase& g) {
        g.destroyed_ = g.goes_with_all_ = true;
        for (Arque* const b : g.incoming ()) {
            if (b->owner_network () != this) from_elsewhere.push_back (b);
        }
    };
    for (const auto& c : comps_) part (*c);
    for (const auto& n : nodes_) {
        part (*n);
        for (const auto& a : n->arcs_) {
            part (*a);
            if (a->dest_ != nullptr && a->dest_->owner_network () != this) a->unlink ();
        }
    }
    Arque::destroy_all (from_elsewhere);
}

bool Network::set_align (int new_align) {
    if (align_ == new_align) return false;
    align_ = new_align;
    stir ();
    return true;
}

bool Network::set_origin (float new_x, float new_y) {
    const bool changed = new_x != x_ || new_y != y_;
    x_ = new_x;
    y_ = new_y;
    return changed;
}

// The document

const Network* network_around (const Char& c) {
    for (const Char* on = &c; on != nullptr; on = on->parent ()) {
        switch (on->kind ()) {
        case CharKind::network: return static_cast<const Network*> (on);
        case CharKind::compart:
        case CharKind::arque:
        case CharKind::node: return static_cast<const GraphBase*> (on)->owner_network ();
        case CharKind::std_char:
        case CharKind::line:
        case CharKind::picture: break;
        }
    }
    return nullptr;
}

const Network& Network::outermost () const {
    const Network* network = this;
    while (true) {
        const Network* around = nullptr;
        if (network->holder_ != nullptr) {
            around = network->holder_->network ();
        } else if (network->parent_ != nullptr && network->parent_->kind () == CharKind::line) {
            around = network_around (*network->parent_);
        }
        if (around == nullptr) return *network;
        network = around;
    }
}

Network& Network::outermost () {
    return const_cast<Network&> (static_cast<const Network&> (*this).outermost ());
}

const std::string& Network::multi_name () const { return outermost ().multi_name_; }

void Network::set_multi_name (std::string name) { outermost ().multi_name_ = std::move (name); }

bool Network::mark_multiple_conc (Node& n) {
    bool changed = false;
    for (const auto& other : nodes_) {
        changed = other->set_multi_conc (other.get () == &n) || changed;
    }
    changed = n.set_multi_conc (true) || changed;
    std::string name = n.name ();
    changed = changed || name != multi_name ();
    set_multi_name (std::move (name));
    return changed;
}

void Network::set_listener (NetworkListener* listener) { outermost ().listener_ = listener; }

NetworkListener* Network::listener () const { return outermost ().listener_; }

// Coming and going

void Network::take_in (GraphBase& g) {
    if (g.kind () == CharKind::arque) {
        ++arc_count_;
        static_cast<Arque&> (g).walk_ = 0;
    }
    list_id (g);
    note (g);
}

void Network::leave (GraphBase& g) {
    announce_leaving (g);
    forget (g);
}

void Network::forget (GraphBase& g) {
    if (g.note_place_ != GraphBase::nowhere) {
        // The last of the notes takes its place.
        GraphBase* const last = notes_.changed.back ();
        notes_.changed[g.note_place_] = last;
        last->note_place_ = g.note_place_;
        notes_.changed.pop_back ();
        g.note_place_ = GraphBase::nowhere;
    }
    if (index_) index_->remove (g);
    forget_id (g);
    if (g.kind () == CharKind::node) forget_hit (static_cast<const Node&> (g));
    if (g.kind () == CharKind::arque) --arc_count_;
    const bool was_clean = is_clean ();
    notes_.something_left = true;
    if (was_clean) stir ();
}

Node& Network::add_node (std::unique_ptr<Node> n) {
    Node& added = *n;
    added.network_ = this;
    adopt (added, this);
    added.place_ = static_cast<std::uint32_t> (nodes_.size ());
    if (Network* const inner = added.nested ()) adopt (*inner, this);
    nodes_.push_back (std::move (n));
    take_in (added);
    for (const auto& a : added.arcs_) take_in (*a);
    added.touch_arcs ();
    return added;
}

Compart& Network::add_compart (std::unique_ptr<Compart> c) {
    Compart& added = *c;
    added.network_ = this;
    adopt (added, this);
    comps_.push_back (std::move (c));
    take_in (added);
    return added;
}

Compart& Network::add_compart (int new_shape, float new_x, float new_y, int new_width,
                               int new_height) {
    constexpr float room = 30;
    const float wide = new_width == 0 ? get_width () + room : static_cast<float> (new_width);
    const float high = new_height == 0 ? static_cast<float> (get_height ()) + room
                                       : static_cast<float> (new_height);
    auto made = std::make_unique<Compart> (new_shape, new_x, new_y, wide, high);
    made->set_label ("Default");
    return add_compart (std::move (made));
}

bool Network::assign_compart (Node& n) const {
    const auto holds = [&n] (const auto& c) { return c->contains (n.x_, n.y_); };
    const auto found = std::find_if (comps_.begin (), comps_.end (), holds);
    Compart* const now = found == comps_.end () ? nullptr : found->get ();
    const bool changed = now != n.compart_;
    n.compart_ = now;
    return changed;
}

std::unique_ptr<Node> Network::detach_node (Node& n) {
    if (n.network_ != this) return nullptr;
    const std::size_t place = place_of (n);
    leave (n);
    for (const auto& a : n.arcs_) forget (*a);
    std::unique_ptr<Node> taken = std::move (nodes_[place]);
    nodes_.erase (nodes_.begin () + static_cast<std::ptrdiff_t> (place));
    places_good_ = places_good_ && place == nodes_.size ();
    taken->network_ = nullptr;
    taken->compart_ = nullptr;
    adopt (*taken, nullptr);
    for (Arque* const a : taken->incoming ()) a->note (); // those of other nodes
    return taken;
}

std::unique_ptr<Compart> Network::detach_compart (Compart& c) {
    const auto found = std::find_if (comps_.begin (), comps_.end (),
                                     [&c] (const auto& other) { return other.get () == &c; });
    if (found == comps_.end ()) return nullptr;
    leave (c);
    std::unique_ptr<Compart> taken = std::move (*found);
    comps_.erase (found);
    for (const auto& n : nodes_) {
        if (n->compart_ == &c) n->compart_ = nullptr;
    }
    taken->network_ = nullptr;
    adopt (*taken, nullptr);
    return taken;
}

// Walks

bool Network::is_in (const GraphBase* g) const {
    // g may be gone already, so it is only compared, never looked into.
    for (const auto& n : nodes_) {
        if (n.get () == g) return true;
        for (const auto& a : n->arcs_) {
            if (a.get () == g) return true;
        }
    }
    return std::any_of (comps_.begin (), comps_.end (),
                        [g] (const auto& c) { return c.get () == g; });
}

Node* Network::node_of_label (const Char* wanted) const {
    if (wanted == nullptr) return nullptr;
    const auto found = std::find_if (nodes_.begin (), nodes_.end (),
                                     [wanted] (const auto& n) { return n->label () == wanted; });
    return found == nodes_.end () ? nullptr : found->get ();
}

std::vector<Arque*> Network::all_arcs () const {
    std::vector<Arque*> all;
    for (const auto& n : nodes_) {
        for (const auto& a : n->arcs_) all.push_back (a.get ());
    }
    return all;
}

void Network::renew_places () const {
    if (places_good_) return;
    for (std::size_t i = 0; i < nodes_.size (); ++i) {
        nodes_[i]->place_ = static_cast<std::uint32_t> (i);
    }
    places_good_ = true;
}

std::size_t Network::place_of (const Node& n) const {
    if (n.network_ != this) return nodes_.size ();
    // A node never stands behind the place it once had but after additions, which keep the rest.
    if (n.place_ < nodes_.size () && nodes_[n.place_].get () == &n) return n.place_;
    renew_places ();
    return n.place_;
}

std::uint64_t Network::walk_place (const Arque& a) const {
    const Node& source = *a.source ();
    return static_cast<std::uint64_t> (place_of (source)) << 32 | source.place_of (a);
}

std::vector<Arque*> Network::arcs_to (const GraphBase& g) const {
    struct Placed {
        std::uint64_t place;
        Arque* arc;
    };
    std::vector<Placed> placed;
    for (Arque* const a : g.incoming ()) {
        if (a->owner_network () == this) placed.push_back ({walk_place (*a), a});
    }
    std::sort (placed.begin (), placed.end (),
               [] (const Placed& a, const Placed& b) { return a.place < b.place; });
    std::vector<Arque*> found;
    found.reserve (placed.size ());
    for (const Placed& p : placed) found.push_back (p.arc);
    return found;
}

int Network::count_arcs_to (const Node& from, const GraphBase& to) {
    return static_cast<int> (std::count_if (from.arcs_.begin (), from.arcs_.end (),
                                            [&to] (const auto& a) { return a->dest () == &to; }));
}

Arque* Network::arc_from_to (const Node& from, const GraphBase& to) {
    const auto found = std::find_if (from.arcs_.begin (), from.arcs_.end (),
                                     [&to] (const auto& a) { return a->dest () == &to; });
    return found == from.arcs_.end () ? nullptr : found->get ();
}

bool Network::clear_multi_conc () {
    bool changed = false;
    for (const auto& n : nodes_) changed = n->set_multi_conc (false) || changed;
    return changed;
}

bool Network::translate (float dx, float dy) {
    bool changed = false;
    for (const auto& n : nodes_) changed = n->set_position (n->x_ + dx, n->y_ + dy) || changed;
    return changed;
}

// Sizes

Point Network::measured_size () const {
    Point edge;
    const auto take = [&edge] (const Point& p) {
        edge.x = std::max (edge.x, p.x);
        edge.y = std::max (edge.y, p.y);
    };
    for (const auto& n : nodes_) {
        take (far_edge (*n));
        for (const auto& a : n->arcs_) take (far_edge (*a));
    }
    for (const auto& c : comps_) take (far_edge (*c));
    return edge;
}

float Network::get_width () const { return is_laid_out () ? width_ : measured_size ().x; }

int Network::get_height () const {
    return to_pixels (is_laid_out () ? height_ : measured_size ().y);
}

int Network::get_ascent () const {
    const int whole = get_height ();
    return align_ == 0 ? whole : align_ == 2 ? 0 : whole / 2;
}

int Network::get_descent () const {
    const int whole = get_height ();
    return align_ == 0 ? 0 : align_ == 2 ? whole : whole / 2;
}

/// By how much the network stands above its place on a text line.
float Network::align_shift () const {
    if (align_ != 0 && align_ != 1) return 0;
    const auto h = static_cast<float> (get_height ());
    return align_ == 1 ? h / 2 : h;
}

// Comparison

bool Network::equals (const Char& other) const {
    if (other.kind () != CharKind::network) return false;
    const auto& network = static_cast<const Network&> (other);
    return std::equal (nodes_.begin (), nodes_.end (), network.nodes_.begin (),
                       network.nodes_.end (), [] (const auto& a, const auto& b) {
                           return a->label () != nullptr && b->label () != nullptr &&
                                  a->label ()->equals (*b->label ());
                       });
}

bool Network::add_identity (Identity& identity) const {
    identity.add (nodes_.size ());
    return std::all_of (nodes_.begin (), nodes_.end (), [&identity] (const auto& n) {
        return n->label () != nullptr && n->label ()->add_identity (identity);
    });
}

} // namespace ostrand::document
