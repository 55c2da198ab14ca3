// Drawing letters and pictures of documents.
#include "toolkit/document_content.h"

#include "document/font_numbers.h"
#include "toolkit/font_metrics.h"

#include <FL/gl.h>
#include <cmath>

namespace ostrand::toolkit {
void DocumentContent::draw_text (const document::FontMetrics& font, std::string_view letters,
                                 float x, float y, float zoom) {
    const int number = document::font_number (font.key);
    const bool greek = document::is_symbol (font.key) && symbol_is_greek ();
    const float scale = zoom * pixels_per_unit;
    const int size = glpaint::shown_text_size (font, scale);
    const int base = static_cast<int> (std::lround (y * pixels_per_unit));
    float at = x * pixels_per_unit;
    glPushMatrix ();
    glScalef (1 / pixels_per_unit, 1 / pixels_per_unit, 1);
    atlas_.begin_letters ();
    for (const char letter : letters) {
        const unsigned code = static_cast<unsigned char> (letter);
        atlas_.letter (number, size, code, letter_text (font.key, code, greek),
                       static_cast<int> (std::lround (at)), base);
        at += font.width_of (code) * scale;
    }
    atlas_.end_letters ();
    glPopMatrix ();
}

void DocumentContent::draw_picture (std::string_view path, float x, float y, float w, float h) {
    pictures_.draw (path, x, y, w, h);
}

void DocumentContent::forget () {
    atlas_.forget ();
    pictures_.forget ();
}

} // namespace ostrand::toolkit
