// Where do the parts and the boxes of compartments go?
#include "arrange/compound.h"

#include "arrange/arc_place.h"
#include "arrange/blocks.h"
#include "arrange/pack.h"
#include "arrange/page_cost.h"
#include "arrange/search.h"
#include "arrange/settle.h"
#include "arrange/start.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <numeric>
#include <optional>

namespace ostrand::arrange {
namespace {

std::size_t at (int i) { return static_cast<std::size_t> (i); }

Shape shape_of (const Drawing& drawing) {
    Shape shape;
    for (const DrawnNode& n : drawing.nodes)
        shape.boxes.push_back ({n.at.x - n.half_width, n.at.y - n.half_height,
                                n.at.x + n.half_width, n.at.y + n.half_height});
    const auto add_line = [&shape] (Point a, Point b) {
        // A line as a row of small boxes, so that other parts may stand in its corners.
        const int steps = 1 + static_cast<int> (std::hypot (b.x - a.x, b.y - a.y) / 20);
        for (int i = 0; i <= steps; ++i) {
            const double t = static_cast<double> (i) / steps;
            const Point p{a.x + t * (b.x - a.x), a.y + t * (b.y - a.y)};
            shape.boxes.push_back ({p.x - 8, p.y - 8, p.x + 8, p.y + 8});
        }
    };
    const auto place_of = [&drawing] (const DrawnReaction& r) {
        return arc_place (drawing.nodes[at (r.from)], drawing.nodes[at (r.to)], r.side);
    };
    for (const DrawnReaction& r : drawing.reactions) {
        const ArcPlace arc = place_of (r);
        add_line (arc.start, arc.end);
    }
    for (const DrawnLink& l : drawing.links)
        add_line (drawing.nodes[at (l.node)].at,
                  place_of (drawing.reactions[at (l.reaction)]).square);
    return shape;
}

/// Puts the parts of each compartment side by side into its box, boxes into those around them, and
/// all on one page.
class Compound {
  public:
    Compound (const Graph& graph, Sketch& sketch, const std::vector<Part>& parts,
              const std::vector<Draft>& drafts, const Options& options, std::uint64_t chance)
        : graph_ (graph), sketch_ (sketch), parts_ (parts), drafts_ (drafts), options_ (options),
          chance_ (chance), boxes_ (graph.compartments.size ()) {
        for (const Draft& draft : drafts) shapes_.push_back (shape_of (draft.drawing));
    }

    /// Sets the places of all nodes; gives the boxes of the compartments, empty for those without a
    /// node.
    std::vector<Box> place () {
        find_members ();
        sketch_.drawing.index ();
        const bool arcs_cross = crosses ();
        for (std::size_t p = 0; p < parts_.size (); ++p) {
            for (std::size_t n = 0; n < parts_[p].nodes.size (); ++n)
                node (parts_[p].nodes[n]).at = drafts_[p].drawing.nodes[n].at;
        }
        place_inside (-1, arcs_cross ? first_gap : narrow_gap);
        measure_boxes ();
        if (!arcs_cross) return boxes_;
        double gap = first_gap;
        if (best_beginning (gap)) {
            improve_if_better (gap, warm, 1);
            tighten ();
        } else {
            // The last resort: everything spreads, and boxes may touch.
            settle (sketch_.drawing);
            measure_boxes ();
        }
        return boxes_;
    }

  private:
    static constexpr double narrow_gap = 24; // between parts and between boxes
    static constexpr double first_gap = 48;  // between boxes that arcs with squares join
    static constexpr double gap_growth = 1.7;
    static constexpr int most_tries = 8;
    static constexpr double padding = 18; // inside a box
    static constexpr double shadow = 6;   // of a node, right of and below it
    static constexpr double hot = 600;    // heats of untangling
    static constexpr double warm = 200;
    static constexpr double cool = 60;
    static constexpr double begin_share = 0.4;   // of the work, for each beginning
    static constexpr double tighten_share = 0.5; // and for each round that draws boxes tighter
    static constexpr double tighten_crowds = 0.1;
    static constexpr double tighten_walls = 0.5; // of the sides of the page: nodes go to its middle
    static constexpr int most_rounds = 2;
    static constexpr double work_of_element = 20000; // of untangling, at effort 1
    // Less than all work for each of many elements, and more for each of few.
    static constexpr double few_elements = 150;
    static constexpr double many_elements = 700;

