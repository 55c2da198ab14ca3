// The line above the canvas.
#include "shell/notice_strip.h"

#include "toolkit/text_fit.h"

namespace ostrand::shell {
namespace {

constexpr int margin = 3;
constexpr int show_width = 70;
constexpr int close_width = 24;
constexpr Fl_Color ground = 0xfff2c000; // of a note that warns of nothing

void make_flat (Fl_Button& button) {
    button.box (FL_THIN_UP_BOX);
    button.color (ground);
    button.labelcolor (FL_BLACK);
    button.labelsize (12);
    button.visible_focus (0);
}

} // namespace

NoticeStrip::NoticeStrip (int x, int y, int w, int h) : Fl_Group (x, y, w, h) {
    box (FL_FLAT_BOX);
    color (ground);
    const int inner = h - 2 * margin;
    const int close_x = x + w - margin - close_width;
    const int show_x = close_x - margin - show_width;
    text_ = new Fl_Box (x + 2 * margin, y, show_x - x - 3 * margin, h);
    text_->align (FL_ALIGN_LEFT | FL_ALIGN_INSIDE | FL_ALIGN_CLIP);
    text_->labelsize (12);
    text_->labelcolor (FL_BLACK);
    show_button_ = new Fl_Button (show_x, y + margin, show_width, inner, "Show");
    close_button_ = new Fl_Button (close_x, y + margin, close_width, inner, "\xc3\x97");
    make_flat (*show_button_);
    make_flat (*close_button_);
    show_button_->tooltip ("go to it; each further click to the next one");
    close_button_->tooltip ("close this line");
    show_button_->callback (
        [] (Fl_Widget*, void* strip) { static_cast<NoticeStrip*> (strip)->on_show (); }, this);
    close_button_->callback (
        [] (Fl_Widget*, void* strip) { static_cast<NoticeStrip*> (strip)->on_close (); }, this);
    end ();
    resizable (text_);
    hide ();
}

void NoticeStrip::show_text (const std::string& text) {
    if (text_->label () != nullptr && toolkit::plain_label (text) == text_->label ()) return;
    text_->copy_label (toolkit::plain_label (text).c_str ());
    redraw ();
}

} // namespace ostrand::shell
