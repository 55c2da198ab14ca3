// Keys on a canvas: prefixes, keys of a text field, of a text, of the selection, of the view.
#include "editor/canvas.h"

#include "document/line.h"
#include "editor/edit_objects.h"
#include "editor/edit_reactants.h"
#include "editor/edit_selection.h"
#include "editor/latin1.h"

#include "base/report.h"

namespace ostrand::editor {

using document::GraphBase;
using document::Line;
namespace keys = document::keys;

namespace {

// The toolkit's numbers of keys that the document does not know.
constexpr int key_tab = 0xff09;
constexpr int key_home = 0xff50;
constexpr int key_page_up = 0xff55;
constexpr int key_page_down = 0xff56;
constexpr int key_end = 0xff57;
constexpr int key_shift_left = 0xffe1;
constexpr int key_shift_right = 0xffe2;
constexpr int key_ctrl_left = 0xffe3;
constexpr int key_ctrl_right = 0xffe4;

constexpr int code_backspace = 8;
constexpr int code_tab = 9;
constexpr int code_line_feed = 10;
constexpr int code_return = 13;
constexpr int first_printable = 32;

constexpr int control (char letter) { return letter - 'A' + 1; }

bool is_shift (int key) { return key == key_shift_left || key == key_shift_right; }
bool is_ctrl (int key) { return key == key_ctrl_left || key == key_ctrl_right; }

/// Shift, Ctrl and their like alone.
bool is_modifier (int key) {
    return (key >= 0xffe1 && key <= 0xffe4) || (key >= 0xffe7 && key <= 0xffea);
}

bool is_delete (int key) {
    return key == keys::delete_code || key == keys::delete_key || key == keys::backspace;
}

/// The control codes that edit a text.
bool edits_text (int code) {
    for (const char letter : {'A', 'B', 'D', 'E', 'F', 'H', 'K'})
        if (code == control (letter)) return true;
    return false;
}

/// What a key is called by: the letter that it types, else its number. Keys that type a control
/// code without Ctrl have their number, so that they are not taken for Ctrl and a letter.
int key_of (const KeyEvent& event) {
    const auto code = static_cast<int> (first_code (event.text));
    if (code == 0) return event.key;
    if (event.modifiers.ctrl) return code;
    switch (code) {
    case code_backspace: return keys::backspace;
    case code_tab: return key_tab;
    case code_line_feed:
    case code_return: return event.key;
    default: return code;
    }
}

} // namespace

bool Canvas::key_down (const KeyEvent& event) {
    if (callbacks.on_mouse_help) {
        if (is_shift (event.key))
            callbacks.on_mouse_help (*this, nullptr, event.modifiers.ctrl ? 3 : 1);
        if (is_ctrl (event.key))
            callbacks.on_mouse_help (*this, nullptr, event.modifiers.shift ? 3 : 2);
    }
    if (flight_ && key_of (event) == document::keys::escape_code) {
        end_flight ();
        return true;
    }
    return canvas_key (key_of (event), event.modifiers);
}

void Canvas::key_up (const KeyEvent& event) {
    if (!callbacks.on_mouse_help) return;
    if (is_shift (event.key))
        callbacks.on_mouse_help (*this, nullptr, event.modifiers.ctrl ? 2 : 0);
    if (is_ctrl (event.key))
        callbacks.on_mouse_help (*this, nullptr, event.modifiers.shift ? 1 : 0);
}

bool Canvas::canvas_key (int key, Modifiers modifiers) {
    if (!is_modifier (key)) end_drag ();
    if (selection.is_empty () && selected_field_ != nullptr && field_key (key, modifiers))
        return true;
    if (is_modifier (key)) return false;
    if (modifiers.alt) return false;
    if (pointer_key (key, modifiers)) return true;
    switch (shared_.key_state) {
    case KeyState::standard: report_message (nullptr); break;
    case KeyState::emacs:
        if (const std::optional<bool> done = unprefixed_key (key, modifiers)) return *done;
        break;
    case KeyState::after_control_x: return after_control_x (key);
    case KeyState::after_escape: return after_escape (key);
    }
    return common_key (key, modifiers);
}

/// A command that a prefix and a key reach.
struct PrefixedCommand {
    int key;
    Command command;
};

std::optional<bool> Canvas::unprefixed_key (int key, Modifiers modifiers) {
    if (key == control ('X') && modifiers.ctrl) {
        shared_.key_state = KeyState::after_control_x;
        report_message ("^X");
        return true;
    }
    if (key == keys::escape_code && modifiers.plain ()) {
        shared_.key_state = KeyState::after_escape;
        report_message ("Esc-");
        return true;
    }
    report_message (nullptr);
    if (key == '=' && modifiers.ctrl) {
        redo ();
        return true;
    }
    if (key >= first_printable) return std::nullopt;
    if (!modifiers.ctrl) return false; // a control code from nowhere
    if (mode == Mode::text && edits_text (key)) return std::nullopt;
    const char letter = static_cast<char> (key - 1 + 'a');
    if (command_for ({.ctrl = true, .shift = modifiers.shift, .key = letter}, shared_.shortcuts))
        return false; // the menu's
    switch (key) {
    case control ('B'): scroll (ScrollKey::left); return true;
    case control ('F'): scroll (ScrollKey::right); return true;
    case control ('N'): scroll (ScrollKey::down); return true;
    case control ('P'): scroll (ScrollKey::up); return true;
    case control ('V'): scroll (ScrollKey::page_down); return true;
    default: return std::nullopt;
    }
}

bool Canvas::after_control_x (int key) {
    static constexpr std::array<PrefixedCommand, 9> commands{{
        {control ('C'), Command::quit},
        {control ('D'), Command::dark_mode},
        {control ('F'), Command::open_file},
        {control ('I'), Command::insert_file},
        {control ('P'), Command::insert_picture},
        {control ('R'), Command::load_file},
        {control ('S'), Command::save_file},
        {control ('V'), Command::reopen_file},
        {control ('W'), Command::save_as},
    }};
    shared_.key_state = KeyState::emacs;
    report_message (nullptr);
    for (const PrefixedCommand& row : commands) {
        if (row.key != key) continue;
        if (callbacks.on_command) callbacks.on_command (row.command);
        return true;
    }
    report_message ("Invalid keyboard command");
    return true;
}

bool Canvas::after_escape (int key) {
    static constexpr std::array<PrefixedCommand, 9> commands{{
        {keys::escape_code, Command::documentation},
        {'+', Command::zoom_in},
        {'=', Command::zoom_in},
        {'-', Command::zoom_out},
        {'0', Command::zoom_reset},
        {'d', Command::duplicate},
        {'k', Command::copy},
        {'s', Command::export_svg},
        {'z', Command::export_pdf},
    }};
    shared_.key_state = KeyState::emacs;
    report_message (nullptr);
    switch (key) {
    case '<': scroll (ScrollKey::top_left); return true;
    case '>': scroll (ScrollKey::bottom); return true;
    case 'v': scroll (ScrollKey::page_up); return true;
    default: break;
    }
    for (const PrefixedCommand& row : commands) {
        if (row.key != key) continue;
        if (callbacks.on_command) callbacks.on_command (row.command);
        return true;
    }
    report_message ("Invalid keyboard command");
    return true;
}

bool Canvas::common_key (int key, Modifiers modifiers) {
    if (is_delete (key)) return delete_selection (*this) || selection_key (key, modifiers);
    if (modifiers.ctrl && (key == keys::left || key == keys::right)) {
        if (callbacks.on_tab) callbacks.on_tab (key == keys::left ? -1 : 1);
        return true;
    }
    const bool selected = !selection.is_empty ();
    switch (key) {
    case key_tab:
        if (!modifiers.plain ()) return false;
        if (callbacks.on_command) callbacks.on_command (Command::start_simulation);
        return true;
    case key_home: scroll (ScrollKey::home); return true;
    case key_end: scroll (ScrollKey::end); return true;
    case key_page_up: scroll (ScrollKey::page_up); return true;
    case key_page_down: scroll (ScrollKey::page_down); return true;
    case keys::left:
        if (selected) break;
        scroll (ScrollKey::left);
        return true;
    case keys::right:
        if (selected) break;
        scroll (ScrollKey::right);
        return true;
    case keys::up:
        if (selected) break;
        scroll (ScrollKey::up);
        return true;
    case keys::down:
        if (selected) break;
        scroll (ScrollKey::down);
        return true;
    default: break;
    }
    return selection_key (key, modifiers);
}

void Canvas::scroll (ScrollKey key) {
    view.scroll_key (network (), key);
    start_fade ();
}

bool Canvas::selection_key (int key, Modifiers modifiers) {
    if (selection.edit_line () != nullptr) return text_key (key, modifiers);
    switch (key) {
    case keys::left: return move_by_key (-1, 0);
    case keys::right: return move_by_key (1, 0);
    case keys::up: return move_by_key (0, -1);
    case keys::down: return move_by_key (0, 1);
    default: return false;
    }
}

bool Canvas::text_key (int key, Modifiers modifiers) {
    Line& line = *selection.edit_line ();
    // Letters come without Ctrl; what Ctrl makes of them are codes below 32.
    if (modifiers.ctrl && key >= first_printable && key < keys::backspace) return false;
    bool handled = false; // the line itself may be gone at the end of the edit
    const auto press = [&] {
        const document::TextPlace place =
            line.key ({.key = key, .shift = modifiers.shift}, line.cursor);
        handled = line.status != document::KeyStatus::not_handled;
        if (handled) selection.move_cursor (place);
    };
    if (GraphBase* const owner = line.find_object ())
        edit_labels (*owner, press);
    else
        press ();
    if (!handled) return false;
    if (const Line* const now = selection.edit_line ()) {
        const document::StdChar& letter = now->chars ()[static_cast<std::size_t> (now->cursor)];
        tell_style (letter.font, letter.color);
    }
    return true;
}

bool Canvas::move_by_key (int dx, int dy) {
    bool moved = false;
    for (GraphBase* const object : selection.objects ())
        moved = object->set_position (object->x () + static_cast<float> (dx),
                                      object->y () + static_cast<float> (dy)) ||
                moved;
    if (!moved) return false;
    if (settle_after_move ())
        finish_edit (Edit::structure ());
    else
        finish_edit (Edit::move (dx, dy));
    return true;
}

bool Canvas::field_key (int key, Modifiers modifiers) {
    Line& field = *selected_field_;
    auto* const arc = static_cast<document::Arque*> (field.find_object ());
    if (arc == nullptr) return false;
    const float step = modifiers.shift ? 8 : 1;
    const auto move = [&] (float dx, float dy) {
        if (move_label (*arc, field, field.x () + dx, field.y () + dy))
            finish_edit (Edit::labels (*arc));
        return true;
    };
    if (modifiers.ctrl || modifiers.alt) return false;
    switch (key) {
    case keys::left: return move (-step, 0);
    case keys::right: return move (step, 0);
    case keys::up: return move (0, -step);
    case keys::down: return move (0, step);
    case keys::escape_code:
        if (field.set_offset (0, 0)) finish_edit (Edit::labels (*arc));
        return true;
    default: break;
    }
    if (!is_delete (key)) return false;
    remove_field (*this, *arc, field);
    return true;
}

} // namespace ostrand::editor
