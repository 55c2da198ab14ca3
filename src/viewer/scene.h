// Everything of a picture but its curves: grid, axes, labels, legend, and the flat chart, as lists
// that the window only has to draw. Layer: viewer.
#pragma once
#include "viewer/series_view.h"

#include <cstdint>
#include <string>
#include <vector>

namespace ostrand::viewer {

inline constexpr std::uint32_t grid_colour = 0xC0C0C000;
inline constexpr std::uint32_t frame_colour = 0x004B4B00;

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
    Point2 at;    // left end of the base line, device pixels
    std::string text;
    int font; // 0 upright, 1 bold
    int size; // toolkit units
};

/// A patch of the background's colour that keeps curves from running through letters.
struct FlatPatch {
    Point2 low;
    Point2 high;
};

struct Scene {
    std::vector<SceneLine> grid;
    std::vector<FlatPatch> patches;
    std::vector<FlatLine> lines;
    std::vector<FlatText> texts;
};

/// Grid, axis labels and legend of the 3-D view.
Scene scene_of_box (const ResultData& data, const ViewState& state, const ViewLayout& layout,
                    const TextWidth& text_width);

/// The flat chart: counts of one second against the swept concentration, its curves included.
/// layout.planes must be above 1.
Scene scene_of_chart (const ResultData& data, const ViewState& state, const ViewLayout& layout,
                      const TextWidth& text_width);

/// Height of the flat chart's axis in device pixels.
float chart_height (const ViewSize& size);

/// Adds the rows of the species that are shown: a piece of line in its colour and "[name]".
void add_legend (const ResultData& data, const ViewState& state, const ViewSize& size,
                 const TextWidth& text_width, Scene& scene);

/// Puts texts where there is room: inside the window, and never over one that was put before.
class TextPlacer {
  public:
    TextPlacer (const ViewSize& size, const TextWidth& text_width, Scene& scene)
        : size_ (size), text_width_ (text_width), scene_ (scene) {}

    /// Keeps a rectangle free.
    void reserve (Point2 low, Point2 high) { taken_.push_back ({low, high}); }

    /// Puts a text with a point of its box at `anchor`.
    /// along, down  which point of the box: 0 its left or top, 0.5 the middle, 1 its right or
    /// bottom False, and nothing put, where there is no room.
    bool put (Point2 anchor, float along, float down, const std::string& text, int font, int size);

  private:
    const ViewSize& size_;
    const TextWidth& text_width_;
    Scene& scene_;
    std::vector<FlatPatch> taken_;
};

} // namespace ostrand::viewer