    struct State {
        std::vector<DrawnNode> nodes;
        std::vector<Box> boxes;
    };
    State state () const { return {sketch_.drawing.nodes, boxes_}; }
    void bring_back (const State& state) {
        sketch_.drawing.nodes = state.nodes;
        boxes_ = state.boxes;
    }

    /// Several beginnings are tried a little: boxes packed, boxes where their arcs are short, and
    /// all in layers. False, with `gap` as large as it was tried, when nothing found room.
    bool best_beginning (double& gap) {
        std::vector<State> begins{state ()};
        join (gap, true);
        begins.push_back (state ());
        if (start_in_layers ()) begins.push_back (state ());
        std::optional<State> best;
        double best_cost = 0;
        for (const State& begin : begins) {
            bring_back (begin);
            if (!untangle (gap, hot, begin_share)) continue;
            const double cost = cost_of_all ();
            if (best && cost >= best_cost) continue;
            best = state ();
            best_cost = cost;
        }
        if (best) {
            bring_back (*best);
            return true;
        }
        // Arcs between compartments want room between boxes and in them: the least that does.
        for (int tries = 1; tries < most_tries; ++tries) {
            gap *= gap_growth;
            place_inside (-1, gap);
            measure_boxes ();
            join (gap, true);
            if (untangle (gap, hot, 1)) return true;
        }
        return false;
    }

    /// Untangles; everything is as it was when that makes nothing better.
    void improve_if_better (double gap, double heat, double share) {
        const State before = state ();
        const double cost = cost_of_all ();
        if (!untangle (gap, heat, share) || cost_of_all () >= cost) bring_back (before);
    }

    /// Boxes that have become smaller come nearer to each other, as long as that is better.
    void tighten () {
        for (int round = 0; round < most_rounds; ++round) {
            const State before = state ();
            const double cost = cost_of_all ();
            squeeze (first_gap);
            join (first_gap, false);
            if (untangle (first_gap, cool, tighten_share) && cost_of_all () < cost) continue;
            bring_back (before);
            return;
        }
    }

    /// Arcs between compartments, which the parts were laid out without, count now: nodes move in
    /// their boxes, and a little beyond, until those are short and cross little. When it is cool
    /// they also go to the middle of the page. Then the boxes are drawn tight. False, with
    /// everything as it was, when nodes or squares are still in each other's way.
    bool untangle (double gap, double heat, double share) {
        Drawing& all = sketch_.drawing;
        const State before = state ();
        Wishes wishes;
        const double more = (gap - narrow_gap) / 2;
        wishes.rooms = rooms (more);
        const bool crowds = heat <= cool;
        wishes.walls = middle_of_page (crowds ? tighten_walls : 1);
        wishes.flow_weight = 0;
        wishes.flows.assign (all.reactions.size (), 0);
        wishes.clarity = 2;
        {
            Field field (all, wishes);
            Random random (97531 + chance_);
            const auto elements =
                static_cast<double> (all.nodes.size () + all.reactions.size () + all.links.size ());
            const double work = share * options_.effort * work_of_element *
                                std::clamp (elements, few_elements, many_elements);
            search (all, field, wishes,
                    {static_cast<std::uint64_t> (work), heat, 0.5, heat / 2 + 60, 8,
                     crowds ? tighten_crowds : 0},
                    random);
        }
        if (settle (all, wishes.rooms)) {
            measure_boxes (outlines (more));
            if (boxes_are_apart ()) return true;
        }
        bring_back (before);
        return false;
    }

    /// The boxes with `more` on each side; no width for those that hold nothing.
    std::vector<Box> outlines (double more) const {
        std::vector<Box> boxes (boxes_.size ());
        for (std::size_t c = 0; c < boxes_.size (); ++c) {
            const Box& b = boxes_[c];
            if (holds_[c])
                boxes[c] = {b.left - more, b.top - more, b.right + more, b.bottom + more};
        }
        return boxes;
    }

