// Which occurrences of a species share a node?
//
// Cofactors are known by what they do: they are further reactants of many reactions and seldom or
// never main ones. A known name makes fewer reactions enough. Enzymes of several reactions stand
// beside each of them. What reactions lead through stays one node, so that paths can be followed.
#include "arrange/copies.h"

#include <algorithm>
#include <cstdlib>
#include <map>
#include <utility>

namespace ostrand::arrange {
namespace {

constexpr int side_uses_of_cofactor = 4; // further reactant of so many reactions ...
constexpr int side_uses_of_protein = 7;  // ... of a protein, gene or receptor, which seldom is one
constexpr int side_uses_of_known_name = 2; // ... of one with a cofactor's name
constexpr int targets_of_enzyme = 3;       // a pure modifier of more reactions gets copies
constexpr int targets_of_reactant = 5;     // likewise one that reactions make or use
constexpr int uses_of_hub = 24;            // more than a picture can join in one node
constexpr int main_uses_of_hub = 16;       // likewise as a main reactant
constexpr int arms_of_star = 10; // of a hub's node that stays, with ends that hang on it only

constexpr int own_copy = -1; // group of an occurrence that has a node of its own

struct Use {
    Occurrence place;
    int species;
    int group = 0; // occurrences of a species with the same group share a node
};

struct Counts {
    int main = 0;
    int side = 0;
    int modifier = 0;
    int all () const { return main + side + modifier; }
};

class SketchMaker {
  public:
    explicit SketchMaker (const Graph& graph) : graph_ (graph), counts_ (graph.species.size ()) {}

    Sketch make (bool copies) {
        list_uses ();
        if (copies) {
            for (std::size_t s = 0; s < graph_.species.size (); ++s) copy_species (s);
        }
        if (copies) join_across_compartments ();
        part_reactants ();
        part_parallel_arcs ();
        share_copies ();
        make_nodes ();
        return std::move (sketch_);
    }

  private:
    bool known (int species) const {
        return species >= 0 && static_cast<std::size_t> (species) < graph_.species.size ();
    }

    /// Calls visit (occurrence, species) for all occurrences, in the order of reactions.
    template <typename Visit>
    void each_occurrence (Visit visit) const {
        for (std::size_t r = 0; r < graph_.reactions.size (); ++r) {
            const Reaction& reaction = graph_.reactions[r];
            const int id = static_cast<int> (r);
            for (std::size_t i = 0; i < reaction.substrates.size (); ++i)
                visit (Occurrence{id, Side::substrate, static_cast<int> (i)},
                       reaction.substrates[i]);
            for (std::size_t i = 0; i < reaction.products.size (); ++i)
                visit (Occurrence{id, Side::product, static_cast<int> (i)}, reaction.products[i]);
            for (std::size_t i = 0; i < reaction.modifiers.size (); ++i)
                visit (Occurrence{id, Side::modifier, static_cast<int> (i)},
                       reaction.modifiers[i].species);
        }
    }

    /// A copy stands no nearer to a reaction in another compartment than the species itself.
    void join_across_compartments () {
        for (Use& use : uses_) {
            if (use.group != own_copy) continue;
            const Reaction& r = graph_.reactions[static_cast<std::size_t> (use.place.reaction)];
            const int own = compartment_of (use.species);
            bool apart = false;
            for (const auto* side : {&r.substrates, &r.products}) {
                if (!side->empty () && known (side->front ())) {
                    apart = apart || compartment_of (side->front ()) != own;
                }
            }
            if (apart) use.group = 0;
        }
    }

    void list_uses () {
        uses_of_.resize (graph_.species.size ());
        uses_of_reaction_.resize (graph_.reactions.size ());
        each_occurrence ([&] (Occurrence place, int species) {
            if (!known (species)) return;
            const auto s = static_cast<std::size_t> (species);
            uses_of_[s].push_back (uses_.size ());
            uses_of_reaction_[static_cast<std::size_t> (place.reaction)].push_back (uses_.size ());
            uses_.push_back ({place, species});
            Counts& count = counts_[s];
            if (place.side == Side::modifier)
                ++count.modifier;
            else if (place.index == 0)
                ++count.main;
            else
                ++count.side;
        });
    }

