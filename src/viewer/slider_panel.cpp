// The sliders under the view.
#include "viewer/slider_panel.h"

#include "base/text.h"
#include "toolkit/text_fit.h"

#include <FL/Fl_Group.H>
#include <FL/Fl_Hor_Slider.H>
#include <algorithm>
#include <string>
#include <vector>

namespace ostrand::viewer {
namespace {

constexpr int row_height = 20;
constexpr int spacing = 10;
constexpr int left_edge = 10;
constexpr int longest = 750;
constexpr int label_room = 140;            // that a long slider leaves, also in a narrow window
constexpr int label_gap = 6;               // on both sides of a label
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

    /// name  the part of the text that may be cut where there is no room for all
    void show_label (const std::string& text, const std::string& name = {}) {
        text_ = text;
        name_ = name;
        fit_label ();
    }

    /// Cuts the label to the window: its name, so that the value behind it stays.
    void fit_label () {
        const auto room = static_cast<float> (window ()->w () - x () - w () - 2 * label_gap);
        const auto fitted = [this] (const std::string& part, float space) {
            return toolkit::fitted_text (part, space, toolkit::label_width, labelfont (),
                                         labelsize ());
        };
        const float width = toolkit::label_width (text_, labelfont (), labelsize ());
        const float name_width = toolkit::label_width (name_, labelfont (), labelsize ());
        std::string label = text_;
        if (width > room && !name_.empty ()) {
            label.replace (label.find ("[" + name_) + 1, name_.size (),
                           fitted (name_, room - (width - name_width)));
        }
        copy_label (toolkit::plain_label (fitted (label, room)).c_str ());
    }

    CurveWidget& view;
    VarConc* var = nullptr; // null for the time slider

  private:
    std::string text_;
    std::string name_;
};

/// The sliders keep their places when the window changes; long ones give way to their labels.
class SliderPanel : public Fl_Group {
  public:
    using Fl_Group::Fl_Group;

    void add_row (LabelledSlider* slider, int length) { sliders_.push_back ({slider, length}); }

    void resize (int x, int y, int w, int h) override {
        Fl_Group::resize (x, y, w, h);
        fit ();
    }

    void fit () {
        for (const Row& row : sliders_) {
            const int most = std::max (window ()->w () - left_edge - label_room, label_room);
            row.slider->size (std::min (row.length, most), row_height);
            row.slider->fit_label ();
        }
    }

  private:
    struct Row {
        LabelledSlider* slider;
        int length; // where the window is wide enough
    };
    std::vector<Row> sliders_;
};

void concentration_moved (Fl_Widget* widget, void*) {
    auto* slider = static_cast<LabelledSlider*> (widget);
    slider->var->index = static_cast<std::uint32_t> (slider->value ());
    slider->show_label (slider->var->labels[slider->var->index], slider->var->name);
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
    auto* panel = new SliderPanel (x, y, 900, slider_room (data)); // owned by the window
    int row = y;
    for (std::size_t v = 0; v + 1 < data.vars.size (); ++v) {
        VarConc& var = data.vars[v];
        const auto wanted = (std::int64_t{var.nb} - 1) * 90 + 50;
        const auto length = static_cast<int> (std::min<std::int64_t> (longest, wanted));
        auto* slider = new LabelledSlider (x + left_edge, row, length, view);
        slider->var = &var;
        slider->bounds (0, static_cast<double> (var.nb - 1));
        slider->step (1);
        slider->callback (concentration_moved);
        slider->show_label (var.labels[0], var.name);
        panel->add_row (slider, length);
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
