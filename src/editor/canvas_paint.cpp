// How a canvas is painted: frame, grid, network, boundary, rubber band, lifts.
#include "editor/canvas.h"

#include "document/colors.h"
#include "document/paint_device.h"
#include "editor/grid.h"

#include <algorithm>
#include <cmath>

namespace ostrand::editor {

using document::Extent;
using document::LineStyle;
using document::PaintDevice;
using document::PaintStyle;

namespace {

constexpr unsigned band_frame = 0x3030d000;
constexpr unsigned band_fill = 0xd0d8ff00;
constexpr unsigned dark_band_frame = 0xd0d8ff00;
constexpr unsigned dark_band_fill = 0x70709000;
constexpr int band_alpha = 128;
constexpr unsigned grid_colour = 0xE0909000;
constexpr unsigned dark_grid_colour = 0x80606000;
constexpr unsigned guide_colour = 0xe0208000;
constexpr unsigned dark_guide_colour = 0xff70b000;
constexpr float gap_mark = 4; // pixels of the strokes at the ends of a gap, to both sides
constexpr unsigned hit_colour = 0xff900000;
constexpr unsigned boundary_colour = 1; // red
constexpr float out_of_window = 10;     // units beyond the window where an edge is not seen
constexpr float smallest_letter = 5;    // pixels; smaller letters say nothing

// Thumbs by the place of the pointer.
constexpr unsigned thumb_pointer_off = 0xf0101000;
constexpr unsigned thumb_pointer_on = 0x30ff3000;
constexpr unsigned thumb_grabbed = 0x5050ff00;
constexpr float thumb_margin = 2;

void set_colour_alpha (PaintDevice& device, unsigned colour, int alpha) {
    device.set_color_alpha (static_cast<int> (colour >> 24), static_cast<int> (colour >> 16 & 255U),
                            static_cast<int> (colour >> 8 & 255U), alpha);
}

void paint_frame (PaintDevice& pixels, float w, float h, unsigned background) {
    pixels.set_color (background);
    pixels.set_line (2, LineStyle::solid);
    pixels.fill_rect (0, 0, 2, h);
    pixels.fill_rect (w - 2, 0, 2, h);
    pixels.set_line (1, LineStyle::solid);
    pixels.stroke_rect (1, 1, w - 2, h - 2);
}

/// Lines one pixel wide, each on a pixel.
void paint_grid (PaintDevice& pixels, const CanvasView& view, const document::Network& network,
                 bool dark) {
    const auto w = static_cast<float> (view.width);
    const auto h = static_cast<float> (view.height);
    const auto on_pixel = [&view] (float at) { return std::floor (at * view.zoom ()) + 0.5F; };
    pixels.set_color (dark ? dark_grid_colour : grid_colour);
    pixels.set_line (1, LineStyle::solid);
    for (float x = first_grid_line (network.x ()); x < view.visible_width (); x += grid_pitch)
        pixels.stroke_rect (on_pixel (x), 0, 0, h);
    for (float y = first_grid_line (network.y ()); y < view.visible_height (); y += grid_pitch)
        pixels.stroke_rect (0, on_pixel (y), w, 0);
}

void paint_band (PaintDevice& pixels, const Gesture& gesture, bool dark) {
    pixels.set_color (dark ? dark_band_frame : band_frame);
    pixels.set_line (2, LineStyle::solid);
    pixels.stroke_rect (gesture.band_x, gesture.band_y, gesture.band_w, gesture.band_h);
    if (gesture.band_w <= 4 || gesture.band_h <= 4) return;
    set_colour_alpha (pixels, dark ? dark_band_fill : band_fill, band_alpha);
    pixels.fill_rect (gesture.band_x + 2, gesture.band_y + 2, gesture.band_w - 4,
                      gesture.band_h - 4);
}

/// Lines one pixel wide, each on a pixel.
void paint_guides (PaintDevice& pixels, const std::vector<Guide>& guides, const CanvasView& view,
                   const document::Network& network, bool dark) {
    pixels.set_color (dark ? dark_guide_colour : guide_colour);
    pixels.set_line (1, LineStyle::solid);
    const auto stroke = [&pixels] (bool vertical, float at, float from, float to) {
        if (vertical)
            pixels.stroke_rect (at, from, 0, to - from);
        else
            pixels.stroke_rect (from, at, to - from, 0);
    };
    for (const Guide& guide : guides) {
        const float across = guide.vertical ? network.x () : network.y ();
        const float along = guide.vertical ? network.y () : network.x ();
        const auto pixel = [&view] (float place) {
            return std::floor (place * view.zoom ()) + 0.5F;
        };
        const float at = pixel (guide.at + across);
        const float from = pixel (guide.from + along);
        const float to = pixel (guide.to + along);
        stroke (guide.vertical, at, from, to);
        if (guide.kind != Guide::Kind::gap) continue;
        for (const float end : {from, to})
            stroke (!guide.vertical, end, at - gap_mark, at + gap_mark);
    }
}

/// Where the hits of a search lie in the whole network: a mark for each in the columns of the lifts,
/// a thick one for the present hit.
void paint_hits (PaintDevice& pixels, const CanvasView& view, const document::Network& network) {
    if (network.find_index () < 0) return;
    for (const Axis axis : {Axis::x, Axis::y}) {
        const LiftGeometry geometry = view.lift_geometry (network, axis);
        if (geometry.hidden || geometry.size <= 0) continue;
        const bool is_y = axis == Axis::y;
        const auto column = static_cast<float> (is_y ? view.height : view.width);
        const auto across = static_cast<float> (is_y ? view.width : view.height) - lift_width;
        pixels.set_color (hit_colour);
        for (std::size_t i = 0; i < network.find_hits ().size (); ++i) {
            const document::Node& hit = *network.find_hits ()[i];
            const float place = (is_y ? hit.y () : hit.x ()) / geometry.size * column;
            const float thick = static_cast<int> (i) == network.find_index () ? 5.0F : 2.0F;
            const float at = std::floor (std::clamp (place, 0.0F, column) - thick / 2);
            if (is_y)
                pixels.fill_rect (across, at, lift_width, thick);
            else
                pixels.fill_rect (at, across, thick, lift_width);
        }
    }
}

/// A rectangle that lies along an axis: `along` is the place and length on it, `across` beside it.
void fill_along (PaintDevice& pixels, Axis axis, float at, float length, float across,
                 float width) {
    if (axis == Axis::y)
        pixels.fill_rect (across, at, width, length);
    else
        pixels.fill_rect (at, across, length, width);
}

void paint_lift (PaintDevice& pixels, const CanvasView& view, const document::Network& network,
                 Axis axis) {
    const LiftGeometry geometry = view.lift_geometry (network, axis);
    const Lift& lift = view.lift (axis);
    const int alpha = lift.grabbed ? full_alpha : view.lift_alpha (axis);
    if (geometry.hidden || alpha == 0) return;
    const auto column =
        static_cast<float> (axis == Axis::y ? view.width : view.height) - lift_width;
    if (view.lift_background != 0) {
        set_colour_alpha (pixels, document::color_rgb (view.lift_background), alpha);
        fill_along (pixels, axis, 0, geometry.view, column, lift_width);
    }
    unsigned colour = thumb_pointer_off;
    if (lift.state == LiftState::pointer_on) colour = thumb_pointer_on;
    if (lift.state == LiftState::grabbed) colour = thumb_grabbed;
    set_colour_alpha (pixels, colour, alpha);
    fill_along (pixels, axis, geometry.position, geometry.length, column + thumb_margin,
                lift_width - 2 * thumb_margin);
    if (!geometry.is_short ()) return;
    fill_along (pixels, axis, geometry.position - short_thumb_mark,
                geometry.length + 2 * short_thumb_mark, column + thumb_margin / 2, 1);
}

} // namespace

void Canvas::resize (int width, int height) {
    view.width = width;
    view.height = height;
    redraw ();
}

void Canvas::prepare_paint () {
    network ().layout ();
    // While a button is down the network goes where it is dragged.
    if (gesture.button == 0) view.keep_in_reach (network ());
}

PaintStyle Canvas::paint_style () const {
    PaintStyle style = document::paint_style_of_switches ();
    style.hover = fuse_shown_ != nullptr ? fuse_shown_ : hover_;
    style.hot_edge = hover_edge_;
    style.edited = selection.edit_line ();
    style.focus = has_focus;
    style.framed = selected_field_;
    style.clip = Extent{0, 0, view.visible_width (), view.visible_height ()};
    style.whole_lines = view.zoom () == 1.0F || gesture.button != 0;
    style.smallest_text = smallest_letter / view.zoom ();
    return style;
}

void Canvas::paint (PaintDevice& pixels, PaintDevice& scaled, unsigned background) const {
    const PaintStyle style = paint_style ();
    const auto w = static_cast<float> (view.width);
    const auto h = static_cast<float> (view.height);
    paint_frame (pixels, w, h, background);
    if (show_grid) paint_grid (pixels, view, network (), style.dark);
    shown ().paint (scaled, style, 0, 0);
    if (show_boundary && !network ().is_empty ()) paint_boundary (scaled);
    if (gesture.has_band ()) paint_band (pixels, gesture, style.dark);
    if (!gesture.guides.empty ())
        paint_guides (pixels, gesture.guides, view, network (), style.dark);
    paint_lift (pixels, view, network (), Axis::y);
    paint_lift (pixels, view, network (), Axis::x);
    paint_hits (pixels, view, network ());
}

void Canvas::paint_boundary (PaintDevice& scaled) const {
    // An edge that is out of the window stays out of it, however far the network reaches.
    const auto seen = [] (float edge, float window) {
        return std::clamp (edge, -out_of_window, window + out_of_window);
    };
    const float left = seen (network ().x (), view.visible_width ());
    const float top = seen (network ().y (), view.visible_height ());
    const float right = seen (network ().x () + network ().get_width (), view.visible_width ());
    const float bottom = seen (network ().y () + static_cast<float> (network ().get_height ()),
                               view.visible_height ());
    scaled.set_color (boundary_colour);
    scaled.set_line (2 / view.zoom (), LineStyle::solid);
    scaled.stroke_rect (left, top, right - left, bottom - top);
}

} // namespace ostrand::editor
