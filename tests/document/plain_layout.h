// Layout in its plain form: everything from nothing, walk after walk over all arcs until none
// changes. What the document lays out object by object must come to the same places.
#pragma once
#include "document/network.h"

#include <map>

namespace ostrand::testing {

struct PlainArc {
    document::ArcGeometry geometry;
    int side = 0;
    float x = 0;
    float y = 0;
};

/// Places of one network's arcs, and the network's size; its nested networks are laid out by the
/// document already.
class PlainLayout {
  public:
    explicit PlainLayout (const document::Network& network);

    const PlainArc& of (const document::Arque& a) const { return arcs_.at (&a); }
    float width () const;
    int height () const;

  private:
    void choose_side (const document::Arque& a);
    void compute (const document::Arque& a);
    document::Anchor anchor_of (const document::GraphBase& g, unsigned arc_type) const;

    const document::Network& network_;
    std::map<const document::Arque*, PlainArc> arcs_;
};

} // namespace ostrand::testing
