// Is every node and every square free, and if not, where is the next free place?
#include "arrange/settle.h"

#include "arrange/field.h"

#include <algorithm>
#include <cmath>
#include <unordered_map>

namespace ostrand::arrange {
namespace {

constexpr double cell = 128; // of the grid that finds what is near
constexpr int rings = 48;    // of tried places around a node
constexpr double ring_step = 12;
constexpr double spread_factor = 1.15;
constexpr int most_spreads = 80;
constexpr int rounds = 4; // of moving before everything is spread
// More nodes in each other's way than these, and one in so many: looking for free places for each is
// in vain, and everything is spread at once, as long as that helps.
constexpr std::size_t few_unfit = 20;
constexpr std::size_t crowded_share = 6;
constexpr int most_in_vain = 16;

std::size_t at (int i) { return static_cast<std::size_t> (i); }

class Settler {
  public:
    Settler (Drawing& drawing, const Rooms& rooms)
        : drawing_ (drawing), rooms_ (rooms), squares_ (drawing.reactions.size ()) {}

    bool run () {
        const bool some_fixed = std::any_of (drawing_.nodes.begin (), drawing_.nodes.end (),
                                             [] (const DrawnNode& n) { return n.fixed; });
        std::size_t last_unfit = drawing_.nodes.size () + 1;
        int in_vain = 0;
        for (int spread = 0; spread <= most_spreads; ++spread) {
            for (DrawnNode& node : drawing_.nodes) {
                if (!node.fixed) node.at = {std::round (node.at.x), std::round (node.at.y)};
            }
            fill_grid ();
            if (!some_fixed && rooms_.empty () && in_vain < most_in_vain) {
                const std::size_t unfit = count_unfit ();
                if (unfit > few_unfit + drawing_.nodes.size () / crowded_share) {
                    in_vain = unfit < last_unfit ? 0 : in_vain + 1;
                    last_unfit = unfit;
                    spread_all ();
                    continue;
                }
            }
            for (int round = 0; round < rounds; ++round) {
                bool clear = true;
                bool moved = false;
                for (std::size_t n = 0; n < drawing_.nodes.size (); ++n) {
                    const int node = static_cast<int> (n);
                    if (fits (node)) continue;
                    clear = false;
                    if (!drawing_.nodes[n].fixed && move_to_free_place (node)) moved = true;
                }
                if (clear) return true;
                if (!moved) break;
            }
            if (some_fixed || !rooms_.empty ()) return all_fit ();
            spread_all ();
        }
        return false;
    }

  private:
    struct Square {
        Point at;
        double reach; // half extent of the turned square
        double length;
    };
    struct Cell {
        std::vector<int> nodes;
        std::vector<int> squares;
    };

    static std::int64_t key (double x, double y) {
        const auto column = static_cast<std::int64_t> (std::floor (x / cell));
        const auto row = static_cast<std::int64_t> (std::floor (y / cell));
        return (column << 32) ^ (row & 0xFFFFFFFF);
    }

    template <typename Visit>
    static void cells_of (const Box& box, Visit visit) {
        const double left = std::floor (box.left / cell) * cell;
        const double top = std::floor (box.top / cell) * cell;
        for (double y = top; y <= box.bottom; y += cell)
            for (double x = left; x <= box.right; x += cell) visit (key (x, y));
    }

    Box node_box (int node, double margin) const {
        const DrawnNode& n = drawing_.nodes[at (node)];
        return {n.at.x - n.half_width - margin, n.at.y - n.half_height - margin,
                n.at.x + n.half_width + margin, n.at.y + n.half_height + margin};
    }

    Box square_box (int reaction, double margin) const {
        const Square& s = squares_[at (reaction)];
        const double r = s.reach + margin;
        return {s.at.x - r, s.at.y - r, s.at.x + r, s.at.y + r};
    }

    static bool meet (const Box& a, const Box& b) {
        return a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
    }

    void place_square (int reaction) {
        const DrawnReaction& r = drawing_.reactions[at (reaction)];
        const ArcPlace arc =
            arc_place (drawing_.nodes[at (r.from)], drawing_.nodes[at (r.to)], r.side);
        const double dx = std::abs (arc.end.x - arc.start.x);
        const double dy = std::abs (arc.end.y - arc.start.y);
        squares_[at (reaction)] = {
            arc.square, square_size / 2 * std::max (1.0, (dx + dy) / std::max (arc.length, 1e-9)),
            arc.length};
    }

    void add_node (int node) {
        cells_of (node_box (node, 0), [&] (std::int64_t k) { grid_[k].nodes.push_back (node); });
    }
    void add_square (int reaction) {
        cells_of (square_box (reaction, 0),
                  [&] (std::int64_t k) { grid_[k].squares.push_back (reaction); });
    }
    void take_node (int node) {
        cells_of (node_box (node, 0), [&] (std::int64_t k) { std::erase (grid_[k].nodes, node); });
    }
    void take_square (int reaction) {
        cells_of (square_box (reaction, 0),
                  [&] (std::int64_t k) { std::erase (grid_[k].squares, reaction); });
    }