    bool start_in_layers () {
        std::vector<int> outer;
        for (std::size_t c = 0; c < boxes_.size (); ++c)
            outer.push_back (parent (static_cast<int> (c)));
        if (!start_in_boxes (sketch_.drawing, outer, 2 * padding)) return false;
        measure_boxes ();
        if (!boxes_are_apart ()) return false;
        fold_blocks ();
        squeeze (first_gap);
        if (sides () > good_sides) join (first_gap, false);
        return boxes_are_apart ();
    }

    /// Outermost boxes, and nodes in none.
    std::vector<Block> blocks () const {
        std::vector<Block> list (boxes_.size ());
        for (std::size_t c = 0; c < boxes_.size (); ++c) list[c].box = boxes_[c];
        for (std::size_t n = 0; n < sketch_.drawing.nodes.size (); ++n) {
            const DrawnNode& own = sketch_.drawing.nodes[n];
            int outermost = own.compartment;
            for (std::size_t i = 0; i < boxes_.size () && outermost >= 0 && parent (outermost) >= 0;
                 ++i)
                outermost = parent (outermost);
            if (outermost >= 0) {
                list[at (outermost)].nodes.push_back (static_cast<int> (n));
                continue;
            }
            list.push_back ({{own.at.x - own.half_width, own.at.y - own.half_height,
                              own.at.x + own.half_width, own.at.y + own.half_height},
                             {static_cast<int> (n)}});
        }
        std::erase_if (list, [] (const Block& b) { return b.nodes.empty (); });
        return list;
    }

    /// A row of boxes that is much longer than wide becomes rows one below the other.
    void fold_blocks () {
        const Box page = page_box ();
        const double rows_wanted = std::sqrt (page.width () / page.height () / options_.aspect);
        const int rows = static_cast<int> (std::lround (rows_wanted));
        if (rows < 2) return;
        std::vector<Block> list = blocks ();
        for (Block& block : list) {
            const double middle = (block.box.left + block.box.right) / 2 - page.left;
            const double part = page.width () / rows;
            const int row = std::min (rows - 1, static_cast<int> (middle / part));
            // Every second row is reversed, so that neighbours stay neighbours.
            const double rest = middle - row * part;
            const double to = row % 2 == 0 ? rest : part - rest;
            block.move (sketch_.drawing, std::round (to - middle),
                        row * std::ceil (page.height () + first_gap));
        }
        measure_boxes ();
    }

    /// Outermost boxes come to the sides of each other where their arcs are short.
    void join (double gap, bool afresh) {
        const std::vector<DrawnNode>& nodes = sketch_.drawing.nodes;
        if (std::any_of (nodes.begin (), nodes.end (),
                         [] (const DrawnNode& n) { return n.compartment < 0; }))
            return;
        std::vector<Block> list = blocks ();
        join_blocks (sketch_.drawing, list, gap, afresh);
        measure_boxes ();
    }

    /// Outermost boxes, and nodes in none, go left and up until they keep `gap` from each other.
    void squeeze (double gap) {
        std::vector<Block> list = blocks ();
        for (int round = 0; round < 4; ++round) {
            const bool level = round % 2 == 0;
            const auto begin = [level] (const Box& b) { return level ? b.left : b.top; };
            const auto end = [level] (const Box& b) { return level ? b.right : b.bottom; };
            std::stable_sort (list.begin (), list.end (), [&] (const Block& a, const Block& b) {
                return begin (a.box) < begin (b.box);
            });
            for (std::size_t b = 0; b < list.size (); ++b) {
                const Box& box = list[b].box;
                double place = 0;
                for (std::size_t a = 0; a < b; ++a) {
                    const Box& other = list[a].box;
                    const bool beside =
                        level ? box.top < other.bottom + gap && other.top < box.bottom + gap
                              : box.left < other.right + gap && other.left < box.right + gap;
                    if (beside) place = std::max (place, end (other) + gap);
                }
                const double by = std::round (place - begin (box));
                list[b].move (sketch_.drawing, level ? by : 0, level ? 0 : by);
            }
        }
        measure_boxes ();
    }

    double cost_of_all () { return cost_on_page (sketch_.drawing, page_box ()); }

