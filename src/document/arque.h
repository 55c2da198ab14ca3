// Arque: an arc of the network, from a node to a node or to another arc.
// Layer: document.
#pragma once
#include "document/arc_types.h"
#include "document/graph_object.h"

#include <vector>

namespace ostrand::document {

struct NumberedArc;

/// Where an arc runs and carries its texts, in network coordinates. It follows from the places of
/// its ends; files keep only the texts' own offsets.
struct ArcGeometry {
    Point mark_a;           // ends of the span of the reaction mark
    Point mark_b{-1.0F, 0}; // x is -1 until the geometry was computed once
    Point start;            // where the arc leaves the source
    Point end;              // where it meets the destination
    Point inner;            // for the cross bar
    Point head;             // where the head is drawn
    Point label_pos;        // default places of label and residu; stoichiometries have the same
    Point residu_pos;
    float angle = 0;  // degrees
    float line_a = 0; // the arc's line is x line_b - y line_a + line_c = 0
    float line_b = 0;
    float line_c = 0;
    bool operator== (const ArcGeometry&) const = default;
};

/// Stoichiometries stand so far right of and below the places of label and residu.
inline constexpr float stoichiometry_offset = 2;

/// How far an arc stands beside the line of centres: 0 on it, 1 and -1 two opposite arcs, -2 and 2
/// two in one direction.
using ArcSide = int;

/// What a request for default labels came to.
struct DefaultLabels {
    bool handled = false; // the arc's type has such labels
    bool changed = false; // one was missing or empty and is filled now
};

/// An arc. Its source node owns it; its ends are looked at, and the arc goes before they do.
/// `x`, `y` are the top left corner of the reaction mark.
class Arque : public GraphBase {
  public:
    /// Made through Node::connect, with the defaults of every arc that is made anywhere.
    explicit Arque (unsigned new_type);
    ~Arque () override;

    unsigned type () const { return type_; }
    Node* source () const { return source_; }
    GraphBase* dest () const { return dest_; }
    Node* dest_node () const; // null when the arc ends on something else
    Arque* dest_arc () const; // likewise
    Line* stoech_src () const { return stoech_src_.get (); } // stoichiometries, may be null
    Line* stoech_dest () const { return stoech_dest_.get (); }
    /// As of the last layout. The side follows from the parallel arcs that are there and their
    /// order.
    const ArcGeometry& geometry () const { return geometry_; }
    ArcSide side () const { return side_; }

    /// The arc ends on another object from now on.
    void set_dest (GraphBase* new_dest);
    bool set_type (unsigned new_type);
    void take_label (std::unique_ptr<Char> new_label) override;
    void take_stoech_src (std::unique_ptr<Line> line);
    void take_stoech_dest (std::unique_ptr<Line> line);

    /// Fills the default texts of an arc where they are missing or empty.
    DefaultLabels kinetic_labels (bool stoichiometry);
    /// The numbers of stoech_src and stoech_dest; 1 for a missing field and for a text that is no
    /// number. A null pointer is skipped. True when one of the fields is there.
    bool stoichiometries (int* src, int* dst) const;
    /// The links of a main reaction by which further substrates and products end on it, in network
    /// order. True when there is one.
    bool arc_neighbours (std::vector<Arque*>& substrates, std::vector<Arque*>& products) const;
    /// The first catalysis that ends on this arc, in network order; null when there is none.
    Arque* first_catalysis () const;

    bool set_fog (bool on) override;
    std::unique_ptr<Char> clone (Char* new_parent) const override;
    CharKind kind () const override { return CharKind::arque; }
    float get_width () const override { return is_reaction (type_) ? 14.0F : 0.0F; }
    int get_height () const override { return is_reaction (type_) ? 14 : 0; }
    void paint (PaintDevice& device, const PaintStyle& style, float left,
                float top) const override; // paint_arc.cpp
    void sprint (PrintState& to, float dx, float dy) const override;
    void fprint (PrintState& to, int depth) const override;
    Hit find_at (float px, float py, const HitQuery& query) override; // hit_test.cpp
    Anchor anchor (unsigned arc_type) const override;
    /// k  the new type; an inhibition and an activation get the colours of their kind, others 0
    bool set_kind (int k) override;
    void destroy () override;
    Extent extent () const override;
    Network* owner_network () const override;

    /// Removes these arcs and all that hang on them. Pointers to any of them are dead afterwards.
    static void destroy_all (const std::vector<Arque*>& arcs);

  private:
    friend class GraphBase;
    friend class IncomingArcs::iterator;
    friend class LayoutPass;
    friend class Network;
    friend class Node;
    friend class Settler;
    void print (PrintState& to, const NumberedArc& numbered, int depth) const;
    void unlink ();           // dest_ becomes null and forgets the arc
    void compute_geometry (); // arc_geometry.cpp
    Extent extent_with (const Arque* catalysis) const;
    /// The arc's side is to be settled anew, with those of the arcs parallel to it.
    void note_side ();
    /// The arcs parallel to this one, which is about to go elsewhere, are centred until the next
    /// layout.
    void release_parallels () const;
    /// Links of the reaction that this catalysis ends on are as large as its label makes them.
    void note_links () const;
    bool fill_line (std::unique_ptr<Line>& field, std::string_view markup, unsigned font,
                    unsigned color);
    bool fill_label (std::string_view markup);

    ArcGeometry geometry_;
    std::unique_ptr<Line> stoech_src_;
    std::unique_ptr<Line> stoech_dest_;
    Node* source_ = nullptr;
    GraphBase* dest_ = nullptr;
    Arque* next_incoming_ = nullptr; // in the chain of dest_
    Arque* before_incoming_ = nullptr;
    mutable std::uint32_t place_ = 0; // among the source's arcs; good while the source says so
    unsigned type_;
    ArcSide side_ = 0;
    bool side_stale_ = true;
    std::uint32_t walk_ = 0; // how far which pass of a layout is with the arc
};

inline IncomingArcs::iterator& IncomingArcs::iterator::operator++ () {
    arc_ = arc_->next_incoming_;
    return *this;
}

} // namespace ostrand::document
