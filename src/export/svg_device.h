// Drawing into an SVG text.
// Layer: export.
#pragma once
#include "base/disk.h"
#include "document/char.h"
#include "document/paint_device.h"

#include <initializer_list>
#include <string>

namespace ostrand::drawing {

/// Writes each primitive as an element, at once; no scene is kept. Text goes to a string, which
/// moves to a file in large pieces when there is one.
class SvgDevice : public document::PaintDevice {
  public:
    /// Size of the picture in pixels; `file` may be null, then everything stays in text ().
    SvgDevice (unsigned width, unsigned height, OutputFile* file = nullptr);

    /// Writes the last element. False when the file could not take everything.
    bool end ();
    const std::string& text () const { return out_; }

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
    void begin_group () override;
    void end_group () override;

    /// A line from (x1, y1) to (x2, y2) in the current width.
    void line (float x1, float y1, float x2, float y2);
    /// n points of a circle as a filled polygon, from an angle on and over a span, in degrees.
    void arc_polygon (float cx, float cy, float r, float from_deg, float span_deg, int n);

  private:
    /// Appends a pattern with each "%" filled by the next value: numbers as %g, whole ones in
    /// decimal, texts as they are.
    template <typename... Values>
    void write (std::string_view pattern, const Values&... values);
    void polygon (std::initializer_list<document::Point> points);
    void closed_path (std::initializer_list<document::Point> points);
    std::string clip_reference () const;
    void flush ();

    std::string out_;
    OutputFile* file_;
    unsigned clip_ = 0;  // number of the clip path in force, 0 none
    unsigned color_ = 0; // 0xRRGGBB
    float line_width_ = 1;
    bool good_ = true;
};

/// A whole file in base 64.
std::string base64 (std::string_view bytes);

} // namespace ostrand::drawing