    Rooms rooms (double more) const {
        std::vector<Room> list;
        const std::vector<Box> outer = outlines (more);
        for (std::size_t c = 0; c < boxes_.size (); ++c) {
            Room room{outer[c], outer[c], parent (static_cast<int> (c))};
            if (!holds_[c]) {
                list.push_back (room);
                continue;
            }
            const Box whole = inside_of (static_cast<int> (c), outer[c]);
            room.inside = {whole.left + padding, whole.top + padding,
                           whole.right - padding - shadow,
                           whole.bottom - padding - shadow - graph_.compartments[c].label.height};
            list.push_back (room);
        }
        return Rooms (std::move (list));
    }

    /// Longer side of the page / shorter one.
    double sides () const {
        const Box page = page_box ();
        return std::max (page.width () / page.height (), page.height () / page.width ());
    }

    /// The middle of the page, with `part` of its width and height.
    Box middle_of_page (double part) const {
        const Box page = page_box ();
        const double x = (1 - part) / 2 * page.width ();
        const double y = (1 - part) / 2 * page.height ();
        return {page.left + x, page.top + y, page.right - x, page.bottom - y};
    }

    Box page_box () const { return page_of (sketch_.drawing, boxes_); }

    /// The largest rectangle in a compartment's outline, and the box around the outline of one that
    /// holds a rectangle.
    Box inside_of (int c, const Box& box) const { return scaled (c, box, 1 / std::numbers::sqrt2); }
    Box around (int c, const Box& box) const { return scaled (c, box, std::numbers::sqrt2); }
    Box scaled (int c, const Box& box, double factor) const {
        if (!graph_.compartments[at (c)].round) return box;
        const double more_x = (factor - 1) * box.width () / 2;
        const double more_y = (factor - 1) * box.height () / 2;
        return {box.left - more_x, box.top - more_y, box.right + more_x, box.bottom + more_y};
    }

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

    /// Packs what stands in a compartment itself: its parts, and the boxes inside it.
    void place_inside (int c, double gap) {
        std::vector<Shape> shapes;
        std::vector<std::vector<int>> nodes; // of each shape
        for (std::size_t p = 0; p < parts_.size (); ++p) {
            const int first = parts_[p].nodes.front ();
            if (node (first).compartment != c) continue;
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
        const std::vector<Point> moves = pack_shapes (shapes, between, options_.aspect);
        for (std::size_t s = 0; s < nodes.size (); ++s) {
            for (const int n : nodes[s]) {
                node (n).at.x += std::round (moves[s].x);
                node (n).at.y += std::round (moves[s].y);
            }
        }
    }

    /// Boxes around their nodes and inner boxes, the innermost first.
    /// limits  if a label makes a box so wide that it would come out of this one, it widens to the
    ///         left
    void measure_boxes (const std::vector<Box>& limits = {}) {
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
                if (n.compartment != c) continue;
                add ({n.at.x - n.half_width, n.at.y - n.half_height, n.at.x + n.half_width + shadow,
                      n.at.y + n.half_height + shadow});
            }
            for (std::size_t i = 0; i < boxes_.size (); ++i) {
                if (parent (static_cast<int> (i)) == c && boxes_[i].width () > 0) add (boxes_[i]);
            }
            const Size label = graph_.compartments[at (c)].label;
            box = {box.left - padding, box.top - padding,
                   std::max (box.right + padding, box.left - padding + label.width + 20),
                   box.bottom + padding + label.height};
            if (!limits.empty ()) {
                const Box limit = inside_of (c, limits[at (c)]);
                const double over = std::min (box.right - limit.right, box.left - limit.left);
                if (over > 0) box = {box.left - over, box.top, box.right - over, box.bottom};
            }
            box = around (c, box);
            boxes_[at (c)] = {std::floor (box.left), std::floor (box.top), std::ceil (box.right),
                              std::ceil (box.bottom)};
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
    std::vector<Shape> shapes_;
    const Options& options_;
    std::uint64_t chance_;
    std::vector<Box> boxes_;
    std::vector<char> holds_;
};

} // namespace

std::vector<Box> place_parts (const Graph& graph, Sketch& sketch, const std::vector<Part>& parts,
                              const std::vector<Draft>& drafts, const Options& options,
                              std::uint64_t chance) {
    return Compound (graph, sketch, parts, drafts, options, chance).place ();
}

} // namespace ostrand::arrange