    bool is_main (const Use& use) const {
        return use.place.side != Side::modifier && use.place.index == 0;
    }

    /// The use at the other end of the main arc; null for a mark.
    const Use* partner (const Use& use) const {
        const Side other = use.place.side == Side::substrate ? Side::product : Side::substrate;
        for (const std::size_t u :
             uses_of_reaction_[static_cast<std::size_t> (use.place.reaction)]) {
            if (uses_[u].place.side == other && uses_[u].place.index == 0) return &uses_[u];
        }
        return nullptr;
    }

    void copy_species (std::size_t s) {
        const Counts& count = counts_[s];
        if (count.all () < 2) return;
        const Species& species = graph_.species[s];
        const bool small =
            species.kind == SpeciesKind::molecule || species.kind == SpeciesKind::other;
        const bool named = is_cofactor_name (species.name);
        const int enough = named   ? side_uses_of_known_name
                           : small ? side_uses_of_cofactor
                                   : side_uses_of_protein;
        const bool hub = count.all () > uses_of_hub;
        const bool copy_side = hub ||
                               (count.side >= enough && (named || count.side >= 2 * count.main)) ||
                               (named && count.side >= 1 && count.main >= 1);
        const bool copy_modifiers =
            hub || copy_side ||
            count.modifier >
                (count.main + count.side == 0 ? targets_of_enzyme : targets_of_reactant);
        const bool copy_main =
            count.main > main_uses_of_hub || (copy_side && named && count.main > 3);
        int star = 0;
        int arms = 0;
        for (const std::size_t u : uses_of_[s]) {
            Use& use = uses_[u];
            if (use.place.side == Side::modifier) {
                if (copy_modifiers) use.group = own_copy;
            } else if (!is_main (use)) {
                if (copy_side) use.group = own_copy;
            } else if (copy_main) {
                // What hangs on the hub only is shared out in stars; what has other reactions gets
                // a copy of the hub.
                const Use* const other = partner (use);
                const bool hangs =
                    !other || counts_[static_cast<std::size_t> (other->species)].all () == 1;
                if (!hangs) {
                    use.group = own_copy;
                } else {
                    if (arms == arms_of_star) {
                        arms = 0;
                        ++star;
                    }
                    use.group = star;
                    ++arms;
                }
            }
        }
    }

    bool same_node (const Use& a, const Use& b) const {
        return a.species == b.species && a.group != own_copy && a.group == b.group;
    }

    /// Within a reaction: arcs that would lie on one another get nodes of their own.
    void part_reactants () {
        for (const auto& uses : uses_of_reaction_) {
            for (std::size_t i = 0; i < uses.size (); ++i) {
                Use& use = uses_[uses[i]];
                for (std::size_t j = 0; j < i; ++j) {
                    const Use& earlier = uses_[uses[j]];
                    if (!same_node (use, earlier)) continue;
                    // An arc from a node to itself; a link of a node at the main arc's end; two
                    // links to one place.
                    if (is_main (earlier) || is_main (use) ||
                        use.place.side == earlier.place.side) {
                        (is_main (use) && !is_main (earlier) ? uses_[uses[j]] : use).group =
                            own_copy;
                    }
                }
            }
        }
    }

    /// Only two arcs have room side by side between two nodes: each further pair of arcs gets a
    /// node of its own at the end that more reactions use.
    void part_parallel_arcs () {
        std::map<std::pair<std::pair<int, int>, std::pair<int, int>>, std::vector<std::size_t>>
            by_nodes;
        for (std::size_t r = 0; r < uses_of_reaction_.size (); ++r) {
            const Use* from = nullptr;
            const Use* to = nullptr;
            for (const std::size_t u : uses_of_reaction_[r]) {
                if (!is_main (uses_[u])) continue;
                (uses_[u].place.side == Side::substrate ? from : to) = &uses_[u];
            }
            if (!from || !to || from->group == own_copy || to->group == own_copy) continue;
            by_nodes[std::minmax (std::pair{from->species, from->group},
                                  std::pair{to->species, to->group})]
                .push_back (r);
        }
        for (const auto& [nodes, reactions] : by_nodes) {
            if (reactions.size () < 3) continue;
            const int a = nodes.first.first;
            const int b = nodes.second.first;
            const int copied = counts_[static_cast<std::size_t> (a)].all () >
                                       counts_[static_cast<std::size_t> (b)].all ()
                                   ? a
                                   : b;
            for (std::size_t i = 2; i < reactions.size (); ++i) {
                if (i % 2 == 0) ++next_group_;
                for (const std::size_t u : uses_of_reaction_[reactions[i]]) {
                    if (is_main (uses_[u]) && uses_[u].species == copied)
                        uses_[u].group = next_group_;
                }
            }
        }
    }

