// Char: the base of what can stand in a line of text beside letters, and of what a network holds.
// Layer: document.
#pragma once
#include "document/identity.h"
#include "document/places.h"

#include <memory>
#include <string>

namespace ostrand::document {

class Char;
class GraphBase;
class Line;
class PaintDevice;
struct HitQuery;
struct PaintStyle;
struct PrintState;

/// Concrete classes, by the numbers that files and tables use. A letter is a value (StdChar) that
/// stands in a line; only its number is here.
enum class CharKind {
    std_char = 0,
    line = 1,
    picture = 2,
    compart = 3,
    arque = 4,
    node = 5,
    network = 6
};

/// What a hit test found.
struct Hit {
    Char* object = nullptr; // what was hit; for a letter the line that holds it; null for nothing
    Line* line = nullptr;   // the line of text that holds the point
    int letter = -1;        // the letter's index in that line; -1 when no letter was hit
    Char* owner = nullptr;  // the object whose text was hit
    float rel_x = 0;        // x of the point inside the letter
    Edge edge = Edge::none; // of a compartment, the edge that may be dragged from here

    explicit operator bool () const { return object != nullptr; }
    /// The kind of what was hit; std_char for a letter. There must have been a hit.
    CharKind kind () const;
};

/// One thing that is laid out, painted, written and compared. Whoever holds it in a unique_ptr owns
/// it; `parent` only looks. What a layout, an index or a writer depends on is changed by functions
/// that tell whether something changed, and that note it for the next layout.
class Char {
  public:
    Char () = default;
    Char (const Char&) = delete;
    Char& operator= (const Char&) = delete;
    virtual ~Char () = default;

    /// Position inside the parent; its meaning depends on the class.
    float x () const { return x_; }
    float y () const { return y_; }
    /// Drawn faint; left out of nothing else.
    bool foggy () const { return foggy_; }
    Char* parent () const { return parent_; }

    /// Sets `foggy` here and on what hangs on it; true when a flag changed.
    virtual bool set_fog (bool on);
    /// A deep copy whose parent is new_parent.
    virtual std::unique_ptr<Char> clone (Char* new_parent) const = 0;
    virtual CharKind kind () const = 0;
    /// Size in network pixels, by the fonts as they are measured now.
    virtual float get_width () const = 0;
    virtual int get_height () const = 0;
    virtual int get_ascent () const = 0;
    virtual int get_descent () const = 0;
    /// Brings the places of what is inside up to date, for the one who lays out what is around it.
    virtual void lay_out () = 0;
    /// Draws as it is laid out; (left, top) is where its parent's origin stands.
    virtual void paint (PaintDevice& device, const PaintStyle& style, float left,
                        float top) const = 0;
    /// Moves the object; false when it stays where it is.
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
    /// Takes in all that equals () compares; false when the object is equal to nothing, itself
    /// included.
    virtual bool add_identity (Identity& identity) const;
    /// What lies under a point relative to the parent. Changes nothing.
    virtual Hit find_at (float px, float py, const HitQuery& query) = 0;

    /// What is inside has another size, or may have: sizes are computed anew when they are asked
    /// for, and the network around lays the object out again.
    virtual void content_changed ();

    /// The nearest node, arc or compartment up the parents, this one included; null when there is
    /// none.
    GraphBase* find_object ();
    /// Likewise, with a line on standard error when there is none.
    GraphBase* get_object ();
    /// text () as a string of its own.
    std::string name () const;

  protected:
    /// For those who hold other Chars.
    static void adopt (Char& child, Char* parent) { child.parent_ = parent; }
    static void place (Char& child, float x, float y) {
        child.x_ = x;
        child.y_ = y;
    }

    // In an order that leaves no holes: there are very many of them.
    Char* parent_ = nullptr;
    float x_ = 0;
    float y_ = 0;
    bool foggy_ = false;

  public:
    bool selected = false; // painted so; nothing else depends on it
};

} // namespace ostrand::document
