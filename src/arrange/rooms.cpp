// Does a node stand in its own room and in no other?
#include "arrange/rooms.h"

#include <algorithm>

namespace ostrand::arrange {
namespace {

constexpr double room_gap = 12; // between a node and the box of a strange compartment

std::size_t at (int i) { return static_cast<std::size_t> (i); }

} // namespace

bool Rooms::is_around (int room, int compartment) const {
    for (std::size_t steps = 0; compartment >= 0 && steps <= rooms_.size (); ++steps) {
        if (compartment == room) return true;
        compartment = rooms_[at (compartment)].parent;
    }
    return false;
}

double Rooms::misfit (const DrawnNode& node) const {
    if (rooms_.empty ()) return 0;
    double sum = 0;
    if (node.compartment >= 0 && at (node.compartment) < rooms_.size ()) {
        const Box& box = rooms_[at (node.compartment)].inside;
        sum += std::max (
            {0.0, box.left + node.half_width - node.at.x, node.at.x + node.half_width - box.right});
        sum += std::max ({0.0, box.top + node.half_height - node.at.y,
                          node.at.y + node.half_height - box.bottom});
    }
    for (std::size_t r = 0; r < rooms_.size (); ++r) {
        const Box& box = rooms_[r].outside;
        if (box.width () <= 0) continue;
        const double x = std::min (node.at.x + node.half_width + room_gap - box.left,
                                   box.right + room_gap - node.at.x + node.half_width);
        const double y = std::min (node.at.y + node.half_height + room_gap - box.top,
                                   box.bottom + room_gap - node.at.y + node.half_height);
        if (x <= 0 || y <= 0 || is_around (static_cast<int> (r), node.compartment)) continue;
        sum += std::min (x, y);
    }
    return sum;
}

Point Rooms::nearest (const DrawnNode& node) const {
    if (node.compartment < 0 || at (node.compartment) >= rooms_.size ()) return node.at;
    const Box& box = rooms_[at (node.compartment)].inside;
    const auto clamp = [] (double value, double low, double high) {
        return low < high ? std::clamp (value, low, high) : (low + high) / 2;
    };
    return {clamp (node.at.x, box.left + node.half_width, box.right - node.half_width),
            clamp (node.at.y, box.top + node.half_height, box.bottom - node.half_height)};
}

} // namespace ostrand::arrange
