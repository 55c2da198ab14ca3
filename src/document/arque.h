// Arque: an arc of the network, from a node to a node or to another arc.
// Layer: document.
#pragma once
#include "document/arc_types.h"
#include "document/graph_object.h"

#include <vector>

namespace ostrand::document {

/// An arc. Its source node owns it; its ends are looked at, and the arc goes before they do.
/// `x`, `y` are the top left corner of the reaction mark. All geometry is in network coordinates
/// and made anew by compute_geometry; files keep only the texts' own offsets.
class Arque : public GraphBase {
  public:
    /// Made through Node::connect, with the defaults of every arc that is made anywhere.
    explicit Arque (unsigned new_type);
    ~Arque () override;

    unsigned type;
    Point mark_a;           // ends of the span of the reaction mark
    Point mark_b{-1.0F, 0}; // x is -1 until the geometry was computed once
    Point start;            // where the arc leaves the source
    Point end;              // where it meets the destination
    Point inner;            // for the cross bar
    Point head;             // where the head is drawn
    Point label_pos;        // default places of label and residu
    Point residu_pos;
    float angle = 0;  // degrees
    int side = 0;     // offset from the line of centres: 0 centred, 1, -1, 2, -2
    float line_a = 0; // the arc's line, a y - b x + c = 0
    float line_b = 0;
    float line_c = 0;
    std::unique_ptr<Line> stoech_src; // stoichiometries, may be null
    std::unique_ptr<Line> stoech_dest;

    Node* source () const { return source_; }
    GraphBase* dest () const { return dest_; }
    Node* dest_node () const; // null when the arc ends on something else
    Arque* dest_arc () const; // likewise
    /// The arc ends on another object from now on.
    void set_dest (GraphBase* new_dest);
    void take_stoech_src (std::unique_ptr<Line> line);
    void take_stoech_dest (std::unique_ptr<Line> line);

    /// Fills the default texts of an arc where they are missing or empty; true when the arc's type
    /// has such texts.
    bool kinetic_labels (bool stoichiometry);
    /// The numbers of stoech_src and stoech_dest; 1 for a missing field and for a text that is no
    /// number. A null pointer is skipped. True when one of the fields is there.
    bool stoichiometries (int* src, int* dst) const;
    /// The links of a main reaction by which further substrates and products end on it, in network
    /// order. True when there is one.
    bool arc_neighbours (std::vector<Arque*>& substrates, std::vector<Arque*>& products) const;
    /// The first catalysis that ends on this arc, in network order; null when there is none.
    Arque* first_catalysis () const;

    // Geometry (arc_geometry.cpp).
    /// End points, marks, head, angle and line from the places of both ends; sets `side` when
    /// parallel arcs ask for it, then the default places of the texts.
    void compute_geometry ();

    void set_fog (bool on) override;
    std::unique_ptr<Char> clone (Char* new_parent) const override;
    CharKind kind () const override { return CharKind::arque; }
    float get_width () const override { return is_reaction (type) ? 14.0F : 0.0F; }
    int get_height () const override { return is_reaction (type) ? 14 : 0; }
    void paint (float left, float top, bool draw) override; // paint_arc.cpp
    void sprint (PrintState& to, float dx, float dy) const override;
    void fprint (PrintState& to, int depth) const override;
    Char* find_at (float px, float py, HitPlace& place) override; // hit_test.cpp
    Popup* menu (int row) const override;
    Anchor anchor (unsigned arc_type) const override;
    bool set_kind (int k) override;
    void destroy () override;
    Extent extent () const override;
    Network* owner_network () const override;

    /// Removes these arcs and all that hang on them. Pointers to any of them are dead afterwards.
    static void destroy_all (const std::vector<Arque*>& arcs);

  private:
    friend class GraphBase;
    friend class Network;
    friend class Node;
    void unlink (); // dest_ becomes null and forgets the arc

    Node* source_ = nullptr;
    GraphBase* dest_ = nullptr;
    std::size_t incoming_place_ = 0; // in dest_->incoming_
};

} // namespace ostrand::document
