// How does a name stand in a label? Ordinary names as they are.
#include "names/name_markup.h"

#include "document/markup.h"

namespace ostrand::names {
namespace {

/// Scripts inside scripts go no deeper; what is deeper stands as letters. A label's own line and
/// network are two levels of nesting, each script two more.
constexpr int deepest_script = (document::deepest_nesting - 2) / 2;

/// Place of the "}" that closes the "{" at `open`; npos when there is none.
std::size_t closing_brace (std::string_view name, std::size_t open) {
    int depth = 0;
    for (std::size_t i = open; i < name.size (); ++i) {
        if (name[i] == '\\') {
            ++i;
        } else if (name[i] == '{') {
            ++depth;
        } else if (name[i] == '}' && --depth == 0) {
            return i;
        }
    }
    return std::string_view::npos;
}

bool is_continuation (char c) { return (static_cast<unsigned char> (c) & 0xC0U) == 0x80U; }

bool is_plain_script (std::string_view name, std::size_t i) {
    return i + 1 < name.size () && name[i + 1] != '}';
}

std::string markup_to_depth (std::string_view name, int depth) {
    std::string out;
    for (std::size_t i = 0; i < name.size (); ++i) {
        const char c = name[i];
        const char next = i + 1 < name.size () ? name[i + 1] : '\0';
        switch (c) {
        case '\\':
            out += c;
            out += next != '\0' ? next : c; // a last one stands for itself
            ++i;
            break;
        case '_':
        case '^': {
            const bool is_script = i > 0 && is_plain_script (name, i);
            const std::size_t close =
                next == '{' ? closing_brace (name, i + 1) : std::string_view::npos;
            if (is_script && close != std::string_view::npos && depth < deepest_script) {
                out += c;
                out += '{';
                out += markup_to_depth (name.substr (i + 2, close - i - 2), depth + 1);
                out += '}';
                i = close;
            } else {
                if (i > 0 && !is_script) {
                    out += '\\';
                }
                out += c;
            }
            break;
        }
        case '{':
        case '}':
        case '<':
        case '\t':
        case '\r':
        case '\n':
            out += '\\';
            out += c;
            break;
        case '[':
            if (next == 'N' || next == 'P' || next == 'E') {
                out += '\\';
            }
            out += c;
            break;
        case '\xC2':
        case '\xC3':
            if (next != '\0' && is_continuation (next)) {
                out += c;
                out += next;
                ++i;
            } else { // a letter of Latin-1
                out += '\xC3';
                out += static_cast<char> (c - 64);
            }
            break;
        default: out += c; break;
        }
    }
    return out;
}

} // namespace

std::string name_markup (std::string_view name) { return markup_to_depth (name, 0); }

} // namespace ostrand::names
