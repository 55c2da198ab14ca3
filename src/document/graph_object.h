// GraphBase: what nodes, arcs and compartments share.
// Layer: document.
#pragma once
#include "document/char.h"
#include "document/document_state.h"
#include "document/line.h"
#include "document/numbering.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <unordered_map>
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

/// The arcs that end on an object, in no particular order: a chain that runs through the arcs.
class IncomingArcs {
  public:
    class iterator {
      public:
        using difference_type = std::ptrdiff_t;
        using value_type = Arque*;
        explicit iterator (Arque* arc = nullptr) : arc_ (arc) {}
        Arque* operator* () const { return arc_; }
        iterator& operator++ (); // arque.h
        iterator operator++ (int) {
            const iterator before = *this;
            ++*this;
            return before;
        }
        bool operator== (const iterator&) const = default;

      private:
        Arque* arc_;
    };

    bool empty () const { return first_ == nullptr; }
    std::size_t size () const { return count_; }
    Arque* front () const { return first_; }
    iterator begin () const { return iterator (first_); }
    iterator end () const { return iterator (); }

  private:
    friend class Arque;
    Arque* first_ = nullptr;
    std::uint32_t count_ = 0;
};

/// From the objects of a network that is being copied to their copies.
using CopyMap = std::unordered_map<const GraphBase*, GraphBase*>;

/// A node, an arc or a compartment. Owns its texts. Every object knows the arcs that end on it, so
/// that none of them can outlive it: an arc is gone before its end is.
class GraphBase : public Char {
  public:
    GraphBase () = default;
    ~GraphBase () override;

    unsigned color () const { return color_; }
    bool selectable () const { return selectable_; }        // false: not picked up by the pointer
    unsigned char thickness () const { return thickness_; } // outline in pixels
    /// no_id, or the number that the object had in a text: the one it was read from, or the one
    /// whose numbering was adopted. Writing gives numbers of its own.
    int id () const { return id_; }
    Char* label () const { return label_.get (); }
    Line* residu () const { return residu_.get (); } // second, small text
    /// Its removal has begun.
    bool destroyed () const { return destroyed_; }

    /// The arcs of any network that end on this object, in no particular order. For those of one
    /// network in its order ask Network::arcs_to.
    const IncomingArcs& incoming () const { return incoming_; }

    // Changes. Those that give a bool tell whether anything changed.

    /// Takes a label, with its parent set as its kind asks (a nested network's is the network). The
    /// old one leaves the document.
    virtual void take_label (std::unique_ptr<Char> new_label);
    void take_residu (std::unique_ptr<Line> new_residu);
    bool set_selectable (bool on);
    bool set_thickness (unsigned char pixels);
    /// For readers. The network that is asked for it finds the object by it.
    void set_id (int new_id);
    /// The colour of outline and text, of arc or of compartment, whatever set_color means.
    bool set_own_color (unsigned c);

    /// The label as a line, null when it is none.
    Line* label_line () const;
    /// The network that a node's label is, else null.
    Network* nested () const;
    /// All texts that are there: label, residu, of an arc the stoichiometries; the rest null.
    std::array<Char*, 4> texts () const;

    /// Where an arc of type `arc_type` that ends here meets the object.
    virtual Anchor anchor (unsigned arc_type) const = 0;
    /// Makes an arc from here to `dest`; only a Node answers, others give null.
    virtual Arque* connect (GraphBase& dest, unsigned arc_type);
    /// The label becomes a line of these letters in default_font and colour 0.
    virtual void set_label (std::string_view letters);
    /// The residu becomes a line of these letters in font 107 and colour 4.
    virtual void set_residu (std::string_view letters);
    /// Changes the kind; the kind that it has already changes nothing else either.
    virtual bool set_kind (int k) = 0;
    virtual unsigned get_color () const { return color_; }
    virtual bool set_color (unsigned c) { return set_own_color (c); }
    /// Removes the object and what hangs on it. An object that a network holds is gone after it.
    virtual void destroy () = 0;
    /// Where the object is painted.
    virtual Extent extent () const = 0;
    /// The network that holds the object; null when none does.
    virtual Network* owner_network () const = 0;

    bool set_fog (bool on) override;
    /// Fog of the object and its texts, without spreading to what hangs on it.
    bool set_own_fog (bool on);
    bool is_selectable () const override { return selectable_; }
    int get_ascent () const override { return get_height () / 2; }
    int get_descent () const override { return get_height () / 2; }
    void lay_out () override;
    void content_changed () override;

  protected:
    static constexpr std::uint32_t nowhere = 0xFFFFFFFF;

    /// Notes the object for the next layout of its network.
    void note ();
    /// In the destructor of a class: the arcs that end here go.
    void drop_incoming ();
    /// At the end of it: label and second text go while the object still knows what it is, since a
    /// network in them asks who is around it.
    void drop_texts ();
    /// A text goes from its place, and stays in the document.
    std::unique_ptr<Char> release_label ();
    std::unique_ptr<Line> release_residu ();
    void take_line (std::unique_ptr<Line>& slot, std::unique_ptr<Line> line);

    // In an order that leaves no holes.
    bool destroyed_ = false;
    bool goes_with_all_ = false; // with all of its network: nothing needs to be taken apart

  private:
    friend class Arque;
    friend class LayoutIndex;
    friend class LayoutPass;
    friend class Network;
    friend class Settler;

    bool selectable_ = true;
    unsigned char thickness_ = 2;

  protected:
    unsigned color_ = no_color;
    std::unique_ptr<Char> label_;
    std::unique_ptr<Line> residu_;

  private:
    IncomingArcs incoming_;
    int id_ = no_id;
    std::uint32_t note_place_ = nowhere;  // in what the network noted for its next layout
    std::uint32_t index_place_ = nowhere; // in the network's index of places
};

} // namespace ostrand::document
