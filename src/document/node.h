// Node: a molecular species, an enzyme, a gene, a receptor.
// Layer: document.
#pragma once
#include "document/arque.h"
#include "document/graph_object.h"

#include <optional>
#include <unordered_map>

namespace ostrand::document {

class Compart;

// Node types: a shape group (type & ~3), bit 0 has a background, bit 1 is shared.
namespace node {
inline constexpr unsigned no_border = 0;
inline constexpr unsigned gene = 5;
inline constexpr unsigned protein = 9;
inline constexpr unsigned molecule = 13;
inline constexpr unsigned receptor = 17;
inline constexpr unsigned background_bit = 1;
inline constexpr unsigned shared_bit = 2;

inline constexpr unsigned gene_group = 4;
inline constexpr unsigned protein_group = 8;
inline constexpr unsigned molecule_group = 12;
inline constexpr unsigned receptor_group = 16;
} // namespace node

/// `highlight` of a node that is not highlighted, and of a hit of a search.
inline constexpr unsigned no_highlight = 255;
inline constexpr unsigned find_highlight = 239;

/// A node. `x`, `y` are its centre; `color` is that of outline and text. The network owns it; it
/// owns the arcs that start here.
class Node : public GraphBase {
  public:
    /// color 0, no font, no id. An empty text is a line of no letters; for a node without label
    /// pass nothing.
    Node (float new_x, float new_y, unsigned new_type, unsigned new_bg_color,
          std::optional<std::string_view> letters = std::nullopt);
    ~Node () override;

    Network* network = nullptr; // that holds the node; set by it
    Compart* compart = nullptr; // that holds the node's centre; null when none does
    unsigned bg_color;          // the fill, which get_color and set_color mean
    unsigned highlight = no_highlight;
    unsigned type;
    std::optional<std::string> user_data; // concentration text such as "10 uM"
    bool calyx_display = false;           // displayed in a simulation
    mutable bool multi_conc = false;      // the species displayed on multiple planes
    Node* path_prev = nullptr;            // scratch of the distance walk
    int path_dist = 0;

    const std::vector<std::unique_ptr<Arque>>& arcs () const { return arcs_; }
    int nb_arcs () const { return static_cast<int> (arcs_.size ()); }
    /// The first node of the same identity, null for that node itself and for one that is not
    /// shared.
    Node* master () const { return master_; }
    void set_master (Node* new_master);
    /// The nodes whose master this is, in no particular order.
    const std::vector<Node*>& clones () const { return clones_; }
    unsigned group () const { return type & ~3U; }
    bool is_shared () const { return (type & node::shared_bit) != 0; }

    /// The node gives one of its arcs away, or takes one at an index (the end when beyond).
    std::unique_ptr<Arque> take_arc (const Arque& arc);
    void add_arc (std::unique_ptr<Arque> arc, std::size_t place = static_cast<std::size_t> (-1));
    /// Index of an arc of this node; nb_arcs () when it is none.
    std::size_t place_of (const Arque& arc) const;

    /// Stores the concentration text; a shared node keeps its master and clones in step.
    void set_concentration (std::string_view text);
    /// Inverts calyx_display, on all nodes of the same species.
    void toggle_display ();
    /// True when an arc of the node says that it takes part in a reaction.
    bool is_reactant () const;
    /// extent joined with that of every arc of the network that touches the node, directly or by
    /// ending on an arc that does.
    Extent extent_with_arcs () const;

    void take_label (std::unique_ptr<Char> new_label) override;
    void set_fog (bool on) override;
    std::unique_ptr<Char> clone (Char* new_parent) const override; // without arcs
    CharKind kind () const override { return CharKind::node; }
    float get_width () const override;
    int get_height () const override;
    void paint (float left, float top, bool draw) override; // paint_node.cpp
    bool set_position (float new_x, float new_y) override;
    void sprint (PrintState& to, float dx, float dy) const override;
    void fprint (PrintState& to, int depth) const override;
    void text (std::string& out) const override;                  // the label's
    void print_plain (std::string& out) const override;           // the label's
    Char* find_at (float px, float py, HitPlace& place) override; // hit_test.cpp
    Popup* menu (int row) const override;
    Anchor anchor (unsigned arc_type) const override;
    Arque* connect (GraphBase& dest, unsigned arc_type) override;
    bool set_kind (int k) override;
    unsigned get_color () const override { return bg_color; }
    bool set_color (unsigned c) override;
    void destroy () override;
    Extent extent () const override;
    Network* owner_network () const override { return network; }

  private:
    friend class Arque;
    friend class Network;
    void print (PrintState& to, float dx, float dy, int depth) const;
    std::unique_ptr<Node>
    clone_objects (Char* new_parent, std::unordered_map<const GraphBase*, GraphBase*>& map) const;

    std::vector<std::unique_ptr<Arque>> arcs_;
    Node* master_ = nullptr;
    std::size_t clone_place_ = 0; // in master_->clones_
    std::vector<Node*> clones_;
    std::size_t place_ = 0; // in the network; good while the network says so
};

} // namespace ostrand::document
