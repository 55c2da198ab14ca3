// Making and drawing letter textures.
#include "toolkit/glyph_atlas.h"

#include <FL/Fl.H>
#include <FL/Fl_Image_Surface.H>
#include <FL/Fl_RGB_Image.H>
#include <FL/fl_draw.H>
#include <FL/gl.h>
#include <algorithm>
#include <cmath>

namespace ostrand::toolkit {
namespace {

constexpr int page_side = 1024; // pixels
constexpr int margin = 1;       // free pixels around a letter

std::uint64_t key_of (int font, int size, unsigned id) {
    return static_cast<std::uint64_t> (static_cast<unsigned> (font)) << 40 |
           static_cast<std::uint64_t> (static_cast<unsigned> (size) & 0xFFFFFU) << 20 | id;
}

} // namespace

GlyphAtlas::GlyphAtlas () = default;

GlyphAtlas::~GlyphAtlas () = default; // textures go with their context

void GlyphAtlas::forget () {
    glyphs_.clear ();
    pages_.clear ();
    bound_ = 0;
}

/// Where a picture of w x h finds a place; the newest page is filled row by row.
GlyphAtlas::Glyph GlyphAtlas::place (int w, int h, const std::vector<unsigned char>& alpha) {
    const auto fits = [&] (Page& page) {
        if (page.next_x + w + margin > page_side) {
            page.shelf_y += page.shelf_h + margin;
            page.shelf_h = 0;
            page.next_x = 0;
        }
        return page.shelf_y + h + margin <= page_side;
    };
    if (pages_.empty () || !fits (pages_.back ())) {
        Page page;
        glGenTextures (1, &page.texture);
        glBindTexture (GL_TEXTURE_2D, page.texture);
        glTexParameteri (GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
        glTexParameteri (GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
        const std::vector<unsigned char> empty (static_cast<std::size_t> (page_side) * page_side,
                                                0);
        glPixelStorei (GL_UNPACK_ALIGNMENT, 1);
        glTexImage2D (GL_TEXTURE_2D, 0, GL_ALPHA, page_side, page_side, 0, GL_ALPHA,
                      GL_UNSIGNED_BYTE, empty.data ());
        pages_.push_back (page);
    }
    Page& page = pages_.back ();
    glBindTexture (GL_TEXTURE_2D, page.texture);
    glPixelStorei (GL_UNPACK_ALIGNMENT, 1);
    glTexSubImage2D (GL_TEXTURE_2D, 0, page.next_x, page.shelf_y, w, h, GL_ALPHA, GL_UNSIGNED_BYTE,
                     alpha.data ());
    bound_ = 0;
    Glyph glyph;
    glyph.page = static_cast<unsigned> (pages_.size () - 1);
    glyph.u = static_cast<std::uint16_t> (page.next_x);
    glyph.v = static_cast<std::uint16_t> (page.shelf_y);
    glyph.w = static_cast<std::uint16_t> (w);
    glyph.h = static_cast<std::uint16_t> (h);
    page.next_x += w + margin;
    page.shelf_h = std::max (page.shelf_h, h);
    return glyph;
}

GlyphAtlas::Glyph GlyphAtlas::make (int font, int size, std::string_view utf8) {
    const auto length = static_cast<int> (utf8.size ());
    // Drawn in white on black, unscaled: a pixel of the picture is one of the device.
    fl_font (font, size);
    const int reach = std::max (size / 2, 2); // italics lean over, accents stand high
    const int w =
        std::min (static_cast<int> (std::ceil (fl_width (utf8.data (), length))) + 2 * reach,
                  page_side - margin);
    const int h = std::min (fl_height () + reach, page_side - margin);
    const int base = std::min (fl_height () - fl_descent () + reach / 2, h);
    std::vector<unsigned char> alpha (static_cast<std::size_t> (w) * static_cast<std::size_t> (h));
    {
        Fl_Image_Surface surface (w, h, 0);
        Fl_Surface_Device::push_current (&surface);
        fl_color (FL_BLACK);
        fl_rectf (0, 0, w, h);
        fl_color (FL_WHITE);
        fl_font (font, size);
        fl_draw (utf8.data (), length, reach, base);
        const std::unique_ptr<Fl_RGB_Image> image (surface.image ());
        Fl_Surface_Device::pop_current ();
        if (image && image->data_w () >= w && image->data_h () >= h && image->d () >= 3) {
            const auto* const bytes = reinterpret_cast<const unsigned char*> (image->data ()[0]);
            const int line = image->ld () != 0 ? image->ld () : image->data_w () * image->d ();
            for (int row = 0; row < h; ++row)
                for (int column = 0; column < w; ++column) {
                    const unsigned char* const pixel = bytes + row * line + column * image->d ();
                    // Whatever the smoothing, the mean is how much of the pixel is covered.
                    alpha[static_cast<std::size_t> (row * w + column)] =
                        static_cast<unsigned char> ((pixel[0] + pixel[1] + pixel[2]) / 3);
                }
        }
    }
    // Only the part that shows anything is kept.
    int left = w;
    int right = -1;
    int top = h;
    int bottom = -1;
    for (int row = 0; row < h; ++row)
        for (int column = 0; column < w; ++column)
            if (alpha[static_cast<std::size_t> (row * w + column)] != 0) {
                left = std::min (left, column);
                right = std::max (right, column);
                top = std::min (top, row);
                bottom = std::max (bottom, row);
            }
    if (right < left) return {}; // a blank
    const int kept_w = right - left + 1;
    const int kept_h = bottom - top + 1;
    std::vector<unsigned char> kept;
    kept.reserve (static_cast<std::size_t> (kept_w) * static_cast<std::size_t> (kept_h));
    for (int row = top; row <= bottom; ++row)
        kept.insert (kept.end (), alpha.begin () + row * w + left,
                     alpha.begin () + row * w + right + 1);
    Glyph glyph = place (kept_w, kept_h, kept);
    glyph.left = static_cast<std::int16_t> (left - reach);
    glyph.top = static_cast<std::int16_t> (top - base);
    return glyph;
}

const GlyphAtlas::Glyph& GlyphAtlas::glyph (int font, int size, unsigned id,
                                            std::string_view utf8) {
    const std::uint64_t key = key_of (font, size, id);
    const auto found = glyphs_.find (key);
    if (found != glyphs_.end ()) return found->second;
    end_quads ();
    return glyphs_.emplace (key, make (font, size, utf8)).first->second;
}

void GlyphAtlas::begin_letters () {
    glEnable (GL_TEXTURE_2D);
    glTexEnvi (GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
    bound_ = 0;
}

void GlyphAtlas::bind (unsigned page) {
    if (bound_ == page + 1) return;
    end_quads ();
    glBindTexture (GL_TEXTURE_2D, pages_[page].texture);
    bound_ = page + 1;
}

void GlyphAtlas::end_quads () {
    if (open_) glEnd ();
    open_ = false;
}

void GlyphAtlas::letter (int font, int size, unsigned id, std::string_view utf8, int x, int y) {
    const Glyph& g = glyph (font, size, id, utf8);
    if (g.w == 0) return;
    bind (g.page);
    if (!open_) glBegin (GL_QUADS);
    open_ = true;
    const auto x0 = static_cast<float> (x + g.left);
    const auto y0 = static_cast<float> (y + g.top);
    const float x1 = x0 + g.w;
    const float y1 = y0 + g.h;
    constexpr float side = page_side;
    const float u0 = g.u / side;
    const float v0 = g.v / side;
    const float u1 = (g.u + g.w) / side;
    const float v1 = (g.v + g.h) / side;
    glTexCoord2f (u0, v0);
    glVertex2f (x0, y0);
    glTexCoord2f (u1, v0);
    glVertex2f (x1, y0);
    glTexCoord2f (u1, v1);
    glVertex2f (x1, y1);
    glTexCoord2f (u0, v1);
    glVertex2f (x0, y1);
}

void GlyphAtlas::end_letters () {
    end_quads ();
    glDisable (GL_TEXTURE_2D);
}

} // namespace ostrand::toolkit
