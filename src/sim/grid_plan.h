// Which simulation begins with which counts: the combinations of a model's concentrations, worked
// out one at a time.
// Layer: sim.
#pragma once
#include "sim/model.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace ostrand::sim {

/// A full factorial design over groups of species; linked species count once. The group whose first
/// species stands first in the table varies slowest.
class GridPlan {
  public:
    GridPlan () = default;
    /// A chain of linked species has the longest of its members' lists, the others are filled up
    /// with their last value; afterwards all but a chain's first species have `nb` 1. The tables
    /// are looked at as long as the plan is used.
    explicit GridPlan (ModelTables& tables);

    /// Simulations; stays at 2^64 - 1 when there are more.
    std::uint64_t n_simul () const { return n_simul_; }
    /// Groups with at least two values.
    std::uint32_t n_var_conc () const { return n_var_conc_; }

    /// A species that begins with the value conc[i / repeats % nb] in simulation i.
    struct Member {
        std::size_t index;
        const ModelSpecies* species;
        std::uint64_t repeats;
        std::uint64_t nb;
    };
    /// Every species once.
    std::span<const Member> members () const { return members_; }

    /// The initial counts of a simulation, by species.
    void write_counts (std::uint64_t simulation, std::span<std::uint32_t> counts) const;

  private:
    std::uint64_t n_simul_ = 1;
    std::uint32_t n_var_conc_ = 0;
    std::vector<Member> members_;
};

} // namespace ostrand::sim
