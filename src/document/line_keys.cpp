// What each key does to a line that is being edited.
#include "document/document_state.h"
#include "document/line.h"

#include <algorithm>

namespace ostrand::document {
namespace {

/// Control letters: Ctrl-A is 1.
constexpr int control (char letter) { return letter - 'A' + 1; }

} // namespace

bool Line::erase_selection () {
    if (sel_start < 0) return false;
    const int from = sel_start;
    const int to = std::min (sel_end + 1, count () - 1);
    clear_selection ();
    if (to > from) erase (from, to);
    return to > from;
}

Char* Line::insert_letter (unsigned code, Char* at) {
    const Char* style = prev_of (at);
    if (style == nullptr) style = chars_.front ().get ();
    insert_before (at, std::make_unique<StdChar> (code, style->font, style->color));
    return at;
}

Char* Line::key (KeyPress press, Char* at, Line*& out_line) {
    status = KeyStatus::cursor_only;
    out_line = this;
    int place = index_of (at);
    if (place < 0) place = count () - 1;
    const auto entry = [this] (int i) { return chars_[static_cast<std::size_t> (i)].get (); };
    const auto move_to = [&] (Char* to) {
        clear_selection ();
        cursor = to;
        return to;
    };
    const auto deleted = [&] (int from, int to) {
        if (to > from) {
            clear_selection ();
            erase (from, to);
            status = KeyStatus::layout_needed;
        }
        return cursor = entry (from);
    };
    const auto deleted_selection = [&] {
        const int from = sel_start;
        if (erase_selection ()) status = KeyStatus::layout_needed;
        return cursor = entry (std::min (from, count () - 1));
    };
    const auto enter_script = [&] (bool superscript) -> Char* {
        // The end mark is never written, so a script of it would be lost.
        if (entry (place)->kind () != CharKind::std_char || place == count () - 1) return at;
        auto& letter = static_cast<StdChar&> (*entry (place));
        const std::unique_ptr<Line>& script = superscript ? letter.sup : letter.sub;
        if (!script) {
            letter.set_script (
                superscript, std::make_unique<Line> ("", reduced_font (letter.font), letter.color));
        }
        clear_selection ();
        out_line = script.get ();
        script->cursor = script->chars_.front ().get ();
        return script->cursor;
    };
    const auto leave_script = [&] () -> Char* {
        if (parent == nullptr || parent->kind () != CharKind::std_char) return at;
        clear_selection ();
        if (parent->parent != nullptr && parent->parent->kind () == CharKind::line) {
            out_line = static_cast<Line*> (parent->parent);
            out_line->cursor = parent;
        }
        return parent;
    };

    switch (press.key) {
    case control ('A'): return move_to (entry (0));
    case control ('E'): return move_to (entry (count () - 1));
    case keys::left:
        if (press.shift) return leave_script ();
        [[fallthrough]];
    case control ('B'): return move_to (entry (std::max (place - 1, 0)));
    case keys::right:
    case control ('F'): return move_to (entry (std::min (place + 1, count () - 1)));
    case keys::escape: return leave_script ();
    case keys::down:
        if (press.shift) return enter_script (false);
        break;
    case keys::up:
        if (press.shift) return enter_script (true);
        break;
    case control ('D'):
    case keys::delete_key:
        if (sel_start >= 0) return deleted_selection ();
        return deleted (place, std::min (place + 1, count () - 1));
    case control ('H'):
    case keys::backspace:
        if (sel_start >= 0) return deleted_selection ();
        if (place == 0) return at;
        erase (place - 1, place);
        status = KeyStatus::layout_needed;
        return cursor = entry (place - 1);
    case control ('K'): return deleted (place, count () - 1);
    default:
        if (press.key >= 32 && press.key <= 126) {
            Char* before = entry (place);
            if (sel_start >= 0) before = deleted_selection ();
            status = KeyStatus::changed;
            return cursor = insert_letter (static_cast<unsigned> (press.key), before);
        }
    }
    status = KeyStatus::not_handled;
    return at;
}

} // namespace ostrand::document
