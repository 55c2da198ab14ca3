// Symbol codes to Greek, and bytes to UTF-8.
#include "document/greek.h"

#include <array>

namespace ostrand::document {
namespace {

// Code points from 848 (0x350) on, so that each fits a byte: codes 64 to 127. 0 leaves the code.
constexpr unsigned greek_base = 848;
constexpr unsigned char at (unsigned code_point) {
    return static_cast<unsigned char> (code_point - greek_base);
}
constexpr std::array<unsigned char, 64> greek_table{
    0,          at (0x391), at (0x392), at (0x3a7), at (0x394), at (0x395), at (0x3a6), at (0x393),
    at (0x397), at (0x399), at (0x3d1), at (0x39a), at (0x39b), at (0x39c), at (0x39d), at (0x39f),
    at (0x3a0), at (0x398), at (0x3a1), at (0x3a3), at (0x3a4), at (0x3a5), at (0x3c2), at (0x3a9),
    at (0x39e), at (0x3a8), at (0x396), 0,          0,          0,          0,          0,
    0,          at (0x3b1), at (0x3b2), at (0x3c7), at (0x3b4), at (0x3b5), at (0x3d5), at (0x3b3),
    at (0x3b7), at (0x3b9), at (0x3c6), at (0x3ba), at (0x3bb), at (0x3bc), at (0x3bd), at (0x3bf),
    at (0x3c0), at (0x3b8), at (0x3c1), at (0x3c3), at (0x3c4), at (0x3c5), at (0x3d6), at (0x3c9),
    at (0x3be), at (0x3c8), at (0x3b6), 0,          0,          0,          0,          0,
};

} // namespace

unsigned greek_code_point (unsigned code) {
    if (code < 64 || code > 127) return code;
    const unsigned char offset = greek_table[code - 64];
    return offset == 0 ? code : greek_base + offset;
}

void append_utf8 (std::string& out, unsigned code_point) {
    if (code_point < 0x80) {
        out += static_cast<char> (code_point);
    } else {
        out += static_cast<char> (0xC0U | code_point >> 6);
        out += static_cast<char> (0x80U | (code_point & 0x3FU));
    }
}

std::string latin1_to_utf8 (std::string_view letters) {
    std::string out;
    out.reserve (letters.size () + 8);
    for (const char c : letters) append_utf8 (out, static_cast<unsigned char> (c));
    return out;
}

std::string symbol_to_utf8 (std::string_view letters) {
    std::string out;
    out.reserve (2 * letters.size ());
    for (const char c : letters)
        append_utf8 (out, greek_code_point (static_cast<unsigned char> (c)));
    return out;
}

} // namespace ostrand::document
