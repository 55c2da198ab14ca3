// The order of the tabs and which of them is on top.
// Layer: editor.
#pragma once
#include <cstddef>
#include <optional>
#include <span>
#include <vector>

namespace ostrand::editor {

class Canvas;

/// Most tabs that can be open.
inline constexpr int most_tabs = 32;

/// The open tabs in the order of the bar. Looks at the canvases, which the workbench owns.
class TabList {
  public:
    int count () const { return static_cast<int> (tabs_.size ()); }
    bool is_empty () const { return tabs_.empty (); }
    Canvas& at (int index) const { return *tabs_[static_cast<std::size_t> (index)]; }
    /// Index of a canvas's tab, -1 when it has none.
    int index_of (const Canvas& canvas) const;
    /// The tab on top, -1 when there is none.
    int active () const { return active_; }

    /// A new tab behind the others. The first one is on top.
    void add (Canvas& canvas);
    void select (int index) { active_ = index; }
    /// The tab that comes on top when `index` is closed: the one behind it, for the last the one
    /// before it; the present one when another is closed. -1 when none is left.
    int heir_of (int index) const;
    /// Takes a tab away; its heir is on top.
    void remove (int index);
    /// The tab at `from` goes to the place that `to` has now, and stays on top if it was.
    void move (int from, int to);
    /// The tab behind or before the one on top, going round.
    int next () const;
    int previous () const;

  private:
    std::vector<Canvas*> tabs_;
    int active_ = -1;
};

/// A tab's place in the bar, in pixels.
struct TabSpan {
    int x;
    int width;
};

/// Where a tab that is dragged goes: to the tab whose left half holds the pointer.
/// spans  of all tabs, in order
/// Nothing when the pointer is in no left half, or when the tab stands there already.
std::optional<int> drop_index (std::span<const TabSpan> spans, int dragged, int pointer_x);

/// True while a drag by (dx, dy) from the press is still a click: within 5 pixels on each axis.
bool is_click_distance (int dx, int dy);

} // namespace ostrand::editor
