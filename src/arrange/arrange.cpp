// The road from a graph to a layout.
#include "arrange/arrange.h"

#include "arrange/arc_place.h"
#include "arrange/copies.h"
#include "arrange/improve.h"
#include "arrange/pack.h"
#include "arrange/parts.h"
#include "arrange/settle.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace ostrand::arrange {
namespace {

std::size_t at (int i) { return static_cast<std::size_t> (i); }

void set_ideal_lengths (Drawing& drawing) {
    for (std::size_t r = 0; r < drawing.reactions.size (); ++r) {
        bool side = false;
        for (const int l : drawing.reaction_links[r])
            side = side || drawing.links[at (l)].end != LinkEnd::square;
        drawing.reactions[r].ideal = side ? side_arc : least_arc;
    }
}

Shape shape_of (const Drawing& drawing) {
    Shape shape;
    for (const DrawnNode& n : drawing.nodes)
        shape.boxes.push_back ({n.at.x - n.half_width, n.at.y - n.half_height,
                                n.at.x + n.half_width, n.at.y + n.half_height});
    for (const DrawnReaction& r : drawing.reactions) {
        const ArcPlace arc =
            arc_place (drawing.nodes[at (r.from)], drawing.nodes[at (r.to)], r.side);
        const auto add_line = [&] (Point a, Point b) {
            // A line as a row of small boxes, so that other parts may stand in its corners.
            const int steps = 1 + static_cast<int> (std::hypot (b.x - a.x, b.y - a.y) / 20);
            for (int i = 0; i <= steps; ++i) {
                const double t = static_cast<double> (i) / steps;
                const Point p{a.x + t * (b.x - a.x), a.y + t * (b.y - a.y)};
                shape.boxes.push_back ({p.x - 8, p.y - 8, p.x + 8, p.y + 8});
            }
        };
        add_line (arc.start, arc.end);
    }
    for (const DrawnLink& l : drawing.links) {
        const DrawnReaction& r = drawing.reactions[at (l.reaction)];
        const ArcPlace arc =
            arc_place (drawing.nodes[at (r.from)], drawing.nodes[at (r.to)], r.side);
        const Point a = drawing.nodes[at (l.node)].at;
        const Point b = arc.square;
        const int steps = 1 + static_cast<int> (std::hypot (b.x - a.x, b.y - a.y) / 20);
        for (int i = 0; i <= steps; ++i) {
            const double t = static_cast<double> (i) / steps;
            const Point p{a.x + t * (b.x - a.x), a.y + t * (b.y - a.y)};
            shape.boxes.push_back ({p.x - 8, p.y - 8, p.x + 8, p.y + 8});
        }
    }
    return shape;
}

/// Puts the parts of each compartment side by side into its box, boxes into those around them, and
/// all on one page.
class Compound {
  public:
    Compound (const Graph& graph, Sketch& sketch, const std::vector<Part>& parts,
              const std::vector<Draft>& drafts, const std::vector<Shape>& shapes, double aspect)
        : graph_ (graph), sketch_ (sketch), parts_ (parts), drafts_ (drafts), shapes_ (shapes),
          aspect_ (aspect), boxes_ (graph.compartments.size ()) {}

    /// Sets the places of all nodes; gives the boxes of the compartments, empty for those without a
    /// node.
    std::vector<Box> place () {
        find_members ();
        const bool arcs_cross = crosses ();
        sketch_.drawing.index ();
        for (std::size_t p = 0; p < parts_.size (); ++p) {
            for (std::size_t n = 0; n < parts_[p].nodes.size (); ++n)
                node (parts_[p].nodes[n]).at = drafts_[p].drawing.nodes[n].at;
        }
        find_waiting ();
        place_inside (-1, arcs_cross ? wide_gap : narrow_gap);
        measure_boxes ();
        if (!arcs_cross) return boxes_;
        // Squares between compartments must be free, too, and what moves for them may widen boxes.
        const std::vector<char> alone = waits_;
        const int rounds =
            sketch_.drawing.reactions.size () > large ? most_rounds_of_large : most_rounds;
        bool apart = false;
        for (int round = 0; round < rounds && !apart; ++round) {
            waits_ = alone;
            measure_boxes ();
            push_apart (narrow_gap * (1 + round));
            place_waiting ();
            settle (sketch_.drawing);
            measure_boxes ();
            apart = boxes_are_apart ();
        }
        if (!apart) {
            push_apart (narrow_gap);
            if (rounds == most_rounds) settle (sketch_.drawing);
            measure_boxes ();
        }
        return boxes_;
    }

