// The window of one canvas: it forwards events and paints with OpenGL.
// Layer: shell.
#pragma once
#include "editor/canvas.h"
#include "toolkit/document_content.h"

#include <FL/Fl_Gl_Window.H>
#include <functional>

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

    int handle (int event) override;
    void resize (int x, int y, int w, int h) override;

  protected:
    void draw () override;

  private:
    void set_up_context ();
    editor::Pointer pointer () const;
    int key_event (bool down);
    void press (int button);

    editor::Canvas* canvas_;
    toolkit::DocumentContent content_;
    bool dropping_ = false;
};

} // namespace ostrand::shell
