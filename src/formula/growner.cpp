// Which sets of gates compute a tree?
#include "formula/growner.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace ostrand::formula {
namespace {

using LeafParents = std::unordered_map<std::string_view, const Operator*>;

/// False when two leaves of one name hang on different nodes. Each leaf is reached through a gate
/// that has the name as an input and owns it, and two gates cannot own one species; only the two
/// inputs of one gate can be the same.
bool uses_names_once (const Operator& tree, LeafParents& parents) {
    for (const OperatorPtr& child : tree.children ()) {
        if (child->type () != OperatorType::leaf) {
            if (!uses_names_once (*child, parents)) return false;
        } else if (parents.emplace (child->name (), &tree).first->second != &tree) {
            return false;
        }
    }
    return true;
}

} // namespace

Growner::Growner (const Library& library, std::string output, std::set<std::string> formula_inputs,
                  Patience patience)
    : output_ (std::move (output)), formula_inputs_ (std::move (formula_inputs)),
      patience_ (std::move (patience)), index_ (library, formula_inputs_, patience_.stop),
      asked_at_root_ (index_.askable_count ()), sets_ (index_.species_count ()), reactions_ (1) {
    bridged_from_.resize (index_.askable_count ());
    for (const int gate : index_.of_type (yes_type)) {
        const IndexedGate& yes = index_.gate (gate);
        bridged_from_[static_cast<std::size_t> (yes.input (0))].push_back (yes.output);
        if (yes.input (0) != no_species) continue;
        // A leaf reads an empty first input as the input of its own place.
        for (const int input : yes.inputs) {
            bridged_from_[static_cast<std::size_t> (input)].push_back (yes.output);
        }
    }
    std::vector<int> open{index_.species (output_)};
    while (!open.empty ()) {
        const int species = open.back ();
        open.pop_back ();
        if (species < 0 || asked_at_root_[static_cast<std::size_t> (species)]) continue;
        asked_at_root_[static_cast<std::size_t> (species)] = true;
        for (const int gate : index_.query (species, yes_type)) {
            const IndexedGate& yes = index_.gate (gate);
            open.push_back (yes.input (0));
            if (yes.input (0) == no_species) {
                open.insert (open.end (), yes.inputs.begin (), yes.inputs.end ());
            }
        }
    }
}

TreeUse Growner::tree_use () {
    std::vector<std::size_t> most (operator_type_count);
    for (int type = 0; type < operator_type_count; ++type) {
        for (const int gate : index_.of_type (type)) {
            std::size_t& inputs = most[static_cast<std::size_t> (type)];
            inputs = std::max (inputs, index_.gate (gate).inputs.size ());
        }
    }
    const auto useful = [this] (const OperatorPtr& part) {
        LeafParents parents;
        if (!uses_names_once (*part, parents)) return false;
        const SpeciesBits& wishes = feasible_[static_cast<std::size_t> (shape_of (part))];
        if (std::find (wishes.begin (), wishes.end (), true) != wishes.end ()) return true;
        shape_of_tree_.erase (part);
        return false;
    };
    return {.useful = useful, .most_operands = [most] (OperatorType type) {
                return most[static_cast<std::size_t> (type)];
            }};
}

void Growner::try_variant (const OperatorPtr& tree) {
    if (patience_.stop.stop_requested ()) stopped_ = true;
    if (++variants_ % 64 == 0 && patience_.late && patience_.late ()) stopped_ = true;
    if (stopped_ || !tree->complete ()) return;
    LeafParents parents;
    if (!uses_names_once (*tree, parents)) return;
    const int shape = shape_of (tree);
    const int wanted = index_.species (output_);
    if (wanted < 0) return;
    root_wishes_ = feasible_[static_cast<std::size_t> (shape)];
    bool reachable = false;
    for (std::size_t i = 0; i < root_wishes_.size () && !reachable; ++i) {
        reachable = root_wishes_[i] && asked_at_root_[i];
    }
    if (!reachable) return;
    spread_by_yes (root_wishes_);
    places_.clear ();
    flatten (tree, -1, 0);
    try_node (0, wanted);
}

/// Number of the tree's shape; on first sight its feasible wishes are found.
int Growner::shape_of (const OperatorPtr& tree) {
    const auto known = shape_of_tree_.find (tree);
    if (known != shape_of_tree_.end ()) return known->second;
    std::vector<int> key{static_cast<int> (tree->type ())};
    if (tree->type () == OperatorType::leaf) key.push_back (index_.species (tree->name ()));
    for (const OperatorPtr& child : tree->children ()) key.push_back (shape_of (child));
    const auto [place, fresh] = shapes_.emplace (key, static_cast<int> (feasible_.size ()));
    if (fresh) {
        key.erase (key.begin ());
        feasible_.push_back (feasible_wishes (*tree, key));
    }
    shape_of_tree_.emplace (tree, place->second);
    return place->second;
}

