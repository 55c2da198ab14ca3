// How a line is edited: selection, cursor, paste, style.
#include "document/line.h"
#include "document/markup.h"

#include <algorithm>

namespace ostrand::document {

void Line::clear_selection () {
    sel_start = -1;
    sel_end = 0;
    for (StdChar& entry : chars_) entry.selected = false;
}

void Line::select_range () {
    for (int i = 0; i < count (); ++i) {
        at (i).selected = sel_start >= 0 && i >= sel_start && i <= sel_end;
    }
}

void Line::select_all () {
    if (is_empty ()) {
        clear_selection ();
        return;
    }
    sel_start = 0;
    sel_end = count () - 2;
    select_range ();
}

void Line::select_word (int index) {
    if (index < 0 || index >= count ()) return;
    const auto blank = [this] (int i) { return i == count () - 1 || at (i).is_blank (); };
    sel_start = sel_end = index;
    if (!blank (index)) {
        while (sel_start > 0 && !blank (sel_start - 1)) --sel_start;
        while (!blank (sel_end + 1)) ++sel_end;
    }
    select_range ();
}

bool Line::erase_selection () {
    if (sel_start < 0) return false;
    const int from = std::min (sel_start, count () - 1);
    const int to = std::min (sel_end + 1, count () - 1);
    clear_selection ();
    erase (from, to);
    return to > from;
}

int Line::replace_selection (std::string_view markup) {
    if (sel_start < 0) return -1;
    const int behind = replace (sel_start, sel_end + 1, markup);
    clear_selection ();
    return behind;
}

bool Line::paste_markup (std::string_view markup, unsigned from_font, unsigned from_color) {
    const int from = sel_start >= 0 ? std::min (sel_start, count () - 1)
                                    : (cursor < 0 || cursor >= count () ? count () - 1 : cursor);
    const bool erased = erase_selection ();
    const int behind = replace (from, from, markup, from_font, from_color);
    cursor = behind;
    return erased || behind != from;
}

bool Line::paste_letters (std::string_view letters) {
    const int index = sel_start >= 0 ? std::min (sel_start, count () - 1)
                                     : (cursor < 0 || cursor >= count () ? count () - 1 : cursor);
    bool changed = erase_selection ();
    const StdChar& style = style_before (index);
    std::vector<StdChar> entries;
    for (const char letter : letters) {
        const auto code = static_cast<unsigned char> (letter);
        if (can_be_typed (code)) entries.emplace_back (code, style.font, style.color);
    }
    changed = changed || !entries.empty ();
    const int behind = index + static_cast<int> (entries.size ());
    insert (index, std::move (entries));
    cursor = behind;
    return changed;
}

bool Line::has_selected_letter () const {
    return std::any_of (chars_.begin (), chars_.end (),
                        [] (const StdChar& entry) { return entry.selected; });
}

bool Line::set_style (unsigned new_font, unsigned new_color) {
    const bool selection = has_selected_letter ();
    bool changed = false;
    bool resized = false;
    for (int i = 0; i < count (); ++i) {
        StdChar& letter = at (i);
        if (!letter.is_letter () || !(selection ? letter.selected : i == cursor)) continue;
        if (new_font != no_font && letter.font != new_font) {
            letter.font = new_font;
            changed = resized = true;
        }
        if (new_color != no_color && letter.color != new_color) {
            letter.color = new_color;
            changed = true;
        }
    }
    if (resized) content_changed ();
    return changed;
}

/// Index of the entry that lies dx pixels from the entry at `from`.
int Line::entry_at (int from, float dx) const {
    int index = from;
    while (dx < 0 && index > 0) {
        --index;
        dx += width_at (index);
    }
    while (index < count () - 1 && dx >= width_at (index)) {
        dx -= width_at (index);
        ++index;
    }
    return index;
}

bool Line::move_cursor_to (float dx) {
    const int to = entry_at (std::max (cursor, 0), dx);
    const bool moved = to != cursor;
    cursor = to;
    return moved;
}

bool Line::extend_selection_to (float dx, SelectBy by) {
    const int from = std::clamp (cursor, 0, count () - 1);
    const int to = entry_at (from, dx);
    const int old_start = sel_start;
    const int old_end = sel_end;
    int first = std::min (from, to);
    int last = std::max (from, to);
    if (by == SelectBy::words) {
        select_word (from);
        first = sel_start;
        last = sel_end;
        select_word (to);
        first = std::min (first, sel_start);
        last = std::max (last, sel_end);
    }
    sel_start = first;
    sel_end = last;
    select_range ();
    return sel_start != old_start || sel_end != old_end;
}

void Line::selected_sprint (PrintState& to, float, float) const {
    for (const StdChar& entry : chars_) {
        if (entry.selected) print_entry (to, entry, -1);
    }
}

} // namespace ostrand::document
