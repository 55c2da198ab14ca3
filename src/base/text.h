// Text helpers that do not depend on the locale: formatting, numbers, fields, lines.
// Layer: base.
#pragma once
#include <cstdarg>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ostrand {

/// printf into a string of any length.
std::string format_text (const char* format, ...) __attribute__ ((format (printf, 1, 2)));
std::string format_text_v (const char* format, va_list arguments);

/// A number as printf's "%.<digits>g" gives it in the C locale; appends to `out`.
void append_g (std::string& out, double value, int digits = 6);
std::string format_g (double value, int digits = 6);

/// A whole number in decimal; appends to `out`.
void append_decimal (std::string& out, std::uint64_t value);

/// What C's atof gives in the C locale: the longest number at the front, behind white space; 0 when
/// there is none. Overflow gives infinity.
double parse_atof (std::string_view text);

/// What C's atoi gives: the decimal number at the front, behind white space and a sign; 0 when
/// there is none. Saturates at the limits of int, where atoi itself has no defined answer.
int parse_atoi (std::string_view text);

/// The number at the front of `text` by the rules of scanf's "%u" (white space and a sign before,
/// anything behind): nothing when there is none. Values wrap as unsigned 32-bit for a leading minus
/// and saturate above 4294967295.
std::optional<std::uint32_t> scan_unsigned (std::string_view text);

/// Likewise by scanf's "%x": hexadecimal digits with an optional 0x.
std::optional<std::uint32_t> scan_hexadecimal (std::string_view text);

/// Splits at each separator. An empty field in the middle is kept; nothing is produced behind a
/// final separator with nothing behind it, and an empty line has no field.
std::vector<std::string> split_fields (std::string_view line, char separator = ';');

/// True for the white space of C's isspace in the C locale.
constexpr bool is_space (char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
constexpr bool is_digit (char c) { return c >= '0' && c <= '9'; }
constexpr bool is_hex_digit (char c) {
    return is_digit (c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

} // namespace ostrand
