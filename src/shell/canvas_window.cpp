// Events and painting of a canvas's window.
#include "shell/canvas_window.h"

#include "document/document_state.h"
#include "editor/edit_selection.h"
#include "glpaint/coarse_device.h"
#include "toolkit/gl_picture.h"

#include <FL/Fl.H>
#include <FL/gl.h>
#include <FL/glu.h>
#include <algorithm>
#include <cmath>
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

std::vector<unsigned char> CanvasWindow::paint_pixels (const document::Network& network,
                                                       const drawing::DrawingPage& page,
                                                       float scale, int w, int h) {
    // The back buffer takes the picture in tiles of its size.
    const int tile_w = pixel_w ();
    const int tile_h = pixel_h ();
    const float ground = document::document_state ().dark_mode ? 0 : 1;
    const float ratio = std::exchange (content_.pixels_per_unit, 1.0F);
    std::vector<unsigned char> pixels (3 * static_cast<std::size_t> (w) *
                                       static_cast<std::size_t> (h));
    for (int top = 0; top < h; top += tile_h) {
        for (int left = 0; left < w; left += tile_w) {
            glViewport (0, 0, tile_w, tile_h);
            glMatrixMode (GL_PROJECTION);
            glLoadIdentity ();
            gluOrtho2D (left, left + tile_w, top + tile_h, top);
            glMatrixMode (GL_MODELVIEW);
            glLoadIdentity ();
            glClearColor (ground, ground, ground, 1);
            glClear (GL_COLOR_BUFFER_BIT);
            const glpaint::GlView view{.height = tile_h,
                                       .scroll_x = static_cast<float> (left) / scale,
                                       .scroll_y = static_cast<float> (top) / scale,
                                       .zoom = scale};
            glpaint::GlDevice device (content_, view);
            drawing::paint_export (network, device, page);
            const std::vector<unsigned char> tile = toolkit::read_gl_pixels (tile_w, tile_h);
            const auto length = 3 * static_cast<std::ptrdiff_t> (std::min (tile_w, w - left));
            for (int y = 0; y < std::min (tile_h, h - top); ++y) {
                const auto from = tile.begin () + std::ptrdiff_t{3} * tile_w * y;
                std::copy (from, from + length,
                           pixels.begin () + 3 * (std::ptrdiff_t{w} * (top + y) + left));
            }
        }
    }
    content_.pixels_per_unit = ratio;
    return pixels;
}

std::string CanvasWindow::png_of (const document::Network& network) {
    constexpr float wanted_scale = 2;
    constexpr float longest_side = 4096;
    if (!shown () || pixel_w () <= 0 || pixel_h () <= 0) return {};
    const drawing::DrawingPage page = drawing::drawing_page (network);
    const auto side = static_cast<float> (std::max (page.width, page.height));
    if (side < 1) return {};
    const float scale = std::min (wanted_scale, longest_side / side);
    const auto length = [scale] (unsigned units) {
        return std::max (1, static_cast<int> (std::lround (static_cast<float> (units) * scale)));
    };
    const int w = length (page.width);
    const int h = length (page.height);
    make_current ();
    if (!context_valid ()) set_up_context ();
    const std::vector<unsigned char> pixels = paint_pixels (network, page, scale, w, h);
    valid (0); // the window's own projection is gone
    redraw ();
    std::string error;
    return toolkit::png_bytes (pixels, w, h, error);
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
