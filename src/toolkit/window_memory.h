// Windows that open where they stood, and the scale of everything in them.
// Layer: toolkit.
#pragma once
#include <optional>

class Fl_Window;

namespace ostrand::toolkit {

/// Gives the windows of a program that is opening the scale of the desktop's text, unless the
/// display or the environment tells one, which the toolkit follows by itself. To be called before
/// the first window is made.
/// wanted  the scale, 1 for none of its own
void follow_text_scale (float wanted);

/// The scale that the windows had when the program was last used; nothing before the first time.
std::optional<float> remembered_scale ();

/// That scale, or at the first time the one that the desktop's own settings tell.
float remembered_or_desktop_scale ();

/// Puts a window where it stood on these screens, as far as they have room. Before it is shown.
/// name  of the window in the file, one word
void restore_place (Fl_Window& window, const char* name);

/// Notes where a window stands, and the scale, in the file. What cannot be written is told on
/// standard error.
void remember_place (Fl_Window& window, const char* name);

} // namespace ostrand::toolkit
