// LayoutIndex: what of a laid out network stands where, and how far the network reaches.
// Layer: document.
#pragma once
#include "document/places.h"
#include "document/size_tree.h"
#include "document/spatial_grid.h"

#include <vector>

namespace ostrand::document {

class Arque;
class Compart;
class GraphBase;
class Network;
class Node;

/// Right and bottom edge of what an object adds to its network's size; 0 where it adds nothing. Of
/// an arc only label and residu count.
Point far_edge (const Node& n);
Point far_edge (const Arque& a);
Point far_edge (const Compart& c);

/// The index of one network's nodes, arcs and compartments. It keeps a number in each object.
class LayoutIndex {
  public:
    /// Takes in all that is there.
    explicit LayoutIndex (Network& network);
    ~LayoutIndex ();
    LayoutIndex (const LayoutIndex&) = delete;
    LayoutIndex& operator= (const LayoutIndex&) = delete;

    /// An object is new, or its place, size or texts are not what they were.
    void update (GraphBase& g);
    void remove (GraphBase& g);
    /// Nodes and arcs that may be painted or hit in a box, in no particular order and with some
    /// that stand near it. False, with nothing given, when a walk over all costs no more.
    bool near (const Extent& box, std::vector<GraphBase*>& found) const;
    /// Right and bottom edge of all.
    Point far_edge () const { return sizes_.farthest (); }

  private:
    SpatialGrid grid_;
    SizeTree sizes_;
    std::vector<GraphBase*> objects_; // by number; null for a free one
    std::vector<std::uint32_t> free_;
};

} // namespace ostrand::document
