// What may a name hold? Letters that labels have: Latin-1, written as UTF-8.
#include "names/species_names.h"

#include "base/text.h"
#include "sim/lexer.h"

#include <array>

namespace ostrand::names {
namespace {

constexpr std::array<const char*, 25> small_greek{
    "alpha", "beta",   "gamma",   "delta", "epsilon", "zeta",    "eta",   "theta", "iota",
    "kappa", "lambda", "mu",      "nu",    "xi",      "omicron", "pi",    "rho",   "sigma",
    "sigma", "tau",    "upsilon", "phi",   "chi",     "psi",     "omega",
};

/// A letter that labels do not have, in letters that they have.
std::string spelled_out (unsigned long code) {
    if (code >= 0x3B1 && code <= 0x3C9) {
        return small_greek[code - 0x3B1];
    }
    if (code >= 0x391 && code <= 0x3A9) {
        std::string name = small_greek[code - 0x391];
        name[0] = static_cast<char> (name[0] - 'a' + 'A');
        return name;
    }
    if (code >= 0x2080 && code <= 0x2089) {
        return std::string (1, static_cast<char> ('0' + (code - 0x2080)));
    }
    if (code >= 0x2074 && code <= 0x2079) {
        return std::string (1, static_cast<char> ('0' + (code - 0x2070)));
    }
    if (code >= 0x2010 && code <= 0x2015) {
        return "-";
    }
    switch (code) {
    case 0x2070: return "0";
    case 0x2018:
    case 0x2019:
    case 0x201C:
    case 0x201D:
    case 0x2032: return "'";
    case 0x2033: return "''";
    case 0x207A: return "+";
    case 0x207B:
    case 0x2212: return "-";
    case 0x2190: return "<-";
    case 0x2192: return "->";
    case 0x2194: return "<->";
    case 0x2205: return "void";
    default: return format_text ("(U+%04lX)", code);
    }
}

/// The character at i in UTF-8, and how many bytes it has; a byte that is no UTF-8 is Latin-1.
unsigned long character_at (std::string_view text, std::size_t i, std::size_t& bytes) {
    const auto byte = [text] (std::size_t k) {
        return static_cast<unsigned long> (static_cast<unsigned char> (text[k]));
    };
    const unsigned long first = byte (i);
    bytes = 1;
    std::size_t more = 0;
    unsigned long code = first;
    if (first >= 0xC2 && first < 0xE0) {
        more = 1;
        code = first & 0x1F;
    } else if (first >= 0xE0 && first < 0xF0) {
        more = 2;
        code = first & 0x0F;
    } else if (first >= 0xF0 && first < 0xF5) {
        more = 3;
        code = first & 0x07;
    }
    if (i + more >= text.size ()) {
        return first;
    }
    for (std::size_t k = 1; k <= more; ++k) {
        if ((byte (i + k) & 0xC0) != 0x80) {
            return first;
        }
        code = (code << 6) | (byte (i + k) & 0x3F);
    }
    bytes = more + 1;
    return code;
}

void append_latin (std::string& out, unsigned long code) {
    if (code >= 0xC0) {
        out += '\xC3';
        out += static_cast<char> (code - 64);
    } else {
        out += '\xC2';
        out += static_cast<char> (code);
    }
}

} // namespace

std::string model_name (std::string_view name, const std::vector<bool>& by_number) {
    if (sim::keyword_of (name) != sim::TokenKind::none) {
        return "\\" + std::string (name);
    }
    std::string out;
    for (std::size_t i = 0; i < name.size ();) {
        std::size_t bytes = 1;
        const unsigned long code = character_at (name, i, bytes);
        const char c = name[i];
        const bool is_letter = i < by_number.size () && by_number[i];
        if (code >= 256) {
            out += spelled_out (code);
        } else if (code >= 128) {
            append_latin (out, code);
        } else if (is_letter && (c == '\\' || c == '{' || c == '}')) {
            out += '\\';
            out += c;
        } else if (code < 32 || code == 127) {
            out += ' ';
        } else if (c == '\\') {
            // Our own files have "\ ", "\^" and "\_" in names.
            const char next = i + 1 < name.size () ? name[i + 1] : '\0';
            out += next == ' ' || next == '^' || next == '_' ? "\\" : "\\\\";
        } else {
            out += c;
        }
        i += bytes;
    }
    return out;
}

std::string ModelNames::take (std::string wanted, const std::string& name, std::string_view id) {
    for (;;) {
        const auto [place, is_new] = original_.try_emplace (wanted, name);
        if (is_new || place->second == name) {
            return wanted;
        }
        wanted += " (" + model_name (id) + ")";
    }
}

} // namespace ostrand::names
