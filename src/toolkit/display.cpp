// What can be shown on this machine.
#include "toolkit/display.h"

#include <FL/Fl.H>
#include <FL/Fl_Gl_Window.H>
#include <FL/platform.H>
#include <cstdlib>
#ifdef FLTK_USE_X11
#include <X11/Xlib.h>
#endif

namespace ostrand::toolkit {

bool display_is_there () {
#ifdef FLTK_USE_X11
    if (std::getenv ("WAYLAND_DISPLAY") != nullptr) return true;
    Display* display = XOpenDisplay (nullptr);
    if (display == nullptr) return false;
    XCloseDisplay (display);
#endif
    return true;
}

bool opengl_is_there () {
    // A window does without a second buffer where there is none.
    return Fl_Gl_Window::can_do (FL_RGB | FL_ALPHA) != 0 ||
           Fl_Gl_Window::can_do (FL_RGB | FL_ALPHA | FL_DOUBLE) != 0;
}

} // namespace ostrand::toolkit
