// A compartment: its size, kind and what it holds.
#include "document/compart.h"

#include "document/network.h"
#include "document/numbers.h"

namespace ostrand::document {

Compart::Compart (int new_shape, float new_x, float new_y, float new_width, float new_height)
    : shape (new_shape) {
    x = new_x;
    y = new_y;
    width = new_width;
    height = new_height;
    color = 4;
}

Compart::~Compart () { drop_incoming (); }

bool Compart::contains (float px, float py) const {
    if (shape == shape::rectangle) {
        return x <= px && px < x + width && y <= py && py < y + height;
    }
    const float a = width / 2;
    const float b = height / 2;
    if (!(a > 0) || !(b > 0)) return false;
    const float dx = px - (x + a);
    const float dy = py - (y + b);
    return dx * dx / (a * a) + dy * dy / (b * b) < 1;
}

double Compart::area () const {
    const double box = static_cast<double> (width) * static_cast<double> (height);
    return shape == shape::rectangle ? box : box * 0.7853982; // a quarter of pi
}

std::unique_ptr<Char> Compart::clone (Char* new_parent) const {
    auto copy = std::make_unique<Compart> (shape, x, y, width, height);
    copy->parent = new_parent;
    copy->color = color;
    copy->font = font;
    copy->foggy = foggy;
    copy->selectable = selectable;
    copy->thickness = thickness;
    copy->user_values = user_values;
    if (label) copy->take_label (label->clone (copy.get ()));
    if (residu) copy->take_residu (residu->copy (copy.get ()));
    return copy;
}

float Compart::get_width () const {
    const unsigned now = document_state ().layout_generation;
    if (width_stamp == now) return width;
    if (label && label->get_width () + 10 > width) width = label->get_width () + 10;
    width_stamp = now;
    return width;
}

int Compart::get_height () const { return to_pixels (height); }

bool Compart::set_position (float new_x, float new_y) {
    x = new_x;
    y = new_y;
    mark_layout_dirty ();
    return true;
}

void Compart::text (std::string& out) const {
    if (label) label->text (out);
}

void Compart::print_plain (std::string& out) const {
    if (label) label->print_plain (out);
}

Popup* Compart::menu (int row) const {
    return document_state ().compart_menus[static_cast<std::size_t> (row) & 3U];
}

Anchor Compart::anchor (unsigned) const {
    return {x, y, to_pixels (get_width () * 0.5F), get_height () / 2};
}

Extent Compart::extent () const {
    return {x, y, x + get_width (), y + static_cast<float> (get_height ())};
}

bool Compart::set_kind (int k) {
    if (k != 0 && k != 1) return false;
    const int wanted = k == 0 ? shape::rectangle : shape::ellipse;
    const bool changed = shape != wanted;
    shape = wanted;
    return changed;
}

void Compart::destroy () {
    if (destroyed || network == nullptr) return;
    network->detach_compart (*this); // and with it the last owner
}

} // namespace ostrand::document
