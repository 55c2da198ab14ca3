// The scroll bars of a canvas ("lifts"): where the thumb stands and what a press on it means.
// Layer: editor.
#pragma once

namespace ostrand::editor {

/// Width of a lift's column in pixels.
inline constexpr float lift_width = 12;
/// A thumb shorter than this can be grabbed, and is marked, this far beyond its ends too.
inline constexpr float short_thumb = 30;
/// How far the mark of a short thumb reaches beyond each end.
inline constexpr float short_thumb_mark = 27;
/// A lift that does not always show begins to appear this far from the pointer.
inline constexpr float lift_reach = 255;
/// Opacity of a lift in full.
inline constexpr int full_alpha = 255;

/// One axis of a lift, in pixels along it.
struct LiftGeometry {
    bool hidden = true; // all of the network is in view
    float view = 0;     // length of the way that the thumb has
    float size = 0;     // of the network, in network units
    float length = 0;   // of the thumb
    float position = 0; // of the thumb's near end

    /// True where a press takes hold of the thumb: on it, or near one that is short.
    bool can_grab (float place) const;
    /// True when the thumb gets a mark to be seen by.
    bool is_short () const { return length < short_thumb; }
    /// The network's origin, a whole number, that puts the thumb at `wanted`, within its way.
    float origin_at (float wanted) const;
    /// The thumb's place one page nearer to a press beside it.
    float page_towards (float place) const;
};

/// window  extent of the canvas along the axis in pixels
/// size    of the network along it, in network units
/// origin  the network's, in network units
LiftGeometry lift_geometry (float window, float size, float origin, float zoom);

/// Where the pointer is, for a lift.
enum class LiftState {
    pointer_on = 0,  // in the lift's column
    pointer_off = 1, // elsewhere
    grabbed = 2
};

/// What a canvas keeps for each of its lifts.
struct Lift {
    bool grabbed = false;
    float grab_offset = 0; // of the press from the thumb's near end
    LiftState state = LiftState::pointer_off;
    int alpha = 0; // 0 to 255
};

/// Opacity for a pointer at `place` pixels from the near edge of a window `window` wide: full at
/// the far edge, none beyond lift_reach from it.
int alpha_for_pointer (float place, float window);

/// The slow vanishing of lifts after a scroll by anything but the pointer.
class Fade {
  public:
    static constexpr double first_wait = 0.5; // seconds until the first tick
    static constexpr double next_wait = 0.05; // between ticks

    bool running () const { return running_; }
    /// 255 at the start, less by 25 a tick.
    int alpha () const { return alpha_; }
    /// Begins anew; the caller starts a timer of first_wait and drops an older one.
    void start ();
    /// One tick; true while another timer of next_wait is to be started.
    bool tick ();

  private:
    bool running_ = false;
    int alpha_ = 0;
};

} // namespace ostrand::editor
