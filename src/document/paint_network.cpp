// How a network is painted: what of it, and in which order.
#include "document/layout_index.h"
#include "document/network.h"
#include "document/paint_style.h"

#include <algorithm>

namespace ostrand::document {
namespace {

/// Grips, outlines and the pointer's mark reach so far out of a compartment.
constexpr float compart_reach = 16;

/// What is painted of a network, in the order of painting.
struct Visible {
    std::vector<const Arque*> reactions; // under the other arcs
    std::vector<const Arque*> links;
    std::vector<const Node*> nodes; // on top

    void take (const Arque& a) { (is_reaction (a.type ()) ? reactions : links).push_back (&a); }
};

} // namespace

void Network::paint_contents (PaintDevice& device, const PaintStyle& style, float left,
                              float top) const {
    const auto sees = [&style, left, top] (const Extent& box) {
        return style.sees (box.moved (left, top));
    };
    for (const auto& c : comps_) {
        if (sees (c->extent ().widened (compart_reach))) c->paint (device, style, left, top);
    }
    Visible visible;
    std::vector<GraphBase*> found;
    const bool is_found =
        style.clip && is_laid_out () && index ().near (style.clip->moved (-left, -top), found);
    if (is_found) {
        for (const GraphBase* const g : found) {
            if (!sees (g->extent ())) continue;
            if (g->kind () == CharKind::node) {
                visible.nodes.push_back (static_cast<const Node*> (g));
            } else {
                visible.take (static_cast<const Arque&> (*g));
            }
        }
        const auto arc_place = [this] (const Arque* a) { return walk_place (*a); };
        std::ranges::sort (visible.reactions, {}, arc_place);
        std::ranges::sort (visible.links, {}, arc_place);
        std::ranges::sort (visible.nodes, {}, [this] (const Node* n) { return place_of (*n); });
    } else {
        for (const auto& n : nodes_) {
            if (sees (n->extent ())) visible.nodes.push_back (n.get ());
            for (const auto& a : n->arcs_) {
                if (sees (a->extent ())) visible.take (*a);
            }
        }
    }
    for (const Arque* const a : visible.reactions) a->paint (device, style, left, top);
    for (const Arque* const a : visible.links) a->paint (device, style, left, top);
    for (const Node* const n : visible.nodes) n->paint (device, style, left, top);
}

void Network::paint (PaintDevice& device, const PaintStyle& style, float left, float top) const {
    paint_contents (device, style, left + x_, top + y_ - align_shift ());
}

} // namespace ostrand::document
