// Events and painting of a canvas's window.
#include "shell/canvas_window.h"

#include "document/document_state.h"
#include "editor/edit_selection.h"
#include "glpaint/coarse_device.h"

#include <FL/Fl.H>
#include <FL/gl.h>
#include <FL/glu.h>
#include <string>
#include <utility>

namespace ostrand::shell {
namespace {

editor::Modifiers event_modifiers () {
    const int state = Fl::event_state ();
    return {(state & FL_SHIFT) != 0, (state & FL_CTRL) != 0, (state & FL_ALT) != 0};
}

/// Once in the process.
bool first_context () {
    static bool told = false;
    return !std::exchange (told, true);
}

} // namespace

CanvasWindow::CanvasWindow (int x, int y, int w, int h, editor::Canvas& canvas)
    : Fl_Gl_Window (x, y, w, h), canvas_ (&canvas) {
    mode (FL_RGB8 | FL_ALPHA | FL_DOUBLE);
    end ();
    canvas_->resize (w, h);
}

void CanvasWindow::resize (int x, int y, int w, int h) {
    Fl_Gl_Window::resize (x, y, w, h);
    if (canvas_ != nullptr) canvas_->resize (w, h);
}

void CanvasWindow::set_up_context () {
    content_.forget ();
    glEnable (GL_BLEND);
    glBlendFunc (GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glDisable (GL_DEPTH_TEST);
    glHint (GL_LINE_SMOOTH_HINT, GL_NICEST);
    glEnable (GL_LINE_SMOOTH);
    if (on_first_context && first_context ()) on_first_context ();
}

void CanvasWindow::draw () {
    if (canvas_ == nullptr) return;
    if (!context_valid ()) set_up_context ();
    if (!valid ()) {
        glMatrixMode (GL_PROJECTION);
        glLoadIdentity ();
        glViewport (0, 0, pixel_w (), pixel_h ());
        gluOrtho2D (0, w (), h (), 0);
        glMatrixMode (GL_MODELVIEW);
        glLoadIdentity ();
    }
    const float ground = document::document_state ().dark_mode ? 0 : 1;
    glClearColor (ground, ground, ground, 1);
    glClear (GL_COLOR_BUFFER_BIT);
    canvas_->prepare_paint ();
    content_.pixels_per_unit = pixels_per_unit ();
    const glpaint::GlView plain{.height = h (), .pixel_ratio = pixels_per_unit ()};
    glpaint::GlView scaled = plain;
    scaled.zoom = canvas_->view.zoom ();
    if (scaled.zoom > glpaint::CoarseDevice::largest_zoom) {
        glpaint::GlDevice pixels (content_, plain);
        glpaint::GlDevice network (content_, scaled);
        canvas_->paint (pixels, network, background);
        return;
    }
    glpaint::TriangleBatch batch;
    glpaint::CoarseDevice pixels (batch, content_, plain);
    glpaint::CoarseDevice network (batch, content_, scaled);
    canvas_->paint (pixels, network, background);
    batch.flush ();
}

editor::Pointer CanvasWindow::pointer () const {
    return {static_cast<float> (Fl::event_x ()), static_cast<float> (Fl::event_y ()),
            event_modifiers ()};
}

int CanvasWindow::key_event (bool down) {
    const std::string text (Fl::event_text (), static_cast<std::size_t> (Fl::event_length ()));
    const editor::KeyEvent event{Fl::event_key (), text, event_modifiers ()};
    if (down) return canvas_->key_down (event) ? 1 : 0;
    canvas_->key_up (event);
    return 0;
}

void CanvasWindow::press (int button) {
    canvas_->press (button, pointer ());
    // A menu that popped up, or a dialog, has taken the release.
    if (Fl::event_buttons () == 0 && canvas_ != nullptr) canvas_->release (button, pointer ());
}

int CanvasWindow::handle (int event) {
    if (canvas_ == nullptr) return 0;
    switch (event) {
    case FL_PUSH:
        if (!keys_are_elsewhere || !keys_are_elsewhere ()) take_focus ();
        press (Fl::event_button ());
        return 1;
    case FL_DRAG: canvas_->drag (pointer ()); return 1;
    case FL_RELEASE: canvas_->release (Fl::event_button (), pointer ()); return 1;
    case FL_MOVE: canvas_->motion (pointer ()); return 1;
    case FL_ENTER:
        if (!keys_are_elsewhere || !keys_are_elsewhere ()) take_focus ();
        canvas_->enter ();
        return 1;
    case FL_LEAVE: canvas_->leave (); return 1;
    case FL_FOCUS:
        canvas_->focus (true);
        // A key that came up in another window was not told here.
        if (canvas_->callbacks.on_mouse_help)
            canvas_->callbacks.on_mouse_help (*canvas_, nullptr, event_modifiers ().row ());
        return 1;
    case FL_UNFOCUS: canvas_->focus (false); return 1;
    case FL_MOUSEWHEEL:
        canvas_->wheel (static_cast<float> (Fl::event_dx ()), static_cast<float> (Fl::event_dy ()),
                        pointer ());
        return 1;
    case FL_ZOOM_GESTURE:
        canvas_->pinch (static_cast<float> (Fl::event_dy ()), pointer ());
        return 1;
    case FL_KEYBOARD: return key_event (true);
    case FL_KEYUP: return key_event (false);
    case FL_DND_ENTER:
    case FL_DND_DRAG:
    case FL_DND_LEAVE: return 1;
    case FL_DND_RELEASE: dropping_ = true; return 1;
    case FL_PASTE: {
        const std::string text (Fl::event_text (), static_cast<std::size_t> (Fl::event_length ()));
        if (std::exchange (dropping_, false)) {
            if (on_drop) on_drop (text);
        } else {
            editor::paste_text (*canvas_, text);
        }
        return 1;
    }
    default: return Fl_Gl_Window::handle (event);
    }
}

} // namespace ostrand::shell
