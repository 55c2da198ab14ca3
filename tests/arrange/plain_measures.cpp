#include "arrange/plain_measures.h"

#include "arrange/plain_crossings.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>

namespace ostrand::testing {
namespace {

using arrange::Box;
using arrange::Point;

struct Line {
    Point from;
    Point to;
    std::array<int, 2> ends; // nodes; squares are numbered behind the nodes
    int through = -1;        // the square in its middle
};

Box box_of (const arrange::NodePlace& node) {
    return {node.centre.x - node.size.width / 2, node.centre.y - node.size.height / 2,
            node.centre.x + node.size.width / 2, node.centre.y + node.size.height / 2};
}

bool overlap (const Box& a, const Box& b) {
    return a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
}

bool inside (const Box& inner, const Box& outer) {
    return inner.left >= outer.left && inner.right <= outer.right && inner.top >= outer.top &&
           inner.bottom <= outer.bottom;
}

/// The edge of a box on the way from its middle to a point.
Point edge (const Box& box, Point towards) {
    const Point middle{(box.left + box.right) / 2, (box.top + box.bottom) / 2};
    const double dx = towards.x - middle.x;
    const double dy = towards.y - middle.y;
    double t = 1;
    if (dx != 0) t = std::min (t, box.width () / 2 / std::abs (dx));
    if (dy != 0) t = std::min (t, box.height () / 2 / std::abs (dy));
    return {middle.x + t * dx, middle.y + t * dy};
}

/// All arcs as straight lines, between the edges of boxes. A link ends at the square, or 25 pixels
/// from the middle of the main arc.
std::vector<Line> lines_of (const arrange::Layout& layout) {
    std::vector<Line> lines;
    const int first_square = static_cast<int> (layout.nodes.size ());
    std::map<std::pair<int, int>, int> parallel;
    for (const auto& r : layout.reactions)
        ++parallel[std::minmax (r.substrates.at (0), r.products.at (0))];
    for (std::size_t i = 0; i < layout.reactions.size (); ++i) {
        const arrange::ReactionPlace& r = layout.reactions[i];
        const int square = first_square + static_cast<int> (i);
        const auto node = [&] (int n) -> const arrange::NodePlace& {
            return layout.nodes.at (static_cast<std::size_t> (n));
        };
        const int a = r.substrates.at (0);
        const int b = r.products.at (0);
        Point from = edge (box_of (node (a)), node (b).centre);
        Point to = edge (box_of (node (b)), node (a).centre);
        const double length = std::hypot (to.x - from.x, to.y - from.y);
        const double ux = length > 0 ? (to.x - from.x) / length : 0;
        const double uy = length > 0 ? (to.y - from.y) / length : 0;
        if (parallel[std::minmax (a, b)] > 1) {
            // Two arcs step aside: through their squares.
            const Point middle{(from.x + to.x) / 2, (from.y + to.y) / 2};
            const double off = (r.square.x - middle.x) * -uy + (r.square.y - middle.y) * ux;
            from = {from.x - uy * off, from.y + ux * off};
            to = {to.x - uy * off, to.y + ux * off};
        }
        lines.push_back ({from, to, {a, b}, square});
        const auto link = [&] (int n, double along) {
            if (n < 0) return;
            const Point end{r.square.x + ux * along, r.square.y + uy * along};
            lines.push_back ({edge (box_of (node (n)), end), end, {n, square}, -1});
        };
        for (std::size_t k = 1; k < r.substrates.size (); ++k) link (r.substrates[k], -25);
        for (std::size_t k = 1; k < r.products.size (); ++k) link (r.products[k], 25);
        for (const int n : r.modifiers) link (n, 0);
    }
    return lines;
}

bool share_end (const Line& a, const Line& b) {
    for (const int p : a.ends)
        for (const int q : b.ends)
            if (p == q) return true;
    const auto meets = [] (const Line& main, const Line& link) {
        return main.through >= 0 && (link.ends[0] == main.through || link.ends[1] == main.through);
    };
    return meets (a, b) || meets (b, a);
}

bool line_meets_box (Point a, Point b, const Box& box) {
    double t0 = 0;
    double t1 = 1;
    const std::array<std::pair<double, double>, 4> sides{
        std::pair{a.x - b.x, a.x - box.left}, std::pair{b.x - a.x, box.right - a.x},
        std::pair{a.y - b.y, a.y - box.top}, std::pair{b.y - a.y, box.bottom - a.y}};
    for (const auto& [p, q] : sides) {
        if (p == 0) {
            if (q < 0) return false;
        } else if (p < 0) {
            t0 = std::max (t0, q / p);
        } else {
            t1 = std::min (t1, q / p);
        }
    }
    return t1 > t0;
}

/// Corners of a turned square against a box: they overlap unless an axis parts them.
bool square_meets_box (Point middle, double ux, double uy, const Box& box) {
    const double half = 7;
    const double reach = half * (std::abs (ux) + std::abs (uy));
    if (middle.x + reach <= box.left || middle.x - reach >= box.right ||
        middle.y + reach <= box.top || middle.y - reach >= box.bottom)
        return false;
    const Point centre{(box.left + box.right) / 2, (box.top + box.bottom) / 2};
    for (const auto& [ax, ay] : {std::pair{ux, uy}, std::pair{-uy, ux}}) {
        const double apart = std::abs ((middle.x - centre.x) * ax + (middle.y - centre.y) * ay);
        if (apart >= half + box.width () / 2 * std::abs (ax) + box.height () / 2 * std::abs (ay))
            return false;
    }
    return true;
}

} // namespace

Measures measure (const arrange::Graph& graph, const arrange::Layout& layout) {
    Measures m;
    m.nodes = static_cast<int> (layout.nodes.size ());
    const Box page{0, 0, layout.page.width, layout.page.height};
    // Sorted by their left edges: only neighbours are compared.
    std::vector<std::size_t> order (layout.nodes.size ());
    std::vector<Box> boxes;
    double area = 0;
    for (std::size_t n = 0; n < layout.nodes.size (); ++n) {
        order[n] = n;
        boxes.push_back (box_of (layout.nodes[n]));
        area += boxes.back ().width () * boxes.back ().height ();
        if (!inside (boxes.back (), page)) ++m.off_page;
    }
    std::sort (order.begin (), order.end (),
               [&] (std::size_t a, std::size_t b) { return boxes[a].left < boxes[b].left; });
    for (std::size_t i = 0; i < order.size (); ++i) {
        for (std::size_t j = i + 1;
             j < order.size () && boxes[order[j]].left < boxes[order[i]].right; ++j)
            if (overlap (boxes[order[i]], boxes[order[j]])) ++m.overlaps;
    }
    const std::vector<Line> lines = lines_of (layout);
    std::vector<Line> mains;
    for (const Line& line : lines)
        if (line.through >= 0) mains.push_back (line);
    for (std::size_t r = 0; r < mains.size (); ++r) {
        const Point s = layout.reactions[r].square;
        const Line& line = mains[r];
        const double length = std::hypot (line.to.x - line.from.x, line.to.y - line.from.y);
        const double ux = length > 0 ? (line.to.x - line.from.x) / length : 1;
        const double uy = length > 0 ? (line.to.y - line.from.y) / length : 0;
        const bool hidden = std::any_of (boxes.begin (), boxes.end (), [&] (const Box& box) {
            return square_meets_box (s, ux, uy, box);
        });
        if (hidden) ++m.covered;
        for (std::size_t q = 0; q < r; ++q) {
            const Point o = layout.reactions[q].square;
            if (std::abs (s.x - o.x) < 14 && std::abs (s.y - o.y) < 14) ++m.square_overlaps;
        }
        area += 14 * 14;
    }
    for (std::size_t i = 0; i < lines.size (); ++i) {
        const Line& a = lines[i];
        for (std::size_t n = 0; n < boxes.size (); ++n) {
            const int node = static_cast<int> (n);
            if (node != a.ends[0] && node != a.ends[1] && line_meets_box (a.from, a.to, boxes[n]))
                ++m.through_nodes;
        }
        for (std::size_t j = 0; j < i; ++j)
            if (!share_end (a, lines[j]) && cut (a.from, a.to, lines[j].from, lines[j].to))
                ++m.crossings;
    }
    const auto holds = [&] (int outer, int inner) {
        for (std::size_t steps = 0; inner >= 0 && steps <= graph.compartments.size (); ++steps) {
            if (inner == outer) return true;
            inner = graph.compartments.at (static_cast<std::size_t> (inner)).parent;
        }
        return false;
    };
    for (std::size_t c = 0; c < layout.compartments.size (); ++c) {
        const Box& box = layout.compartments[c];
        if (box.width () <= 0) continue; // it holds nothing
        for (std::size_t n = 0; n < boxes.size (); ++n) {
            const bool mine = holds (static_cast<int> (c), layout.nodes[n].compartment);
            if (mine ? !inside (boxes[n], box) : overlap (boxes[n], box)) ++m.outside_box;
        }
        for (std::size_t d = 0; d < c; ++d) {
            const Box& other = layout.compartments[d];
            if (other.width () <= 0) continue;
            const bool good =
                holds (static_cast<int> (c), static_cast<int> (d))   ? inside (other, box)
                : holds (static_cast<int> (d), static_cast<int> (c)) ? inside (box, other)
                                                                     : !overlap (box, other);
            if (!good) ++m.box_faults;
        }
    }
    const double page_area = layout.page.width * layout.page.height;
    m.page_use = page_area > 0 ? area / page_area : 0;
    const double longer = std::max (layout.page.width, layout.page.height);
    const double shorter = std::min (layout.page.width, layout.page.height);
    m.sides = shorter > 0 ? longer / shorter : 1;
    return m;
}

} // namespace ostrand::testing
