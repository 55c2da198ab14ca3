// Which object lies under a point.
#include "document/hit_test.h"

#include "document/layout_index.h"
#include "document/network.h"

#include <algorithm>
#include <cmath>

namespace ostrand::document {
namespace {

constexpr float arc_square_distance = 50;
constexpr float residu_reach = 10; // of a residu's box above its base line
constexpr float grip_half = 5;     // along a rectangle's edge, from the edge's middle
constexpr float ellipse_grip_half = 10;
constexpr float ellipse_band = 12;
constexpr float band_outside = 4; // of a rectangle's edge
constexpr float band_inside = 8;

bool in_ellipse (float px, float py, float half_w, float half_h) {
    if (half_w <= 0 || half_h <= 0) return false;
    return px * px / (half_w * half_w) + py * py / (half_h * half_h) < 1;
}

bool between (float value, float low, float high) { return value >= low && value <= high; }

/// A text at its default place; its own x, y are the user's part.
Hit find_text (Char* text, Point place, float px, float py, const HitQuery& query) {
    return text != nullptr ? text->find_at (px - place.x, py - place.y, query) : Hit{};
}

/// What a press on a compartment's outline would take hold of.
struct OutlineHit {
    bool is_on = false;
    Edge edge = Edge::none;
};

/// The ring of an ellipse and its grips; (px, py) from the centre.
OutlineHit on_ellipse (float px, float py, float half_w, float half_h) {
    if (!in_ellipse (px, py, half_w, half_h) ||
        in_ellipse (px, py, half_w - ellipse_band, half_h - ellipse_band)) {
        return {};
    }
    if (std::abs (py) <= ellipse_grip_half) return {true, px > 0 ? Edge::right : Edge::left};
    if (std::abs (px) <= ellipse_grip_half) return {true, py > 0 ? Edge::bottom : Edge::top};
    return {true, Edge::none};
}

/// The same for a rectangle; (px, py) from its corner.
OutlineHit on_rectangle (float px, float py, float w, float h) {
    if (!between (px, -band_outside, w + band_outside) ||
        !between (py, -band_outside, h + band_outside)) {
        return {};
    }
    const bool left = px <= band_inside;
    const bool right = px >= w - band_inside;
    const bool top = py <= band_inside;
    const bool bottom = py >= h - band_inside;
    if ((left || right) && std::abs (py - h / 2) <= grip_half) {
        return {true, left ? Edge::left : Edge::right};
    }
    if ((top || bottom) && std::abs (px - w / 2) <= grip_half) {
        return {true, top ? Edge::top : Edge::bottom};
    }
    return {left || right || top || bottom, Edge::none};
}

} // namespace

HitQuery hit_query_of_switches () {
    const DocumentState& state = document_state ();
    return {.kinetics = state.show_kinetics, .stoichiometry = state.show_stoichiometry};
}

Hit Node::find_at (float px, float py, const HitQuery& query) {
    if (residu_ &&
        between (px, residu_->x () - residu_margin,
                 residu_->x () + residu_->get_width () + residu_margin) &&
        between (py, residu_->y () - residu_reach - residu_margin,
                 residu_->y () - residu_reach + static_cast<float> (residu_->get_height ()) +
                     residu_margin)) {
        if (Hit hit = residu_->find_at (px, py, query)) {
            hit.owner = this;
            return hit;
        }
        return {.object = selectable () ? this : nullptr};
    }
    const float half_w = get_width () / 2;
    const float half_h = static_cast<float> (get_height ()) / 2;
    const bool inside =
        group () == node::molecule_group
            ? in_ellipse (px - x_, py - y_, half_w + node_margin, half_h + node_margin)
            : std::abs (px - x_) <= half_w + node_margin &&
                  std::abs (py - y_) <= half_h + node_margin;
    if (!inside || !selectable ()) return {};
    if (label_) {
        if (Hit hit = label_->find_at (px - (x_ - half_w), py - (y_ - half_h), query)) {
            if (nested () == nullptr) hit.owner = this;
            return hit;
        }
    }
    return {.object = this};
}

Hit Arque::find_at (float px, float py, const HitQuery& query) {
    const ArcGeometry& at = geometry_;
    const float square = at.line_a * at.line_a + at.line_b * at.line_b;
    const float offset = px * at.line_b - py * at.line_a + at.line_c;
    if (square > 0 && offset * offset / square < arc_square_distance &&
        between (px, std::min (at.start.x, at.end.x) - arc_margin,
                 std::max (at.start.x, at.end.x) + arc_margin) &&
        between (py, std::min (at.start.y, at.end.y) - arc_margin,
                 std::max (at.start.y, at.end.y) + arc_margin)) {
        return {.object = this};
    }
    Hit hit;
    if (query.kinetics) {
        hit = find_text (label_.get (), at.label_pos, px, py, query);
        if (!hit) hit = find_text (residu_.get (), at.residu_pos, px, py, query);
    }
    if (!hit && query.stoichiometry) {
        const float sx = px - stoichiometry_offset;
        const float sy = py - stoichiometry_offset;
        hit = find_text (stoech_src_.get (), at.label_pos, sx, sy, query);
        if (!hit) hit = find_text (stoech_dest_.get (), at.residu_pos, sx, sy, query);
    }
    if (hit) hit.owner = this;
    return hit;
}

Hit Compart::find_at (float px, float py, const HitQuery& query) {
    const float w = get_width ();
    const auto h = static_cast<float> (get_height ());
    if (label_) {
        if (Hit hit = label_->find_at (px - x_, py - y_, query)) {
            hit.owner = this;
            return hit;
        }
    }
    const OutlineHit outline = shape_ == shape::rectangle
                                   ? on_rectangle (px - x_, py - y_, w, h)
                                   : on_ellipse (px - x_ - w / 2, py - y_ - h / 2, w / 2, h / 2);
    if (!outline.is_on) return {};
    return {.object = this, .edge = outline.edge};
}

Hit Network::find_at (float px, float py, const HitQuery& query) {
    const float at_x = px - x_;
    const float at_y = py - y_ + align_shift ();
    std::vector<Node*> nodes;
    std::vector<Arque*> arcs;
    std::vector<GraphBase*> found;
    if (is_laid_out () && index ().near ({at_x, at_y, at_x, at_y}, found)) {
        for (GraphBase* const g : found) {
            if (g->kind () == CharKind::node) {
                nodes.push_back (static_cast<Node*> (g));
            } else {
                arcs.push_back (static_cast<Arque*> (g));
            }
        }
        std::ranges::sort (nodes, {}, [this] (const Node* n) { return place_of (*n); });
        std::ranges::sort (arcs, {}, [this] (const Arque* a) { return walk_place (*a); });
    } else {
        for (const auto& n : nodes_) nodes.push_back (n.get ());
        arcs = all_arcs ();
    }
    for (Node* const n : nodes) {
        if (n == query.skip) continue;
        if (const Hit hit = n->find_at (at_x, at_y, query)) return hit;
    }
    for (Arque* const a : arcs) {
        if (const Hit hit = a->find_at (at_x, at_y, query)) return hit;
    }
    for (const auto& c : comps_) {
        if (const Hit hit = c->find_at (at_x, at_y, query)) return hit;
    }
    return {};
}

} // namespace ostrand::document
