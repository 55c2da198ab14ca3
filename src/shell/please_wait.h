// The window that is shown while long work goes on.
// Layer: shell.
#pragma once
#include "base/background_work.h"

#include <FL/Fl_Box.H>
#include <FL/Fl_Button.H>
#include <FL/Fl_Double_Window.H>
#include <FL/Fl_Progress.H>
#include <string>

namespace ostrand::shell {

/// Says what is waited for, how far it is, what was found and how long it may still take. Cancel,
/// Escape and the window's cross stop the work.
class PleaseWait : public Fl_Double_Window {
  public:
    PleaseWait ();

    /// Shows the window and serves all other windows until the work has ended; then hides it.
    /// Keys and clicks reach this window only.
    void wait_for (const std::string& text, BackgroundWork& work);

  private:
    static void tick (void* window);
    void show_progress ();
    void cancel ();

    Fl_Box* text_;
    Fl_Progress* bar_;
    Fl_Box* numbers_;
    Fl_Button* cancel_button_;
    BackgroundWork* work_ = nullptr;
    double begun_ = 0; // seconds since some moment
};

/// "12 found, about 3 minutes left"; what is not known is left out.
/// fraction  the part that is done, 0 to 1
/// seconds   that the work has taken so far
std::string progress_text (float fraction, std::uint64_t results, double seconds);

} // namespace ostrand::shell
