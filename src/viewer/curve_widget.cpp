// The 3-D view as a widget.
#include "viewer/curve_widget.h"

#include "toolkit/gl_text.h"
#include "viewer/curve_draw.h"

#include <FL/Fl.H>
#include <FL/Fl_Group.H>
#include <algorithm>
#include <utility>

namespace ostrand::viewer {
namespace {

constexpr float nearest_distance = -20000;

void show_if (Fl_Widget* widget, bool wanted) {
    if (widget == nullptr) return;
    if (wanted) {
        widget->show ();
    } else {
        widget->hide ();
    }
}

} // namespace

ViewerState& viewer_state () {
    static ViewerState state;
    return state;
}

CurveWidget::CurveWidget (int x, int y, int w, int h, ResultData* data)
    : Fl_Gl_Window (x, y, w, h), data_ (data) {
    mode (FL_DOUBLE | FL_ALPHA | FL_MULTISAMPLE);
}

ViewSize CurveWidget::view_size () { return ViewSize::of (w (), h (), pixels_per_unit ()); }

void CurveWidget::draw () {
    const ViewSize size_now = view_size ();
    if (!context_valid ()) {
        ViewerState& process = viewer_state ();
        if (!std::exchange (process.blending_set, true)) set_line_blending ();
        initial_pan (state_, size_now);
    } else if (drawn_size_.w != size_now.w || drawn_size_.hp != size_now.hp) {
        // What was moved by hand keeps its part of the window.
        state_.pan_x *= size_now.w / drawn_size_.w;
        state_.pan_y *= size_now.hp / drawn_size_.hp;
    }
    drawn_size_ = size_now;
    const bool flat = !state_.view_3d && count_planes (*data_) > 1;
    if (state_.auto_scale) {
        state_.scale = fitting_scale (flat ? chart_height (size_now) : size_now.h (), data_->max);
    }
    clear_picture (size_now, viewer_state ().reverse_video);
    if (!data_->empty ()) {
        const toolkit::TextWidth width = [this] (const std::string& text, int font, int letters) {
            return toolkit::gl_text_width (text, font, letters, pixels_per_unit ());
        };
        const ViewLayout layout = layout_of (*data_, state_, size_now, width);
        // The time slider goes with the window's width.
        if (time_slider != nullptr && time_slider->w () != w () - 100) {
            time_slider->size (w () - 100, time_slider->h ());
            slider_panel->redraw ();
        }
        use_flat_projection (size_now);
        draw_frame (size_now);
        if (flat) {
            draw_chart (layout, width);
        } else {
            draw_box (layout, width);
        }
    }
    if (on_drawn) std::exchange (on_drawn, nullptr) ();
}

void CurveWidget::draw_box (const ViewLayout& layout, const toolkit::TextWidth& width) {
    const Scene scene = scene_of_box (*data_, state_, layout, width);
    use_scene_projection (state_, layout);
    draw_grid (scene);
    draw_curves (*data_, state_, layout);
    use_flat_projection (layout.size);
    draw_flat_parts (scene, viewer_state ().reverse_video);
}

void CurveWidget::draw_chart (const ViewLayout& layout, const toolkit::TextWidth& width) {
    const bool reverse_video = viewer_state ().reverse_video;
    draw_flat_parts (scene_of_chart (*data_, state_, layout, width, reverse_video), reverse_video);
}

int CurveWidget::handle (int event) {
    ViewerState& process = viewer_state ();
    switch (event) {
    case FL_PUSH:
        take_focus ();
        process.last_x = Fl::event_x ();
        process.last_y = Fl::event_y ();
        return 1;
    case FL_DRAG: return drag ();
    case FL_MOUSEWHEEL: return wheel ();
    case FL_RELEASE:
    case FL_FOCUS:
    case FL_UNFOCUS: return 1;
    case FL_KEYBOARD: return key_press ();
    default: return Fl_Gl_Window::handle (event);
    }
}

int CurveWidget::drag () {
    ViewerState& process = viewer_state ();
    const auto dx = static_cast<float> (Fl::event_x () - process.last_x);
    const auto dy = static_cast<float> (Fl::event_y () - process.last_y);
    if (Fl::event_button () == FL_LEFT_MOUSE) {
        state_.rot_x = wrap_angle (state_.rot_x + dy * 0.25F);
        state_.rot_y = wrap_angle (state_.rot_y + dx * 0.25F);
    } else if (Fl::event_button () == FL_RIGHT_MOUSE) {
        state_.pan_x += dx * 1.18F;
        state_.pan_y += dy * 1.18F;
    }
    process.last_x = Fl::event_x ();
    process.last_y = Fl::event_y ();
    redraw ();
    return 1;
}

void CurveWidget::change_scale (bool outward) {
    state_.auto_scale = false;
    state_.scale =
        outward ? halved_scale (state_.scale) : doubled_scale (state_.scale, view_size ().h ());
}

int CurveWidget::wheel () {
    // With Shift the toolkit tells a sideways wheel.
    const int steps = Fl::event_dy () != 0 ? Fl::event_dy () : Fl::event_dx ();
    if (Fl::event_ctrl ()) {
        if (Fl::event_dy () != 0) change_scale (Fl::event_dy () < 0);
    } else if (Fl::event_shift ()) {
        state_.fov += static_cast<float> (steps);
        if (state_.fov <= 0) state_.fov = 1;
    } else {
        state_.dist =
            std::min (state_.dist + static_cast<float> (Fl::event_dy ()) * 1000, nearest_distance);
    }
    redraw ();
    return 1;
}

int CurveWidget::key_press () {
    if (Fl::event_key () == FL_Escape) return Fl_Gl_Window::handle (FL_KEYBOARD);
    const char key = Fl::event_length () == 1 ? Fl::event_text ()[0] : '\0';
    switch (key) {
    case ' ': reset_view (state_, view_size ()); break;
    case '+':
    case '=': change_scale (true); break;
    case '-': change_scale (false); break;
    case 'c':
    case 't': toggle_view (); break;
    case 'r': viewer_state ().reverse_video = !viewer_state ().reverse_video; break;
    default:
        if (key < '0' || key > '9') return Fl_Gl_Window::handle (FL_KEYBOARD);
        state_.visible.flip (static_cast<std::size_t> (key - '0'));
    }
    redraw ();
    return 1;
}

void CurveWidget::toggle_view () {
    state_.view_3d = !state_.view_3d;
    if (!state_.view_3d) {
        show_if (slider_panel, true);
        show_if (time_group, true);
    } else {
        const bool sliders = data_->n_var >= 2;
        show_if (slider_panel, sliders);
        show_if (time_group, !sliders);
    }
    // The sliders' labels stand beside their group.
    if (slider_panel != nullptr) slider_panel->parent ()->redraw ();
}

} // namespace ostrand::viewer
