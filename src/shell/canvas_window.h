// The window of one canvas: it forwards events and paints with OpenGL.
// Layer: shell.
#pragma once
#include "editor/canvas.h"
#include "export/export.h"
#include "toolkit/document_content.h"

#include <FL/Fl_Gl_Window.H>
#include <functional>
#include <string>
#include <vector>

namespace ostrand::shell {

class CanvasWindow : public Fl_Gl_Window {
  public:
    CanvasWindow (int x, int y, int w, int h, editor::Canvas& canvas);

    /// The canvas is no more: nothing reaches it from now on.
    void forget_canvas () { canvas_ = nullptr; }
    /// The colour around the canvas, 0xRRGGBB00.
    unsigned background = 0xf0f0f000;
    /// Called once, when the first context of the process is set up.
    std::function<void ()> on_first_context;
    /// File names were dropped on the window.
    std::function<void (std::string_view text)> on_drop;
    /// True while something else must keep the keys.
    std::function<bool ()> keys_are_elsewhere;

    /// A network that is laid out, painted as an export is, as a PNG file's bytes: twice as large
    /// as on the canvas, smaller when it would have more than 4096 pixels on a side. The window's
    /// context paints it, so the window must be shown. Empty when that fails.
    std::string png_of (const document::Network& network);

    int handle (int event) override;
    void resize (int x, int y, int w, int h) override;

  protected:
    void draw () override;

  private:
    void set_up_context ();
    std::vector<unsigned char> paint_pixels (const document::Network& network,
                                             const drawing::DrawingPage& page, float scale, int w,
                                             int h);
    editor::Pointer pointer () const;
    int key_event (bool down);
    void press (int button);

    editor::Canvas* canvas_;
    toolkit::DocumentContent content_;
    bool dropping_ = false;
};

} // namespace ostrand::shell
