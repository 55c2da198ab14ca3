// The grid that nodes snap to: lines at 24 k - 4 in the network.
// Layer: editor.
#pragma once
#include <cmath>

namespace ostrand::editor {

inline constexpr float grid_pitch = 24;
inline constexpr float grid_offset = -4;

/// The line nearest to a coordinate.
inline float nearest_grid_line (float at) {
    return std::round ((at - grid_offset) / grid_pitch) * grid_pitch + grid_offset;
}

/// The first line right of or below the window's edge, in network units from that edge.
/// origin  of the network, in network units
inline float first_grid_line (float origin) {
    const float phase = std::fmod (origin + grid_offset, grid_pitch);
    return phase > 0 ? phase : phase + grid_pitch;
}

} // namespace ostrand::editor
