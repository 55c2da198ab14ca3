// The plain layout, step by step.
#include "document/plain_layout.h"

#include "document/numbers.h"

#include <cmath>

namespace ostrand::testing {
namespace {

using namespace document;

struct Box {
    double left;
    double top;
    double half_w;
    double half_h;
    double center_x;
    double center_y;
    double height;
    double right () const { return left + 2 * half_w; }
    double bottom () const { return top + 2 * half_h; }
};

Point point (double x, double y) { return {static_cast<float> (x), static_cast<float> (y)}; }

std::vector<const Arque*> arcs_between (const Node& from, const Node& to) {
    std::vector<const Arque*> found;
    for (const auto& b : from.arcs ()) {
        if (b->dest () == &to) found.push_back (b.get ());
    }
    return found;
}

double width_of (const Char* text) { return text == nullptr ? 0.0 : text->get_width (); }

} // namespace

/// Looks at the arcs as they have their sides now.
void PlainLayout::choose_side (const Arque& a) {
    int& side = arcs_[&a].side;
    const Node* const to = a.dest_node ();
    if (side != 0 || to == nullptr || to->network () != &network_) return;
    bool parallel = false;
    for (const Arque* const b : arcs_between (*a.source (), *to)) {
        if (b == &a) continue;
        parallel = true;
        int& other = arcs_[b].side;
        if (side == -2) {
            other = 2;
        } else if (other != -2) {
            side = -2;
        } else {
            side = 2;
        }
    }
    if (parallel) return;
    for (const Arque* const b : arcs_between (*to, *a.source ())) {
        if (side == 1) {
            arcs_[b].side = -1;
        } else {
            side = arcs_[b].side == 1 ? -1 : 1;
        }
    }
}

Anchor PlainLayout::anchor_of (const GraphBase& g, unsigned arc_type) const {
    if (g.kind () != CharKind::arque) return g.anchor (arc_type);
    const auto found = arcs_.find (static_cast<const Arque*> (&g));
    if (found == arcs_.end ()) return g.anchor (arc_type);
    const PlainArc& arc = found->second;
    switch (arc_type >> 9 & 3U) {
    case 1: return {arc.geometry.mark_a.x, arc.geometry.mark_a.y, 0, 0};
    case 2: return {arc.geometry.mark_b.x, arc.geometry.mark_b.y, 0, 0};
    default: {
        const int half = is_reaction (found->first->type ()) ? 7 : 0;
        return {arc.x, arc.y, half, half};
    }
    }
}

void PlainLayout::compute (const Arque& a) {
    PlainArc& arc = arcs_[&a];
    ArcGeometry& at = arc.geometry;
    const auto box_of = [this, &a] (const GraphBase& g) {
        const Anchor anchor = anchor_of (g, a.type ());
        Box box{anchor.x,
                anchor.y,
                static_cast<double> (anchor.half_w),
                static_cast<double> (anchor.half_h),
                0,
                0,
                static_cast<double> (g.get_height ())};
        const bool is_node = g.kind () == CharKind::node;
        box.center_x = is_node ? g.x () : box.left + box.half_w;
        box.center_y = is_node ? g.y () : box.top + box.half_h;
        return box;
    };
    const double k = arc.side == 0 ? 0 : arc.side == -2 ? 8 : -8;
    const Box from = box_of (*a.source ());
    const Box to = box_of (*a.dest ());

    // The line of centres.
    const double vx = to.center_x - from.center_x;
    const double vy = to.center_y - from.center_y;
    const bool vertical = vx == 0;
    double slope = 100000;
    double angle = vy < 0 ? 270 : 90;
    if (!vertical) {
        slope = vy / vx;
        angle = std::atan (slope) * 57.29578 + (vx < 0 ? 180.0 : 0.0);
    }
    const double intercept = from.center_y - slope * from.center_x;
    if (slope == 0) slope = 1e-6;
    const auto x_at = [&] (double y) { return vertical ? from.center_x : (y - intercept) / slope; };
    const auto y_at = [&] (double x) { return slope * x + intercept; };
    const auto crosses_bottom = [&] (const Box& box, double x) {
        if (vertical && !(box.half_w == 0 && box.half_h == 0)) return true;
        return x >= box.left && x < box.right () - 1;
    };
    at.angle = static_cast<float> (angle);

    // Where it meets the destination.
    double x = x_at (to.top);
    double y = 0;
    if (from.center_y < to.top + to.height && x >= to.left && x <= to.right ()) {
        at.end = point (x - k, to.top);
    } else if (x = x_at (to.bottom ()); crosses_bottom (to, x)) {
        at.end = point (x + k, to.bottom () + 1);
    } else if (y = y_at (to.left); to.left > from.left && y >= to.top && y <= to.bottom ()) {
        at.end = point (to.left, y + k);
    } else {
        at.end = point (to.right (), (vertical ? to.top : y_at (to.right ())) - k);
    }

    // Where it leaves the source.
    if (x = x_at (from.top); from.top > to.top && x >= from.left && x <= from.right ()) {
        at.start = point (x + k, from.top);
    } else if (x = x_at (from.bottom ()); crosses_bottom (from, x)) {
        at.start = point (x - k, from.bottom ());
    } else if (y = y_at (from.left); from.left + from.half_w <= to.left + to.half_w ||
                                     y < from.top || y > from.bottom ()) {
        at.start = point (from.right (), y_at (from.right ()) + k);
    } else {
        at.start = point (from.left, y - k);
    }

    const double dx = static_cast<double> (at.end.x) - at.start.x;
    const double dy = static_cast<double> (at.end.y) - at.start.y;
    double length = std::sqrt (dx * dx + dy * dy);
    const bool is_point = length == 0;
    if (is_point) length = 0.0001;
    const Point origin = at.start;
    const auto along = [&] (double t) { return point (origin.x + t * dx, origin.y + t * dy); };
    at.mark_a = along (is_point ? -249999.5 : 0.5 - 25 / length);
    at.mark_b = along (is_point ? 250000.5 : 0.5 + 25 / length);
    at.inner = along (is_point ? -189999.0 : 1 - 19 / length);
    double t_end = (length - 5) / length;
    double t_head = 1;
    switch (a.type () >> 4 & 7U) {
    case 0:
        if (a.type () != 0x401) t_end = 1;
        break;
    case 2: t_end = t_head = 1 - 9 / length; break;
    case 3: t_end = t_head = 1 - 6 / length; break;
    case 4:
        t_end = 1 - 16 / length;
        t_head = 1 - 1 / length;
        break;
    case 5:
        t_end = 1 - 16 / length;
        t_head = 1 - 10 / length;
        break;
    default: break;
    }
    at.head = t_head == 1 ? at.end : along (t_head);
    if (t_end != 1) at.end = along (t_end);
    at.line_a = at.end.x - at.start.x;
    at.line_b = at.end.y - at.start.y;
    at.line_c = at.start.y * at.end.x - at.end.y * at.start.x;
    arc.x = at.start.x + (at.end.x - at.start.x - a.get_width ()) / 2;
    arc.y = at.start.y + (at.end.y - at.start.y - static_cast<float> (a.get_height ())) / 2;

    // Default places of texts, at the near end p and the far end e.
    const double ux = dx / length;
    const double uy = dy / length;
    const Point p = at.start;
    const Point e = at.end;
    const unsigned head = a.type () >> 4 & 7U;
    const bool upwards = e.y < p.y;
    const bool rightwards = p.x <= e.x;
    if (a.label () != nullptr || a.stoech_src () != nullptr) {
        const double w = a.label () != nullptr ? width_of (a.label ()) : width_of (a.stoech_src ());
        const Anchor target = anchor_of (*a.dest (), a.type ());
        if (head == 2 || head == 5) {
            at.label_pos = point (e.x > target.x ? target.x - w : target.x + 14.0,
                                  e.y > target.y ? target.y - 5.0 : target.y + 28.0);
        } else if (upwards && rightwards) {
            at.label_pos = point (p.x + 12.0 + ux * 11, p.y - 17.0 + ux * 28);
        } else if (upwards) {
            at.label_pos = point (p.x + 8.0 + w * ux * 1.4 * ux * ux, p.y - 10.0 + uy * 10);
        } else if (rightwards) {
            at.label_pos = point (p.x + 4.0 + ux * 20, p.y - 7.0 + uy * 25);
        } else {
            at.label_pos = point (p.x + 4.0 - w * ux * 1.3 * ux, p.y + 16.0 - ux * 3);
        }
    }
    const bool has_place = (a.type () & 0x100U) != 0 || a.type () == 48 || a.type () == 64;
    if (has_place && (a.residu () != nullptr || a.stoech_dest () != nullptr)) {
        const double w =
            a.residu () != nullptr ? width_of (a.residu ()) : width_of (a.stoech_dest ());
        if (upwards && rightwards) {
            at.residu_pos = point (e.x + 4.0 - w * ux * 1.3 * ux, e.y + 20.0 - ux * 3);
        } else if (upwards) {
            at.residu_pos = point (e.x + 4.0 - ux * 20, e.y - 6.0 - uy * 25);
        } else if (rightwards) {
            at.residu_pos = point (e.x - w * ux * 1.4 * ux, e.y - 6.0 - uy * 8);
        } else {
            at.residu_pos = point (e.x + 4.0 - ux * 11, e.y - 17.0 - ux * 32);
        }
    }
}

PlainLayout::PlainLayout (const Network& network) : network_ (network) {
    const std::vector<Arque*> all = network.all_arcs ();
    for (const Arque* const a : all) arcs_[a];
    bool changed = true;
    for (std::size_t walk = 0; changed && walk <= all.size () + 1; ++walk) {
        changed = false;
        for (const Arque* const a : all) {
            if (a->dest () == nullptr) continue;
            const ArcGeometry before = arcs_[a].geometry;
            const int side = arcs_[a].side;
            choose_side (*a);
            compute (*a);
            changed = changed || !(before == arcs_[a].geometry) || side != arcs_[a].side;
        }
    }
}

float PlainLayout::width () const {
    float right = 0;
    const auto take = [&right] (float at) { right = std::max (right, at); };
    for (const auto& n : network_.nodes ()) take (n->x () + n->get_width () / 2);
    for (const auto& [a, arc] : arcs_) {
        if (a->label () != nullptr) {
            take (arc.geometry.label_pos.x - 2 + a->label ()->x () + a->label ()->get_width ());
        }
        if (a->residu () != nullptr) {
            take (arc.geometry.residu_pos.x - 2 + a->residu ()->x () + a->residu ()->get_width ());
        }
    }
    for (const auto& c : network_.comps ()) take (c->x () + c->get_width ());
    return right;
}

int PlainLayout::height () const {
    float bottom = 0;
    const auto take = [&bottom] (float at) { bottom = std::max (bottom, at); };
    for (const auto& n : network_.nodes ()) {
        take (n->y () + static_cast<float> (n->get_height ()) / 2);
    }
    for (const auto& [a, arc] : arcs_) {
        if (a->label () != nullptr) {
            take (arc.geometry.label_pos.y - 3 + a->label ()->y () +
                  static_cast<float> (a->label ()->get_descent ()));
        }
        if (a->residu () != nullptr) {
            take (arc.geometry.residu_pos.y - 3 + a->residu ()->y () +
                  static_cast<float> (a->residu ()->get_descent ()));
        }
    }
    for (const auto& c : network_.comps ()) {
        take (c->y () + static_cast<float> (c->get_height ()));
    }
    return to_pixels (bottom);
}

} // namespace ostrand::testing
