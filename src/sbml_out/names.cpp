// Which letters may stand in ids, names and texts?
#include "sbml_out/names.h"

#include <algorithm>

namespace ostrand::sbml_out {

std::string valid_id (std::string_view text) {
    std::string id;
    for (const char c : text) {
        const bool letter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
        id += letter || (c >= '0' && c <= '9') ? c : '_';
    }
    if (id.empty () || (id[0] >= '0' && id[0] <= '9')) id.insert (0, "m_");
    return id;
}

namespace {

/// Bytes of the character at i when it is UTF-8 that XML can hold, else 0.
std::size_t good_bytes (std::string_view text, std::size_t i) {
    const auto byte = [text] (std::size_t k) { return static_cast<unsigned char> (text[k]); };
    const unsigned first = byte (i);
    if (first < 0x20) return first == '\t' || first == '\n' || first == '\r' ? 1 : 0;
    if (first < 0x80) return first == 0x7F ? 0 : 1;
    const std::size_t n = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : first >= 0xC2 ? 2 : 0;
    if (n == 0 || first > 0xF4 || i + n > text.size ()) return 0;
    unsigned code = first & (0xFFU >> (n + 1));
    for (std::size_t k = 1; k < n; ++k) {
        if ((byte (i + k) & 0xC0U) != 0x80U) return 0;
        code = code << 6 | (byte (i + k) & 0x3FU);
    }
    const bool is_long = (n == 3 && code < 0x800) || (n == 4 && code < 0x10000);
    const bool is_bad =
        (code >= 0xD800 && code < 0xE000) || (code & 0xFFFEU) == 0xFFFEU || code > 0x10FFFF;
    return is_long || is_bad ? 0 : n;
}

} // namespace

std::string xml_letters (std::string_view text) {
    std::string out;
    for (std::size_t i = 0; i < text.size ();) {
        const std::size_t n = good_bytes (text, i);
        if (n > 0)
            out += text.substr (i, n);
        else
            out += '?';
        i += std::max<std::size_t> (n, 1);
    }
    return out;
}

std::string xml_escaped (std::string_view text) {
    std::string out;
    for (const char c : xml_letters (text)) {
        switch (c) {
        case '<': out += "&lt;"; break;
        case '>': out += "&gt;"; break;
        case '&': out += "&amp;"; break;
        case '"': out += "&quot;"; break;
        default: out += c;
        }
    }
    return out;
}

std::string shown_name (const document::GraphBase& object) {
    if (object.label () == nullptr) return {};
    const std::string name = object.name ();
    std::string out;
    for (std::size_t i = 0; i < name.size (); ++i) {
        if (name[i] == '\\' && i + 1 < name.size ()) ++i;
        out += name[i] == '\n' || name[i] == '\t' ? ' ' : name[i];
    }
    return xml_letters (out);
}

} // namespace ostrand::sbml_out