    void fill_grid () {
        grid_.clear ();
        for (std::size_t r = 0; r < drawing_.reactions.size (); ++r) {
            place_square (static_cast<int> (r));
            add_square (static_cast<int> (r));
        }
        for (std::size_t n = 0; n < drawing_.nodes.size (); ++n) add_node (static_cast<int> (n));
    }

    /// The node, as it stands in the drawing and in the grid, overlaps nothing, and neither do the
    /// squares of its arcs.
    bool fits (int node) const {
        const DrawnNode& n = drawing_.nodes[at (node)];
        return (n.fixed || rooms_.misfit (n) <= 0) && node_is_free (node) &&
               squares_are_free (node);
    }

    bool node_is_free (int node) const {
        const Box own = node_box (node, least_node_gap);
        const Box own_to_square = node_box (node, least_square_gap);
        bool free = true;
        cells_of (own, [&] (std::int64_t k) {
            const auto found = grid_.find (k);
            if (!free || found == grid_.end ()) return;
            for (const int other : found->second.nodes) {
                if (other != node && meet (own, node_box (other, 0))) free = false;
            }
            for (const int r : found->second.squares) {
                if (meet (own_to_square, square_box (r, 0))) free = false;
            }
        });
        return free;
    }

    bool squares_are_free (int node) const {
        for (const int r : drawing_.node_reactions[at (node)]) {
            const DrawnReaction& reaction = drawing_.reactions[at (r)];
            const Box own = square_box (r, least_square_gap);
            bool free = true;
            cells_of (own, [&] (std::int64_t k) {
                const auto found = grid_.find (k);
                if (!free || found == grid_.end ()) return;
                for (const int other : found->second.nodes) {
                    const bool end = other == reaction.from || other == reaction.to;
                    const Box box = end ? square_box (r, least_own_gap) : own;
                    if (meet (box, node_box (other, 0))) free = false;
                }
            });
            if (!free) return false;
            // The ends, too, keep off with their own gap.
            for (const int end : {reaction.from, reaction.to}) {
                if (meet (square_box (r, least_own_gap), node_box (end, 0))) return false;
            }
        }
        return true;
    }

    void take_away (int node) {
        take_node (node);
        for (const int r : drawing_.node_reactions[at (node)]) take_square (r);
    }
    void put_back (int node) {
        for (const int r : drawing_.node_reactions[at (node)]) {
            place_square (r);
            add_square (r);
        }
        add_node (node);
    }

    bool move_to_free_place (int node) {
        const Point before = drawing_.nodes[at (node)].at;
        // Many arcs make every try dear.
        const std::size_t arcs = drawing_.node_reactions[at (node)].size ();
        const int most = arcs > 40 ? rings / 4 : rings;
        // What stands outside its room looks around the nearest place inside.
        const Point middle = rooms_.nearest (drawing_.nodes[at (node)]);
        for (int ring = 1; ring <= most; ++ring) {
            const int places = std::min (8 * ring, 48);
            for (int i = 0; i < places; ++i) {
                // Around the border of a square ring, beginning at the right.
                const double turn = 4.0 * i / places;
                const int edge = static_cast<int> (turn);
                const double along = 2 * (turn - edge) - 1;
                const double r = ring * ring_step;
                const Point offset = edge == 0   ? Point{r, along * r}
                                     : edge == 1 ? Point{-along * r, r}
                                     : edge == 2 ? Point{-r, -along * r}
                                                 : Point{along * r, -r};
                take_away (node);
                drawing_.nodes[at (node)].at = {std::round (middle.x + offset.x),
                                                std::round (middle.y + offset.y)};
                put_back (node);
                if (fits (node)) return true;
            }
        }
        take_away (node);
        drawing_.nodes[at (node)].at = before;
        put_back (node);
        return false;
    }

    void spread_all () {
        for (DrawnNode& node : drawing_.nodes)
            node.at = {node.at.x * spread_factor, node.at.y * spread_factor};
    }

    std::size_t count_unfit () const {
        std::size_t unfit = 0;
        for (std::size_t n = 0; n < drawing_.nodes.size (); ++n)
            unfit += fits (static_cast<int> (n)) ? 0 : 1;
        return unfit;
    }

    bool all_fit () const { return count_unfit () == 0; }

    Drawing& drawing_;
    const Rooms& rooms_;
    std::vector<Square> squares_;
    std::unordered_map<std::int64_t, Cell> grid_;
};

} // namespace

bool settle (Drawing& drawing, const Rooms& rooms) { return Settler (drawing, rooms).run (); }

} // namespace ostrand::arrange
