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
#include <utility>

namespace ostrand::editor {

using document::Arque;
using document::CharKind;
using document::Compart;
using document::Extent;
using document::GraphBase;
using document::Node;

void Canvas::drag (const Pointer& to) {
    gesture.pointer_x = to.x;
    gesture.pointer_y = to.y;
    if (gesture.no_drag) return;
    follow_border (to);
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
        gesture.free_dx += units_x;
        gesture.free_dy += units_y;
    };
    if (gesture.starts.size () != selection.objects ().size ()) {
        gesture.forget_drag ();
        for (const GraphBase* const object : selection.objects ())
            gesture.starts.push_back ({object->x (), object->y ()});
    }
    const document::Point start = gesture.starts.front ();
    if (first.kind () == CharKind::compart) {
        auto& compart = static_cast<Compart&> (first);
        if (!compart.drag (gesture.edge, static_cast<float> (units_x),
                           static_cast<float> (units_y)))
            return;
        go ();
        gesture.moved_dx = gesture.free_dx;
        gesture.moved_dy = gesture.free_dy;
        if (gesture.edge == document::Edge::none)
            compart.set_position (start.x + static_cast<float> (gesture.moved_dx),
                                  start.y + static_cast<float> (gesture.moved_dy));
        gesture.changed = true;
    } else if (first.kind () == CharKind::node) {
        go ();
        auto by_x = static_cast<float> (gesture.free_dx);
        auto by_y = static_cast<float> (gesture.free_dy);
        if (show_grid) {
            by_x = nearest_grid_line (start.x + by_x) - start.x;
            by_y = nearest_grid_line (start.y + by_y) - start.y;
        }
        move_dragged (by_x, by_y);
        if (shared_.show_guides || shared_.snap_to_guides) follow_guides (by_x, by_y);
        if (Node* const alone = selection.only_node ()) {
            fuse_test (*this, *alone);
            if (smart_move && editor::smart_move (*this, *alone))
                gesture.others_moved = gesture.changed = true;
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

void Canvas::move_dragged (float by_x, float by_y) {
    bool moved = false;
    for (std::size_t i = 0; i < gesture.starts.size (); ++i) {
        const document::Point start = gesture.starts[i];
        moved = selection.objects ()[i]->set_position (start.x + by_x, start.y + by_y) || moved;
    }
    if (moved) gesture.changed = true;
    // No move record tells of fractions.
    if (std::trunc (by_x) != by_x || std::trunc (by_y) != by_y) gesture.others_moved = true;
    gesture.moved_dx = document::to_int (by_x);
    gesture.moved_dy = document::to_int (by_y);
}

void Canvas::follow_guides (float by_x, float by_y) {
    constexpr float reach = 3; // pixels
    gesture.guides.clear ();
    std::optional<Extent> box;
    for (const GraphBase* const object : selection.objects ())
        if (object->kind () == CharKind::node) {
            if (!box) box = object->extent ();
            box->join (object->extent ());
        }
    if (!box) return;
    const Extent window{-network ().x (), -network ().y (), view.visible_width () - network ().x (),
                        view.visible_height () - network ().y ()};
    std::vector<Extent> neighbours;
    for (const auto& n : network ().nodes ()) {
        if (n->selected) continue;
        const Extent one = n->extent ();
        const bool is_seen = one.x < window.right && one.right > window.x &&
                             one.y < window.bottom && one.bottom > window.y;
        if (is_seen) neighbours.push_back (one);
    }
    // A move by fractions would be told by no move record.
    Guides found = find_guides (*box, neighbours, reach / view.zoom ());
    if (shared_.snap_to_guides && !show_grid && (found.snap_x != 0 || found.snap_y != 0)) {
        const auto dx = static_cast<float> (found.snap_x);
        const auto dy = static_cast<float> (found.snap_y);
        move_dragged (by_x + dx, by_y + dy);
        found = find_guides ({box->x + dx, box->y + dy, box->right + dx, box->bottom + dy},
                             neighbours, 0);
    }
    if (shared_.show_guides) gesture.guides = std::move (found.lines);
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
    gesture.changed = gesture.label->x () != gesture.label_start.x ||
                      gesture.label->y () != gesture.label_start.y;
    network ().layout ();
    set_modified (gesture.changed || gesture.was_modified);
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
    stop_border_scroll ();
    gesture.border_left_alone = false;
    gesture.no_drag = false;
    gesture.word_drag = false;
    gesture.button = 0;
    if (callbacks.on_mouse_help) callbacks.on_mouse_help (*this, nullptr, no_button_row);
    if (!was_pressed) return;
    if (button == 3) {
        gesture.press_valid = false;
        if (gesture.label != nullptr)
            release_label ();
        else
            world_.show_pointer (PointerShape::arrow);
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

void Canvas::release_label () {
    GraphBase* const owner = gesture.label->find_object ();
    gesture.label = nullptr;
    const bool changed = std::exchange (gesture.changed, false);
    if (changed && owner != nullptr) finish_edit (Edit::labels (*owner));
}

void Canvas::end_drag () {
    end_flight ();
    stop_border_scroll ();
    gesture.border_left_alone = true;
    if (!gesture.changed) {
        gesture.forget_drag (); // what comes now may move what is dragged
        return;
    }
    if (gesture.label != nullptr) {
        release_label ();
        return;
    }
    gesture.fuse_target = nullptr; // that is what the button's release would be for
    release_selection ();
}

void Canvas::release_selection () {
    const Gesture done = gesture;
    gesture.forget_drag ();
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
