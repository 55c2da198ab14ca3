// The drawing primitives: all that painting asks of the place it paints on.
// Layer: document.
#pragma once
#include "document/font.h"

#include <string_view>

namespace ostrand::document {

/// How a line is drawn.
enum class LineStyle { solid, dashed };

/// A place to paint on: the screen, a drawing file, a list of calls in a test. Coordinates are
/// network pixels with y down; rectangles and ellipses are given by their box. A device writes what
/// it is told at once and keeps no scene. Every primitive is pure: a device that lacks one does not
/// compile, instead of leaving a shape out in silence.
class PaintDevice {
  public:
    PaintDevice () = default;
    PaintDevice (const PaintDevice&) = delete;
    PaintDevice& operator= (const PaintDevice&) = delete;
    virtual ~PaintDevice () = default;

    /// Colour of what follows: below 256 an index of the colour map, else 0xRRGGBB00.
    virtual void set_color (unsigned color) = 0;
    /// Parts from 0 to 255.
    virtual void set_color_rgb (int red, int green, int blue) = 0;
    /// Likewise with an opacity, 255 covering; files, which have none, paint it covering.
    virtual void set_color_alpha (int red, int green, int blue, int alpha) = 0;
    virtual void set_line (float width, LineStyle style) = 0;

    /// What follows is moved to (x, y) and turned by `angle` degrees, clockwise as y is down, until
    /// pop_transform. Pairs nest.
    virtual void push_transform (float x, float y, float angle) = 0;
    virtual void pop_transform () = 0;

    virtual void fill_rect (float x, float y, float w, float h) = 0;
    virtual void stroke_rect (float x, float y, float w, float h) = 0;
    /// Corners of radius r.
    virtual void fill_round_rect (float x, float y, float w, float h, float r) = 0;
    virtual void stroke_round_rect (float x, float y, float w, float h, float r) = 0;
    /// steps  number of sides where the device can only draw polygons
    virtual void fill_ellipse (float x, float y, float w, float h, int steps) = 0;
    virtual void stroke_ellipse (float x, float y, float w, float h, int steps) = 0;
    /// A filled triangle pointing along +x with its tip at (tip_x, 0).
    virtual void fill_triangle_head (float length, float width, float tip_x) = 0;
    /// A filled barbed head with its tip at (0, 0), pointing along +x, and a notch in its back a
    /// quarter of the length deep. Its outline has width line_width.
    virtual void arrow_head (float length, float width, float line_width) = 0;
    /// A receptor's hexagon: the box with the middle of its top and bottom edge lower by `depth`.
    virtual void fill_chevron (float x, float y, float w, float h, float depth) = 0;

    /// Letters of one font, Latin-1 (Symbol: its own codes), with their base point at (x, y).
    virtual void draw_text (const FontMetrics& font, std::string_view letters, float x,
                            float y) = 0;
    /// The image of a file, fitted into the box; where a device cannot show the format, nothing.
    virtual void draw_picture (std::string_view path, float x, float y, float w, float h) = 0;
    /// Nothing outside the rectangle is painted until end_clip. Clips do not nest.
    virtual void set_clip (float x, float y, float w, float h) = 0;
    virtual void end_clip () = 0;
    /// The line across a shared node without a background: t thick, at four fifths of the box.
    virtual void shared_bar (float x, float y, float w, float h, float t) = 0;
    /// Opens and closes what belongs to one object, for devices that group.
    virtual void begin_group () = 0;
    virtual void end_group () = 0;

    /// printf at (x, y) in a font key.
    void draw_format (unsigned font, float x, float y, const char* format, ...)
        __attribute__ ((format (printf, 5, 6)));
};

/// A transform that ends with its scope.
class TransformScope {
  public:
    TransformScope (PaintDevice& device, float x, float y, float angle) : device_ (device) {
        device_.push_transform (x, y, angle);
    }
    ~TransformScope () { device_.pop_transform (); }
    TransformScope (const TransformScope&) = delete;
    TransformScope& operator= (const TransformScope&) = delete;

  private:
    PaintDevice& device_;
};

/// A clip that ends with its scope.
class ClipScope {
  public:
    ClipScope (PaintDevice& device, float x, float y, float w, float h) : device_ (device) {
        device_.set_clip (x, y, w, h);
    }
    ~ClipScope () { device_.end_clip (); }
    ClipScope (const ClipScope&) = delete;
    ClipScope& operator= (const ClipScope&) = delete;

  private:
    PaintDevice& device_;
};

} // namespace ostrand::document
