// Where does the text of an arc lie on nothing?
#include "tidy/labels.h"

#include <algorithm>
#include <tuple>
#include <vector>

namespace ostrand::tidy {
namespace {

using document::Arque;
using document::Extent;
using document::Line;
using document::Point;

constexpr float step = 6;         // between tried places
constexpr int most_rings = 10;    // of them around a text's own place
constexpr float square_side = 14; // of a reaction
constexpr float page_margin = 2;
constexpr float text_weight = 0.5F; // of a text under a text: both may still be read

Extent box_at (const Line& text, Point place) {
    return {place.x, place.y - static_cast<float> (text.get_ascent ()), place.x + text.get_width (),
            place.y + static_cast<float> (text.get_descent ())};
}

float common_area (const Extent& a, const Extent& b) {
    const float width = std::min (a.right, b.right) - std::max (a.x, b.x);
    const float height = std::min (a.bottom, b.bottom) - std::max (a.y, b.y);
    return width > 0 && height > 0 ? width * height : 0;
}

struct Ground {
    Extent page;               // all texts should lie on it
    std::vector<Extent> taken; // nodes and squares
    std::vector<Extent> texts; // that have their places
};

/// How much of a text lies on others and beyond the page.
float covered (const Extent& box, const Ground& ground) {
    float area = 0;
    for (const Extent& other : ground.taken) area += common_area (box, other);
    for (const Extent& other : ground.texts) area += text_weight * common_area (box, other);
    return area + (box.right - box.x) * (box.bottom - box.y) - common_area (box, ground.page);
}

/// The offset at which a text lies on the least, the nearest of equals.
Point best_offset (const Line& text, Point place, const Ground& ground) {
    Point best;
    float least = covered (box_at (text, place), ground);
    for (int ring = 1; ring <= most_rings && least > 0; ++ring) {
        for (int y = -ring; y <= ring; ++y) {
            // The border of a square around the place.
            const int stride = y == -ring || y == ring ? 1 : 2 * ring;
            for (int x = -ring; x <= ring; x += stride) {
                const Point offset{step * static_cast<float> (x), step * static_cast<float> (y)};
                const float area =
                    covered (box_at (text, {place.x + offset.x, place.y + offset.y}), ground);
                if (area >= least) continue;
                least = area;
                best = offset;
            }
        }
    }
    return best;
}

} // namespace

bool place_labels (document::Network& network) {
    Ground ground;
    std::vector<Extent>& taken = ground.taken;
    const auto widen = [&page = ground.page] (const Extent& box) {
        page.join ({page_margin, page_margin, box.right, box.bottom});
    };
    ground.page = {page_margin, page_margin, page_margin, page_margin};
    for (const auto& n : network.nodes ()) {
        const float w = n->get_width () / 2;
        const float h = static_cast<float> (n->get_height ()) / 2;
        taken.push_back ({n->x () - w, n->y () - h, n->x () + w, n->y () + h});
        widen (taken.back ());
    }
    for (const auto& c : network.comps ())
        widen ({c->x (), c->y (), c->x () + c->width (), c->y () + c->height ()});
    std::vector<Arque*> arcs = network.all_arcs ();
    for (const Arque* a : arcs) {
        if (document::is_reaction (a->type ()))
            taken.push_back ({a->x (), a->y (), a->x () + square_side, a->y () + square_side});
    }
    // By place: copies change the order of arcs.
    std::stable_sort (arcs.begin (), arcs.end (), [] (const Arque* a, const Arque* b) {
        const auto place = [] (const Arque* arc) {
            const document::ArcGeometry& at = arc->geometry ();
            return std::tuple (at.start.y, at.start.x, at.end.y, at.end.x);
        };
        return place (a) < place (b);
    });
    bool moved = false;
    for (Arque* a : arcs) {
        const auto put = [&] (document::Char* text, Point place) {
            if (text == nullptr || text->kind () != document::CharKind::line) return;
            Line& line = static_cast<Line&> (*text);
            const Point offset = best_offset (line, place, ground);
            ground.texts.push_back (box_at (line, {place.x + offset.x, place.y + offset.y}));
            moved = line.set_offset (offset.x, offset.y) || moved;
        };
        put (a->label (), a->geometry ().label_pos);
        put (a->residu (), a->geometry ().residu_pos);
    }
    return moved;
}

} // namespace ostrand::tidy
