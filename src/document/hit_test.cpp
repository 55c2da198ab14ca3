// Which object lies under a point, and how a compartment follows the pointer.
#include "document/network.h"

#include <algorithm>
#include <cmath>

namespace ostrand::document {
namespace {

constexpr float node_margin = 4;
constexpr float arc_margin = 4;
constexpr float arc_square_distance = 50;
constexpr float residu_reach = 10; // of a residu's box above its base line
constexpr float grip_half = 5;     // along a rectangle's edge, from the edge's middle
constexpr float ellipse_grip_half = 10;
constexpr float ellipse_band = 12;
constexpr float least_compart_size = 30;

bool in_ellipse (float px, float py, float half_w, float half_h) {
    if (half_w <= 0 || half_h <= 0) return false;
    return px * px / (half_w * half_w) + py * py / (half_h * half_h) < 1;
}

bool between (float value, float low, float high) { return value >= low && value <= high; }

/// A text at its default place; its own x, y are the user's part.
Char* find_text (Char* text, Point place, float px, float py, HitPlace& hit) {
    return text ? text->find_at (px - place.x, py - place.y, hit) : nullptr;
}

/// Whether the point is on the ring of an ellipse, and on which of its grips; (px, py) from the
/// centre.
bool on_ellipse (float px, float py, float half_w, float half_h, Edge& edge) {
    if (!in_ellipse (px, py, half_w, half_h) ||
        in_ellipse (px, py, half_w - ellipse_band, half_h - ellipse_band))
        return false;
    if (std::abs (py) <= ellipse_grip_half)
        edge = px > 0 ? Edge::right : Edge::left;
    else if (std::abs (px) <= ellipse_grip_half)
        edge = py > 0 ? Edge::bottom : Edge::top;
    return true;
}

/// The same for a rectangle; (px, py) from its corner.
bool on_rectangle (float px, float py, float w, float h, Edge& edge) {
    if (!between (px, -4, w + 4) || !between (py, -4, h + 4)) return false;
    const bool left = px <= 8;
    const bool right = px >= w - 8;
    const bool top = py <= 8;
    const bool bottom = py >= h - 8;
    if ((left || right) && std::abs (py - h / 2) <= grip_half)
        edge = left ? Edge::left : Edge::right;
    else if ((top || bottom) && std::abs (px - w / 2) <= grip_half)
        edge = top ? Edge::top : Edge::bottom;
    return left || right || top || bottom;
}

} // namespace

Char* Node::find_at (float px, float py, HitPlace& place) {
    if (residu && between (px, residu->x - 1, residu->x + residu->get_width () + 1) &&
        between (py, residu->y - residu_reach - 1,
                 residu->y - residu_reach + static_cast<float> (residu->get_height ()) + 1)) {
        if (Char* const hit = residu->find_at (px, py, place)) {
            place.owner = this;
            return hit;
        }
        return selectable ? this : nullptr;
    }
    const float half_w = get_width () / 2;
    const float half_h = static_cast<float> (get_height ()) / 2;
    const bool inside =
        group () == node::molecule_group
            ? in_ellipse (px - x, py - y, half_w + node_margin, half_h + node_margin)
            : std::abs (px - x) <= half_w + node_margin &&
                  std::abs (py - y) <= half_h + node_margin;
    if (!inside || !selectable) return nullptr;
    if (label) {
        if (Char* const hit = label->find_at (px - (x - half_w), py - (y - half_h), place)) {
            if (!nested ()) place.owner = this;
            return hit;
        }
    }
    return this;
}

Char* Arque::find_at (float px, float py, HitPlace& place) {
    const float square = line_a * line_a + line_b * line_b;
    const float offset = px * line_b - py * line_a + line_c;
    if (square > 0 && offset * offset / square < arc_square_distance &&
        between (px, std::min (start.x, end.x) - arc_margin,
                 std::max (start.x, end.x) + arc_margin) &&
        between (py, std::min (start.y, end.y) - arc_margin,
                 std::max (start.y, end.y) + arc_margin))
        return this;
    const DocumentState& state = document_state ();
    Char* hit = nullptr;
    if (state.show_kinetics) {
        hit = find_text (label.get (), label_pos, px, py, place);
        if (!hit) hit = find_text (residu.get (), residu_pos, px, py, place);
    }
    if (!hit && state.show_stoichiometry) {
        hit = find_text (stoech_src.get (), label_pos, px - 2, py - 2, place);
        if (!hit) hit = find_text (stoech_dest.get (), residu_pos, px - 2, py - 2, place);
    }
    if (hit) place.owner = this;
    return hit;
}

Char* Compart::find_at (float px, float py, HitPlace& place) {
    edge = Edge::none;
    const float w = get_width ();
    const auto h = static_cast<float> (get_height ());
    if (label) {
        if (Char* const hit = label->find_at (px - x, py - y, place)) {
            place.owner = this;
            return hit;
        }
    }
    const bool on_band = shape == shape::rectangle
                             ? on_rectangle (px - x, py - y, w, h, edge)
                             : on_ellipse (px - x - w / 2, py - y - h / 2, w / 2, h / 2, edge);
    return on_band ? this : nullptr;
}

bool Compart::drag (float dx, float dy) {
    const float least_w = label ? label->get_width () + 10 : least_compart_size;
    float new_x = x;
    float new_y = y;
    float new_w = width;
    float new_h = height;
    switch (edge) {
    case Edge::none:
        new_x += dx;
        new_y += dy;
        break;
    case Edge::left:
        new_w -= dx;
        new_x += dx;
        break;
    case Edge::right: new_w += dx; break;
    case Edge::top:
        new_h -= dy;
        new_y += dy;
        break;
    case Edge::bottom: new_h += dy; break;
    }
    const bool wide = edge == Edge::left || edge == Edge::right;
    const bool high = edge == Edge::top || edge == Edge::bottom;
    if ((wide && new_w < least_w) || (high && new_h < least_compart_size)) return false;
    x = new_x;
    y = new_y;
    width = new_w;
    height = new_h;
    mark_layout_dirty ();
    return true;
}

Char* Network::find_at (float px, float py, HitPlace& place) {
    const auto h = static_cast<float> (get_height ());
    const float at_x = px - x;
    const float at_y = py - y + (align == 1 ? h / 2 : align == 0 ? h : 0);
    for (const auto& n : nodes_) {
        if (n.get () == under_mouse) continue;
        if (Char* const hit = n->find_at (at_x, at_y, place)) return hit;
    }
    for (const auto& n : nodes_)
        for (const auto& arc : n->arcs ())
            if (Char* const hit = arc->find_at (at_x, at_y, place)) return hit;
    for (const auto& c : comps_)
        if (Char* const hit = c->find_at (at_x, at_y, place)) return hit;
    return nullptr;
}

} // namespace ostrand::document
