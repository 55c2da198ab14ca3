// What of a curve has to be drawn, so that a long series costs no more than the pixels that it
// covers. Layer: viewer.
#pragma once
#include "viewer/series_view.h"

#include <cstdint>
#include <span>
#include <vector>

namespace ostrand::viewer {

/// A straight piece of a curve, in scene coordinates of its plane.
struct CurvePiece {
    Point2 a;
    Point2 b;
};

/// Leaves out of the curves of one view what nobody can see.
///
/// Straight stretches become one piece. Where a noisy curve has many seconds on one pixel, blocks
/// of seconds become one stroke each, from the lowest to the highest count: at the lines' width
/// they stand close enough to fill what the curve itself fills. What lies outside the window
/// becomes one piece in 512 seconds.
///
/// Inside the window each point of the whole curve has a point of the thin one within `most_error`,
/// and each point of the thin one has one of the whole.
class CurveThinner {
  public:
    static constexpr double most_error = 1; // device pixels

    /// The layout must outlive the thinner.
    CurveThinner (const ViewState& state, const ViewLayout& layout)
        : layout_ (layout), scale_ (state.scale), camera_ (state, layout) {}

    /// The pieces to draw; valid until the next call.
    /// counts  molecules, one value a second
    /// plane   the plane in which the curve stands
    const std::vector<CurvePiece>& thin (std::span<const std::uint32_t> counts,
                                         std::uint32_t plane);

  private:
    struct Chunk;
    struct Grain;

    Grain grain_of (const Chunk& chunk) const;
    bool add_stretches (const Chunk& chunk, float tolerance, std::size_t most);
    void add_strokes (const Chunk& chunk, const Grain& grain);
    Point2 point_of (const Chunk& chunk, std::size_t i) const;

    const ViewLayout& layout_;
    float scale_; // scene pixels for each molecule
    Camera camera_;
    std::vector<CurvePiece> pieces_;
};

} // namespace ostrand::viewer
