// Which nodes are the same species, and of what class each species is.
#include "document/network.h"

#include <unordered_map>

namespace ostrand::document {
namespace {

/// Nodes of one species, in the order of the walk; the first is the master of the others.
struct Species {
    std::vector<Node*> nodes;
};

/// All nodes by species: those of one shape group whose labels say the same. A node without label,
/// or with a network that holds one, is no species.
class SpeciesList {
  public:
    explicit SpeciesList (const Network& network) { list (network); }
    std::vector<Species> all;
    std::vector<Node*> others; // of no species

  private:
    /// Nodes of a network in a node's label come behind their owner.
    void list (const Network& network) {
        for (const auto& n : network.nodes ()) {
            add (*n);
            if (const Network* const inner = n->nested ()) list (*inner);
        }
    }
    void add (Node& n) {
        Identity identity;
        identity.add (n.group ());
        if (n.label () == nullptr || !n.label ()->add_identity (identity)) {
            others.push_back (&n);
            return;
        }
        // Different labels may have one identity: then each is a species of its own in the chain.
        const auto [first, last] = by_identity_.equal_range (identity.value ());
        for (auto known = first; known != last; ++known) {
            Species& species = all[known->second];
            const Node& master = *species.nodes.front ();
            if (master.group () == n.group () && master.label ()->equals (*n.label ())) {
                species.nodes.push_back (&n);
                return;
            }
        }
        by_identity_.emplace (identity.value (), all.size ());
        all.push_back ({{&n}});
    }

    std::unordered_multimap<std::uint64_t, std::size_t> by_identity_;
};

/// The first of a species is nobody's clone, the others are its.
bool set_masters (const SpeciesList& list) {
    bool changed = false;
    for (Node* const n : list.others) changed = n->set_master (nullptr) || changed;
    for (const Species& species : list.all) {
        Node* const master = species.nodes.front ();
        changed = master->set_master (nullptr) || changed;
        for (std::size_t i = 1; i < species.nodes.size (); ++i) {
            changed = species.nodes[i]->set_master (master) || changed;
        }
    }
    return changed;
}

} // namespace

bool Network::find_masters () { return set_masters (SpeciesList (*this)); }

bool Network::update_shared_nodes () {
    const SpeciesList list (*this);
    bool changed = set_masters (list);
    const auto set_shared = [&changed] (Node& n, bool on) {
        const unsigned plain = n.type () & ~node::shared_bit;
        changed = n.set_type (on ? plain | node::shared_bit : plain) || changed;
    };
    for (Node* const n : list.others) set_shared (*n, false);
    for (const Species& species : list.all) {
        const bool shared = species.nodes.size () > 1;
        bool displayed = false;
        for (Node* const n : species.nodes) {
            set_shared (*n, shared);
            displayed = displayed || n->calyx_display ();
        }
        if (!shared || !displayed) continue;
        for (Node* const n : species.nodes) changed = n->set_calyx_display (true) || changed;
    }
    return changed;
}

int Network::mark_same_species (Node& n) {
    const bool was_marked = n.highlight != no_highlight;
    for (const auto& other : nodes_) other->highlight = no_highlight;
    if (was_marked) return -1;
    if (n.label () == nullptr) return 0;
    int count = 0;
    for (const auto& other : nodes_) {
        if (other->group () != n.group () || other->label () == nullptr ||
            !n.label ()->equals (*other->label ())) {
            continue;
        }
        other->highlight = find_highlight;
        ++count;
    }
    return count;
}

namespace {

using species_class::consumed;
using species_class::produced;
using Classes = std::unordered_map<const Node*, unsigned>;

bool is_protein (const Node& n) {
    return n.type () == node::protein || n.type () == node::shared_protein;
}
bool is_molecule (const Node& n) {
    return n.type () == node::molecule || n.type () == node::shared_molecule;
}

/// Adds a class to a node and, when it is a clone, to its master.
void add_class (Classes& classes, const Node& n, unsigned what) {
    classes[&n] |= what;
    if (n.master () != nullptr) classes[n.master ()] |= what;
}

void classify_protein (Classes& classes, const Node& n) {
    for (const auto& a : n.arcs ()) {
        const Arque* const reaction = a->dest_arc ();
        if (a->type () != arc::catalysis || reaction == nullptr) continue;
        if (reaction->type () == arc::reversible_reaction) add_class (classes, n, consumed);
        if (reaction->type () == arc::reaction) add_class (classes, n, produced);
    }
}

void classify_molecule (Classes& classes, const Node& n) {
    for (const auto& a : n.arcs ()) {
        const Node* const dest = a->dest_node ();
        if (is_reaction (a->type ()) && dest != nullptr) add_class (classes, *dest, produced);
        if (is_reaction (a->type ()) || is_substrate_link (a->type ())) {
            add_class (classes, n, consumed);
        } else if (is_product_link (a->type ())) {
            add_class (classes, n, produced);
        }
    }
}

} // namespace

std::unordered_map<const Node*, unsigned> Network::classify_species () {
    update_shared_nodes ();
    Classes classes;
    for (const auto& n : nodes_) classes[n.get ()] = 0;
    for (const auto& n : nodes_) {
        if (is_protein (*n)) classify_protein (classes, *n);
        if (is_molecule (*n)) classify_molecule (classes, *n);
    }
    for (const auto& n : nodes_) {
        if (n->master () != nullptr) classes[n.get ()] = classes[n->master ()];
    }
    return classes;
}

bool Network::color_species (unsigned input, unsigned output, unsigned internal) {
    bool changed = update_shared_nodes ();
    const Classes classes = classify_species ();
    for (const auto& n : nodes_) {
        const unsigned species = classes.at (n.get ());
        if (!is_molecule (*n) || species == 0) continue;
        const unsigned fill = species == consumed ? input : species == produced ? output : internal;
        changed = n->set_color (fill) || changed;
    }
    return changed;
}

} // namespace ostrand::document
