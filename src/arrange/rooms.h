// Where nodes may stand when compartments have their boxes.
// Layer: arrange, internal.
#pragma once
#include "arrange/drawing.h"

#include <vector>

namespace ostrand::arrange {

/// A compartment's box while its nodes move.
struct Room {
    Box inside;      // its own nodes stand wholly in it
    Box outside;     // nodes of other compartments keep out of it; no width: there is no box
    int parent = -1; // the room around it
};

/// The rooms of a drawing, numbered as the compartments of its nodes. Without any, nodes may stand
/// everywhere.
class Rooms {
  public:
    Rooms () = default;
    explicit Rooms (std::vector<Room> rooms) : rooms_ (std::move (rooms)) {}

    /// How far a node is from where it may stand: out of its own room, or in a strange one. 0 when
    /// it stands right.
    double misfit (const DrawnNode& node) const;
    /// The place nearest to where the node stands that is wholly in its own room.
    Point nearest (const DrawnNode& node) const;
    bool empty () const { return rooms_.empty (); }

  private:
    bool is_around (int room, int compartment) const;

    std::vector<Room> rooms_;
};

} // namespace ostrand::arrange
