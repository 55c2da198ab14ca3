// What each key does to a line that is being edited.
#include "document/line.h"
#include "document/markup.h"

#include <algorithm>

namespace ostrand::document {
namespace {

/// Control letters: Ctrl-A is 1.
constexpr int control (char letter) { return letter - 'A' + 1; }

} // namespace

TextPlace Line::enter_script (int index, bool superscript) {
    // The end mark is never written, so a script of it would be lost.
    if (!at (index).is_letter () || index == count () - 1) return {this, index};
    Line* script = superscript ? sup (index) : sub (index);
    if (script == nullptr) {
        const StdChar& letter = at (index);
        set_script (index, superscript,
                    std::make_unique<Line> ("", reduced_font (letter.font), letter.color));
        script = superscript ? sup (index) : sub (index);
    }
    clear_selection ();
    cursor = index;
    script->cursor = 0;
    return {script, 0};
}

TextPlace Line::leave_script (int index) {
    const TextPlace letter = holder ();
    if (letter.line == nullptr || !letter.line->at (letter.index).is_letter ()) {
        return {this, index};
    }
    clear_selection ();
    letter.line->cursor = letter.index;
    return letter;
}

TextPlace Line::key (KeyPress press, int index) {
    status = KeyStatus::cursor_only;
    const int last = count () - 1;
    if (index < 0 || index > last) index = last;
    cursor = index;
    const auto move_to = [this] (int to) {
        clear_selection ();
        cursor = to;
        return TextPlace{this, to};
    };
    const auto deleted = [this] (int from, int to) {
        if (to > from) {
            erase (from, to);
            status = KeyStatus::layout_needed;
        }
        cursor = from;
        return TextPlace{this, from};
    };
    const auto deleted_selection = [this] {
        const int from = sel_start;
        if (erase_selection ()) status = KeyStatus::layout_needed;
        cursor = std::min (from, count () - 1);
        return TextPlace{this, cursor};
    };

    switch (press.key) {
    case control ('A'): return move_to (0);
    case control ('E'): return move_to (last);
    case keys::left:
        if (press.shift) return leave_script (index);
        [[fallthrough]];
    case control ('B'): return move_to (prev_of (index));
    case keys::right:
    case control ('F'): return move_to (std::min (index + 1, last));
    case keys::escape:
    case keys::escape_code: return leave_script (index);
    case keys::down:
        if (press.shift) return enter_script (index, false);
        break;
    case keys::up:
        if (press.shift) return enter_script (index, true);
        break;
    case control ('D'):
    case keys::delete_code:
    case keys::delete_key:
        if (sel_start >= 0) return deleted_selection ();
        return deleted (index, std::min (index + 1, last));
    case control ('H'):
    case keys::backspace:
        if (sel_start >= 0) return deleted_selection ();
        return deleted (prev_of (index), index);
    case control ('K'): return deleted (index, last);
    default:
        if (can_be_typed (press.key)) {
            if (sel_start >= 0) index = deleted_selection ().index;
            const StdChar& style = style_before (index);
            insert_before (index,
                           StdChar (static_cast<unsigned> (press.key), style.font, style.color));
            status = KeyStatus::changed;
            cursor = index + 1;
            return {this, cursor};
        }
    }
    status = KeyStatus::not_handled;
    return {this, index};
}

} // namespace ostrand::document
