// A letter: its size with its scripts, its forms as text, comparison.
#include "document/std_char.h"

#include "document/document_state.h"
#include "document/line.h"
#include "document/markup.h"

#include <algorithm>

namespace ostrand::document {
namespace {

/// The letters that mean something in markup.
bool is_escaped (unsigned code) {
    return code == '<' || code == '[' || code == '^' || code == '_' || code == '{' || code == '}';
}

unsigned layout_generation () { return document_state ().layout_generation; }

} // namespace

StdChar::StdChar (unsigned new_code, unsigned new_font, unsigned new_color)
    : Char (new_font, new_color), code (new_code), metrics (font_metrics (new_font)) {}

StdChar::~StdChar () = default;

void StdChar::set_script (bool superscript, std::unique_ptr<Line> script) {
    if (script) script->parent = this;
    (superscript ? sup : sub) = std::move (script);
    mark_layout_dirty ();
}

void StdChar::set_fog (bool on) {
    foggy = on;
    if (sub) sub->set_fog (on);
    if (sup) sup->set_fog (on);
}

std::unique_ptr<Char> StdChar::clone (Char* new_parent) const {
    auto copy = std::make_unique<StdChar> (code, font, color);
    copy->foggy = foggy;
    copy->parent = new_parent;
    if (sub) copy->sub = sub->copy (copy.get ());
    if (sup) copy->sup = sup->copy (copy.get ());
    return copy;
}

float StdChar::get_width () const {
    if (width_stamp == layout_generation ()) return width;
    // The end mark takes no room of its own; as a cursor it is as wide as an n.
    const float w = metrics->width_of (code == end_mark ? 'n' : code);
    float scripts = 0;
    if (sup) {
        sup->x = w + 1;
        sup->y = static_cast<float> (7 - metrics->ascent);
        scripts = sup->get_width () + 1;
    }
    if (sub) {
        sub->x = w + 1;
        sub->y = static_cast<float> (sub->get_ascent () - 8);
        scripts = std::max (scripts, sub->get_width () + 1);
    }
    width = w + scripts;
    width_stamp = layout_generation ();
    return width;
}

int StdChar::get_ascent () const {
    if (ascent_stamp == layout_generation ()) return ascent;
    ascent = metrics->ascent + (sup ? sup->get_ascent () - 7 : 0);
    ascent_stamp = layout_generation ();
    return ascent;
}

int StdChar::get_descent () const {
    if (descent_stamp == layout_generation ()) return descent;
    descent = metrics->descent;
    if (sub) descent = std::max (descent, sub->get_height () - 8);
    descent_stamp = layout_generation ();
    return descent;
}

int StdChar::get_height () const { return get_ascent () + get_descent (); }

void StdChar::sprint (PrintState& to, float, float) const { fprint (to, -1); }

void StdChar::fprint (PrintState& to, int depth) const {
    if (code == end_mark) return;
    to.write_style (font, color);
    if (!sub && !sup) {
        // A bare backslash would take the byte behind it as a letter.
        if (is_escaped (code) || code == '\\') to.out += '\\';
        to.write_code (code);
        return;
    }
    if (is_escaped (code)) {
        // The short record would read the escape as the letter and take the letter for a script.
        // Marks behind the letter say the same without harm.
        to.out += '\\';
        to.out += static_cast<char> (code);
        for (const Line* script : {sub.get (), sup.get ()}) {
            if (script == nullptr) continue;
            to.out += script == sub.get () ? '_' : '^';
            const unsigned around = to.font; // a script is read in a font of its own
            to.font = reduced_font (around);
            script->fprint (to, depth);
            to.font = around;
        }
        return;
    }
    to.out += "[E";
    to.out += static_cast<char> (code & 0xFFU);
    if (sub) {
        sub->fprint (to, depth);
    } else {
        to.out += '-';
    }
    if (sup) {
        sup->fprint (to, depth);
    } else {
        to.out += '-';
    }
    to.out += ']';
}

void StdChar::xml_print (PrintState& to) const {
    if (code == end_mark) return;
    to.write_style (font, color);
    if (code == '^' || code == '_' || code == ' ') {
        to.out += '\\';
        to.out += static_cast<char> (code);
        return;
    }
    to.write_code (code);
    if (sub) {
        to.out += "_{";
        sub->xml_print (to);
        to.out += '}';
    }
    if (sup) {
        to.out += "^{";
        sup->xml_print (to);
        to.out += '}';
    }
}

void StdChar::print_plain (std::string& out) const {
    if (code == end_mark) return;
    if (code == '^' || code == '_' || code == ' ') {
        out += '\\';
        out += static_cast<char> (code);
        return;
    }
    PrintState letter;
    letter.write_code (code);
    out += letter.out;
    if (sub) {
        out += "_{";
        sub->print_plain (out);
        out += '}';
    }
    if (sup) {
        out += "^{";
        sup->print_plain (out);
        out += '}';
    }
}

void StdChar::text (std::string& out) const { print_plain (out); }

bool StdChar::equals (const Char& other) const {
    if (other.kind () != CharKind::std_char) return false;
    const auto& letter = static_cast<const StdChar&> (other);
    const auto same = [] (const std::unique_ptr<Line>& a, const std::unique_ptr<Line>& b) {
        return a && b ? a->equals (*b) : !a && !b;
    };
    return code == letter.code && same (sub, letter.sub) && same (sup, letter.sup);
}

bool StdChar::append_identity (std::string& identity) const {
    identity += sub ? (sup ? 'B' : 'D') : (sup ? 'U' : 'c');
    identity += std::to_string (code);
    identity += ';';
    return (!sub || sub->append_identity (identity)) && (!sup || sup->append_identity (identity));
}

Char* StdChar::find_at (float px, float py, HitPlace& place) {
    get_width (); // places the scripts
    for (Line* script : {sub.get (), sup.get ()}) {
        if (script == nullptr) continue;
        if (Char* hit = script->find_at (px, py, place)) return hit;
    }
    place.rel_x = px;
    return this;
}

} // namespace ostrand::document
