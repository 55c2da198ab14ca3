// A network as a graph for the arrangement, and the answer as places and copies.
#include "tidy/tidy.h"

#include "arrange/arrange.h"
#include "tidy/labels.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <unordered_map>

namespace ostrand::tidy {
namespace {

using document::Arque;
using document::Compart;
using document::Network;
using document::Node;

std::size_t at (int i) { return static_cast<std::size_t> (i); }

/// What a text of an arc needs beside it.
arrange::Size size_of (const document::Char* text) {
    if (text == nullptr) return {};
    return {text->get_width (), static_cast<double> (text->get_height ())};
}

arrange::Size together (arrange::Size a, arrange::Size b) {
    return {std::max (a.width, b.width), a.height + b.height};
}

arrange::SpeciesKind kind_of (const Node& n) {
    switch (n.group ()) {
    case document::node::gene_group: return arrange::SpeciesKind::gene;
    case document::node::protein_group: return arrange::SpeciesKind::protein;
    case document::node::receptor_group: return arrange::SpeciesKind::receptor;
    case document::node::molecule_group: return arrange::SpeciesKind::molecule;
    default: return arrange::SpeciesKind::other;
    }
}

arrange::ModifierRole role_of (unsigned type) {
    switch (type) {
    case document::arc::inhibition: return arrange::ModifierRole::inhibition;
    case document::arc::activation: return arrange::ModifierRole::activation;
    case document::arc::necessary_activation: return arrange::ModifierRole::necessary_activation;
    case document::arc::influence: return arrange::ModifierRole::influence;
    default: return arrange::ModifierRole::catalysis;
    }
}

class Arranger {
  public:
    explicit Arranger (Network& network) : network_ (network) {}

    void run (Care care) {
        network_.update_shared_nodes ();
        network_.layout ();
        network_.check_compartments ();
        list_compartments ();
        list_species ();
        list_reactions ();
        sort_reactions ();
        // The search's work grows a little faster than the network.
        const double most = care == Care::full ? careful_reactions : quick_reactions;
        const double share = most / std::max (most, static_cast<double> (arcs_.size ()));
        arrange::Options options;
        options.effort = care == Care::full ? share : share * share;
        apply (arrange::arrange (graph_, options));
    }

    /// A part: each node counts by itself, even where several are one species.
    bool run_part (const std::vector<Node*>& chosen) {
        network_.layout ();
        list_compartments ();
        list_nodes ();
        list_reactions ();
        sort_reactions ();
        arrange::Present present;
        present.chosen.assign (nodes_.size (), 0);
        for (const Node* n : chosen) {
            if (const auto found = species_of_.find (n); found != species_of_.end ())
                present.chosen[at (found->second)] = 1;
        }
        for (const auto& list : nodes_)
            present.places.push_back ({list.front ()->x (), list.front ()->y ()});
        for (const Compart* c : comps_)
            present.boxes.push_back (
                {c->x (), c->y (), c->x () + c->width (), c->y () + c->height ()});
        const std::vector<arrange::Point> places = arrange::arrange_part (graph_, present);
        bool moved = false;
        for (std::size_t n = 0; n < places.size (); ++n) {
            if (places[n] == present.places[n]) continue;
            nodes_[n].front ()->set_position (static_cast<float> (places[n].x),
                                              static_cast<float> (places[n].y));
            moved = true;
        }
        return moved;
    }

  private:
    /// Networks of more reactions than these get less work for each.
    static constexpr double careful_reactions = 800;
    static constexpr double quick_reactions = 300;

    struct ReactionArcs {
        std::vector<Arque*> substrates; // the main arc first
        std::vector<Arque*> products;   // likewise
        std::vector<Arque*> modifiers;
    };

    void list_compartments ();
    void list_species ();
    void list_nodes ();
    void list_reactions ();
    void sort_reactions ();
    void add_reaction (Arque& main);
    int innermost_around (const Node& n) const;
    bool is_mark (const Node& n) const;
    void apply (const arrange::Layout& layout);
    Node& copy_of (Node& n);
    void set_source (Arque& arc, Node& to);
    void place_boxes (const arrange::Layout& layout);

