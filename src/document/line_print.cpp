// The forms of a line as text: native, for XML attributes, plain.
#include "document/line.h"
#include "document/markup.h"

namespace ostrand::document {
namespace {

/// The letters that mean something in markup: a backslash before them says that they are letters.
bool is_escaped (unsigned code) {
    return code == '<' || code == '[' || code == '^' || code == '_' || code == '{' || code == '}';
}

/// White space between records, which a reader skips unless it is escaped.
bool is_skipped (unsigned code) { return code == '\t' || code == '\r'; }

void print_plain_letter (PrintState& to, unsigned code) {
    // A bare backslash would take the byte behind it as a letter.
    if (is_escaped (code) || is_skipped (code) || code == '\\') to.out += '\\';
    append_code (to.out, code);
}

/// "[E" and the letter's byte, then both scripts or "-".
void print_record (PrintState& to, const StdChar& letter, int depth) {
    to.out += "[E";
    to.out += static_cast<char> (letter.code & 0xFFU);
    for (const Line* const script : {letter.sub (), letter.sup ()}) {
        if (script != nullptr) {
            script->fprint (to, depth);
        } else {
            to.out += '-';
        }
    }
    to.out += ']';
}

/// Marks behind the letter say the same as the record.
void print_marked (PrintState& to, const StdChar& letter, int depth) {
    print_plain_letter (to, letter.code);
    for (const Line* const script : {letter.sub (), letter.sup ()}) {
        if (script == nullptr) continue;
        to.out += script == letter.sub () ? '_' : '^';
        const unsigned around = to.font; // a script is read in a font of its own
        to.font = reduced_font (around);
        script->fprint (to, depth);
        to.font = around;
    }
}

/// A letter with its scripts behind marks, as XML attributes and names have it.
/// print_script  appends one script
template <typename PrintScript>
void print_with_marks (std::string& out, const StdChar& letter, const PrintScript& print_script) {
    if (letter.code == '^' || letter.code == '_' || letter.code == ' ') {
        out += '\\';
        out += static_cast<char> (letter.code);
        return;
    }
    append_code (out, letter.code);
    for (const Line* const script : {letter.sub (), letter.sup ()}) {
        if (script == nullptr) continue;
        out += script == letter.sub () ? "_{" : "^{";
        print_script (*script);
        out += '}';
    }
}

} // namespace

/// A record has one byte for the letter, which it takes as it stands: an escape would be read as
/// the letter, and the letter as a script.
bool fits_record (unsigned code) { return code < 256 && !is_escaped (code); }

void Line::print_entry (PrintState& to, const StdChar& entry, int depth) const {
    if (const Char* const item = entry.item ()) {
        item->fprint (to, depth);
        return;
    }
    if (entry.code == end_mark) return;
    to.write_style (entry.font, entry.color);
    if (entry.is_plain ()) {
        print_plain_letter (to, entry.code);
    } else if (!fits_record (entry.code)) {
        print_marked (to, entry, depth);
    } else {
        print_record (to, entry, depth);
    }
}

void Line::sprint (PrintState& to, float, float) const { fprint (to, -1); }

void Line::fprint (PrintState& to, int depth) const {
    to.out += '{';
    for (const StdChar& entry : chars_) print_entry (to, entry, depth);
    to.out += '}';
}

void Line::text (std::string& out) const { print_plain (out); }

void Line::xml_print (PrintState& to) const {
    for (const StdChar& entry : chars_) {
        if (const Char* const item = entry.item ()) {
            item->xml_print (to);
        } else if (entry.code != end_mark) {
            to.write_style (entry.font, entry.color);
            print_with_marks (to.out, entry, [&to] (const Line& script) { script.xml_print (to); });
        }
    }
}

void Line::print_plain (std::string& out) const {
    for (const StdChar& entry : chars_) {
        if (const Char* const item = entry.item ()) {
            item->print_plain (out);
        } else if (entry.code != end_mark) {
            print_with_marks (out, entry,
                              [&out] (const Line& script) { script.print_plain (out); });
        }
    }
}

std::string Line::chars_only () const {
    std::string out;
    for (const StdChar& entry : chars_) {
        if (entry.is_letter () && entry.code != end_mark) {
            out += static_cast<char> (entry.code & 0xFFU);
        }
    }
    return out;
}

std::string Line::plain_chars () const {
    std::string out;
    for (const StdChar& entry : chars_) {
        if (entry.is_plain () && entry.code != end_mark) {
            out += static_cast<char> (entry.code & 0xFFU);
        }
    }
    return out;
}

} // namespace ostrand::document
