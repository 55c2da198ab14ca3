// Where labels go.
#include "viewer/label_placer.h"

#include <algorithm>
#include <cmath>

namespace ostrand::viewer {
namespace {

// Units.
constexpr float frame_room = 4; // the window's frame
constexpr float air = 3;        // between two labels side by side
// In addition around the labels of another axis.
constexpr float row_air_beside = 5;
constexpr float row_air_above = 2;

/// Where the base line runs in the box of a text as high as its size: capitals and digits rise
/// about 0.75 of the size over it, tails hang a little below.
constexpr float base_line = 0.85F;

} // namespace

bool LabelPlacer::put (const Label& label) {
    const Point2 point = label.point;
    if (point.x < 0 || point.y < 0 || point.x > size_.w || point.y > size_.hp) return false;
    const float height = static_cast<float> (label.size) * size_.unit;
    const float width = text_width_ (label.text, label.font, label.size);
    const float border = frame_room * size_.unit;
    Point2 low{point.x + label.shift.x - label.along * width,
               point.y + label.shift.y - label.down * height};
    low.x = std::clamp (low.x, border, std::max (border, size_.w - width - border));
    low.y = std::clamp (low.y, border, std::max (border, size_.hp - height - border));
    // Letters are sharp where they stand on whole pixels.
    low = {std::round (low.x), std::round (low.y)};
    const FlatBox box{low, {low.x + width, low.y + height}};
    const float beside = air * size_.unit;
    for (const FlatBox& other : taken_) {
        if (box.low.x < other.high.x + beside && other.low.x < box.high.x + beside &&
            box.low.y < other.high.y && other.low.y < box.high.y) {
            return false;
        }
    }
    taken_.push_back (box);
    scene_.patches.push_back (box);
    scene_.texts.push_back (
        {{low.x, std::round (low.y + height * base_line)}, label.text, label.font, label.size});
    return true;
}

/// Puts what has room; the indices of what has none.
std::vector<std::size_t> LabelPlacer::put_all (const LabelRow& row) {
    std::vector<std::size_t> lost;
    for (std::size_t i = 0; i < row.size (); ++i) {
        if (!put (row[i])) lost.push_back (i);
    }
    return lost;
}

/// Takes back the labels that were put last.
void LabelPlacer::take_back (std::size_t labels) {
    taken_.resize (taken_.size () - labels);
    scene_.patches.resize (scene_.patches.size () - labels);
    scene_.texts.erase (scene_.texts.end () - static_cast<std::ptrdiff_t> (labels),
                        scene_.texts.end ());
}

std::vector<std::size_t> LabelPlacer::put_row (const std::vector<LabelRow>& ways,
                                               Preference preference) {
    std::size_t best = 0;
    std::size_t least = 0;
    for (std::size_t way = 0; way < ways.size (); ++way) {
        const std::size_t labels = ways[way].size ();
        const std::vector<std::size_t> lost = put_all (ways[way]);
        take_back (labels - lost.size ());
        std::size_t loss = lost.size ();
        for (const std::size_t i : lost) loss += i < preference.vital ? labels : 0;
        if (way > 0 && loss >= least) continue;
        best = way;
        least = way == 0 ? loss - std::min (loss, preference.spared) : loss;
    }
    const std::size_t before = taken_.size ();
    std::vector<std::size_t> lost = put_all (ways[best]);
    for (std::size_t i = before; i < taken_.size (); ++i) {
        taken_[i].low.x -= row_air_beside * size_.unit;
        taken_[i].high.x += row_air_beside * size_.unit;
        taken_[i].low.y -= row_air_above * size_.unit;
        taken_[i].high.y += row_air_above * size_.unit;
    }
    return lost;
}

} // namespace ostrand::viewer