  private:
    static constexpr double narrow_gap = 24; // between parts and between boxes
    static constexpr double wide_gap = 90;   // between boxes that arcs with squares join
    static constexpr int most_rounds = 20;   // of pushing boxes apart
    static constexpr int most_rounds_of_large = 3;
    static constexpr std::size_t large = 600; // reactions
    static constexpr double padding = 18;     // inside a box
    static constexpr double shadow = 6;       // of a node, right of and below it

    DrawnNode& node (int n) { return sketch_.drawing.nodes[at (n)]; }
    int parent (int c) const {
        const int p = graph_.compartments[at (c)].parent;
        return p >= 0 && at (p) < graph_.compartments.size () && p != c ? p : -1;
    }

    bool crosses () const {
        const Drawing& all = sketch_.drawing;
        const auto apart = [&all] (int a, int b) {
            return all.nodes[at (a)].compartment != all.nodes[at (b)].compartment;
        };
        return std::any_of (all.reactions.begin (), all.reactions.end (),
                            [&] (const DrawnReaction& r) { return apart (r.from, r.to); }) ||
               std::any_of (all.links.begin (), all.links.end (), [&] (const DrawnLink& l) {
                   return apart (l.node, all.reactions[at (l.reaction)].from);
               });
    }

    /// Which compartments hold a node, in themselves or in one inside.
    void find_members () {
        holds_.assign (graph_.compartments.size (), false);
        for (const DrawnNode& n : sketch_.drawing.nodes) {
            std::size_t steps = 0;
            for (int c = n.compartment; c >= 0 && steps <= holds_.size (); c = parent (c), ++steps)
                holds_[at (c)] = true;
        }
    }

    bool is_inside (int compartment, int wanted) const {
        for (std::size_t steps = 0; compartment >= 0 && steps <= holds_.size (); ++steps) {
            if (compartment == wanted) return true;
            compartment = parent (compartment);
        }
        return wanted < 0;
    }

    /// Nodes that only arcs from other compartments touch wait until those have places: they go as
    /// near to them as their compartment lets them.
    void find_waiting () {
        const Drawing& all = sketch_.drawing;
        waits_.assign (all.nodes.size (), 0);
        for (int c = -1; c < static_cast<int> (boxes_.size ()); ++c) {
            std::vector<int> alone;
            bool others = false;
            for (const Part& part : parts_) {
                if (node (part.nodes.front ()).compartment != c) continue;
                if (part.nodes.size () == 1 && all.degree (part.nodes.front ()) > 0) {
                    alone.push_back (part.nodes.front ());
                } else {
                    others = true;
                }
            }
            if (!others) continue;
            for (const int n : alone) waits_[at (n)] = 1;
        }
    }

    void place_waiting () {
        Drawing& all = sketch_.drawing;
        for (std::size_t n = 0; n < all.nodes.size (); ++n) {
            if (waits_[n] == 0) continue;
            DrawnNode& own = all.nodes[n];
            Point sum;
            int count = 0;
            const auto add = [&] (int other) {
                if (other == static_cast<int> (n) || waits_[at (other)] != 0) return;
                sum = {sum.x + all.nodes[at (other)].at.x, sum.y + all.nodes[at (other)].at.y};
                ++count;
            };
            const auto add_reaction = [&] (int r) {
                add (all.reactions[at (r)].from);
                add (all.reactions[at (r)].to);
            };
            for (const int r : all.node_reactions[n]) add_reaction (r);
            for (const int l : all.node_links[n]) add_reaction (all.links[at (l)].reaction);
            Point place = own.at;
            if (count > 0) place = {sum.x / count, sum.y / count};
            if (own.compartment >= 0) {
                const Box& box = boxes_[at (own.compartment)];
                const double inset_x = padding + own.half_width;
                const double inset_y = padding + own.half_height;
                place.x = std::clamp (place.x, box.left + inset_x,
                                      std::max (box.left + inset_x, box.right - inset_x));
                place.y = std::clamp (place.y, box.top + inset_y,
                                      std::max (box.top + inset_y, box.bottom - inset_y));
            }
            own.at = place;
            waits_[n] = 0;
        }
    }

