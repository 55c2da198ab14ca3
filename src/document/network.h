// Network: the document, a set of nodes with their arcs, and compartments.
// Layer: document.
#pragma once
#include "document/compart.h"
#include "document/node.h"

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace ostrand::document {

struct MarkupReader;

/// From the objects of a network that is being copied to their copies.
using CopyMap = std::unordered_map<const GraphBase*, GraphBase*>;

/// A network. Owns its nodes and compartments; arcs hang from their source node. It may stand
/// wherever a Char can, so a node's label can be a network of its own. The order of nodes and of
/// compartments is that of files.
class Network : public Char {
  public:
    Network ();
    /// A record, the reader standing on its "N"; `version` is that of the text around it.
    Network (MarkupReader& reader, double version);
    ~Network () override;

    int align = 2;               // on a text line: 0 bottom, 1 centre, 2 top
    Node* under_mouse = nullptr; // node of a drag, which a hit test skips
    int find_index = -1;         // current hit, -1 none
    int clip_x = 0;              // visible window in network coordinates
    int clip_y = 0;
    int clip_w = 0;
    int clip_h = 0;
    Node* holder = nullptr; // the node whose label this network is, else null

    const std::vector<std::unique_ptr<Node>>& nodes () const { return nodes_; }
    const std::vector<std::unique_ptr<Compart>>& comps () const { return comps_; }
    int nb_nodes () const { return static_cast<int> (nodes_.size ()); }
    int nb_comp () const { return static_cast<int> (comps_.size ()); }
    const std::vector<Node*>& find_hits () const { return find_hits_; }
    /// Nothing is in it.
    bool is_empty () const { return nodes_.empty () && comps_.empty (); }
    /// The outermost of the networks whose nodes have this one for a label, or itself.
    const Network& outermost () const;

    // Building.
    Node& add_node (std::unique_ptr<Node> n);
    Compart& add_compart (std::unique_ptr<Compart> c);
    /// A new compartment labelled "Default"; width or height 0 means the network's + 30.
    Compart& add_compart (int new_shape, float new_x, float new_y, int new_width, int new_height);
    /// The node's compartment becomes the first one that holds its centre.
    void assign_compart (Node& n) const;
    /// Removal without destruction; null when it is not here.
    std::unique_ptr<Node> detach_node (const Node& n);
    std::unique_ptr<Compart> detach_compart (const Compart& c);

    // Queries.
    /// In order over the nodes: the node, its arcs, what is in its nested network; then the
    /// compartments. Null if none has this id.
    GraphBase* find_by_id (int wanted) const;
    /// g is a node, an arc or a compartment of this network, not of a nested one.
    bool is_in (const GraphBase* g) const;
    Node* node_of_label (const Char* wanted) const;
    /// All arcs, node by node.
    std::vector<Arque*> all_arcs () const;
    /// The arcs of this network that end on g, in the order of all_arcs.
    std::vector<Arque*> arcs_to (const GraphBase& g) const;
    int count_arcs () const;
    static int count_arcs_to (const Node& from, const GraphBase& to);
    static Arque* arc_from_to (const Node& from, const GraphBase& to);
    /// Index of a node of this network.
    std::size_t place_of (const Node& n) const;

    // Bulk.
    void clear_marks ();
    void clear_multi_conc ();
    void translate (float dx, float dy); // nodes only

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
    void selection_sprint (PrintState& to, const std::vector<Node*>& chosen);
    /// Merges a text to the right of the network: what it holds moves over here. Gives the husk it
    /// came in, empty now; null when the text is no network.
    std::unique_ptr<Network> insert_text (std::string_view text);
    /// The same for a network that was read already.
    void insert_network (Network& other);
    void normalize_origin ();

    // Compartments, species, search, walks (compartments.cpp, shared_nodes.cpp, find.cpp,
    // walks.cpp).
    void check_compartments ();
    /// Finds which nodes are the same species; true when a node's type changed.
    bool update_shared_nodes ();
    void classify_species ();
    /// Fill of the molecules that are only consumed, only produced, both.
    void color_species (unsigned input, unsigned output, unsigned internal);
    /// Highlights the nodes whose label holds the pattern; gives their number.
    int find_nodes (const Line& pattern);
    Node* find_next (bool forward);
    void clear_find ();
    /// Highlights all nodes of n's species; gives their number, 0 without a label, -1 when n was
    /// highlighted, which clears the marks only.
    int mark_same_species (Node& n);
    /// Every node that n reaches gets its distance as residu.
    void distances_from (Node& n);
    /// `mark` on all nodes and arcs that hang together with n.
    void mark_connected (Node& n);

    // Geometry, painting, hit test, alignment (their own files).
    /// Lays everything out, arcs again and again until nothing changes.
    void layout ();
    bool align_node (Node& n, bool relayout, bool snap);
    bool align_all ();
    void align_around (Node& n);

    void set_fog (bool on) override;
    std::unique_ptr<Char> clone (Char* new_parent) const override;
    /// A deep copy as a Network.
    std::unique_ptr<Network> copy (Char* new_parent) const;
    CharKind kind () const override { return CharKind::network; }
    float get_width () const override;
    int get_height () const override;
    int get_ascent () const override;
    int get_descent () const override;
    void paint (float left, float top, bool draw) override; // paint_network.cpp
    void sprint (PrintState& to, float dx, float dy) const override;
    void fprint (PrintState& to, int depth) const override;
    bool equals (const Char& other) const override;
    bool append_identity (std::string& identity) const override;
    Char* find_at (float px, float py, HitPlace& place) override; // hit_test.cpp

  private:
    friend class NetworkReader;
    friend class Node;
    void copy_objects (Network& to, CopyMap& map) const;
    void copy_arcs (CopyMap& map) const;
    void collect_arcs (std::vector<const Arque*>& arcs) const;
    void print (PrintState& to, float dx, float dy, int depth) const;
    void renew_places () const;
    void forget (const Node& n);

    std::vector<std::unique_ptr<Node>> nodes_;
    std::vector<std::unique_ptr<Compart>> comps_;
    std::vector<Node*> find_hits_;
    mutable bool places_good_ = true; // place_ of all nodes tells their index
    bool has_paths_ = false;          // path_prev of some node may be set
};

} // namespace ostrand::document
