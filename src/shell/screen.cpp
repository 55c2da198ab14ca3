// Fitting windows to the screen.
#include "shell/screen.h"

#include <FL/Fl.H>
#include <FL/Fl_Window.H>
#include <algorithm>

namespace ostrand::shell {

void fit_to_screen (Fl_Window& window) {
    int x = 0;
    int y = 0;
    int w = 0;
    int h = 0;
    Fl::screen_work_area (x, y, w, h, 0);
    if (window.w () <= w && window.h () <= h) return;
    window.resize (x, y, std::min (window.w (), w), std::min (window.h (), h));
}

} // namespace ostrand::shell