/// Species that a tree below another operator can be asked for with any hope, conflicts apart.
/// shapes  the operands' shapes, or a leaf's species
Growner::SpeciesBits Growner::feasible_wishes (const Operator& tree,
                                               const std::vector<int>& shapes) const {
    SpeciesBits wishes (index_.askable_count ());
    if (tree.type () == OperatorType::leaf) {
        if (shapes[0] < 0) return wishes;
        wishes[static_cast<std::size_t> (shapes[0])] = true;
        spread_by_yes (wishes);
        return wishes;
    }
    for (const int index : index_.of_type (static_cast<int> (tree.type ()))) {
        const IndexedGate& gate = index_.gate (index);
        bool feasible = true;
        for (std::size_t i = 0; i < shapes.size () && feasible; ++i) {
            feasible = feasible_[static_cast<std::size_t> (shapes[i])]
                                [static_cast<std::size_t> (gate.input (i))];
        }
        if (feasible) wishes[static_cast<std::size_t> (gate.output)] = true;
    }
    return wishes;
}

/// Adds all species from which YES gates lead to one that is there.
void Growner::spread_by_yes (SpeciesBits& wishes) const {
    std::vector<int> open;
    for (std::size_t i = 0; i < wishes.size (); ++i) {
        if (wishes[i]) open.push_back (static_cast<int> (i));
    }
    while (!open.empty ()) {
        const auto species = static_cast<std::size_t> (open.back ());
        open.pop_back ();
        for (const int output : bridged_from_[species]) {
            if (wishes[static_cast<std::size_t> (output)]) continue;
            wishes[static_cast<std::size_t> (output)] = true;
            open.push_back (output);
        }
    }
}

void Growner::flatten (const OperatorPtr& tree, int parent, std::size_t position) {
    const auto index = places_.size ();
    Place place;
    place.type = tree->type ();
    place.parent = parent;
    place.position = position;
    if (place.type == OperatorType::leaf) place.species = index_.species (tree->name ());
    place.feasible = &feasible_[static_cast<std::size_t> (shape_of (tree))];
    places_.push_back (std::move (place));
    if (parent >= 0) {
        places_[static_cast<std::size_t> (parent)].children.push_back (static_cast<int> (index));
    }
    for (std::size_t i = 0; i < tree->children ().size (); ++i) {
        flatten (tree->children ()[i], static_cast<int> (index), i);
    }
}

bool Growner::tired () {
    if (patience_.stop.stop_requested ()) stopped_ = true;
    if (!stopped_ && ++steps_ % 1024 == 0 && patience_.late && patience_.late ()) stopped_ = true;
    return stopped_;
}

void Growner::try_node (std::size_t index, int wanted) {
    if (tired ()) return;
    if (index == places_.size ()) {
        complete ();
    } else if (places_[index].type == OperatorType::leaf) {
        try_leaf (index, wanted);
    } else {
        try_operator (index, wanted);
    }
}

void Growner::try_leaf (std::size_t index, int wanted) {
    Place& place = places_[index];
    int source = place.last_gate;
    if (source < 0 && place.parent >= 0) {
        source = places_[static_cast<std::size_t> (place.parent)].last_gate;
    }
    if (source >= 0) {
        if (wanted == no_species) wanted = index_.gate (source).input (place.position);
        if (wanted == place.species) {
            try_node (index + 1, no_species);
            return;
        }
    }
    for (const int gate_index : index_.query (wanted, yes_type)) {
        const IndexedGate& gate = index_.gate (gate_index);
        int next = gate.input (0);
        if (next == no_species) next = gate.input (place.position);
        // A gate that leads back to where it came from would be entered for ever.
        if (next == wanted || !(*place.feasible)[static_cast<std::size_t> (next)]) continue;
        const int outer = place.last_gate;
        if (!enter (index, gate_index, wanted)) continue;
        try_node (index, gate.input (0));
        leave (index, outer);
    }
}

void Growner::try_operator (std::size_t index, int wanted) {
    Place& place = places_[index];
    if (place.parent >= 0) {
        const int above = places_[static_cast<std::size_t> (place.parent)].last_gate;
        wanted = index_.gate (above).input (place.position);
    }
    const int outer = place.last_gate;
    for (const int gate_index : index_.query (wanted, static_cast<int> (place.type))) {
        if (!operands_feasible (place, index_.gate (gate_index))) continue;
        if (!enter (index, gate_index, wanted)) continue;
        try_node (index + 1, no_species);
        leave (index, outer);
    }
    if (place.parent >= 0) return;
    for (const int gate_index : index_.query (wanted, yes_type)) {
        const int next = index_.gate (gate_index).input (0);
        if (next == wanted || !root_wishes_[static_cast<std::size_t> (next)]) continue;
        if (!enter (index, gate_index, wanted)) continue;
        try_node (index, next);
        leave (index, outer);
    }
}

