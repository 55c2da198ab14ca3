// The viewer's window.
#include "viewer/viewer_window.h"

#include "toolkit/display.h"
#include "toolkit/gl_picture.h"
#include "toolkit/window_memory.h"
#include "viewer/curve_widget.h"
#include "viewer/slider_panel.h"

#include <FL/Fl.H>
#include <FL/Fl_Group.H>
#include <FL/Fl_Window.H>
#include <cstdio>
#include <cstdlib>
#include <memory>

namespace ostrand::viewer {
namespace {

constexpr const char* window_name = "curves"; // in the file of places
constexpr int view_width = 900;
constexpr int view_height = 600;

/// Writes the view's picture to the file that the environment names, after it was drawn once.
/// written  out: false when that fails, which is told
void take_picture (CurveWidget& view, Fl_Window& window, const std::string& path, bool& written) {
    view.on_drawn = [&view, &window, path, &written] {
        const ViewSize size = ViewSize::of (view.w (), view.h (), view.pixels_per_unit ());
        std::string error;
        if (!toolkit::write_gl_picture (path, static_cast<int> (size.w), static_cast<int> (size.hp),
                                        error)) {
            std::fprintf (stderr, "Cannot write '%s': %s\n", path.c_str (), error.c_str ());
        }
        written = error.empty ();
        window.hide ();
    };
}

/// Closing notes where the window stood.
void closing (Fl_Widget* window, void* /*data*/) {
    toolkit::remember_place (*window->as_window (), window_name);
    window->hide ();
}

} // namespace

bool run_viewer_window (ResultData& data, bool reverse_video) {
    if (!toolkit::display_is_there ()) {
        std::fputs ("Cannot open a window: there is no display\n", stderr);
        return false;
    }
    if (!toolkit::opengl_is_there ()) {
        std::fputs ("Cannot open a window: the display has no OpenGL\n", stderr);
        return false;
    }
    const char* picture = std::getenv ("OSTRAND_PICTURE");
    if (picture == nullptr) toolkit::follow_text_scale (toolkit::remembered_or_desktop_scale ());
    viewer_state ().reverse_video = reverse_video;
    Fl::background (0, 75, 75);
    const int room = slider_room (data);
    const auto window = std::make_unique<Fl_Window> (view_width, view_height + room, "Stochora");
    window->label ("Stochora");
    auto* whole = new Fl_Group (0, 0, view_width, view_height + room); // the window owns it
    auto* view = new CurveWidget (0, 0, view_width, view_height, &data);
    view->end ();
    view->state ().divisions = 5;
    make_sliders (*view, 0, view_height);
    whole->end ();
    whole->resizable (view);
    window->end ();
    window->resizable (whole);
    window->size_range (300, 300 + room);
    bool picture_written = true;
    if (picture != nullptr) {
        take_picture (*view, *window, picture, picture_written);
    } else {
        toolkit::restore_place (*window, window_name);
        window->callback (closing);
    }
    window->show ();
    view->take_focus ();
    Fl::run ();
    return picture_written;
}

} // namespace ostrand::viewer