    /// Packs what stands in a compartment itself: its parts, and the boxes inside it.
    void place_inside (int c, double gap) {
        std::vector<Shape> shapes;
        std::vector<std::vector<int>> nodes; // of each shape
        for (std::size_t p = 0; p < parts_.size (); ++p) {
            const int first = parts_[p].nodes.front ();
            if (node (first).compartment != c || waits_[at (first)] != 0) continue;
            shapes.push_back (shapes_[p]);
            nodes.push_back (parts_[p].nodes);
        }
        double between = narrow_gap;
        for (std::size_t i = 0; i < graph_.compartments.size (); ++i) {
            const int inner = static_cast<int> (i);
            if (!holds_[i] || parent (inner) != c) continue;
            place_inside (inner, gap);
            measure_boxes ();
            shapes.push_back ({{boxes_[i]}});
            nodes.emplace_back ();
            for (std::size_t n = 0; n < sketch_.drawing.nodes.size (); ++n) {
                if (is_inside (sketch_.drawing.nodes[n].compartment, inner))
                    nodes.back ().push_back (static_cast<int> (n));
            }
            between = gap;
        }
        const std::vector<Point> moves = pack_shapes (shapes, between, aspect_);
        for (std::size_t s = 0; s < nodes.size (); ++s) {
            for (const int n : nodes[s]) {
                node (n).at.x += std::round (moves[s].x);
                node (n).at.y += std::round (moves[s].y);
            }
        }
    }

    /// Boxes around their nodes and inner boxes, the innermost first.
    void measure_boxes () {
        std::vector<int> order (boxes_.size ());
        std::iota (order.begin (), order.end (), 0);
        std::stable_sort (order.begin (), order.end (),
                          [this] (int a, int b) { return depth (a) > depth (b); });
        for (const int c : order) {
            boxes_[at (c)] = {};
            if (!holds_[at (c)]) continue;
            Box box{1e300, 1e300, -1e300, -1e300};
            const auto add = [&box] (const Box& b) {
                box = {std::min (box.left, b.left), std::min (box.top, b.top),
                       std::max (box.right, b.right), std::max (box.bottom, b.bottom)};
            };
            for (std::size_t i = 0; i < sketch_.drawing.nodes.size (); ++i) {
                const DrawnNode& n = sketch_.drawing.nodes[i];
                if (n.compartment != c || waits_[i] != 0) continue;
                add ({n.at.x - n.half_width, n.at.y - n.half_height, n.at.x + n.half_width + shadow,
                      n.at.y + n.half_height + shadow});
            }
            for (std::size_t i = 0; i < boxes_.size (); ++i) {
                if (parent (static_cast<int> (i)) == c && boxes_[i].width () > 0) add (boxes_[i]);
            }
            const Size label = graph_.compartments[at (c)].label;
            boxes_[at (c)] = {
                std::floor (box.left - padding), std::floor (box.top - padding),
                std::ceil (std::max (box.right + padding, box.left - padding + label.width + 20)),
                std::ceil (box.bottom + padding + label.height)};
        }
    }

    int depth (int c) const {
        int d = 0;
        while (c >= 0 && d <= static_cast<int> (holds_.size ())) {
            c = parent (c);
            ++d;
        }
        return d;
    }

