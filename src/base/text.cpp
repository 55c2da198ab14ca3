// Text helpers that do not depend on the locale.
#include "base/text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <limits>
#include <locale.h>
#include <stdlib.h>
#include <system_error>

namespace ostrand {
namespace {

/// Position of the first byte that is no white space.
std::size_t skip_space (std::string_view text) {
    std::size_t i = 0;
    while (i < text.size () && is_space (text[i])) ++i;
    return i;
}

struct SignedDigits {
    bool negative = false;
    std::size_t first = 0; // where the digits begin
};

SignedDigits skip_sign (std::string_view text) {
    SignedDigits found{false, skip_space (text)};
    if (found.first < text.size () && (text[found.first] == '-' || text[found.first] == '+')) {
        found.negative = text[found.first] == '-';
        ++found.first;
    }
    return found;
}

std::optional<std::uint32_t> scan_in_base (std::string_view text, int base) {
    const auto [negative, first] = skip_sign (text);
    std::uint32_t value = 0;
    const char* end = text.data () + text.size ();
    const auto result = std::from_chars (text.data () + first, end, value, base);
    if (result.ec == std::errc::invalid_argument) return std::nullopt;
    if (result.ec == std::errc::result_out_of_range) {
        return std::numeric_limits<std::uint32_t>::max ();
    }
    return negative ? 0U - value : value;
}

} // namespace

std::string format_text_v (const char* format, va_list arguments) {
    va_list again;
    va_copy (again, arguments);
    const int length = std::vsnprintf (nullptr, 0, format, arguments);
    std::string text (static_cast<std::size_t> (std::max (length, 0)), '\0');
    if (length > 0) std::vsnprintf (text.data (), text.size () + 1, format, again);
    va_end (again);
    return text;
}

std::string format_text (const char* format, ...) {
    va_list arguments;
    va_start (arguments, format);
    std::string text = format_text_v (format, arguments);
    va_end (arguments);
    return text;
}

void append_g (std::string& out, double value, int digits) {
    std::array<char, 64> buffer{};
    const auto result = std::to_chars (buffer.data (), buffer.data () + buffer.size (), value,
                                       std::chars_format::general, std::min (digits, 40));
    out.append (buffer.data (), result.ptr);
}

std::string format_g (double value, int digits) {
    std::string text;
    append_g (text, value, digits);
    return text;
}

void append_decimal (std::string& out, std::uint64_t value) {
    std::array<char, 24> buffer{};
    const auto result = std::to_chars (buffer.data (), buffer.data () + buffer.size (), value);
    out.append (buffer.data (), result.ptr);
}

double parse_atof (std::string_view text) {
    static const locale_t c_locale = newlocale (LC_ALL_MASK, "C", nullptr);
    const std::string terminated (text);
    return strtod_l (terminated.c_str (), nullptr, c_locale);
}

int parse_atoi (std::string_view text) {
    const auto [negative, first] = skip_sign (text);
    std::int64_t value = 0;
    for (std::size_t i = first; i < text.size () && is_digit (text[i]); ++i) {
        value = std::min<std::int64_t> (value * 10 + (text[i] - '0'), std::int64_t{1} << 40);
    }
    if (negative) value = -value;
    return static_cast<int> (std::clamp<std::int64_t> (value, std::numeric_limits<int>::min (),
                                                       std::numeric_limits<int>::max ()));
}

std::optional<std::uint32_t> scan_unsigned (std::string_view text) {
    return scan_in_base (text, 10);
}

std::optional<std::uint32_t> scan_hexadecimal (std::string_view text) {
    const auto [negative, first] = skip_sign (text);
    const bool prefixed = first + 2 < text.size () && text[first] == '0' &&
                          (text[first + 1] == 'x' || text[first + 1] == 'X') &&
                          is_hex_digit (text[first + 2]);
    if (!prefixed) return scan_in_base (text, 16);
    const auto value = scan_in_base (text.substr (first + 2), 16);
    return negative && value ? 0U - *value : value;
}

std::vector<std::string> split_fields (std::string_view line, char separator) {
    std::vector<std::string> fields;
    while (!line.empty ()) {
        const std::size_t end = line.find (separator);
        fields.emplace_back (line.substr (0, end));
        if (end == std::string_view::npos) break;
        line.remove_prefix (end + 1);
    }
    return fields;
}

} // namespace ostrand
