// The mouse with a button down, and the button's release.
#include "editor/canvas.h"

#include "document/line.h"
#include "document/numbers.h"
#include "editor/bindings.h"
#include "editor/edit_arrange.h"
#include "editor/edit_reactants.h"
#include "editor/grid.h"

#include <algorithm>
#include <cmath>

namespace ostrand::editor {

using document::Arque;
using document::CharKind;
using document::Compart;
using document::GraphBase;
using document::Node;

void Canvas::drag (const Pointer& to) {
    gesture.pointer_x = to.x;
    gesture.pointer_y = to.y;
    if (gesture.no_drag) return;
    if (gesture.button == 1) {
        if (view.lift_y.grabbed) return drag_lift (to, Axis::y);
        if (view.lift_x.grabbed) return drag_lift (to, Axis::x);
        switch (mode) {
        case Mode::free:
            if (to.modifiers.plain () && gesture.press_valid) drag_band (to);
            break;
        case Mode::selection:
            if (to.modifiers.plain () && !selection.is_empty ()) drag_selection (to);
            break;
        case Mode::text: drag_text (to); break;
        }
    } else if (gesture.button == 3 && gesture.press_valid) {
        if (gesture.label != nullptr)
            drag_label (to);
        else
            drag_view (to);
    }
}

void Canvas::drag_lift (const Pointer& to, Axis axis) {
    Lift& lift = view.lift (axis);
    lift.state = LiftState::grabbed;
    view.set_origin_from_lift (network (), axis,
                               (axis == Axis::y ? to.y : to.x) - lift.grab_offset);
    redraw ();
}

void Canvas::drag_band (const Pointer& to) {
    gesture.band_x = std::min (gesture.press_x, to.x);
    gesture.band_y = std::min (gesture.press_y, to.y);
    gesture.band_w = std::fabs (to.x - gesture.press_x);
    gesture.band_h = std::fabs (to.y - gesture.press_y);
    const float left = gesture.band_x - network ().x () * view.zoom ();
    const float top = gesture.band_y - network ().y () * view.zoom ();
    std::vector<GraphBase*> inside;
    for (const auto& n : network ().nodes ()) {
        const float px = std::trunc (n->x () * view.zoom ());
        const float py = std::trunc (n->y () * view.zoom ());
        if (n->selectable () && px >= left && px <= left + gesture.band_w && py >= top &&
            py <= top + gesture.band_h)
            inside.push_back (n.get ());
    }
    selection.set (inside);
    redraw ();
}

namespace {

/// Moves all selected objects by (dx, dy).
void move_objects (const Selection& selection, float dx, float dy) {
    for (GraphBase* const object : selection.objects ())
        object->set_position (object->x () + dx, object->y () + dy);
}

} // namespace

void Canvas::drag_selection (const Pointer& to) {
    if (selection.objects ().empty ()) return;
    GraphBase& first = *selection.objects ().front ();
    const float dx = (to.x - gesture.anchor_x) / view.zoom ();
    const float dy = (to.y - gesture.anchor_y) / view.zoom ();
    // Whole units; what a motion has beyond them waits for the next.
    const int units_x = document::to_int (dx);
    const int units_y = document::to_int (dy);
    if (units_x == 0 && units_y == 0) return;
    const auto go = [&] {
        gesture.anchor_x += static_cast<float> (units_x) * view.zoom ();
        gesture.anchor_y += static_cast<float> (units_y) * view.zoom ();
        gesture.moved_dx += units_x;
        gesture.moved_dy += units_y;
    };
    if (first.kind () == CharKind::compart) {
        auto& compart = static_cast<Compart&> (first);
        if (!compart.drag (gesture.edge, static_cast<float> (units_x),
                           static_cast<float> (units_y)))
            return;
        go ();
        gesture.changed = true;
    } else if (first.kind () == CharKind::node) {
        if (show_grid) {
            drag_on_grid (static_cast<Node&> (first), units_x, units_y);
            gesture.anchor_x += static_cast<float> (units_x) * view.zoom ();
            gesture.anchor_y += static_cast<float> (units_y) * view.zoom ();
        } else {
            move_objects (selection, static_cast<float> (units_x), static_cast<float> (units_y));
            go ();
            gesture.changed = true;
        }
        if (Node* const alone = selection.only_node ()) {
            fuse_test (*this, *alone);
            if (smart_move && editor::smart_move (*this, *alone)) gesture.others_moved = true;
        }
        MouseHelpSlots slots{};
        slots[0] = gesture.fuse_target != nullptr ? word::fuse_node : word::move_selection;
        if (callbacks.on_mouse_help) callbacks.on_mouse_help (*this, &slots, to.modifiers.row ());
    } else {
        return;
    }
    network ().layout ();
    redraw ();
}

void Canvas::drag_on_grid (Node& first, int units_x, int units_y) {
    if (!gesture.on_grid) {
        gesture.on_grid = true;
        gesture.free_x = first.x ();
        gesture.free_y = first.y ();
    }
    gesture.free_x += static_cast<float> (units_x);
    gesture.free_y += static_cast<float> (units_y);
    const float dx = nearest_grid_line (gesture.free_x) - first.x ();
    const float dy = nearest_grid_line (gesture.free_y) - first.y ();
    if (dx == 0 && dy == 0) return;
    move_objects (selection, dx, dy);
    gesture.changed = true;
    if (std::trunc (dx) != dx || std::trunc (dy) != dy) gesture.others_moved = true;
    gesture.moved_dx += document::to_int (dx);
    gesture.moved_dy += document::to_int (dy);
}

void Canvas::drag_text (const Pointer& to) {
    document::Line* const line = selection.edit_line ();
    if (line == nullptr) return;
    const float dx = (to.x - gesture.anchor_x) / view.zoom ();
    if (line->extend_selection_to (dx, gesture.word_drag ? document::SelectBy::words
                                                         : document::SelectBy::letters))
        redraw ();
}

void Canvas::drag_label (const Pointer& to) {
    auto* const arc = static_cast<Arque*> (gesture.label->find_object ());
    if (arc == nullptr) return;
    const float x = std::trunc ((to.x - gesture.press_x) / view.zoom ());
    const float y = std::trunc ((to.y - gesture.press_y) / view.zoom ());
    if (!move_label (*arc, *gesture.label, x, y)) return;
    gesture.changed = true;
    network ().layout ();
    set_modified (true);
    redraw ();
}

void Canvas::drag_view (const Pointer& to) {
    network ().set_origin ((to.x + gesture.anchor_x - gesture.press_x) / view.zoom (),
                           (to.y + gesture.anchor_y - gesture.press_y) / view.zoom ());
    view.invalidate_anchor ();
    start_fade ();
}

void Canvas::release (int button, const Pointer& at) {
    if (button == 1 && gesture.button == 2) button = 2; // Alt may be up before the button
    const bool was_pressed = button == gesture.button;
    gesture.no_drag = false;
    gesture.word_drag = false;
    gesture.button = 0;
    if (callbacks.on_mouse_help) callbacks.on_mouse_help (*this, nullptr, no_button_row);
    if (!was_pressed) return;
    if (button == 3) {
        gesture.press_valid = false;
        if (gesture.label != nullptr) {
            GraphBase* const owner = gesture.label->find_object ();
            gesture.label = nullptr;
            if (gesture.changed && owner != nullptr) finish_edit (Edit::labels (*owner));
        } else {
            world_.show_pointer (PointerShape::arrow);
        }
        gesture.changed = false;
        return;
    }
    if (button != 1) return;
    for (const Axis axis : {Axis::x, Axis::y}) {
        Lift& lift = view.lift (axis);
        if (!lift.grabbed) continue;
        lift.grabbed = false;
        lift.state = LiftState::pointer_off;
        redraw ();
    }
    show_pointer_for (find_at (at.x, at.y));
    if (mode == Mode::free && gesture.has_band () && !selection.is_empty () &&
        at.modifiers.plain ())
        finish_selection ();
    release_selection ();
    tell_selection_count ();
    if (gesture.has_band ()) {
        gesture.band_w = 0;
        gesture.band_h = 0;
        redraw ();
    }
    gesture.press_valid = false;
}

void Canvas::release_selection () {
    const Gesture done = gesture;
    gesture.moved_dx = 0;
    gesture.moved_dy = 0;
    gesture.others_moved = false;
    gesture.changed = false;
    gesture.on_grid = false;
    gesture.fuse_target = nullptr;
    set_fuse_shown (nullptr);
    if (done.fuse_target != nullptr) {
        if (Node* const dragged = selection.only_node ())
            fuse_selected (*this, *done.fuse_target, *dragged);
        return;
    }
    const bool moved = done.moved_dx != 0 || done.moved_dy != 0;
    if (!done.changed || (!moved && !done.others_moved) || selection.objects ().empty ()) return;
    const bool resized = done.edge != document::Edge::none &&
                         selection.objects ().front ()->kind () == CharKind::compart;
    const bool with_others = selection.objects ().front ()->kind () == CharKind::compart &&
                             selection.objects ().size () > 1;
    const bool reordered = settle_after_move ();
    if (resized || with_others || reordered || done.others_moved)
        finish_edit (Edit::structure ());
    else
        finish_edit (Edit::move (done.moved_dx, done.moved_dy));
}

} // namespace ostrand::editor
