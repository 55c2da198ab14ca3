// The view of a canvas: zoom, scroll, what part of the network is in the window.
//
// A pixel p of the window shows the network unit p / zoom - origin, where the origin is the place
// of the network itself: its top left corner in the window, in network units.
// Layer: editor (uses document).
#pragma once
#include "document/network.h"
#include "editor/lift.h"

namespace ostrand::editor {

inline constexpr float least_zoom = 0.1F;
inline constexpr float most_zoom = 2.0F;
/// Steps of the menu and of the wheel. That they differ is meant.
inline constexpr float menu_zoom_step = 0.05F;
inline constexpr float wheel_zoom_step = 0.1F;
/// Network units that a notch of the wheel scrolls.
inline constexpr float wheel_scroll_step = 32;
/// Pixels of the network that stay in the window whatever is moved.
inline constexpr float least_in_view = 50;

enum class Axis { x, y };

/// What a scroll key asks for.
enum class ScrollKey { left, right, up, down, page_up, page_down, home, end, top_left, bottom };

class CanvasView {
  public:
    int width = 0; // of the window, pixels
    int height = 0;
    bool lift_always_visible = false;
    unsigned lift_background = 0; // toolkit colour, 0 none
    Lift lift_x;
    Lift lift_y;
    Fade fade;

    float zoom () const { return zoom_; }
    /// A zoom from the preferences, kept within what is allowed.
    void start_zoom (unsigned percent);
    /// Window width and height in network units.
    float visible_width () const { return static_cast<float> (width) / zoom_; }
    float visible_height () const { return static_cast<float> (height) / zoom_; }

    /// A step up or down from the present zoom, or nothing where it would leave the limits: 200 %
    /// and 10 % themselves are allowed.
    float stepped_zoom (float step) const;
    /// Zooms with the point at pixel (cx, cy) staying where it is. False when the zoom is that
    /// already.
    bool set_zoom_centred (document::Network& network, float new_zoom, float cx, float cy);
    /// The view was moved otherwise: the next zoom finds its own point to keep.
    void invalidate_anchor () { anchor_set_ = false; }

    /// Moves the network so that at least 50 pixels of it are in the window; an empty one stays.
    /// True when it moved.
    bool keep_in_reach (document::Network& network) const;
    /// Moves the origin by network units, as the wheel does.
    void scroll_by (document::Network& network, float dx, float dy);
    /// A scroll key. Never moves against its direction.
    void scroll_key (document::Network& network, ScrollKey key);
    /// Brings an object into the window if it is not; true when the view moved.
    bool scroll_to_show (document::Network& network, const document::Char& object);
    /// Puts a node into the middle of the window.
    void scroll_to_centre (document::Network& network, const document::Node& node);

    LiftGeometry lift_geometry (const document::Network& network, Axis axis) const;
    Lift& lift (Axis axis) { return axis == Axis::x ? lift_x : lift_y; }
    const Lift& lift (Axis axis) const { return axis == Axis::x ? lift_x : lift_y; }
    /// The origin along one axis becomes the one that puts the lift's thumb at `place`.
    void set_origin_from_lift (document::Network& network, Axis axis, float place);
    /// Opacity of a lift as it is painted now.
    int lift_alpha (Axis axis) const;

  private:
    void pin_view (document::Network& network, float px, float py);

    float zoom_ = 1;
    bool anchor_set_ = false; // the fields below say something
    float anchor_x_ = 0;      // pixel at which the zoom is centred
    float anchor_y_ = 0;
    int anchor_unit_x_ = 0; // network point under it
    int anchor_unit_y_ = 0;
};

} // namespace ostrand::editor
