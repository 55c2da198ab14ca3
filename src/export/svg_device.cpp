// The SVG templates.
#include "export/svg_device.h"

#include "base/path.h"
#include "base/text.h"
#include "document/colors.h"
#include "document/greek.h"

#include <algorithm>
#include <cmath>

namespace ostrand::drawing {
namespace {

using document::Point;

constexpr std::size_t piece = std::size_t{1} << 20; // bytes that are kept before they are written
constexpr double degree = 3.14159265358979323846 / 180;

/// What the drawings of one process share.
struct SvgState {
    unsigned clip_counter =
        0; // raised by each clip path and never reset, so that no id comes twice
};

SvgState& svg_state () {
    static SvgState state;
    return state;
}

/// A colour 0xRRGGBB in six digits.
struct Hex {
    unsigned color;
};

/// Zero has no sign, and what is no number (from a place of "1e999" in a file) is zero.
void append (std::string& out, float value) {
    append_g (out, std::isfinite (value) && value != 0 ? value : 0.0);
}
void append (std::string& out, unsigned value) { append_decimal (out, value); }
void append (std::string& out, int value) { append_decimal (out, static_cast<unsigned> (value)); }
void append (std::string& out, std::string_view text) { out += text; }
void append (std::string& out, const char* text) { out += text; }
void append (std::string& out, Hex hex) {
    constexpr std::string_view digits = "0123456789abcdef";
    for (int shift = 20; shift >= 0; shift -= 4) out += digits[hex.color >> shift & 15U];
}

/// Text between tags. Control bytes are no characters of XML and have no glyph: they are left out.
std::string escaped (std::string_view utf8) {
    std::string out;
    out.reserve (utf8.size ());
    for (const char c : utf8) {
        if (c == '&')
            out += "&amp;";
        else if (c == '<')
            out += "&lt;";
        else if (static_cast<unsigned char> (c) >= 32)
            out += c;
    }
    return out;
}

const char* family_name (unsigned font) {
    switch (static_cast<document::FontFamily> (document::font_family (font))) {
    case document::FontFamily::verdana: return "Verdana";
    case document::FontFamily::arial:
    case document::FontFamily::symbol: return "Arial";
    case document::FontFamily::courier: return "Courier";
    case document::FontFamily::comic: return "Comic Sans MS";
    case document::FontFamily::times: break;
    }
    return "Times";
}

/// Kind of an image by its first bytes, as the type of a data address; null for one that SVG does
/// not know.
const char* image_type (std::string_view bytes) {
    if (bytes.starts_with ("\x89PNG")) return "image/png";
    if (bytes.starts_with ("\xff\xd8")) return "image/jpeg";
    if (bytes.starts_with ("GIF8")) return "image/gif";
    return nullptr;
}

} // namespace

std::string base64 (std::string_view bytes) {
    constexpr std::string_view letters =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string out;
    out.reserve ((bytes.size () + 2) / 3 * 4);
    for (std::size_t i = 0; i < bytes.size (); i += 3) {
        unsigned word = 0;
        for (std::size_t j = 0; j < 3; ++j)
            word = word << 8 |
                   (i + j < bytes.size () ? static_cast<unsigned char> (bytes[i + j]) : 0U);
        for (std::size_t j = 0; j < 4; ++j)
            out += i + j > bytes.size () ? '=' : letters[word >> (18 - 6 * j) & 63U];
    }
    return out;
}

template <typename... Values>
void SvgDevice::write (std::string_view pattern, const Values&... values) {
    [[maybe_unused]] const auto fill = [this, &pattern] (const auto& value) {
        const std::size_t hole = pattern.find ('%');
        out_ += pattern.substr (0, hole);
        pattern.remove_prefix (hole + 1);
        append (out_, value);
    };
    (fill (values), ...);
    out_ += pattern;
    if (file_ && out_.size () > piece) flush ();
}

void SvgDevice::flush () {
    good_ = good_ && file_->write (out_);
    out_.clear ();
}

SvgDevice::SvgDevice (unsigned width, unsigned height, OutputFile* file) : file_ (file) {
    write ("<?xml version=\"1.0\" encoding=\"UTF-8\" ?>\n"
           "<svg version=\"1.0\" xmlns=\"http://www.w3.org/2000/svg\" width=\"%\" height=\"%\">\n",
           width, height);
}

bool SvgDevice::end () {
    write ("</svg>\n");
    if (file_) flush ();
    return good_;
}

void SvgDevice::set_color (unsigned color) { color_ = document::color_rgb (color) >> 8; }

void SvgDevice::set_color_rgb (int red, int green, int blue) {
    color_ = static_cast<unsigned> (red & 255) << 16 | static_cast<unsigned> (green & 255) << 8 |
             static_cast<unsigned> (blue & 255);
}

void SvgDevice::set_color_alpha (int red, int green, int blue, int) {
    set_color_rgb (red, green, blue);
}

void SvgDevice::set_line (float width, document::LineStyle) { line_width_ = width; }

void SvgDevice::push_transform (float x, float y, float angle) {
    if (angle == 0)
        write ("<g transform=\"translate(% %)\">\n", x, y);
    else
        write ("<g transform=\"translate(% %) rotate(% 0 0)\">\n", x, y, angle);
}

void SvgDevice::pop_transform () { write ("</g>\n"); }
void SvgDevice::begin_group () { write ("<g>\n"); }
void SvgDevice::end_group () { write ("</g>\n"); }

void SvgDevice::line (float x1, float y1, float x2, float y2) {
    write ("<line stroke=\"#%\" stroke-width=\"%\" x1=\"%\" y1=\"%\" x2=\"%\" y2=\"%\" />\n",
           Hex{color_}, line_width_, x1, y1, x2, y2);
}

void SvgDevice::stroke_rect (float x, float y, float w, float h) {
    write ("<rect style=\"fill:none\" stroke-width=\"%\" stroke=\"#%\" x=\"%\" y=\"%\" "
           "width=\"%\" height=\"%\"/>\n",
           line_width_, Hex{color_}, x, y, w, h);
}

void SvgDevice::fill_rect (float x, float y, float w, float h) {
    write ("<rect fill=\"#%\" stroke-width=\"0\" x=\"%\" y=\"%\" width=\"%\" height=\"%\"/>\n",
           Hex{color_}, x, y, w, h);
}

void SvgDevice::stroke_round_rect (float x, float y, float w, float h, float) {
    write ("<rect style=\"fill:none\" stroke-width=\"%\" stroke=\"#%\" rx=\"6\" ry=\"6\" x=\"%\" "
           "y=\"%\" width=\"%\" height=\"%\"/>\n",
           line_width_, Hex{color_}, x, y, w, h);
}

void SvgDevice::fill_round_rect (float x, float y, float w, float h, float r) {
    r = std::max (r, 0.0F); // a negative one is no SVG
    write ("<rect fill=\"#%\" stroke-width=\"0\" rx=\"%\" ry=\"%\" x=\"%\" y=\"%\" width=\"%\" "
           "height=\"%\" %/>\n",
           Hex{color_}, r, r, x, y, w, h, clip_reference ());
}

void SvgDevice::stroke_ellipse (float x, float y, float w, float h, int) {
    write ("<ellipse style=\"fill:none\" stroke-width=\"%\" stroke=\"#%\" rx=\"%\" ry=\"%\" "
           "cx=\"%\" cy=\"%\"/>\n",
           line_width_, Hex{color_}, w / 2, h / 2, x + w / 2, y + h / 2);
}

void SvgDevice::fill_ellipse (float x, float y, float w, float h, int) {
    write ("<ellipse fill=\"#%\" stroke-width=\"0\" rx=\"%\" ry=\"%\" cx=\"%\" cy=\"%\" %/>\n",
           Hex{color_}, w / 2, h / 2, x + w / 2, y + h / 2, clip_reference ());
}

void SvgDevice::polygon (std::initializer_list<Point> points) {
    write ("<polygon style=\"fill:#%;stroke:none;\" points=\"", Hex{color_});
    for (const Point& p : points) write ("%,% ", p.x, p.y);
    write ("\" />\n");
}

void SvgDevice::closed_path (std::initializer_list<Point> points) {
    write ("<path style=\"fill:none;stroke:#%;stroke-width:%\" d=\"M", Hex{color_}, line_width_);
    bool first = true;
    for (const Point& p : points) {
        write (first ? "%,% " : "L %,% ", p.x, p.y);
        first = false;
    }
    write (" Z\" />\n");
}

void SvgDevice::arc_polygon (float cx, float cy, float r, float from_deg, float span_deg, int n) {
    if (n < 2) return;
    // Each point is the one before it turned by the step, which costs no sine per point.
    const double step = span_deg * degree / (n - 1);
    const double tangent = std::tan (step);
    const double cosine = std::cos (step);
    double dx = r * std::cos (from_deg * degree);
    double dy = r * std::sin (from_deg * degree);
    write ("<polygon style=\"fill:#%;stroke:none;\" points=\"", Hex{color_});
    for (int i = 0; i < n; ++i) {
        write ("%,% ", static_cast<float> (cx + dx), static_cast<float> (cy + dy));
        const double turned = dx - dy * tangent;
        dy = (dy + dx * tangent) * cosine;
        dx = turned * cosine;
    }
    write ("\" />\n");
}

void SvgDevice::fill_triangle_head (float length, float width, float tip_x) {
    polygon ({{tip_x, 0}, {tip_x - length, -width / 2}, {tip_x - length, width / 2}});
}

void SvgDevice::arrow_head (float length, float width, float line_width) {
    const std::initializer_list<Point> points{
        {0, 0}, {-length, -width / 2}, {-length * 3 / 4, 0}, {-length, width / 2}};
    polygon (points);
    line_width_ = line_width;
    closed_path (points);
}

void SvgDevice::fill_chevron (float x, float y, float w, float h, float depth) {
    polygon ({{x, y},
              {x + w / 2, y + depth},
              {x + w, y},
              {x + w, y + h},
              {x + w / 2, y + h + depth},
              {x, y + h}});
}

void SvgDevice::shared_bar (float x, float y, float w, float h, float t) {
    const float at = y + h * 4 / 5;
    line_width_ = t;
    line (x, at, x + w, at);
}

void SvgDevice::draw_text (const document::FontMetrics& font, std::string_view letters, float x,
                           float y) {
    if (letters.empty ()) return;
    const std::string text = document::is_symbol (font.key) ? document::symbol_to_utf8 (letters)
                                                            : document::latin1_to_utf8 (letters);
    write ("<text style=\"font-family:%;font-weight:%;font-style:%;font-size:%px;fill:#%;\" "
           "x=\"%\" y=\"%\">\n",
           family_name (font.key), document::is_bold (font.key) ? "bold" : "medium",
           document::is_italic (font.key) ? "italic" : "normal",
           document::font_size (document::size_index (font.key)), Hex{color_}, x, y);
    write ("%\n</text>\n", escaped (text));
}

/// The picture's bytes stand in the drawing itself, which is whole wherever it goes.
void SvgDevice::draw_picture (std::string_view path, float x, float y, float w, float h) {
    const std::optional<std::string> bytes = read_file (std::string (path));
    const char* const type = bytes ? image_type (*bytes) : nullptr;
    if (!type) return;
    write ("<image xmlns:xlink=\"http://www.w3.org/1999/xlink\" preserveAspectRatio=\"none\" "
           "x=\"%\" y=\"%\" width=\"%\" height=\"%\" xlink:href=\"data:%;base64,%\"/>\n",
           x, y, w, h, type, base64 (*bytes));
}

void SvgDevice::set_clip (float x, float y, float w, float h) {
    clip_ = ++svg_state ().clip_counter;
    write ("<defs><clipPath id=\"c%\"><rect x=\"%\" y=\"%\" width=\"%\" height=\"%\" />"
           "</clipPath></defs>\n",
           clip_, x, y, std::max (w, 0.0F), std::max (h, 0.0F));
}

void SvgDevice::end_clip () { clip_ = 0; }

std::string SvgDevice::clip_reference () const {
    if (clip_ == 0) return {};
    std::string reference = "clip-path=\"url(#c";
    append_decimal (reference, clip_);
    return reference + ")\"";
}

} // namespace ostrand::drawing
