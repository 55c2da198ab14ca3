// What can be shown on this machine.
// Layer: toolkit.
#pragma once

namespace ostrand::toolkit {

/// True when windows can be opened. Asks without opening the display for good.
bool display_is_there ();

/// True when the display draws with OpenGL, in colours with transparency. Opens the display, so it
/// is to be asked only where there is one.
bool opengl_is_there ();

} // namespace ostrand::toolkit
