// A paint device that shows nothing and measures everything: how far does a drawing reach?
// Layer: export.
#pragma once
#include "document/char.h"
#include "document/paint_device.h"

#include <optional>
#include <span>
#include <vector>

namespace ostrand::drawing {

/// The box around all that was painted, in pixels; empty until something was.
struct Bounds {
    float left = 0;
    float top = 0;
    float right = 0;
    float bottom = 0;
    bool empty = true;

    void join (const Bounds& other);
};

/// Collects the box around what an SVG of the same calls shows: outlines with their width and the
/// corners where they meet, letters with the whole height of their font, turned shapes as they
/// stand. A place that is no number is passed over.
class BoundsDevice : public document::PaintDevice {
  public:
    const Bounds& bounds () const { return bounds_; }

    void set_color (unsigned) override {}
    void set_color_rgb (int, int, int) override {}
    void set_color_alpha (int, int, int, int) override {}
    void set_line (float width, document::LineStyle style) override;
    void push_transform (float x, float y, float angle) override;
    void pop_transform () override;
    void fill_rect (float x, float y, float w, float h) override;
    void stroke_rect (float x, float y, float w, float h) override;
    void fill_round_rect (float x, float y, float w, float h, float r) override;
    void stroke_round_rect (float x, float y, float w, float h, float r) override;
    void fill_ellipse (float x, float y, float w, float h, int steps) override;
    void stroke_ellipse (float x, float y, float w, float h, int steps) override;
    void fill_triangle_head (float length, float width, float tip_x) override;
    void arrow_head (float length, float width, float line_width) override;
    void fill_chevron (float x, float y, float w, float h, float depth) override;
    void draw_text (const document::FontMetrics& font, std::string_view letters, float x,
                    float y) override;
    void draw_picture (std::string_view path, float x, float y, float w, float h) override;
    void set_clip (float x, float y, float w, float h) override;
    void end_clip () override;
    void shared_bar (float x, float y, float w, float h, float t) override;
    void begin_group () override {}
    void end_group () override {}

  private:
    /// A turn and, behind it, a move.
    struct Transform {
        double cosine = 1;
        double sine = 0;
        double x = 0;
        double y = 0;
    };
    Bounds around (float x, float y, float w, float h, float rx, float ry) const;
    Bounds around (std::span<const document::Point> points) const;
    void take (const Bounds& box);
    void take_clipped (Bounds box);

    Bounds bounds_;
    std::optional<Bounds> clip_; // in force; empty lets nothing through
    float line_width_ = 1;
    Transform now_;
    std::vector<Transform> outer_;
};

} // namespace ostrand::drawing
