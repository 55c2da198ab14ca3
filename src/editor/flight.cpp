// Where is everything at a moment of a flight?
#include "editor/flight.h"

#include <algorithm>
#include <cmath>

namespace ostrand::editor {

using document::Compart;
using document::Extent;
using document::Network;
using document::Node;
using document::Point;

namespace {

Extent box_of (const Compart& c) {
    return {c.x (), c.y (), c.x () + c.width (), c.y () + c.height ()};
}

/// Slow at both ends.
float eased (double part) {
    const double t = std::clamp (part, 0.0, 1.0);
    return static_cast<float> (t * t * (3 - 2 * t));
}

} // namespace

FlightStart::FlightStart (const Network& network) {
    for (const auto& n : network.nodes ()) nodes[n.get ()] = {n->x (), n->y ()};
    for (const auto& c : network.comps ()) comparts[c.get ()] = box_of (*c);
}

Flight::Flight (const Network& network, const FlightStart& start, double now)
    : begin_ (now), picture_ (network.copy (nullptr)) {
    for (std::size_t i = 0; i < network.nodes ().size (); ++i) {
        const Node& n = *network.nodes ()[i];
        const Point to{n.x (), n.y ()};
        auto from = start.nodes.find (&n);
        if (from == start.nodes.end ()) from = start.nodes.find (n.master ());
        nodes_.push_back ({from == start.nodes.end () ? to : from->second, to});
        picture_->nodes ()[i]->selected = n.selected;
    }
    for (const auto& c : network.comps ()) {
        const Extent to = box_of (*c);
        const auto from = start.comparts.find (c.get ());
        comparts_.push_back ({from == start.comparts.end () ? to : from->second, to});
    }
    advance (now);
}

bool Flight::advance (double now) {
    const float part = eased ((now - begin_) / duration);
    const auto between = [part] (float from, float to) { return std::lerp (from, to, part); };
    for (std::size_t i = 0; i < nodes_.size (); ++i) {
        const auto& [from, to] = nodes_[i];
        picture_->nodes ()[i]->set_position (between (from.x, to.x), between (from.y, to.y));
    }
    for (std::size_t i = 0; i < comparts_.size (); ++i) {
        const auto& [from, to] = comparts_[i];
        const float x = between (from.x, to.x);
        const float y = between (from.y, to.y);
        picture_->comps ()[i]->set_position (x, y);
        picture_->comps ()[i]->set_size (between (from.right, to.right) - x,
                                         between (from.bottom, to.bottom) - y);
    }
    picture_->layout ();
    return now - begin_ < duration;
}

const Network& Flight::picture (const Network& network) const {
    picture_->set_origin (network.x (), network.y ());
    return *picture_;
}

} // namespace ostrand::editor
