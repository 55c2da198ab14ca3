// Where the view on a page stands, and its scroll bar (the lift).
// Layer: manual (uses the arithmetic of editor's lifts).
#pragma once
#include "editor/lift.h"

#include <optional>

namespace ostrand::manual {

inline constexpr int line_step = 20;  // pixels of an arrow key or a notch of the wheel
inline constexpr int page_rest = 20;  // pixels that a page key leaves in view
inline constexpr int link_rise = 14;  // a link's target stands so far below the top of the view
inline constexpr int match_rise = 40; // likewise a match that was out of view
/// The lift begins to appear this far from the right edge.
inline constexpr float manual_lift_reach = 150;

enum class ScrollKey { up, down, page_up, page_down, home, end };

/// The thumb as it is to be painted.
struct LiftPaint {
    float x = 0; // pixels of the window
    float y = 0;
    float width = 0;
    float height = 0;
    unsigned colour = 0; // 0xRRGGBB00
    int alpha = 0;       // 0 to 255
    bool marked = false; // short: with a line beyond both ends
};

/// The vertical position of a view on a page, 0 to the page's height less the view's. All in
/// pixels.
class PageScroll {
  public:
    /// A new size of window or page; the position is kept within it.
    void set_extent (int window_width, int window_height, int page_height);

    int scroll_y () const { return scroll_y_; }
    int window_height () const { return height_; }
    /// The largest position.
    int last_y () const;

    /// Keeps a place at the top when the page changed under it; nothing fades.
    void keep_at (int y) { move_to (y); }
    /// By anything but the pointer: the lift appears and fades.
    void scroll_to (int y);
    void key (ScrollKey key);
    /// steps  of the wheel, down is positive
    void wheel (int steps);

    /// The lift under the pointer. A press in its column is consumed (true): on the thumb it takes
    /// hold, beside it the view jumps a page towards the press.
    bool press (int x, int y);
    /// False when no lift is held.
    bool drag (int y);
    bool release ();
    /// The pointer without a button; true when the lift looks otherwise than before.
    bool pointer_moved (int x);
    bool pointer_left ();

    /// The fading: a timer of Fade::first_wait after a scroll, of Fade::next_wait after each tick
    /// that returns true.
    bool tick () { return fade_.tick (); }
    bool fading () const { return fade_.running (); }

    editor::LiftGeometry geometry () const;
    /// Nothing when the lift is hidden or has faded.
    std::optional<LiftPaint> lift () const;

  private:
    bool move_to (int y);
    bool follow_thumb (float thumb);

    int width_ = 0;
    int height_ = 0;
    int page_height_ = 0;
    int scroll_y_ = 0;
    editor::Lift lift_;
    editor::Fade fade_;
};

} // namespace ostrand::manual
