// What a network's drawing is worth, counted plainly from what would be painted.
#pragma once
#include "document/network.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace ostrand::testing {

struct NetworkMeasures {
    int overlaps = 0; // pairs of nodes that overlap
    int covered = 0;  // squares of reactions that a node covers
    int off_page = 0; // nodes that begin left of or above the page, or end behind it
    int reactions = 0;
    int texts = 0;     // of arcs
    int texts_on = 0;  // of these, the ones that lie on a node
    int strangers = 0; // nodes that reach into a box that is not their compartment's
    double page_use = 0;
    double sides = 1; // longer side / shorter side
};

struct PlainBox {
    double left, top, right, bottom;
    bool meets (const PlainBox& o) const {
        return left < o.right && o.left < right && top < o.bottom && o.top < bottom;
    }
};

inline NetworkMeasures measure (document::Network& network) {
    NetworkMeasures m;
    network.layout ();
    const double width = network.get_width ();
    const double height = network.get_height ();
    std::vector<PlainBox> nodes;
    double area = 0;
    for (const auto& n : network.nodes ()) {
        const double w = n->get_width () / 2;
        const double h = n->get_height () / 2.0;
        const PlainBox box{n->x () - w, n->y () - h, n->x () + w, n->y () + h};
        for (const PlainBox& other : nodes) m.overlaps += box.meets (other) ? 1 : 0;
        nodes.push_back (box);
        area += 4 * w * h;
        if (box.left < 0 || box.top < 0 || box.right > width + 1 || box.bottom > height + 1) {
            ++m.off_page;
        }
    }
    for (const document::Arque* a : network.all_arcs ()) {
        if (!document::is_reaction (a->type ())) continue;
        ++m.reactions;
        const double turn = static_cast<double> (a->geometry ().angle) * std::acos (-1.0) / 180;
        const double reach = 7 * (std::fabs (std::cos (turn)) + std::fabs (std::sin (turn)));
        const double x = a->x () + 7;
        const double y = a->y () + 7;
        const PlainBox square{x - reach, y - reach, x + reach, y + reach};
        m.covered += std::any_of (nodes.begin (), nodes.end (),
                                  [&] (const PlainBox& box) { return box.meets (square); })
                         ? 1
                         : 0;
        area += 14 * 14;
    }
    for (const document::Arque* a : network.all_arcs ()) {
        const document::ArcGeometry& at = a->geometry ();
        for (const auto& [text, place] :
             {std::pair<const document::Char*, document::Point>{a->label (), at.label_pos},
              std::pair<const document::Char*, document::Point>{a->residu (), at.residu_pos}}) {
            if (text == nullptr) continue;
            const double x = place.x + text->x ();
            const double y = place.y + text->y ();
            const PlainBox box{x, y - text->get_ascent (), x + text->get_width (),
                               y + text->get_descent ()};
            ++m.texts;
            m.texts_on += std::any_of (nodes.begin (), nodes.end (),
                                       [&] (const PlainBox& node) { return box.meets (node); })
                              ? 1
                              : 0;
        }
    }
    for (const auto& n : network.nodes ()) {
        const double w = n->get_width () / 2;
        const double h = n->get_height () / 2.0;
        const PlainBox box{n->x () - w, n->y () - h, n->x () + w, n->y () + h};
        for (const auto& c : network.comps ()) {
            const bool around = c->contains (n->x (), n->y ());
            const PlainBox other{c->x (), c->y (), c->x () + c->width (), c->y () + c->height ()};
            m.strangers += !around && box.meets (other) && c->shape () == 8 ? 1 : 0;
            m.strangers += around && n->compart () == nullptr ? 1 : 0;
        }
    }
    m.page_use = area / std::max (width * height, 1.0);
    m.sides = std::max (width, height) / std::max (1.0, std::min (width, height));
    return m;
}

} // namespace ostrand::testing
