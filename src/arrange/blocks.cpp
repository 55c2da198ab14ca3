// Which place beside the others is the best for a box?
#include "arrange/blocks.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <optional>

namespace ostrand::arrange {
namespace {

constexpr double length_cost = 0.5;   // per pixel between boxes: long arcs cross others, too
constexpr double page_cost = 0.025;   // for each node and pixel of a square page of that size
constexpr double good_sides = 2;      // longer side / shorter one of a page
constexpr double long_page_cost = 60; // for each node and each more

std::size_t at (int i) { return static_cast<std::size_t> (i); }

Box together (const Box& a, const Box& b) {
    return {std::min (a.left, b.left), std::min (a.top, b.top), std::max (a.right, b.right),
            std::max (a.bottom, b.bottom)};
}

/// How a block comes to its new place: mirrored about the middle of its nodes first.
struct Way {
    bool level = false;   // left and right change
    bool upright = false; // upper and lower side change
    Point by;
};

class Joiner {
  public:
    Joiner (Drawing& drawing, std::vector<Block>& blocks, double gap)
        : drawing_ (drawing), blocks_ (blocks), gap_ (gap), block_of_ (drawing.nodes.size (), -1) {
        for (std::size_t b = 0; b < blocks.size (); ++b) {
            Box bounds{1e300, 1e300, -1e300, -1e300};
            for (const int n : blocks[b].nodes) {
                block_of_[at (n)] = static_cast<int> (b);
                const DrawnNode& node = drawing.nodes[at (n)];
                bounds =
                    together (bounds, {node.at.x - node.half_width, node.at.y - node.half_height,
                                       node.at.x + node.half_width, node.at.y + node.half_height});
            }
            contents_.push_back (bounds);
        }
        list_lines ();
    }

    void put_afresh () {
        stands_.assign (blocks_.size (), 0);
        std::size_t next = 0;
        for (std::size_t b = 1; b < blocks_.size (); ++b)
            if (area_of (b) > area_of (next)) next = b;
        for (std::size_t count = 0; count < blocks_.size (); ++count) {
            if (count > 0) next = best_joined ();
            put (next);
        }
    }

    void put_again () {
        stands_.assign (blocks_.size (), 1);
        for (std::size_t b = 0; b < blocks_.size (); ++b) {
            stands_[b] = 0;
            put (b);
        }
    }

  private:
    /// An arc between two nodes, or a link from a node to the middle between two others (`to` and
    /// `other`).
    struct Line {
        int from;
        int to;
        int other;
    };

    void list_lines () {
        lines_of_.resize (blocks_.size ());
        const auto add = [this] (const Line& line) {
            const std::array<int, 3> ends{block_of_[at (line.from)], block_of_[at (line.to)],
                                          block_of_[at (line.other)]};
            if (ends[0] == ends[1] && ends[0] == ends[2]) return;
            for (std::size_t i = 0; i < ends.size (); ++i) {
                const bool met = std::find (ends.begin (), ends.begin () + i, ends[i]) !=
                                 ends.begin () + static_cast<std::ptrdiff_t> (i);
                if (!met) lines_of_[at (ends[i])].push_back (line);
            }
        };
        for (const DrawnReaction& r : drawing_.reactions) add ({r.from, r.to, r.to});
        for (const DrawnLink& l : drawing_.links) {
            const DrawnReaction& r = drawing_.reactions[at (l.reaction)];
            add ({l.node, r.from, r.to});
        }
    }

    double area_of (std::size_t b) const {
        return blocks_[b].box.width () * blocks_[b].box.height ();
    }

    bool stands (int node) const { return stands_[at (block_of_[at (node)])] != 0; }

    /// Of the blocks that do not stand yet, the one with the most lines to those that do; the
    /// larger of equals.
    std::size_t best_joined () const {
        std::size_t best = blocks_.size ();
        std::pair<std::ptrdiff_t, double> most;
        for (std::size_t b = 0; b < blocks_.size (); ++b) {
            if (stands_[b]) continue;
            const auto lines = std::count_if (
                lines_of_[b].begin (), lines_of_[b].end (), [this] (const Line& line) {
                    return stands (line.from) || stands (line.to) || stands (line.other);
                });
            const std::pair<std::ptrdiff_t, double> score{lines, area_of (b)};
            if (best < blocks_.size () && score <= most) continue;
            best = b;
            most = score;
        }
        return best;
    }

    /// Puts a block to its best place beside those that stand.
    void put (std::size_t b) {
        std::optional<Box> page;
        for (std::size_t i = 0; i < blocks_.size (); ++i)
            if (stands_[i]) page = page ? together (*page, blocks_[i].box) : blocks_[i].box;
        if (page) {
            Way best;
            double best_cost = std::numeric_limits<double>::infinity ();
            for (const bool level : {false, true}) {
                for (const bool upright : {false, true}) {
                    const Point wanted = wanted_move (b, level, upright);
                    for (const Point& by : places_beside (b, wanted)) {
                        const Way way{level, upright, by};
                        const double cost = cost_of (b, way, *page);
                        if (cost >= best_cost) continue;
                        best = way;
                        best_cost = cost;
                    }
                }
            }
            apply (b, best);
        }
        stands_[b] = 1;
    }

    Point moved (std::size_t b, const Way& way, Point p) const {
        const Box& c = contents_[b];
        if (way.level) p.x = c.left + c.right - p.x;
        if (way.upright) p.y = c.top + c.bottom - p.y;
        return {p.x + way.by.x, p.y + way.by.y};
    }

