// Showing the progress of long work.
#include "shell/please_wait.h"

#include "base/text.h"
#include "toolkit/text_fit.h"

#include <FL/Fl.H>
#include <chrono>
#include <cmath>

namespace ostrand::shell {
namespace {

constexpr int window_width = 400;
constexpr int window_height = 122;
constexpr int margin = 12;
constexpr int line_height = 22;
constexpr int bar_height = 18;
constexpr int button_width = 80;
constexpr int button_height = 25;
constexpr double tick_seconds = 0.04;
// Before that much of work or time nobody can say how long the rest takes.
constexpr float least_fraction = 0.01F;
constexpr double least_seconds = 1;

double seconds_now () {
    return std::chrono::duration<double> (std::chrono::steady_clock::now ().time_since_epoch ())
        .count ();
}

std::string time_left (double seconds) {
    constexpr double minute = 60;
    constexpr double hour = 3600;
    if (seconds < minute) return format_text ("about %.0f s left", std::ceil (seconds));
    if (seconds < hour) return format_text ("about %.0f min left", std::ceil (seconds / minute));
    return format_text ("about %.1f h left", seconds / hour);
}

} // namespace

std::string progress_text (float fraction, std::uint64_t results, double seconds) {
    std::string text;
    if (results > 0) text = format_text ("%llu found", static_cast<unsigned long long> (results));
    if (fraction >= least_fraction && seconds >= least_seconds) {
        if (!text.empty ()) text += ", ";
        text += time_left (seconds * (1 - static_cast<double> (fraction)) /
                           static_cast<double> (fraction));
    }
    return text;
}

PleaseWait::PleaseWait () : Fl_Double_Window (window_width, window_height, "Please wait") {
    const int inner = window_width - 2 * margin;
    int top = margin / 2;
    text_ = new Fl_Box (margin, top, inner, line_height);
    text_->align (FL_ALIGN_INSIDE | FL_ALIGN_LEFT | FL_ALIGN_CLIP);
    top += line_height + 4;
    bar_ = new Fl_Progress (margin, top, inner, bar_height);
    bar_->box (FL_THIN_DOWN_BOX);
    bar_->selection_color (0x1775c300);
    bar_->minimum (0);
    bar_->maximum (1);
    top += bar_height + 4;
    numbers_ = new Fl_Box (margin, top, inner, line_height);
    numbers_->align (FL_ALIGN_INSIDE | FL_ALIGN_LEFT | FL_ALIGN_CLIP);
    numbers_->labelsize (12);
    cancel_button_ =
        new Fl_Button (window_width - margin - button_width, window_height - margin - button_height,
                       button_width, button_height, "Cancel");
    cancel_button_->callback ([] (Fl_Widget*, void* w) { static_cast<PleaseWait*> (w)->cancel (); },
                              this);
    end ();
    callback ([] (Fl_Widget*, void* w) { static_cast<PleaseWait*> (w)->cancel (); }, this);
    set_modal ();
}

void PleaseWait::cancel () {
    if (work_ == nullptr) return;
    work_->stop ();
    cancel_button_->deactivate ();
    numbers_->copy_label ("Stopping...");
}

void PleaseWait::show_progress () {
    const float fraction = work_->progress ().progress_fraction ();
    if (bar_->value () != fraction) bar_->value (fraction);
    if (!cancel_button_->active ()) return;
    const std::string told =
        progress_text (fraction, work_->progress ().results (), seconds_now () - begun_);
    if (told != numbers_->label ()) numbers_->copy_label (told.c_str ());
}

void PleaseWait::tick (void* window) {
    static_cast<PleaseWait*> (window)->show_progress ();
    Fl::repeat_timeout (tick_seconds, tick, window);
}

void PleaseWait::wait_for (const std::string& text, BackgroundWork& work) {
    work_ = &work;
    begun_ = seconds_now ();
    text_->copy_label (toolkit::plain_label (text).c_str ());
    numbers_->copy_label ("");
    bar_->value (0);
    cancel_button_->activate ();
    Fl_Window* const above = Fl::first_window ();
    if (above != nullptr)
        position (above->x () + (above->w () - w ()) / 2, above->y () + (above->h () - h ()) / 3);
    show ();
    Fl::add_timeout (tick_seconds, tick, this);
    while (!work.finished ()) Fl::wait (tick_seconds);
    Fl::remove_timeout (tick, this);
    hide ();
    work_ = nullptr;
}

} // namespace ostrand::shell
