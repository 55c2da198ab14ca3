// The network as a container: what it holds, finds, measures and copies.
#include "document/network.h"

#include "document/numbers.h"

#include <algorithm>

namespace ostrand::document {

Network::Network () {
    x = 8;
    y = 8;
}

Network::~Network () {
    // All arcs at once: node by node, a node with many arcs would be swept again and again.
    std::vector<Arque*> arcs;
    for (const auto& n : nodes_) {
        n->destroyed = true;
        for (const auto& a : n->arcs_) arcs.push_back (a.get ());
    }
    Arque::destroy_all (arcs);
}

const Network& Network::outermost () const {
    const Network* network = this;
    while (network->holder != nullptr && network->holder->network != nullptr) {
        network = network->holder->network;
    }
    return *network;
}

Node& Network::add_node (std::unique_ptr<Node> n) {
    Node& added = *n;
    added.network = this;
    added.parent = this;
    added.place_ = nodes_.size ();
    if (Network* inner = added.nested ()) inner->parent = this;
    nodes_.push_back (std::move (n));
    mark_layout_dirty ();
    return added;
}

Compart& Network::add_compart (std::unique_ptr<Compart> c) {
    c->network = this;
    c->parent = this;
    comps_.push_back (std::move (c));
    mark_layout_dirty ();
    return *comps_.back ();
}

Compart& Network::add_compart (int new_shape, float new_x, float new_y, int new_width,
                               int new_height) {
    const float wide = new_width == 0 ? get_width () + 30 : static_cast<float> (new_width);
    const float high = static_cast<float> (new_height == 0 ? get_height () + 30 : new_height);
    auto made = std::make_unique<Compart> (new_shape, new_x, new_y, wide, high);
    made->set_label ("Default");
    return add_compart (std::move (made));
}

void Network::assign_compart (Node& n) const {
    const auto holds = [&n] (const auto& c) { return c->contains (n.x, n.y); };
    const auto found = std::find_if (comps_.begin (), comps_.end (), holds);
    n.compart = found == comps_.end () ? nullptr : found->get ();
}

void Network::forget (const Node& n) {
    if (under_mouse == &n) under_mouse = nullptr;
    const auto hit = std::find (find_hits_.begin (), find_hits_.end (), &n);
    if (hit != find_hits_.end ()) {
        const auto place = static_cast<int> (hit - find_hits_.begin ());
        find_hits_.erase (hit);
        if (find_index > place || find_index == static_cast<int> (find_hits_.size ())) --find_index;
    }
    if (has_paths_) {
        for (const auto& other : nodes_) other->path_prev = nullptr;
        has_paths_ = false;
    }
}

std::unique_ptr<Node> Network::detach_node (const Node& n) {
    if (n.network != this) return nullptr;
    const std::size_t place = place_of (n);
    if (place == nodes_.size ()) return nullptr;
    forget (n);
    std::unique_ptr<Node> taken = std::move (nodes_[place]);
    nodes_.erase (nodes_.begin () + static_cast<std::ptrdiff_t> (place));
    places_good_ = places_good_ && place == nodes_.size ();
    taken->network = nullptr;
    taken->parent = nullptr;
    taken->compart = nullptr;
    taken->path_prev = nullptr;
    mark_layout_dirty ();
    return taken;
}

std::unique_ptr<Compart> Network::detach_compart (const Compart& c) {
    const auto found = std::find_if (comps_.begin (), comps_.end (),
                                     [&c] (const auto& other) { return other.get () == &c; });
    if (found == comps_.end ()) return nullptr;
    std::unique_ptr<Compart> taken = std::move (*found);
    comps_.erase (found);
    for (const auto& n : nodes_) {
        if (n->compart == &c) n->compart = nullptr;
    }
    taken->network = nullptr;
    taken->parent = nullptr;
    mark_layout_dirty ();
    return taken;
}

GraphBase* Network::find_by_id (int wanted) const {
    for (const auto& n : nodes_) {
        if (n->id == wanted) return n.get ();
        for (const auto& a : n->arcs_) {
            if (a->id == wanted) return a.get ();
        }
        if (const Network* inner = n->nested ()) {
            if (GraphBase* found = inner->find_by_id (wanted)) return found;
        }
    }
    for (const auto& c : comps_) {
        if (c->id == wanted) return c.get ();
    }
    return nullptr;
}

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
    const auto found = std::find_if (nodes_.begin (), nodes_.end (), [wanted] (const auto& n) {
        return n->label.get () == wanted;
    });
    return found == nodes_.end () ? nullptr : found->get ();
}

std::vector<Arque*> Network::all_arcs () const {
    std::vector<Arque*> all;
    for (const auto& n : nodes_) {
        for (const auto& a : n->arcs_) all.push_back (a.get ());
    }
    return all;
}

int Network::count_arcs () const {
    int count = 0;
    for (const auto& n : nodes_) count += n->nb_arcs ();
    return count;
}

void Network::renew_places () const {
    if (places_good_) return;
    for (std::size_t i = 0; i < nodes_.size (); ++i) nodes_[i]->place_ = i;
    places_good_ = true;
}

std::size_t Network::place_of (const Node& n) const {
    if (n.network != this) return nodes_.size ();
    // A node never stands behind the place it once had but after additions, which keep the rest.
    if (n.place_ < nodes_.size () && nodes_[n.place_].get () == &n) return n.place_;
    renew_places ();
    return n.place_;
}

