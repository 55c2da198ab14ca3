// The random numbers that each simulation of a sweep begins with, the same on every machine.
// Layer: sweep.
#pragma once
#include "sim/random.h"

#include <cstdint>
#include <optional>

namespace ostrand::sweep {

/// The generator's state at the start of a simulation. No two simulations of a sweep have the same,
/// and no two of different seeds.
///
/// Without a seed the first replicate of combination i is what simulation i of a plain run is. All
/// others get a permutation of the 128 bits (seed, combination, replicate): twenty rounds of
/// adding, rotating and exclusive-or with the rotations of Salmon et al. 2011 (SC11, table 2, two
/// words). Seeds are mixed in, not added, so that the simulations of one seed are not those of the
/// next seed in another order.
///
/// seed         below 2^63; none: that of plain runs
/// combination  of concentrations, from 0, below 2^32
/// replicate    from 0, below 2^32
sim::RandomState simulation_seed (const std::optional<std::uint64_t>& seed,
                                  std::uint64_t combination, std::uint64_t replicate);

/// The state that simulation i of a plain run begins with.
sim::RandomState plain_seed (std::uint64_t simulation);

} // namespace ostrand::sweep
