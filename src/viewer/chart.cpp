// The flat chart: species against the swept concentration at one second.
#include "toolkit/pixels.h"
#include "viewer/label_placer.h"
#include "viewer/legend.h"
#include "viewer/scene.h"

#include <algorithm>
#include <cmath>

namespace ostrand::viewer {
namespace {

// Units.
constexpr float side = 80;  // left and right of the axes
constexpr float below = 80; // under the axis
constexpr float above = 120;
constexpr float arrow = 6;
constexpr float tick = 6;
constexpr float label_gap = 6;
constexpr float curve_width = 2;

// The name of what is swept.
constexpr int name_font = 1;
constexpr int name_size = 16;

class ChartScene {
  public:
    ChartScene (const ResultData& data, const ViewState& state, const ViewLayout& layout,
                const toolkit::TextWidth& text_width, bool reverse_video)
        : data_ (data), state_ (state), size_ (layout.size), planes_ (layout.planes),
          text_width_ (text_width), placer_ (layout.size, text_width, scene_),
          unit_ (layout.size.unit), line_width_ (toolkit::line_pixels (1, unit_)),
          axis_colour_ (reverse_video ? bright_axis_colour : frame_colour), left_ (side * unit_),
          right_ (size_.w - side * unit_), bottom_ (size_.hp - below * unit_),
          top_ (bottom_ - chart_height (size_)) {}

    Scene build () {
        const float end = top_ - 3 * arrow * unit_;
        add_legend (data_, state_, size_, {end, end}, text_width_, scene_, placer_);
        add_grid ();
        add_axes ();
        add_values ();
        add_curves ();
        return std::move (scene_);
    }

  private:
    float x_of (std::uint32_t plane) const {
        return left_ +
               static_cast<float> (plane) * (right_ - left_) / static_cast<float> (planes_ - 1);
    }
    float sharp (float place) const { return toolkit::line_place (place, line_width_); }
    void line (std::vector<Point2> points, std::uint32_t colour) {
        scene_.lines.push_back ({std::move (points), colour, line_width_});
    }

    /// Lines across, with concentrations at their left end and molecules at the right. Where the
    /// legend stands at the left end, concentrations stand on the lines behind it.
    void add_grid () {
        float behind_legend = left_;
        for (const FlatBox& box : placer_.taken ()) {
            behind_legend = std::max (behind_legend, box.high.x);
        }
        LabelRow at_left;
        LabelRow on_the_line;
        LabelRow at_right;
        const float gap = label_gap * unit_;
        for (int k = 0; k <= static_cast<int> (state_.divisions); ++k) {
            const float height = static_cast<float> (k) * chart_height (size_) / state_.divisions;
            const float y = bottom_ - height;
            line ({{left_, sharp (y)}, {right_, sharp (y)}}, grid_colour);
            const double molecules =
                static_cast<double> (height) / static_cast<double> (state_.scale);
            const std::string concentration = concentration_text (molecules);
            at_left.push_back ({{left_, y}, {-gap, 0}, 1, 0.5F, concentration});
            on_the_line.push_back ({{behind_legend, y}, {2 * gap, 0}, 0, 0.5F, concentration});
            at_right.push_back ({{right_, y},
                                 {4 * gap, 0},
                                 0,
                                 0.5F,
                                 std::to_string (std::llround (std::min (molecules, 1e15)))});
        }
        for (const std::size_t lost : placer_.put_row ({at_left})) placer_.put (on_the_line[lost]);
        placer_.put_row ({at_right});
    }

    void add_axes () {
        const float x = sharp (left_);
        const float y = sharp (bottom_);
        const float head = arrow * unit_;
        const float half = toolkit::device_pixels (arrow / 2, unit_);
        const float top = top_ - 3 * head;
        const float end = right_ + 3 * head;
        line ({{x, y}, {x, top}}, axis_colour_);
        line ({{x - half, top + head}, {x, top}, {x + half, top + head}}, axis_colour_);
        line ({{x, y}, {end, y}}, axis_colour_);
        line ({{end - head, y - half}, {end, y}, {end - head, y + half}}, axis_colour_);
    }

    void add_values () {
        const VarConc& swept = data_.vars.back ();
        const std::string name = toolkit::fitted_text ("[" + swept.name + "]", size_.w / 2,
                                                       text_width_, name_font, name_size);
        placer_.put ({{size_.w - 10 * unit_, bottom_},
                      {0, 44 * unit_},
                      1,
                      0.5F,
                      name,
                      name_font,
                      name_size});
        LabelRow row;
        const auto add_value = [&] (std::uint32_t plane) {
            row.push_back ({{x_of (plane), bottom_},
                            {0, 10 * unit_},
                            0.5F,
                            0,
                            concentration_text (static_cast<double> (swept.values[plane]))});
        };
        add_value (0);
        add_value (planes_ - 1);
        for (std::uint32_t plane = 1; plane + 1 < planes_; ++plane) add_value (plane);
        placer_.put_row ({row});
        for (std::uint32_t plane = 0; plane < planes_; ++plane) {
            const float x = sharp (x_of (plane));
            line ({{x, bottom_}, {x, bottom_ + tick * unit_}}, axis_colour_);
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
            scene_.lines.push_back (
                {std::move (points), data_.colours[species], curve_width * unit_});
        }
    }

    const ResultData& data_;
    const ViewState& state_;
    const ViewSize& size_;
    std::uint32_t planes_;
    const toolkit::TextWidth& text_width_;
    Scene scene_;
    LabelPlacer placer_;
    float unit_; // device pixels
    float line_width_;
    std::uint32_t axis_colour_;
    float left_; // the chart's edges, device pixels
    float right_;
    float bottom_;
    float top_;
};

} // namespace

float chart_height (const ViewSize& size) {
    return std::max (size.hp - (below + above) * size.unit, 10.0F);
}

Scene scene_of_chart (const ResultData& data, const ViewState& state, const ViewLayout& layout,
                      const toolkit::TextWidth& text_width, bool reverse_video) {
    return ChartScene (data, state, layout, text_width, reverse_video).build ();
}

} // namespace ostrand::viewer