    /// Two reactions between the same two nodes share the copies of a species: one ATP beside both.
    void share_copies () {
        using End = std::pair<int, int>; // species and group
        std::map<std::pair<End, End>, std::vector<std::size_t>> by_nodes;
        for (std::size_t r = 0; r < uses_of_reaction_.size (); ++r) {
            End from{-1, 0};
            End to{-1, 0};
            bool shared = true;
            for (const std::size_t u : uses_of_reaction_[r]) {
                if (!is_main (uses_[u])) continue;
                shared = shared && uses_[u].group != own_copy;
                (uses_[u].place.side == Side::substrate ? from : to) = {uses_[u].species,
                                                                        uses_[u].group};
            }
            if (shared && from.first >= 0 && to.first >= 0)
                by_nodes[std::minmax (from, to)].push_back (r);
        }
        for (const auto& [nodes, reactions] : by_nodes) {
            if (reactions.size () != 2) continue;
            for (const std::size_t u : uses_of_reaction_[reactions[0]]) {
                if (uses_[u].group != own_copy) continue;
                for (const std::size_t v : uses_of_reaction_[reactions[1]]) {
                    if (uses_[v].group != own_copy || uses_[v].species != uses_[u].species)
                        continue;
                    uses_[u].group = uses_[v].group = ++next_group_;
                    break;
                }
            }
        }
    }

    int add_node (int species) {
        DrawnNode node;
        node.species = species;
        if (species >= 0) node.compartment = compartment_of (species);
        sketch_.drawing.nodes.push_back (node);
        return static_cast<int> (sketch_.drawing.nodes.size ()) - 1;
    }

    int compartment_of (int species) const {
        const int c = graph_.species[static_cast<std::size_t> (species)].compartment;
        return c >= 0 && static_cast<std::size_t> (c) < graph_.compartments.size () ? c : -1;
    }

    int& slot (const Occurrence& place) {
        ReactionPlace& reaction = sketch_.reactions[static_cast<std::size_t> (place.reaction)];
        std::vector<int>& side = place.side == Side::substrate ? reaction.substrates
                                 : place.side == Side::product ? reaction.products
                                                               : reaction.modifiers;
        return side[static_cast<std::size_t> (place.index)];
    }

    /// Nodes: first what all occurrences of a species share, in the order of species, then copies
    /// and marks in the order of reactions.
    void make_nodes () {
        sketch_.reactions.resize (graph_.reactions.size ());
        for (std::size_t r = 0; r < graph_.reactions.size (); ++r) {
            sketch_.reactions[r].substrates.assign (graph_.reactions[r].substrates.size (), -1);
            sketch_.reactions[r].products.assign (graph_.reactions[r].products.size (), -1);
            sketch_.reactions[r].modifiers.assign (graph_.reactions[r].modifiers.size (), -1);
        }
        std::map<std::pair<int, int>, int> node_of_group;
        for (std::size_t s = 0; s < uses_of_.size (); ++s) {
            const int species = static_cast<int> (s);
            const bool shared = uses_of_[s].empty () ||
                                std::any_of (uses_of_[s].begin (), uses_of_[s].end (),
                                             [&] (std::size_t u) { return uses_[u].group == 0; });
            if (shared) node_of_group[{species, 0}] = add_node (species);
        }
        for (const Use& use : uses_) {
            int node = -1;
            if (use.group == own_copy) {
                node = add_node (use.species);
            } else {
                const auto [found, fresh] =
                    node_of_group.try_emplace ({use.species, use.group}, -1);
                if (fresh) found->second = add_node (use.species);
                node = found->second;
            }
            slot (use.place) = node;
        }
        for (std::size_t r = 0; r < graph_.reactions.size (); ++r) make_arcs (r);
        update_sizes (graph_, sketch_.drawing);
        sketch_.drawing.index ();
    }

