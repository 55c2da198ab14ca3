// Colours of the curves.
#include "sim/colours.h"

#include <algorithm>

namespace ostrand::sim {

std::uint32_t hue_colour (float h) {
    constexpr std::uint32_t high = 0xE5; // value 0.9 of 255
    constexpr std::uint32_t low = 0x0B;  // 0.9 * (1 - 0.95) of 255
    const auto rgb = [] (std::uint32_t r, std::uint32_t g, std::uint32_t b) {
        return r << 24 | g << 16 | b << 8;
    };
    const int sector = static_cast<int> (h);
    const float f = h - static_cast<float> (sector);
    // Products in float, the last one in double: the bytes depend on it.
    const float rising = (1.0F - (1.0F - f) * 0.95F) * 0.9F;
    const float falling = (1.0F - f * 0.95F) * 0.9F;
    const float level = sector % 2 == 0 ? rising : falling;
    const auto moving = static_cast<std::uint32_t> (static_cast<double> (level) * 255.0);
    switch (sector) {
    case 0: return rgb (high, moving, low);
    case 1: return rgb (moving, high, low);
    case 2: return rgb (low, high, moving);
    case 3: return rgb (low, moving, high);
    case 4: return rgb (moving, low, high);
    case 5: return rgb (high, low, moving);
    default: return rgb (high, low, low);
    }
}

void assign_colours (ModelTables& tables) {
    int c = 0;
    bool any_displayed = false;
    for (const auto& species : tables.species) {
        if (species->displayed) ++c;
        if (species->colour != no_colour) --c;
        any_displayed = any_displayed || species->displayed;
    }
    if (!any_displayed) return;
    int i = 0;
    for (const auto& species : tables.species) {
        if (!species->displayed) {
            species->colour = no_colour;
        } else if (species->colour == no_colour) {
            species->colour = hue_colour (static_cast<float> (i * 6.0 / c));
            ++i;
        }
    }
}

} // namespace ostrand::sim
