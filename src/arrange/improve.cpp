// Which stages make a good drawing out of first places?
#include "arrange/improve.h"

#include "arrange/search.h"

#include <algorithm>
#include <cmath>

namespace ostrand::arrange {
namespace {

std::size_t at (int i) { return static_cast<std::size_t> (i); }

std::size_t elements_of (const Drawing& drawing) {
    return drawing.nodes.size () + 2 * drawing.reactions.size () + drawing.links.size ();
}

std::uint64_t work_of (const Drawing& drawing, double effort) {
    const double e = static_cast<double> (elements_of (drawing));
    effort *= std::max (std::min (e, 250.0), std::min (0.2 * e, 2800.0)) / e;
    return static_cast<std::uint64_t> (13 * effort * static_cast<double> (elements_of (drawing)));
}

double tangle_of (const Drawing& drawing) {
    double nodes = 0;
    double arcs = static_cast<double> (drawing.reactions.size ());
    for (std::size_t n = 0; n < drawing.nodes.size (); ++n) {
        if (drawing.hangs (static_cast<int> (n))) continue;
        nodes += 1;
        arcs += static_cast<double> (drawing.node_links[n].size ());
    }
    return std::max (0.0, arcs / std::max (nodes, 1.0) - 1);
}

/// The room that a drawing should fill: near its present shape, with sides that a page can have.
Box walls_of (const Drawing& drawing, double fill) {
    double area = 0;
    const double tangle = tangle_of (drawing);
    fill /= 1 + 0.5 * tangle * tangle;
    for (const DrawnNode& n : drawing.nodes) area += 4 * n.half_width * n.half_height;
    area += static_cast<double> (drawing.reactions.size ()) * square_size * square_size;
    const Box box = bounds_of (drawing);
    const double shape = std::clamp (box.width () / std::max (box.height (), 1.0), 0.6, 2.0);
    const double height = std::sqrt (area / fill / shape);
    const double width = height * shape;
    const Point middle{(box.left + box.right) / 2, (box.top + box.bottom) / 2};
    return {middle.x - width / 2, middle.y - height / 2, middle.x + width / 2,
            middle.y + height / 2};
}

} // namespace

std::vector<Start> make_starts (const Drawing& drawing, double effort) {
    std::vector<Start> starts;
    if (drawing.reactions.empty ()) return starts;
    constexpr double little = 0.25;   // effort below which only the fastest start is tried
    constexpr std::size_t many = 300; // elements: one start in layers takes long enough
    for (const StartKind kind : {StartKind::down, StartKind::right, StartKind::stress}) {
        if (kind != StartKind::stress && effort < little) continue;
        if (kind == StartKind::right && elements_of (drawing) > many) continue;
        Start start{kind, drawing};
        if (!start_places (start.drawing, kind)) continue;
        const Box box = bounds_of (start.drawing);
        const double shape = box.width () / std::max (box.height (), 1.0);
        if (shape > 2.6 || shape < 0.45) fold (start.drawing, 4. / 3);
        starts.push_back (std::move (start));
    }
    return starts;
}

Draft make_draft (const Drawing& drawing, const std::vector<Start>& starts, double effort,
                  std::uint64_t chance) {
    const auto flows = acyclic_reactions (drawing);
    Draft best;
    double best_cost = 0;
    for (const Start& start : starts) {
        Draft draft{start.drawing, {}};
        draft.wishes.flows = flows;
        if (start.kind == StartKind::right) draft.wishes.flow = {1, 0};
        if (start.kind == StartKind::stress) draft.wishes.flow_weight = 10;
        draft.wishes.walls = walls_of (draft.drawing, 0.15);
        Random random (12345 + chance);
        Field field (draft.drawing, draft.wishes);
        search (draft.drawing, field, draft.wishes, {work_of (drawing, effort * 1000), 100, 5},
                random);
        const double cost = field.total ();
        if (best.drawing.nodes.empty () || cost < best_cost) {
            best_cost = cost;
            best = std::move (draft);
        }
    }
    return best;
}

std::vector<int> links_to_split (Draft& draft) {
    const Drawing& drawing = draft.drawing;
    Field field (draft.drawing, draft.wishes);
    std::vector<int> found;
    std::vector<std::size_t> degrees;
    for (std::size_t n = 0; n < drawing.nodes.size (); ++n)
        degrees.push_back (drawing.degree (static_cast<int> (n)));
    for (std::size_t l = 0; l < drawing.links.size (); ++l) {
        std::size_t& degree = degrees[at (drawing.links[l].node)];
        if (degree < 2) continue;
        if (field.burden (static_cast<int> (l)) < 300) continue;
        --degree;
        found.push_back (static_cast<int> (l));
    }
    return found;
}

void finish_draft (Draft& draft, double effort, std::uint64_t chance) {
    Drawing& drawing = draft.drawing;
    Random random (54321 + chance);
    {
        Field field (drawing, draft.wishes);
        const int stages = 12;
        const double hot = 100, cold = 0.5;
        const double w0 = 0.4, w1 = 4;
        for (int k = 0; k < stages; ++k) {
            const double a = static_cast<double> (k) / stages;
            const double b = static_cast<double> (k + 1) / stages;
            draft.wishes.wall_weight =
                w0 * std::pow (w1 / w0, static_cast<double> (k) / (stages - 1));
            draft.wishes.walls = walls_of (
                drawing, 0.15 * std::pow (0.35 / 0.15, static_cast<double> (k) / (stages - 1)));
            field.wishes_changed ();
            search (drawing, field, draft.wishes,
                    {work_of (drawing, effort * 3500 / stages), hot * std::pow (cold / hot, a),
                     hot * std::pow (cold / hot, b), 160 * (1 - a) + 8, 160 * (1 - b) + 8, 0},
                    random);
        }
    }
    draft.wishes.clarity = 3;
    draft.wishes.wall_weight = 10;
    draft.wishes.walls = walls_of (drawing, 0.6);
    Field field (drawing, draft.wishes);
    search (drawing, field, draft.wishes, {work_of (drawing, effort * 3000), 80, 1, 40, 8, 0.4},
            random);
}

} // namespace ostrand::arrange
