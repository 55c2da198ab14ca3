// Colours: the colour map, its dark counterpart, and lighter colours.
// Layer: document.
#pragma once
#include <cstdint>

namespace ostrand::document {

/// 0xRRGGBB00 of a colour: below 256 an index of the toolkit's default colour map, else itself.
std::uint32_t color_rgb (unsigned color);

/// The colour that stands for `color` on a dark canvas; colours without a counterpart stay.
unsigned dark_color (unsigned color);

/// Adds n to each of red, green and blue, at most 255; an all black result becomes colour 56.
unsigned lighten (unsigned color, int n);

/// The light inner band of a compartment: the hue of `color` at full value with its saturation
/// reduced to a quarter.
unsigned light_band_color (unsigned color);

} // namespace ostrand::document
