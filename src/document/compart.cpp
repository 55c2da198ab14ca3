// A compartment: its size, kind and what it holds, and how it follows the pointer.
#include "document/compart.h"

#include "document/network.h"
#include "document/numbers.h"

#include <algorithm>

namespace ostrand::document {
namespace {

/// By how much a compartment is wider than its label, at least.
constexpr float label_margin = 10;
/// Least height, and least width without a label.
constexpr float least_size = 30;

} // namespace

Compart::Compart (int new_shape, float new_x, float new_y, float new_width, float new_height)
    : width_ (new_width), height_ (new_height), shape_ (new_shape) {
    x_ = new_x;
    y_ = new_y;
    color_ = 4;
}

Compart::~Compart () {
    if (!goes_with_all_) drop_incoming ();
    drop_texts ();
}

bool Compart::set_shape (int new_shape) {
    const bool changed = shape_ != new_shape;
    shape_ = new_shape;
    return changed;
}

bool Compart::set_size (float new_width, float new_height) {
    if (new_width == width_ && new_height == height_) return false;
    width_ = new_width;
    height_ = new_height;
    note ();
    return true;
}

bool Compart::set_user_values (const std::array<int, 5>& values) {
    const bool changed = user_values_ != values;
    user_values_ = values;
    return changed;
}

bool Compart::contains (float px, float py) const {
    if (shape_ == shape::rectangle) {
        return x_ <= px && px < x_ + width_ && y_ <= py && py < y_ + height_;
    }
    const float a = width_ / 2;
    const float b = height_ / 2;
    if (!(a > 0) || !(b > 0)) return false;
    const float dx = px - (x_ + a);
    const float dy = py - (y_ + b);
    return dx * dx / (a * a) + dy * dy / (b * b) < 1;
}

double Compart::area () const {
    constexpr double quarter_of_pi = 0.7853982;
    const double box = static_cast<double> (width_) * static_cast<double> (height_);
    return shape_ == shape::rectangle ? box : box * quarter_of_pi;
}

std::unique_ptr<Char> Compart::clone (Char* new_parent) const {
    auto copy = std::make_unique<Compart> (shape_, x_, y_, width_, height_);
    adopt (*copy, new_parent);
    copy->color_ = color_;
    copy->foggy_ = foggy_;
    copy->set_selectable (selectable ());
    copy->set_thickness (thickness ());
    copy->user_values_ = user_values_;
    if (label_) copy->take_label (label_->clone (copy.get ()));
    if (residu_) copy->take_residu (residu_->copy (copy.get ()));
    return copy;
}

float Compart::get_width () const {
    return label_ ? std::max (width_, label_->get_width () + label_margin) : width_;
}

int Compart::get_height () const { return to_pixels (height_); }

void Compart::lay_out () {
    GraphBase::lay_out ();
    width_ = get_width ();
    if (!label_) return;
    // Relative to the corner; the base line stands on the inner band.
    constexpr float inner_band = 10;
    place (*label_, (width_ - label_->get_width ()) / 2,
           static_cast<float> (get_height ()) - inner_band);
}

bool Compart::set_position (float new_x, float new_y) {
    if (new_x == x_ && new_y == y_) return false;
    x_ = new_x;
    y_ = new_y;
    note ();
    return true;
}

bool Compart::drag (Edge edge, float dx, float dy) {
    const float least_w = label_ ? label_->get_width () + label_margin : least_size;
    float new_x = x_;
    float new_y = y_;
    float new_w = get_width ();
    float new_h = height_;
    switch (edge) {
    case Edge::none:
        new_x += dx;
        new_y += dy;
        break;
    case Edge::left:
        new_w -= dx;
        new_x += dx;
        break;
    case Edge::right: new_w += dx; break;
    case Edge::top:
        new_h -= dy;
        new_y += dy;
        break;
    case Edge::bottom: new_h += dy; break;
    }
    const bool wide = edge == Edge::left || edge == Edge::right;
    const bool high = edge == Edge::top || edge == Edge::bottom;
    if ((wide && new_w < least_w) || (high && new_h < least_size)) return false;
    set_position (new_x, new_y);
    set_size (new_w, new_h);
    return true;
}

void Compart::text (std::string& out) const {
    if (label_) label_->text (out);
}

void Compart::print_plain (std::string& out) const {
    if (label_) label_->print_plain (out);
}

Anchor Compart::anchor (unsigned) const {
    return {x_, y_, to_pixels (get_width () * 0.5F), get_height () / 2};
}

Extent Compart::extent () const {
    return {x_, y_, x_ + get_width (), y_ + static_cast<float> (get_height ())};
}

bool Compart::set_kind (int k) {
    if (k != 0 && k != 1) return false;
    return set_shape (k == 0 ? shape::rectangle : shape::ellipse);
}

void Compart::destroy () {
    if (destroyed_ || network_ == nullptr) return;
    network_->detach_compart (*this); // and with it the last owner
}

} // namespace ostrand::document
