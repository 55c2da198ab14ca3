// UTF-8 to Latin-1.
#include "editor/latin1.h"

namespace ostrand::editor {
namespace {

struct Decoded {
    unsigned code = 0;
    std::size_t bytes = 0; // 0: no whole letter
};

Decoded decode (std::string_view text) {
    if (text.empty ()) return {};
    const auto byte = [&text] (std::size_t i) { return static_cast<unsigned char> (text[i]); };
    const unsigned first = byte (0);
    if (first < 0x80) return {first, 1};
    const std::size_t length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
    if (first < 0xC2 || first > 0xF4 || text.size () < length) return {};
    unsigned code = first & (0xFFU >> (length + 1));
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte (i) & 0xC0U) != 0x80) return {};
        code = code << 6 | (byte (i) & 0x3FU);
    }
    return {code, length};
}

} // namespace

unsigned first_code (std::string_view utf8) { return decode (utf8).code; }

std::string utf8_to_latin1 (std::string_view utf8) {
    std::string out;
    for (std::string_view rest = utf8; !rest.empty ();) {
        const Decoded letter = decode (rest);
        if (letter.bytes == 0) return std::string (utf8);
        if (letter.code < 256) out += static_cast<char> (letter.code);
        rest.remove_prefix (letter.bytes);
    }
    return out;
}

} // namespace ostrand::editor
