// Makes nodes, arcs and their texts.
#include "sbml_in/build.h"

#include "arrange/mains.h"
#include "base/text.h"
#include "document/markup.h"
#include "names/name_markup.h"
#include "sbml_in/extract.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace ostrand::sbml_in {
namespace {

using document::Arque;
using document::Compart;
using document::Line;
using document::Network;
using document::Node;

/// Fills: those of the import of model texts.
constexpr unsigned species_fill = 0xffff0000;
constexpr unsigned enzyme_fill = 247;
constexpr unsigned held_fill = 0xbf91bf00; // what never runs out
constexpr unsigned mark_fill = 3;

/// Fonts and colours of kinetic labels and stoichiometries.
constexpr unsigned kinetic_font = 66;
constexpr unsigned kinetic_color = 4;
constexpr unsigned stoichiometry_font = 74;
constexpr unsigned stoichiometry_color = 72;

/// The plain grid, before anybody arranges it.
constexpr float grid_step_x = 130;
constexpr float grid_step_y = 70;
constexpr float grid_gap = 30; // between boxes

std::unique_ptr<Line> text_line (const std::string& text, unsigned font, unsigned color) {
    return document::line_from_markup (names::name_markup (text), font, color);
}

/// Model texts know no plus sign in an exponent: 1e06, not 1e+06.
std::string concentration_text (double um) {
    std::string number = format_g (um);
    std::erase (number, '+');
    return number + " uM";
}

/// "0.1 /uM/s": a constant of mass action; the unit tells its order.
std::string rate_text (double k, int order) {
    const std::string unit = order == 0   ? "uM/s"
                             : order == 1 ? "/s"
                             : order == 2 ? "/uM/s"
                                          : "/uM" + std::to_string (order - 1) + "/s";
    return format_g (k) + ' ' + unit;
}

unsigned arc_type (Role role) {
    switch (role) {
    case Role::catalysis: return document::arc::catalysis;
    case Role::inhibition: return document::arc::inhibition;
    case Role::activation: return document::arc::activation;
    case Role::necessary_activation: return document::arc::necessary_activation;
    case Role::influence: return document::arc::influence;
    }
    return document::arc::catalysis;
}

class Builder {
  public:
    explicit Builder (const Model& model) : model_ (model) {}
    std::unique_ptr<Network> run ();

  private:
    Node& make_node (int species);
    Node& node_for (int species, int reaction);
    Node& mark (int compartment);
    void find_mains ();
    void reaction (const ModelReaction& r, int index);
    Arque& link (Node& from, Arque& to, unsigned type, const Reference& reference);
    void stoichiometry (Arque& arc, bool at_source, const Reference& reference);
    void kinetics (const ModelReaction& r, Arque& main, const std::vector<Arque*>& substrates);
    void display_what_changes ();
    void compartments ();
    void places ();
    document::Point rows (int compartment, float left, float top);
    void grid ();
    int compartment_of (const std::vector<Reference>& side) const;

