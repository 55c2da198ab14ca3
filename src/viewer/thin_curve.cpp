// What of a curve has to be drawn.
#include "viewer/thin_curve.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace ostrand::viewer {
namespace {

/// Seconds that are looked at together, since perspective is about the same for all of them.
constexpr std::size_t chunk_length = 512;

// Device pixels.
constexpr double straightness = 0.25; // how far a point may lie beside a stretch drawn straight
constexpr double block_width = 0.9;   // of the seconds that one stroke stands for
/// What a stroke is longer at each end: where lines meet in a peak, their ends reach a little over
/// it.
constexpr double stroke_cap = 0.4;
/// Up to this height a block is drawn from its first point to its last.
constexpr double flat_block = 0.6;
constexpr double square (double x) { return x * x; }
static_assert (straightness < CurveThinner::most_error);
static_assert (flat_block < CurveThinner::most_error);
static_assert (square (block_width) + square (stroke_cap) < square (CurveThinner::most_error));

/// Strokes are worth their coarseness when stretches would be this many times more.
constexpr double gain_of_strokes = 1.5;

/// Least sine of the angle at which strokes cross the axis of time in the window. Flatter ones
/// would leave gaps between them.
constexpr double least_crossing = 0.5;

/// Half of the widest line with room to spare, units.
constexpr double border = 8;

/// 1 / n, for divisions that would take most of the time.
constexpr std::array<float, chunk_length + 1> reciprocals = [] {
    std::array<float, chunk_length + 1> table{};
    for (std::size_t n = 1; n < table.size (); ++n) table[n] = 1 / static_cast<float> (n);
    return table;
}();

struct Range {
    std::uint32_t low = 0;
    std::uint32_t high = 0;
};

Range range_of (std::span<const std::uint32_t> counts) {
    Range range{counts[0], counts[0]};
    for (const std::uint32_t count : counts) {
        range.low = std::min (range.low, count);
        range.high = std::max (range.high, count);
    }
    return range;
}

std::size_t index_of (std::span<const std::uint32_t> counts, std::uint32_t value) {
    return static_cast<std::size_t> (std::find (counts.begin (), counts.end (), value) -
                                     counts.begin ());
}

double length (double x, double y) { return std::sqrt (x * x + y * y); }

} // namespace

struct CurveThinner::Chunk {
    std::span<const std::uint32_t> counts; // ends with the first one of the next chunk
    std::uint32_t first = 0;               // second of counts[0]
    float z = 0;
};

/// How finely a chunk has to be drawn.
struct CurveThinner::Grain {
    bool visible = true;
    std::size_t block = 1; // seconds for each stroke; below 2: no strokes
    // Scene pixels along the counts.
    float straightness = 0;
    float cap = 0;
    float flat_block = 0;
};

Point2 CurveThinner::point_of (const Chunk& chunk, std::size_t i) const {
    return {layout_.x_of (chunk.first + static_cast<std::uint32_t> (i)),
            layout_.y_of (chunk.counts[i], scale_)};
}

/// Looks at the corners of the rectangle that holds the chunk. Places before the division and their
/// distances are linear on it, so that what holds at the corners holds in all of it.
CurveThinner::Grain CurveThinner::grain_of (const Chunk& chunk) const {
    const Range range = range_of (chunk.counts);
    const float left = point_of (chunk, 0).x;
    const float right = point_of (chunk, chunk.counts.size () - 1).x;
    const float bottom = layout_.y_of (range.low, scale_);
    const float top = layout_.y_of (range.high, scale_);
    const std::array<Homogeneous, 4> corners{
        camera_.at ({left, bottom, chunk.z}), camera_.at ({right, bottom, chunk.z}),
        camera_.at ({left, top, chunk.z}), camera_.at ({right, top, chunk.z})};
    const auto all = [&corners] (auto condition) {
        return std::all_of (corners.begin (), corners.end (), condition);
    };
    const double beyond = border * static_cast<double> (layout_.size.unit);
    const double w = static_cast<double> (layout_.size.w) + beyond;
    const double h = static_cast<double> (layout_.size.hp) + beyond;
    if (all ([] (const Homogeneous& c) { return c.w < near_plane; })) return {.visible = false};
    if (!all ([] (const Homogeneous& c) { return c.w >= near_plane; })) return {};
    if (all ([=] (const Homogeneous& c) { return c.x < -beyond * c.w; }) ||
        all ([=] (const Homogeneous& c) { return c.x > w * c.w; }) ||
        all ([=] (const Homogeneous& c) { return c.y < -beyond * c.w; }) ||
        all ([=] (const Homogeneous& c) { return c.y > h * c.w; })) {
        return {.visible = false};
    }

    // Window pixels for each scene pixel along an axis: the derivative of x / w is
    // (x' w - x w') / w^2, whose numerator is linear and whose denominator is least at a corner.
    struct Speed {
        double most = 1e-9;
        double x = 0; // at one of the corners
        double y = 0;
    };
    const Homogeneous origin = camera_.at ({0, 0, chunk.z});
    const auto speed_along = [&] (const Point3& unit) {
        const Homogeneous moved = camera_.at (unit);
        const Homogeneous change{moved.x - origin.x, moved.y - origin.y, moved.w - origin.w};
        Speed speed;
        double least_w = corners[0].w;
        for (const Homogeneous& c : corners) least_w = std::min (least_w, c.w);
        for (const Homogeneous& c : corners) {
            speed.x = (change.x * c.w - c.x * change.w) / (least_w * least_w);
            speed.y = (change.y * c.w - c.y * change.w) / (least_w * least_w);
            speed.most = std::max (speed.most, length (speed.x, speed.y));
        }
        return speed;
    };
    const Speed time = speed_along ({1, 0, chunk.z});
    const Speed count = speed_along ({0, 1, chunk.z});
    Grain grain;
    grain.straightness = static_cast<float> (straightness / count.most);
    grain.cap = static_cast<float> (stroke_cap / count.most);
    grain.flat_block = static_cast<float> (flat_block / count.most);
    const double crossing = std::abs (time.x * count.y - time.y * count.x);
    if (crossing >= least_crossing * length (time.x, time.y) * length (count.x, count.y)) {
        const double seconds = block_width / (time.most * static_cast<double> (layout_.dx));
        grain.block =
            static_cast<std::size_t> (std::min (seconds, static_cast<double> (chunk_length)));
    }
    return grain;
}

