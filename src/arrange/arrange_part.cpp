// The road for a part of a drawing: what is chosen is laid out afresh or as it stands, whichever
// becomes the better with everything else around it.
#include "arrange/arrange.h"

#include "arrange/improve.h"
#include "arrange/parts.h"
#include "arrange/search.h"
#include "arrange/settle.h"

#include <algorithm>
#include <numbers>

namespace ostrand::arrange {
namespace {

constexpr double work_of_element = 60000; // comparisons for each thing that moves, at effort 1
constexpr double room_padding = 8;        // between a node and the edge of its compartment
constexpr double shadow = 6;              // of a node, right of and below it
constexpr double spread = 60;             // that a part may need beyond where it stands

std::size_t at (int i) { return static_cast<std::size_t> (i); }

class PartArranger {
  public:
    PartArranger (const Graph& graph, const Present& present, double effort)
        : graph_ (graph), present_ (present), effort_ (effort) {}

    std::vector<Point> run () {
        make_drawing ();
        make_wishes ();
        Drawing best;
        double best_cost = cost_of (drawing_);
        for (const bool afresh : {false, true}) {
            Drawing tried = drawing_;
            if (afresh) lay_out_afresh (tried);
            improve (tried);
            settle (tried, wishes_.rooms);
            if (!stands_right (tried)) continue;
            const double cost = cost_of (tried);
            if (cost >= best_cost) continue;
            best = std::move (tried);
            best_cost = cost;
        }
        if (best.nodes.empty ()) return present_.places;
        std::vector<Point> places = present_.places;
        for (std::size_t n = 0; n < places.size (); ++n)
            if (!best.nodes[n].fixed) places[n] = best.nodes[n].at;
        return places;
    }

  private:
    bool is_node (int species) const {
        return species >= 0 && at (species) < graph_.species.size ();
    }

    void make_drawing () {
        for (std::size_t s = 0; s < graph_.species.size (); ++s) {
            DrawnNode node;
            node.at = present_.places[s];
            node.half_width = graph_.species[s].size.width / 2;
            node.half_height = graph_.species[s].size.height / 2;
            node.species = static_cast<int> (s);
            node.compartment = graph_.species[s].compartment;
            node.fixed = present_.chosen[s] == 0;
            drawing_.nodes.push_back (node);
        }
        for (const Reaction& from : graph_.reactions) add_reaction (from);
        drawing_.index ();
        drawing_.set_ideal_lengths ();
    }

    void add_reaction (const Reaction& from) {
        if (from.substrates.empty () || from.products.empty ()) return;
        DrawnReaction r;
        r.from = from.substrates.front ();
        r.to = from.products.front ();
        // A loop has no straight arc.
        if (!is_node (r.from) || !is_node (r.to) || r.from == r.to) return;
        r.reversible = from.reversible;
        r.start_label = from.start_label;
        r.end_label = from.end_label;
        const int number = static_cast<int> (drawing_.reactions.size ());
        drawing_.reactions.push_back (r);
        const auto add = [&] (int species, LinkEnd end) {
            if (is_node (species)) drawing_.links.push_back ({species, number, end});
        };
        for (std::size_t i = 1; i < from.substrates.size (); ++i)
            add (from.substrates[i], LinkEnd::substrate);
        for (std::size_t i = 1; i < from.products.size (); ++i)
            add (from.products[i], LinkEnd::product);
        for (const Modifier& m : from.modifiers) add (m.species, LinkEnd::square);
    }

    void make_wishes () {
        Box box{1e300, 1e300, -1e300, -1e300};
        for (const DrawnNode& n : drawing_.nodes) {
            if (n.fixed) continue;
            box = {std::min (box.left, n.at.x - n.half_width - spread),
                   std::min (box.top, n.at.y - n.half_height - spread),
                   std::max (box.right, n.at.x + n.half_width + spread),
                   std::max (box.bottom, n.at.y + n.half_height + spread)};
        }
        wishes_.walls = box;
        wishes_.clarity = 2;
        wishes_.flow_weight = 0;
        wishes_.flows.assign (drawing_.reactions.size (), 0);
        std::vector<Room> rooms;
        for (std::size_t c = 0; c < graph_.compartments.size (); ++c) {
            const Box& outer = present_.boxes[c];
            Room room{outer, outer, graph_.compartments[c].parent};
            // The largest rectangle in an ellipse.
            const double off = graph_.compartments[c].round ? (1 - 1 / std::numbers::sqrt2) / 2 : 0;
            room.inside = {outer.left + off * outer.width () + room_padding,
                           outer.top + off * outer.height () + room_padding,
                           outer.right - off * outer.width () - room_padding - shadow,
                           outer.bottom - off * outer.height () - room_padding - shadow};
            rooms.push_back (room);
        }
        wishes_.rooms = Rooms (std::move (rooms));
    }

