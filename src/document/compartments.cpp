// How compartments lie to one another, and which nodes they hold.
#include "document/network.h"

#include "base/report.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace ostrand::document {
namespace {

enum class Relation { disjoint, first_inside, second_inside, overlap };

/// The intervals [a0, a1) and [b0, b1) of one axis: which of them holds the other.
struct AxisRelation {
    bool disjoint;
    bool first_inside;
    bool second_inside;
};

AxisRelation axis_relation (float a0, float a1, float b0, float b1) {
    return {a1 <= b0 || b1 <= a0, b0 <= a0 && a1 <= b1, a0 <= b0 && b1 <= a1};
}

Relation rectangle_relation (const Compart& a, const Compart& b) {
    const AxisRelation h = axis_relation (a.x (), a.x () + a.width (), b.x (), b.x () + b.width ());
    const AxisRelation v =
        axis_relation (a.y (), a.y () + a.height (), b.y (), b.y () + b.height ());
    if (h.disjoint || v.disjoint) return Relation::disjoint;
    if (h.first_inside && v.first_inside) return Relation::first_inside;
    if (h.second_inside && v.second_inside) return Relation::second_inside;
    return Relation::overlap;
}

/// A point strictly inside, the outline itself left out.
bool strictly_inside (const Compart& c, float px, float py) {
    if (c.shape () != shape::rectangle) return c.contains (px, py);
    return c.x () < px && px < c.x () + c.width () && c.y () < py && py < c.y () + c.height ();
}

/// The outline of an ellipse, degree by degree, against another compartment.
Relation sampled_relation (const Compart& ellipse, const Compart& other) {
    const float a = ellipse.width () / 2;
    const float b = ellipse.height () / 2;
    const float cx = ellipse.x () + a;
    const float cy = ellipse.y () + b;
    bool some_inside = false;
    bool some_outside = false;
    for (int degree = 90; degree <= 450; ++degree) {
        const float angle = static_cast<float> (degree) * (std::numbers::pi_v<float> / 180);
        const bool inside =
            strictly_inside (other, cx + a * std::cos (angle), cy + b * std::sin (angle));
        some_inside = some_inside || inside;
        some_outside = some_outside || !inside;
        if (some_inside && some_outside) return Relation::overlap;
    }
    if (some_inside) return Relation::first_inside;
    const bool holds_centre = strictly_inside (ellipse, other.x () + other.width () / 2,
                                               other.y () + other.height () / 2);
    return holds_centre ? Relation::second_inside : Relation::disjoint;
}

Relation relation (const Compart& a, const Compart& b) {
    const bool a_is_box = a.shape () == shape::rectangle;
    const bool b_is_box = b.shape () == shape::rectangle;
    if (a_is_box && b_is_box) return rectangle_relation (a, b);
    // Boxes that keep clear of each other hold shapes that do.
    if (rectangle_relation (a, b) == Relation::disjoint) return Relation::disjoint;
    if (!a_is_box) return sampled_relation (a, b);
    switch (sampled_relation (b, a)) {
    case Relation::first_inside: return Relation::second_inside;
    case Relation::second_inside: return Relation::first_inside;
    case Relation::disjoint: return Relation::disjoint;
    case Relation::overlap: break;
    }
    return Relation::overlap;
}

} // namespace

bool Network::check_compartments () {
    bool changed = false;
    for (std::size_t i = 0; i < comps_.size (); ++i) {
        for (std::size_t j = i + 1; j < comps_.size (); ++j) {
            switch (relation (*comps_[i], *comps_[j])) {
            case Relation::disjoint: break;
            case Relation::overlap: report_message ("Compartment overlap."); break;
            case Relation::first_inside:
            case Relation::second_inside:
                if (comps_[j]->area () <= comps_[i]->area ()) break;
                std::swap (comps_[i], comps_[j]);
                changed = true;
            }
        }
    }
    for (const auto& n : nodes_) changed = assign_compart (*n) || changed;
    return changed;
}

} // namespace ostrand::document
