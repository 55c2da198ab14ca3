// The index of a network's places.
#include "document/layout_index.h"

#include "document/hit_test.h"
#include "document/network.h"

namespace ostrand::document {
namespace {

Extent box_of (const Char& text, Point place) {
    const float left = place.x + text.x ();
    const float base = place.y + text.y ();
    const auto high = static_cast<float> (text.get_height ());
    // Some texts stand on their place, others hang from it.
    return {left, base - high, left + text.get_width (), base + high};
}

/// Where a node can be seen or hit.
Extent reach_of (const Node& n) {
    Extent reach = n.extent ().widened (node_margin);
    if (const Line* const residu = n.residu ()) {
        reach.join (box_of (*residu, {}).widened (residu_margin));
    }
    return reach;
}

Extent reach_of (const Arque& a) {
    const ArcGeometry& at = a.geometry ();
    Extent reach = a.extent ().widened (arc_margin);
    for (const auto& [text, place] :
         {std::pair<const Char*, Point>{a.label (), at.label_pos},
          std::pair<const Char*, Point>{a.residu (), at.residu_pos},
          std::pair<const Char*, Point>{a.stoech_src (), at.label_pos},
          std::pair<const Char*, Point>{a.stoech_dest (), at.residu_pos}}) {
        if (text != nullptr) reach.join (box_of (*text, place).widened (stoichiometry_offset));
    }
    return reach;
}

} // namespace

Point far_edge (const Node& n) {
    return {n.x () + n.get_width () / 2, n.y () + static_cast<float> (n.get_height ()) / 2};
}

Point far_edge (const Arque& a) {
    // Label places lie a little right of and below what is meant by them.
    constexpr float back = 2;
    constexpr float up = 3;
    Point edge;
    const auto take = [&edge] (const Char* text, Point place) {
        if (text == nullptr) return;
        edge.x = std::max (edge.x, place.x - back + text->x () + text->get_width ());
        edge.y = std::max (edge.y,
                           place.y - up + text->y () + static_cast<float> (text->get_descent ()));
    };
    take (a.label (), a.geometry ().label_pos);
    take (a.residu (), a.geometry ().residu_pos);
    return edge;
}

Point far_edge (const Compart& c) {
    return {c.x () + c.get_width (), c.y () + static_cast<float> (c.get_height ())};
}

LayoutIndex::LayoutIndex (Network& network) {
    const auto count =
        static_cast<std::size_t> (network.nb_nodes () + network.nb_comp () + network.count_arcs ());
    objects_.reserve (count);
    sizes_.reserve (count);
    for (const auto& c : network.comps ()) update (*c);
    for (const auto& n : network.nodes ()) {
        update (*n);
        for (const auto& a : n->arcs ()) update (*a);
    }
}

LayoutIndex::~LayoutIndex () {
    for (GraphBase* const g : objects_) {
        if (g != nullptr) g->index_place_ = GraphBase::nowhere;
    }
}

void LayoutIndex::update (GraphBase& g) {
    if (g.index_place_ == GraphBase::nowhere) {
        if (free_.empty ()) {
            g.index_place_ = static_cast<std::uint32_t> (objects_.size ());
            objects_.push_back (&g);
        } else {
            g.index_place_ = free_.back ();
            free_.pop_back ();
            objects_[g.index_place_] = &g;
        }
    }
    const std::uint32_t number = g.index_place_;
    Point edge;
    if (g.kind () == CharKind::node) {
        const auto& n = static_cast<const Node&> (g);
        edge = document::far_edge (n);
        grid_.put (number, reach_of (n));
    } else if (g.kind () == CharKind::arque) {
        const auto& a = static_cast<const Arque&> (g);
        edge = document::far_edge (a);
        grid_.put (number, reach_of (a));
    } else {
        edge = document::far_edge (static_cast<const Compart&> (g));
    }
    // What is no number counts for nothing.
    sizes_.set (number, {std::max (0.0F, edge.x), std::max (0.0F, edge.y)});
}

void LayoutIndex::remove (GraphBase& g) {
    if (g.index_place_ == GraphBase::nowhere) return;
    grid_.take_out (g.index_place_);
    sizes_.set (g.index_place_, {});
    objects_[g.index_place_] = nullptr;
    free_.push_back (g.index_place_);
    g.index_place_ = GraphBase::nowhere;
}

bool LayoutIndex::near (const Extent& box, std::vector<GraphBase*>& found) const {
    std::vector<std::uint32_t> numbers;
    if (!grid_.near (box, numbers)) return false;
    found.reserve (found.size () + numbers.size ());
    for (const std::uint32_t number : numbers) found.push_back (objects_[number]);
    return true;
}

} // namespace ostrand::document
