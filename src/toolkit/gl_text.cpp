// Letters on OpenGL.
#include "toolkit/gl_text.h"

#include <FL/gl.h>

namespace ostrand::toolkit {
namespace {

/// The toolkit keeps the pictures of the texts that were drawn last. When one frame has more texts
/// than it keeps, each is made anew in every frame, which takes ten times the time of drawing it.
constexpr int texts_kept = 1024;

void select_font (int font, int size) {
    if (gl_texture_pile_height () < texts_kept) gl_texture_pile_height (texts_kept);
    gl_font (font, size);
}

} // namespace

float gl_text_width (const std::string& text, int font, int size, float pixels_per_unit) {
    select_font (font, size);
    return static_cast<float> (gl_width (text.data (), static_cast<int> (text.size ()))) *
           pixels_per_unit;
}

void draw_gl_text (const std::string& text, int font, int size, float x, float y) {
    select_font (font, size);
    gl_draw (text.data (), static_cast<int> (text.size ()), x, y);
}

} // namespace ostrand::toolkit
