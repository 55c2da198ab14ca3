// The one place that knows how concentrations, counts and times relate.
// Layer: base.
#pragma once
#include <cstdint>

namespace ostrand {

/// Molecules per µM in the simulated cell: 6.02252e23 /mol x 1e-6 mol/l x 1e-15 l. Kept for the
/// files of all versions; with today's Avogadro constant it would be 602.214.
inline constexpr double molecules_per_micromolar = 602.252;

/// Time steps of 0.1 ms in one simulated second.
inline constexpr std::uint32_t time_steps_per_second = 10000;

} // namespace ostrand
