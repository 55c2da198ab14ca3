// What the progress line of a run says.
// Layer: sim.
#pragma once
#include <cstdint>
#include <string>

namespace ostrand::sim {

/// Percent, simulated seconds per second and the time left.
/// done, total  recorded points of all simulations, one for each simulated second
/// seconds      that the simulations have taken so far
std::string progress_text (std::uint64_t done, std::uint64_t total, double seconds);

} // namespace ostrand::sim
