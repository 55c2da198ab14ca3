#include "arrange/page_cost.h"

#include "arrange/field.h"

#include <algorithm>

namespace ostrand::arrange {
namespace {

constexpr double clarity = 3;          // crossings count most
constexpr double empty_cost = 2000;    // for each element, of a page that is all empty
constexpr double long_cost = 60;       // for each element, and each beyond good sides
constexpr double most_sides = 2.8;     // longer side / shorter one of a page
constexpr double too_long_cost = 2000; // likewise beyond the most

} // namespace

Box page_of (const Drawing& drawing, const std::vector<Box>& boxes) {
    Box page = bounds_of (drawing);
    for (const Box& b : boxes) {
        if (b.width () <= 0) continue;
        page = {std::min (page.left, b.left), std::min (page.top, b.top),
                std::max (page.right, b.right), std::max (page.bottom, b.bottom)};
    }
    return page;
}

double cost_on_page (Drawing& drawing, const Box& page) {
    Wishes wishes;
    wishes.wall_weight = 0;
    wishes.clarity = clarity;
    wishes.flows.assign (drawing.reactions.size (), 0);
    const double width = std::max (page.width (), 1.0);
    const double height = std::max (page.height (), 1.0);
    double area = 0;
    for (const DrawnNode& n : drawing.nodes) area += 4 * n.half_width * n.half_height;
    const double empty = 1 - area / (width * height);
    const double sides = std::max (width / height, height / width);
    const auto elements = static_cast<double> (drawing.nodes.size () + drawing.reactions.size ());
    return Field (drawing, wishes).total () + elements * empty_cost * empty +
           elements * (long_cost * std::max (0.0, sides - good_sides) +
                       too_long_cost * std::max (0.0, sides - most_sides));
}

} // namespace ostrand::arrange
