// The road from a graph to a layout.
#include "arrange/arrange.h"

#include "arrange/arc_place.h"
#include "arrange/compound.h"
#include "arrange/copies.h"
#include "arrange/improve.h"
#include "arrange/parts.h"
#include "arrange/settle.h"

#include <algorithm>
#include <cmath>

namespace ostrand::arrange {
namespace {

constexpr double first_share = 0.5; // of the work, for parts that are moved against each other

std::size_t at (int i) { return static_cast<std::size_t> (i); }

/// Some arcs lead from one part to another.
bool is_apart (const Drawing& whole, const std::vector<Part>& parts) {
    std::size_t inside = 0;
    for (const Part& part : parts)
        inside += part.drawing.reactions.size () + part.drawing.links.size ();
    return inside < whole.reactions.size () + whole.links.size ();
}

} // namespace

Layout arrange (const Graph& graph, const Options& options) {
    Sketch sketch = make_sketch (graph, options.copies);
    sketch.drawing.set_ideal_lengths ();
    std::vector<Part> parts = connected_parts (sketch.drawing);
    // Nodes move once more where arcs lead from one part to another.
    const double effort =
        is_apart (sketch.drawing, parts) ? first_share * options.effort : options.effort;
    std::vector<Draft> drafts;
    for (Part& part : parts) {
        if (part.drawing.reactions.empty ()) {
            drafts.push_back ({std::move (part.drawing), {}});
            continue;
        }
        drafts.push_back (make_draft (part.drawing, effort));
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
    for (std::size_t p = 0; p < parts.size (); ++p) {
        Drawing& drawing = drafts[p].drawing;
        for (std::size_t n = 0; n < drawing.nodes.size (); ++n) {
            drawing.nodes[n].half_width = sketch.drawing.nodes[at (parts[p].nodes[n])].half_width;
            drawing.nodes[n].half_height = sketch.drawing.nodes[at (parts[p].nodes[n])].half_height;
        }
        if (!drawing.reactions.empty ()) finish_draft (drafts[p], effort);
        settle (drawing);
    }
    const std::vector<Box> boxes = place_parts (graph, sketch, parts, drafts, options);
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
