// What is connected with what?
#include "arrange/parts.h"

#include <algorithm>
#include <numeric>

namespace ostrand::arrange {
namespace {

std::size_t at (int i) { return static_cast<std::size_t> (i); }

/// Sets of numbers that can be joined; the smallest number stands for a set.
class Sets {
  public:
    explicit Sets (std::size_t count) : root_ (count) {
        std::iota (root_.begin (), root_.end (), 0);
    }
    int find (int n) {
        while (root_[at (n)] != n) n = root_[at (n)] = root_[at (root_[at (n)])];
        return n;
    }
    void join (int a, int b) {
        a = find (a);
        b = find (b);
        root_[at (std::max (a, b))] = std::min (a, b);
    }

  private:
    std::vector<int> root_;
};

} // namespace

std::vector<Part> connected_parts (const Drawing& whole) {
    Sets sets (whole.nodes.size ());
    const auto together = [&whole] (int a, int b) {
        return whole.nodes[at (a)].compartment == whole.nodes[at (b)].compartment;
    };
    const auto is_inside = [&] (const DrawnReaction& r) { return together (r.from, r.to); };
    const auto is_link_inside = [&] (const DrawnLink& l) {
        const DrawnReaction& r = whole.reactions[at (l.reaction)];
        return is_inside (r) && together (l.node, r.from);
    };
    for (const DrawnReaction& r : whole.reactions) {
        if (is_inside (r)) sets.join (r.from, r.to);
    }
    for (const DrawnLink& l : whole.links) {
        if (is_link_inside (l)) sets.join (l.node, whole.reactions[at (l.reaction)].from);
    }
    std::vector<Part> parts;
    std::vector<int> part_of (whole.nodes.size (), -1);
    std::vector<int> number (whole.nodes.size (), -1);
    for (std::size_t n = 0; n < whole.nodes.size (); ++n) {
        const std::size_t root = at (sets.find (static_cast<int> (n)));
        if (part_of[root] < 0) {
            part_of[root] = static_cast<int> (parts.size ());
            parts.emplace_back ();
        }
        part_of[n] = part_of[root];
        Part& part = parts[at (part_of[n])];
        number[n] = static_cast<int> (part.nodes.size ());
        part.nodes.push_back (static_cast<int> (n));
        part.drawing.nodes.push_back (whole.nodes[n]);
    }
    std::vector<int> reaction_number;
    for (const DrawnReaction& r : whole.reactions) {
        if (!is_inside (r)) {
            reaction_number.push_back (-1);
            continue;
        }
        Drawing& drawing = parts[at (part_of[at (r.from)])].drawing;
        reaction_number.push_back (static_cast<int> (drawing.reactions.size ()));
        drawing.reactions.push_back (r);
        drawing.reactions.back ().from = number[at (r.from)];
        drawing.reactions.back ().to = number[at (r.to)];
    }
    for (std::size_t l = 0; l < whole.links.size (); ++l) {
        const DrawnLink& link = whole.links[l];
        if (!is_link_inside (link)) continue;
        Part& part = parts[at (part_of[at (link.node)])];
        part.links.push_back (static_cast<int> (l));
        part.drawing.links.push_back (
            {number[at (link.node)], reaction_number[at (link.reaction)], link.end});
    }
    for (Part& part : parts) part.drawing.index ();
    return parts;
}

} // namespace ostrand::arrange
