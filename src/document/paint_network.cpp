// How a network is laid out and painted.
#include "document/network.h"
#include "document/paint_device.h"

#include <algorithm>
#include <array>
#include <unordered_map>
#include <utility>
#include <vector>

namespace ostrand::document {
namespace {

/// What of an arc's geometry other arcs and the picture depend on.
std::array<float, 12> fingerprint (const Arque& arc) {
    return {arc.start.x,     arc.start.y,     arc.end.x,        arc.end.y,
            arc.mark_a.x,    arc.mark_a.y,    arc.mark_b.x,     arc.mark_b.y,
            arc.label_pos.x, arc.label_pos.y, arc.residu_pos.x, arc.residu_pos.y};
}

/// Number of arcs between an arc and the node that it ends on at last, for arcs that end on arcs;
/// arcs that end on one another in a circle count from anywhere in it.
class Depths {
  public:
    int of (const Arque& arc) {
        if (!arc.dest_arc ()) return 0;
        std::vector<const Arque*> way;
        int depth = 0;
        for (const Arque* on = &arc; on->dest_arc (); on = on->dest_arc ()) {
            const auto [known, is_new] = depths_.emplace (on, 0);
            if (!is_new) {
                depth = known->second;
                break;
            }
            way.push_back (on);
        }
        for (auto on = way.rbegin (); on != way.rend (); ++on) depths_[*on] = ++depth;
        return depths_[&arc];
    }

  private:
    std::unordered_map<const Arque*, int> depths_;
};

/// Lays out all arcs. The first walk, in network order, settles on which side parallel arcs go. An
/// arc that ends on an arc needs that one's place, which later walks, from the nodes outwards,
/// find.
void layout_arcs (const std::vector<Arque*>& arcs) {
    constexpr int most_walks = 8; // parallel arcs settle in two; only circles of arcs never do
    for (Arque* const arc : arcs) arc->paint (0, 0, false);
    Depths depths;
    std::vector<std::pair<int, Arque*>> by_depth;
    by_depth.reserve (arcs.size ());
    for (Arque* const arc : arcs) by_depth.emplace_back (depths.of (*arc), arc);
    std::ranges::stable_sort (by_depth, {}, &std::pair<int, Arque*>::first);
    bool changed = true;
    for (int walk = 0; changed && walk < most_walks; ++walk) {
        changed = false;
        for (const auto& [depth, arc] : by_depth) {
            const auto before = fingerprint (*arc);
            arc->paint (0, 0, false);
            changed = changed || before != fingerprint (*arc);
        }
    }
}

/// Wholly beside the clip window, of which a network without one has none.
bool is_outside (const Network& network, const Extent& box, float left, float top) {
    const float x = left - static_cast<float> (network.clip_x);
    const float y = top - static_cast<float> (network.clip_y);
    return box.right + x < 0 || box.bottom + y < 0 ||
           box.x + x > static_cast<float> (network.clip_w) ||
           box.y + y > static_cast<float> (network.clip_h);
}

} // namespace

void Network::layout () {
    for (const auto& c : comps_) c->paint (0, 0, false);
    for (const auto& n : nodes_) n->paint (0, 0, false);
    layout_arcs (all_arcs ());
    // The texts of arcs have their places now, so the network's own size may be another.
    width_stamp = height_stamp = ascent_stamp = descent_stamp = 0;
}

void Network::paint (float ox, float oy, bool draw) {
    if (!draw) {
        layout ();
        return;
    }
    const auto h = static_cast<float> (get_height ());
    const float left = ox + x;
    const float top = oy + y - (align == 1 ? h / 2 : align == 0 ? h : 0);
    for (const auto& c : comps_) c->paint (left, top, true);
    for (const bool reactions : {true, false}) {
        for (const auto& n : nodes_) {
            for (const auto& arc : n->arcs ()) {
                if (is_reaction (arc->type) != reactions) continue;
                arc->paint (left, top, false);
                if (!is_outside (*this, arc->extent (), left, top)) arc->paint (left, top, true);
            }
        }
    }
    for (const auto& n : nodes_)
        if (!is_outside (*this, n->extent (), left, top)) n->paint (left, top, true);
}

} // namespace ostrand::document
