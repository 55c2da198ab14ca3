// Where does a straight arc leave, end and carry its square?
#include "arrange/arc_place.h"

#include <cmath>

namespace ostrand::arrange {
namespace {

constexpr double vertical_slope = 100000;
constexpr double flat_slope = 1e-6;

/// The box that an arc meets: its half sizes are whole pixels.
struct Anchor {
    double left, top, half_width, half_height;
};

Anchor anchor_of (const DrawnNode& node) {
    return {node.at.x - node.half_width, node.at.y - node.half_height, std::trunc (node.half_width),
            std::trunc (node.half_height)};
}

/// A vertical line always crosses the lower edge of a box that has a width: the interval is open
/// by one at its right, which would miss the centre of a box 2 wide.
bool crosses_bottom (bool vertical, const Anchor& box, double x) {
    if (vertical && box.half_width + box.half_height > 0) return true;
    return x >= box.left && x < box.left + 2 * box.half_width - 1;
}

bool within (double value, double low, double high) { return value >= low && value <= high; }

double length_of (double dx, double dy) { return std::sqrt (dx * dx + dy * dy); }

} // namespace

ArcPlace arc_place (const DrawnNode& from, const DrawnNode& to, int side) {
    const double offset = side == 0 ? 0 : side == -2 ? parallel_offset : -parallel_offset;
    const Anchor s = anchor_of (from);
    const Anchor d = anchor_of (to);
    const double vx = to.at.x - from.at.x;
    const double vy = to.at.y - from.at.y;
    const bool vertical = vx == 0;
    double slope = vertical ? vertical_slope : vy / vx;
    if (slope == 0) slope = flat_slope;
    const double intercept = from.at.y - slope * from.at.x;
    const auto x_at = [&] (double y) { return vertical ? from.at.x : (y - intercept) / slope; };
    const auto y_at = [&] (double x) { return slope * x + intercept; };

    ArcPlace place;
    const double d_bottom = d.top + 2 * d.half_height;
    const double d_right = d.left + 2 * d.half_width;
    if (const double x = x_at (d.top);
        from.at.y < d.top + 2 * to.half_height && within (x, d.left, d_right)) {
        place.end = {x - offset, d.top};
    } else if (const double lower = x_at (d_bottom); crosses_bottom (vertical, d, lower)) {
        place.end = {lower + offset, d_bottom + 1};
    } else if (const double y = y_at (d.left); d.left > s.left && within (y, d.top, d_bottom)) {
        place.end = {d.left, y + offset};
    } else {
        place.end = {d_right, (vertical ? d.top : y_at (d_right)) - offset};
    }

    const double s_bottom = s.top + 2 * s.half_height;
    const double s_right = s.left + 2 * s.half_width;
    if (const double x = x_at (s.top); s.top > d.top && within (x, s.left, s_right)) {
        place.start = {x + offset, s.top};
    } else if (const double lower = x_at (s_bottom); crosses_bottom (vertical, s, lower)) {
        place.start = {lower - offset, s_bottom};
    } else if (const double y = y_at (s.left);
               s.left + s.half_width <= d.left + d.half_width || !within (y, s.top, s_bottom)) {
        place.start = {s_right, y_at (s_right) + offset};
    } else {
        place.start = {s.left, y - offset};
    }

    const double dx = place.end.x - place.start.x;
    const double dy = place.end.y - place.start.y;
    place.length = length_of (dx, dy);
    if (place.length == 0) {
        place.square = place.substrate_end = place.product_end = place.start;
        return place;
    }
    const double half_span = square_span / 2 / place.length;
    const double middle = (place.length - arrow_shortening) / place.length / 2;
    place.square = {place.start.x + middle * dx, place.start.y + middle * dy};
    place.substrate_end = {place.start.x + (0.5 - half_span) * dx,
                           place.start.y + (0.5 - half_span) * dy};
    place.product_end = {place.start.x + (0.5 + half_span) * dx,
                         place.start.y + (0.5 + half_span) * dy};
    return place;
}

Point leaving_point (const DrawnNode& node, Point target) {
    const double dx = target.x - node.at.x;
    const double dy = target.y - node.at.y;
    double t = 1;
    if (std::abs (dx) > node.half_width) t = node.half_width / std::abs (dx);
    if (std::abs (dy) * t > node.half_height) t = node.half_height / std::abs (dy);
    return {node.at.x + t * dx, node.at.y + t * dy};
}

} // namespace ostrand::arrange
