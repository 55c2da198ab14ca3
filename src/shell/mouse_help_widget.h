// The mouse help: what each button does at the pointer, by the modifier keys that are down.
// Layer: shell.
#pragma once
#include "editor/mouse_help.h"

#include <FL/Fl_Widget.H>
#include <array>
#include <string>

class Fl_Image;

namespace ostrand::shell {

class MouseHelp : public Fl_Widget {
  public:
    MouseHelp (int x, int y, int w, int h);

    /// New words, null to keep them; and what is lit: a row of modifiers, a button, or no button.
    void update (const editor::MouseHelpSlots* slots, int row);

  protected:
    void draw () override;

  private:
    std::array<std::string, 12> words_;
    int modifier_row_ = 0;
    int button_ = 0; // that is down, 0 none
};

} // namespace ostrand::shell
