// The flat chart: species against the swept concentration at one second.
#include "viewer/scene.h"
#include "viewer/text_fit.h"

#include <algorithm>
#include <cmath>

namespace ostrand::viewer {
namespace {

constexpr float side = 80;  // device pixels left and right of the axes
constexpr float below = 80; // under the axis
constexpr float above = 120;
constexpr float arrow = 6;

class ChartScene {
  public:
    ChartScene (const ResultData& data, const ViewState& state, const ViewLayout& layout,
                const TextWidth& text_width)
        : data_ (data), state_ (state), size_ (layout.size), planes_ (layout.planes),
          text_width_ (text_width), placer_ (layout.size, text_width, scene_),
          bottom_ (size_.hp - below), right_ (size_.w - side) {}

    Scene build () {
        add_legend (data_, state_, size_, text_width_, scene_);
        for (const FlatPatch& patch : scene_.patches) placer_.reserve (patch.low, patch.high);
        add_grid ();
        add_axes ();
        add_values ();
        add_curves ();
        return std::move (scene_);
    }

  private:
    float x_of (std::uint32_t plane) const {
        return side +
               static_cast<float> (plane) * (size_.w - 2 * side) / static_cast<float> (planes_ - 1);
    }
    void line (std::vector<Point2> points, std::uint32_t colour) {
        scene_.lines.push_back ({std::move (points), colour, size_.unit});
    }

    void add_grid () {
        const float cell = chart_height (size_) / state_.divisions;
        for (int k = 0; k <= static_cast<int> (state_.divisions); ++k) {
            const float height = static_cast<float> (k) * cell;
            const float y = bottom_ - height;
            line ({{side, y}, {right_, y}}, grid_colour);
            const double molecules =
                static_cast<double> (height) / static_cast<double> (state_.scale);
            placer_.put ({side - 6, y}, 1, 0.5F, concentration_text (molecules), 0, 10);
            placer_.put ({right_ + 4 * arrow, y}, 0, 0.5F,
                         std::to_string (std::llround (std::min (molecules, 1e15))), 0, 10);
        }
    }

    void add_axes () {
        const float top = bottom_ - chart_height (size_) - 3 * arrow;
        const float end = right_ + 3 * arrow;
        line ({{side, bottom_}, {side, top}}, frame_colour);
        line ({{side - arrow / 2, top + arrow}, {side, top}, {side + arrow / 2, top + arrow}},
              frame_colour);
        line ({{side, bottom_}, {end, bottom_}}, frame_colour);
        line ({{end - arrow, bottom_ - arrow / 2},
               {end, bottom_},
               {end - arrow, bottom_ + arrow / 2}},
              frame_colour);
    }

    void add_values () {
        const VarConc& swept = data_.vars.back ();
        const std::string name =
            fitted_text ("[" + swept.name + "]", size_.w / 2, text_width_, 1, 16);
        placer_.put ({size_.w - 10, bottom_ + 44}, 1, 0.5F, name, 1, 16);
        const auto value_label = [&] (std::uint32_t plane) {
            placer_.put ({x_of (plane), bottom_ + 10}, 0.5F, 0,
                         concentration_text (static_cast<double> (swept.values[plane])), 0, 10);
        };
        value_label (0);
        value_label (planes_ - 1);
        for (std::uint32_t plane = 0; plane < planes_; ++plane) {
            line ({{x_of (plane), bottom_}, {x_of (plane), bottom_ + 6}}, frame_colour);
            if (plane > 0 && plane + 1 < planes_) value_label (plane);
        }
    }

    void add_curves () {
        if (data_.empty ()) return;
        const std::uint32_t point = std::min (
            static_cast<std::uint32_t> (std::max (state_.time_point, 0)), data_.n_points - 1);
        for (std::uint32_t species = 0; species < data_.n_displayed; ++species) {
            if (!state_.shows (species)) continue;
            std::vector<Point2> points;
            for (std::uint32_t plane = 0; plane < planes_; ++plane) {
                const std::uint32_t count =
                    data_.series (state_.selected_offset + plane, species)[point];
                points.push_back (
                    {x_of (plane), bottom_ - static_cast<float> (count) * state_.scale});
            }
            scene_.lines.push_back ({std::move (points), data_.colours[species], 2 * size_.unit});
        }
    }

    const ResultData& data_;
    const ViewState& state_;
    const ViewSize& size_;
    std::uint32_t planes_;
    const TextWidth& text_width_;
    Scene scene_;
    TextPlacer placer_;
    float bottom_;
    float right_;
};

} // namespace

float chart_height (const ViewSize& size) { return std::max (size.hp - below - above, 10.0F); }

Scene scene_of_chart (const ResultData& data, const ViewState& state, const ViewLayout& layout,
                      const TextWidth& text_width) {
    return ChartScene (data, state, layout, text_width).build ();
}

} // namespace ostrand::viewer
