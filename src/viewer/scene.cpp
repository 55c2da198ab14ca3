// Grid, labels and legend of the 3-D view.
#include "viewer/scene.h"

#include "viewer/text_fit.h"

#include <algorithm>
#include <cmath>

namespace ostrand::viewer {
namespace {

/// Room between an axis and its labels, units.
constexpr float label_gap = 6;

/// A number of molecules on the axis at a height in pixels.
double molecules_at (float height, float scale) {
    return static_cast<double> (height) / static_cast<double> (scale);
}

class BoxScene {
  public:
    BoxScene (const ResultData& data, const ViewState& state, const ViewLayout& layout,
              const TextWidth& text_width)
        : data_ (data), state_ (state), layout_ (layout), camera_ (state, layout),
          text_width_ (text_width), placer_ (layout.size, text_width, scene_),
          gap_ (label_gap * layout.size.unit), right_ (layout.x_of (data.n_points)) {}

    Scene build () {
        add_legend (data_, state_, layout_.size, text_width_, scene_);
        for (const FlatPatch& patch : scene_.patches) placer_.reserve (patch.low, patch.high);
        add_vertical_grid ();
        if (layout_.planes > 1) add_planes ();
        add_time_axis ();
        return std::move (scene_);
    }

  private:
    void line (const Point3& a, const Point3& b) { scene_.grid.push_back ({a, b, grid_colour}); }

    /// A label beside a point of the scene.
    void label (const Point3& point, float along, float down, Point2 shift, const std::string& text,
                int font, int size) {
        const auto place = camera_.project (point);
        if (!place) return;
        placer_.put ({place->x + shift.x, place->y + shift.y}, along, down, text, font, size);
    }

    float floor () const { return layout_.size.h (); }

    void add_time_axis () {
        const std::uint32_t tick = time_tick (layout_.dx);
        const float depth = time_labels_at_front (state_.rot_x) ? 0 : -layout_.depth;
        for (std::uint64_t t = 0; t <= data_.n_points; t += tick) {
            const float x = layout_.x_of (static_cast<std::uint32_t> (t));
            line ({x, floor (), 0}, {x, floor (), -layout_.depth});
            label ({x, floor (), depth}, 0.5F, 0, {0, gap_ / 2}, std::to_string (t), 0, 10);
        }
    }

    /// Lines up the back wall and across the floor, as far apart here as there.
    void add_vertical_grid () {
        const float cell = floor () / state_.divisions;
        const float left = layout_.margin;
        for (int k = 0; k <= static_cast<int> (state_.divisions); ++k) {
            const float height = static_cast<float> (k) * cell;
            const Point3 place{left, floor () - height, 0};
            line (place, {right_, place.y, 0});
            if (height <= layout_.depth) {
                line ({left, floor (), -height}, {right_, floor (), -height});
            }
            const double molecules = molecules_at (height, state_.scale);
            label (place, 1, 0.5F, {-gap_, 0}, concentration_text (molecules), 0, 10);
            if (state_.fov == 1) {
                label ({right_, place.y, 0}, 0, 0.5F, {gap_, 0},
                       std::to_string (std::llround (std::min (molecules, 1e15))), 0, 10);
            }
        }
        line ({left, floor (), 0}, {left, 0, 0});
        line ({right_, floor (), 0}, {right_, 0, 0});
    }

    /// The depth axis: a label for each plane, the first and the last before the others, and the
    /// name of what is swept.
    void add_planes () {
        const VarConc& swept = data_.vars.back ();
        const auto plane_label = [&] (std::uint32_t plane) {
            label ({layout_.margin, floor (), layout_.z_of (plane)}, 1, 0, {-gap_, gap_},
                   concentration_text (static_cast<double> (swept.values[plane])), 0, 10);
        };
        const std::uint32_t last = layout_.planes - 1;
        const float unit = layout_.size.unit;
        plane_label (last);
        label ({layout_.margin, floor (), -layout_.depth}, 1, 0, {-gap_, gap_ + 14 * unit},
               "[" + swept.name + "]", 1, 12);
        for (std::uint32_t plane = 0; plane < last; ++plane) plane_label (plane);
    }

    const ResultData& data_;
    const ViewState& state_;
    const ViewLayout& layout_;
    Camera camera_;
    const TextWidth& text_width_;
    Scene scene_;
    TextPlacer placer_;
    float gap_;
    float right_; // x of the end of time
};

} // namespace

bool TextPlacer::put (Point2 anchor, float along, float down, const std::string& text, int font,
                      int size) {
    // Capitals and digits rise about 0.75 of the size over the base line, tails hang 0.25 below.
    const float height = static_cast<float> (size) * size_.unit;
    const float width = text_width_ (text, font, size);
    const float border = 4 * size_.unit; // the frame
    Point2 low{anchor.x - along * width, anchor.y - down * height};
    // A point outside the window has no label; one near the border has it shifted inside.
    if (anchor.x < 0 || anchor.y < 0 || anchor.x > size_.w || anchor.y > size_.hp) return false;
    low.x = std::clamp (low.x, border, std::max (border, size_.w - width - border));
    low.y = std::clamp (low.y, border, std::max (border, size_.hp - height - border));
    const Point2 high{low.x + width, low.y + height};
    const float air = 2 * size_.unit;
    for (const FlatPatch& other : taken_) {
        if (low.x < other.high.x + air && other.low.x < high.x + air && low.y < other.high.y &&
            other.low.y < high.y) {
            return false;
        }
    }
    taken_.push_back ({low, high});
    scene_.patches.push_back ({low, high});
    scene_.texts.push_back ({{low.x, low.y + height * 0.85F}, text, font, size});
    return true;
}

void add_legend (const ResultData& data, const ViewState& state, const ViewSize& size,
                 const TextWidth& text_width, Scene& scene) {
    constexpr int letters = 16;
    const float unit = size.unit;
    const float row_height = 20 * unit;
    float y = 20 * unit;
    float widest = 0;
    for (std::uint32_t species = 0; species < data.n_displayed; ++species) {
        if (!state.shows (species)) continue;
        const std::string text = fitted_text ("[" + data.names[species] + "]", size.w - 70 * unit,
                                              text_width, 1, letters);
        scene.lines.push_back ({{{20 * unit, y}, {50 * unit, y}}, data.colours[species], 3 * unit});
        scene.texts.push_back ({{58 * unit, y + 5 * unit}, text, 1, letters});
        widest = std::max (widest, text_width (text, 1, letters));
        y += row_height;
    }
    if (widest > 0) {
        scene.patches.push_back ({{14 * unit, 8 * unit}, {62 * unit + widest, y - row_height / 2}});
    }
}

Scene scene_of_box (const ResultData& data, const ViewState& state, const ViewLayout& layout,
                    const TextWidth& text_width) {
    return BoxScene (data, state, layout, text_width).build ();
}

} // namespace ostrand::viewer