    Network& network_;
    arrange::Graph graph_;
    std::unordered_map<const Node*, int> species_of_;
    std::vector<std::vector<Node*>> nodes_; // of each species
    std::vector<ReactionArcs> arcs_;
    std::vector<Compart*> comps_;
    std::map<std::pair<int, int>, Node*> mark_of_; // reaction, 0 at its start or 1 at its end
};

void Arranger::list_compartments () {
    for (const auto& c : network_.comps ()) comps_.push_back (c.get ());
    for (const Compart* c : comps_) {
        arrange::Compartment out;
        out.label = size_of (c->label ());
        out.round = c->shape () != document::shape::rectangle;
        // The smallest one around it.
        double smallest = 0;
        for (std::size_t i = 0; i < comps_.size (); ++i) {
            const Compart& other = *comps_[i];
            if (&other == c || other.area () <= c->area ()) continue;
            const bool holds =
                other.contains (c->x (), c->y ()) &&
                other.contains (c->x () + c->width () - 1, c->y () + c->height () - 1);
            if (!holds || (out.parent >= 0 && other.area () >= smallest)) continue;
            out.parent = static_cast<int> (i);
            smallest = other.area ();
        }
        graph_.compartments.push_back (out);
    }
}

/// The smallest compartment that a node stands in; -1 for none.
int Arranger::innermost_around (const Node& n) const {
    int found = -1;
    for (std::size_t i = 0; i < comps_.size (); ++i) {
        if (!comps_[i]->contains (n.x (), n.y ())) continue;
        if (found < 0 || comps_[i]->area () < comps_[at (found)]->area ()) {
            found = static_cast<int> (i);
        }
    }
    return found;
}

/// A node without a label at one end of one reaction: a source or a sink.
bool Arranger::is_mark (const Node& n) const {
    if (n.label () != nullptr || n.arcs ().size () + n.incoming ().size () != 1) return false;
    const Arque* arc = n.arcs ().empty () ? n.incoming ().front () : n.arcs ().front ().get ();
    const Node* other = arc->source () == &n ? arc->dest_node () : arc->source ();
    return document::is_reaction (arc->type ()) && other != nullptr && other->label () != nullptr;
}

void Arranger::list_species () {
    for (const auto& n : network_.nodes ()) {
        if (is_mark (*n)) continue;
        Node* master = n->master () != nullptr ? n->master () : n.get ();
        const int compartment = innermost_around (*master);
        const auto [found, is_new] =
            species_of_.try_emplace (master, static_cast<int> (nodes_.size ()));
        if (is_new) {
            nodes_.emplace_back ();
            arrange::Species s;
            s.name = master->name ();
            s.kind = kind_of (*master);
            s.compartment = compartment;
            graph_.species.push_back (std::move (s));
        }
        species_of_[n.get ()] = found->second;
        // Copies may be written in other letters.
        arrange::Species& s = graph_.species[at (found->second)];
        for (const bool shared : {false, true}) {
            arrange::Size& size = shared ? s.shared_size : s.size;
            size.width = std::max<double> (size.width, n->get_width ());
            size.height = std::max<double> (size.height, n->height_as (shared));
        }
        nodes_[at (found->second)].push_back (n.get ());
    }
}

void Arranger::add_reaction (Arque& main) {
    const int index = static_cast<int> (arcs_.size ());
    arrange::Reaction r;
    ReactionArcs arcs;
    const auto from = species_of_.find (main.source ());
    const auto to = species_of_.find (main.dest_node ());
    if (from != species_of_.end ()) {
        r.substrates.push_back (from->second);
        arcs.substrates.push_back (&main);
    } else {
        mark_of_[{index, 0}] = main.source ();
    }
    if (to != species_of_.end ()) {
        r.products.push_back (to->second);
        arcs.products.push_back (&main);
    } else {
        mark_of_[{index, 1}] = main.dest_node ();
    }
    std::vector<Arque*> links = network_.arcs_to (main);
    const auto place = [this] (const Arque* a) {
        const auto s = species_of_.find (a->source ());
        return std::pair (s == species_of_.end () ? -1 : s->second, a->type ());
    };
    std::stable_sort (links.begin (), links.end (),
                      [&] (const Arque* a, const Arque* b) { return place (a) < place (b); });
    for (Arque* a : links) {
        const auto s = species_of_.find (a->source ());
        if (s == species_of_.end ()) continue;
        // Without a main reactant a side has no further ones: such a link hangs on as a modifier.
        if (document::is_substrate_link (a->type ()) && !r.substrates.empty ()) {
            r.substrates.push_back (s->second);
            arcs.substrates.push_back (a);
        } else if (document::is_product_link (a->type ()) && !r.products.empty ()) {
            r.products.push_back (s->second);
            arcs.products.push_back (a);
        } else {
            r.modifiers.push_back ({s->second, role_of (a->type ())});
            arcs.modifiers.push_back (a);
        }
    }
    r.reversible = document::is_reversible (main.type ());
    r.start_label = together (size_of (main.label ()), size_of (main.stoech_src ()));
    r.end_label = together (size_of (main.residu ()), size_of (main.stoech_dest ()));
    graph_.reactions.push_back (std::move (r));
    arcs_.push_back (std::move (arcs));
}

/// Every arc from node to node counts as a reaction: it wants its ends near each other.
void Arranger::list_reactions () {
    for (Arque* a : network_.all_arcs ()) {
        if (a->dest_node () != nullptr && a->dest_node ()->network () == &network_) {
            add_reaction (*a);
        }
    }
}

void Arranger::list_nodes () {
    for (const auto& n : network_.nodes ()) {
        arrange::Species s;
        s.name = n->name ();
        s.size = {n->get_width (), static_cast<double> (n->get_height ())};
        s.compartment = innermost_around (*n);
        species_of_[n.get ()] = static_cast<int> (nodes_.size ());
        nodes_.push_back ({n.get ()});
        graph_.species.push_back (std::move (s));
    }
}

/// Arcs stand with their nodes, so what was arranged, with copies, has them in another order than
/// before. By what they link they come in the same one.
void Arranger::sort_reactions () {
    const auto key = [this] (std::size_t r) {
        const arrange::Reaction& reaction = graph_.reactions[r];
        std::vector<int> modifiers;
        for (const arrange::Modifier& m : reaction.modifiers) modifiers.push_back (m.species);
        return std::make_tuple (reaction.substrates, reaction.products, std::move (modifiers),
                                reaction.reversible, reaction.start_label.width,
                                reaction.end_label.width);
    };
    using Key = decltype (key (0));
    std::vector<std::pair<Key, std::size_t>> order;
    for (std::size_t r = 0; r < arcs_.size (); ++r) order.emplace_back (key (r), r);
    std::stable_sort (order.begin (), order.end (),
                      [] (const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<arrange::Reaction> reactions;
    std::vector<ReactionArcs> arcs;
    std::map<std::pair<int, int>, Node*> marks;
    for (const auto& [_, from] : order) {
        const int to = static_cast<int> (arcs.size ());
        for (const int end : {0, 1}) {
            const auto mark = mark_of_.find ({static_cast<int> (from), end});
            if (mark != mark_of_.end ()) marks[{to, end}] = mark->second;
        }
        reactions.push_back (std::move (graph_.reactions[from]));
        arcs.push_back (std::move (arcs_[from]));
    }
    graph_.reactions = std::move (reactions);
    arcs_ = std::move (arcs);
    mark_of_ = std::move (marks);
}

Node& Arranger::copy_of (Node& n) {
    std::unique_ptr<document::Char> copy = n.clone (&network_);
    return network_.add_node (std::unique_ptr<Node> (static_cast<Node*> (copy.release ())));
}

void Arranger::set_source (Arque& arc, Node& to) {
    Node* from = arc.source ();
    if (from == &to) return;
    if (std::unique_ptr<Arque> taken = from->take_arc (arc)) to.add_arc (std::move (taken));
}

void Arranger::place_boxes (const arrange::Layout& layout) {
    for (std::size_t c = 0; c < comps_.size (); ++c) {
        const arrange::Box& box = layout.compartments[c];
        if (box.width () <= 0) continue;
        comps_[c]->set_position (static_cast<float> (box.left), static_cast<float> (box.top));
        comps_[c]->set_size (static_cast<float> (box.width ()), static_cast<float> (box.height ()));
    }
    // A box that holds nothing goes below the page.
    double x = 10;
    for (std::size_t c = 0; c < comps_.size (); ++c) {
        if (layout.compartments[c].width () > 0) continue;
        comps_[c]->set_position (static_cast<float> (x),
                                 static_cast<float> (layout.page.height + 20));
        x += comps_[c]->width () + 20;
    }
}

void Arranger::apply (const arrange::Layout& layout) {
    // Nodes that are there first, copies where there are not enough.
    std::vector<Node*> node (layout.nodes.size (), nullptr);
    std::vector<std::size_t> used (nodes_.size (), 0);
    std::vector<Node*> first;
    for (const auto& list : nodes_) first.push_back (list.front ());
    for (std::size_t i = 0; i < layout.nodes.size (); ++i) {
        const int s = layout.nodes[i].species;
        if (s < 0) continue;
        std::vector<Node*>& list = nodes_[at (s)];
        std::size_t& next = used[at (s)];
        if (next == list.size ()) list.push_back (&copy_of (*first[at (s)]));
        node[i] = list[next++];
    }
    for (std::size_t r = 0; r < arcs_.size (); ++r) {
        const arrange::ReactionPlace& place = layout.reactions[r];
        const ReactionArcs& arcs = arcs_[r];
        for (int end = 0; end < 2; ++end) {
            const auto mark = mark_of_.find ({static_cast<int> (r), end});
            const std::vector<int>& side = end == 0 ? place.substrates : place.products;
            if (mark != mark_of_.end () && !side.empty () && side.front () >= 0) {
                node[at (side.front ())] = mark->second;
            }
        }
        for (std::size_t i = 0; i < arcs.substrates.size (); ++i) {
            set_source (*arcs.substrates[i], *node[at (place.substrates[i])]);
        }
        for (std::size_t i = 0; i < arcs.products.size (); ++i) {
            Node& wanted = *node[at (place.products[i])];
            if (i == 0) {
                if (arcs.products[0]->dest () != &wanted) arcs.products[0]->set_dest (&wanted);
            } else {
                set_source (*arcs.products[i], wanted);
            }
        }
        for (std::size_t i = 0; i < arcs.modifiers.size (); ++i) {
            set_source (*arcs.modifiers[i], *node[at (place.modifiers[i])]);
        }
    }
    for (std::size_t i = 0; i < node.size (); ++i) {
        if (node[i] == nullptr) continue;
        node[i]->set_position (static_cast<float> (layout.nodes[i].centre.x),
                               static_cast<float> (layout.nodes[i].centre.y));
    }
    for (std::size_t s = 0; s < nodes_.size (); ++s) {
        while (nodes_[s].size () > std::max<std::size_t> (used[s], 1)) {
            Node* spare = nodes_[s].back ();
            nodes_[s].pop_back ();
            // Arcs that are no part of a reaction stay with the species.
            Node& stays = *nodes_[s].front ();
            while (!spare->arcs ().empty ()) set_source (*spare->arcs ().front (), stays);
            while (!spare->incoming ().empty ()) spare->incoming ().front ()->set_dest (&stays);
            spare->destroy ();
        }
    }
    place_boxes (layout);
    network_.update_shared_nodes ();
    network_.check_compartments ();
    network_.layout ();
    if (place_labels (network_)) network_.layout ();
}

} // namespace

void arrange_network (Network& network, Care care) {
    if (network.nodes ().empty ()) return;
    Arranger (network).run (care);
}

bool arrange_nodes (Network& network, const std::vector<Node*>& chosen) {
    return Arranger (network).run_part (chosen);
}

} // namespace ostrand::tidy
