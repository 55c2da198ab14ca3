// Char: the base of all that can stand in a line of text or be drawn in a network.
// Layer: document.
#pragma once
#include "document/font.h"

#include <memory>
#include <string>

namespace ostrand::document {

class Char;
class Line;
struct PrintState;

/// Concrete classes, by the numbers that files and tables use.
enum class CharKind {
    std_char = 0,
    line = 1,
    picture = 2,
    compart = 3,
    arque = 4,
    node = 5,
    network = 6
};

/// What a hit test tells beside the object that was hit.
struct HitPlace {
    Line* line = nullptr;  // the line of text that holds the point
    Char* owner = nullptr; // the object whose text was hit
    float rel_x = 0;       // x of the point inside the letter that was hit
};

struct Point {
    float x = 0;
    float y = 0;
};

/// A key as the toolkit numbers it (X key symbols; control letters 1 to 26) with its shift state.
struct KeyPress {
    int key = 0;
    bool shift = false;
};

/// One thing that is laid out, painted, selected, written and compared. Whoever holds it in a
/// unique_ptr owns it; `parent` only looks.
class Char {
  public:
    explicit Char (unsigned new_font = no_font, unsigned new_color = no_color)
        : color (new_color), font (new_font) {}
    Char (const Char&) = delete;
    Char& operator= (const Char&) = delete;
    virtual ~Char () = default;

    // Cached sizes in network pixels; good only as long as their stamp says so, hence always asked
    // for by get_width () and so on. A Compart keeps its own size in width and height.
    mutable float width = 0;
    mutable float height = 0;
    mutable int ascent = 0;
    mutable int descent = 0;
    float x = 0; // position inside the parent; its meaning depends on the class
    float y = 0;
    unsigned color; // below 256 an index of the colour map, else 0xRRGGBB00
    unsigned font;  // font key
    bool selected = false;
    bool foggy = false; // drawn faint; left out of nothing else
    Char* parent = nullptr;

    virtual void set_fog (bool on) { foggy = on; }
    /// A deep copy whose `parent` is new_parent.
    virtual std::unique_ptr<Char> clone (Char* new_parent) const = 0;
    virtual CharKind kind () const = 0;
    virtual float get_width () const = 0;
    virtual int get_height () const = 0;
    virtual int get_ascent () const = 0;
    virtual int get_descent () const = 0;
    /// Lays out at (x, y), the base point of what is inside; draws on the current device as well
    /// when `draw` is true.
    virtual void paint (float left, float top, bool draw) = 0;
    /// True when the object wants to stay selected as a letter of a line.
    virtual bool set_selected (bool on) {
        selected = on;
        return false;
    }
    /// Handles a key at `cursor` and gives the cursor's new place; out_line becomes the line that
    /// handled it.
    virtual Char* key (KeyPress press, Char* cursor, Line*& out_line);
    /// Moves the object; false when it cannot be moved so.
    virtual bool set_position (float new_x, float new_y);
    virtual bool is_selectable () const { return false; }
    /// Native text for memory (clipboard, undo of labels): no line breaks, positions moved by
    /// (dx, dy).
    virtual void sprint (PrintState& to, float dx, float dy) const = 0;
    /// Native text for a file.
    /// depth  above 0 a record starts a new line with depth - 1 tabs; 0 at the margin, on the same
    ///        line; below 0 there are no line breaks at all
    virtual void fprint (PrintState& to, int depth) const = 0;
    /// Appends the plain name, with marks for scripts.
    virtual void text (std::string& out) const;
    /// The form inside XML attributes.
    virtual void xml_print (PrintState& to) const;
    /// Appends the form of model text and SBML names: xml_print without font and colour marks.
    virtual void print_plain (std::string& out) const;
    /// True when both say the same, whatever their fonts, colours and places.
    virtual bool equals (const Char& other) const;
    /// Appends a key that is the same for two objects exactly when they are equal; false when the
    /// object is equal to nothing, itself included.
    virtual bool append_identity (std::string& identity) const;
    /// The object at a point relative to the parent, or null.
    virtual Char* find_at (float px, float py, HitPlace& place);
    virtual bool is_blank () const { return true; }

    /// The nearest node, arc or compartment up the parents, this one included. Null, with a line on
    /// standard error, when there is none.
    Char* get_object ();
    /// text () as a string of its own.
    std::string name () const;

  protected:
    // Counts of mark_layout_dirty at which the cached sizes were made; 0 never.
    mutable unsigned width_stamp = 0;
    mutable unsigned height_stamp = 0;
    mutable unsigned ascent_stamp = 0;
    mutable unsigned descent_stamp = 0;
};

} // namespace ostrand::document
