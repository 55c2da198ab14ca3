// Letters on OpenGL: measuring and drawing texts in the toolkit's fonts in the current context.
// Layer: toolkit.
#pragma once
#include <string>

namespace ostrand::toolkit {

/// Width in device pixels.
/// font             0 upright, 1 bold
/// size             units
/// pixels_per_unit  of the window that is drawn
float gl_text_width (const std::string& text, int font, int size, float pixels_per_unit);

/// Draws in the current colour. Letters are sharp where x and y are whole device pixels.
/// x, y  left end of the base line, current coordinates
void draw_gl_text (const std::string& text, int font, int size, float x, float y);

} // namespace ostrand::toolkit
