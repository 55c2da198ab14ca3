// How numbers are written.
#include "document/numbers.h"

#include "base/text.h"

#include <algorithm>
#include <array>
#include <cfloat>
#include <charconv>

namespace ostrand::document {
namespace {

constexpr std::array<double, 10> powers{1, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9};

/// A value between 0.0001 and 999999.5 as six digits: value = digits / 10^decimals.
struct SixDigits {
    int digits; // 100000 to 999999
    int decimals;
};

constexpr double least = 0.0001; // smaller ones, and larger ones than 10^6, go the long way
constexpr double most = 1e6;

/// All steps are exact but the one rounding, since a float times 10^9 still fits a double: these
/// are the digits that printf gives.
SixDigits six_digits (float magnitude) {
    const double value = magnitude;
    std::size_t decimals = 5;
    while (decimals > 0 && value >= powers[6 - decimals]) --decimals;
    while (decimals < 9 && value * powers[decimals] < 100000) ++decimals;
    double rounded = std::nearbyint (value * powers[decimals]);
    if (rounded >= most) {
        --decimals;
        rounded = std::nearbyint (value * powers[decimals]);
    }
    return {static_cast<int> (rounded), static_cast<int> (decimals)};
}

bool has_six_digits (float magnitude) {
    return magnitude >= static_cast<float> (least) && magnitude < 999999.0F;
}

/// Any finite number, by way of printf's form.
char* put_far_number (char* to, float value) {
    std::string number = format_g (value);
    if (number.find ('e') != std::string::npos) {
        // The same six digits in full.
        const double rounded = parse_atof (number);
        const int exponent = static_cast<int> (std::floor (std::log10 (std::fabs (rounded))));
        number = format_text ("%.*f", std::max (0, 6 - exponent), rounded);
        if (number.find ('.') != std::string::npos) {
            number.erase (number.find_last_not_of ('0') + 1);
            if (number.back () == '.') number.pop_back ();
        }
    }
    return std::copy (number.begin (), number.end (), to);
}

} // namespace

char* put_int (char* to, long long value) {
    return std::to_chars (to, to + longest_number, value).ptr;
}

char* put_number (char* to, float value) {
    if (!std::isfinite (value)) {
        *to = '0';
        return to + 1;
    }
    const float magnitude = std::fabs (value);
    if (!has_six_digits (magnitude)) return put_far_number (to, value);
    auto [digits, decimals] = six_digits (magnitude);
    while (decimals > 0 && digits % 10 == 0) {
        digits /= 10;
        --decimals;
    }
    if (value < 0) *to++ = '-';
    std::array<char, 16> buffer{};
    char* const end = std::to_chars (buffer.data (), buffer.data () + buffer.size (), digits).ptr;
    const auto length = static_cast<int> (end - buffer.data ());
    if (decimals == 0) return std::copy (buffer.data (), end, to);
    if (length > decimals) {
        to = std::copy (buffer.data (), end - decimals, to);
        *to++ = '.';
        return std::copy (end - decimals, end, to);
    }
    *to++ = '0';
    *to++ = '.';
    to = std::fill_n (to, decimals - length, '0');
    return std::copy (buffer.data (), end, to);
}

char* put_color (char* to, unsigned color) {
    if (color <= 255) return put_int (to, color);
    constexpr const char* hexadecimal = "0123456789abcdef";
    *to++ = '#';
    for (int shift = 28; shift >= 8; shift -= 4) *to++ = hexadecimal[color >> shift & 15U];
    return to;
}

namespace {

template <typename Put, typename Value>
void append_by (const Put& put, std::string& out, Value value) {
    std::array<char, longest_number> buffer;
    const char* const end = put (buffer.data (), value);
    out.append (buffer.data (), static_cast<std::size_t> (end - buffer.data ()));
}

} // namespace

void append_int (std::string& out, long long value) { append_by (put_int, out, value); }

void append_number (std::string& out, float value) { append_by (put_number, out, value); }

void append_color (std::string& out, unsigned color) { append_by (put_color, out, color); }

std::string number_text (float value) {
    std::string text;
    append_number (text, value);
    return text;
}

float settled_number (float value) {
    const float magnitude = std::fabs (value);
    if (has_six_digits (magnitude)) {
        const auto [digits, decimals] = six_digits (magnitude);
        const auto settled =
            static_cast<float> (digits / powers[static_cast<std::size_t> (decimals)]);
        return value < 0 ? -settled : settled;
    }
    const double read = parse_atof (number_text (value));
    return static_cast<float> (
        std::clamp (read, -static_cast<double> (FLT_MAX), static_cast<double> (FLT_MAX)));
}

std::string color_text (unsigned color) {
    std::string text;
    append_color (text, color);
    return text;
}

} // namespace ostrand::document
