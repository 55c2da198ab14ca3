// Everything of a picture but the curves of the 3-D view: grid, axes, labels, legend, and the flat
// chart, as lists that the window only has to draw. Layer: viewer.
#pragma once
#include "toolkit/text_fit.h"
#include "viewer/series_view.h"

#include <cstdint>
#include <string>
#include <vector>

namespace ostrand::viewer {

inline constexpr std::uint32_t grid_colour = 0xC0C0C000;
inline constexpr std::uint32_t frame_colour = 0x004B4B00;
/// Axes of the flat chart on black, where the frame's colour would hardly be seen.
inline constexpr std::uint32_t bright_axis_colour = 0x7FC8C800;

struct SceneLine { // in scene coordinates
    Point3 a;
    Point3 b;
    std::uint32_t colour;
};

struct FlatLine { // in device pixels from the top left corner
    std::vector<Point2> points;
    std::uint32_t colour;
    float width = 1;
};

struct FlatText { // black, or white in reverse video
    Point2 at;    // left end of the base line: whole device pixels
    std::string text;
    int font; // 0 upright, 1 bold
    int size; // toolkit units
};

/// A rectangle, device pixels.
struct FlatBox {
    Point2 low;
    Point2 high;
};

struct Scene {
    std::vector<SceneLine> grid;
    /// Ground behind the labels of axes, which keeps lines from running through their letters.
    std::vector<FlatBox> patches;
    std::vector<FlatLine> lines;
    std::vector<FlatLine> legend_lines;
    std::vector<FlatText> texts;
};

/// Grid, axis labels and legend of the 3-D view.
/// text_width  gives device pixels
Scene scene_of_box (const ResultData& data, const ViewState& state, const ViewLayout& layout,
                    const toolkit::TextWidth& text_width);

/// The flat chart: counts of one second against the swept concentration, its curves included.
/// layout.planes must be above 1.
Scene scene_of_chart (const ResultData& data, const ViewState& state, const ViewLayout& layout,
                      const toolkit::TextWidth& text_width, bool reverse_video);

/// Height of the flat chart's axis in device pixels.
float chart_height (const ViewSize& size);

} // namespace ostrand::viewer