const std::vector<CurvePiece>& CurveThinner::thin (std::span<const std::uint32_t> counts,
                                                   std::uint32_t plane) {
    pieces_.clear ();
    for (std::size_t first = 0; first + 1 < counts.size (); first += chunk_length) {
        const std::size_t seconds = std::min (counts.size () - first, chunk_length + 1);
        const Chunk chunk{counts.subspan (first, seconds), static_cast<std::uint32_t> (first),
                          layout_.z_of (plane)};
        const Grain grain = grain_of (chunk);
        if (!grain.visible) {
            pieces_.push_back ({point_of (chunk, 0), point_of (chunk, seconds - 1)});
        } else if (grain.block < 2) {
            add_stretches (chunk, grain.straightness, seconds);
        } else {
            const std::size_t strokes = (seconds - 2) / grain.block + 1;
            const auto most =
                static_cast<std::size_t> (gain_of_strokes * static_cast<double> (strokes));
            if (!add_stretches (chunk, grain.straightness, most)) {
                add_strokes (chunk, grain);
            }
        }
    }
    return pieces_;
}

/// Each stretch goes as far as one straight line stays near enough to all points on the way. False,
/// and nothing added, when more than `most` are needed.
bool CurveThinner::add_stretches (const Chunk& chunk, float tolerance, std::size_t most) {
    const std::size_t before = pieces_.size ();
    std::size_t from = 0;
    while (from + 1 < chunk.counts.size ()) {
        if (pieces_.size () - before == most) {
            pieces_.resize (before);
            return false;
        }
        const float start = layout_.y_of (chunk.counts[from], scale_);
        // The slopes, in scene pixels a second, that pass all points so far.
        float least = -std::numeric_limits<float>::infinity ();
        float greatest = std::numeric_limits<float>::infinity ();
        std::size_t to = from + 1;
        for (; to < chunk.counts.size (); ++to) {
            const float rise = layout_.y_of (chunk.counts[to], scale_) - start;
            const float part = reciprocals[to - from];
            if (rise * part < least || rise * part > greatest) break;
            least = std::max (least, (rise - tolerance) * part);
            greatest = std::min (greatest, (rise + tolerance) * part);
        }
        pieces_.push_back ({point_of (chunk, from), point_of (chunk, to - 1)});
        from = to - 1;
    }
    return true;
}

/// One stroke for each block of seconds, between its lowest and its highest point. Blocks share the
/// second where they meet, so that strokes side by side have a height in common.
void CurveThinner::add_strokes (const Chunk& chunk, const Grain& grain) {
    const std::size_t last = chunk.counts.size () - 1;
    for (std::size_t i = 0; i < last; i += grain.block) {
        const std::size_t end = std::min (i + grain.block, last);
        const std::span<const std::uint32_t> block = chunk.counts.subspan (i, end - i + 1);
        const Range range = range_of (block);
        if (static_cast<float> (range.high - range.low) * scale_ <= grain.flat_block) {
            pieces_.push_back ({point_of (chunk, i), point_of (chunk, end)});
            continue;
        }
        Point2 low = point_of (chunk, i + index_of (block, range.low));
        Point2 high = point_of (chunk, i + index_of (block, range.high));
        low.y += grain.cap;
        high.y -= grain.cap;
        pieces_.push_back ({low, high});
    }
}

} // namespace ostrand::viewer
