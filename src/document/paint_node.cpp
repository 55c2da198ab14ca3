// How a node is laid out and painted.
#include "document/colors.h"
#include "document/network.h"
#include "document/node.h"
#include "document/paint_device.h"

#include <algorithm>
#include <array>

namespace ostrand::document {
namespace {

constexpr float corner_radius = 7;
constexpr float chevron_depth = 10;
constexpr int ellipse_sides = 64;
constexpr float wide_label = 50; // a label wider than this makes an ellipse and a receptor roomier

/// Painter of one node's shape, its box at (left, top).
struct NodePainter {
    const Node& node;
    PaintDevice& device;
    float left;
    float top;
    float w;
    float h;
    float t;
    unsigned outline;
    unsigned fill;

    bool has_background () const { return (node.type & node::background_bit) != 0; }

    void frame () const {
        if (!node.selected && !node.hover) return;
        device.set_color (outline);
        device.fill_rect (left - t / 2, top - t / 2, w + t, h + t);
        if (w <= t || h <= t) return;
        device.set_color (painted_color (7));
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
            device.shared_bar (left, top, w, h, static_cast<float> (node.thickness));
    }

    /// Three shadows behind a highlighted node, darker towards it.
    template <typename Shape>
    void shadows (const Shape& shape) const {
        if (node.highlight == no_highlight) return;
        const unsigned near = document_state ().dark_mode ? 48 : 30;
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
        device.shared_bar (left, top, w, h, static_cast<float> (node.thickness));
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
                               static_cast<float> (node.thickness));
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
        device.set_color (painted_color (7));
        device.fill_ellipse (x + 1, y + 1, ground_w - 2, ground_h - 2, 16);
    }
};

/// Outline, fill and thickness after all that may change them.
NodePainter painter_of (const Node& node, PaintDevice& device, float left, float top) {
    const bool dark = document_state ().dark_mode;
    NodePainter painter{node,
                        device,
                        left,
                        top,
                        node.get_width (),
                        static_cast<float> (node.get_height ()),
                        static_cast<float> (node.thickness),
                        painted_color (node.color),
                        painted_color (node.bg_color)};
    // On a dark canvas all that is fogged has one colour, and the label has to show on the fill.
    if ((node.type & node::background_bit) != 0 && node.foggy && !dark)
        painter.fill = fogged_color (painter.fill);
    const auto mark = [&painter] (unsigned color) {
        painter.outline = color;
        painter.t += 1;
    };
    if (node.highlight != no_highlight) {
        painter.fill = painted_color (node.highlight);
        mark (5);
    }
    if (node.calyx_display) mark (dark ? 6 : 4);
    if (node.multi_conc) mark (5);
    if (node.selected) mark (dark ? 3 : 1);
    if (node.hover) painter.t += 1;
    if (node.foggy) painter.outline = fogged_color (painter.outline);
    return painter;
}

/// The label's place relative to the node's corner.
void place_label (const Node& node) {
    Char& label = *node.label;
    label.x = 5;
    label.y = static_cast<float> (label.get_ascent () + 4);
    if (node.group () == node::receptor_group) label.y += 7;
    if (node.residu) {
        label.y += 2;
    } else if (node.group () == node::molecule_group && label.get_width () > wide_label) {
        label.y += 2;
        label.x += 8;
    }
    if (node.is_shared ()) label.y -= 2;
}

} // namespace

void Node::paint (float left, float top, bool draw) {
    if (Network* const inner = nested (); inner && !draw) {
        // A nested network is as large as its arcs' texts make it: sizes taken before are stale.
        inner->layout ();
        mark_layout_dirty ();
    }
    const float corner_x = x - get_width () / 2;
    const float corner_y = y - static_cast<float> (get_height ()) / 2;
    PaintDevice* const device = draw ? current_device () : nullptr;
    if (device) painter_of (*this, *device, corner_x + left, corner_y + top).shape ();
    if (label) {
        place_label (*this);
        if (Network* const inner = nested (); inner && network) {
            inner->clip_x = network->clip_x;
            inner->clip_y = network->clip_y;
            inner->clip_w = network->clip_w;
            inner->clip_h = network->clip_h;
        }
        if (draw || !nested ()) label->paint (corner_x + left, corner_y + top, draw);
    }
    if (residu) {
        residu->x = corner_x + 10;
        residu->y = corner_y;
        if (device)
            painter_of (*this, *device, corner_x + left, corner_y + top).residu_ground (*residu);
        residu->paint (left, top, draw);
    }
}

} // namespace ostrand::document