    void move_all_inside (int c, double dx, double dy) {
        for (DrawnNode& n : sketch_.drawing.nodes) {
            if (is_inside (n.compartment, c)) n.at = {n.at.x + dx, n.at.y + dy};
        }
        for (std::size_t i = 0; i < boxes_.size (); ++i) {
            if (!is_inside (static_cast<int> (i), c)) continue;
            Box& b = boxes_[i];
            b = {b.left + dx, b.top + dy, b.right + dx, b.bottom + dy};
        }
    }

    /// Boxes that overlap move away from each other, the later one right or down; nodes that stand
    /// in a strange box go below all boxes.
    void push_apart (double gap) {
        double lowest = -1e300;
        for (const Box& b : boxes_) {
            if (b.width () > 0) lowest = std::max (lowest, b.bottom);
        }
        for (std::size_t round = 0; round < boxes_.size (); ++round) {
            bool moved = false;
            for (std::size_t a = 0; a < boxes_.size (); ++a) {
                for (std::size_t b = 0; b < boxes_.size (); ++b) {
                    const int i = static_cast<int> (a);
                    const int k = static_cast<int> (b);
                    if (a == b || boxes_[a].width () <= 0 || boxes_[b].width () <= 0 ||
                        is_inside (i, k) || is_inside (k, i))
                        continue;
                    const Box& stays = boxes_[a];
                    const Box& goes = boxes_[b];
                    // The one that stands farther right or lower goes on that way.
                    const double dx = stays.right - goes.left;
                    const double dy = stays.bottom - goes.top;
                    const bool overlap =
                        dx > 0 && dy > 0 && goes.right > stays.left && goes.bottom > stays.top;
                    const bool behind = goes.left + goes.right + goes.top + goes.bottom >
                                        stays.left + stays.right + stays.top + stays.bottom;
                    if (!overlap || !behind) continue;
                    if (dx < dy)
                        move_all_inside (k, std::ceil (dx + gap), 0);
                    else
                        move_all_inside (k, 0, std::ceil (dy + gap));
                    moved = true;
                }
            }
            if (!moved) break;
        }
        for (DrawnNode& n : sketch_.drawing.nodes) {
            for (std::size_t c = 0; c < boxes_.size (); ++c) {
                const Box& b = boxes_[c];
                if (b.width () <= 0 || is_inside (n.compartment, static_cast<int> (c))) continue;
                if (n.at.x + n.half_width < b.left || n.at.x - n.half_width > b.right ||
                    n.at.y + n.half_height < b.top || n.at.y - n.half_height > b.bottom)
                    continue;
                if (n.compartment < 0) n.at.y = lowest + narrow_gap + n.half_height;
            }
        }
    }

    /// No box overlaps another that it is not inside, and no node stands in a strange box.
    bool boxes_are_apart () const {
        for (std::size_t a = 0; a < boxes_.size (); ++a) {
            if (boxes_[a].width () <= 0) continue;
            const Box& box = boxes_[a];
            const auto meets = [&box] (double left, double top, double right, double bottom) {
                return left < box.right && box.left < right && top < box.bottom && box.top < bottom;
            };
            for (std::size_t b = 0; b < a; ++b) {
                const int i = static_cast<int> (a);
                const int k = static_cast<int> (b);
                if (boxes_[b].width () <= 0 || is_inside (i, k) || is_inside (k, i)) continue;
                if (meets (boxes_[b].left, boxes_[b].top, boxes_[b].right, boxes_[b].bottom))
                    return false;
            }
            for (const DrawnNode& n : sketch_.drawing.nodes) {
                if (is_inside (n.compartment, static_cast<int> (a))) continue;
                if (meets (n.at.x - n.half_width, n.at.y - n.half_height, n.at.x + n.half_width,
                           n.at.y + n.half_height))
                    return false;
            }
        }
        return true;
    }

    const Graph& graph_;
    Sketch& sketch_;
    const std::vector<Part>& parts_;
    const std::vector<Draft>& drafts_;
    const std::vector<Shape>& shapes_;
    double aspect_;
    std::vector<Box> boxes_;
    std::vector<char> holds_;
    std::vector<char> waits_; // nodes that have no place yet
};

} // namespace

