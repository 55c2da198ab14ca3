// A line of text as a container: its entries, how they change, copies, comparison.
#include "document/line.h"

#include "document/markup.h"
#include "document/network_listener.h"

#include <algorithm>

namespace ostrand::document {

Line::Line (std::string_view letters, unsigned new_font, unsigned new_color)
    : font_ (new_font), color_ (new_color) {
    chars_.reserve (letters.size () + 1);
    for (const char letter : letters) {
        chars_.emplace_back (static_cast<unsigned char> (letter), new_font, new_color);
    }
    chars_.emplace_back (end_mark, new_font, new_color);
}

Line::Line (MarkupReader& reader) : font_ (reader.font), color_ (reader.color) {
    chars_ = read_items (reader);
    if (reader.peek () == '}') reader.skip ();
    chars_.emplace_back (end_mark, reader.font, reader.color);
    for (StdChar& entry : chars_) own (entry);
}

Line::~Line () = default;

Line* Line::sub (int index) const {
    const StdChar& entry = at (index);
    return entry.parts ? entry.parts->sub.get () : nullptr;
}

Line* Line::sup (int index) const {
    const StdChar& entry = at (index);
    return entry.parts ? entry.parts->sup.get () : nullptr;
}

void Line::own (StdChar& entry) {
    if (!entry.parts) return;
    plain_ = false;
    for (Char* part : {static_cast<Char*> (entry.parts->sub.get ()),
                       static_cast<Char*> (entry.parts->sup.get ()), entry.parts->item.get ()}) {
        if (part != nullptr) adopt (*part, this);
    }
}

void Line::content_changed () {
    size_generation_ = 0;
    Char::content_changed ();
}

void Line::erase (int from, int to) {
    if (to <= from) return;
    for (int i = from; i < to && !plain_; ++i) announce_parts (*this, at (i));
    chars_.erase (chars_.begin () + from, chars_.begin () + to);
    if (cursor >= to) {
        cursor -= to - from;
    } else if (cursor > from) {
        cursor = from;
    }
    clear_selection ();
    content_changed ();
}

void Line::insert (int index, std::vector<StdChar> entries) {
    if (entries.empty ()) return;
    for (StdChar& entry : entries) own (entry);
    const int added = static_cast<int> (entries.size ());
    chars_.insert (chars_.begin () + index, std::make_move_iterator (entries.begin ()),
                   std::make_move_iterator (entries.end ()));
    if (cursor >= index) cursor += added;
    clear_selection ();
    content_changed ();
}

int Line::replace (int from, int to, std::string_view markup, unsigned new_font,
                   unsigned new_color) {
    const int last = count () - 1;
    from = std::max (from, 0);
    if (to < 0 || to > last) to = last;
    if (from > last) return -1;
    MarkupReader reader (markup);
    reader.font = new_font == no_font ? at (from).font : new_font;
    reader.color = new_color == no_color ? at (from).color : new_color;
    std::vector<StdChar> items = read_items (reader);
    const int inserted = static_cast<int> (items.size ());
    erase (from, to);
    insert (from, std::move (items));
    return from + inserted;
}

void Line::insert_before (int index, StdChar letter) {
    if (index < 0 || index >= count ()) index = count () - 1;
    std::vector<StdChar> entries;
    entries.push_back (std::move (letter));
    insert (index, std::move (entries));
}

void Line::insert_before (int index, std::unique_ptr<Char> item, unsigned new_font,
                          unsigned new_color) {
    insert_before (index, item_entry (std::move (item), new_font, new_color));
}

void Line::set_script (int index, bool superscript, std::unique_ptr<Line> script) {
    StdChar& entry = at (index);
    if (!entry.parts) {
        if (!script) return;
        entry.parts = std::make_unique<LetterParts> ();
    }
    std::unique_ptr<Line>& slot = superscript ? entry.parts->sup : entry.parts->sub;
    if (slot) announce_leaving (*slot);
    slot = std::move (script);
    if (!entry.parts->sub && !entry.parts->sup && !entry.parts->item) entry.parts.reset ();
    own (entry);
    content_changed ();
}

TextPlace Line::holder () const {
    if (parent_ == nullptr || parent_->kind () != CharKind::line) return {};
    auto* const around = static_cast<Line*> (parent_);
    const auto found =
        std::find_if (around->chars_.begin (), around->chars_.end (), [this] (const StdChar& e) {
            return e.parts && (e.sub () == this || e.sup () == this || e.item () == this);
        });
    if (found == around->chars_.end ()) return {};
    return {around, static_cast<int> (found - around->chars_.begin ())};
}

bool Line::contains (const Line& pattern) const {
    const auto end = chars_.end () - 1;
    const auto wanted_end = pattern.chars_.end () - 1;
    return std::search (chars_.begin (), end, pattern.chars_.begin (), wanted_end, same_letter) !=
               end ||
           pattern.is_empty ();
}

bool Line::set_offset (float new_x, float new_y) {
    if (new_x == x_ && new_y == y_) return false;
    x_ = new_x;
    y_ = new_y;
    Char::content_changed ();
    return true;
}

bool Line::set_offset (float new_x, float new_y, float left_limit, int top_limit) {
    return set_offset (std::max (new_x, std::min (left_limit, x_)),
                       std::max (new_y, std::min (static_cast<float> (top_limit), y_)));
}

bool Line::set_fog (bool on) {
    bool changed = Char::set_fog (on);
    for (StdChar& entry : chars_) {
        changed = changed || entry.foggy != on;
        entry.foggy = on;
        if (!entry.parts) continue;
        for (Char* part :
             {static_cast<Char*> (entry.parts->sub.get ()),
              static_cast<Char*> (entry.parts->sup.get ()), entry.parts->item.get ()}) {
            if (part != nullptr) changed = part->set_fog (on) || changed;
        }
    }
    return changed;
}

std::unique_ptr<Line> Line::copy (Char* new_parent) const {
    std::unique_ptr<Line> other (new Line (font_, color_));
    adopt (*other, new_parent);
    place (*other, x_, y_);
    other->foggy_ = foggy_;
    other->chars_.reserve (chars_.size ());
    for (const StdChar& entry : chars_) {
        StdChar& added = other->chars_.emplace_back (entry.code, entry.font, entry.color);
        added.foggy = entry.foggy;
        if (!entry.parts) continue;
        added.parts = std::make_unique<LetterParts> ();
        if (entry.parts->sub) added.parts->sub = entry.parts->sub->copy (other.get ());
        if (entry.parts->sup) added.parts->sup = entry.parts->sup->copy (other.get ());
        if (entry.parts->item) added.parts->item = entry.parts->item->clone (other.get ());
        other->own (added);
    }
    return other;
}

std::unique_ptr<Char> Line::clone (Char* new_parent) const { return copy (new_parent); }

bool Line::equals (const Char& other) const {
    if (other.kind () != CharKind::line) return false;
    const auto& line = static_cast<const Line&> (other);
    return std::equal (chars_.begin (), chars_.end (), line.chars_.begin (), line.chars_.end (),
                       same_letter);
}

bool Line::add_identity (Identity& identity) const {
    identity.add (chars_.size ());
    for (const StdChar& entry : chars_) {
        identity.add (entry.code);
        if (!entry.parts) continue;
        for (const Char* part :
             {static_cast<const Char*> (entry.sub ()), static_cast<const Char*> (entry.sup ()),
              static_cast<const Char*> (entry.item ())}) {
            identity.add (part != nullptr ? 1 : 0);
            if (part != nullptr && !part->add_identity (identity)) return false;
        }
    }
    return true;
}

} // namespace ostrand::document
