// Chance decides much in a small drawing: the best of many short attempts is better than a long one.
// Measured on real models of up to 130 reactions; two processors take about a quarter of a second
// for up to 100 reactions.
#include "arrange/plan.h"

#include <algorithm>
#include <cmath>

namespace ostrand::arrange {
namespace {

constexpr double work = 480; // of all attempts: elements times effort
constexpr double most_attempts = 16;
constexpr double short_effort = 0.5; // half as long a search finds most of what a long one finds
constexpr double few_elements = 150;
constexpr double least_effort = 0.25; // that more than one attempt is worth
constexpr std::size_t large = 100;    // reactions, from which there is more time
constexpr std::size_t large_attempts = 4;
constexpr double large_effort = 0.7;

} // namespace

Plan plan_for (const Drawing& drawing, bool apart, double effort) {
    if (effort < least_effort || drawing.reactions.empty ()) return {1, effort};
    if (drawing.reactions.size () > large) return {large_attempts, effort * large_effort};
    auto elements = static_cast<double> (drawing.nodes.size () + 2 * drawing.reactions.size () +
                                         drawing.links.size ());
    if (apart) elements = std::max (elements, few_elements);
    // An even number, for two threads.
    const double attempts =
        std::clamp (2 * std::round (work / elements / short_effort / 2), 2.0, most_attempts);
    const double each = std::clamp (work / elements / attempts, short_effort, 1.0);
    return {static_cast<std::size_t> (attempts), effort * each};
}

} // namespace ostrand::arrange
