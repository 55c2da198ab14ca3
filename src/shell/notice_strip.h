// A line above the canvas that tells something and waits for nobody: its text, a button that leads
// to what it is about, a cross that closes it.
// Layer: shell.
#pragma once
#include <FL/Fl_Box.H>
#include <FL/Fl_Button.H>
#include <FL/Fl_Group.H>
#include <functional>
#include <string>

namespace ostrand::shell {

class NoticeStrip : public Fl_Group {
  public:
    NoticeStrip (int x, int y, int w, int h);

    void show_text (const std::string& text);

    std::function<void ()> on_show;
    std::function<void ()> on_close;

  private:
    Fl_Box* text_;
    Fl_Button* show_button_;
    Fl_Button* close_button_;
};

} // namespace ostrand::shell
