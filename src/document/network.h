// Network: the document, a set of nodes with their arcs, and compartments.
// Layer: document.
#pragma once
#include "document/compart.h"
#include "document/id_table.h"
#include "document/node.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace ostrand::document {

class LayoutIndex;
class NetworkListener;
class Settler;
struct MarkupReader;

/// Bits of a species' class.
namespace species_class {
inline constexpr unsigned consumed = 1;
inline constexpr unsigned produced = 2;
} // namespace species_class

/// A network. Owns its nodes and compartments; arcs hang from their source node. It may stand
/// wherever a Char can, so a node's label can be a network of its own. The order of nodes and of
/// compartments is that of files. The outermost network is a document; what belongs to the whole
/// document (multi_name, the listener) is kept there.
class Network : public Char {
  public:
    Network ();
    /// A record, the reader standing on its "N"; `version` is that of the text around it.
    Network (MarkupReader& reader, double version);
    ~Network () override;

    int align () const { return align_; }     // on a text line: 0 bottom, 1 centre, 2 top
    Node* holder () const { return holder_; } // the node whose label this network is, else null
    const std::vector<std::unique_ptr<Node>>& nodes () const { return nodes_; }
    const std::vector<std::unique_ptr<Compart>>& comps () const { return comps_; }
    int nb_nodes () const { return static_cast<int> (nodes_.size ()); }
    int nb_comp () const { return static_cast<int> (comps_.size ()); }
    /// Nothing is in it.
    bool is_empty () const { return nodes_.empty () && comps_.empty (); }

    bool set_align (int new_align);
    /// Where the network's origin stands on its canvas.
    bool set_origin (float new_x, float new_y);

    // The document.

    /// The network that this one is nested in at last, by labels of nodes or in lines of text; or
    /// itself.
    const Network& outermost () const;
    Network& outermost ();
    /// Name of the species that is displayed on multiple planes; empty for none. One a document.
    const std::string& multi_name () const;
    void set_multi_name (std::string name);
    /// That species is n's from now on: no other node of this network is marked, and multi_name is
    /// its name. False when it was so already.
    bool mark_multiple_conc (Node& n);
    /// Who is told when something leaves the document; null for nobody. One a document, not owning.
    void set_listener (NetworkListener* listener);
    NetworkListener* listener () const;

    // Building (network.cpp).

    Node& add_node (std::unique_ptr<Node> n);
    Compart& add_compart (std::unique_ptr<Compart> c);
    /// A new compartment labelled "Default"; width or height 0 means the network's + 30.
    Compart& add_compart (int new_shape, float new_x, float new_y, int new_width, int new_height);
    /// The node's compartment becomes the first one that holds its centre; true when that is
    /// another one than before.
    bool assign_compart (Node& n) const;
    /// Removal without destruction; the object leaves the document. Null when it is not here.
    std::unique_ptr<Node> detach_node (Node& n);
    std::unique_ptr<Compart> detach_compart (Compart& c);

    // Queries.

    /// In order over the nodes: the node, its arcs, what is in its nested network; then the
    /// compartments. Null if none has this id.
    GraphBase* find_by_id (int wanted) const;
    /// g is a node, an arc or a compartment of this network, not of a nested one. It may be gone
    /// already: it is only compared.
    bool is_in (const GraphBase* g) const;
    Node* node_of_label (const Char* wanted) const;
    /// All arcs, node by node.
    std::vector<Arque*> all_arcs () const;
    /// The arcs of this network that end on g, in the order of all_arcs.
    std::vector<Arque*> arcs_to (const GraphBase& g) const;
    int count_arcs () const { return arc_count_; }
    static int count_arcs_to (const Node& from, const GraphBase& to);
    static Arque* arc_from_to (const Node& from, const GraphBase& to);
    /// Index of a node of this network.
    std::size_t place_of (const Node& n) const;
    /// Where the walk over the network meets an arc of it: node by node, arc by arc.
    std::uint64_t walk_place (const Arque& a) const;

