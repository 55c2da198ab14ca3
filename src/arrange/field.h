// What a drawing costs: one sum of everything that makes it hard to read, kept up to date while
// nodes move. All costs are in "pixels of arc": one pixel of needless length costs one third.
// Layer: arrange, internal.
#pragma once
#include "arrange/arc_place.h"
#include "arrange/drawing.h"
#include "arrange/rooms.h"

#include <cstdint>
#include <span>
#include <vector>

namespace ostrand::arrange {

inline constexpr double node_gap = 12;  // between two nodes: a shadow reaches 6 beyond its node
inline constexpr double square_gap = 5; // between a square and a node that is not its own
// What must be kept in the end (settle.h):
inline constexpr double least_node_gap = 8;
inline constexpr double least_square_gap = 2;
inline constexpr double least_own_gap = 5; // between a square and the nodes at its arc's ends
inline constexpr double crossing_cost = 150;
inline constexpr double ideal_link = 22; // from a node to where its link ends

/// What a drawing is wanted to look like, besides what holds for all.
struct Wishes {
    Point flow{0, 1};         // unit vector: where reactions should lead
    double flow_weight = 20;  // cost of a reaction that runs straight against it
    std::vector<char> flows;  // reaction -> 1 if it should follow the flow (not on a cycle)
    Box walls;                // the room that the drawing should fill
    double wall_weight = 0.6; // per pixel outside
    double clarity = 1;       // factor of the costs of crossings and of arcs over nodes
    Rooms rooms;              // of the compartments; nodes may not leave theirs
};

/// A node's new place.
struct Shift {
    int node;
    Point to;
};

/// Nodes, squares, main arcs and links are its elements. Costs are those of elements alone and of
/// pairs; of the pairs only those that cost something are stored, so that what a trial takes away
/// is known without looking.
class Field {
  public:
    /// Looks at `drawing` (indexed), whose nodes it moves. Both must outlive the field.
    Field (Drawing& drawing, const Wishes& wishes);

    /// Costs of the whole drawing.
    double total () const;

    /// To be called when the wishes have changed.
    void wishes_changed ();

    /// Moves nodes and tells by how much the costs change; gives up with a value of at least
    /// `limit` as soon as the change cannot stay below it. `keep` or `undo` must follow.
    double change (std::span<const Shift> shifts, double limit);
    void keep ();
    void undo ();

    const ArcPlace& arc (int reaction) const { return arcs_[static_cast<std::size_t> (reaction)]; }
    /// Nodes that come nearer than the least gap to `node` if it stands at `place`; added to
    /// `found`.
    void nodes_in_the_way (int node, Point place, std::vector<int>& found) const;
    /// Comparisons made so far: the measure of work, the same on every machine.
    std::uint64_t work () const { return work_; }
    /// Length of a link and what it costs with others: how much would be won without it.
    double burden (int link) const;

  private:
    struct Segment {
        Point from;
        Point to;
    };
    enum class Kind : std::uint8_t { node, square, arc, link };
    struct SmallBox {
        float left, top, right, bottom;
    };
    struct Entry {
        SmallBox box;
        int element;
    };
    using Cells = std::vector<std::vector<Entry>>;
    struct PairCost {
        int other;
        double cost;
    };
    struct Saved { // of an element that is being tried elsewhere
        int element;
        SmallBox box;
        double alone;
    };
    struct SavedArc {
        int reaction;
        ArcPlace arc;
        double reach;
    };
    struct SavedLine { // arc or link
        int element;
        Segment segment;
    };
    struct TrialPair {
        int a, b;
        double cost;
    };

    Kind kind_of (int element) const {
        return element < first_square_ ? Kind::node
               : element < first_arc_  ? Kind::square
               : element < first_link_ ? Kind::arc
                                       : Kind::link;
    }
    const Segment& segment (int element) const {
        return segments_[static_cast<std::size_t> (element - first_arc_)];
    }
    void place_reaction (int reaction);
    void place_link (int link);
    SmallBox box_of (int element) const;
    template <typename Visit>
    void cells_of (int element, float margin, Visit visit) const;
    void insert (int element);
    void remove (int element);
    double around (int element, double limit);
    double around (int element, const Cells& cells, double limit);
    double alone (int element) const;
    double pair (int a, int b) const;
    double node_node (int a, int b) const;
    double node_square (int node, int square) const;
    double square_square (int a, int b) const;
    double node_line (int node, int line) const;
    double square_line (int square, int line) const;
    double line_line (int a, int b) const;
    bool touches (int line, int node) const;
    void collect (std::span<const Shift> shifts);
    void find_rigid (std::span<const Shift> shifts);
    double around_moved (std::size_t i, double limit);
    void swap_lines ();

    Drawing& drawing_;
    const Wishes& wishes_;
    int first_square_, first_arc_, first_link_, count_;
    std::vector<ArcPlace> arcs_;
    std::vector<double> square_reach_;         // half extent of the turned square
    std::vector<Segment> segments_;            // arcs, then links
    std::vector<SmallBox> boxes_;              // element -> what it covers
    std::vector<double> alone_;                // element -> its own cost
    std::vector<std::vector<PairCost>> pairs_; // element -> others with which it costs something
    Cells solid_cells_;                        // nodes and squares by where they stand
    Cells line_cells_;                         // arcs and links
    float cell_ = 150;
    float origin_x_ = 0, origin_y_ = 0;
    int columns_ = 1, rows_ = 1;
    std::vector<std::uint32_t> seen_; // element -> number of the last query that met it
    std::uint32_t query_ = 0;
    std::vector<int> near_; // elements of a cell that a query comes near
    std::uint64_t work_ = 0;

    // The trial that is under way.
    std::vector<Saved> saved_; // the elements it moves, nodes first
    std::vector<SavedArc> saved_arcs_;
    std::vector<SavedLine> saved_lines_;
    std::vector<Shift> before_;
    std::vector<TrialPair> trial_pairs_;
    std::vector<std::uint32_t> in_trial_;
    std::vector<char> rigid_; // of the saved elements, those that keep their places to each other
    std::vector<std::uint32_t> rigid_mark_; // element -> trial in which it was rigid
    std::size_t rigid_count_ = 0;
    std::uint32_t trial_ = 0;
};

} // namespace ostrand::arrange
