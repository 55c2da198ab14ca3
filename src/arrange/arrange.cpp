// Which of several arrangements is taken?
#include "arrange/arrange.h"

#include "arrange/arc_place.h"
#include "arrange/attempt.h"
#include "arrange/plan.h"
#include "base/workers.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <thread>

namespace ostrand::arrange {
namespace {

std::size_t at (int i) { return static_cast<std::size_t> (i); }

/// The best attempt, the first of equal ones: the same however many threads there are.
Attempt best_attempt (const Graph& graph, const Options& options) {
    const Ground ground = make_ground (graph, options);
    const Plan plan = plan_for (ground.sketch.drawing, ground.apart, options.effort);
    Options each = options;
    each.effort = plan.effort;
    std::vector<Attempt> attempts (plan.attempts);
    std::atomic<std::size_t> next = 0;
    const auto run = [&] {
        for (std::size_t i = next++; i < attempts.size (); i = next++)
            attempts[i] = attempt (graph, ground, each, i);
    };
    {
        WorkerThreads others;
        const std::size_t threads = std::min<std::size_t> (
            std::max (std::thread::hardware_concurrency (), 1U), attempts.size ());
        for (std::size_t t = 1; t < threads; ++t)
            if (!others.start (run)) break;
        run ();
        others.join ();
    }
    return std::move (
        *std::min_element (attempts.begin (), attempts.end (),
                           [] (const Attempt& a, const Attempt& b) { return a.cost < b.cost; }));
}

} // namespace

Layout arrange (const Graph& graph, const Options& options) {
    Attempt best = best_attempt (graph, options);
    Sketch& sketch = best.sketch;
    const std::vector<Box>& boxes = best.boxes;
    const Box& box = best.page;
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
