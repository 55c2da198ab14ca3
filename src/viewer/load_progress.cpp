// What is seen while a large file loads.
#include "viewer/load_progress.h"

#include "base/text.h"
#include "toolkit/display.h"
#include "toolkit/text_fit.h"

#include <FL/Fl.H>
#include <FL/Fl_Progress.H>
#include <FL/Fl_Window.H>
#include <algorithm>
#include <filesystem>

namespace ostrand::viewer {
namespace {

constexpr auto patience = std::chrono::milliseconds (400); // before anything is shown
constexpr auto interval = std::chrono::milliseconds (100);

} // namespace

LoadDisplay::LoadDisplay (const std::string& file)
    : name_ (file.empty () ? "standard input" : file) {
    std::error_code error;
    const auto size = std::filesystem::file_size (file, error);
    if (!error) total_ = static_cast<double> (size);
}

LoadDisplay::~LoadDisplay () {
    if (!window_) return;
    window_->hide ();
    Fl::check ();
}

void LoadDisplay::open_window () {
    window_tried_ = true;
    if (!toolkit::display_is_there ()) return;
    window_ = std::make_unique<Fl_Window> (420, 50, "Stochora");
    bar_ = new Fl_Progress (10, 12, 400, 26); // the window owns it
    bar_->maximum (1);
    bar_->selection_color (fl_rgb_color (0, 150, 150));
    window_->end ();
    window_->show ();
}

void LoadDisplay::show (std::uint64_t bytes) {
    const Clock::time_point now = Clock::now ();
    if (now - start_ < patience || now - last_ < interval) return;
    last_ = now;
    if (!window_tried_) open_window ();
    const double fraction = total_ > 0 ? std::min (static_cast<double> (bytes) / total_, 1.0) : 0.0;
    label_ = total_ > 0 ? format_text ("Loading %s: %.0f %%", name_.c_str (), fraction * 100)
                        : format_text ("Loading %s: %.1f MB", name_.c_str (),
                                       static_cast<double> (bytes) / 1e6);
    line_.show (label_);
    if (!window_) return;
    bar_->value (static_cast<float> (fraction));
    bar_->copy_label (toolkit::plain_label (label_).c_str ());
    Fl::check ();
}

} // namespace ostrand::viewer
