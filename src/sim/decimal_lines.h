// Counts as decimal lines, by tables: several times as fast as a division a digit.
// Layer: sim.
#pragma once
#include <cstddef>
#include <cstdint>

namespace ostrand::sim {

/// Room that one line may need: ten digits, the line end, and what is written beyond it.
inline constexpr std::size_t line_room = 16;

/// Writes a count and a line end; gives the place behind them. Up to `line_room` bytes are touched.
char* put_line (char* to, std::uint32_t count);

} // namespace ostrand::sim
