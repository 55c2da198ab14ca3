// Conversions between floats and whole numbers that are defined for every value.
// Layer: document.
#pragma once
#include <cmath>
#include <cstdint>
#include <limits>

namespace ostrand::document {

/// Truncated towards zero; saturates at the limits of int, not-a-number is 0.
inline int to_int (double value) {
    if (std::isnan (value)) return 0;
    if (value >= 2147483647.0) return std::numeric_limits<int>::max ();
    if (value <= -2147483648.0) return std::numeric_limits<int>::min ();
    return static_cast<int> (value);
}

/// A size or place in whole pixels: truncated, and so bounded that sums of the sizes of all that
/// can be nested still fit an int.
inline int to_pixels (double value) {
    constexpr int most = 10000000;
    const int whole = to_int (value);
    return whole > most ? most : whole < -most ? -most : whole;
}

/// The low 32 bits of the truncated number, by way of 64 bits, so that 0xFF000000 survives.
inline std::uint32_t to_word (double value) {
    if (std::isnan (value)) return 0;
    if (value >= 9.2e18 || value <= -9.2e18) return 0;
    return static_cast<std::uint32_t> (static_cast<std::int64_t> (value));
}

} // namespace ostrand::document
