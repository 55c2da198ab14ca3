// Automatic alignment: satellites of a reaction go to their places, arcs become straight.
#include "document/network.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <unordered_set>

namespace ostrand::document {
namespace {

constexpr double radians_per_degree = 3.14159265358979323846 / 180;
constexpr double near_enough = 1.8; // squared distance to the target
constexpr double occupied = 10;     // a target this close to another satellite is taken
constexpr double nearest_snap = 1;
constexpr double farthest_snap = 32;
constexpr int most_rounds = 6;
constexpr int most_passes = 5;
constexpr std::size_t most_reactions = 511;

struct Target {
    double x;
    double y;
};

double normalized (double degrees) {
    degrees = std::fmod (degrees, 360);
    return degrees < 0 ? degrees + 360 : degrees;
}

Target from_end (const Arque& a, double distance, double degrees) {
    const double radians = degrees * radians_per_degree;
    const Point end = a.geometry ().end;
    return {end.x + distance * std::cos (radians), end.y + distance * std::sin (radians)};
}

/// A node that hangs on a reaction by its only arc.
bool hangs_on (const Node& n, const Arque& r) {
    return n.nb_arcs () == 1 && n.arcs ().front ()->dest () == &r;
}

/// The reaction that a satellite hangs on; null for a node that is none.
Arque* reaction_of_satellite (const Node& n) {
    switch (n.type ()) {
    case node::protein:
    case node::shared_protein:
    case node::molecule:
    case node::shared_molecule: break;
    default: return nullptr;
    }
    if (n.nb_arcs () != 1 || n.network () == nullptr) return nullptr;
    for (const Arque* const b : n.incoming ()) {
        if (b->owner_network () == n.network ()) return nullptr;
    }
    return n.arcs ().front ()->dest_arc ();
}

bool is_taken (Target target, const Node& n, const Arque& a, const Arque& r) {
    return std::ranges::any_of (r.incoming (), [&] (const Arque* b) {
        const Node* const other = b->source ();
        if (other == &n || other->network () != n.network () || !hangs_on (*other, r) ||
            is_substrate_link (b->type ()) != is_substrate_link (a.type ())) {
            return false;
        }
        return std::hypot (other->x () - target.x, other->y () - target.y) <= occupied;
    });
}

/// Beside the reaction, where catalysts, inhibitors and so on stand.
Target modifier_target (const Node& n, const Arque& a, const Arque& r, double diff) {
    double reduced = normalized (r.geometry ().angle);
    if (reduced > 180) reduced -= 180;
    const double side_angle = diff <= 180 ? 270 : 90;
    const bool steep = reduced > 50 && reduced < 130;
    const double distance = steep ? n.get_width () / 2 + 20 : 30;
    return from_end (a, distance, side_angle + r.geometry ().angle);
}

/// Behind or before the reaction's mark, where further substrates and products stand.
Target reactant_target (const Node& n, const Arque& a, const Arque& r, double diff) {
    const bool substrate = is_substrate_link (a.type ());
    const Point end = a.geometry ().end;
    const Point far_end = substrate ? r.geometry ().start : r.geometry ().end;
    const double distance = std::hypot (end.x - far_end.x, end.y - far_end.y);
    double radius = std::clamp (distance / 1.5, 50.0, 100.0);
    const double delta = (radius - 50) / 2.5;
    Target target{};
    for (const double tried : {45.0, 70.0, 90.0, 110.0, 130.0}) {
        double degrees = tried - delta;
        if (substrate) {
            degrees = diff <= 180 ? degrees + 180 : 180 - degrees;
        } else if (diff <= 180) {
            degrees = -degrees;
        }
        target = from_end (a, radius, degrees + r.geometry ().angle);
        if (!is_taken (target, n, a, r)) break;
        radius += 25;
    }
    return target;
}

/// One arc's pull on n, whose other end stands at `other`.
bool snap_to (Node& n, Point other) {
    const double dx = std::abs (static_cast<double> (other.x) - n.x ());
    const double dy = std::abs (static_cast<double> (other.y) - n.y ());
    if (dy != 0 && dx >= nearest_snap && dx <= farthest_snap) {
        return n.set_position (other.x, n.y ());
    }
    if (dx != 0 && dy >= nearest_snap && dy <= farthest_snap) {
        return n.set_position (n.x (), other.y);
    }
    return false;
}

bool snap_to_neighbours (Node& n) {
    const std::vector<Arque*> incoming = n.network ()->arcs_to (n);
    bool moved = false;
    for (int round = 0; round < most_rounds; ++round) {
        bool moved_now = false;
        for (const auto& a : n.arcs ()) {
            const Node* const to = a->dest_node ();
            const Point other = to != nullptr ? Point{to->x (), to->y ()} : a->geometry ().end;
            moved_now = snap_to (n, other) || moved_now;
        }
        for (const Arque* const a : incoming) {
            moved_now = snap_to (n, {a->source ()->x (), a->source ()->y ()}) || moved_now;
        }
        if (!moved_now) break;
        moved = true;
    }
    return moved;
}

} // namespace

bool Network::align_node (Node& n, bool relayout, bool snap) {
    if (const Arque* const r = reaction_of_satellite (n)) {
        const Arque& a = *n.arcs ().front ();
        const double diff =
            normalized (static_cast<double> (a.geometry ().angle) - r->geometry ().angle);
        const bool reactant = is_substrate_link (a.type ()) || is_product_link (a.type ());
        const Target target =
            reactant ? reactant_target (n, a, *r, diff) : modifier_target (n, a, *r, diff);
        const double dx = n.x () - target.x;
        const double dy = n.y () - target.y;
        if (dx * dx + dy * dy < near_enough) return false;
        n.set_position (static_cast<float> (target.x + 0.5), static_cast<float> (target.y + 0.5));
        if (relayout) layout ();
        return true;
    }
    const bool is_receptor = n.group () == node::receptor_group;
    if (!snap || is_receptor || n.network () == nullptr || !snap_to_neighbours (n)) return false;
    if (relayout) layout ();
    return true;
}

bool Network::align_all () {
    bool moved = false;
    for (int pass = 0; pass < most_passes; ++pass) {
        bool moved_now = false;
        for (const auto& n : nodes_) moved_now = align_node (*n, false, true) || moved_now;
        layout ();
        if (!moved_now) break;
        moved = true;
    }
    return moved;
}

void Network::align_around (Node& n) {
    std::vector<Arque*> reactions;
    for (const auto& a : n.arcs ()) {
        if (is_reaction (a->type ())) reactions.push_back (a.get ());
    }
    for (Arque* const a : arcs_to (n)) {
        if (is_reaction (a->type ())) reactions.push_back (a);
    }
    if (reactions.size () > most_reactions) return;
    const std::unordered_set<const GraphBase*> wanted (reactions.begin (), reactions.end ());
    for (const auto& other : nodes_) {
        const bool touches = std::ranges::any_of (
            other->arcs (), [&] (const auto& a) { return wanted.contains (a->dest ()); });
        if (touches) align_node (*other, true, false);
    }
}

} // namespace ostrand::document
