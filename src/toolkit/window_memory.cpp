// The toolkit's side of remembered places.
#include "toolkit/window_memory.h"

#include "base/platform.h"
#include "desktop/first_look.h"
#include "desktop/window_places.h"

#include <FL/Fl.H>
#include <FL/Fl_Window.H>
#include <FL/platform.H>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#ifdef FLTK_USE_X11
#include <X11/Xlib.h>
#endif

namespace ostrand::toolkit {
namespace {

using desktop::Place;

/// True when the display or the environment says how large everything is.
bool scale_is_told () {
    if (std::getenv ("FLTK_SCALING_FACTOR") != nullptr) return true;
#ifdef FLTK_USE_X11
    if (Display* const display = fl_x11_display ())
        return XGetDefault (display, "Xft", "dpi") != nullptr;
#endif
    return false;
}

/// The screens, in the toolkit's units or in pixels; of each what windows may cover, or all of it.
std::vector<Place> screens (bool in_pixels) {
    std::vector<Place> all;
    for (int i = 0; i < Fl::screen_count (); ++i) {
        Place screen;
        if (in_pixels) {
            Fl::screen_xywh (screen.x, screen.y, screen.w, screen.h, i);
            const auto pixels = [i] (int units) {
                return static_cast<int> (
                    std::lround (static_cast<float> (units) * Fl::screen_scale (i)));
            };
            screen.w = pixels (screen.w);
            screen.h = pixels (screen.h);
        } else {
            Fl::screen_work_area (screen.x, screen.y, screen.w, screen.h, i);
        }
        all.push_back (screen);
    }
    return all;
}

} // namespace

std::optional<float> remembered_scale () { return desktop::read_window_places ().scale (); }

float remembered_or_desktop_scale () {
    if (const auto scale = remembered_scale ()) return *scale;
    return desktop::first_look (desktop::read_desktop_facts (home_directory ())).text_scale;
}

void follow_text_scale (float wanted) {
    if (Fl::screen_scaling_supported () == 0) return;
    Fl::screen_count (); // has the toolkit look at the display first
    if (scale_is_told ()) return;
    for (int i = 0; i < Fl::screen_count (); ++i) Fl::screen_scale (i, wanted);
}

void restore_place (Fl_Window& window, const char* name) {
    const auto place =
        desktop::read_window_places ().find (desktop::screens_name (screens (true)), name);
    if (!place) return;
    if (const auto fit = desktop::fitted (*place, screens (false)))
        window.resize (fit->x, fit->y, fit->w, fit->h);
}

void remember_place (Fl_Window& window, const char* name) {
    desktop::WindowPlaces places = desktop::read_window_places ();
    places.note (desktop::screens_name (screens (true)), name,
                 {window.x (), window.y (), window.w (), window.h ()});
    if (!scale_is_told ()) places.note_scale (Fl::screen_scale (window.screen_num ()));
    std::string error;
    if (!desktop::write_window_places (places, error))
        std::fprintf (stderr, "Cannot write '%s': %s\n", desktop::window_places_path ().c_str (),
                      error.c_str ());
}

} // namespace ostrand::toolkit
