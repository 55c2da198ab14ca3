// The images of the interface as the toolkit shows them: made once, sharp on scaled displays.
// Layer: shell.
#pragma once
#include <string_view>

class Fl_Image;

namespace ostrand::shell {

/// An interface image by its name, at the size of its plain form; null for an unknown name. It
/// belongs to the process.
Fl_Image* interface_image (std::string_view name);
/// Likewise an image of the manual.
Fl_Image* manual_image (std::string_view name, bool dark);

/// Gives the window the program's icon.
void set_window_icons ();

} // namespace ostrand::shell