    /// The move that would bring the ends of the block's lines together, the boxes left out.
    Point wanted_move (std::size_t b, bool level, bool upright) const {
        Point sum;
        double count = 0;
        const Way turned{level, upright, {}};
        for (const Line& line : lines_of_[b]) {
            for (const int inner : {line.from, line.to}) {
                const int outer = inner == line.from ? line.to : line.from;
                if (block_of_[at (inner)] != static_cast<int> (b) || !stands (outer)) continue;
                const Point p = moved (b, turned, drawing_.nodes[at (inner)].at);
                const Point q = drawing_.nodes[at (outer)].at;
                sum = {sum.x + q.x - p.x, sum.y + q.y - p.y};
                ++count;
            }
        }
        if (count == 0) return {};
        return {std::round (sum.x / count), std::round (sum.y / count)};
    }

    /// Moves of a block to each side of each that stands: flush with either end of it, at its
    /// middle, and where the lines want it; only those where nothing stands yet.
    std::vector<Point> places_beside (std::size_t b, Point wanted) const {
        const Box& box = blocks_[b].box;
        std::vector<Point> moves;
        for (std::size_t i = 0; i < blocks_.size (); ++i) {
            if (!stands_[i]) continue;
            const Box& other = blocks_[i].box;
            const std::array<double, 4> levels{
                other.left - box.left, other.right - box.right,
                std::round ((other.left + other.right - box.left - box.right) / 2),
                std::clamp (wanted.x, other.left - gap_ - box.right + 1,
                            other.right + gap_ - box.left - 1)};
            const std::array<double, 4> heights{
                other.top - box.top, other.bottom - box.bottom,
                std::round ((other.top + other.bottom - box.top - box.bottom) / 2),
                std::clamp (wanted.y, other.top - gap_ - box.bottom + 1,
                            other.bottom + gap_ - box.top - 1)};
            for (const double y : heights) {
                moves.push_back ({other.right + gap_ - box.left, y});
                moves.push_back ({other.left - gap_ - box.right, y});
            }
            for (const double x : levels) {
                moves.push_back ({x, other.bottom + gap_ - box.top});
                moves.push_back ({x, other.top - gap_ - box.bottom});
            }
        }
        std::erase_if (moves, [&] (const Point& by) {
            for (std::size_t i = 0; i < blocks_.size (); ++i) {
                const Box& other = blocks_[i].box;
                if (stands_[i] && box.left + by.x < other.right + gap_ &&
                    other.left < box.right + by.x + gap_ && box.top + by.y < other.bottom + gap_ &&
                    other.top < box.bottom + by.y + gap_)
                    return true;
            }
            return false;
        });
        return moves;
    }

    double cost_of (std::size_t b, const Way& way, const Box& page) const {
        const auto place = [&] (int node) {
            const Point p = drawing_.nodes[at (node)].at;
            return block_of_[at (node)] == static_cast<int> (b) ? moved (b, way, p) : p;
        };
        const auto there = [&] (int node) {
            return block_of_[at (node)] == static_cast<int> (b) || stands (node);
        };
        double cost = 0;
        for (const Line& line : lines_of_[b]) {
            if (!there (line.from) || !there (line.to) || !there (line.other)) continue;
            const Point p = place (line.from);
            const Point q = place (line.to);
            const Point r = place (line.other);
            cost += length_cost * std::hypot ((q.x + r.x) / 2 - p.x, (q.y + r.y) / 2 - p.y);
        }
        const Box& own = blocks_[b].box;
        const Box all = together (page, {own.left + way.by.x, own.top + way.by.y,
                                         own.right + way.by.x, own.bottom + way.by.y});
        const double sides = std::max (all.width () / all.height (), all.height () / all.width ());
        const auto nodes = static_cast<double> (drawing_.nodes.size ());
        return cost + nodes * (page_cost * std::sqrt (all.width () * all.height ()) +
                               long_page_cost * std::max (0.0, sides - good_sides));
    }

    void apply (std::size_t b, const Way& way) {
        for (const int n : blocks_[b].nodes)
            drawing_.nodes[at (n)].at = moved (b, way, drawing_.nodes[at (n)].at);
        for (Box* const box : {&blocks_[b].box, &contents_[b]})
            *box = {box->left + way.by.x, box->top + way.by.y, box->right + way.by.x,
                    box->bottom + way.by.y};
    }

    Drawing& drawing_;
    std::vector<Block>& blocks_;
    double gap_;
    std::vector<int> block_of_; // node -> block
    std::vector<Box> contents_; // of each block: around its nodes
    std::vector<std::vector<Line>> lines_of_;
    std::vector<char> stands_;
};

} // namespace

void Block::move (Drawing& drawing, double x, double y) {
    for (const int n : nodes) {
        Point& p = drawing.nodes[at (n)].at;
        p = {p.x + x, p.y + y};
    }
    box = {box.left + x, box.top + y, box.right + x, box.bottom + y};
}

void join_blocks (Drawing& drawing, std::vector<Block>& blocks, double gap, bool afresh) {
    if (blocks.size () < 2) return;
    Joiner joiner (drawing, blocks, gap);
    if (afresh) joiner.put_afresh ();
    joiner.put_again ();
}

} // namespace ostrand::arrange
