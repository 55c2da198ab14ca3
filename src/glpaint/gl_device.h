// Painting with OpenGL, in immediate mode, into whatever context is current.
// Layer: glpaint.
#pragma once
#include "document/paint_device.h"
#include "document/places.h"

#include <span>
#include <vector>

namespace ostrand::glpaint {

/// Pixels of a font's letters at a scale (zoom, times the display's): at least 4, so that small
/// letters stay marks that one can see.
int shown_text_size (const document::FontMetrics& font, float scale);

/// Letters and pictures, which OpenGL itself has not: the toolkit's part.
class GlContent {
  public:
    GlContent () = default;
    GlContent (const GlContent&) = delete;
    GlContent& operator= (const GlContent&) = delete;
    virtual ~GlContent () = default;
    /// Draws at the current raster transform in the current colour.
    /// letters  Latin-1, or the codes of the Symbol family; not empty
    /// x, y     base point, already multiplied by the zoom
    virtual void draw_text (const document::FontMetrics& font, std::string_view letters, float x,
                            float y, float zoom) = 0;
    /// The box is already multiplied by the zoom.
    virtual void draw_picture (std::string_view path, float x, float y, float w, float h) = 0;
};

/// The drawing area of the window, and how large the network is shown in it.
struct GlView {
    int height = 0;        // pixels
    float scroll_x = 0;    // network pixels left of the window's left edge
    float scroll_y = 0;    // and above its top
    float pixel_ratio = 1; // physical pixels of one of ours
    float zoom = 1;        // of ours for one of the network
};

/// Coordinates and line widths are multiplied by the view's zoom. Every filled shape is also
/// outlined with a 1-pixel line of its colour, which smooths its edge, unless `fast` is set.
class GlDevice : public document::PaintDevice {
  public:
    /// content and view must outlive the device's use; the projection has y downwards.
    GlDevice (GlContent& content, const GlView& view) : content_ (content), view_ (view) {}

    bool fast = false; // during fast drags: no outlines

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
    float zoom () const { return view_.zoom; }
    void take_line_width (float width);
    void emit (unsigned mode, Points points) const;
    void outline (Points points) const;
    void fill_convex (Points points) const;

    GlContent& content_;
    const GlView& view_;
    float line_width_ = 1;
};

} // namespace ostrand::glpaint