std::vector<Arque*> Network::arcs_to (const GraphBase& g) const {
    std::vector<Arque*> found;
    for (Arque* a : g.incoming ()) {
        if (a->owner_network () == this) found.push_back (a);
    }
    if (found.size () < 2) return found;
    struct Placed {
        std::size_t node;
        std::size_t arc;
        Arque* a;
    };
    std::vector<Placed> placed;
    placed.reserve (found.size ());
    // The places of a source's arcs are counted once for all of them.
    std::unordered_map<const Node*, bool> seen;
    for (const Arque* a : found) {
        const Node* source = a->source ();
        if (!seen.emplace (source, true).second) continue;
        const std::size_t node = place_of (*source);
        for (std::size_t i = 0; i < source->arcs_.size (); ++i) {
            if (source->arcs_[i]->dest () == &g)
                placed.push_back ({node, i, source->arcs_[i].get ()});
        }
    }
    std::sort (placed.begin (), placed.end (), [] (const Placed& a, const Placed& b) {
        return a.node != b.node ? a.node < b.node : a.arc < b.arc;
    });
    std::transform (placed.begin (), placed.end (), found.begin (),
                    [] (const Placed& p) { return p.a; });
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

void Network::clear_marks () {
    for (const auto& n : nodes_) {
        n->mark = false;
        for (const auto& a : n->arcs_) a->mark = false;
    }
}

void Network::clear_multi_conc () {
    for (const auto& n : nodes_) n->multi_conc = false;
}

void Network::translate (float dx, float dy) {
    for (const auto& n : nodes_) {
        n->x += dx;
        n->y += dy;
    }
    mark_layout_dirty ();
}

void Network::copy_objects (Network& to, CopyMap& map) const {
    to.x = x;
    to.y = y;
    to.align = align;
    to.color = color;
    to.font = font;
    to.foggy = foggy;
    std::unordered_map<const Compart*, Compart*> comp_map;
    for (const auto& c : comps_) {
        std::unique_ptr<Char> copy = c->clone (&to);
        Compart& added =
            to.add_compart (std::unique_ptr<Compart> (static_cast<Compart*> (copy.release ())));
        comp_map[c.get ()] = &added;
        map[c.get ()] = &added;
    }
    for (const auto& n : nodes_) {
        Node& added = to.add_node (n->clone_objects (&to, map));
        const auto comp = comp_map.find (n->compart);
        added.compart = comp == comp_map.end () ? nullptr : comp->second;
    }
}

void Network::collect_arcs (std::vector<const Arque*>& arcs) const {
    for (const auto& n : nodes_) {
        for (const auto& a : n->arcs_) arcs.push_back (a.get ());
        if (const Network* inner = n->nested ()) inner->collect_arcs (arcs);
    }
}

void Network::copy_arcs (CopyMap& map) const {
    std::vector<const Arque*> arcs;
    collect_arcs (arcs);
    for (const Arque* a : arcs) {
        std::unique_ptr<Char> copy = a->clone (nullptr);
        map[a] = static_cast<Arque*> (copy.get ());
        static_cast<Node*> (map[a->source ()])
            ->add_arc (std::unique_ptr<Arque> (static_cast<Arque*> (copy.release ())));
    }
    std::vector<Arque*> loose; // what they end on was not copied
    for (const Arque* a : arcs) {
        auto* copy = static_cast<Arque*> (map[a]);
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
    other->parent = new_parent;
    return other;
}

std::unique_ptr<Char> Network::clone (Char* new_parent) const { return copy (new_parent); }

float Network::get_width () const {
    float right = 0;
    const auto take = [&right] (float at) { right = std::max (right, at); };
    for (const auto& n : nodes_) {
        take (n->x + n->get_width () / 2);
        for (const auto& a : n->arcs_) {
            if (a->label) take (a->label_pos.x - 2 + a->label->x + a->label->get_width ());
            if (a->residu) take (a->residu_pos.x - 2 + a->residu->x + a->residu->get_width ());
        }
    }
    for (const auto& c : comps_) take (c->x + c->get_width ());
    return right;
}

int Network::get_height () const {
    float bottom = 0;
    const auto take = [&bottom] (float at) { bottom = std::max (bottom, at); };
    for (const auto& n : nodes_) {
        take (n->y + static_cast<float> (n->get_height ()) / 2);
        for (const auto& a : n->arcs_) {
            if (a->label) {
                take (a->label_pos.y - 3 + a->label->y +
                      static_cast<float> (a->label->get_descent ()));
            }
            if (a->residu) {
                take (a->residu_pos.y - 3 + a->residu->y +
                      static_cast<float> (a->residu->get_descent ()));
            }
        }
    }
    for (const auto& c : comps_) take (c->y + static_cast<float> (c->get_height ()));
    return to_pixels (bottom);
}

int Network::get_ascent () const {
    const int whole = get_height ();
    return align == 0 ? whole : align == 2 ? 0 : whole / 2;
}

int Network::get_descent () const {
    const int whole = get_height ();
    return align == 0 ? 0 : align == 2 ? whole : whole / 2;
}

bool Network::equals (const Char& other) const {
    if (other.kind () != CharKind::network) return false;
    const auto& network = static_cast<const Network&> (other);
    return std::equal (nodes_.begin (), nodes_.end (), network.nodes_.begin (),
                       network.nodes_.end (), [] (const auto& a, const auto& b) {
                           return a->label && b->label && a->label->equals (*b->label);
                       });
}

bool Network::append_identity (std::string& identity) const {
    identity += 'N';
    identity += std::to_string (nodes_.size ());
    identity += ';';
    return std::all_of (nodes_.begin (), nodes_.end (), [&identity] (const auto& n) {
        return n->label && n->label->append_identity (identity);
    });
}

} // namespace ostrand::document
