// How an arc is painted.
#include "document/arque.h"
#include "document/paint_device.h"
#include "document/paint_style.h"

#include <cmath>

namespace ostrand::document {
namespace {

/// Painter of one arc, whose network stands at (left, top).
struct ArcPainter {
    const Arque& arc;
    const ArcGeometry& at;
    PaintDevice& device;
    float left;
    float top;
    float t;
    unsigned color;
    unsigned white;

    Point moved (Point p) const { return {p.x + left, p.y + top}; }

    void line (float length) const {
        device.set_color (color);
        device.set_line (1, LineStyle::solid);
        const bool longer = is_reversible (arc.type ()) && head_of (arc.type ()) == ArcHead::none;
        const Point from = moved (at.start);
        const TransformScope scope (device, from.x, from.y, at.angle);
        device.fill_rect (0, -t / 2, longer ? length + 5 : length, t);
    }

    void mark () const {
        const Point middle = moved ({(at.start.x + at.end.x) / 2, (at.start.y + at.end.y) / 2});
        const TransformScope scope (device, middle.x, middle.y, at.angle);
        device.set_color (color);
        device.fill_rect (-7, -7, 14, 14);
        if (14 - 2 * t <= 0) return;
        device.set_color (white);
        device.fill_rect (t - 7, t - 7, 14 - 2 * t, 14 - 2 * t);
    }

    void barbed (Point place, float angle) const {
        const Point tip = moved (place);
        const TransformScope scope (device, tip.x, tip.y, angle);
        device.set_color (color);
        device.arrow_head (14, 10, 1);
    }

    /// The circle touches what the arc meets, since the arc's end was drawn back for it.
    void circle (float length) const {
        const float along = 1 + 5 / length;
        const Point c = moved ({at.start.x + along * (at.end.x - at.start.x),
                                at.start.y + along * (at.end.y - at.start.y)});
        device.set_color (color);
        device.fill_ellipse (c.x + 1 - (t + 8) / 2, c.y - (t + 8) / 2, 6 + t, 6 + t, 16);
        device.set_color (white);
        device.fill_ellipse (c.x - 2, c.y - 3, 4, 4, 16);
    }

    void flat () const {
        const Point foot = moved (at.end);
        const TransformScope scope (device, foot.x, foot.y, at.angle + 90);
        device.set_color (color);
        device.fill_rect (-6.5F, 0, 12, t);
    }

    void triangle () const {
        const Point tip = moved (at.head);
        const TransformScope scope (device, tip.x, tip.y, at.angle);
        device.set_color (color);
        device.fill_triangle_head (16, 12, 0);
        device.set_color (white);
        device.fill_triangle_head (9, 4, -5);
    }

    void diamond () const {
        const Point corner = moved (at.head);
        const TransformScope scope (device, corner.x, corner.y, at.angle - 45);
        device.set_color (color);
        device.fill_rect (-4 - t / 2, -4 - t / 2, 7 + t, 7 + t);
        device.set_color (white);
        device.fill_rect (-3, -3, 5, 5);
    }

    void bar () const {
        const Point middle = moved (at.inner);
        const TransformScope scope (device, middle.x, middle.y, at.angle + 90);
        device.set_color (color);
        device.fill_rect (-5, -2, 10, 1.5F);
    }

    void paint () const {
        const float dx = at.end.x - at.start.x;
        const float dy = at.end.y - at.start.y;
        const float square = dx * dx + dy * dy;
        const float length = std::sqrt (square);
        if (square > 0) line (length);
        if (square < 3) return;
        if (is_reaction (arc.type ())) mark ();
        if (is_reversible (arc.type ())) barbed (at.start, at.angle + 180);
        switch (head_of (arc.type ())) {
        case ArcHead::arrow: barbed (at.head, at.angle); break;
        case ArcHead::catalysis: circle (length); break;
        case ArcHead::inhibition: flat (); break;
        case ArcHead::activation: triangle (); break;
        case ArcHead::influence: diamond (); break;
        default: break;
        }
        if ((arc.type () & arc::bar_bit) != 0) bar ();
    }
};

} // namespace

void Arque::paint (PaintDevice& device, const PaintStyle& style, float left, float top) const {
    device.begin_group ();
    // A text stands at its default place; its own x, y are the user's part.
    const auto paint_text = [&] (const Char* text, Point place, float offset) {
        if (text == nullptr) return;
        text->paint (device, style, place.x + left + offset, place.y + top + offset);
    };
    if (style.kinetics) {
        paint_text (label (), geometry_.label_pos, 0);
        paint_text (residu (), geometry_.residu_pos, 0);
    }
    if (style.stoichiometry) {
        paint_text (stoech_src (), geometry_.label_pos, stoichiometry_offset);
        paint_text (stoech_dest (), geometry_.residu_pos, stoichiometry_offset);
    }
    const bool is_selected = style.is_selected (*this);
    unsigned c = style.color (color ());
    if (is_selected) c = style.dark ? 3 : 1;
    if (foggy ()) c = style.fogged (c);
    const auto t = static_cast<float> (thickness () + (is_selected ? 1 : 0) +
                                       (style.is_hover (*this) ? 1 : 0));
    ArcPainter{*this, geometry_, device, left, top, t, c, style.color (7)}.paint ();
    device.end_group ();
}

} // namespace ostrand::document
