// Windows and the screen's room.
// Layer: shell.
#pragma once

class Fl_Window;

namespace ostrand::shell {

/// A window that is larger than the screen's free part is made to fit; any other stays as it is.
void fit_to_screen (Fl_Window& window);

} // namespace ostrand::shell
