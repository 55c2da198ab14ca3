// Which nodes are the same species, and of what class each species is.
#include "document/network.h"

#include <string>
#include <unordered_map>

namespace ostrand::document {
namespace {

/// All nodes, those of a network in a node's label behind their owner.
void list_nodes (const Network& network, std::vector<Node*>& all) {
    for (const auto& n : network.nodes ()) {
        all.push_back (n.get ());
        if (const Network* inner = n->nested ()) list_nodes (*inner, all);
    }
}

} // namespace

bool Network::update_shared_nodes () {
    std::vector<Node*> all;
    list_nodes (*this, all);
    for (Node* n : all) {
        n->mark = false;
        n->set_master (nullptr);
    }
    // Nodes of one shape group whose labels have one identity are one species; the first of them is
    // the master of the others.
    struct Species {
        Node* first;
        bool displayed; // by one of its nodes
    };
    std::unordered_map<std::string, Species> species;
    std::vector<Species*> of_node (all.size (), nullptr);
    std::string identity;
    for (std::size_t i = 0; i < all.size (); ++i) {
        Node& n = *all[i];
        identity = std::to_string (n.group ()) + ':';
        if (!n.label || !n.label->append_identity (identity)) continue;
        const auto [slot, fresh] = species.try_emplace (identity, Species{&n, n.calyx_display});
        of_node[i] = &slot->second;
        if (fresh) continue;
        n.set_master (slot->second.first);
        n.mark = true;
        slot->second.first->mark = true;
        slot->second.displayed = slot->second.displayed || n.calyx_display;
    }
    bool changed = false;
    for (std::size_t i = 0; i < all.size (); ++i) {
        Node& n = *all[i];
        if (n.mark && of_node[i]->displayed) n.calyx_display = true;
        const unsigned old = n.type;
        n.type = n.mark ? old | node::shared_bit : old & ~node::shared_bit;
        changed = changed || n.type != old;
    }
    if (changed) mark_layout_dirty ();
    return changed;
}

int Network::mark_same_species (Node& n) {
    const bool was_marked = n.highlight != no_highlight;
    for (const auto& other : nodes_) other->highlight = no_highlight;
    if (was_marked) return -1;
    if (!n.label) return 0;
    int count = 0;
    for (const auto& other : nodes_) {
        if (other->group () != n.group () || !other->label || !n.label->equals (*other->label)) {
            continue;
        }
        other->highlight = find_highlight;
        ++count;
    }
    return count;
}

namespace {

bool is_protein (const Node& n) { return n.type == 9 || n.type == 11; }
bool is_molecule (const Node& n) { return n.type == 13 || n.type == 15; }

/// Adds a class to a node and, when it is a clone, to its master.
void add_class (Node& n, unsigned char species_class) {
    n.species_class |= species_class;
    if (n.master () != nullptr) n.master ()->species_class |= species_class;
}

constexpr unsigned char consumed = 1;
constexpr unsigned char produced = 2;

void classify_protein (Node& n) {
    for (const auto& a : n.arcs ()) {
        const Arque* reaction = a->dest_arc ();
        if (a->type != arc::catalysis || reaction == nullptr) continue;
        if (reaction->type == arc::reversible_reaction) add_class (n, 1);
        if (reaction->type == arc::reaction) add_class (n, 2);
    }
}

void classify_molecule (Node& n) {
    for (const auto& a : n.arcs ()) {
        Node* dest = a->dest_node ();
        if (is_reaction (a->type) && dest != nullptr) add_class (*dest, produced);
        if (is_reaction (a->type) || is_substrate_link (a->type)) {
            add_class (n, consumed);
        } else if (is_product_link (a->type)) {
            add_class (n, produced);
        }
    }
}

} // namespace

void Network::classify_species () {
    update_shared_nodes ();
    for (const auto& n : nodes_) n->species_class = 0;
    for (const auto& n : nodes_) {
        if (is_protein (*n)) classify_protein (*n);
        if (is_molecule (*n)) classify_molecule (*n);
    }
    for (const auto& n : nodes_) {
        if (n->master () != nullptr) n->species_class = n->master ()->species_class;
    }
}

void Network::color_species (unsigned input, unsigned output, unsigned internal) {
    classify_species ();
    for (const auto& n : nodes_) {
        if (!is_molecule (*n)) continue;
        switch (n->species_class) {
        case consumed: n->bg_color = input; break;
        case produced: n->bg_color = output; break;
        case consumed | produced: n->bg_color = internal; break;
        default: break;
        }
    }
}

} // namespace ostrand::document
