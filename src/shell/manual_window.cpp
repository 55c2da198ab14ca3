// Painting the manual and searching in it.
#include "shell/manual_window.h"

#include "base/text.h"
#include "manual/layout.h"
#include "manual/manual_images.h"
#include "resources/resources.h"
#include "shell/images.h"

#include <FL/Fl.H>
#include <FL/Fl_Image.H>
#include <FL/fl_draw.H>
#include <cmath>
#include <cstdlib>

namespace ostrand::shell {
namespace {

constexpr int window_width = 850;
constexpr int window_height = 950;
constexpr Fl_Color window_colour = 255;
constexpr int search_width = 300;
constexpr int search_height = 25;

void set_font (const manual::TextStyle& style) { fl_font (style.font_number (), style.size); }

std::span<const ResourceImage> image_rows () {
    std::size_t count = 0;
    while (manual_images[count].name != nullptr) ++count;
    return {manual_images, count};
}

/// The line of the search: what is typed is looked for at once.
class SearchLine : public Fl_Input {
  public:
    using Fl_Input::Fl_Input;
    std::function<void (manual::ManualAction)> on_action;
    std::function<void (const char*)> on_change;

    int handle (int event) override {
        if (event == FL_KEYBOARD) {
            const bool ctrl = (Fl::event_state () & FL_CTRL) != 0;
            if (const auto action = manual::search_action (Fl::event_key (), ctrl)) {
                on_action (*action);
                return 1;
            }
        }
        const std::string before = value ();
        const int handled = Fl_Input::handle (event);
        if (before != value ()) on_change (value ());
        return handled;
    }
};

} // namespace

float ManualMeasure::text_width (std::string_view text, const manual::TextStyle& style) const {
    set_font (style);
    return static_cast<float> (fl_width (text.data (), static_cast<int> (text.size ())));
}

int ManualMeasure::ascent (const manual::TextStyle& style) const {
    set_font (style);
    return fl_height () - fl_descent ();
}

int ManualMeasure::descent (const manual::TextStyle& style) const {
    set_font (style);
    return fl_descent ();
}

manual::ImageBox ManualMeasure::image (std::string_view source) const {
    return manual::find_image (image_rows (), source);
}

ManualPage::ManualPage (int x, int y, int w, int h) : Fl_Widget (x, y, w, h), html_ (measure_) {
    html_.resize (w, h);
}

ManualPage::~ManualPage () { Fl::remove_timeout (fade_due, this); }

void ManualPage::resize (int x, int y, int w, int h) {
    Fl_Widget::resize (x, y, w, h);
    html_.resize (w, h);
}

void ManualPage::fade_due (void* data) {
    auto& page = *static_cast<ManualPage*> (data);
    if (page.html_.scroll ().tick ()) Fl::add_timeout (editor::Fade::next_wait, fade_due, data);
    page.redraw ();
}

void ManualPage::scrolled () {
    redraw ();
    if (!html_.scroll ().fading ()) return;
    Fl::remove_timeout (fade_due, this);
    Fl::add_timeout (editor::Fade::first_wait, fade_due, this);
}

void ManualPage::draw_lift () {
    const std::optional<manual::LiftPaint> lift = html_.scroll ().lift ();
    if (!lift) return;
    // The toolkit has no transparent colours here: the lift is mixed with the ground.
    const float part = static_cast<float> (lift->alpha) / 255;
    const Fl_Color mixed = fl_color_average (static_cast<Fl_Color> (lift->colour),
                                             static_cast<Fl_Color> (html_.background ()), part);
    const int left = x () + static_cast<int> (lift->x);
    const int top = y () + static_cast<int> (lift->y);
    const int wide = static_cast<int> (lift->width);
    const int high = static_cast<int> (std::lround (lift->height));
    fl_rectf (left, top, wide, high, mixed);
    if (!lift->marked) return;
    fl_color (mixed);
    const int middle = left + wide / 2;
    const int mark = static_cast<int> (editor::short_thumb_mark);
    fl_line (middle, top - mark, middle, top + high + mark);
}

void ManualPage::draw () {
    fl_push_clip (x (), y (), w (), h ());
    fl_rectf (x (), y (), w (), h (), static_cast<Fl_Color> (html_.background ()));
    const bool dark = html_.page ().is_dark ();
    for (const auto& item : html_.paint_list (html_.scroll ().scroll_y (), h ())) {
        if (const auto* const frame = std::get_if<manual::MatchFrame> (&item)) {
            fl_rectf (x () + static_cast<int> (frame->x), y () + frame->y,
                      static_cast<int> (std::ceil (frame->width)), frame->height,
                      static_cast<Fl_Color> (frame->colour));
        } else if (const auto* const run = std::get_if<manual::TextRun> (&item)) {
            set_font (run->style);
            fl_color (static_cast<Fl_Color> (run->colour));
            fl_draw (run->text.data (), static_cast<int> (run->text.size ()),
                     x () + static_cast<int> (run->x), y () + run->y);
        } else if (const auto* const placed = std::get_if<manual::PlacedImage> (&item)) {
            if (Fl_Image* const image = manual_image (placed->name, dark))
                image->draw (x () + static_cast<int> (placed->x), y () + placed->y);
        }
    }
    draw_lift ();
    fl_pop_clip ();
}

void ManualPage::show_pointer () {
    const bool hand = html_.link_at (Fl::event_x () - x (), Fl::event_y () - y ()) != nullptr;
    window ()->cursor (hand ? FL_CURSOR_HAND : FL_CURSOR_DEFAULT);
}

int ManualPage::key () {
    const bool ctrl = (Fl::event_state () & FL_CTRL) != 0;
    const auto action = manual::page_action (Fl::event_key (), ctrl);
    if (!action) return 0;
    if (const auto* const scroll = std::get_if<manual::ScrollKey> (&*action)) {
        html_.scroll ().key (*scroll);
        scrolled ();
    } else if (on_action) {
        on_action (std::get<manual::ManualAction> (*action));
    }
    return 1;
}

int ManualPage::handle (int event) {
    const int at_x = Fl::event_x () - x ();
    const int at_y = Fl::event_y () - y ();
    manual::PageScroll& scroll = html_.scroll ();
    switch (event) {
    case FL_FOCUS:
    case FL_UNFOCUS: return 1;
    case FL_ENTER:
    case FL_MOVE:
        show_pointer ();
        if (scroll.pointer_moved (at_x)) redraw ();
        return 1;
    case FL_LEAVE:
        window ()->cursor (FL_CURSOR_DEFAULT);
        if (scroll.pointer_left ()) redraw ();
        return 1;
    case FL_PUSH:
        take_focus ();
        if (scroll.press (at_x, at_y))
            redraw ();
        else if (html_.follow_link (at_x, at_y))
            scrolled ();
        return 1;
    case FL_DRAG:
        if (scroll.drag (at_y)) redraw ();
        return 1;
    case FL_RELEASE:
        if (scroll.release ()) redraw ();
        return 1;
    case FL_MOUSEWHEEL:
        scroll.wheel (Fl::event_dy ());
        scrolled ();
        return 1;
    case FL_KEYBOARD: return key ();
    default: return Fl_Widget::handle (event);
    }
}

ManualWindow::ManualWindow ()
    : Fl_Double_Window (window_width, window_height, "Ostrand Documentation") {
    color (window_colour);
    page_ = new ManualPage (0, 0, window_width, window_height);
    page_->on_action = [this] (manual::ManualAction action) { act (action); };
    auto* const line = new SearchLine (window_width - search_width - manual::bar_width, 0,
                                       search_width, search_height, "Search: ");
    line->on_action = page_->on_action;
    line->on_change = [this] (const char* text) {
        page_->html ().find (manual::trimmed_pattern (text));
        show_count ();
        page_->redraw ();
    };
    line->labeltype (FL_EMBOSSED_LABEL);
    search_ = line;
    search_->hide ();
    end ();
    resizable (page_);
    size_range (window_width / 3, window_height / 4);
}

void ManualWindow::show_count () {
    const std::size_t count = page_->html ().matches ().size ();
    const std::string title =
        format_text ("Ostrand Documentation: %zu occurrence%s found", count, count == 1 ? "" : "s");
    copy_label (search_->size () > 0 ? title.c_str () : "Ostrand Documentation");
}

void ManualWindow::act (manual::ManualAction action) {
    switch (action) {
    case manual::ManualAction::open_search:
        search_->resize (w () - search_width - manual::bar_width, 0, search_width, search_height);
        search_->show ();
        search_->insert_position (search_->size (), 0);
        search_->take_focus ();
        break;
    case manual::ManualAction::end_search:
        search_->hide ();
        page_->html ().clear_find ();
        copy_label ("Ostrand Documentation");
        page_->take_focus ();
        break;
    case manual::ManualAction::next_match: page_->html ().next_match (true); break;
    case manual::ManualAction::previous_match: page_->html ().next_match (false); break;
    }
    redraw ();
}

} // namespace ostrand::shell
