// Placing the children of a pack.
#include "shell/pack.h"

#include <FL/Fl.H>
#include <FL/fl_draw.H>
#include <algorithm>

namespace ostrand::shell {

My_Pack::My_Pack (int x, int y, int w, int h, const char* label) : Fl_Pack (x, y, w, h, label) {
    resizable (nullptr);
}

void My_Pack::resize (int x, int y, int w, int h) {
    Fl_Widget::resize (x, y, w, h);
    place_children ();
    redraw ();
}

void My_Pack::place_children () {
    const bool across = horizontal () != 0;
    const int left = x () + Fl::box_dx (box ());
    const int top = y () + Fl::box_dy (box ());
    const int wide = w () - Fl::box_dw (box ());
    const int high = h () - Fl::box_dh (box ());
    int taken = 0;
    int shown = 0;
    for (int i = 0; i < children (); ++i) {
        const Fl_Widget* const c = child (i);
        if (!c->visible ()) continue;
        ++shown;
        if (c != resizable ()) taken += across ? c->w () : c->h ();
    }
    if (shown > 1) taken += (shown - 1) * spacing ();
    const int room = std::max ((across ? wide : high) - taken, 0);
    int at = (across ? left : top) - children_offset;
    for (int i = 0; i < children (); ++i) {
        Fl_Widget* const c = child (i);
        if (!c->visible ()) continue;
        const bool grows = c == resizable ();
        const int new_x = across ? at : left;
        const int new_y = across ? top : at;
        const int new_w = across ? (grows ? room : c->w ()) : wide;
        const int new_h = across ? high : (grows ? room : c->h ());
        if (new_x != c->x () || new_y != c->y () || new_w != c->w () || new_h != c->h ()) {
            c->resize (new_x, new_y, new_w, new_h);
            c->damage (FL_DAMAGE_ALL);
        }
        at += (across ? new_w : new_h) + spacing ();
    }
}

void My_Pack::fill_gap (int at, int length) const {
    if (length <= 0) return;
    fl_color (color ());
    if (horizontal () != 0)
        fl_rectf (at, y (), length, h ());
    else
        fl_rectf (x (), at, w (), length);
}

void My_Pack::draw () {
    const bool across = horizontal () != 0;
    const bool all = (damage () & ~FL_DAMAGE_CHILD) != 0;
    if (all) draw_box ();
    place_children ();
    const bool clears = clear_gaps && spacing () != 0 && box () != FL_NO_BOX;
    int end = across ? x () : y ();
    for (int i = 0; i < children (); ++i) {
        Fl_Widget& c = *child (i);
        if (!c.visible ()) continue;
        const int begin = across ? c.x () : c.y ();
        if (clears) fill_gap (end, begin - end);
        if (all) {
            draw_child (c);
            draw_outside_label (c);
        } else {
            update_child (c);
        }
        end = begin + (across ? c.w () : c.h ());
    }
    if (clears) fill_gap (end, (across ? x () + w () : y () + h ()) - end);
}

} // namespace ostrand::shell
