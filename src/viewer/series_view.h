// The 3-D view of series as pure functions: sizes, scales, projection, ticks, label texts. What the
// window draws, without the window.
//
// The scene is a box of W x H x D pixels: x to the right is time, y grows downward (the floor is at
// y = H), plane p stands at z = -p * D / (planes - 1). The first rotation of about 180 degrees
// about x puts it upright. Layer: viewer.
#pragma once
#include "toolkit/text_fit.h"
#include "viewer/result_data.h"

#include <algorithm>
#include <array>
#include <bitset>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace ostrand::viewer {

inline constexpr int most_visible = 1024; // species that have a visible byte

/// What the user turns, moves and switches.
struct ViewState {
    std::uint32_t selected_offset = 0; // simulation in plane 0
    float scale = 1.0F;                // pixels for each molecule
    float divisions = 5.0F;            // of the vertical axis
    bool auto_scale = true;
    bool view_3d = true;
    std::bitset<most_visible> visible = std::bitset<most_visible> ().set ();
    float rot_x = -170.5F; // degrees
    float rot_y = 27.25F;
    float pan_x = -450; // pixels
    float pan_y = 285;
    float fov = 10; // degrees
    float dist = -50000;
    std::int32_t time_point = 0; // second shown by the flat chart

    /// A species beyond the visible bytes is always shown.
    bool shows (std::uint32_t species) const { return species >= most_visible || visible[species]; }
};

/// Window size in device pixels, and device pixels for each toolkit unit.
struct ViewSize {
    float w = 900;
    float hp = 600;
    float unit = 1;

    /// Sizes from toolkit units: times the unit, rounded.
    static ViewSize of (int width, int height, float unit);
    /// Height of the drawing.
    float h () const { return std::max (hp - 30 - 10, 10.0F); }
};

/// Sizes that follow from window, data and scale.
struct ViewLayout {
    ViewSize size;
    float margin = 0; // m: x of second 0
    float dx = 0;     // pixels for each second
    float depth = 0;  // D
    std::uint32_t planes = 1;

    float x_of (std::uint32_t point) const { return margin + static_cast<float> (point) * dx; }
    float y_of (std::uint32_t count, float scale) const {
        return size.h () - static_cast<float> (count) * scale;
    }
    float z_of (std::uint32_t plane) const {
        return planes < 2 ? 0
                          : static_cast<float> (plane) * -depth / static_cast<float> (planes - 1);
    }
};

/// The vertical scale that fills a height with the largest count; 1 when there is none.
float fitting_scale (float height, std::uint32_t max);

/// text_width  gives device pixels
ViewLayout layout_of (const ResultData& data, const ViewState& state, const ViewSize& size,
                      const toolkit::TextWidth& text_width);

/// Seconds between two labels of the time axis: the first of 1, 10, 20, 50, 100, 200, 500 that
/// takes at least 40 pixels; 500 when none does.
std::uint32_t time_tick (float dx);

/// Index of the simulation in plane 0 for the values that are selected.
std::uint32_t offset_of_selection (const std::vector<VarConc>& vars);

/// True when the labels of time stand at depth 0, else at depth D.
bool time_labels_at_front (float rot_x);

/// Brings an angle back to the range from -180 to below 180.
float wrap_angle (float degrees);

/// The scale after one notch outward; unchanged where that would leave less than one molecule for
/// each fifth of the height.
float doubled_scale (float scale, float height);

/// The scale after one notch inward, never 0.
float halved_scale (float scale);

/// The values that the space key sets; the scale follows.
void reset_view (ViewState& state, const ViewSize& size);
/// Where the scene stands when a context is new.
void initial_pan (ViewState& state, const ViewSize& size);

/// Nothing nearer to the eye is drawn.
inline constexpr double near_plane = 1;

struct Point2 {
    float x = 0;
    float y = 0;
};
struct Point3 {
    float x = 0;
    float y = 0;
    float z = 0;
};

/// Column-major 4 x 4 matrix, as OpenGL takes it.
using Matrix = std::array<double, 16>;

Matrix projection_matrix (const ViewState& state, const ViewSize& size);
Matrix modelview_matrix (const ViewState& state, const ViewLayout& layout);

/// A place in the window before the division by its distance: device pixels from the top left
/// corner are x / w, y / w. The three are linear in the scene's coordinates; w is above 0 in front
/// of the eye.
struct Homogeneous {
    double x = 0;
    double y = 0;
    double w = 0;
};

/// Where a point of the scene stands in the window.
class Camera {
  public:
    Camera (const ViewState& state, const ViewLayout& layout);

    Homogeneous at (const Point3& point) const;
    /// Device pixels from the top left corner; nothing for a point behind the eye.
    std::optional<Point2> project (const Point3& point) const;

  private:
    Matrix whole_;
    ViewSize size_;
};

} // namespace ostrand::viewer