    const Model& model_;
    std::unique_ptr<Network> network_ = std::make_unique<Network> ();
    std::vector<std::vector<Node*>> nodes_; // of each species
    std::vector<Node*> glyph_node_;
    std::map<std::pair<int, int>, std::vector<int>> uses_; // reaction, species -> glyphs
    std::vector<bool> is_enzyme_;
    std::vector<arrange::MainReactants> mains_;  // of each reaction
    std::vector<std::pair<Node*, Node*>> marks_; // and the node beside
    std::map<int, std::vector<Node*>> inside_;   // compartment, -1 for none -> its nodes
    std::map<int, Compart*> boxes_;
};

Node& Builder::make_node (int species) {
    const ModelSpecies& s = model_.species[static_cast<std::size_t> (species)];
    const bool is_enzyme = is_enzyme_[static_cast<std::size_t> (species)];
    unsigned type = document::node::molecule;
    switch (s.sort) {
    case SpeciesSort::gene: type = document::node::gene; break;
    case SpeciesSort::protein: type = document::node::protein; break;
    case SpeciesSort::receptor: type = document::node::receptor; break;
    case SpeciesSort::molecule:
        if (is_enzyme) type = document::node::protein;
        break;
    }
    const unsigned fill = s.held ? held_fill : is_enzyme ? enzyme_fill : species_fill;
    Node& n = network_->add_node (std::make_unique<Node> (0.F, 0.F, type, fill));
    inside_[s.compartment].push_back (&n);
    n.take_label (document::line_from_markup (s.text, document::start_font, 0));
    if (s.concentration && *s.concentration > 0) {
        n.set_user_data (concentration_text (*s.concentration));
    }
    nodes_[static_cast<std::size_t> (species)].push_back (&n);
    return n;
}

/// The node of a species in a reaction: the glyph that the file names, else its first.
Node& Builder::node_for (int species, int reaction) {
    const auto use = uses_.find ({reaction, species});
    if (use != uses_.end () && !use->second.empty ()) {
        return *glyph_node_[static_cast<std::size_t> (use->second.front ())];
    }
    return *nodes_[static_cast<std::size_t> (species)].front ();
}

/// A source or a sink: a small mark without a name.
Node& Builder::mark (int compartment) {
    Node& n =
        network_->add_node (std::make_unique<Node> (0.F, 0.F, document::node::molecule, mark_fill));
    inside_[compartment].push_back (&n);
    return n;
}

void Builder::stoichiometry (Arque& arc, bool at_source, const Reference& reference) {
    std::string text = reference.stoichiometry_text;
    if (text.empty () && reference.stoichiometry != 1) text = format_g (reference.stoichiometry, 9);
    if (text.empty ()) return;
    auto line = text_line (text, stoichiometry_font, stoichiometry_color);
    if (at_source) {
        arc.take_stoech_src (std::move (line));
    } else {
        arc.take_stoech_dest (std::move (line));
    }
}

Arque& Builder::link (Node& from, Arque& to, unsigned type, const Reference& reference) {
    Arque& arc = *from.connect (to, type);
    stoichiometry (arc, true, reference);
    return arc;
}

void Builder::kinetics (const ModelReaction& r, Arque& main,
                        const std::vector<Arque*>& substrates) {
    const auto text = [] (const std::string& letters) {
        return text_line (letters, kinetic_font, kinetic_color);
    };
    const Law& law = r.law;
    if (law.kind == LawKind::mass_action) {
        main.take_label (text (rate_text (law.forward, law.forward_order)));
        if (law.reverse) main.take_residu (text (rate_text (*law.reverse, law.reverse_order)));
    } else if (law.kind == LawKind::michaelis_menten) {
        for (std::size_t i = 0; i < law.km.size () && i < substrates.size (); ++i) {
            substrates[i]->take_label (text (concentration_text (law.km[i])));
        }
        main.take_residu (text (law.kcat ? rate_text (*law.kcat, 1) : rate_text (*law.vmax, 0)));
    }
}

/// Which substrate and which product the arc of each reaction leads between. A file with a drawing
/// keeps its order, as we write the main ones first; elsewhere the path of the matter is followed and
/// cofactors stand beside it.
void Builder::find_mains () {
    arrange::Graph graph;
    for (const ModelSpecies& s : model_.species) {
        graph.species.emplace_back ().name = s.name.empty () ? s.id : s.name;
    }
    for (const ModelReaction& r : model_.reactions) {
        arrange::Reaction& reaction = graph.reactions.emplace_back ();
        for (const Reference& one : r.reactants) reaction.substrates.push_back (one.species);
        for (const Reference& one : r.products) reaction.products.push_back (one.species);
    }
    mains_ =
        model_.places.empty () ? arrange::main_reactants (graph) : arrange::first_reactants (graph);
}

void Builder::reaction (const ModelReaction& r, int index) {
    const auto [main_substrate, main_product] = mains_[static_cast<std::size_t> (index)];
    const auto main_of = [] (const std::vector<Reference>& side, int i) -> const Reference& {
        return side[static_cast<std::size_t> (i)];
    };
    Node& from = r.reactants.empty ()
                     ? mark (compartment_of (r.products))
                     : node_for (main_of (r.reactants, main_substrate).species, index);
    Node* to = nullptr;
    if (r.products.empty ()) {
        to = &mark (compartment_of (r.reactants));
    } else {
        const int species = main_of (r.products, main_product).species;
        to = &node_for (species, index);
        if (to == &from) to = &make_node (species); // a copy: an arc needs two ends
    }
    if (r.reactants.empty ()) marks_.emplace_back (&from, to);
    if (r.products.empty ()) marks_.emplace_back (to, &from);
    Arque& main = *from.connect (*to, r.reversible ? document::arc::reversible_reaction
                                                   : document::arc::reaction);
    std::vector<Arque*> substrates; // in the order of the reactants
    if (!r.reactants.empty ()) stoichiometry (main, true, main_of (r.reactants, main_substrate));
    if (!r.products.empty ()) stoichiometry (main, false, main_of (r.products, main_product));
    for (std::size_t i = 0; i < r.reactants.size (); ++i) {
        if (static_cast<int> (i) == main_substrate) {
            substrates.push_back (&main);
            continue;
        }
        substrates.push_back (
            &link (node_for (r.reactants[i].species, index), main,
                   r.reversible ? document::arc::reversible_substrate : document::arc::substrate,
                   r.reactants[i]));
    }
    for (std::size_t i = 0; i < r.products.size (); ++i) {
        if (static_cast<int> (i) == main_product) continue;
        link (node_for (r.products[i].species, index), main,
              r.reversible ? document::arc::reversible_product : document::arc::product,
              r.products[i]);
    }
    for (const ModelModifier& m : r.modifiers) {
        Arque& arc = *node_for (m.species, index).connect (main, 0);
        arc.set_kind (static_cast<int> (arc_type (m.role)));
        if (m.constant) {
            arc.take_label (
                text_line (concentration_text (*m.constant), kinetic_font, kinetic_color));
        }
    }
    kinetics (r, main, substrates);
}

/// A simulation shows what reactions of known laws consume and make, so that it shows something.
void Builder::display_what_changes () {
    for (const ModelReaction& r : model_.reactions) {
        if (r.law.kind == LawKind::none || r.law.kind == LawKind::other) continue;
        for (const auto* side : {&r.reactants, &r.products}) {
            for (const Reference& one : *side) {
                const auto species = static_cast<std::size_t> (one.species);
                if (model_.species[species].held) continue;
                for (Node* const n : nodes_[species]) n->set_calyx_display (true);
            }
        }
    }
}

/// A box for each compartment that holds a species; the file's own where it has them. Boxes stand
/// side by side also where the model has one inside the other: of two boxes around a node it
/// belongs to the larger, so an inner one would lose its species.
void Builder::compartments () {
    std::vector<bool> holds (model_.compartments.size (), false);
    for (const ModelSpecies& s : model_.species) {
        if (s.compartment >= 0) holds[static_cast<std::size_t> (s.compartment)] = true;
    }
    // A box around everything would only take room.
    if (std::count (holds.begin (), holds.end (), true) < 2 &&
        model_.places.compartments.empty ()) {
        return;
    }
    std::map<int, Box> told (model_.places.compartments.begin (),
                             model_.places.compartments.end ());
    for (std::size_t i = 0; i < model_.compartments.size (); ++i) {
        if (!holds[i]) continue;
        const ModelCompartment& c = model_.compartments[i];
        Box box{0, 0, 80, 40};
        const auto at = told.find (static_cast<int> (i));
        if (at != told.end ()) box = at->second;
        auto compart = std::make_unique<document::Compart> (
            document::shape::rectangle, static_cast<float> (box.x), static_cast<float> (box.y),
            static_cast<float> (box.width), static_cast<float> (box.height));
        compart->set_own_color (4);
        compart->take_label (document::line_from_markup (
            label_markup (c.name.empty () ? c.id : c.name), document::start_font, 0));
        boxes_[static_cast<int> (i)] = &network_->add_compart (std::move (compart));
    }
}

int Builder::compartment_of (const std::vector<Reference>& side) const {
    return side.empty ()
               ? -1
               : model_.species[static_cast<std::size_t> (side.front ().species)].compartment;
}

/// Puts what stands in a compartment on rows; gives its right and bottom edge.
document::Point Builder::rows (int compartment, float left, float top) {
    const std::vector<Node*>& nodes = inside_[compartment];
    const int columns = std::max (
        1, static_cast<int> (std::ceil (std::sqrt (static_cast<double> (nodes.size ()) / 2))));
    float bottom = top;
    for (std::size_t i = 0; i < nodes.size (); ++i) {
        const int column = static_cast<int> (i) % columns;
        const int row = static_cast<int> (i) / columns;
        nodes[i]->set_position (left + grid_step_x * (static_cast<float> (column) + 0.5F),
                                top + grid_step_y * (static_cast<float> (row) + 0.5F));
        bottom = top + grid_step_y * static_cast<float> (row + 1);
    }
    return {left + grid_step_x * static_cast<float> (columns), bottom};
}

/// What is in no compartment, and below it the boxes side by side.
void Builder::grid () {
    for (auto& [c, nodes] : inside_) {
        if (c < 0 || boxes_.contains (c)) continue;
        std::vector<Node*>& outside = inside_[-1];
        outside.insert (outside.end (), nodes.begin (), nodes.end ());
        nodes.clear ();
    }
    constexpr float margin = 10;
    const float top = rows (-1, margin, margin).y + grid_gap;
    float x = margin;
    for (const auto& [c, box] : boxes_) {
        const document::Point end = rows (c, x + grid_gap, top + grid_gap);
        box->set_position (x, top);
        box->set_size (end.x + grid_gap - x, end.y + grid_gap - top);
        x = end.x + 2 * grid_gap;
    }
}

void Builder::places () {
    for (std::size_t g = 0; g < model_.places.glyphs.size (); ++g) {
        const Box& box = model_.places.glyphs[g].box;
        glyph_node_[g]->set_position (static_cast<float> (box.x + box.width / 2),
                                      static_cast<float> (box.y + box.height / 2));
    }
}

std::unique_ptr<Network> Builder::run () {
    nodes_.resize (model_.species.size ());
    is_enzyme_.resize (model_.species.size (), false);
    for (const ModelReaction& r : model_.reactions) {
        for (const ModelModifier& m : r.modifiers) {
            if (m.role == Role::catalysis) is_enzyme_[static_cast<std::size_t> (m.species)] = true;
        }
    }
    for (const ModelReaction& r : model_.reactions) {
        for (const auto* side : {&r.reactants, &r.products}) {
            for (const Reference& one : *side) {
                is_enzyme_[static_cast<std::size_t> (one.species)] = false;
            }
        }
    }
    for (const Glyph& g : model_.places.glyphs) glyph_node_.push_back (&make_node (g.species));
    for (const Places::Use& use : model_.places.uses) {
        uses_[{use.reaction, use.species}].push_back (use.glyph);
    }
    for (std::size_t i = 0; i < model_.species.size (); ++i) {
        if (nodes_[i].empty ()) make_node (static_cast<int> (i));
    }
    compartments ();
    find_mains ();
    for (std::size_t i = 0; i < model_.reactions.size (); ++i) {
        reaction (model_.reactions[i], static_cast<int> (i));
    }
    display_what_changes ();
    if (model_.places.compartments.empty ()) grid ();
    places ();
    if (!model_.places.empty ()) {
        std::map<Node*, int> beside;
        for (const auto& [m, other] : marks_) {
            const int k = beside[other]++;
            m->set_position (other->x () + 45.0F * static_cast<float> (1 - k % 3),
                             other->y () + 60.0F * (k % 2 == 0 ? 1.0F : -1.0F));
        }
    }
    return std::move (network_);
}

} // namespace

std::unique_ptr<Network> build_network (const Model& model) { return Builder (model).run (); }

} // namespace ostrand::sbml_in
