// Combinations of concentrations.
#include "sim/grid_plan.h"

#include <algorithm>
#include <limits>
#include <unordered_map>

namespace ostrand::sim {
namespace {

/// A species with its place in the table.
struct Place {
    ModelSpecies* species;
    std::size_t index;
};

/// Species whose values vary together; the first one stands for the group.
using Group = std::vector<Place>;

using Places = std::unordered_map<const ModelSpecies*, std::size_t>;

Group take_chain (ModelSpecies* first, const Places& places) {
    Group group;
    for (ModelSpecies* s = first; s != nullptr && !s->visited; s = s->next_linked) {
        s->visited = true;
        group.push_back ({s, places.at (s)});
    }
    return group;
}

/// All groups, ordered by their first species' place in the table. Chains begin at species that
/// nothing links to; what is left then are rings, which begin at their first species.
std::vector<Group> find_groups (ModelTables& tables) {
    Places places;
    for (std::size_t i = 0; i < tables.species.size (); ++i) places[tables.species[i].get ()] = i;
    std::vector<Group> of_species (tables.species.size ());
    for (const bool rings : {false, true}) {
        for (std::size_t i = 0; i < of_species.size (); ++i) {
            ModelSpecies* species = tables.species[i].get ();
            if (!species->visited && (rings || species->prev_linked == nullptr)) {
                of_species[i] = take_chain (species, places);
            }
        }
    }
    std::erase_if (of_species, [] (const Group& group) { return group.empty (); });
    for (const auto& species : tables.species) species->visited = false;
    return of_species;
}

/// Gives every species of a chain as many values as the longest list has.
void fill_up (const Group& group) {
    std::int32_t most = 0;
    for (const Place& member : group) most = std::max (most, member.species->nb);
    for (const Place& member : group) {
        ModelSpecies* species = member.species;
        const auto first_free = species->conc.begin () + species->nb;
        std::fill (first_free, species->conc.begin () + most, first_free[-1]);
        species->nb = most;
    }
}

/// Product that stays at the largest value instead of wrapping.
std::uint64_t saturating_product (std::uint64_t a, std::uint64_t b) {
    std::uint64_t product = 0;
    return __builtin_mul_overflow (a, b, &product) ? std::numeric_limits<std::uint64_t>::max ()
                                                   : product;
}

} // namespace

GridPlan::GridPlan (ModelTables& tables) {
    const std::vector<Group> groups = find_groups (tables);
    // The last group varies fastest.
    for (auto group = groups.rbegin (); group != groups.rend (); ++group) {
        fill_up (*group);
        const auto nb = static_cast<std::uint64_t> (group->front ().species->nb);
        if (nb >= 2) ++n_var_conc_;
        for (const Place& member : *group) {
            members_.push_back ({member.index, member.species, n_simul_, nb});
            if (member.index != group->front ().index) member.species->nb = 1;
        }
        n_simul_ = saturating_product (n_simul_, nb);
    }
}

void GridPlan::write_counts (std::uint64_t simulation, std::span<std::uint32_t> counts) const {
    for (const Member& member : members_) {
        const std::uint64_t value = member.nb == 1 ? 0 : simulation / member.repeats % member.nb;
        counts[member.index] = member.species->conc[value];
    }
}

} // namespace ostrand::sim
