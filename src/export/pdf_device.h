// Drawing into a PDF page.
// Layer: export.
#pragma once
#include "base/disk.h"
#include "document/char.h"
#include "document/paint_device.h"
#include "export/pdf_fonts.h"

#include <initializer_list>
#include <map>
#include <string>
#include <vector>

namespace ostrand::drawing {

/// One page, drawn by libHaru. y = 0 is its top; all is given to libHaru with y negated. The first
/// error that libHaru raises is told on standard error, and nothing more is drawn after it. Only a
/// picture that cannot be taken in ends nothing: it is reported once and left out.
class PdfDevice : public document::PaintDevice {
  public:
    /// Size of the page in points, one for a pixel; A4 when either is 0. A drawing larger than a
    /// page may be (14400 points) is scaled down to fit.
    PdfDevice (float width, float height);
    ~PdfDevice () override;

    /// Has to come first; false when something failed already.
    bool begin ();
    /// Writes the document. False when libHaru raised an error or the file took not everything.
    bool write_to (OutputFile& file);
    bool failed () const { return failed_; }
    float page_width () const { return page_width_; }
    float page_height () const { return page_height_; }

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

    /// Selects a font by the toolkit's number, in pixels; a number without a font changes nothing.
    void set_font (int number, float size);
    /// Selects a TrueType file.
    void set_ttf (std::string_view name, float size);
    /// Width of a text in the current font; 0 when there is none.
    float text_width (std::string_view letters) const;
    int font_ascent () const { return ascent_; }
    int font_descent () const { return descent_; }
    int font_slot () const { return state_.font; }

  private:
    /// What a page's operators last set, as far as they are not said twice. Goes and comes with the
    /// page's own state.
    struct State {
        int font = -1; // slot, -1 none
        float font_size = 0;
        int dash = -1;
        float line_width = -1;
        int rgb = -1; // 0xRRGGBB, -1 none
    };
    enum class PathEnd { stroke, closed_stroke, fill };

    static void on_error (HPDF_STATUS error, HPDF_STATUS detail, void* device);
    float scaled (float value) const;
    void path (std::initializer_list<document::Point> points, PathEnd end);
    void round_path (float x, float y, float w, float h, float r);
    void ellipse_path (float x, float y, float w, float h);
    HPDF_Image load_png (const std::string& path);
    HPDF_Image load_picture (const std::string& path);
    void select (int slot, float size);
    void write_line (float width, int dash);
    void write_color (int rgb);
    void save_state ();
    void restore_state ();
    void renew_style ();

    HPDF_Doc document_ = nullptr;
    HPDF_Page page_ = nullptr;
    PdfFonts fonts_{nullptr};
    bool failed_ = false;
    bool tries_picture_ = false; // errors concern the picture alone
    float scale_ = 1;
    float page_width_ = 0;
    float page_height_ = 0;
    int ascent_ = 0;
    int descent_ = 0;
    State state_;
    State wanted_; // colour and line as they were set last, whatever the page went back to
    std::vector<State> saved_;
    std::map<std::string, HPDF_Image, std::less<>> pictures_; // null: left out
};

} // namespace ostrand::drawing
