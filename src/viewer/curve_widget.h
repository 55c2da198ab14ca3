// The 3-D view as a widget, and the sliders under it.
// Layer: viewer.
#pragma once
#include "viewer/series_view.h"

#include <FL/Fl_Gl_Window.H>
#include <functional>
#include <string>
#include <vector>

class Fl_Group;
class Fl_Widget;

namespace ostrand::viewer {

/// Process-wide state of the viewer.
struct ViewerState {
    bool reverse_video = false;
    bool blending_set = false; // once per process
    int last_x = 0;            // of the mouse
    int last_y = 0;
};
ViewerState& viewer_state ();

class CurveWidget : public Fl_Gl_Window {
  public:
    /// `data` must stay as long as the widget.
    CurveWidget (int x, int y, int w, int h, ResultData* data);

    void draw () override;
    int handle (int event) override;

    ViewState& state () { return state_; }
    ResultData& data () { return *data_; }

    /// The widgets that show and hide with the view; not owned.
    Fl_Group* slider_panel = nullptr;
    Fl_Group* time_group = nullptr;
    Fl_Widget* time_slider = nullptr;
    /// Called once, after the next draw.
    std::function<void ()> on_drawn;

  private:
    ViewSize view_size ();
    void draw_box (const ViewLayout& layout, const toolkit::TextWidth& width);
    void draw_chart (const ViewLayout& layout, const toolkit::TextWidth& width);
    int drag ();
    int wheel ();
    int key_press ();
    void toggle_view ();
    void change_scale (bool outward);

    ResultData* data_;
    ViewState state_;
    ViewSize drawn_size_; // of the last drawing
};

} // namespace ostrand::viewer
