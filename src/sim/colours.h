// Colours of the curves.
// Layer: sim.
#pragma once
#include "sim/model.h"

#include <cstdint>

namespace ostrand::sim {

/// Gives each displayed species without a colour one of the hue wheel, evenly spread over them in
/// table order; takes the colours of species that are not displayed.
void assign_colours (ModelTables& tables);

/// The colour 0xRRGGBB00 of a hue from 0 to 6 at saturation 0.95 and value 0.9.
std::uint32_t hue_colour (float h);

} // namespace ostrand::sim
