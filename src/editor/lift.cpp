// Arithmetic of the lifts.
#include "editor/lift.h"

#include <algorithm>
#include <cmath>

namespace ostrand::editor {
namespace {

constexpr int fade_step = 25;

} // namespace

bool LiftGeometry::can_grab (float place) const {
    if (hidden) return false;
    const float reach = is_short () ? short_thumb : 0;
    return place >= position - reach && place < position + length + reach;
}

float LiftGeometry::origin_at (float wanted) const {
    if (hidden || view <= 0) return 0;
    const float within = std::clamp (wanted, 0.0F, std::max (view - length, 0.0F));
    const float origin = std::trunc (within * size / view);
    return origin == 0 ? 0 : -origin;
}

float LiftGeometry::page_towards (float place) const {
    return place < position ? position - length : position + length;
}

LiftGeometry lift_geometry (float window, float size, float origin, float zoom) {
    LiftGeometry lift;
    lift.view = window - lift_width;
    lift.size = size;
    if (size <= 0 || lift.view >= size * zoom) return lift;
    lift.hidden = false;
    lift.length = std::max (lift.view, 0.0F) * lift.view / (zoom * size);
    lift.position = -origin * lift.view / size;
    return lift;
}

int alpha_for_pointer (float place, float window) {
    return static_cast<int> (std::clamp (place - (window - lift_reach), 0.0F, 255.0F));
}

void Fade::start () {
    running_ = true;
    alpha_ = full_alpha;
}

bool Fade::tick () {
    if (!running_) return false;
    alpha_ -= fade_step;
    if (alpha_ > 0) return true;
    alpha_ = 0;
    running_ = false;
    return false;
}

} // namespace ostrand::editor
