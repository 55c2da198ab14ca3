// Bytes of native texts need not be UTF-8.
#include "sbml_in/own_drawing.h"

namespace ostrand::sbml_in {

std::string packed_drawing (std::string_view native) {
    std::string out;
    for (const char c : native) {
        const auto byte = static_cast<unsigned char> (c);
        if (c == '\n' || c == '\t' || (byte >= 0x20 && byte < 0x7F)) {
            out += c;
        } else { // U+E0xx in UTF-8
            out += '\xEE';
            out += static_cast<char> (0x80U | (byte >> 6));
            out += static_cast<char> (0x80U | (byte & 0x3FU));
        }
    }
    return out;
}

std::string unpacked_drawing (std::string_view text) {
    std::string out;
    for (std::size_t i = 0; i < text.size (); ++i) {
        if (text[i] == '\xEE' && i + 2 < text.size ()) {
            const auto high = static_cast<unsigned char> (text[i + 1]);
            const auto low = static_cast<unsigned char> (text[i + 2]);
            out += static_cast<char> ((high & 0x03U) << 6 | (low & 0x3FU));
            i += 2;
        } else {
            out += text[i];
        }
    }
    return out;
}

} // namespace ostrand::sbml_in
