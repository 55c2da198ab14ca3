// What the display offers, in lines for a program or a person.
// Layer: toolkit.
#pragma once
#include <string>

namespace ostrand::toolkit {

/// Lines of a word and what it tells: "screen 1920x1080", "scale 1", "renderer ..." and "opengl ..."
/// as the OpenGL library names itself (both are missing where there is no context), then "font ..."
/// for each family of letters. To be asked only where there is a display. No window is shown.
std::string display_report ();

} // namespace ostrand::toolkit
