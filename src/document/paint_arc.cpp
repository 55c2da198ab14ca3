// How an arc is laid out and painted.
#include "document/arque.h"
#include "document/colors.h"
#include "document/paint_device.h"

#include <cmath>

namespace ostrand::document {
namespace {

/// A text of an arc at its default place, moved by `offset`; its own x, y are the user's part.
void paint_text (Char* text, Point place, float left, float top, float offset, bool draw) {
    if (text) text->paint (place.x + left + offset, place.y + top + offset, draw);
}

/// Painter of one arc, whose network stands at (left, top).
struct ArcPainter {
    const Arque& arc;
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
        const bool longer = is_reversible (arc.type) && head_code (arc.type) == 0;
        const Point from = moved (arc.start);
        const TransformScope scope (device, from.x, from.y, arc.angle);
        device.fill_rect (0, -t / 2, longer ? length + 5 : length, t);
    }

    void mark () const {
        const Point middle = moved ({(arc.start.x + arc.end.x) / 2, (arc.start.y + arc.end.y) / 2});
        const TransformScope scope (device, middle.x, middle.y, arc.angle);
        device.set_color (color);
        device.fill_rect (-7, -7, 14, 14);
        if (14 - 2 * t <= 0) return;
        device.set_color (white);
        device.fill_rect (t - 7, t - 7, 14 - 2 * t, 14 - 2 * t);
    }

    void barbed (Point at, float angle) const {
        const Point tip = moved (at);
        const TransformScope scope (device, tip.x, tip.y, angle);
        device.set_color (color);
        device.arrow_head (14, 10, 1);
    }

    /// The circle touches what the arc meets, since the arc's end was drawn back for it.
    void circle (float length) const {
        const float along = 1 + 5 / length;
        const Point c = moved ({arc.start.x + along * (arc.end.x - arc.start.x),
                                arc.start.y + along * (arc.end.y - arc.start.y)});
        device.set_color (color);
        device.fill_ellipse (c.x + 1 - (t + 8) / 2, c.y - (t + 8) / 2, 6 + t, 6 + t, 16);
        device.set_color (white);
        device.fill_ellipse (c.x - 2, c.y - 3, 4, 4, 16);
    }

    void flat () const {
        const Point at = moved (arc.end);
        const TransformScope scope (device, at.x, at.y, arc.angle + 90);
        device.set_color (color);
        device.fill_rect (-6.5F, 0, 12, t);
    }

    void triangle () const {
        const Point tip = moved (arc.head);
        const TransformScope scope (device, tip.x, tip.y, arc.angle);
        device.set_color (color);
        device.fill_triangle_head (16, 12, 0);
        device.set_color (white);
        device.fill_triangle_head (9, 4, -5);
    }

    void diamond () const {
        const Point at = moved (arc.head);
        const TransformScope scope (device, at.x, at.y, arc.angle - 45);
        device.set_color (color);
        device.fill_rect (-4 - t / 2, -4 - t / 2, 7 + t, 7 + t);
        device.set_color (white);
        device.fill_rect (-3, -3, 5, 5);
    }

    void bar () const {
        const Point at = moved (arc.inner);
        const TransformScope scope (device, at.x, at.y, arc.angle + 90);
        device.set_color (color);
        device.fill_rect (-5, -2, 10, 1.5F);
    }

    void paint () const {
        const float dx = arc.end.x - arc.start.x;
        const float dy = arc.end.y - arc.start.y;
        const float square = dx * dx + dy * dy;
        const float length = std::sqrt (square);
        if (square > 0) line (length);
        if (square < 3) return;
        if (is_reaction (arc.type)) mark ();
        if (is_reversible (arc.type)) barbed (arc.start, arc.angle + 180);
        switch (head_code (arc.type)) {
        case 1: barbed (arc.head, arc.angle); break;
        case 2: circle (length); break;
        case 3: flat (); break;
        case 4: triangle (); break;
        case 5: diamond (); break;
        default: break;
        }
        if ((arc.type & 0x80U) != 0) bar ();
    }
};

} // namespace

void Arque::paint (float left, float top, bool draw) {
    compute_geometry ();
    const DocumentState& state = document_state ();
    PaintDevice* const device = draw ? current_device () : nullptr;
    if (device) device->begin_group ();
    if (state.show_kinetics) {
        paint_text (label.get (), label_pos, left, top, 0, draw);
        paint_text (residu.get (), residu_pos, left, top, 0, draw);
    }
    if (state.show_stoichiometry) {
        paint_text (stoech_src.get (), label_pos, left, top, 2, draw);
        paint_text (stoech_dest.get (), residu_pos, left, top, 2, draw);
    }
    if (!device) return;
    unsigned c = painted_color (color);
    if (selected) c = state.dark_mode ? 3 : 1;
    if (foggy) c = fogged_color (c);
    const auto t = static_cast<float> (thickness + (selected ? 1 : 0) + (hover ? 1 : 0));
    ArcPainter{*this, *device, left, top, t, c, painted_color (7)}.paint ();
    device->end_group ();
}

} // namespace ostrand::document
