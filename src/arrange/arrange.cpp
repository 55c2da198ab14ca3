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
        const ArcPlace arc = arc_place (drawing.nodes[at (r.from)], drawing.nodes[at (r.to)], r.side);
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
        const ArcPlace arc = arc_place (drawing.nodes[at (r.from)], drawing.nodes[at (r.to)], r.side);
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
        drafts.push_back (make_draft (std::move (part.drawing), 1));
        if (!options.copies) continue;
        Drawing& drawing = drafts.back ().drawing;
        for (const int l : links_to_split (drafts.back ())) {
            // The copy begins on its square.
            const int whole_link = part.links[at (l)];
            split_link (graph, sketch, whole_link);
            part.nodes.push_back (static_cast<int> (sketch.drawing.nodes.size ()) - 1);
            DrawnNode node = drawing.nodes[at (drawing.links[at (l)].node)];
            const DrawnReaction& r = drawing.reactions[at (drawing.links[at (l)].reaction)];
            node.at = arc_place (drawing.nodes[at (r.from)], drawing.nodes[at (r.to)], r.side).square;
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
        if (!drawing.reactions.empty ()) finish_draft (drafts[p], 1);
        settle (drawing);
        shapes.push_back (shape_of (drawing));
    }
    const std::vector<Point> moves = pack_shapes (shapes, 24, options.aspect);
    for (std::size_t p = 0; p < parts.size (); ++p) {
        for (std::size_t n = 0; n < parts[p].nodes.size (); ++n) {
            const Point from = drafts[p].drawing.nodes[n].at;
            sketch.drawing.nodes[at (parts[p].nodes[n])].at = {
                from.x + std::round (moves[p].x), from.y + std::round (moves[p].y)};
        }
    }
    const Box box = bounds_of (sketch.drawing);
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
    layout.page = {std::ceil (box.right + dx + options.margin),
                   std::ceil (box.bottom + dy + options.margin)};
    return layout;
}

} // namespace ostrand::arrange
