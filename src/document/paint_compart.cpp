// How a compartment is painted.
#include "document/colors.h"
#include "document/compart.h"
#include "document/paint_device.h"
#include "document/paint_style.h"

namespace ostrand::document {
namespace {

constexpr int ellipse_sides = 180;
constexpr unsigned dark_compart_color = 0xEEAA0000;
// The same less 0x800001: gold turns to magenta.
constexpr unsigned dark_selected_color = 0xEE29FF00;

/// Painter of one compartment, its box at (left, top).
struct CompartPainter {
    const Compart& compart;
    PaintDevice& device;
    const PaintStyle& style;
    float left;
    float top;
    float w;
    float h;
    float u;

    /// One band: the box inset by `inset` on all sides. What would have no size is left out.
    void band (unsigned color, float inset, float radius) const {
        const float band_w = w - 2 * inset;
        const float band_h = h - 2 * inset;
        if (band_w <= 0 || band_h <= 0) return;
        device.set_color (color);
        if (compart.shape () == shape::rectangle)
            device.fill_round_rect (left + inset, top + inset, band_w, band_h, radius);
        else
            device.fill_ellipse (left + inset, top + inset, band_w, band_h, ellipse_sides);
    }

    void bands () const {
        unsigned color = style.dark ? dark_compart_color : compart.color ();
        if (style.is_selected (compart)) color = style.dark ? dark_selected_color : 1;
        if (compart.foggy ()) color = style.fogged (color);
        band (color, 2 - u, u + 7);
        band (light_band_color (color), 2, 7);
        band (color, 8, 4);
        band (style.dark ? 56 : 7, 10, 3);
    }

    /// A grip of 12 by 12 in a black frame of 16, at the frame's corner.
    void handle (Edge edge, float x, float y) const {
        device.set_color (style.color (0));
        device.fill_rect (left + x, top + y, 16, 16);
        const bool hot = style.is_hover (compart) && style.hot_edge == edge;
        device.set_color (hot ? 0xA0A0A000 : style.color (7));
        device.fill_rect (left + x + 2, top + y + 2, 12, 12);
    }

    void handles () const {
        const float middle_x = (w - 16) / 2;
        const float middle_y = (h - 16) / 2;
        handle (Edge::left, -4, middle_y);
        handle (Edge::right, w - 11, middle_y);
        handle (Edge::top, middle_x, -4);
        handle (Edge::bottom, middle_x, h - 12);
    }
};

} // namespace

void Compart::paint (PaintDevice& device, const PaintStyle& style, float left, float top) const {
    const bool is_selected = style.is_selected (*this);
    const int u = thickness () + (is_selected ? 1 : 0) + (style.is_hover (*this) ? 2 : 0);
    const CompartPainter painter{*this,
                                 device,
                                 style,
                                 x () + left,
                                 y () + top,
                                 get_width (),
                                 static_cast<float> (get_height ()),
                                 static_cast<float> (u)};
    if (u > 0) painter.bands ();
    if (label () != nullptr) label ()->paint (device, style, painter.left, painter.top);
    if (is_selected) painter.handles ();
}

} // namespace ostrand::document
