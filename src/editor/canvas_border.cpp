// The view goes with a drag that has come near the window's border.
#include "editor/border_scroll.h"
#include "editor/canvas.h"

#include <algorithm>
#include <cmath>

namespace ostrand::editor {
namespace {

constexpr float slowest = 2; // pixels a step
constexpr float step_by_depth = 0.5F;
constexpr float deepest = 72; // where going further out scrolls no faster

/// The part of a step that the window allows: never back against its direction.
float allowed (float before, float after, float step) {
    return step > 0 ? std::max (before, after) : std::min (before, after);
}

} // namespace

float border_step (float place, float window) {
    const auto step = [] (float depth) {
        return slowest + std::min (depth, deepest) * step_by_depth;
    };
    if (window < 3 * border_zone) return 0; // no room for a place inside
    if (place < border_zone) return -step (border_zone - place);
    if (place > window - border_zone) return step (place - (window - border_zone));
    return 0;
}

bool Canvas::drag_scrolls () const {
    if (gesture.no_drag) return false;
    if (gesture.button == 3) return gesture.press_valid && gesture.label != nullptr;
    if (gesture.button != 1 || view.lift_x.grabbed || view.lift_y.grabbed) return false;
    switch (mode) {
    case Mode::free: return gesture.press_valid;
    case Mode::selection:
        return !selection.objects ().empty () &&
               selection.objects ().front ()->kind () != document::CharKind::arque;
    case Mode::text: break;
    }
    return false;
}

void Canvas::follow_border (const Pointer& to) {
    const bool near = drag_scrolls () && (to.modifiers.plain () || gesture.button == 3) &&
                      (border_step (to.x, static_cast<float> (view.width)) != 0 ||
                       border_step (to.y, static_cast<float> (view.height)) != 0);
    if (!near) {
        stop_border_scroll ();
        gesture.border_left_alone = false;
        return;
    }
    if (border_timer_ != 0 || gesture.border_left_alone) return;
    border_timer_ = world_.call_later (border_first_wait, [this] { border_tick (); });
}

void Canvas::border_tick () {
    border_timer_ = 0;
    if (!drag_scrolls ()) return;
    border_timer_ = world_.call_later (border_next_wait, [this] { border_tick (); });
    const float zoom = view.zoom ();
    // Whole units: what is dragged moves by these.
    const auto units = [zoom] (float pixels) {
        if (pixels == 0) return 0.0F;
        return std::copysign (std::max (1.0F, std::round (std::fabs (pixels) / zoom)), pixels);
    };
    const float dx = -units (border_step (gesture.pointer_x, static_cast<float> (view.width)));
    const float dy = -units (border_step (gesture.pointer_y, static_cast<float> (view.height)));
    const float old_x = network ().x ();
    const float old_y = network ().y ();
    view.scroll_by (network (), dx, dy);
    view.keep_in_reach (network ());
    const float new_x = dx == 0 ? old_x : allowed (old_x, network ().x (), dx);
    const float new_y = dy == 0 ? old_y : allowed (old_y, network ().y (), dy);
    network ().set_origin (new_x, new_y);
    if (new_x == old_x && new_y == old_y) return;
    // The place of the press goes with the network; what is dragged stays under the pointer.
    const float by_x = (new_x - old_x) * zoom;
    const float by_y = (new_y - old_y) * zoom;
    gesture.anchor_x += by_x;
    gesture.anchor_y += by_y;
    gesture.press_x += by_x;
    gesture.press_y += by_y;
    drag ({.x = gesture.pointer_x, .y = gesture.pointer_y, .modifiers = {}});
    start_fade ();
}

void Canvas::stop_border_scroll () {
    if (border_timer_ == 0) return;
    world_.cancel (border_timer_);
    border_timer_ = 0;
}

} // namespace ostrand::editor