    /// The chosen nodes with the reactions and links among them, each connected part laid out for
    /// itself, with its middle where it was.
    void lay_out_afresh (Drawing& drawing) const {
        Drawing chosen;
        std::vector<int> number (drawing.nodes.size (), -1);
        std::vector<int> whole; // node of the part -> node of the drawing
        for (std::size_t n = 0; n < drawing.nodes.size (); ++n) {
            if (drawing.nodes[n].fixed) continue;
            number[n] = static_cast<int> (chosen.nodes.size ());
            whole.push_back (static_cast<int> (n));
            chosen.nodes.push_back (drawing.nodes[n]);
        }
        std::vector<int> reaction_number (drawing.reactions.size (), -1);
        for (std::size_t r = 0; r < drawing.reactions.size (); ++r) {
            DrawnReaction reaction = drawing.reactions[r];
            reaction.from = number[at (reaction.from)];
            reaction.to = number[at (reaction.to)];
            if (reaction.from < 0 || reaction.to < 0) continue;
            reaction_number[r] = static_cast<int> (chosen.reactions.size ());
            chosen.reactions.push_back (reaction);
        }
        for (const DrawnLink& l : drawing.links) {
            const int r = reaction_number[at (l.reaction)];
            if (r >= 0 && number[at (l.node)] >= 0)
                chosen.links.push_back ({number[at (l.node)], r, l.end});
        }
        for (const Part& part : connected_parts (chosen)) {
            if (part.drawing.reactions.empty ()) continue;
            const Point before = middle_of (part.drawing);
            Draft draft =
                make_draft (part.drawing, make_starts (part.drawing, effort_), effort_, 0);
            if (draft.drawing.nodes.empty ()) continue;
            finish_draft (draft, effort_, 0);
            settle (draft.drawing);
            const Point after = middle_of (draft.drawing);
            for (std::size_t n = 0; n < part.nodes.size (); ++n) {
                const Point p = draft.drawing.nodes[n].at;
                drawing.nodes[at (whole[at (part.nodes[n])])].at = {p.x + before.x - after.x,
                                                                    p.y + before.y - after.y};
            }
        }
    }

    static Point middle_of (const Drawing& drawing) {
        const Box box = bounds_of (drawing);
        return {(box.left + box.right) / 2, (box.top + box.bottom) / 2};
    }

    double cost_of (Drawing& drawing) const { return Field (drawing, wishes_).total (); }

    void improve (Drawing& drawing) const {
        std::size_t elements = 0;
        for (std::size_t n = 0; n < drawing.nodes.size (); ++n)
            if (!drawing.nodes[n].fixed) elements += 1 + drawing.degree (static_cast<int> (n));
        Field field (drawing, wishes_);
        Random random (2468);
        const double work = effort_ * work_of_element * static_cast<double> (elements);
        search (drawing, field, wishes_, {static_cast<std::uint64_t> (work), 80, 0.5, 120, 8, 0},
                random);
    }

    /// Every chosen node is in its compartment and in no other.
    bool stands_right (const Drawing& drawing) const {
        return std::all_of (
            drawing.nodes.begin (), drawing.nodes.end (),
            [this] (const DrawnNode& n) { return n.fixed || wishes_.rooms.misfit (n) <= 0; });
    }

    const Graph& graph_;
    const Present& present_;
    double effort_;
    Drawing drawing_;
    Wishes wishes_;
};

} // namespace

std::vector<Point> arrange_part (const Graph& graph, const Present& present, double effort) {
    if (std::none_of (present.chosen.begin (), present.chosen.end (),
                      [] (char c) { return c != 0; }))
        return present.places;
    return PartArranger (graph, present, effort).run ();
}

} // namespace ostrand::arrange
