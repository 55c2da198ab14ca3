// Arithmetic of the tab order.
#include "editor/tab_list.h"

#include <algorithm>

namespace ostrand::editor {
namespace {

constexpr int dead_zone = 5; // pixels on each side of the press

bool in_dead_zone (int delta) {
    return delta + dead_zone >= 0 && delta + dead_zone < 2 * dead_zone + 1;
}

} // namespace

int TabList::index_of (const Canvas& canvas) const {
    const auto found = std::ranges::find (tabs_, &canvas);
    return found == tabs_.end () ? -1 : static_cast<int> (found - tabs_.begin ());
}

void TabList::add (Canvas& canvas) {
    tabs_.push_back (&canvas);
    if (active_ < 0) active_ = 0;
}

int TabList::heir_of (int index) const {
    if (count () <= 1) return -1;
    if (index != active_) return active_;
    return index == count () - 1 ? index - 1 : index + 1;
}

void TabList::remove (int index) {
    const int heir = heir_of (index);
    tabs_.erase (tabs_.begin () + index);
    active_ = heir > index ? heir - 1 : heir;
}

void TabList::move (int from, int to) {
    const Canvas* const on_top = active_ < 0 ? nullptr : &at (active_);
    Canvas* const moved = &at (from);
    tabs_.erase (tabs_.begin () + from);
    tabs_.insert (tabs_.begin () + to, moved);
    if (on_top != nullptr) active_ = index_of (*on_top);
}

int TabList::next () const { return is_empty () ? -1 : (active_ + 1) % count (); }

int TabList::previous () const { return is_empty () ? -1 : (active_ + count () - 1) % count (); }

std::optional<int> drop_index (std::span<const TabSpan> spans, int dragged, int pointer_x) {
    for (int i = 0; i < static_cast<int> (spans.size ()); ++i) {
        const TabSpan& span = spans[static_cast<std::size_t> (i)];
        if (pointer_x < span.x || pointer_x >= span.x + span.width / 2) continue;
        if (i == dragged) return std::nullopt;
        return i;
    }
    return std::nullopt;
}

bool is_click_distance (int dx, int dy) { return in_dead_zone (dx) && in_dead_zone (dy); }

} // namespace ostrand::editor
