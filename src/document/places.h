// Points, boxes, and what of a compartment a pointer can take hold of.
// Layer: document.
#pragma once
#include <algorithm>

namespace ostrand::document {

struct Point {
    float x = 0;
    float y = 0;
    bool operator== (const Point&) const = default;
};

/// A bounding box.
struct Extent {
    float x = 0;
    float y = 0;
    float right = 0;
    float bottom = 0;

    bool operator== (const Extent&) const = default;
    /// Grows so that `other` fits in.
    void join (const Extent& other) {
        x = std::min (x, other.x);
        y = std::min (y, other.y);
        right = std::max (right, other.right);
        bottom = std::max (bottom, other.bottom);
    }
    Extent moved (float dx, float dy) const { return {x + dx, y + dy, right + dx, bottom + dy}; }
    /// Wider by `margin` on all sides.
    Extent widened (float margin) const {
        return {x - margin, y - margin, right + margin, bottom + margin};
    }
};

/// The edge of a compartment that the pointer is on; none means the whole of it.
enum class Edge { none = -1, left = 0, right = 1, top = 2, bottom = 3 };

} // namespace ostrand::document