    /// The main arc of a reaction, with marks where a side has nothing, and its links.
    void make_arcs (std::size_t r) {
        ReactionPlace& places = sketch_.reactions[r];
        const auto main_node = [&] (std::vector<int>& side) {
            if (side.empty ()) side.push_back (-1);
            if (side[0] < 0) side[0] = add_node (-1);
            return side[0];
        };
        DrawnReaction reaction;
        reaction.from = main_node (places.substrates);
        reaction.to = main_node (places.products);
        reaction.reversible = graph_.reactions[r].reversible;
        reaction.start_label = graph_.reactions[r].start_label;
        reaction.end_label = graph_.reactions[r].end_label;
        for (int* const end : {&reaction.from, &reaction.to}) {
            DrawnNode& node = sketch_.drawing.nodes[static_cast<std::size_t> (*end)];
            if (node.species < 0) {
                const int other = end == &reaction.from ? reaction.to : reaction.from;
                node.compartment =
                    sketch_.drawing.nodes[static_cast<std::size_t> (other)].compartment;
            }
        }
        sketch_.drawing.reactions.push_back (reaction);
        add_links (r, places.substrates, Side::substrate, LinkEnd::substrate, 1);
        add_links (r, places.products, Side::product, LinkEnd::product, 1);
        add_links (r, places.modifiers, Side::modifier, LinkEnd::square, 0);
    }

    void add_links (std::size_t r, const std::vector<int>& nodes, Side side, LinkEnd end,
                    std::size_t first) {
        for (std::size_t i = first; i < nodes.size (); ++i) {
            if (nodes[i] < 0) continue;
            sketch_.drawing.links.push_back ({nodes[i], static_cast<int> (r), end});
            sketch_.links.push_back ({static_cast<int> (r), side, static_cast<int> (i)});
        }
    }

    const Graph& graph_;
    std::vector<Use> uses_;
    std::vector<std::vector<std::size_t>> uses_of_;          // species -> uses
    std::vector<std::vector<std::size_t>> uses_of_reaction_; // reaction -> uses
    std::vector<Counts> counts_;
    int next_group_ = 1000000; // above the stars of hubs
    Sketch sketch_;
};

} // namespace

Sketch make_sketch (const Graph& graph, bool copies) { return SketchMaker (graph).make (copies); }

void split_link (const Graph& graph, Sketch& sketch, int link) {
    DrawnLink& drawn = sketch.drawing.links[static_cast<std::size_t> (link)];
    DrawnNode node = sketch.drawing.nodes[static_cast<std::size_t> (drawn.node)];
    drawn.node = static_cast<int> (sketch.drawing.nodes.size ());
    sketch.drawing.nodes.push_back (node);
    const Occurrence& place = sketch.links[static_cast<std::size_t> (link)];
    ReactionPlace& reaction = sketch.reactions[static_cast<std::size_t> (place.reaction)];
    std::vector<int>& side = place.side == Side::substrate ? reaction.substrates
                             : place.side == Side::product ? reaction.products
                                                           : reaction.modifiers;
    side[static_cast<std::size_t> (place.index)] = drawn.node;
    update_sizes (graph, sketch.drawing);
}

bool update_sizes (const Graph& graph, Drawing& drawing) {
    std::vector<int> nodes_of (graph.species.size (), 0);
    for (const DrawnNode& node : drawing.nodes)
        if (node.species >= 0) ++nodes_of[static_cast<std::size_t> (node.species)];
    bool changed = false;
    for (DrawnNode& node : drawing.nodes) {
        Size size = graph.mark;
        if (node.species >= 0) {
            const Species& species = graph.species[static_cast<std::size_t> (node.species)];
            const bool shared = nodes_of[static_cast<std::size_t> (node.species)] > 1;
            size = shared && species.shared_size.width > 0 ? species.shared_size : species.size;
        }
        // A node without a label is drawn 2 by 2.
        const double half_width = std::max (size.width, 2.0) / 2;
        const double half_height = std::max (size.height, 2.0) / 2;
        changed = changed || node.half_width != half_width || node.half_height != half_height;
        node.half_width = half_width;
        node.half_height = half_height;
    }
    return changed;
}

} // namespace ostrand::arrange
