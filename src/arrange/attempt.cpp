// The road from a graph to places.
#include "arrange/attempt.h"

#include "arrange/arc_place.h"
#include "arrange/compound.h"
#include "arrange/page_cost.h"
#include "arrange/settle.h"
#include "arrange/squeeze.h"

#include <algorithm>

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

Ground make_ground (const Graph& graph, const Options& options) {
    Ground ground;
    ground.sketch = make_sketch (graph, options.copies);
    ground.sketch.drawing.set_ideal_lengths ();
    ground.parts = connected_parts (ground.sketch.drawing);
    ground.apart = is_apart (ground.sketch.drawing, ground.parts);
    for (const Part& part : ground.parts)
        ground.starts.push_back (make_starts (part.drawing, options.effort));
    return ground;
}

Attempt attempt (const Graph& graph, const Ground& ground, const Options& options,
                 std::uint64_t chance) {
    Sketch sketch = ground.sketch;
    std::vector<Part> parts = ground.parts;
    // Nodes move once more where arcs lead from one part to another.
    const double effort = ground.apart ? first_share * options.effort : options.effort;
    std::vector<Draft> drafts;
    for (std::size_t p = 0; p < parts.size (); ++p) {
        Part& part = parts[p];
        if (part.drawing.reactions.empty ()) {
            drafts.push_back ({std::move (part.drawing), {}});
            continue;
        }
        drafts.push_back (make_draft (part.drawing, ground.starts[p], effort, chance));
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
        if (!drawing.reactions.empty ()) finish_draft (drafts[p], effort, chance);
        settle (drawing);
    }
    std::vector<Box> boxes = place_parts (graph, sketch, parts, drafts, options, chance);
    const bool boxed =
        std::any_of (boxes.begin (), boxes.end (), [] (const Box& b) { return b.width () > 0; });
    if (!boxed) squeeze (sketch.drawing);
    const Box page = page_of (sketch.drawing, boxes);
    const double cost = cost_on_page (sketch.drawing, page);
    return {std::move (sketch), std::move (boxes), page, cost};
}

} // namespace ostrand::arrange
