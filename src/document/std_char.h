// StdChar: one styled letter of a line, with its sub- and superscript.
// Layer: document.
#pragma once
#include "document/font.h"

#include <memory>

namespace ostrand::document {

class Char;
class Line;

/// The code of the mark that ends every line.
inline constexpr unsigned end_mark = 10;

/// What few entries of a line have: scripts, or something that is no letter in the letter's place.
struct LetterParts {
    LetterParts ();
    ~LetterParts ();
    LetterParts (const LetterParts&) = delete;
    LetterParts& operator= (const LetterParts&) = delete;

    std::unique_ptr<Line> sub; // either may be null
    std::unique_ptr<Line> sup;
    std::unique_ptr<Char> item; // a picture, a network or a line that stands here; else null
};

/// One entry of a line, a value that the line holds. Its size follows from its font, its code and
/// its parts; the line computes it.
struct StdChar {
    StdChar (unsigned new_code, unsigned new_font, unsigned new_color)
        : code (new_code), font (new_font), color (new_color) {}

    unsigned code;  // Latin-1; 10 ends the line; 0 where an item stands
    unsigned font;  // font key
    unsigned color; // below 256 an index of the colour map, else 0xRRGGBB00
    bool selected = false;
    bool foggy = false;                 // drawn faint
    std::unique_ptr<LetterParts> parts; // null for a letter without scripts

    const Line* sub () const { return parts ? parts->sub.get () : nullptr; }
    const Line* sup () const { return parts ? parts->sup.get () : nullptr; }
    Char* item () const { return parts ? parts->item.get () : nullptr; }
    bool is_letter () const { return !parts || !parts->item; }
    /// No scripts, no item.
    bool is_plain () const { return !parts; }
    bool is_blank () const { return !is_letter () || code == ' '; }
};

static_assert (sizeof (StdChar) <= 24);

/// The entry of something that is no letter.
StdChar item_entry (std::unique_ptr<Char> item, unsigned font, unsigned color);

/// True when both say the same, whatever their fonts and colours.
bool same_letter (const StdChar& a, const StdChar& b);

/// Letters of Latin-1 that a person types or pastes; the others are control codes.
constexpr bool can_be_typed (int code) {
    return (code >= 32 && code <= 126) || (code >= 160 && code <= 255);
}

} // namespace ostrand::document
