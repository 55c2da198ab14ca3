// Double and triple clicks.
#include "editor/editor_state.h"

#include <cmath>

namespace ostrand::editor {
namespace {

constexpr double longest_wait = 0.25; // seconds between the presses of a series
constexpr float farthest = 4;         // pixels
constexpr int longest_series = 3;

} // namespace

int PressSeries::take (int new_button, double now, float new_x, float new_y) {
    const bool goes_on = button == new_button && count > 0 && now - time < longest_wait &&
                         std::fabs (new_x - x) <= farthest && std::fabs (new_y - y) <= farthest;
    count = goes_on ? count + 1 : 1;
    button = new_button;
    time = now;
    x = new_x;
    y = new_y;
    const int place = count;
    if (count == longest_series) *this = PressSeries ();
    return place;
}

} // namespace ostrand::editor
