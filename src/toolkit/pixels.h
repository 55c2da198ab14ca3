// Display scale: the toolkit's units in device pixels, and lines that fill whole pixels.
// Layer: toolkit.
#pragma once

namespace ostrand::toolkit {

/// A length in whole device pixels: times the display's pixels for each unit, rounded.
float device_pixels (float units, float pixels_per_unit);

/// Width in device pixels of a line that fills whole ones; at least 1.
float line_pixels (float units, float pixels_per_unit);

/// Where a line along an axis must stand to fill whole pixels: through their middle when it is an
/// odd number of pixels wide, else between two.
/// place  device pixels
/// width  of line_pixels
float line_place (float place, float width);

} // namespace ostrand::toolkit
