// The pointer over a canvas with no button down, and the wheel.
#include "editor/canvas.h"

#include "document/line.h"

namespace ostrand::editor {

using document::CharKind;
using document::Hit;

namespace {

/// Follows the pointer with one lift; true when its picture changed.
bool follow (Lift& lift, float across, float window, bool always_visible) {
    const LiftState state =
        across >= window - lift_width ? LiftState::pointer_on : LiftState::pointer_off;
    const int alpha = always_visible ? full_alpha : alpha_for_pointer (across, window);
    const bool changed = lift.state != state || lift.alpha != alpha;
    lift.state = state;
    lift.alpha = alpha;
    return changed;
}

/// The outermost line of a text, whichever of its scripts was hit.
document::Line* whole_text (document::Line* line) {
    while (line != nullptr && line->holder ().line != nullptr) line = line->holder ().line;
    return line;
}

} // namespace

void Canvas::show_pointer_for (const Hit& hit) {
    world_.show_pointer (hit.line != nullptr ? PointerShape::insert : PointerShape::arrow);
}

void Canvas::motion (const Pointer& at) {
    gesture.pointer_x = at.x;
    gesture.pointer_y = at.y;
    const bool y_changed =
        follow (view.lift_y, at.x, static_cast<float> (view.width), view.lift_always_visible);
    const bool x_changed =
        follow (view.lift_x, at.y, static_cast<float> (view.height), view.lift_always_visible);
    if (y_changed || x_changed) redraw ();

    const Hit hit = find_at (at.x, at.y);
    if (callbacks.on_mouse_help) {
        const MouseHelpSlots slots = mouse_help_slots (*this, hit);
        callbacks.on_mouse_help (*this, &slots, at.modifiers.row ());
    }
    show_pointer_for (hit);
    const bool arc_text =
        hit.line != nullptr && hit.owner != nullptr && hit.owner->kind () == CharKind::arque;
    set_selected_field (arc_text ? whole_text (hit.line) : nullptr);
    const bool selectable = hit && hit.line == nullptr && hit.object->is_selectable ();
    set_hover (selectable ? hit.object->find_object () : nullptr, hit.edge);
}

void Canvas::enter () {
    pointer_inside = true;
    redraw ();
}

void Canvas::leave () {
    pointer_inside = false;
    if (view.lift_always_visible) {
        view.lift_x.state = LiftState::pointer_off;
        view.lift_y.state = LiftState::pointer_off;
    } else {
        view.lift_x.alpha = 0;
        view.lift_y.alpha = 0;
    }
    set_hover (nullptr);
    set_selected_field (nullptr);
    redraw ();
}

void Canvas::focus (bool on) {
    if (has_focus == on) return;
    has_focus = on;
    redraw ();
}

void Canvas::wheel (float steps_x, float steps_y, const Pointer& at) {
    if (at.modifiers.ctrl) {
        // Away from the user, which is up, enlarges.
        const float steps = steps_y != 0 ? steps_y : steps_x;
        zoom_to (view.stepped_zoom (-steps * wheel_zoom_step), at.x, at.y);
        return;
    }
    if (at.modifiers.shift && steps_x == 0) std::swap (steps_x, steps_y);
    view.scroll_by (network (), -steps_x * wheel_scroll_step, -steps_y * wheel_scroll_step);
    start_fade ();
}

void Canvas::zoom_to (float zoom, float cx, float cy) {
    if (!view.set_zoom_centred (network (), zoom, cx, cy)) return;
    world_.refresh ();
    redraw ();
}

} // namespace ostrand::editor
