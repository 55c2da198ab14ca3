// What does each thing cost, alone and beside another?
#include "arrange/field.h"

#include <algorithm>
#include <cmath>

namespace ostrand::arrange {
namespace {

// Costs, in pixels of arc.
constexpr double overlap_cost = 1500;     // of two nodes, or of a node on a square: must not be
constexpr double overlap_slope = 12;      // and by its depth, so that small steps lead out of it
constexpr double crowd_slope = 4;         // per pixel that lacks of a gap
constexpr double squares_cost = 150;      // two squares one on the other
constexpr double through_node_cost = 130; // an arc that runs over a node
constexpr double through_node_slope = 0.8;
constexpr double through_square_cost = 70;
constexpr double narrow_angle_cost = 40; // two arcs that leave a node almost together
constexpr double narrow_cosine = 0.94;   // about 20 degrees
constexpr double long_slope = 0.2;
constexpr double short_slope = 4;
constexpr double slant_cost = 9; // an arc that is neither upright nor level
constexpr double link_angle_cost = 25;
constexpr double least_link = 14;    // shorter, its head hides it
constexpr double line_clearance = 3; // of an arc beside a node
constexpr double misfit_cost = 1500; // of a node outside its compartment, or in a strange one
constexpr double misfit_slope = 12;

std::size_t at (int i) { return static_cast<std::size_t> (i); }

double length_of (double dx, double dy) { return std::sqrt (dx * dx + dy * dy); }

double cross (Point a, Point b, Point c) {
    return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

/// Two segments that cut each other in their insides.
bool cross_each_other (Point a, Point b, Point c, Point d) {
    const double c_side = cross (a, b, c);
    const double d_side = cross (a, b, d);
    if (c_side * d_side >= 0) return false;
    const double a_side = cross (c, d, a);
    const double b_side = cross (c, d, b);
    return a_side * b_side < 0;
}

/// Length of the part of a segment inside a box; 0 outside.
double length_inside (Point a, Point b, const Box& box) {
    double t0 = 0;
    double t1 = 1;
    const double dx = b.x - a.x;
    const double dy = b.y - a.y;
    const auto clip = [&] (double p, double q) {
        if (p == 0) return q >= 0;
        const double t = q / p;
        if (p < 0) {
            if (t > t1) return false;
            t0 = std::max (t0, t);
        } else {
            if (t < t0) return false;
            t1 = std::min (t1, t);
        }
        return true;
    };
    if (!clip (-dx, a.x - box.left) || !clip (dx, box.right - a.x) || !clip (-dy, a.y - box.top) ||
        !clip (dy, box.bottom - a.y) || t1 <= t0)
        return 0;
    return (t1 - t0) * length_of (dx, dy);
}

double distance_to_segment (Point p, Point a, Point b) {
    const double dx = b.x - a.x;
    const double dy = b.y - a.y;
    const double square = dx * dx + dy * dy;
    double t = square > 0 ? ((p.x - a.x) * dx + (p.y - a.y) * dy) / square : 0;
    t = std::clamp (t, 0.0, 1.0);
    return length_of (p.x - a.x - t * dx, p.y - a.y - t * dy);
}

/// Cost of two boxes that come nearer than `gap` on both axes: lack_x and lack_y are what is
/// missing to the gap. Nearer than `least` is as bad as an overlap.
double nearness (double lack_x, double lack_y, double gap, double least) {
    const double lack = std::min (lack_x, lack_y);
    if (lack <= 0) return 0;
    const double soft = gap - least;
    if (lack <= soft) return crowd_slope * lack;
    return overlap_cost + crowd_slope * soft + overlap_slope * (lack - soft);
}

} // namespace

double Field::pair (int a, int b) const {
    if (a > b) std::swap (a, b);
    const Kind ka = kind_of (a);
    const Kind kb = kind_of (b);
    if (ka == Kind::node) {
        if (kb == Kind::node) return node_node (a, b);
        if (kb == Kind::square) return node_square (a, b);
        return node_line (a, b);
    }
    if (ka == Kind::square) {
        if (kb == Kind::square) return square_square (a, b);
        return square_line (a, b);
    }
    return line_line (a, b);
}

double Field::node_node (int a, int b) const {
    const DrawnNode& p = drawing_.nodes[at (a)];
    const DrawnNode& q = drawing_.nodes[at (b)];
    if (p.fixed && q.fixed) return 0;
    return nearness (p.half_width + q.half_width + node_gap - std::abs (p.at.x - q.at.x),
                     p.half_height + q.half_height + node_gap - std::abs (p.at.y - q.at.y),
                     node_gap, least_node_gap);
}

double Field::node_square (int node, int square) const {
    const DrawnNode& p = drawing_.nodes[at (node)];
    const int r = square - first_square_;
    const Point q = arcs_[at (r)].square;
    const DrawnReaction& reaction = drawing_.reactions[at (r)];
    if (reaction.from == node || reaction.to == node) {
        const double reach = square_reach_[at (r)] + least_own_gap + 0.5;
        return nearness (p.half_width + reach - std::abs (p.at.x - q.x),
                         p.half_height + reach - std::abs (p.at.y - q.y), 0, 0);
    }
    const double reach = square_reach_[at (r)] + square_gap;
    return nearness (p.half_width + reach - std::abs (p.at.x - q.x),
                     p.half_height + reach - std::abs (p.at.y - q.y), square_gap, least_square_gap);
}

double Field::square_square (int a, int b) const {
    const Point p = arcs_[at (a - first_square_)].square;
    const Point q = arcs_[at (b - first_square_)].square;
    const double lack = square_size + 2 - std::max (std::abs (p.x - q.x), std::abs (p.y - q.y));
    return lack > 0 ? squares_cost + overlap_slope * lack : 0;
}

/// The line is an arc or a link of the node itself, or of a square of it.
bool Field::touches (int line, int node) const {
    if (line < first_link_) {
        const DrawnReaction& r = drawing_.reactions[at (line - first_arc_)];
        return r.from == node || r.to == node;
    }
    return drawing_.links[at (line - first_link_)].node == node;
}

double Field::node_line (int node, int line) const {
    if (touches (line, node)) return 0;
    const DrawnNode& p = drawing_.nodes[at (node)];
    const double w = p.half_width + line_clearance;
    const double h = p.half_height + line_clearance;
    const Segment& s = segment (line);
    // All corners on one side of the line: most are.
    const double dx = s.to.x - s.from.x;
    const double dy = s.to.y - s.from.y;
    if (std::abs (dx * (p.at.y - s.from.y) - dy * (p.at.x - s.from.x)) >=
        w * std::abs (dy) + h * std::abs (dx))
        return 0;
    const double inside =
        length_inside (s.from, s.to, {p.at.x - w, p.at.y - h, p.at.x + w, p.at.y + h});
    return inside > 0 ? wishes_.clarity * (through_node_cost + through_node_slope * inside) : 0;
}

double Field::square_line (int square, int line) const {
    const int r = square - first_square_;
    if (line < first_link_) {
        if (line - first_arc_ == r) return 0;
    } else {
        const DrawnLink& link = drawing_.links[at (line - first_link_)];
        if (link.reaction == r && link.end == LinkEnd::square) return 0;
    }
    const Segment& s = segment (line);
    const double lack =
        square_size / 2 + 2 - distance_to_segment (arcs_[at (r)].square, s.from, s.to);
    return lack > 0 ? wishes_.clarity * (through_square_cost + 4 * lack) : 0;
}

double Field::line_line (int a, int b) const {
    const Segment& s = segment (a);
    const Segment& t = segment (b);
    int shared = -1; // the node where both lines begin or end
    if (a < first_link_) {
        const DrawnReaction& p = drawing_.reactions[at (a - first_arc_)];
        if (b < first_link_) {
            const DrawnReaction& q = drawing_.reactions[at (b - first_arc_)];
            if (p.side != 0 &&
                ((p.from == q.from && p.to == q.to) || (p.from == q.to && p.to == q.from)))
                return 0;
            shared = p.from == q.from || p.from == q.to ? p.from
                     : p.to == q.from || p.to == q.to   ? p.to
                                                        : -1;
        } else {
            const DrawnLink& q = drawing_.links[at (b - first_link_)];
            if (q.reaction == a - first_arc_) return 0;
            if (p.from == q.node || p.to == q.node) shared = q.node;
        }
    } else {
        const DrawnLink& p = drawing_.links[at (a - first_link_)];
        const DrawnLink& q = drawing_.links[at (b - first_link_)];
        if (p.node == q.node) shared = p.node;
        if (p.reaction == q.reaction && p.end == q.end) return 0;
    }
    if (shared < 0)
        return cross_each_other (s.from, s.to, t.from, t.to) ? wishes_.clarity * crossing_cost : 0;
    // Directions away from the shared node: the far ends lie further from it.
    const Point n = drawing_.nodes[at (shared)].at;
    const auto away = [&] (const Segment& g) {
        const double to = (g.to.x - n.x) * (g.to.x - n.x) + (g.to.y - n.y) * (g.to.y - n.y);
        const double from =
            (g.from.x - n.x) * (g.from.x - n.x) + (g.from.y - n.y) * (g.from.y - n.y);
        return to > from ? Point{g.to.x - n.x, g.to.y - n.y}
                         : Point{g.from.x - n.x, g.from.y - n.y};
    };
    const Point u = away (s);
    const Point v = away (t);
    const double lengths = std::sqrt ((u.x * u.x + u.y * u.y) * (v.x * v.x + v.y * v.y));
    if (lengths <= 0) return 0;
    const double cosine = (u.x * v.x + u.y * v.y) / lengths;
    if (cosine <= narrow_cosine) return 0;
    return narrow_angle_cost * (cosine - narrow_cosine) / (1 - narrow_cosine);
}

double Field::alone (int element) const {
    switch (kind_of (element)) {
    case Kind::node: {
        const DrawnNode& node = drawing_.nodes[at (element)];
        const auto outside = [&] (const Box& box, double margin) {
            const double x = std::max ({0.0, box.left + node.half_width + margin - node.at.x,
                                        node.at.x + node.half_width + margin - box.right});
            const double y = std::max ({0.0, box.top + node.half_height + margin - node.at.y,
                                        node.at.y + node.half_height + margin - box.bottom});
            return x + y;
        };
        const double misfit = node.fixed ? 0 : wishes_.rooms.misfit (node);
        return wishes_.wall_weight * outside (wishes_.walls, 0) +
               (misfit > 0 ? misfit_cost + misfit_slope * misfit : 0);
    }
    case Kind::square: return 0;
    case Kind::arc: {
        const int r = element - first_arc_;
        const DrawnReaction& reaction = drawing_.reactions[at (r)];
        const DrawnNode& from = drawing_.nodes[at (reaction.from)];
        const DrawnNode& to = drawing_.nodes[at (reaction.to)];
        const double dx = to.at.x - from.at.x;
        const double dy = to.at.y - from.at.y;
        const double length = length_of (dx, dy);
        if (length < 1) return overlap_cost;
        // Length from box to box, negative where the boxes overlap.
        const double out_from = std::min (dx != 0 ? from.half_width / std::abs (dx) : 1e9,
                                          dy != 0 ? from.half_height / std::abs (dy) : 1e9);
        const double out_to = std::min (dx != 0 ? to.half_width / std::abs (dx) : 1e9,
                                        dy != 0 ? to.half_height / std::abs (dy) : 1e9);
        const double free = length * (1 - out_from - out_to);
        // Labels beside a level arc need its length.
        const double level = std::abs (dx) / length;
        const double ideal = std::max (
            reaction.ideal, level * (reaction.start_label.width + reaction.end_label.width + 30));
        double cost = free < ideal ? short_slope * (ideal - free) : long_slope * (free - ideal);
        if (free < least_arc) cost += overlap_slope * (least_arc - free);
        const double ax = std::abs (dx);
        const double ay = std::abs (dy);
        cost += slant_cost * std::min (ax, ay) / std::max (ax, ay);
        if (wishes_.flows[at (r)])
            cost += wishes_.flow_weight * 0.5 *
                    (1 - (dx * wishes_.flow.x + dy * wishes_.flow.y) / length);
        return cost;
    }
    case Kind::link: {
        const DrawnLink& link = drawing_.links[at (element - first_link_)];
        const Segment& s = segment (element);
        const DrawnNode& node = drawing_.nodes[at (link.node)];
        const ArcPlace& arc = arcs_[at (link.reaction)];
        const double dx = s.to.x - s.from.x;
        const double dy = s.to.y - s.from.y;
        const double length = length_of (dx, dy);
        double cost = length < ideal_link ? short_slope * (ideal_link - length)
                                          : long_slope * (length - ideal_link);
        if (length < least_link) cost += overlap_slope * (least_link - length);
        // The direction from the arc to the node against the direction of the arc: further
        // substrates come from behind, products leave before, modifiers stand beside.
        const double ax = arc.end.x - arc.start.x;
        const double ay = arc.end.y - arc.start.y;
        const double nx = node.at.x - s.to.x;
        const double ny = node.at.y - s.to.y;
        const double lengths = std::sqrt ((ax * ax + ay * ay) * (nx * nx + ny * ny));
        if (lengths > 0) {
            const double along = (ax * nx + ay * ny) / lengths;
            const double wanted = link.end == LinkEnd::square      ? 0.0
                                  : link.end == LinkEnd::substrate ? -0.45
                                                                   : 0.45;
            const double off = along - wanted;
            cost += link_angle_cost * off * off;
        }
        return cost;
    }
    }
    return 0;
}

} // namespace ostrand::arrange
