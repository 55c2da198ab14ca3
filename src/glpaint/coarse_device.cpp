// Shapes as triangles.
#include "glpaint/coarse_device.h"

#include "document/colors.h"

#include <GL/gl.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>

namespace ostrand::glpaint {

using document::Point;

namespace {

static_assert (std::endian::native == std::endian::little, "colours are packed for this order");

constexpr float pi = 3.14159265358979323846F;
constexpr float dash = 4;                       // pixels drawn, and as many left out
constexpr std::size_t largest_draw = 3 * 20000; // vertices; drivers copy them
constexpr int least_sides = 6;
constexpr int most_sides = 36;

/// Sides that a curve of some pixels across needs to look round.
int sides_for (float pixels) {
    return std::clamp (static_cast<int> (pixels) + least_sides, least_sides, most_sides);
}

} // namespace

void TriangleBatch::add (const Vertex& a, const Vertex& b, const Vertex& c) {
    if (vertices_.size () >= largest_draw) flush ();
    vertices_.push_back (a);
    vertices_.push_back (b);
    vertices_.push_back (c);
}

void TriangleBatch::flush () {
    if (vertices_.empty ()) return;
    glEnableClientState (GL_VERTEX_ARRAY);
    glEnableClientState (GL_COLOR_ARRAY);
    glVertexPointer (2, GL_FLOAT, sizeof (Vertex), &vertices_.front ().x);
    glColorPointer (4, GL_UNSIGNED_BYTE, sizeof (Vertex), &vertices_.front ().rgba);
    glDrawArrays (GL_TRIANGLES, 0, static_cast<GLsizei> (vertices_.size ()));
    glDisableClientState (GL_COLOR_ARRAY);
    glDisableClientState (GL_VERTEX_ARRAY);
    vertices_.clear ();
}

CoarseDevice::CoarseDevice (TriangleBatch& batch, GlContent& content, const GlView& view)
    : batch_ (batch), content_ (content), view_ (view), exact_ (content, view) {
    placements_.push_back ({.a = view.zoom});
}

Point CoarseDevice::placed (Point p) const {
    const Placement& at = placements_.back ();
    return {at.a * p.x + at.b * p.y + at.dx, at.a * p.y - at.b * p.x + at.dy};
}

void CoarseDevice::set_color (unsigned color) {
    const std::uint32_t rgb = document::color_rgb (color);
    set_color_rgb (static_cast<int> (rgb >> 24), static_cast<int> (rgb >> 16 & 255U),
                   static_cast<int> (rgb >> 8 & 255U));
}

void CoarseDevice::set_color_rgb (int red, int green, int blue) {
    set_color_alpha (red, green, blue, 255);
}

void CoarseDevice::set_color_alpha (int red, int green, int blue, int alpha) {
    const auto byte = [] (int value, int shift) {
        return (static_cast<std::uint32_t> (value) & 255U) << shift;
    };
    rgba_ = byte (red, 0) | byte (green, 8) | byte (blue, 16) | byte (alpha, 24);
}

void CoarseDevice::set_line (float width, document::LineStyle style) {
    line_width_ = std::max (width * view_.zoom, 1.0F);
    dashed_ = style == document::LineStyle::dashed;
}

void CoarseDevice::push_transform (float x, float y, float angle) {
    const Point origin = placed ({x, y});
    const Placement& outer = placements_.back ();
    const float turn = angle * pi / 180;
    const float c = std::cos (turn);
    const float s = std::sin (turn);
    // Clockwise as y is down: x' = c x - s y, y' = s x + c y.
    placements_.push_back ({.a = outer.a * c + outer.b * s,
                            .b = outer.b * c - outer.a * s,
                            .dx = origin.x,
                            .dy = origin.y});
}

void CoarseDevice::pop_transform () { placements_.pop_back (); }

void CoarseDevice::fill (Points points) {
    const auto vertex = [this] (Point p) {
        const Point at = placed (p);
        return TriangleBatch::Vertex{at.x, at.y, rgba_};
    };
    const TriangleBatch::Vertex first = vertex (points[0]);
    TriangleBatch::Vertex before = vertex (points[1]);
    for (const Point& p : points.subspan (2)) {
        const TriangleBatch::Vertex now = vertex (p);
        batch_.add (first, before, now);
        before = now;
    }
}

/// A line between two places of the window.
void CoarseDevice::segment (Point from, Point to) {
    const float dx = to.x - from.x;
    const float dy = to.y - from.y;
    const float length = std::hypot (dx, dy);
    if (length <= 0) return;
    const float nx = -dy / length * line_width_ / 2;
    const float ny = dx / length * line_width_ / 2;
    const TriangleBatch::Vertex corners[] = {{from.x + nx, from.y + ny, rgba_},
                                             {from.x - nx, from.y - ny, rgba_},
                                             {to.x - nx, to.y - ny, rgba_},
                                             {to.x + nx, to.y + ny, rgba_}};
    batch_.add (corners[0], corners[1], corners[2]);
    batch_.add (corners[0], corners[2], corners[3]);
}

void CoarseDevice::line (Point from, Point to) {
    if (!dashed_) {
        segment (from, to);
        return;
    }
    const float length = std::hypot (to.x - from.x, to.y - from.y);
    const auto at = [&] (float place) {
        const float part = std::min (place / length, 1.0F);
        return Point{from.x + (to.x - from.x) * part, from.y + (to.y - from.y) * part};
    };
    for (float place = dash; place < length; place += 2 * dash)
        segment (at (place), at (place + dash));
}

void CoarseDevice::outline (Points points) {
    Point before = placed (points.back ());
    for (const Point& p : points) {
        const Point now = placed (p);
        line (before, now);
        before = now;
    }
}

CoarseDevice::Points CoarseDevice::ellipse (float x, float y, float w, float h) {
    const int sides = sides_for (std::max (w, h) * view_.zoom);
    points_.clear ();
    for (int i = 0; i < sides; ++i) {
        const float turn = 2 * pi * static_cast<float> (i) / static_cast<float> (sides);
        points_.push_back ({x + w / 2 * (1 + std::cos (turn)), y + h / 2 * (1 + std::sin (turn))});
    }
    return points_;
}

CoarseDevice::Points CoarseDevice::round_rect (float x, float y, float w, float h, float r) {
    r = std::max (0.0F, std::min ({r, w / 2, h / 2}));
    const Point centers[] = {
        {x + w - r, y + h - r}, {x + r, y + h - r}, {x + r, y + r}, {x + w - r, y + r}};
    const int chords = std::max (1, sides_for (2 * r * view_.zoom) / 4);
    points_.clear ();
    for (int corner = 0; corner < 4; ++corner)
        for (int i = 0; i <= chords; ++i) {
            const float turn = pi / 2 *
                               (static_cast<float> (corner) +
                                static_cast<float> (i) / static_cast<float> (chords));
            points_.push_back (
                {centers[corner].x + r * std::cos (turn), centers[corner].y + r * std::sin (turn)});
        }
    return points_;
}

void CoarseDevice::fill_rect (float x, float y, float w, float h) {
    // A bar thinner than a pixel, such as an arc, would fall between the pixels.
    const float least = 1 / view_.zoom;
    if (w < least) {
        x -= (least - w) / 2;
        w = least;
    }
    if (h < least) {
        y -= (least - h) / 2;
        h = least;
    }
    const std::array<Point, 4> points{{{x, y}, {x + w, y}, {x + w, y + h}, {x, y + h}}};
    fill (points);
}

void CoarseDevice::stroke_rect (float x, float y, float w, float h) {
    const std::array<Point, 4> points{{{x, y}, {x + w, y}, {x + w, y + h}, {x, y + h}}};
    outline (points);
}

void CoarseDevice::fill_round_rect (float x, float y, float w, float h, float r) {
    fill (round_rect (x, y, w, h, r));
}

void CoarseDevice::stroke_round_rect (float x, float y, float w, float h, float r) {
    outline (round_rect (x, y, w, h, r));
}

void CoarseDevice::fill_ellipse (float x, float y, float w, float h, int) {
    fill (ellipse (x, y, w, h));
}

void CoarseDevice::stroke_ellipse (float x, float y, float w, float h, int) {
    outline (ellipse (x, y, w, h));
}

void CoarseDevice::fill_triangle_head (float length, float width, float tip_x) {
    const std::array<Point, 3> points{
        {{tip_x, 0}, {tip_x - length, -width / 2}, {tip_x - length, width / 2}}};
    fill (points);
}

void CoarseDevice::arrow_head (float length, float width, float line_width) {
    const std::array<Point, 4> points{
        {{0, 0}, {-length, -width / 2}, {-length * 3 / 4, 0}, {-length, width / 2}}};
    fill (points);
    set_line (line_width, dashed_ ? document::LineStyle::dashed : document::LineStyle::solid);
    outline (points);
}

void CoarseDevice::fill_chevron (float x, float y, float w, float h, float depth) {
    const std::array<Point, 4> left{
        {{x, y}, {x + w / 2, y + depth}, {x + w / 2, y + h + depth}, {x, y + h}}};
    const std::array<Point, 4> right{
        {{x + w / 2, y + depth}, {x + w, y}, {x + w, y + h}, {x + w / 2, y + h + depth}}};
    fill (left);
    fill (right);
}

void CoarseDevice::shared_bar (float x, float y, float w, float h, float t) {
    fill_rect (x, y + h * 4 / 5 - t / 2, w, t);
}

template <class Draw>
void CoarseDevice::at_once (Draw draw) {
    batch_.flush ();
    const Placement& at = placements_.back ();
    const float zoom = view_.zoom;
    // The content multiplies places by the zoom itself.
    const GLfloat matrix[16] = {
        at.a / zoom, -at.b / zoom, 0, 0, at.b / zoom, at.a / zoom, 0, 0, 0, 0, 1, 0,
        at.dx,       at.dy,        0, 1};
    glPushMatrix ();
    glMultMatrixf (matrix);
    glColor4ub (static_cast<GLubyte> (rgba_), static_cast<GLubyte> (rgba_ >> 8),
                static_cast<GLubyte> (rgba_ >> 16), static_cast<GLubyte> (rgba_ >> 24));
    draw ();
    glPopMatrix ();
}

void CoarseDevice::draw_text (const document::FontMetrics& font, std::string_view letters, float x,
                              float y) {
    const int size = document::font_size (document::size_index (font.key));
    if (letters.empty () || static_cast<float> (size) * view_.zoom < smallest_letters) return;
    const float zoom = view_.zoom;
    at_once ([&] { content_.draw_text (font, letters, x * zoom, y * zoom, zoom); });
}

void CoarseDevice::draw_picture (std::string_view path, float x, float y, float w, float h) {
    const float zoom = view_.zoom;
    at_once ([&] { content_.draw_picture (path, x * zoom, y * zoom, w * zoom, h * zoom); });
}

void CoarseDevice::set_clip (float x, float y, float w, float h) {
    batch_.flush ();
    exact_.set_clip (x, y, w, h);
}

void CoarseDevice::end_clip () {
    batch_.flush ();
    exact_.end_clip ();
}

} // namespace ostrand::glpaint
