// The boxes around the primitives.
#include "export/bounds_device.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace ostrand::drawing {
namespace {

using document::Point;

constexpr double degree = 3.14159265358979323846 / 180;
/// Where the sides of an outline meet, its corner reaches this many half widths from the point, as
/// long as it is not sharper: then it is cut off. The limit of SVG.
constexpr float miter_limit = 4;

/// How far the outline of a closed path reaches beyond its points: the outer corners.
std::vector<Point> outer_corners (std::span<const Point> points, float width) {
    std::vector<Point> corners;
    const std::size_t count = points.size ();
    for (std::size_t i = 0; i < count; ++i) {
        const Point at = points[i];
        const auto towards = [at] (Point other) {
            const float length = std::hypot (other.x - at.x, other.y - at.y);
            return length > 0 ? Point{(other.x - at.x) / length, (other.y - at.y) / length}
                              : Point{};
        };
        const Point before = towards (points[(i + count - 1) % count]);
        const Point behind = towards (points[(i + 1) % count]);
        // Both sides point away from the corner, which lies opposite to the middle between them.
        const Point middle{before.x + behind.x, before.y + behind.y};
        const float between = std::hypot (middle.x, middle.y);
        const float half_sine =
            std::hypot (before.x - behind.x, before.y - behind.y) / 2; // of half the angle
        const bool sharp = half_sine * miter_limit < 1;
        if (between > 0 && !sharp) {
            const float reach = width / 2 / half_sine / between;
            corners.push_back ({at.x - middle.x * reach, at.y - middle.y * reach});
        }
        for (const Point side : {before, behind}) {
            for (const float half : {-width / 2, width / 2})
                corners.push_back ({at.x - side.y * half, at.y + side.x * half});
        }
    }
    return corners;
}

} // namespace

void Bounds::join (const Bounds& other) {
    if (other.empty) return;
    if (empty) {
        *this = other;
        return;
    }
    left = std::min (left, other.left);
    top = std::min (top, other.top);
    right = std::max (right, other.right);
    bottom = std::max (bottom, other.bottom);
}

/// A box with corners of radii rx and ry, which count when it is turned.
Bounds BoundsDevice::around (float x, float y, float w, float h, float rx, float ry) const {
    if (!(w > 0) || !(h > 0)) return {};
    rx = std::clamp (rx, 0.0F, w / 2);
    ry = std::clamp (ry, 0.0F, h / 2);
    const double half_w = static_cast<double> (w / 2 - rx);
    const double half_h = static_cast<double> (h / 2 - ry);
    const double cx = static_cast<double> (x + w / 2);
    const double cy = static_cast<double> (y + h / 2);
    const double c = now_.cosine;
    const double s = now_.sine;
    const double middle_x = now_.x + c * cx - s * cy;
    const double middle_y = now_.y + s * cx + c * cy;
    const double reach_x = std::fabs (c) * half_w + std::fabs (s) * half_h +
                           std::hypot (c * static_cast<double> (rx), s * static_cast<double> (ry));
    const double reach_y = std::fabs (s) * half_w + std::fabs (c) * half_h +
                           std::hypot (s * static_cast<double> (rx), c * static_cast<double> (ry));
    return {static_cast<float> (middle_x - reach_x), static_cast<float> (middle_y - reach_y),
            static_cast<float> (middle_x + reach_x), static_cast<float> (middle_y + reach_y),
            false};
}

Bounds BoundsDevice::around (std::span<const Point> points) const {
    Bounds box;
    for (const Point& p : points) {
        const auto px = static_cast<double> (p.x);
        const auto py = static_cast<double> (p.y);
        const auto x = static_cast<float> (now_.x + now_.cosine * px - now_.sine * py);
        const auto y = static_cast<float> (now_.y + now_.sine * px + now_.cosine * py);
        box.join ({x, y, x, y, false});
    }
    return box;
}

void BoundsDevice::take (const Bounds& box) {
    const bool good = std::isfinite (box.left) && std::isfinite (box.top) &&
                      std::isfinite (box.right) && std::isfinite (box.bottom);
    if (good) bounds_.join (box);
}