    /// The ids of all objects become those of a text that was written, no_id for objects that were
    /// not in it. Beside readers this is the only function that changes ids.
    void adopt_numbering (const Numbering& numbering);

    // Bulk. Each tells whether anything changed.
    bool clear_multi_conc ();
    bool translate (float dx, float dy); // nodes only

    // Edits (reactants.cpp).

    bool change_main_product (Arque& reaction, Node& n);
    bool swap_main_reactant (Arque& reaction, Node& n);
    bool can_detach (const Arque& a, const Node& n) const;
    /// n's part in a goes to a copy of n at (10, 10) from it, which is given.
    Node& clone_node_for_arc (Arque& a, Node& n);
    static bool can_fuse (const Node& a, const Node& b);
    /// All arcs of `gone`, and those that end on it, go to `keep`; `gone` is no more.
    void fuse_nodes (Node& keep, Node& gone);

    // Selections (selection.cpp).

    /// Copies the nodes and the arcs among them, moved by (10, 10); `chosen` becomes the copies.
    void duplicate_selection (std::vector<Node*>& chosen);
    /// Native text of the selected nodes and the arcs among them.
    void selection_sprint (PrintState& to, const std::vector<Node*>& chosen) const;
    /// Merges a text to the right of the network: what it holds moves over here. Gives the husk it
    /// came in, empty now; null when the text is no network.
    std::unique_ptr<Network> insert_text (std::string_view text);
    /// The same for a network that was read already.
    void insert_network (Network& other);
    /// Moves all so that nothing lies left of or above the origin, and the origin the other way;
    /// true when something moved.
    bool normalize_origin ();

    // Compartments, species, search, walks (compartments.cpp, shared_nodes.cpp, find.cpp,
    // walks.cpp).

    /// Tells of overlaps, orders compartments that hold one another, and finds each node's
    /// compartment; true when the order or a node's compartment changed.
    bool check_compartments ();
    /// Finds which nodes are the same species; true when a type, a display mark or a master
    /// changed.
    bool update_shared_nodes ();
    /// Finds masters and clones, and leaves types and display marks as they are; true when a master
    /// changed.
    bool find_masters ();
    /// What becomes of each species: the bits of species_class, by node; a clone has its master's.
    /// Brings sharing up to date first.
    std::unordered_map<const Node*, unsigned> classify_species ();
    /// Fill of the molecules that are only consumed, only produced, both; true when anything
    /// changed, sharing included.
    bool color_species (unsigned input, unsigned output, unsigned internal);
    /// Highlights the nodes whose label holds the pattern; gives their number.
    int find_nodes (const Line& pattern);
    Node* find_next (bool forward);
    void clear_find ();
    const std::vector<Node*>& find_hits () const { return find_hits_; }
    int find_index () const { return find_index_; } // current hit, -1 none
    /// Highlights all nodes of n's species; gives their number, 0 without a label, -1 when n was
    /// highlighted, which clears the marks only.
    int mark_same_species (Node& n);
    /// Every node that n reaches gets its distance as residu.
    void distances_from (Node& n);
    /// The nodes and arcs that hang together with n: nodes in their order, then arcs in theirs.
    std::vector<GraphBase*> mark_connected (Node& n) const;

    // Layout (layout.cpp). What is painted, hit and measured is what the last layout made.

    /// Brings places and sizes up to date of whatever changed since the last one, and of what
    /// depends on it.
    void layout ();
    /// Nothing changed since the last layout.
    bool is_laid_out () const;
    bool align_node (Node& n, bool relayout, bool snap);
    bool align_all ();
    void align_around (Node& n);
    /// Brings the network, all that is nested in it included, to what a reader of its native text
    /// would get, and lays it out. Objects stay the same, but for arcs that no text can hold. Ids
    /// stay too (settle.cpp).
    void settle ();

