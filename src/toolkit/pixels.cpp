// Display scale.
#include "toolkit/pixels.h"

#include <algorithm>
#include <cmath>

namespace ostrand::toolkit {

float device_pixels (float units, float pixels_per_unit) {
    return std::trunc (units * pixels_per_unit + 0.5F);
}

float line_pixels (float units, float pixels_per_unit) {
    return std::max (device_pixels (units, pixels_per_unit), 1.0F);
}

float line_place (float place, float width) {
    const bool odd = std::fmod (width, 2.0F) >= 1;
    return odd ? std::floor (place) + 0.5F : std::round (place);
}

} // namespace ostrand::toolkit
