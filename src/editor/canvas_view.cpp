// Zoom and scroll.
#include "editor/canvas_view.h"

#include "document/numbers.h"

#include <algorithm>
#include <cmath>

namespace ostrand::editor {
namespace {

// A little beyond the limits, so that steps that end at a limit reach it whatever their rounding.
constexpr float most_accepted = 2.01F;
constexpr float least_accepted = 0.099F;
constexpr float home_origin = 10;
constexpr float margin = 20;         // network units left free at the end of a scroll
constexpr float page_overlap = 20;   // network units that a page step keeps in view
constexpr float part_of_window = 10; // arrow keys scroll a tenth
constexpr float edge_margin = 10;    // pixels beside the window's edge that count as out of view

float limited (float origin, float extent, float window, float zoom) {
    if (origin * zoom >= window - least_in_view) return (window - least_in_view) / zoom;
    if ((origin + extent) * zoom < least_in_view) return least_in_view / zoom - extent;
    return origin;
}

/// Where an object of the present place goes along one axis, in pixels of the window's edge.
float shown (float origin, float place, float window, float zoom) {
    const float seen = (origin + place) * zoom;
    if (seen > edge_margin && seen < window - edge_margin + 1) return origin;
    const float centred = window / 2 - place * zoom;
    return (centred > -edge_margin ? 6.0F : centred) / zoom;
}

} // namespace

void CanvasView::start_zoom (unsigned percent) {
    zoom_ = std::clamp (static_cast<float> (percent) / 100, least_zoom, most_zoom);
}

float CanvasView::stepped_zoom (float step) const {
    // Steps are whole percents: sums of them must not drift.
    const float wanted = std::round ((zoom_ + step) * 100) / 100;
    if (wanted > most_accepted || wanted < least_accepted) return zoom_;
    return std::clamp (wanted, least_zoom, most_zoom);
}

bool CanvasView::set_zoom_centred (document::Network& network, float new_zoom, float cx, float cy) {
    new_zoom = std::clamp (new_zoom, least_zoom, most_zoom);
    if (new_zoom == zoom_) return false;
    pin_view (network, cx, cy);
    zoom_ = new_zoom;
    pin_view (network, cx, cy);
    return true;
}

void CanvasView::pin_view (document::Network& network, float px, float py) {
    const float fx = px / zoom_;
    const float fy = py / zoom_;
    if (!anchor_set_ || px != anchor_x_ || py != anchor_y_) {
        anchor_set_ = true;
        anchor_x_ = px;
        anchor_y_ = py;
        anchor_unit_x_ = document::to_int (fx - network.x ());
        anchor_unit_y_ = document::to_int (fy - network.y ());
    }
    network.set_origin (fx - static_cast<float> (anchor_unit_x_),
                        fy - static_cast<float> (anchor_unit_y_));
}

bool CanvasView::keep_in_reach (document::Network& network) const {
    if (network.is_empty () || width <= 0 || height <= 0) return false;
    const auto w = static_cast<float> (width);
    const auto h = static_cast<float> (height);
    return network.set_origin (
        limited (network.x (), network.get_width (), w, zoom_),
        limited (network.y (), static_cast<float> (network.get_height ()), h, zoom_));
}

void CanvasView::scroll_by (document::Network& network, float dx, float dy) {
    network.set_origin (network.x () + dx, network.y () + dy);
    invalidate_anchor ();
}

void CanvasView::scroll_key (document::Network& network, ScrollKey key) {
    const float w = visible_width ();
    const float h = visible_height ();
    // The origins at which the network's far ends stand in the window with some room.
    const float last_x = -(network.get_width () - w + margin);
    const float last_y = -(static_cast<float> (network.get_height ()) - h + margin);
    float x = network.x ();
    float y = network.y ();
    const auto back = [] (float at, float step) {
        return std::max (at, std::min (at + step, home_origin));
    };
    const auto forth = [] (float at, float step, float last) {
        return std::min (at, std::max (at - step, last));
    };
    switch (key) {
    case ScrollKey::left: x = back (x, w / part_of_window); break;
    case ScrollKey::right: x = forth (x, w / part_of_window, last_x); break;
    case ScrollKey::up: y = back (y, h / part_of_window); break;
    case ScrollKey::down: y = forth (y, h / part_of_window, last_y); break;
    case ScrollKey::page_up: y = back (y, h - page_overlap); break;
    case ScrollKey::page_down: y = forth (y, h - page_overlap, last_y); break;
    case ScrollKey::home:
    case ScrollKey::top_left:
        x = home_origin;
        y = home_origin;
        break;
    case ScrollKey::end:
    case ScrollKey::bottom:
        x = home_origin;
        y = std::min (last_y, home_origin);
        break;
    }
    network.set_origin (x, y);
    invalidate_anchor ();
}

bool CanvasView::scroll_to_show (document::Network& network, const document::Char& object) {
    const float x = shown (network.x (), object.x (), static_cast<float> (width), zoom_);
    const float y = shown (network.y (), object.y (), static_cast<float> (height), zoom_);
    invalidate_anchor ();
    return network.set_origin (x, y);
}

void CanvasView::scroll_to_centre (document::Network& network, const document::Node& node) {
    network.set_origin (static_cast<float> (width) / (2 * zoom_) - node.x (),
                        static_cast<float> (height) / (2 * zoom_) - node.y ());
    invalidate_anchor ();
}

LiftGeometry CanvasView::lift_geometry (const document::Network& network, Axis axis) const {
    if (axis == Axis::x)
        return editor::lift_geometry (static_cast<float> (width), network.get_width (),
                                      network.x (), zoom_);
    return editor::lift_geometry (static_cast<float> (height),
                                  static_cast<float> (network.get_height ()), network.y (), zoom_);
}

void CanvasView::set_origin_from_lift (document::Network& network, Axis axis, float place) {
    const float origin = lift_geometry (network, axis).origin_at (place);
    if (axis == Axis::x)
        network.set_origin (origin, network.y ());
    else
        network.set_origin (network.x (), origin);
    invalidate_anchor ();
}

int CanvasView::lift_alpha (Axis axis) const {
    if (lift_always_visible) return full_alpha;
    return std::max (lift (axis).alpha, fade.running () ? fade.alpha () : 0);
}

} // namespace ostrand::editor
