// What is told of the program.
#include "shell/about_window.h"

#include "shell/images.h"

#include <FL/Fl.H>
#include <FL/Fl_Box.H>
#include <FL/Fl_Button.H>
#include <FL/Fl_Double_Window.H>
#include <FL/Fl_Image.H>

namespace ostrand::shell {
namespace {

constexpr int button_width = 80;
constexpr int button_height = 25;

void hide_window (Fl_Widget* widget, void*) { widget->window ()->hide (); }

void show_credits (Fl_Widget*, void*) {
    static Fl_Double_Window* const window = [] {
        auto* const made = new Fl_Double_Window (400, 160, "Contributors");
        auto* const text = new Fl_Box (10, 10, 380, 105,
                                       "                    Design:    the Ostrand team\n"
                                       "               Programming:    the Ostrand team\n"
                                       "             Documentation:    the Ostrand team\n"
                                       "\n"
                                       "Graphic User Interface:    FLTK 1.4.x  \n"
                                       "            PDF output:    libHaru");
        text->labelfont (FL_COURIER);
        text->labelsize (12);
        text->align (FL_ALIGN_INSIDE | FL_ALIGN_LEFT);
        auto* const close = new Fl_Button (310, 125, button_width, button_height, "Close");
        close->callback (hide_window);
        made->end ();
        made->set_non_modal ();
        return made;
    }();
    window->show ();
}

} // namespace

void show_about_window () {
    static Fl_Double_Window* const window = [] {
        auto* const made = new Fl_Double_Window (360, 430, "About Ostrand");
        auto* const text =
            new Fl_Box (0, 0, 360, 385, "\nOstrand   V2.0\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n");
        text->labelsize (18);
        text->image (interface_image ("about.png"));
        text->align (FL_ALIGN_INSIDE | FL_ALIGN_CENTER | FL_ALIGN_IMAGE_BACKDROP);
        auto* const credits = new Fl_Button (10, 390, button_width, button_height, "Credits");
        credits->callback (show_credits);
        auto* const close = new Fl_Button (270, 390, button_width, button_height, "Close");
        close->callback (hide_window);
        made->end ();
        made->set_non_modal ();
        return made;
    }();
    window->show ();
}

} // namespace ostrand::shell