    bool set_fog (bool on) override;
    std::unique_ptr<Char> clone (Char* new_parent) const override;
    /// A deep copy as a Network, of a document with its multi_name.
    std::unique_ptr<Network> copy (Char* new_parent) const;
    CharKind kind () const override { return CharKind::network; }
    float get_width () const override;
    int get_height () const override;
    int get_ascent () const override;
    int get_descent () const override;
    void lay_out () override;
    void paint (PaintDevice& device, const PaintStyle& style, float left,
                float top) const override; // paint_network.cpp
    /// Paints all with the network's origin at (left, top), wherever it stands on its canvas.
    void paint_contents (PaintDevice& device, const PaintStyle& style, float left, float top) const;
    void sprint (PrintState& to, float dx, float dy) const override;
    void fprint (PrintState& to, int depth) const override;
    bool equals (const Char& other) const override;
    bool add_identity (Identity& identity) const override;
    Hit find_at (float px, float py, const HitQuery& query) override; // hit_test.cpp
    void content_changed () override {}

  private:
    friend class Arque;
    friend class GraphBase;
    friend class LayoutPass;
    friend class NetworkReader;
    friend class Node;
    friend class Settler;

    /// What waits for the next layout.
    struct Notes {
        bool everything = true; // a new network, or one that was measured with other fonts
        bool something_left = false;
        std::vector<GraphBase*> changed; // each once
    };

    void note (GraphBase& g);
    /// Forgets all that was known of its objects: they are others now.
    void start_anew ();
    /// What is around must know that there is something to lay out.
    void stir ();
    bool is_clean () const;
    /// An object of this network is new here.
    void take_in (GraphBase& g);
    void drop_objects ();
    /// An object leaves: the one road on which the listener and all that the network keeps about
    /// its objects learn of it. What hangs on it is told of, but stays on it.
    void leave (GraphBase& g);
    /// What the network keeps about an object goes.
    void forget (GraphBase& g);
    void forget_hit (const Node& n);
    void forget_id (const GraphBase& g) const;
    void forget_ids () const;
    void list_ids (const Network& inner) const;
    void list_id (GraphBase& g) const;
    /// Right and bottom edge of all that counts for the network's size.
    Point measured_size () const;
    float align_shift () const;
    LayoutIndex& index () const;
    void copy_objects (Network& to, CopyMap& map) const;
    void copy_arcs (CopyMap& map) const;
    void collect_arcs (std::vector<const Arque*>& arcs) const;
    void print (PrintState& to, float dx, float dy, int depth) const;
    void print_arcs (PrintState& to, int depth, bool is_alone) const;
    void renew_places () const;
    bool fog_from (std::vector<Arque*> arcs, bool on); // fog.cpp

    std::vector<std::unique_ptr<Node>> nodes_;
    std::vector<std::unique_ptr<Compart>> comps_;
    std::vector<Node*> find_hits_;
    int find_index_ = -1;
    int align_ = 2;
    Node* holder_ = nullptr;
    std::string multi_name_;              // of an outermost network
    NetworkListener* listener_ = nullptr; // likewise
    Notes notes_;
    unsigned laid_out_generation_ = 0; // metrics of the last layout; 0 none yet
    std::uint32_t passes_ = 0;         // of layouts, counted in steps of an arc's walk_
    float width_ = 0;                  // as of the last layout
    float height_ = 0;
    int arc_count_ = 0;
    mutable bool places_good_ = true;            // place_ of all nodes tells their index
    mutable bool ids_good_ = false;              // ids_ is what find_by_id finds
    mutable bool id_twice_ = false;              // two objects in ids_ had one id
    mutable IdTable ids_;                        // made when it is first asked
    mutable std::unique_ptr<LayoutIndex> index_; // likewise; of the last layout
};

/// The network that an object, a text or a letter's line stands in; null when none does.
const Network* network_around (const Char& c);

} // namespace ostrand::document
