// The grid of simulations.
#include "sim/grid.h"

#include "base/report.h"

#include <algorithm>
#include <limits>
#include <new>
#include <unordered_map>

namespace ostrand::sim {
namespace {

/// A species with its place in the table.
struct Member {
    ModelSpecies* species;
    std::size_t index;
};

/// Species whose values vary together; the first one stands for the group.
using Group = std::vector<Member>;

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
    for (const Member& member : group) most = std::max (most, member.species->nb);
    for (const Member& member : group) {
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

/// Calls `use` for 0 to count - 1; false when a stop ends that early.
template <class Use>
bool for_all (std::size_t count, const std::stop_token& stop, const Use& use) {
    constexpr std::size_t look_each = 1 << 16;
    for (std::size_t i = 0; i < count;) {
        if (stop.stop_requested ()) return false;
        for (const std::size_t end = std::min (count, i + look_each); i < end; ++i) use (i);
    }
    return true;
}

bool report_too_large (std::uint64_t simulations, std::uint32_t points, std::uint32_t species,
                       std::uint64_t bytes, std::uint64_t memory) {
    constexpr auto most = std::numeric_limits<std::uint64_t>::max ();
    report_message ("too many simulations for the memory: %s%llu simulations of %u species at %u "
                    "points need %s%llu bytes, %llu can be had",
                    simulations == most ? "over " : "",
                    static_cast<unsigned long long> (simulations), species, points,
                    bytes == most ? "over " : "", static_cast<unsigned long long> (bytes),
                    static_cast<unsigned long long> (memory));
    return false;
}

} // namespace

bool prepare_run (ModelTables& tables, SeedSequence& seeds, std::uint64_t memory, Grid& grid,
                  const std::stop_token& stop) {
    const std::vector<Group> groups = find_groups (tables);
    std::uint64_t n_simul = 1;
    for (const Group& group : groups) {
        fill_up (group);
        n_simul = saturating_product (n_simul, static_cast<std::uint64_t> (group[0].species->nb));
    }
    const std::uint32_t n_species = tables.n_species ();
    grid.n_points = tables.nb_gen / stats;
    const std::uint64_t series = std::uint64_t{n_species} * grid.n_points;
    const std::uint64_t bytes_each =
        (series + n_species + 1) * sizeof (std::uint32_t) + sizeof (Simulation);
    const std::uint64_t bytes = saturating_product (n_simul, bytes_each);
    if (bytes > memory || n_simul > std::numeric_limits<std::uint32_t>::max ()) {
        return report_too_large (n_simul, grid.n_points, n_species, bytes, memory);
    }
    grid.n_simul = static_cast<std::uint32_t> (n_simul);
    const std::size_t slots = std::size_t{n_species} + 1;
    try {
        grid.copy_block = std::make_unique_for_overwrite<std::uint32_t[]> (n_simul * slots);
        grid.series_block = std::make_unique_for_overwrite<std::uint32_t[]> (n_simul * series);
        grid.simulations.reserve (n_simul);
    } catch (const std::bad_alloc&) {
        return report_too_large (n_simul, grid.n_points, n_species, bytes, memory);
    }
    Seeds own_seeds = seeds.take (n_simul);
    const bool seeded = for_all (n_simul, stop, [&] (std::size_t i) {
        grid.simulations.push_back ({.all_pt = {grid.series_block.get () + i * series, series},
                                     .copy_num = {grid.copy_block.get () + i * slots, slots},
                                     .random = own_seeds.next ()});
        grid.copy_block[i * slots + n_species] = 0;
    });
    if (!seeded) return false;
    std::uint64_t repeats = n_simul; // how often each value stands in succession
    grid.n_var_conc = 0;
    for (const Group& group : groups) {
        const auto nb = static_cast<std::uint64_t> (group[0].species->nb);
        if (nb >= 2) ++grid.n_var_conc;
        repeats /= nb;
        for (const Member& member : group) {
            const bool distributed = for_all (n_simul, stop, [&] (std::size_t i) {
                grid.copy_block[i * slots + member.index] = member.species->conc[i / repeats % nb];
            });
            if (!distributed) return false;
            if (member.index != group[0].index) member.species->nb = 1;
        }
    }
    return true;
}

} // namespace ostrand::sim
