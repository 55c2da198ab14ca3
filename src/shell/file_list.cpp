// Columns of names.
#include "shell/file_list.h"

#include <FL/Fl.H>
#include <FL/fl_draw.H>
#include <algorithm>

namespace ostrand::shell {
namespace {

constexpr Fl_Font name_font = FL_HELVETICA;
constexpr int name_size = 12;
constexpr int line_height = 16;
constexpr int margin = 6;
constexpr int gap = 16; // between columns
constexpr Fl_Color hover_ground = FL_BLACK;
constexpr Fl_Color hover_text = 3;

Fl_Color colour_of (EntryKind kind) {
    switch (kind) {
    case EntryKind::directory: return 4;
    case EntryKind::not_in_filter: return 0xa0a0a000;
    case EntryKind::executable: return static_cast<Fl_Color> (EntryKind::executable);
    case EntryKind::plain: break;
    }
    return FL_BLACK;
}

} // namespace

FileList::FileList (int x, int y, int w, int h) : Fl_Box (x, y, w, h) { box (FL_NO_BOX); }

void FileList::show_names (std::vector<DirectoryEntry> names) {
    names_ = std::move (names);
    first_column_ = 0;
    hovered_ = -1;
    show ();
    redraw ();
}

void FileList::layout_names () {
    fl_font (name_font, name_size);
    column_width_ = 1;
    for (const DirectoryEntry& entry : names_)
        column_width_ = std::max (column_width_, static_cast<int> (fl_width (entry.name.c_str ())));
    column_width_ = std::min (column_width_ + gap, std::max (w () / 2 - 2 * margin, 1));
    rows_ = std::max ((h () - 2 * margin) / line_height, 1);
    column_count_ = static_cast<int> (names_.size ()) / rows_ + 1;
    first_column_ = std::clamp (first_column_, 0, std::max (column_count_ - columns_in_view (), 0));
}

int FileList::columns_in_view () const {
    return std::max ((w () / 2 - 2 * margin) / column_width_, 1);
}

int FileList::name_at (int at_x, int at_y) const {
    const int left = x () + w () / 2 + margin;
    const int top = y () + margin;
    if (at_x < left || at_y < top) return -1;
    const int column = (at_x - left) / column_width_;
    const int row = (at_y - top) / line_height;
    if (column >= columns_in_view () || row >= rows_) return -1;
    const int index = (first_column_ + column) * rows_ + row;
    return index < static_cast<int> (names_.size ()) ? index : -1;
}

void FileList::hover (int at_x, int at_y) {
    const int name = name_at (at_x, at_y);
    if (name == hovered_) return;
    hovered_ = name;
    redraw ();
}

bool FileList::pick (int at_x, int at_y) {
    const int name = name_at (at_x, at_y);
    if (name < 0) return false;
    // The choice may change the names.
    const DirectoryEntry entry = names_[static_cast<std::size_t> (name)];
    if (on_pick) on_pick (entry);
    return true;
}

int FileList::handle (int event) {
    switch (event) {
    case FL_ENTER: return 1;
    case FL_MOVE: hover (Fl::event_x (), Fl::event_y ()); return 1;
    case FL_LEAVE: hover (-1, -1); return 1;
    case FL_PUSH: pick (Fl::event_x (), Fl::event_y ()); return 1;
    case FL_MOUSEWHEEL: {
        const int step = Fl::event_dy () != 0 ? Fl::event_dy () : Fl::event_dx ();
        first_column_ += step > 0 ? 1 : -1;
        layout_names ();
        redraw ();
        return 1;
    }
    default: return Fl_Box::handle (event);
    }
}

void FileList::draw () {
    layout_names ();
    fl_color (FL_BACKGROUND_COLOR);
    fl_rectf (x (), y (), w () / 2, h ());
    const int left = x () + w () / 2;
    fl_color (FL_WHITE);
    fl_rectf (left, y (), w () - w () / 2, h ());
    fl_color (FL_BLACK);
    fl_rect (left, y (), w () - w () / 2, h ());
    fl_font (name_font, name_size);
    const int shown = columns_in_view ();
    for (int column = 0; column < shown; ++column) {
        for (int row = 0; row < rows_; ++row) {
            const int index = (first_column_ + column) * rows_ + row;
            if (index >= static_cast<int> (names_.size ())) break;
            const DirectoryEntry& entry = names_[static_cast<std::size_t> (index)];
            const int at_x = left + margin + column * column_width_;
            const int at_y = y () + margin + row * line_height;
            fl_color (colour_of (entry.kind));
            if (index == hovered_) {
                fl_color (hover_ground);
                fl_rectf (at_x - 2, at_y, column_width_, line_height);
                fl_color (hover_text);
            }
            fl_push_clip (at_x, at_y, column_width_ - 4, line_height);
            fl_draw (entry.name.c_str (), at_x, at_y + line_height - 4);
            fl_pop_clip ();
        }
    }
    if (column_count_ > shown) {
        const std::string more = std::to_string (first_column_ + 1) + " - " +
                                 std::to_string (std::min (first_column_ + shown, column_count_)) +
                                 " / " + std::to_string (column_count_);
        fl_color (FL_DARK3);
        fl_draw (more.c_str (), left, y () + h () - 18, w () - w () / 2 - margin, 16,
                 FL_ALIGN_RIGHT);
    }
}

} // namespace ostrand::shell
