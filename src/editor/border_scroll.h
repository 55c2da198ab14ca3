// How fast the view scrolls under a drag that has come near the window's border.
// Layer: editor (uses document).
#pragma once

namespace ostrand::editor {

/// Pixels beside the border where a drag scrolls.
inline constexpr float border_zone = 24;
/// Seconds until the first scroll, so that a drag that only passes, or begins there, does not
/// scroll; then between two.
inline constexpr double border_first_wait = 0.3;
inline constexpr double border_next_wait = 0.03;

/// Pixels that one step scrolls along an axis, grown with the depth in the zone and further with
/// the distance outside: negative towards the left or top, 0 for a place inside.
/// place   of the pointer along the axis, pixels; may be outside
/// window  extent of the window along it, pixels
float border_step (float place, float window);

} // namespace ostrand::editor
