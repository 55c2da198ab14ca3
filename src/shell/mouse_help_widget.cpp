// Painting of the mouse help.
#include "shell/mouse_help_widget.h"

#include "shell/images.h"

#include <FL/Fl.H>
#include <FL/fl_draw.H>
#include <algorithm>

namespace ostrand::shell {
namespace {

constexpr int rows = 4;
constexpr int buttons = 3;
constexpr int row_height = 18;
constexpr int keyboard_width = 56;
constexpr int mouse_width = 44;
constexpr int margin = 1;
constexpr int text_size = 10;
constexpr int text_margin = 4;

const char* const keyboard_images[rows] = {"kbd.png", "kbd-shift.png", "kbd-ctrl.png",
                                           "kbd-shift-ctrl.png"};
const char* const mouse_images[buttons + 1] = {"hp-mouse.png", "hp-mouse-1.png", "hp-mouse-2.png",
                                               "hp-mouse-3.png"};

} // namespace

MouseHelp::MouseHelp (int x, int y, int w, int h) : Fl_Widget (x, y, w, h) {
    box (FL_FLAT_BOX);
    color (FL_BACKGROUND_COLOR);
}

void MouseHelp::update (const editor::MouseHelpSlots* slots, int row) {
    bool changed = false;
    if (slots != nullptr) {
        for (std::size_t i = 0; i < words_.size (); ++i) {
            if (words_[i] == (*slots)[i]) continue;
            words_[i] = (*slots)[i];
            changed = true;
        }
    }
    int new_row = modifier_row_;
    int new_button = button_;
    if (row == editor::no_button_row)
        new_button = 0;
    else if (row >= editor::lit_button_row (1))
        new_button = std::clamp (row >> 4, 0, buttons);
    else
        new_row = std::clamp (row, 0, rows - 1);
    changed = changed || new_row != modifier_row_ || new_button != button_;
    modifier_row_ = new_row;
    button_ = new_button;
    if (changed) redraw ();
}

void MouseHelp::draw () {
    draw_box ();
    const int top = y () + std::max ((h () - rows * row_height) / 2, 0);
    const int left = x () + keyboard_width + 2 * margin;
    const int column = (w () - keyboard_width - mouse_width - 4 * margin) / buttons;
    if (Fl_Image* const keyboard = interface_image (keyboard_images[modifier_row_]))
        keyboard->draw (x () + margin, top);
    if (Fl_Image* const mouse = interface_image (mouse_images[button_]))
        mouse->draw (x () + w () - mouse_width - margin, top);
    const Fl_Color ground = color ();
    // The row that holds now stands out, and in it the button that is down.
    fl_color (fl_color_average (FL_BACKGROUND2_COLOR, ground, 0.7F));
    fl_rectf (left, top + modifier_row_ * row_height, buttons * column, row_height);
    if (button_ > 0) {
        fl_color (fl_color_average (FL_SELECTION_COLOR, ground, 0.25F));
        fl_rectf (left + (button_ - 1) * column, top, column, rows * row_height);
    }
    fl_color (fl_color_average (FL_FOREGROUND_COLOR, ground, 0.25F));
    for (int row = 0; row <= rows; ++row)
        fl_xyline (left, top + row * row_height - (row == rows ? 1 : 0), left + buttons * column);
    for (int button = 0; button <= buttons; ++button)
        fl_yxline (left + button * column, top, top + rows * row_height - 1);
    fl_font (FL_HELVETICA, text_size);
    for (int button = 1; button <= buttons; ++button) {
        for (int row = 0; row < rows; ++row) {
            const std::string& word = words_[editor::mouse_help_slot (button, row)];
            if (word.empty ()) continue;
            fl_color (row == modifier_row_ ? FL_FOREGROUND_COLOR
                                           : fl_color_average (FL_FOREGROUND_COLOR, ground, 0.6F));
            fl_push_clip (left + (button - 1) * column, top + row * row_height, column, row_height);
            fl_draw (word.c_str (), left + (button - 1) * column + text_margin,
                     top + row * row_height, column - text_margin, row_height, FL_ALIGN_LEFT);
            fl_pop_clip ();
        }
    }
}

} // namespace ostrand::shell