void BoundsDevice::take_clipped (Bounds box) {
    if (clip_) {
        if (clip_->empty) return;
        box.left = std::max (box.left, clip_->left);
        box.top = std::max (box.top, clip_->top);
        box.right = std::min (box.right, clip_->right);
        box.bottom = std::min (box.bottom, clip_->bottom);
        if (!(box.left < box.right) || !(box.top < box.bottom)) return;
    }
    take (box);
}

void BoundsDevice::set_line (float width, document::LineStyle) { line_width_ = width; }

void BoundsDevice::push_transform (float x, float y, float angle) {
    outer_.push_back (now_);
    const Transform outer = now_;
    const auto dx = static_cast<double> (x);
    const auto dy = static_cast<double> (y);
    const double c = std::cos (static_cast<double> (angle) * degree);
    const double s = std::sin (static_cast<double> (angle) * degree);
    now_ = {outer.cosine * c - outer.sine * s, outer.sine * c + outer.cosine * s,
            outer.x + outer.cosine * dx - outer.sine * dy,
            outer.y + outer.sine * dx + outer.cosine * dy};
}

void BoundsDevice::pop_transform () {
    if (outer_.empty ()) return;
    now_ = outer_.back ();
    outer_.pop_back ();
}

void BoundsDevice::fill_rect (float x, float y, float w, float h) {
    take (around (x, y, w, h, 0, 0));
}

void BoundsDevice::stroke_rect (float x, float y, float w, float h) {
    const float t = line_width_;
    take (around (x - t / 2, y - t / 2, w + t, h + t, 0, 0));
}

void BoundsDevice::fill_round_rect (float x, float y, float w, float h, float r) {
    take_clipped (around (x, y, w, h, r, r));
}

void BoundsDevice::stroke_round_rect (float x, float y, float w, float h, float r) {
    const float t = line_width_;
    take (around (x - t / 2, y - t / 2, w + t, h + t, r, r));
}

void BoundsDevice::fill_ellipse (float x, float y, float w, float h, int) {
    take_clipped (around (x, y, w, h, w / 2, h / 2));
}

void BoundsDevice::stroke_ellipse (float x, float y, float w, float h, int) {
    const float t = line_width_;
    take (around (x - t / 2, y - t / 2, w + t, h + t, (w + t) / 2, (h + t) / 2));
}

void BoundsDevice::fill_triangle_head (float length, float width, float tip_x) {
    const std::array<Point, 3> points{
        {{tip_x, 0}, {tip_x - length, -width / 2}, {tip_x - length, width / 2}}};
    take (around (points));
}

void BoundsDevice::arrow_head (float length, float width, float line_width) {
    const std::array<Point, 4> points{
        {{0, 0}, {-length, -width / 2}, {-length * 3 / 4, 0}, {-length, width / 2}}};
    line_width_ = line_width;
    take (around (points));
    take (around (outer_corners (points, line_width)));
}

void BoundsDevice::fill_chevron (float x, float y, float w, float h, float depth) {
    const std::array<Point, 6> points{{{x, y},
                                       {x + w / 2, y + depth},
                                       {x + w, y},
                                       {x + w, y + h},
                                       {x + w / 2, y + h + depth},
                                       {x, y + h}}};
    take (around (points));
}

void BoundsDevice::draw_text (const document::FontMetrics& font, std::string_view letters, float x,
                              float y) {
    // Fonts are measured up to code 252; what comes behind has a shape all the same.
    constexpr unsigned last_measured = 252;
    float width = 0;
    for (const char c : letters) {
        const unsigned code = static_cast<unsigned char> (c);
        width += font.width_of (code > last_measured ? 'n' : code);
    }
    take (around (x, y - static_cast<float> (font.ascent), width,
                  static_cast<float> (font.ascent + font.descent), 0, 0));
}

void BoundsDevice::draw_picture (std::string_view, float x, float y, float w, float h) {
    take (around (x, y, w, h, 0, 0));
}

void BoundsDevice::set_clip (float x, float y, float w, float h) {
    clip_ = around (x, y, w, h, 0, 0);
}

void BoundsDevice::end_clip () { clip_.reset (); }

void BoundsDevice::shared_bar (float x, float y, float w, float h, float t) {
    line_width_ = t;
    take (around (x, y + h * 4 / 5 - t / 2, w, t, 0, 0));
}

} // namespace ostrand::drawing
