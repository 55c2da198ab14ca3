// Mouse buttons that go down: the table of presses, and what each entry does.
#include "editor/canvas.h"

#include "document/line.h"
#include "editor/edit_arrange.h"
#include "editor/edit_objects.h"
#include "editor/edit_reactants.h"
#include "editor/edit_selection.h"
#include "editor/popup_menus.h"

#include "base/report.h"

#include <array>

namespace ostrand::editor {

using document::Arque;
using document::CharKind;
using document::GraphBase;
using document::Hit;
using document::Node;

/// A press with what lies under it.
struct Canvas::Press {
    float x = 0; // pixels
    float y = 0;
    Hit hit;
    GraphBase* object = nullptr; // that was hit, or whose text was hit; null for the background
    Modifiers modifiers;

    Node* node () const {
        return object != nullptr && object->kind () == CharKind::node ? static_cast<Node*> (object)
                                                                      : nullptr;
    }
    Arque* arc () const {
        return object != nullptr && object->kind () == CharKind::arque
                   ? static_cast<Arque*> (object)
                   : nullptr;
    }
};

/// The command of each button (1 to 3), row of modifiers and kind of object. An empty entry ignores
/// the press.
struct PressTable {
    using Command = void (Canvas::*) (const Canvas::Press&);
    static constexpr int background = 7; // behind the kinds of Char
    static constexpr std::size_t index (int button, int row, int kind) {
        return static_cast<std::size_t> ((button - 1) * 32 + row * 8 + kind);
    }
    std::array<Command, 96> commands{};

    PressTable () {
        const auto set = [this] (int button, int row, std::initializer_list<int> kinds,
                                 Command command) {
            for (const int kind : kinds) commands[index (button, row, kind)] = command;
        };
        constexpr int letter = static_cast<int> (CharKind::std_char);
        constexpr int compart = static_cast<int> (CharKind::compart);
        constexpr int arc = static_cast<int> (CharKind::arque);
        constexpr int node = static_cast<int> (CharKind::node);
        constexpr int plain = 0;
        constexpr int shift = 1;
        constexpr int ctrl = 2;
        constexpr int both = 3;
        set (1, plain, {letter, compart, arc, node, background}, &Canvas::click_select);
        set (1, shift, {arc}, &Canvas::shift_click_arc);
        set (1, shift, {node}, &Canvas::shift_click_node);
        set (1, ctrl, {arc, node}, &Canvas::ctrl_click_toggle);
        set (1, both, {node}, &Canvas::mark_multiple_conc);
        set (2, plain, {arc}, &Canvas::detach_reactant);
        set (2, plain, {node}, &Canvas::concentration_request);
        set (2, plain, {background}, &Canvas::duplicate_click);
        set (2, shift, {node}, &Canvas::toggle_clones);
        set (2, ctrl, {node}, &Canvas::concentration_request);
        set (2, both, {node}, &Canvas::select_connected_click);
        set (3, plain, {letter}, &Canvas::start_label_move);
        set (3, plain, {compart, arc, node}, &Canvas::object_popup);
        set (3, plain, {background}, &Canvas::start_scroll);
        set (3, shift, {arc}, &Canvas::toggle_kinetics);
        set (3, shift, {node}, &Canvas::display_molecule);
        set (3, ctrl, {compart, arc, node}, &Canvas::object_popup);
    }

