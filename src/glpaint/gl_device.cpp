// The primitives in immediate mode.
#include "glpaint/gl_device.h"

#include "document/colors.h"

#include <GL/gl.h>

#include <algorithm>
#include <cmath>

namespace ostrand::glpaint {
namespace {

using document::Point;

constexpr int corner_chords = 8;
constexpr int smallest_text = 4; // pixels
constexpr double degree = 3.14159265358979323846 / 180;

struct Box {
    float x;
    float y;
    float w;
    float h;
};

/// An outline that smooths a shape's edge lies half a pixel inside it.
Box inset (Box box) {
    if (box.w <= 1 || box.h <= 1) return box;
    return {box.x + 0.5F, box.y + 0.5F, box.w - 1, box.h - 1};
}

std::vector<Point> rect_points (Box b) {
    return {{b.x, b.y}, {b.x + b.w, b.y}, {b.x + b.w, b.y + b.h}, {b.x, b.y + b.h}};
}

std::vector<Point> ellipse_points (Box b, int steps) {
    steps = std::clamp (steps, 3, 360);
    std::vector<Point> points;
    points.reserve (static_cast<std::size_t> (steps));
    for (int i = 0; i < steps; ++i) {
        const double angle = (90 + 360.0 * i / steps) * degree;
        points.push_back ({b.x + b.w / 2 * static_cast<float> (1 + std::cos (angle)),
                           b.y + b.h / 2 * static_cast<float> (1 + std::sin (angle))});
    }
    return points;
}

std::vector<Point> round_points (Box b, float r) {
    r = std::max (0.0F, std::min ({r, b.w / 2, b.h / 2}));
    const Point centers[4] = {{b.x + b.w - r, b.y + b.h - r},
                              {b.x + r, b.y + b.h - r},
                              {b.x + r, b.y + r},
                              {b.x + b.w - r, b.y + r}};
    std::vector<Point> points;
    for (int corner = 0; corner < 4; ++corner) {
        for (int i = 0; i <= corner_chords; ++i) {
            const double angle = (90.0 * corner + 90.0 * i / corner_chords) * degree;
            points.push_back ({centers[corner].x + r * static_cast<float> (std::cos (angle)),
                               centers[corner].y + r * static_cast<float> (std::sin (angle))});
        }
    }
    return points;
}

} // namespace

int shown_text_size (const document::FontMetrics& font, float scale) {
    const int size = document::font_size (document::size_index (font.key));
    return std::max (static_cast<int> (static_cast<float> (size) * scale), smallest_text);
}

void GlDevice::emit (unsigned mode, Points points) const {
    glBegin (mode);
    for (const Point& p : points) glVertex2f (p.x * zoom (), p.y * zoom ());
    glEnd ();
}

void GlDevice::outline (Points points) const {
    if (fast) return;
    glLineWidth (1);
    emit (GL_LINE_LOOP, points);
    glLineWidth (line_width_);
}

void GlDevice::fill_convex (Points points) const { emit (GL_TRIANGLE_FAN, points); }

void GlDevice::set_color (unsigned color) {
    const std::uint32_t rgb = document::color_rgb (color);
    set_color_rgb (static_cast<int> (rgb >> 24), static_cast<int> (rgb >> 16 & 255U),
                   static_cast<int> (rgb >> 8 & 255U));
}

void GlDevice::set_color_rgb (int red, int green, int blue) {
    set_color_alpha (red, green, blue, 255);
}

void GlDevice::set_color_alpha (int red, int green, int blue, int alpha) {
    glColor4ub (static_cast<GLubyte> (red), static_cast<GLubyte> (green),
                static_cast<GLubyte> (blue), static_cast<GLubyte> (alpha));
}

/// Lines grow and shrink with the network, but to less than a pixel only when they were.
void GlDevice::take_line_width (float width) {
    const float least = std::clamp (width, 0.1F, 1.0F);
    line_width_ = std::max (width * zoom (), least);
    glLineWidth (line_width_);
}

void GlDevice::set_line (float width, document::LineStyle style) {
    take_line_width (width);
    if (style == document::LineStyle::dashed) {
        glLineStipple (4, 0xAAAA);
        glEnable (GL_LINE_STIPPLE);
    } else {
        glDisable (GL_LINE_STIPPLE);
    }
}

void GlDevice::push_transform (float x, float y, float angle) {
    glPushMatrix ();
    glTranslatef (x * zoom (), y * zoom (), 0);
    glRotatef (angle, 0, 0, 1);
}

void GlDevice::pop_transform () { glPopMatrix (); }

void GlDevice::fill_rect (float x, float y, float w, float h) {
    fill_convex (rect_points ({x, y, w, h}));
    outline (rect_points (inset ({x, y, w, h})));
}

void GlDevice::stroke_rect (float x, float y, float w, float h) {
    emit (GL_LINE_LOOP, rect_points ({x, y, w, h}));
}

void GlDevice::fill_round_rect (float x, float y, float w, float h, float r) {
    fill_convex (round_points ({x, y, w, h}, r));
    outline (round_points (inset ({x, y, w, h}), r));
}

void GlDevice::stroke_round_rect (float x, float y, float w, float h, float r) {
    emit (GL_LINE_LOOP, round_points ({x, y, w, h}, r));
}

void GlDevice::fill_ellipse (float x, float y, float w, float h, int steps) {
    fill_convex (ellipse_points ({x, y, w, h}, steps));
    outline (ellipse_points (inset ({x, y, w, h}), steps));
}

void GlDevice::stroke_ellipse (float x, float y, float w, float h, int steps) {
    emit (GL_LINE_LOOP, ellipse_points ({x, y, w, h}, steps));
}

void GlDevice::fill_triangle_head (float length, float width, float tip_x) {
    const Point points[] = {{tip_x, 0}, {tip_x - length, -width / 2}, {tip_x - length, width / 2}};
    fill_convex (points);
    outline (points);
}

void GlDevice::arrow_head (float length, float width, float line_width) {
    // Begins at the tip, from which all of the barbed shape can be seen.
    const Point points[] = {
        {0, 0}, {-length, -width / 2}, {-length * 3 / 4, 0}, {-length, width / 2}};
    fill_convex (points);
    take_line_width (line_width);
    emit (GL_LINE_LOOP, points);
}

void GlDevice::fill_chevron (float x, float y, float w, float h, float depth) {
    const Point points[] = {{x, y},         {x + w / 2, y + depth},     {x + w, y},
                            {x + w, y + h}, {x + w / 2, y + h + depth}, {x, y + h}};
    // Not convex: two slanted halves.
    const Point left_half[] = {points[0], points[1], points[4], points[5]};
    const Point right_half[] = {points[1], points[2], points[3], points[4]};
    fill_convex (left_half);
    fill_convex (right_half);
    outline (points);
}

void GlDevice::shared_bar (float x, float y, float w, float h, float t) {
    const float at = y + h * 4 / 5;
    fill_convex (rect_points ({x, at - t / 2, w, t}));
}

void GlDevice::draw_text (const document::FontMetrics& font, std::string_view letters, float x,
                          float y) {
    if (letters.empty ()) return;
    content_.draw_text (font, letters, x * zoom (), y * zoom (), zoom ());
}

void GlDevice::draw_picture (std::string_view path, float x, float y, float w, float h) {
    content_.draw_picture (path, x * zoom (), y * zoom (), w * zoom (), h * zoom ());
}

/// Scissors count physical pixels from the window's lower left corner.
void GlDevice::set_clip (float x, float y, float w, float h) {
    const float ratio = view_.pixel_ratio;
    const auto pixel = [ratio] (float value) {
        return static_cast<GLint> (std::floor (value * ratio));
    };
    const GLint left = pixel ((x - view_.scroll_x) * zoom ());
    const GLint right = pixel ((x + w - view_.scroll_x) * zoom ());
    const GLint top = pixel ((y - view_.scroll_y) * zoom ());
    const GLint bottom = pixel ((y + h - view_.scroll_y) * zoom ());
    const auto window_h = static_cast<GLint> (static_cast<float> (view_.height) * ratio);
    glScissor (left, window_h - bottom, std::max (0, right - left), std::max (0, bottom - top));
    glEnable (GL_SCISSOR_TEST);
}

void GlDevice::end_clip () { glDisable (GL_SCISSOR_TEST); }

} // namespace ostrand::glpaint
