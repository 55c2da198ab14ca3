// Numbers of the text form: conversions that are defined for every value, and the six digits with
// which coordinates are written.
// Layer: document.
#pragma once
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>

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

/// Most bytes that one number takes: a float in full has 40 digits before its point.
inline constexpr int longest_number = 64;
/// Write a number at `to`, which has room for it, as the functions below append it; they give the
/// place behind it.
char* put_int (char* to, long long value);
char* put_number (char* to, float value);
char* put_color (char* to, unsigned color);

/// Appends a coordinate with six digits as "%g" gives it, but never with an exponent, which the
/// reader of numbers would not get over; what is not finite is "0".
void append_number (std::string& out, float value);
std::string number_text (float value);

/// What a reader makes of append_number's text.
float settled_number (float value);

void append_int (std::string& out, long long value);

/// Appends "#%06x" of the upper bytes above 255, else "%u".
void append_color (std::string& out, unsigned color);
std::string color_text (unsigned color);

/// What a reader makes of that text: a colour by its parts has no low byte.
constexpr unsigned settled_color (unsigned color) {
    return color > 255 ? color & 0xFFFFFF00U : color;
}

} // namespace ostrand::document