    Command find (int button, int row, int kind) const {
        return commands[index (button, row, kind)];
    }
};

void Canvas::press (int button, const Pointer& at) {
    report_message (nullptr);
    end_flight ();
    if (button == 1 && at.modifiers.alt) button = 2;
    gesture.button = button;
    gesture.pointer_x = at.x;
    gesture.pointer_y = at.y;
    const int series = shared_.presses.take (button, world_.now (), at.x, at.y);
    if (series == 1) {
        gesture.no_drag = false;
        gesture.word_drag = false;
        press_object (button, at);
        if (callbacks.on_mouse_help)
            callbacks.on_mouse_help (*this, nullptr, lit_button_row (button));
        return;
    }
    gesture.no_drag = button != 1 || series == 3;
    if (button != 1) return;
    document::Line* const line = selection.edit_line ();
    if (mode == Mode::text && line != nullptr) {
        if (series == 2)
            line->select_word (line->cursor);
        else
            line->select_all ();
    }
    gesture.word_drag = series == 2;
    redraw ();
}

bool Canvas::press_lift (const Pointer& at, Axis axis) {
    const LiftGeometry geometry = view.lift_geometry (network (), axis);
    const bool is_y = axis == Axis::y;
    const float across = is_y ? at.x : at.y;
    const float along = is_y ? at.y : at.x;
    const auto window = static_cast<float> (is_y ? view.width : view.height);
    if (geometry.hidden || across < window - lift_width) return false;
    Lift& lift = view.lift (axis);
    lift.grabbed = true;
    lift.state = LiftState::grabbed;
    if (geometry.can_grab (along)) {
        lift.grab_offset = along - geometry.position;
    } else {
        // A page towards the press; the thumb goes with the pointer from there.
        view.set_origin_from_lift (network (), axis, geometry.page_towards (along));
        lift.grab_offset = along - view.lift_geometry (network (), axis).position;
    }
    redraw ();
    return true;
}

void Canvas::press_object (int button, const Pointer& at) {
    if (button == 1 && (press_lift (at, Axis::y) || press_lift (at, Axis::x))) return;
    gesture.forget_drag ();
    Press press{.x = at.x,
                .y = at.y,
                .hit = find_at (at.x, at.y),
                .object = nullptr,
                .modifiers = at.modifiers};
    if (press.hit)
        press.object = press.hit.owner != nullptr ? static_cast<GraphBase*> (press.hit.owner)
                                                  : press.hit.object->find_object ();
    static const PressTable table;
    const int row = at.modifiers.row ();
    const int kind = press.hit ? static_cast<int> (press.hit.kind ()) : PressTable::background;
    PressTable::Command command = table.find (button, row, kind);
    if (command == nullptr && press.object != nullptr)
        command = table.find (button, row, static_cast<int> (press.object->kind ()));
    if (command != nullptr) (this->*command) (press);
}

void Canvas::click_select (const Press& press) {
    gesture.fuse_target = nullptr;
    gesture.anchor_x = press.x;
    gesture.anchor_y = press.y;
    gesture.edge = press.hit.edge;
    const bool on_letter = press.hit && press.hit.kind () == CharKind::std_char;
    const bool is_arc = press.arc () != nullptr;
    if (press.object != nullptr && !on_letter && selection.contains (*press.object)) {
        mode = Mode::selection;
        if (!is_arc) world_.show_pointer (PointerShape::cross);
        return;
    }
    const bool had_selection = !selection.is_empty ();
    selection.clear ();
    if (on_letter) {
        mode = Mode::text;
        selection.edit (*press.hit.line, press.hit.letter);
        // A drag counts from where the letter begins.
        gesture.anchor_x = press.x - press.hit.rel_x * view.zoom ();
        const document::StdChar& letter =
            press.hit.line->chars ()[static_cast<std::size_t> (press.hit.letter)];
        tell_style (letter.font, letter.color);
        tell_selection_count ();
    } else if (press.object != nullptr) {
        tell_style (document::start_font, 0);
        if (!is_arc) world_.show_pointer (PointerShape::cross);
        mode = Mode::selection;
        selection.add (*press.object);
        finish_selection ();
    } else {
        mode = Mode::free;
        tell_style (document::start_font, 0);
        gesture.press_valid = true;
        gesture.press_x = press.x;
        gesture.press_y = press.y;
        if (had_selection) finish_selection ();
    }
    if (had_selection || !selection.is_empty ()) redraw ();
}

void Canvas::ctrl_click_toggle (const Press& press) {
    GraphBase& object = *press.object;
    if (!object.is_selectable ()) return; // and a text that is edited stays so
    mode = Mode::selection;
    if (selection.contains (object)) {
        selection.remove (object);
        tell_selection_count ();
        redraw ();
        return;
    }
    selection.add (object);
    world_.show_pointer (PointerShape::cross);
    gesture.anchor_x = press.x;
    gesture.anchor_y = press.y;
    finish_selection ();
}

void Canvas::shift_click_node (const Press& press) {
    Node& node = *press.node ();
    GraphBase* const other = selection.only ();
    if (selection.is_empty () || other == &node) {
        align_one (*this, node);
    } else if (selection.only_node () != nullptr) {
        link_nodes (*this, node);
    } else if (Arque* const reaction = selection.only_arc ();
               reaction != nullptr && document::is_reaction (reaction->type ())) {
        const Arque* const link = document::Network::arc_from_to (node, *reaction);
        const bool further = link != nullptr && (document::is_product_link (link->type ()) ||
                                                 document::is_substrate_link (link->type ()));
        if (further)
            swap_main_reactant (*this, node);
        else
            change_main_product (*this, node);
        motion ({.x = press.x, .y = press.y, .modifiers = press.modifiers});
    }
}

void Canvas::shift_click_arc (const Press& press) {
    Arque& arc = *press.arc ();
    if (selection.only_node () != nullptr) {
        link_nodes (*this, arc);
    } else if (selection.is_empty () && document::is_reaction (arc.type ())) {
        if (arc.kinetic_labels (true).changed) finish_edit (Edit::structure ());
    }
}

void Canvas::toggle_kinetics (const Press& press) {
    if (press.arc ()->kinetic_labels (false).changed) finish_edit (Edit::structure ());
}

void Canvas::display_molecule (const Press& press) {
    press.node ()->toggle_display ();
    finish_edit (Edit::structure ());
    if (callbacks.on_show_clones) callbacks.on_show_clones (*this, *press.node ());
}

void Canvas::concentration_request (const Press& press) {
    if (has_concentration (*press.node ()) && callbacks.on_set_concentration)
        callbacks.on_set_concentration (*this, *press.node ());
}

void Canvas::mark_multiple_conc (const Press& press) {
    if (!has_several_concentrations (*press.node ())) return;
    if (network ().mark_multiple_conc (*press.node ())) finish_edit (Edit::structure ());
}

void Canvas::toggle_clones (const Press& press) {
    if (!press.node ()->is_shared ()) return;
    if (network ().mark_same_species (*press.node ()) == 0) return;
    set_hover (nullptr);
    redraw ();
    motion ({.x = press.x, .y = press.y, .modifiers = press.modifiers});
}

void Canvas::detach_reactant (const Press& press) {
    Node* const node = selection.only_node ();
    if (node != nullptr) detach_from_reaction (*this, *press.arc (), *node);
}

void Canvas::duplicate_click (const Press&) { duplicate_selection (*this); }

void Canvas::select_connected_click (const Press& press) {
    select_connected (*this, *press.node ());
}

void Canvas::start_label_move (const Press& press) {
    if (press.object == nullptr) return;
    if (press.arc () == nullptr) {
        object_popup (press);
        return;
    }
    // The whole text moves, whichever of its scripts was hit.
    document::Line* line = press.hit.line;
    while (line->holder ().line != nullptr) line = line->holder ().line;
    gesture.label = line;
    gesture.label_start = {line->x (), line->y ()};
    gesture.was_modified = modified ();
    gesture.press_valid = true;
    gesture.press_x = press.x - line->x () * view.zoom ();
    gesture.press_y = press.y - line->y () * view.zoom ();
}

void Canvas::start_scroll (const Press& press) {
    world_.show_pointer (PointerShape::cross);
    gesture.press_valid = true;
    gesture.press_x = press.x;
    gesture.press_y = press.y;
    gesture.anchor_x = network ().x () * view.zoom ();
    gesture.anchor_y = network ().y () * view.zoom ();
}

void Canvas::object_popup (const Press& press) {
    if (press.object == nullptr || !press.object->is_selectable ()) return;
    if (press.modifiers.ctrl)
        choose_colour (*this, *press.object);
    else
        choose_kind (*this, *press.object);
}

} // namespace ostrand::editor
