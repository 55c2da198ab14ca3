// Drawing and dragging of tabs.
#include "shell/tab_bar.h"

#include "shell/images.h"

#include "toolkit/text_fit.h"

#include <FL/Fl.H>
#include <FL/fl_draw.H>
#include <algorithm>

namespace ostrand::shell {
namespace {

constexpr int name_font = 0;
constexpr int name_size = 14;
constexpr int name_margin = 6;
constexpr int close_width = 22;
constexpr int new_tab_height = 20;
constexpr int cut = 8; // of the corner
constexpr int drag_label_size = 11;
constexpr Fl_Color first_colour = 95;
constexpr Fl_Color active_colour = 0xf0f00000;
constexpr Fl_Color other_colour = 0xffffff00;
constexpr Fl_Color edge_colour = 0x00009000;
constexpr int neighbour_room = 60; // pixels of the next tab that stay in view
constexpr int wheel_step = 60;     // pixels
constexpr int longest_label = 40;  // letters; names may be of any length

void name_chosen (Fl_Widget* widget, void* group) {
    static_cast<My_TabGroup*> (group)->select (*static_cast<TabBtn*> (widget->parent ()));
}

void cross_pressed (Fl_Widget* widget, void* group) {
    static_cast<My_TabGroup*> (group)->close (*static_cast<TabBtn*> (widget->parent ()));
}

void plus_pressed (Fl_Widget*, void* bench) {
    static_cast<editor::Workbench*> (bench)->run (editor::Command::new_tab);
}

/// A name as it is shown: the middle of a very long one is left out.
std::string shown (const std::string& label) {
    if (label.size () <= longest_label) return label;
    return label.substr (0, longest_label / 2) + "..." +
           label.substr (label.size () - longest_label / 2);
}

} // namespace

TabBtn::TabBtn (My_TabGroup& group, int height, const std::string& label)
    : My_Pack (0, 0, 10, height), tab_colour (first_colour), group_ (group) {
    type (HORIZONTAL);
    spacing (-1);
    clear_gaps = false;
    name_button_ = new Fl_Button (0, 0, 10, height);
    name_button_->box (FL_NO_BOX);
    name_button_->labelsize (name_size);
    name_button_->labelcolor (FL_BLACK);
    name_button_->visible_focus (0);
    name_button_->callback (name_chosen, &group);
    close_button_ = new Fl_Button (0, 0, close_width, height);
    close_button_->box (FL_NO_BOX);
    close_button_->image (interface_image ("croix.png"));
    close_button_->visible_focus (0);
    close_button_->tooltip ("close tab");
    close_button_->callback (cross_pressed, &group);
    end ();
    set_label (label);
}

void TabBtn::set_label (const std::string& label) {
    if (label == label_) return;
    label_ = label;
    const std::string text = toolkit::plain_label (shown (label));
    name_button_->copy_label (text.c_str ());
    name_button_->copy_tooltip (label.c_str ());
    fl_font (name_font, name_size);
    const int width = static_cast<int> (fl_width (shown (label).c_str ())) + name_margin;
    name_button_->size (width, h ());
    size (width + close_width + spacing (), h ());
    place_children ();
    redraw ();
}

void TabBtn::draw () {
    fl_color (active ? active_colour : other_colour);
    const int right = x () + w ();
    const int bottom = y () + h () - 1;
    fl_begin_polygon ();
    fl_vertex (x () + 1, y () + 1);
    fl_vertex (right - cut, y () + 1);
    fl_vertex (right, y () + cut + 1);
    fl_vertex (right, bottom);
    fl_vertex (x () + 1, bottom);
    fl_end_polygon ();
    fl_color (FL_DARK2);
    fl_line (x () + 1, bottom, x () + 1, y () + 1, right - cut, y () + 1);
    fl_line (right - cut, y () + 1, right - 1, y () + cut);
    fl_line (right - 1, y () + cut, right - 1, bottom);
    damage (FL_DAMAGE_ALL);
    My_Pack::draw ();
    if (!active) return;
    // The bar is open towards the canvas under the tab on top.
    fl_color (edge_colour);
    fl_line_style (FL_SOLID, 1);
    const int base = group_.y () + group_.h () - 1;
    fl_line (group_.x (), base, x (), base);
    fl_line (right, base, group_.x () + group_.w (), base);
    fl_line_style (0);
}

My_TabGroup::My_TabGroup (int x, int y, int w, int h, editor::Workbench& bench)
    : My_Pack (x, y, w, h), bench_ (bench) {
    type (HORIZONTAL);
    spacing (-2);
    plus_button_ = new Fl_Button (0, 0, 22, 14);
    plus_button_->box (FL_NO_BOX);
    plus_button_->image (interface_image ("plus.png"));
    plus_button_->visible_focus (0);
    plus_button_->tooltip ("new tab");
    plus_button_->callback (plus_pressed, &bench);
    end ();
}

int My_TabGroup::index_of (const TabBtn& tab) const {
    for (std::size_t i = 0; i < tabs_.size (); ++i)
        if (tabs_[i] == &tab) return static_cast<int> (i);
    return -1;
}

void My_TabGroup::refresh () {
    const auto count = static_cast<std::size_t> (bench_.tabs ().count ());
    while (tabs_.size () > count) {
        remove (*tabs_.back ());
        Fl::delete_widget (tabs_.back ()); // it may be calling
        tabs_.pop_back ();
    }
    while (tabs_.size () < count) {
        const Fl_Group* const outer = Fl_Group::current ();
        Fl_Group::current (nullptr);
        auto* const tab = new TabBtn (*this, new_tab_height, "");
        insert (*tab, plus_button_);
        tabs_.push_back (tab);
        Fl_Group::current (const_cast<Fl_Group*> (outer));
    }
    for (std::size_t i = 0; i < count; ++i) {
        const int index = static_cast<int> (i);
        tabs_[i]->set_label (bench_.tab_label (index));
        tabs_[i]->active = index == bench_.tabs ().active ();
    }
    redraw ();
}

void My_TabGroup::select (const TabBtn& tab) {
    const int index = index_of (tab);
    if (index >= 0 && index != bench_.tabs ().active ()) bench_.select_tab (index);
}

void My_TabGroup::close (const TabBtn& tab) {
    const int index = index_of (tab);
    if (index >= 0) bench_.close_tab (index);
}

int My_TabGroup::tab_at (int at_x) const {
    for (std::size_t i = 0; i < tabs_.size (); ++i)
        if (at_x >= tabs_[i]->x () && at_x < tabs_[i]->x () + tabs_[i]->w () - close_width)
            return static_cast<int> (i);
    return -1;
}

void My_TabGroup::draw () {
    fl_color (color ());
    fl_rectf (x (), y (), w (), h ());
    show_active ();
    damage (FL_DAMAGE_ALL);
    fl_push_clip (x (), y (), w (), h ());
    My_Pack::draw ();
    fl_pop_clip ();
}

/// More tabs than the bar has room for are moved so that the one on top is seen, with a part of its
/// neighbours where that fits.
void My_TabGroup::show_active () {
    int total = plus_button_->w ();
    for (const TabBtn* const tab : tabs_) total += tab->w () + spacing ();
    const int last = std::max (total - w (), 0);
    int left = 0;
    const int active = bench_.tabs ().active ();
    for (int i = 0; i < active && i < static_cast<int> (tabs_.size ()); ++i)
        left += tabs_[static_cast<std::size_t> (i)]->w () + spacing ();
    if (active >= 0 && active < static_cast<int> (tabs_.size ()) && active != shown_active_) {
        const int right = left + tabs_[static_cast<std::size_t> (active)]->w ();
        children_offset = std::min (children_offset, std::max (left - neighbour_room, 0));
        children_offset = std::max (children_offset, right + neighbour_room - w ());
        shown_active_ = active;
    }
    children_offset = std::clamp (children_offset, 0, last);
}

void My_TabGroup::start_drag (int index) {
    const TabBtn& tab = *tabs_[static_cast<std::size_t> (index)];
    const Fl_Group* const outer = Fl_Group::current ();
    Fl_Group::current (nullptr);
    drag_window_ = std::make_unique<Fl_Window> (press_x_ - drag_offset_x_,
                                                press_y_ - drag_offset_y_, tab.w (), tab.h ());
    drag_window_->border (0);
    drag_window_->set_override ();
    auto* const box = new Fl_Box (0, 0, tab.w (), tab.h ());
    box->box (FL_BORDER_BOX);
    box->color (tab.active ? active_colour : other_colour);
    box->copy_label (toolkit::plain_label (shown (tab.text ())).c_str ());
    box->labelsize (drag_label_size);
    drag_window_->end ();
    drag_window_->show ();
    Fl_Group::current (const_cast<Fl_Group*> (outer));
}

void My_TabGroup::follow_pointer () {
    if (drag_window_)
        drag_window_->position (Fl::event_x_root () - drag_offset_x_,
                                Fl::event_y_root () - drag_offset_y_);
    if (Fl::event_y () < y () || Fl::event_y () >= y () + h ()) return;
    std::vector<editor::TabSpan> spans;
    for (const TabBtn* const tab : tabs_) spans.push_back ({tab->x (), tab->w ()});
    const std::optional<int> target = editor::drop_index (spans, pressed_, Fl::event_x ());
    if (!target) return;
    bench_.move_tab (pressed_, *target);
    pressed_ = *target;
    place_children ();
}

int My_TabGroup::handle (int event) {
    switch (event) {
    case FL_PUSH:
        if (Fl::event_button () != FL_LEFT_MOUSE) break;
        pressed_ = tab_at (Fl::event_x ());
        dragging_ = false;
        if (pressed_ < 0) break;
        press_x_ = Fl::event_x_root ();
        press_y_ = Fl::event_y_root ();
        drag_offset_x_ = Fl::event_x () - tabs_[static_cast<std::size_t> (pressed_)]->x ();
        drag_offset_y_ = Fl::event_y () - tabs_[static_cast<std::size_t> (pressed_)]->y ();
        return 1;
    case FL_DRAG:
        if (pressed_ < 0) break;
        if (!dragging_ && editor::is_click_distance (Fl::event_x_root () - press_x_,
                                                     Fl::event_y_root () - press_y_))
            return 1;
        if (!dragging_) start_drag (pressed_);
        dragging_ = true;
        follow_pointer ();
        return 1;
    case FL_RELEASE:
        if (pressed_ < 0) break;
        drag_window_.reset ();
        if (!dragging_) bench_.select_tab (pressed_);
        pressed_ = -1;
        dragging_ = false;
        return 1;
    case FL_MOUSEWHEEL:
        children_offset += wheel_step * (Fl::event_dy () + Fl::event_dx ());
        redraw ();
        return 1;
    default: break;
    }
    return My_Pack::handle (event);
}

} // namespace ostrand::shell
