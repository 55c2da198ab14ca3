// GraphBase: what nodes, arcs and compartments share.
// Layer: document.
#pragma once
#include "document/char.h"
#include "document/document_state.h"
#include "document/line.h"

#include <memory>
#include <string_view>
#include <vector>

namespace ostrand::document {

class Arque;
class Network;
class Node;

/// Where an arc meets an object: the corner of its box and the half sizes, truncated.
struct Anchor {
    float x = 0;
    float y = 0;
    int half_w = 0;
    int half_h = 0;
};

/// A bounding box in network coordinates.
struct Extent {
    float x = 0;
    float y = 0;
    float right = 0;
    float bottom = 0;

    /// Grows so that `other` fits in.
    void join (const Extent& other);
};

/// A node, an arc or a compartment. Owns its texts. Every object knows the arcs that end on it, so
/// that none of them can outlive it: an arc is gone before its end is.
class GraphBase : public Char {
  public:
    GraphBase () = default;
    ~GraphBase () override;

    bool copy_mark = false;      // set while a selection is being copied or duplicated
    bool destroyed = false;      // destruction has begun
    bool hover = false;          // the pointer is over the object
    bool selectable = true;      // false: not picked up by the pointer
    unsigned char thickness = 2; // outline in pixels
    /// -3 none yet; means something only in a file and while one is written or read.
    mutable int id = -3;
    std::unique_ptr<Char> label;
    std::unique_ptr<Line> residu; // second, small text
    bool mark = false;            // scratch of graph walks
    unsigned char species_class = 0;

    /// The arcs of any network that end on this object, in no particular order. For those of one
    /// network in its order ask Network::arcs_to.
    const std::vector<Arque*>& incoming () const { return incoming_; }

    /// Takes a label, with its parent set as its kind asks (a nested network's is the network).
    virtual void take_label (std::unique_ptr<Char> new_label);
    void take_residu (std::unique_ptr<Line> new_residu);
    /// The label as a line, null when it is none.
    Line* label_line () const;
    /// The network that a node's label is, else null.
    Network* nested () const;

    /// The class's popup menu for a modifier row 0 to 3, null until a canvas filled it in.
    virtual Popup* menu (int row) const = 0;
    /// Where an arc of type `arc_type` that ends here meets the object.
    virtual Anchor anchor (unsigned arc_type) const = 0;
    /// Makes an arc from here to `dest`; only a Node answers, others give null.
    virtual Arque* connect (GraphBase& dest, unsigned arc_type);
    /// The label becomes a line of these letters in default_font and colour 0.
    virtual void set_label (std::string_view letters);
    /// The residu becomes a line of these letters in font 107 and colour 4.
    virtual void set_residu (std::string_view letters);
    /// Changes the kind; true when that changed something.
    virtual bool set_kind (int k) = 0;
    virtual unsigned get_color () const { return color; }
    virtual bool set_color (unsigned c);
    /// Removes the object and what hangs on it. An object that a network holds is gone after it.
    virtual void destroy () = 0;
    virtual Extent extent () const = 0;
    /// The network that holds the object; null when none does.
    virtual Network* owner_network () const = 0;

    bool is_selectable () const override { return selectable; }
    int get_ascent () const override { return get_height () / 2; }
    int get_descent () const override { return get_height () / 2; }

  protected:
    /// Sets the flag on the object and its two texts.
    void set_own_fog (bool on);
    /// In the destructor of a class: the arcs that end here go.
    void drop_incoming ();

  private:
    friend class Arque;
    std::vector<Arque*> incoming_;
};

} // namespace ostrand::document