Layout arrange (const Graph& graph, const Options& options) {
    Sketch sketch = make_sketch (graph, options.copies);
    set_ideal_lengths (sketch.drawing);
    std::vector<Part> parts = connected_parts (sketch.drawing);
    std::vector<Draft> drafts;
    for (Part& part : parts) {
        if (part.drawing.reactions.empty ()) {
            drafts.push_back ({std::move (part.drawing), {}});
            continue;
        }
        drafts.push_back (make_draft (std::move (part.drawing), options.effort));
        if (!options.copies) continue;
        Drawing& drawing = drafts.back ().drawing;
        for (const int l : links_to_split (drafts.back ())) {
            // The copy begins on its square.
            const int whole_link = part.links[at (l)];
            split_link (graph, sketch, whole_link);
            part.nodes.push_back (static_cast<int> (sketch.drawing.nodes.size ()) - 1);
            DrawnNode node = drawing.nodes[at (drawing.links[at (l)].node)];
            const DrawnReaction& r = drawing.reactions[at (drawing.links[at (l)].reaction)];
            node.at =
                arc_place (drawing.nodes[at (r.from)], drawing.nodes[at (r.to)], r.side).square;
            drawing.links[at (l)].node = static_cast<int> (drawing.nodes.size ());
            drawing.nodes.push_back (node);
        }
        drawing.index ();
    }
    std::vector<Shape> shapes;
    for (std::size_t p = 0; p < parts.size (); ++p) {
        Drawing& drawing = drafts[p].drawing;
        for (std::size_t n = 0; n < drawing.nodes.size (); ++n) {
            drawing.nodes[n].half_width = sketch.drawing.nodes[at (parts[p].nodes[n])].half_width;
            drawing.nodes[n].half_height = sketch.drawing.nodes[at (parts[p].nodes[n])].half_height;
        }
        if (!drawing.reactions.empty ()) finish_draft (drafts[p], options.effort);
        settle (drawing);
        shapes.push_back (shape_of (drawing));
    }
    Compound compound (graph, sketch, parts, drafts, shapes, options.aspect);
    const std::vector<Box> boxes = compound.place ();
    Box box = bounds_of (sketch.drawing);
    for (const Box& b : boxes) {
        if (b.width () <= 0) continue;
        box = {std::min (box.left, b.left), std::min (box.top, b.top),
               std::max (box.right, b.right), std::max (box.bottom, b.bottom)};
    }
    const double dx = std::ceil (options.margin - box.left);
    const double dy = std::ceil (options.margin - box.top);
    Layout layout;
    layout.reactions = sketch.reactions;
    std::vector<int> nodes_of (graph.species.size (), 0);
    for (const DrawnNode& node : sketch.drawing.nodes)
        if (node.species >= 0) ++nodes_of[at (node.species)];
    for (DrawnNode& node : sketch.drawing.nodes) {
        node.at.x += dx;
        node.at.y += dy;
        NodePlace place;
        place.species = node.species;
        place.centre = node.at;
        place.size = {2 * node.half_width, 2 * node.half_height};
        place.compartment = node.compartment;
        place.shared = node.species >= 0 && nodes_of[at (node.species)] > 1;
        layout.nodes.push_back (place);
    }
    for (std::size_t r = 0; r < sketch.drawing.reactions.size (); ++r) {
        const DrawnReaction& reaction = sketch.drawing.reactions[r];
        layout.reactions[r].square =
            arc_place (sketch.drawing.nodes[at (reaction.from)],
                       sketch.drawing.nodes[at (reaction.to)], reaction.side)
                .square;
    }
    for (const Box& b : boxes)
        layout.compartments.push_back ({b.left + dx, b.top + dy, b.right + dx, b.bottom + dy});
    layout.page = {std::ceil (box.right + dx + options.margin),
                   std::ceil (box.bottom + dy + options.margin)};
    return layout;
}

} // namespace ostrand::arrange
