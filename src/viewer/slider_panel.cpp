// The sliders under the view.
#include "viewer/slider_panel.h"

#include "base/text.h"
#include "viewer/text_fit.h"

#include <FL/Fl_Group.H>
#include <FL/Fl_Hor_Slider.H>
#include <FL/fl_draw.H>
#include <algorithm>

namespace ostrand::viewer {
namespace {

constexpr int row_height = 20;
constexpr int spacing = 10;
constexpr int left_edge = 10;
constexpr long long tallest_panel = 20000; // windows end at 32767 pixels

/// A slider whose label stands at its right and is cut to the window.
class LabelledSlider : public Fl_Hor_Slider {
  public:
    LabelledSlider (int x, int y, int w, CurveWidget& shown)
        : Fl_Hor_Slider (x, y, w, row_height), view (shown) {
        align (FL_ALIGN_RIGHT);
        labelcolor (FL_WHITE);
        color (fl_rgb_color (0, 20, 20));
        selection_color (fl_rgb_color (120, 190, 190));
        labelsize (12);
        clear_visible_focus (); // keys go to the view
    }

    void show_label (const std::string& text) {
        const TextWidth width = [] (const std::string& part, int font, int size) {
            fl_font (font, size);
            return static_cast<float> (fl_width (part.c_str ()));
        };
        const float room = static_cast<float> (window ()->w () - x () - w () - 6);
        copy_label (
            plain_label (fitted_text (text, room, width, labelfont (), labelsize ())).c_str ());
    }

    CurveWidget& view;
    VarConc* var = nullptr; // null for the time slider
};

void concentration_moved (Fl_Widget* widget, void*) {
    auto* slider = static_cast<LabelledSlider*> (widget);
    slider->var->index = static_cast<std::uint32_t> (slider->value ());
    slider->show_label (slider->var->labels[slider->var->index]);
    slider->view.state ().selected_offset = offset_of_selection (slider->view.data ().vars);
    slider->view.redraw ();
}

void time_moved (Fl_Widget* widget, void*) {
    auto* slider = static_cast<LabelledSlider*> (widget);
    slider->view.state ().time_point = static_cast<std::int32_t> (slider->value ());
    slider->show_label (format_text (" t = %d s", slider->view.state ().time_point));
    slider->view.redraw ();
}

} // namespace

int slider_room (const ResultData& data) {
    const auto wanted = static_cast<long long> (data.n_var) * (row_height + spacing) - spacing;
    return static_cast<int> (std::clamp (wanted, 0LL, tallest_panel));
}

Fl_Group* make_sliders (CurveWidget& view, int x, int y) {
    ResultData& data = view.data ();
    auto* panel = new Fl_Group (x, y, 900, slider_room (data)); // owned by the window
    int row = y;
    for (std::size_t v = 0; v + 1 < data.vars.size (); ++v) {
        VarConc& var = data.vars[v];
        const auto wanted = (std::int64_t{var.nb} - 1) * 90 + 50;
        auto* slider = new LabelledSlider (
            x + left_edge, row, static_cast<int> (std::min<std::int64_t> (750, wanted)), view);
        slider->var = &var;
        slider->bounds (0, static_cast<double> (var.nb - 1));
        slider->step (1);
        slider->callback (concentration_moved);
        slider->show_label (var.labels[0]);
        row += row_height + spacing;
    }
    auto* time_group = new Fl_Group (x + left_edge, row, 810, row_height);
    auto* time = new LabelledSlider (x + left_edge, row, 900 - 100, view);
    time->bounds (0, static_cast<double> (std::max (data.n_points, 1U) - 1));
    time->step (1);
    time->callback (time_moved);
    time->show_label (" Time");
    time_group->resizable (nullptr);
    time_group->end ();
    panel->end ();
    panel->resizable (nullptr);
    view.slider_panel = panel;
    view.time_group = time_group;
    view.time_slider = time;
    time_group->hide ();
    if (data.n_var < 2) panel->hide ();
    return panel;
}

} // namespace ostrand::viewer
