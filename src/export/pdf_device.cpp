// The primitives as libHaru's calls.
#include "export/pdf_device.h"

#include "base/report.h"
#include "document/colors.h"
#include "document/font_numbers.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <optional>

#include <png.h>

namespace ostrand::drawing {
namespace {

using document::LineStyle;
using document::Point;

constexpr float largest_page = 14400;
constexpr float widest_line = 100; // libHaru takes no wider one
constexpr float largest_number = 32767;
constexpr std::size_t longest_text = 30000; // bytes of one operator
constexpr float shorter = 2;                // a filled rectangle ends this much above its bottom
constexpr float degree = 3.1415926F / 180;

struct DecodedPicture {
    unsigned width;
    unsigned height;
    std::vector<std::uint8_t> rgb;     // three bytes a pixel
    std::vector<std::uint8_t> opacity; // one; empty when all of it covers
};

std::optional<DecodedPicture> decode_png (const std::string& path) {
    constexpr std::uint64_t most_pixels = 100'000'000;
    png_image image;
    std::memset (&image, 0, sizeof image);
    image.version = PNG_IMAGE_VERSION;
    if (!png_image_begin_read_from_file (&image, path.c_str ())) return std::nullopt;
    image.format = PNG_FORMAT_RGBA;
    const std::uint64_t pixels = std::uint64_t{image.width} * image.height;
    std::vector<std::uint8_t> rgba (pixels <= most_pixels ? 4 * pixels : 0);
    if (rgba.empty () || !png_image_finish_read (&image, nullptr, rgba.data (), 0, nullptr)) {
        png_image_free (&image);
        return std::nullopt;
    }
    DecodedPicture picture{image.width, image.height, std::vector<std::uint8_t> (3 * pixels),
                           std::vector<std::uint8_t> (pixels)};
    bool covers = true;
    for (std::size_t i = 0; i < pixels; ++i) {
        std::memcpy (&picture.rgb[3 * i], &rgba[4 * i], 3);
        picture.opacity[i] = rgba[4 * i + 3];
        covers = covers && picture.opacity[i] == 255;
    }
    if (covers) picture.opacity.clear ();
    return picture;
}

} // namespace

/// libHaru hands its first error to this and gives an error code from every later call.
void PdfDevice::on_error (HPDF_STATUS error, HPDF_STATUS detail, void* device) {
    auto& self = *static_cast<PdfDevice*> (device);
    if (self.tries_picture_) return;
    if (!self.failed_)
        std::fprintf (stderr, "ERROR: error_no=%04X, detail_no=%u\n", static_cast<unsigned> (error),
                      static_cast<unsigned> (detail));
    self.failed_ = true;
}

PdfDevice::PdfDevice (float width, float height) : document_ (HPDF_New (on_error, this)) {
    if (!document_) {
        failed_ = true;
        return;
    }
    fonts_ = PdfFonts (document_);
    // A page takes the compression that is on when it is made.
    HPDF_SetCompressionMode (document_, HPDF_COMP_ALL);
    page_ = HPDF_AddPage (document_);
    if (failed_) return;
    if (width != 0 && height != 0) {
        const float largest = std::max (width, height);
        if (largest > largest_page) scale_ = largest_page / largest;
        HPDF_Page_SetWidth (page_, std::max (width * scale_, 3.0F));
        HPDF_Page_SetHeight (page_, std::max (height * scale_, 3.0F));
    } else {
        HPDF_Page_SetSize (page_, HPDF_PAGE_SIZE_A4, HPDF_PAGE_PORTRAIT);
    }
    if (failed_) return;
    page_width_ = HPDF_Page_GetWidth (page_);
    page_height_ = HPDF_Page_GetHeight (page_);
    HPDF_Page_Concat (page_, 1, 0, 0, 1, 0, page_height_);
}

PdfDevice::~PdfDevice () {
    if (document_) HPDF_Free (document_);
}

bool PdfDevice::begin () {
    if (!failed_) HPDF_SetCompressionMode (document_, HPDF_COMP_ALL);
    return !failed_;
}

bool PdfDevice::write_to (OutputFile& file) {
    if (!failed_) HPDF_SaveToStream (document_);
    if (failed_) return false;
    std::vector<HPDF_BYTE> bytes (std::size_t{1} << 16);
    HPDF_UINT32 left = HPDF_GetStreamSize (document_);
    while (left > 0) {
        auto size = static_cast<HPDF_UINT32> (bytes.size ());
        size = std::min (size, left);
        HPDF_ReadFromStream (document_, bytes.data (), &size);
        if (failed_ || size == 0) return false;
        if (!file.write ({reinterpret_cast<const char*> (bytes.data ()), size})) return false;
        left -= size;
    }
    return true;
}

float PdfDevice::scaled (float value) const {
    if (!std::isfinite (value)) return 0;
    return std::clamp (value * scale_, -largest_number, largest_number);
}

void PdfDevice::save_state () {
    HPDF_Page_GSave (page_);
    saved_.push_back (state_);
}

void PdfDevice::restore_state () {
    HPDF_Page_GRestore (page_);
    if (saved_.empty ()) return;
    state_ = saved_.back ();
    saved_.pop_back ();
}

void PdfDevice::set_color (unsigned color) {
    const std::uint32_t rgb = document::color_rgb (color);
    set_color_rgb (static_cast<int> (rgb >> 24), static_cast<int> (rgb >> 16 & 255U),
                   static_cast<int> (rgb >> 8 & 255U));
}

void PdfDevice::write_color (int rgb) {
    const auto part = [rgb] (int shift) {
        return static_cast<float> ((rgb >> shift & 255) / 255.0);
    };
    HPDF_Page_SetRGBStroke (page_, part (16), part (8), part (0));
    HPDF_Page_SetRGBFill (page_, part (16), part (8), part (0));
    state_.rgb = rgb;
}

void PdfDevice::set_color_rgb (int red, int green, int blue) {
    if (failed_) return;
    wanted_.rgb = std::clamp (red, 0, 255) << 16 | std::clamp (green, 0, 255) << 8 |
                  std::clamp (blue, 0, 255);
    write_color (wanted_.rgb);
}

void PdfDevice::set_color_alpha (int red, int green, int blue, int) {
    set_color_rgb (red, green, blue);
}

void PdfDevice::write_line (float width, int dash) {
    if (width != state_.line_width) {
        HPDF_Page_SetLineWidth (page_, std::clamp (scaled (width), 0.0F, widest_line));
        state_.line_width = width;
    }
    if (dash == state_.dash) return;
    const HPDF_UINT16 pattern[] = {1};
    HPDF_Page_SetDash (page_, dash == 2 ? pattern : nullptr, dash == 2 ? 1 : 0, dash == 2 ? 1 : 0);
    state_.dash = dash;
}

void PdfDevice::set_line (float width, LineStyle style) {
    if (failed_) return;
    wanted_.line_width = width;
    wanted_.dash = style == LineStyle::dashed ? 2 : 1;
    write_line (wanted_.line_width, wanted_.dash);
}

/// A page goes back to the colour and line that it had before a transform or a clip; what was set
/// in between holds on. Said again only where something is painted with it.
void PdfDevice::renew_style () {
    if (wanted_.rgb != state_.rgb) write_color (wanted_.rgb);
    if (wanted_.dash >= 0) write_line (wanted_.line_width, wanted_.dash);
}

void PdfDevice::push_transform (float x, float y, float angle) {
    if (failed_) return;
    save_state ();
    HPDF_Page_Concat (page_, 1, 0, 0, 1, scaled (x), scaled (-y));
    const float cosine = std::cos (-angle * degree);
    const float sine = std::sin (-angle * degree);
    HPDF_Page_Concat (page_, cosine, sine, -sine, cosine, 0, 0);
}

void PdfDevice::pop_transform () {
    if (!failed_) restore_state ();
}

void PdfDevice::path (std::initializer_list<Point> points, PathEnd end) {
    if (failed_) return;
    renew_style ();
    bool started = false;
    for (const Point& p : points) {
        if (started)
            HPDF_Page_LineTo (page_, scaled (p.x), scaled (-p.y));
        else
            HPDF_Page_MoveTo (page_, scaled (p.x), scaled (-p.y));
        started = true;
    }
    switch (end) {
    case PathEnd::stroke: HPDF_Page_Stroke (page_); break;
    case PathEnd::closed_stroke: HPDF_Page_ClosePathStroke (page_); break;
    case PathEnd::fill: HPDF_Page_Fill (page_); break;
    }
}

/// What is hardly higher than the piece that is taken off, the line of an arc, keeps its height.
void PdfDevice::fill_rect (float x, float y, float w, float h) {
    const float bottom = y + (h > 2 * shorter ? h - shorter : h);
    path ({{x, y}, {x + w, y}, {x + w, bottom}, {x, bottom}}, PathEnd::fill);
}

void PdfDevice::stroke_rect (float x, float y, float w, float h) {
    if (failed_) return;
    renew_style ();
    HPDF_Page_Rectangle (page_, scaled (x), scaled (-y), scaled (w), scaled (-h));
    HPDF_Page_Stroke (page_);
}

void PdfDevice::round_path (float x, float y, float w, float h, float r) {
    renew_style ();
    r = std::max (0.0F, std::min ({r, w / 2, h / 2}));
    const auto corner = [this] (Point over, Point to) {
        HPDF_Page_CurveTo3 (page_, scaled (over.x), scaled (-over.y), scaled (to.x),
                            scaled (-to.y));
    };
    const auto line = [this] (Point to) {
        HPDF_Page_LineTo (page_, scaled (to.x), scaled (-to.y));
    };
    const float right = x + w;
    const float bottom = y + h;
    HPDF_Page_MoveTo (page_, scaled (x + r), scaled (-y));
    line ({right - r, y});
    corner ({right, y}, {right, y + r});
    line ({right, bottom - r});
    corner ({right, bottom}, {right - r, bottom});
    line ({x + r, bottom});
    corner ({x, bottom}, {x, bottom - r});
    line ({x, y + r});
    corner ({x, y}, {x + r, y});
}

void PdfDevice::fill_round_rect (float x, float y, float w, float h, float r) {
    if (failed_) return;
    round_path (x, y, w, h, r);
    HPDF_Page_Fill (page_);
}

void PdfDevice::stroke_round_rect (float x, float y, float w, float h, float r) {
    if (failed_) return;
    round_path (x, y, w, h, r);
    HPDF_Page_ClosePathStroke (page_);
}

void PdfDevice::ellipse_path (float x, float y, float w, float h) {
    renew_style ();
    HPDF_Page_Ellipse (page_, scaled (x + w / 2), scaled (-(y + h / 2)), scaled (w / 2),
                       scaled (h / 2));
}

void PdfDevice::fill_ellipse (float x, float y, float w, float h, int) {
    if (failed_ || !(w > 0) || !(h > 0)) return;
    ellipse_path (x, y, w, h);
    HPDF_Page_Fill (page_);
}

void PdfDevice::stroke_ellipse (float x, float y, float w, float h, int) {
    if (failed_ || !(w > 0) || !(h > 0)) return;
    ellipse_path (x, y, w, h);
    HPDF_Page_Stroke (page_);
}

void PdfDevice::fill_triangle_head (float length, float width, float tip_x) {
    path ({{tip_x, 0}, {tip_x - length, -width / 2}, {tip_x - length, width / 2}}, PathEnd::fill);
}

void PdfDevice::arrow_head (float length, float width, float line_width) {
    const std::initializer_list<Point> points{
        {0, 0}, {-length, -width / 2}, {-length * 3 / 4, 0}, {-length, width / 2}};
    path (points, PathEnd::fill);
    set_line (line_width, LineStyle::solid);
    path (points, PathEnd::closed_stroke);
}

void PdfDevice::fill_chevron (float x, float y, float w, float h, float depth) {
    path ({{x, y},
           {x + w / 2, y + depth},
           {x + w, y},
           {x + w, y + h},
           {x + w / 2, y + h + depth},
           {x, y + h}},
          PathEnd::fill);
}

void PdfDevice::shared_bar (float x, float y, float w, float h, float t) {
    const float at = y + h * 4 / 5;
    set_line (t, LineStyle::solid);
    path ({{x, at}, {x + w, at}}, PathEnd::stroke);
}

void PdfDevice::set_clip (float x, float y, float w, float h) {
    if (failed_) return;
    save_state ();
    // A viewer shows a hair's breadth of what a clip without a size should keep off, so that such a
    // clip goes where no page is.
    if (w > 0 && h > 0)
        HPDF_Page_Rectangle (page_, scaled (x), scaled (-y), scaled (w), scaled (-h));
    else
        HPDF_Page_Rectangle (page_, -largest_number, -largest_number, 1, 1);
    HPDF_Page_Clip (page_);
    HPDF_Page_EndPath (page_);
}

void PdfDevice::end_clip () {
    if (!failed_) restore_state ();
}

void PdfDevice::select (int slot, float size) {
    if (failed_ || slot < 0) return;
    if (slot == state_.font && size == state_.font_size) return;
    const HPDF_Font font = fonts_.font (slot);
    HPDF_Page_SetFontAndSize (page_, font, size * scale_);
    if (failed_) return;
    state_.font = slot;
    state_.font_size = size;
    ascent_ = HPDF_Font_GetAscent (font);
    descent_ = HPDF_Font_GetDescent (font);
}

void PdfDevice::set_font (int number, float size) {
    if (!failed_) select (fonts_.slot_of (number), size);
}

void PdfDevice::set_ttf (std::string_view name, float size) {
    if (!failed_) select (fonts_.ttf_slot (name), size);
}

float PdfDevice::text_width (std::string_view letters) const {
    if (failed_ || state_.font < 0) return 0;
    const HPDF_TextWidth measured = HPDF_Font_TextWidth (
        fonts_.font (state_.font), reinterpret_cast<const HPDF_BYTE*> (letters.data ()),
        static_cast<HPDF_UINT> (letters.size ()));
    return static_cast<float> (measured.width) * state_.font_size / 1000;
}

void PdfDevice::draw_text (const document::FontMetrics& font, std::string_view letters, float x,
                           float y) {
    if (failed_ || letters.empty ()) return;
    const int size = document::font_size (document::size_index (font.key));
    set_font (document::font_number (font.key), static_cast<float> (size));
    if (failed_ || state_.font < 0) return;
    renew_style ();
    HPDF_Page_BeginText (page_);
    while (!letters.empty ()) {
        const std::string part (letters.substr (0, longest_text));
        HPDF_Page_TextOut (page_, scaled (x), scaled (-y), part.c_str ());
        letters.remove_prefix (part.size ());
        if (!letters.empty ()) x += text_width (part);
    }
    HPDF_Page_EndText (page_);
}

/// libHaru's own reader of PNG leaves the process when a file is damaged, so that the pixels are
/// unpacked here, their opacity as a mask beside them.
HPDF_Image PdfDevice::load_png (const std::string& path) {
    const std::optional<DecodedPicture> picture = decode_png (path);
    if (!picture) return nullptr;
    const HPDF_Image image = HPDF_LoadRawImageFromMem (
        document_, picture->rgb.data (), picture->width, picture->height, HPDF_CS_DEVICE_RGB, 8);
    if (image && !picture->opacity.empty ()) {
        const HPDF_Image mask =
            HPDF_LoadRawImageFromMem (document_, picture->opacity.data (), picture->width,
                                      picture->height, HPDF_CS_DEVICE_GRAY, 8);
        if (mask) HPDF_Image_AddSMask (image, mask);
    }
    return image;
}

/// The picture of a ".png" or ".jpg" file; null, which is reported, when it is damaged. What
/// libHaru says of it is forgotten, so that the drawing goes on.
HPDF_Image PdfDevice::load_picture (const std::string& path) {
    tries_picture_ = true;
    HPDF_Image image = path.ends_with (".png")
                           ? load_png (path)
                           : HPDF_LoadJpegImageFromFile (document_, path.c_str ());
    if (image && HPDF_Image_GetWidth (image) == 0) image = nullptr;
    tries_picture_ = false;
    HPDF_ResetError (document_);
    if (!image) report_message ("The picture '%s' cannot be read and is left out.", path.c_str ());
    return image;
}

void PdfDevice::draw_picture (std::string_view path, float x, float y, float w, float h) {
    if (failed_ || !(w > 0) || !(h > 0)) return;
    if (!path.ends_with (".png") && !path.ends_with (".jpg")) return;
    auto at = pictures_.find (path);
    if (at == pictures_.end ()) {
        const std::string name (path);
        at = pictures_.emplace (name, load_picture (name)).first;
    }
    if (!at->second) return;
    const auto image_w = static_cast<float> (HPDF_Image_GetWidth (at->second));
    const auto image_h = static_cast<float> (HPDF_Image_GetHeight (at->second));
    const float shown_h = image_h * w / image_w;
    HPDF_Page_DrawImage (page_, at->second, scaled (x), scaled (-y - shown_h), scaled (w),
                         scaled (shown_h));
}

} // namespace ostrand::drawing
