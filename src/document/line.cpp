// A line of text: its entries, selection, size, forms as text, comparison.
#include "document/line.h"

#include "document/document_state.h"
#include "document/markup.h"

#include <algorithm>

namespace ostrand::document {

Line::Line (std::string_view letters, unsigned new_font, unsigned new_color)
    : Char (new_font, new_color) {
    chars_.reserve (letters.size () + 1);
    for (const char letter : letters) {
        chars_.push_back (
            std::make_unique<StdChar> (static_cast<unsigned char> (letter), new_font, new_color));
    }
    chars_.push_back (std::make_unique<StdChar> (end_mark, new_font, new_color));
    for (const auto& c : chars_) c->parent = this;
}

Line::Line (MarkupReader& reader) : Char (reader.font, reader.color) {
    chars_ = read_items (reader);
    if (reader.peek () == '}') reader.skip ();
    chars_.push_back (std::make_unique<StdChar> (end_mark, reader.font, reader.color));
    for (const auto& c : chars_) c->parent = this;
}

Line::~Line () = default;

int Line::index_of (const Char* c) const {
    const auto found = std::find_if (chars_.begin (), chars_.end (),
                                     [c] (const auto& e) { return e.get () == c; });
    return found == chars_.end () ? -1 : static_cast<int> (found - chars_.begin ());
}

void Line::erase (int from, int to) {
    for (int i = from; i < to; ++i) {
        if (chars_[static_cast<std::size_t> (i)].get () == cursor) cursor = nullptr;
    }
    chars_.erase (chars_.begin () + from, chars_.begin () + to);
    mark_layout_dirty ();
}

Char* Line::replace (int from, int to, std::string_view markup, unsigned new_font,
                     unsigned new_color) {
    const int last = count () - 1;
    from = std::max (from, 0);
    if (to < 0 || to > last) to = last;
    if (from > last) return nullptr;
    MarkupReader reader (markup);
    const Char& style = *chars_[static_cast<std::size_t> (from)];
    reader.font = new_font == no_font ? style.font : new_font;
    reader.color = new_color == no_color ? style.color : new_color;
    std::vector<std::unique_ptr<Char>> items = read_items (reader);
    for (const auto& c : items) c->parent = this;
    const int inserted = static_cast<int> (items.size ());
    if (to > from) erase (from, to);
    chars_.insert (chars_.begin () + from, std::make_move_iterator (items.begin ()),
                   std::make_move_iterator (items.end ()));
    mark_layout_dirty ();
    return chars_[static_cast<std::size_t> (from + inserted)].get ();
}

void Line::insert_before (const Char* at, std::unique_ptr<Char> c) {
    int place = index_of (at);
    if (place < 0) place = count () - 1;
    c->parent = this;
    chars_.insert (chars_.begin () + place, std::move (c));
    mark_layout_dirty ();
}

Char* Line::prev_of (const Char* c) const {
    const int place = index_of (c);
    if (place < 0) return nullptr;
    return chars_[static_cast<std::size_t> (std::max (place - 1, 0))].get ();
}

void Line::clear_selection () {
    sel_start = -1;
    sel_end = 0;
    for (const auto& c : chars_) c->set_selected (false);
}

void Line::select_range () {
    for (int i = 0; i < count (); ++i) {
        chars_[static_cast<std::size_t> (i)]->set_selected (sel_start >= 0 && i >= sel_start &&
                                                            i <= sel_end);
    }
}

Char* Line::replace_selection (std::string_view markup) {
    if (sel_start < 0) return nullptr;
    Char* behind = replace (sel_start, sel_end + 1, markup);
    clear_selection ();
    return behind;
}

void Line::selected_sprint (PrintState& to, float, float) const {
    for (std::size_t i = 0; i < chars_.size (); ++i) {
        if (chars_[i]->selected) chars_[i]->fprint (to, -1);
    }
}

void Line::select_word (const Char* c) {
    const int place = index_of (c);
    if (place < 0) return;
    const auto blank = [this] (int i) {
        const Char& entry = *chars_[static_cast<std::size_t> (i)];
        return i == count () - 1 || entry.is_blank ();
    };
    sel_start = sel_end = place;
    if (!blank (place)) {
        while (sel_start > 0 && !blank (sel_start - 1)) --sel_start;
        while (!blank (sel_end + 1)) ++sel_end;
    }
    select_range ();
}

void Line::set_style (unsigned new_font, unsigned new_color) {
    for (const auto& c : chars_) {
        if (!c->selected || c->kind () != CharKind::std_char) continue;
        auto& letter = static_cast<StdChar&> (*c);
        if (new_font != no_font && letter.font != new_font) {
            letter.font = new_font;
            letter.metrics = font_metrics (new_font);
        }
        if (new_color != no_color) letter.color = new_color;
    }
    mark_layout_dirty ();
    paint (0, 0, false);
}

namespace {

/// Index of the entry that lies dx pixels from the entry at `from`.
int index_at (const Line& line, int from, float dx) {
    const auto width_at = [&line] (int i) {
        return line.chars ()[static_cast<std::size_t> (i)]->get_width ();
    };
    int place = from;
    while (dx < 0 && place > 0) {
        --place;
        dx += width_at (place);
    }
    while (place < line.count () - 1 && dx >= width_at (place)) {
        dx -= width_at (place);
        ++place;
    }
    return place;
}

} // namespace

Char* Line::move_cursor_to (float dx, bool& changed) {
    const int from = std::max (index_of (cursor), 0);
    Char* to = chars_[static_cast<std::size_t> (index_at (*this, from, dx))].get ();
    changed = to != cursor;
    cursor = to;
    return to;
}

Char* Line::extend_selection_to (float dx, bool& changed) {
    const int from = std::max (index_of (cursor), 0);
    const int to = index_at (*this, from, dx);
    const int old_start = sel_start;
    const int old_end = sel_end;
    select_word (chars_[static_cast<std::size_t> (from)].get ());
    const int first = sel_start;
    const int last = sel_end;
    select_word (chars_[static_cast<std::size_t> (to)].get ());
    sel_start = std::min (first, sel_start);
    sel_end = std::max (last, sel_end);
    select_range ();
    changed = sel_start != old_start || sel_end != old_end;
    return chars_[static_cast<std::size_t> (to)].get ();
}

bool Line::set_offset (float new_x, float new_y, float left_limit, int top_limit) {
    new_x = std::max (new_x, left_limit);
    new_y = std::max (new_y, static_cast<float> (top_limit));
    const bool moved = new_x != x || new_y != y;
    x = new_x;
    y = new_y;
    if (moved) mark_layout_dirty ();
    return moved;
}

bool Line::contains (const Line& pattern) const {
    const auto wanted_end = pattern.chars_.end () - 1;
    return std::search (chars_.begin (), chars_.end () - 1, pattern.chars_.begin (), wanted_end,
                        [] (const auto& a, const auto& b) { return a->equals (*b); }) !=
               chars_.end () - 1 ||
           pattern.is_empty ();
}

std::string Line::chars_only () const {
    std::string out;
    for (const auto& c : chars_) {
        if (c->kind () != CharKind::std_char) continue;
        const auto& letter = static_cast<const StdChar&> (*c);
        if (letter.code != end_mark) out += static_cast<char> (letter.code & 0xFFU);
    }
    return out;
}

std::string Line::plain_chars () const {
    std::string out;
    for (const auto& c : chars_) {
        if (c->kind () != CharKind::std_char) continue;
        const auto& letter = static_cast<const StdChar&> (*c);
        if (letter.code == end_mark || letter.sub || letter.sup) continue;
        out += static_cast<char> (letter.code & 0xFFU);
    }
    return out;
}

void Line::set_fog (bool on) {
    foggy = on;
    for (const auto& c : chars_) c->set_fog (on);
}

std::unique_ptr<Line> Line::copy (Char* new_parent) const {
    std::unique_ptr<Line> other (new Line (font, color));
    other->parent = new_parent;
    other->x = x;
    other->y = y;
    other->foggy = foggy;
    other->frame = frame;
    other->chars_.reserve (chars_.size ());
    for (const auto& c : chars_) other->chars_.push_back (c->clone (other.get ()));
    return other;
}

std::unique_ptr<Char> Line::clone (Char* new_parent) const { return copy (new_parent); }

float Line::get_width () const {
    const unsigned now = document_state ().layout_generation;
    if (width_stamp == now) return width;
    width = 0;
    for (std::size_t i = 0; i + 1 < chars_.size (); ++i) width += chars_[i]->get_width ();
    width_stamp = now;
    return width;
}

int Line::get_ascent () const {
    const unsigned now = document_state ().layout_generation;
    if (ascent_stamp == now) return ascent;
    ascent = 0;
    for (const auto& c : chars_) ascent = std::max (ascent, c->get_ascent ());
    ascent_stamp = now;
    return ascent;
}

int Line::get_descent () const {
    const unsigned now = document_state ().layout_generation;
    if (descent_stamp == now) return descent;
    descent = 0;
    for (const auto& c : chars_) descent = std::max (descent, c->get_descent ());
    descent_stamp = now;
    return descent;
}

int Line::get_height () const { return get_ascent () + get_descent (); }

void Line::sprint (PrintState& to, float, float) const { fprint (to, -1); }

void Line::fprint (PrintState& to, int depth) const {
    to.out += '{';
    for (const auto& c : chars_) c->fprint (to, depth);
    to.out += '}';
}

void Line::text (std::string& out) const {
    for (const auto& c : chars_) c->text (out);
}

void Line::xml_print (PrintState& to) const {
    for (const auto& c : chars_) c->xml_print (to);
}

void Line::print_plain (std::string& out) const {
    for (const auto& c : chars_) c->print_plain (out);
}

bool Line::equals (const Char& other) const {
    if (other.kind () != CharKind::line) return false;
    const auto& line = static_cast<const Line&> (other);
    return std::equal (chars_.begin (), chars_.end (), line.chars_.begin (), line.chars_.end (),
                       [] (const auto& a, const auto& b) { return a->equals (*b); });
}

bool Line::append_identity (std::string& identity) const {
    identity += 'L';
    identity += std::to_string (chars_.size ());
    identity += ';';
    return std::all_of (chars_.begin (), chars_.end (),
                        [&identity] (const auto& c) { return c->append_identity (identity); });
}

Char* Line::find_at (float px, float py, HitPlace& place) {
    const auto above = static_cast<float> (get_ascent ());
    const auto below = static_cast<float> (get_descent ());
    if (px < x || px >= x + get_width () || py < y - above || py > y + below) return nullptr;
    place.line = this;
    float left = x;
    for (std::size_t i = 0; i + 1 < chars_.size (); ++i) {
        const float w = chars_[i]->get_width ();
        if (px < left + w) return chars_[i]->find_at (px - left, py - y, place);
        left += w;
    }
    return nullptr;
}

} // namespace ostrand::document
