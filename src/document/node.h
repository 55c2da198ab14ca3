// Node: a molecular species, an enzyme, a gene, a receptor.
// Layer: document.
#pragma once
#include "document/arque.h"
#include "document/graph_object.h"

#include <optional>
#include <span>
#include <string>

namespace ostrand::document {

class Compart;

// Node types: a shape group (type & ~3), bit 0 has a background, bit 1 is shared.
namespace node {
inline constexpr unsigned background_bit = 1;
inline constexpr unsigned shared_bit = 2;

inline constexpr unsigned no_border = 0;
inline constexpr unsigned gene = 5;
inline constexpr unsigned protein = 9;
inline constexpr unsigned molecule = 13;
inline constexpr unsigned receptor = 17;
inline constexpr unsigned shared_gene = gene | shared_bit;
inline constexpr unsigned shared_protein = protein | shared_bit;
inline constexpr unsigned shared_molecule = molecule | shared_bit;

inline constexpr unsigned gene_group = 4;
inline constexpr unsigned protein_group = 8;
inline constexpr unsigned molecule_group = 12;
inline constexpr unsigned receptor_group = 16;

/// Places in the menu of node types, which set_kind takes.
namespace kind {
inline constexpr int receptor = 0;
inline constexpr int gene = 1;
inline constexpr int shared_gene = 2;
inline constexpr int protein = 3;
inline constexpr int shared_protein = 4;
inline constexpr int molecule = 5;
inline constexpr int shared_molecule = 6;
inline constexpr int no_border = 7;
inline constexpr int with_state = 8;
inline constexpr int without_state = 9;
} // namespace kind
} // namespace node

/// `highlight` of a node that is not highlighted, and of a hit of a search.
inline constexpr unsigned no_highlight = 255;
inline constexpr unsigned find_highlight = 239;

/// A node. `x`, `y` are its centre; `color` is that of outline and text. The network owns it; it
/// owns the arcs that start here.
class Node : public GraphBase {
  public:
    /// color 0, no id. An empty text is a line of no letters; for a node without label pass
    /// nothing.
    Node (float new_x, float new_y, unsigned new_type, unsigned new_bg_color,
          std::optional<std::string_view> letters = std::nullopt);
    ~Node () override;

    unsigned highlight = no_highlight; // a mark of a search; only its picture depends on it

    Network* network () const { return network_; }   // that holds the node; null when none does
    Compart* compart () const { return compart_; }   // that holds the node's centre, or null
    unsigned bg_color () const { return bg_color_; } // the fill, which set_color means
    unsigned type () const { return type_; }
    unsigned group () const { return type_ & ~3U; }
    bool is_shared () const { return (type_ & node::shared_bit) != 0; }
    /// Concentration text such as "10 uM"; null for none.
    const std::string* user_data () const { return user_data_.get (); }
    bool calyx_display () const { return calyx_display_; } // displayed in a simulation
    bool multi_conc () const { return multi_conc_; } // the species displayed on multiple planes

    /// Written as the species displayed on multiple planes: marked so, or of the name that the
    /// document has for that species.
    bool is_on_many_planes () const;

    const std::vector<std::unique_ptr<Arque>>& arcs () const { return arcs_; }
    int nb_arcs () const { return static_cast<int> (arcs_.size ()); }
    /// The first node of the same identity, null for that node itself and for one that is not
    /// shared.
    Node* master () const { return sharing_ ? sharing_->master : nullptr; }
    /// The nodes whose master this is, in no particular order.
    std::span<Node* const> clones () const {
        return sharing_ ? std::span<Node* const> (sharing_->clones) : std::span<Node* const> ();
    }

    bool set_type (unsigned new_type);
    bool set_user_data (std::optional<std::string> text);
    bool set_calyx_display (bool on);
    bool set_multi_conc (bool on);
    bool set_master (Node* new_master);

    /// The node gives one of its arcs away, which leaves the document; null when it is none of its
    /// arcs.
    std::unique_ptr<Arque> take_arc (const Arque& arc);
    /// Takes an arc at an index, the end when beyond.
    void add_arc (std::unique_ptr<Arque> arc, std::size_t place = static_cast<std::size_t> (-1));
    /// Index of an arc of this node; nb_arcs () when it is none.
    std::size_t place_of (const Arque& arc) const;

    /// Stores the concentration text; a shared node keeps its master and clones in step.
    bool set_concentration (std::string_view text);
    /// Inverts calyx_display, on all nodes of the same species.
    void toggle_display ();
    /// True when an arc of the node says that it takes part in a reaction.
    bool is_reactant () const;
    /// extent joined with that of every arc of the network that touches the node, directly or by
    /// ending on an arc that does.
    Extent extent_with_arcs () const;

    void take_label (std::unique_ptr<Char> new_label) override;
    bool set_fog (bool on) override;
    std::unique_ptr<Char> clone (Char* new_parent) const override; // without arcs
    CharKind kind () const override { return CharKind::node; }
    float get_width () const override { return size ().width; }
    int get_height () const override { return size ().height; }
    /// The height that the node has as one of several of its species, or as the only one.
    int height_as (bool shared) const;
    void lay_out () override;
    void paint (PaintDevice& device, const PaintStyle& style, float left,
                float top) const override; // paint_node.cpp
    bool set_position (float new_x, float new_y) override;
    void sprint (PrintState& to, float dx, float dy) const override;
    void fprint (PrintState& to, int depth) const override;
    void text (std::string& out) const override;                      // the label's
    void print_plain (std::string& out) const override;               // the label's
    Hit find_at (float px, float py, const HitQuery& query) override; // hit_test.cpp
    Anchor anchor (unsigned arc_type) const override;
    Arque* connect (GraphBase& dest, unsigned arc_type) override;
    /// k  a place in the menu, node::kind
    bool set_kind (int k) override;
    unsigned get_color () const override { return bg_color_; }
    bool set_color (unsigned c) override;
    void destroy () override;
    Extent extent () const override;
    Network* owner_network () const override { return network_; }
    void content_changed () override;

  private:
    friend class Arque;
    friend class LayoutPass;
    friend class Network;
    friend class Settler;
    struct Size {
        float width;
        int height;
    };
    /// What ties a node to others of its species.
    struct Sharing {
        Node* master = nullptr;
        std::size_t place = 0; // among the master's clones
        std::vector<Node*> clones;
    };

    const Size& size () const;
    bool is_roomy (bool shared) const;
    Sharing& sharing ();
    void print (PrintState& to, float dx, float dy, int depth) const;
    std::unique_ptr<Node> clone_objects (Char* new_parent, CopyMap& map) const;
    std::unique_ptr<Arque> release_arc (const Arque& arc);
    void touch_arcs ();
    void destroy_arcs ();

    unsigned bg_color_;
    unsigned type_;
    mutable std::uint32_t place_ = 0; // in the network; good while the network says so
    Network* network_ = nullptr;
    Compart* compart_ = nullptr;
    std::vector<std::unique_ptr<Arque>> arcs_;
    std::unique_ptr<Sharing> sharing_; // null for most
    std::unique_ptr<std::string> user_data_;
    mutable Size size_{};
    mutable unsigned size_generation_ = 0; // of the metrics that size_ was made by; 0 never
    mutable bool arc_places_good_ = true;  // place_ of all arcs tells their index
    bool calyx_display_ = false;
    bool multi_conc_ = false;
};

} // namespace ostrand::document
