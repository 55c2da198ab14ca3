// The writer's state: running style, bytes of letters, numbers, the order of arcs.
#include "document/markup.h"

#include "document/arque.h"
#include "document/document_state.h"

#include "base/text.h"

#include <cmath>
#include <unordered_map>

namespace ostrand::document {

void PrintState::write_style (unsigned new_font, unsigned new_color) {
    if (new_font != font && new_font != no_font) {
        out += format_text ("<%dF>", static_cast<int> (new_font));
        font = new_font;
    }
    if (new_color != color && new_color != no_color) {
        out += '<' + color_text (new_color) + "C>";
        color = new_color;
    }
}

void PrintState::write_code (unsigned code) {
    if (code >= 192) {
        out += '\xC3';
        out += static_cast<char> (code - 64);
    } else if (code >= 128) {
        out += '\xC2';
        out += static_cast<char> (code);
    } else {
        out += static_cast<char> (code);
    }
}

void PrintState::start_record (int depth) {
    if (depth <= 0) return;
    out += '\n';
    out.append (static_cast<std::size_t> (depth - 1), '\t');
}

std::string number_text (float value) {
    if (!std::isfinite (value)) return "0";
    std::string number = format_g (value);
    if (number.find ('e') == std::string::npos) return number;
    // The same six digits in full.
    const double rounded = parse_atof (number);
    const int exponent = static_cast<int> (std::floor (std::log10 (std::fabs (rounded))));
    number = format_text ("%.*f", std::max (0, 6 - exponent), rounded);
    if (number.find ('.') != std::string::npos) {
        number.erase (number.find_last_not_of ('0') + 1);
        if (number.back () == '.') number.pop_back ();
    }
    return number;
}

std::string color_text (unsigned color) {
    return color > 255 ? format_text ("#%06x", color >> 8) : format_text ("%u", color);
}

int take_id () { return document_state ().next_id++; }

std::vector<const Arque*> arcs_in_file_order (const std::vector<const Arque*>& arcs) {
    std::vector<const Arque*> order;
    order.reserve (arcs.size ());
    // An arc whose end has no lower number waits, and so does one that ends on a waiting arc; these
    // come behind, an arc never before its end.
    std::unordered_map<const GraphBase*, std::vector<const Arque*>> waiting;
    std::vector<const Arque*> held;
    for (const Arque* a : arcs) {
        const bool waits = a->id <= a->dest ()->id || waiting.contains (a->dest ());
        if (waits) {
            waiting[a];
            held.push_back (a);
        } else {
            order.push_back (a);
        }
    }
    std::vector<const Arque*> ready;
    for (const Arque* a : held) {
        const auto end = waiting.find (a->dest ());
        if (end == waiting.end ()) {
            ready.push_back (a);
        } else {
            end->second.push_back (a);
        }
    }
    for (const Arque* first : ready) {
        std::vector<const Arque*> open{first};
        while (!open.empty ()) {
            const Arque* a = open.back ();
            open.pop_back ();
            order.push_back (a);
            const std::vector<const Arque*>& behind = waiting[a];
            open.insert (open.end (), behind.rbegin (), behind.rend ());
        }
    }
    return order;
}

} // namespace ostrand::document
