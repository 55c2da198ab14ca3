// How a node is painted.
#include "document/node.h"
#include "document/paint_device.h"
#include "document/paint_style.h"

#include <algorithm>

namespace ostrand::document {
namespace {

constexpr float corner_radius = 7;
constexpr float chevron_depth = 10;
constexpr int ellipse_sides = 64;

bool is_highlighted (const Node& node, const PaintStyle& style) {
    return style.marks && node.highlight != no_highlight;
}

/// Painter of one node's shape, its box at (left, top).
struct NodePainter {
    const Node& node;
    PaintDevice& device;
    const PaintStyle& style;
    float left;
    float top;
    float w;
    float h;
    float t;
    unsigned outline;
    unsigned fill;

    bool has_background () const { return (node.type () & node::background_bit) != 0; }

    void frame () const {
        if (!style.is_selected (node) && !style.is_hover (node)) return;
        device.set_color (outline);
        device.fill_rect (left - t / 2, top - t / 2, w + t, h + t);
        if (w <= t || h <= t) return;
        device.set_color (style.color (7));
        device.fill_rect (left + t / 2, top + t / 2, w - t, h - t);
    }

    void rectangle () const {
        if (t > 0) {
            device.set_color (outline);
            device.fill_rect (left - t, top - t, w + 2 * t, h + 2 * t);
        }
        device.set_color (fill);
        device.fill_rect (left, top, w, h);
        if (!node.is_shared ()) return;
        device.set_color (outline);
        if (has_background ())
            device.fill_rect (left - 1, top + h * 4 / 5, w + 2, h / 5 + 2);
        else
            device.shared_bar (left, top, w, h, static_cast<float> (node.thickness ()));
    }

    /// Three shadows behind a highlighted node, darker towards it.
    template <typename Shape>
    void shadows (const Shape& shape) const {
        if (!is_highlighted (node, style)) return;
        const unsigned near = style.dark ? 48 : 30;
        float offset = 6;
        for (const unsigned color : {48U, 0xA0A0A000U, near}) {
            device.set_color (color);
            shape (offset);
            offset -= 1;
        }
    }

    void round_rectangle () const {
        const auto outset = [this] (float offset) {
            device.fill_round_rect (left - t + offset, top - t + offset, w + 2 * t, h + 2 * t,
                                    corner_radius + t);
        };
        shadows (outset);
        device.set_color (outline);
        outset (0);
        device.set_color (fill);
        if (node.is_shared () && has_background ()) {
            // The outline's colour stays in the lower fifth: that is the bar.
            const ClipScope clip (device, left, top, w, h * 4 / 5);
            device.fill_round_rect (left, top, w, h, corner_radius);
            return;
        }
        device.fill_round_rect (left, top, w, h, corner_radius);
        if (!node.is_shared ()) return;
        const ClipScope clip (device, left, top + h * 4 / 5, w, h / 5);
        device.set_color (outline);
        device.shared_bar (left, top, w, h, static_cast<float> (node.thickness ()));
    }

    void ellipse () const {
        const auto outset = [this] (float offset) {
            device.fill_ellipse (left - t + offset, top - t + offset, w + 2 * t, h + 2 * t,
                                 ellipse_sides);
        };
        shadows (outset);
        device.set_color (outline);
        outset (0);
        device.set_color (fill);
        device.fill_ellipse (left, top, w, h, ellipse_sides);
        if (!node.is_shared ()) return;
        device.set_color (outline);
        if (has_background ()) {
            const ClipScope clip (device, left - t, top + h * 3 / 4, w + 2 * t, h / 4 + 4);
            device.fill_ellipse (left, top, w, h, ellipse_sides);
        } else {
            // The chord of an ellipse at four fifths of its height is four fifths of its width.
            device.shared_bar (left + w / 10, top, w * 4 / 5, h,
                               static_cast<float> (node.thickness ()));
        }
    }

    void receptor () const {
        if (t > 0) {
            device.set_color (outline);
            device.fill_chevron (left - t, top - t, w + 2 * t, h + 2 * t, chevron_depth);
        }
        device.set_color (fill);
        device.fill_chevron (left, top, w, h, chevron_depth);
    }

    void shape () const {
        switch (node.group ()) {
        case 0: frame (); break;
        case node::gene_group: rectangle (); break;
        case node::protein_group: round_rectangle (); break;
        case node::molecule_group: ellipse (); break;
        case node::receptor_group: receptor (); break;
        default: break;
        }
    }

    /// The state mark on the upper edge: an ellipse around the text.
    void residu_ground (const Line& residu) const {
        const float text_w = residu.get_width ();
        const auto text_h = static_cast<float> (residu.get_height ());
        const float ground_h = text_h + 2;
        const float ground_w = std::max (text_w + 8, ground_h);
        const float x = left + 10 + (text_w - ground_w) / 2;
        const float y = top - static_cast<float> (residu.get_ascent ()) - 1;
        device.set_color (outline);
        device.fill_ellipse (x, y, ground_w, ground_h, 16);
        device.set_color (style.color (7));
        device.fill_ellipse (x + 1, y + 1, ground_w - 2, ground_h - 2, 16);
    }
};

/// Outline, fill and thickness after all that may change them.
NodePainter painter_of (const Node& node, PaintDevice& device, const PaintStyle& style, float left,
                        float top) {
    NodePainter painter{node,
                        device,
                        style,
                        left,
                        top,
                        node.get_width (),
                        static_cast<float> (node.get_height ()),
                        static_cast<float> (node.thickness ()),
                        style.color (node.color ()),
                        style.color (node.bg_color ())};
    // On a dark canvas all that is fogged has one colour, and the label has to show on the fill.
    if (painter.has_background () && node.foggy () && !style.dark) {
        painter.fill = style.fogged (painter.fill);
    }
    const auto mark = [&painter] (unsigned color) {
        painter.outline = color;
        painter.t += 1;
    };
    if (is_highlighted (node, style)) {
        painter.fill = style.color (node.highlight);
        mark (5);
    }
    if (node.calyx_display ()) mark (style.dark ? 6 : 4);
    if (node.multi_conc ()) mark (5);
    if (style.is_selected (node)) mark (style.dark ? 3 : 1);
    if (style.is_hover (node)) painter.t += 1;
    if (node.foggy ()) painter.outline = style.fogged (painter.outline);
    return painter;
}

} // namespace

void Node::paint (PaintDevice& device, const PaintStyle& style, float left, float top) const {
    const float corner_x = x () - get_width () / 2 + left;
    const float corner_y = y () - static_cast<float> (get_height ()) / 2 + top;
    const NodePainter painter = painter_of (*this, device, style, corner_x, corner_y);
    painter.shape ();
    if (label () != nullptr) label ()->paint (device, style, corner_x, corner_y);
    if (residu () != nullptr) {
        painter.residu_ground (*residu ());
        residu ()->paint (device, style, left, top);
    }
}

} // namespace ostrand::document
