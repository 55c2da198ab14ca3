// Steps, limits and the lift.
#include "manual/scroll.h"

#include "manual/layout.h"

#include <algorithm>

namespace ostrand::manual {
namespace {

using editor::LiftState;

constexpr float thumb_margin = 2;

// The lift's colours, as those of a canvas.
constexpr unsigned colour_off = 0xf0101000;
constexpr unsigned colour_on = 0x30ff3000;
constexpr unsigned colour_grabbed = 0x5050ff00;

unsigned colour_of (LiftState state) {
    switch (state) {
    case LiftState::pointer_on: return colour_on;
    case LiftState::pointer_off: return colour_off;
    case LiftState::grabbed: return colour_grabbed;
    }
    return colour_off;
}

/// Opaque at the right edge of the window, nothing from manual_lift_reach on.
int alpha_at (int x, int width) {
    const float inside = static_cast<float> (x - width) + manual_lift_reach;
    return static_cast<int> (std::clamp (inside / manual_lift_reach, 0.0F, 1.0F) *
                             static_cast<float> (editor::full_alpha));
}

} // namespace

void PageScroll::set_extent (int window_width, int window_height, int page_height) {
    width_ = window_width;
    height_ = window_height;
    page_height_ = page_height;
    move_to (scroll_y_);
}

int PageScroll::last_y () const { return std::max (page_height_ - height_, 0); }

bool PageScroll::move_to (int y) {
    const int wanted = std::clamp (y, 0, last_y ());
    const bool moved = wanted != scroll_y_;
    scroll_y_ = wanted;
    return moved;
}

void PageScroll::scroll_to (int y) {
    move_to (y);
    fade_.start ();
}

void PageScroll::key (ScrollKey key) {
    const int page = std::max (height_ - page_rest, line_step);
    switch (key) {
    case ScrollKey::up: return scroll_to (scroll_y_ - line_step);
    case ScrollKey::down: return scroll_to (scroll_y_ + line_step);
    case ScrollKey::page_up: return scroll_to (scroll_y_ - page);
    case ScrollKey::page_down: return scroll_to (scroll_y_ + page);
    case ScrollKey::home: return scroll_to (0);
    case ScrollKey::end: return scroll_to (page_height_);
    }
}

void PageScroll::wheel (int steps) { scroll_to (scroll_y_ + steps * line_step); }

editor::LiftGeometry PageScroll::geometry () const {
    editor::LiftGeometry lift =
        editor::lift_geometry (static_cast<float> (height_), static_cast<float> (page_height_),
                               static_cast<float> (-scroll_y_), 1);
    if (last_y () == 0) lift.hidden = true;
    return lift;
}

bool PageScroll::follow_thumb (float thumb) {
    return move_to (static_cast<int> (-geometry ().origin_at (thumb)));
}

bool PageScroll::press (int x, int y) {
    const editor::LiftGeometry lift = geometry ();
    if (lift.hidden || x < width_ - bar_width) return false;
    lift_.grabbed = true;
    const auto place = static_cast<float> (y);
    if (!lift.can_grab (place)) follow_thumb (lift.page_towards (place));
    lift_.grab_offset = place - geometry ().position;
    lift_.state = LiftState::grabbed;
    return true;
}

bool PageScroll::drag (int y) {
    if (!lift_.grabbed) return false;
    follow_thumb (static_cast<float> (y) - lift_.grab_offset);
    return true;
}

bool PageScroll::release () {
    if (!lift_.grabbed) return false;
    lift_.grabbed = false;
    lift_.state = LiftState::pointer_off;
    return true;
}

bool PageScroll::pointer_moved (int x) {
    const LiftState state =
        x >= width_ - bar_width ? LiftState::pointer_on : LiftState::pointer_off;
    const int alpha = alpha_at (x, width_);
    const bool changed = state != lift_.state || alpha != lift_.alpha;
    lift_.state = state;
    lift_.alpha = alpha;
    return changed;
}

bool PageScroll::pointer_left () {
    const bool changed = lift_.alpha != 0;
    lift_.alpha = 0;
    return changed;
}

std::optional<LiftPaint> PageScroll::lift () const {
    const editor::LiftGeometry lift = geometry ();
    const int alpha = lift_.grabbed ? editor::full_alpha : std::max (lift_.alpha, fade_.alpha ());
    if (lift.hidden || alpha == 0) return std::nullopt;
    return LiftPaint{.x = static_cast<float> (width_ - bar_width) + thumb_margin,
                     .y = lift.position,
                     .width = bar_width - 2 * thumb_margin,
                     .height = lift.length,
                     .colour = colour_of (lift_.state),
                     .alpha = alpha,
                     .marked = lift.is_short ()};
}

} // namespace ostrand::manual
