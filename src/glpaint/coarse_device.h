// Painting networks that are shown very small: thousands of shapes as one array of triangles.
// Layer: glpaint.
#pragma once
#include "glpaint/gl_device.h"

#include <cstdint>
#include <vector>

namespace ostrand::glpaint {

/// Coloured triangles that wait to be drawn at once.
class TriangleBatch {
  public:
    struct Vertex {
        float x;
        float y;
        std::uint32_t rgba; // bytes red, green, blue, opacity in memory order
    };
    void add (const Vertex& a, const Vertex& b, const Vertex& c);
    /// Draws what waits, in the current matrix.
    void flush ();

  private:
    std::vector<Vertex> vertices_;
};

/// Draws like GlDevice, to within a pixel, in a fraction of its time when shapes are small: a driver
/// that draws in software spends its time on changes of state, not on pixels. Edges are not
/// smoothed, and letters below smallest_letters pixels are left out. Several devices may share a
/// batch; what they draw comes in the order of the calls.
class CoarseDevice : public document::PaintDevice {
  public:
    /// Letters of fewer pixels are no more than noise.
    static constexpr float smallest_letters = 5;
    /// Networks at this zoom and below are painted by this device.
    static constexpr float largest_zoom = 0.34F;

    /// All must outlive the device's use; the projection has y downwards.
    CoarseDevice (TriangleBatch& batch, GlContent& content, const GlView& view);

    void set_color (unsigned color) override;
    void set_color_rgb (int red, int green, int blue) override;
    void set_color_alpha (int red, int green, int blue, int alpha) override;
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
    using Points = std::span<const document::Point>;

    /// Where a place of the network stands in the window: x' = a x + b y + dx, y' = -b x + a y + dy
    /// for turns, with the zoom in a and b.
    struct Placement {
        float a = 1;
        float b = 0;
        float dx = 0;
        float dy = 0;
    };
    document::Point placed (document::Point p) const;
    void fill (Points points);
    void outline (Points points);
    void line (document::Point from, document::Point to);
    void segment (document::Point from, document::Point to);
    Points ellipse (float x, float y, float w, float h);
    Points round_rect (float x, float y, float w, float h, float r);
    /// Lets the immediate device draw something in the present placement.
    template <class Draw>
    void at_once (Draw draw);

    TriangleBatch& batch_;
    GlContent& content_;
    const GlView& view_;
    GlDevice exact_; // for clips
    std::vector<Placement> placements_;
    std::vector<document::Point> points_; // of the shape in hand
    std::uint32_t rgba_ = 0xFF000000U;
    float line_width_ = 1; // pixels
    bool dashed_ = false;
};

} // namespace ostrand::glpaint
