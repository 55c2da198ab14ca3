// How far a simulation is, in place of the zoom slider; a click stops it.
// Layer: shell.
#pragma once
#include <FL/Fl_Hor_Fill_Slider.H>
#include <functional>

namespace ostrand::shell {

class ProgressBar : public Fl_Hor_Fill_Slider {
  public:
    ProgressBar (int x, int y, int w, int h) : Fl_Hor_Fill_Slider (x, y, w, h) {
        box (FL_FLAT_BOX);
        slider (FL_FLAT_BOX);
        bounds (0, 1);
        selection_color (0x1775c300);
        tooltip ("click to stop the simulation");
        visible_focus (0);
    }

    std::function<void ()> on_click;

    int handle (int event) override {
        if (event == FL_PUSH) {
            if (on_click) on_click ();
            return 1;
        }
        if (event == FL_ENTER || event == FL_LEAVE) return 1; // for the tool tip
        return 0;
    }
};

} // namespace ostrand::shell