bool Growner::operands_feasible (const Place& place, const IndexedGate& gate) const {
    for (std::size_t i = 0; i < place.children.size (); ++i) {
        const Place& child = places_[static_cast<std::size_t> (place.children[i])];
        if (!(*child.feasible)[static_cast<std::size_t> (gate.input (i))]) return false;
    }
    return true;
}

bool Growner::fits (const GateClaims& claims, int wanted) const {
    return std::none_of (claims.touches.begin (), claims.touches.end (), [&] (const Touch& touch) {
        const std::uint8_t blocked =
            touch.species == wanted ? touch.blocked_if_asked : touch.blocked_by;
        return (sets_[static_cast<std::size_t> (touch.species)] & blocked) != 0;
    });
}

/// Puts a gate on a node; false, with nothing changed, when it does not fit or no new answer can
/// come of it.
bool Growner::enter (std::size_t index, int gate_index, int wanted) {
    const GateClaims& claims = index_.claims (gate_index);
    if (sets_.size () < index_.species_count ()) sets_.resize (index_.species_count ());
    if (!fits (claims, wanted)) return false;
    const std::size_t depth = circuit_.size ();
    if (depth == circuit_bound) {
        too_long_ = true;
        return false;
    }
    if (reactions_.size () < depth + 2) reactions_.resize (depth + 2);
    const std::vector<int>& before = reactions_[depth];
    std::vector<int>& after = reactions_[depth + 1];
    after.clear ();
    std::set_union (before.begin (), before.end (), claims.reactions.begin (),
                    claims.reactions.end (), std::back_inserter (after));
    if (after.size () > before.size () && found_.has_proper_subset (after)) return false;
    undo_marks_.push_back (undo_.size ());
    for (const Touch& touch : claims.touches) {
        std::uint8_t& sets = sets_[static_cast<std::size_t> (touch.species)];
        undo_.push_back ({touch.species, sets});
        sets |= touch.sets;
    }
    circuit_.push_back (gate_index);
    places_[index].last_gate = gate_index;
    return true;
}

void Growner::leave (std::size_t index, int outer_gate) {
    for (std::size_t i = undo_.size (); i-- > undo_marks_.back ();) {
        sets_[static_cast<std::size_t> (undo_[i].species)] = undo_[i].sets;
    }
    undo_.resize (undo_marks_.back ());
    undo_marks_.pop_back ();
    circuit_.pop_back ();
    places_[index].last_gate = outer_gate;
}

void Growner::complete () {
    std::vector<const LibGate*> gates;
    for (const int index : circuit_) {
        const LibGate* gate = index_.gate (index).source;
        if (std::find (gates.begin (), gates.end (), gate) == gates.end ()) gates.push_back (gate);
    }
    found_.add (reactions_[circuit_.size ()], gates);
    if (progress_ != nullptr) progress_->set_results (found_.size ());
    if (limit_ > 0 && found_.size () >= limit_) stopped_ = true;
}

std::vector<Implementation> Growner::implementations () {
    std::vector<Implementation>& all = left_;
    all.clear ();
    for (const MinimalSets::Kept& kept : found_.kept ()) {
        if (patience_.stop.stop_requested ()) return {};
        Implementation one;
        one.gates = kept.gates;
        one.inputs = formula_inputs_;
        one.output = output_;
        for (const LibGate* gate : one.gates) {
            one.forbidden.insert (gate->absent.begin (), gate->absent.end ());
            one.excess.insert (gate->needed.begin (), gate->needed.end ());
            one.reactions.insert (gate->reactions.begin (), gate->reactions.end ());
        }
        for (const LibReaction* reaction : one.reactions) {
            one.reaction_ids.insert (reaction->id);
            for (const auto* names : {&reaction->substrates, &reaction->products,
                                      &reaction->inhibitors, &reaction->enzymes}) {
                one.species.insert (names->begin (), names->end ());
            }
        }
        all.push_back (std::move (one));
    }
    std::vector<std::pair<std::string, std::size_t>> order;
    for (std::size_t i = 0; i < all.size (); ++i) {
        if (patience_.stop.stop_requested ()) return {};
        order.emplace_back (reaction_line (all[i]), i);
    }
    std::sort (order.begin (), order.end (), [&] (const auto& a, const auto& b) {
        return a.first != b.first ? a.first < b.first
                                  : all[a.second].reaction_ids < all[b.second].reaction_ids;
    });
    std::vector<Implementation> sorted;
    sorted.reserve (all.size ());
    for (const auto& [line, i] : order) sorted.push_back (std::move (all[i]));
    all.clear ();
    return sorted;
}

} // namespace ostrand::formula
