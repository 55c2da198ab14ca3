// Where do nodes stand first?
#include "arrange/start.h"

#include "arrange/field.h"
#include "arrange/graphviz.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace ostrand::arrange {
namespace {

constexpr std::size_t most_for_stress = 400; // nodes: its time and memory grow by the square
constexpr std::size_t most_for_layers = 800;
constexpr std::size_t most_cycles_for_layers = 160; // edges beyond a tree: each asks for detours
constexpr double square_room = 22;                  // of a square as a node of the layered drawing
constexpr double link_room = 32; // of a link from its square to the box of its node
constexpr double leaf_room = 6;  // that a leaf at its square adds to the length of an arc
constexpr double layer_gap = 22;
constexpr double node_gap_in_layer = 18;
constexpr int main_weight = 4;
constexpr int rotations = 24;
constexpr std::array<double, 6> scales = {1, 1.4, 2, 2.7, 3.5, 4.5};

std::size_t at (int i) { return static_cast<std::size_t> (i); }

double reach_of (const DrawnNode& node) { return (node.half_width + node.half_height) / 2; }

/// Nodes first, then the squares; arcs as two edges each.
PlainGraph layered_graph (const Drawing& drawing, bool swap_axes) {
    PlainGraph graph;
    graph.layer_gap = layer_gap;
    graph.node_gap = node_gap_in_layer;
    const auto size = [&] (double width, double height) {
        return swap_axes ? Size{height, width} : Size{width, height};
    };
    for (const DrawnNode& node : drawing.nodes)
        graph.nodes.push_back (size (2 * node.half_width, 2 * node.half_height));
    const int first_square = static_cast<int> (drawing.nodes.size ());
    for (std::size_t r = 0; r < drawing.reactions.size (); ++r) {
        const DrawnReaction& reaction = drawing.reactions[r];
        const int square = first_square + static_cast<int> (r);
        graph.nodes.push_back (size (square_room, square_room));
        graph.edges.push_back ({reaction.from, square, 1, main_weight});
        graph.edges.push_back ({square, reaction.to, 1, main_weight});
        for (const int l : drawing.reaction_links[r]) {
            const DrawnLink& link = drawing.links[at (l)];
            if (link.end == LinkEnd::product) {
                graph.edges.push_back ({square, link.node, 1, 1});
            } else {
                graph.edges.push_back ({link.node, square, 1, 1});
            }
        }
    }
    return graph;
}

/// What is left of a drawing without the nodes that hang on one arc only: these find their places
/// later, and all-pairs distances are dear.
struct Core {
    PlainGraph graph;
    std::vector<int> number; // node of the drawing -> node of the graph; -1 a leaf
};

Core core_of (const Drawing& drawing) {
    Core core;
    core.number.assign (drawing.nodes.size (), -1);
    const auto add = [&] (int node) {
        int& number = core.number[at (node)];
        if (number >= 0) return;
        number = static_cast<int> (core.graph.nodes.size ());
        core.graph.nodes.push_back ({20, 20});
    };
    for (std::size_t n = 0; n < drawing.nodes.size (); ++n)
        if (drawing.degree (static_cast<int> (n)) > 1 && !drawing.hangs (static_cast<int> (n)))
            add (static_cast<int> (n));
    for (std::size_t r = 0; r < drawing.reactions.size (); ++r) {
        const DrawnReaction& reaction = drawing.reactions[r];
        int leaves = 0;
        bool joins = false; // other nodes than the ends hang on the square and on more
        for (const int l : drawing.reaction_links[r]) {
            if (core.number[at (drawing.links[at (l)].node)] < 0)
                ++leaves;
            else
                joins = true;
        }
        if (joins) {
            add (reaction.from);
            add (reaction.to);
        }
        // A reaction between two leaves is a whole drawing: one of them is its core.
        if (core.graph.nodes.empty ()) add (reaction.from);
        const int from = core.number[at (reaction.from)];
        const int to = core.number[at (reaction.to)];
        if (from < 0 || to < 0) continue;
        const double half = (reaction.ideal + leaf_room * leaves) / 2;
        const double first = half + reach_of (drawing.nodes[at (reaction.from)]);
        const double second = half + reach_of (drawing.nodes[at (reaction.to)]);
        if (!joins) {
            if (from != to) core.graph.edges.push_back ({from, to, first + second, 1});
            continue;
        }
        const int square = static_cast<int> (core.graph.nodes.size ());
        core.graph.nodes.push_back ({14, 14});
        core.graph.edges.push_back ({from, square, first, 1});
        core.graph.edges.push_back ({square, to, second, 1});
        for (const int l : drawing.reaction_links[r]) {
            const int node = drawing.links[at (l)].node;
            if (core.number[at (node)] < 0) continue;
            core.graph.edges.push_back ({core.number[at (node)], square,
                                         link_room + reach_of (drawing.nodes[at (node)]), 1});
        }
    }
    return core;
}

/// Puts the leaves around what they hang on: ends of main arcs first, since squares follow them.
void place_leaves (Drawing& drawing, const Core& core) {
    std::vector<int> placed_around (drawing.nodes.size (), 0);
    const auto turn = [] (int k) { return 2.4 * k; }; // the golden angle spreads any number evenly
    for (const DrawnReaction& r : drawing.reactions) {
        const bool from_is_leaf = core.number[at (r.from)] < 0;
        const bool to_is_leaf = core.number[at (r.to)] < 0;
        if (from_is_leaf == to_is_leaf) continue;
        const int centre = from_is_leaf ? r.to : r.from;
        DrawnNode& leaf = drawing.nodes[at (from_is_leaf ? r.from : r.to)];
        const DrawnNode& node = drawing.nodes[at (centre)];
        const int k = placed_around[at (centre)]++;
        const double distance =
            r.ideal + reach_of (leaf) + reach_of (node) + 8 * std::sqrt (static_cast<double> (k));
        leaf.at = {node.at.x + distance * std::cos (turn (k)),
                   node.at.y + distance * std::sin (turn (k))};
    }
    for (std::size_t r = 0; r < drawing.reactions.size (); ++r) {
        const DrawnReaction& reaction = drawing.reactions[r];
        const Point a = drawing.nodes[at (reaction.from)].at;
        const Point b = drawing.nodes[at (reaction.to)].at;
        const double direction = std::atan2 (b.y - a.y, b.x - a.x);
        int k = 0;
        for (const int l : drawing.reaction_links[r]) {
            const DrawnLink& link = drawing.links[at (l)];
            if (core.number[at (link.node)] >= 0) continue;
            DrawnNode& leaf = drawing.nodes[at (link.node)];
            // Substrates come from behind, products leave before, on both sides in turn.
            const double lean = link.end == LinkEnd::substrate ? 2.2
                                : link.end == LinkEnd::product ? 0.9
                                                               : 1.57;
            const int pair = k / 2; // the first on each side, the second
            const double angle = direction + (k % 2 == 0 ? lean : -lean) + 0.3 * pair;
            const double distance = link_room + 14 + reach_of (leaf) + 6 * pair;
            leaf.at = {(a.x + b.x) / 2 + distance * std::cos (angle),
                       (a.y + b.y) / 2 + distance * std::sin (angle)};
            ++k;
        }
    }
}

/// Springs know no lengths: scales so that arcs have theirs in the middle.
void scale_to_lengths (const PlainGraph& graph, std::vector<Point>& places) {
    std::vector<double> ratios;
    for (const PlainEdge& e : graph.edges) {
        const Point a = places[at (e.from)];
        const Point b = places[at (e.to)];
        const double length = std::hypot (b.x - a.x, b.y - a.y);
        if (length > 0) ratios.push_back (e.length / length);
    }
    if (ratios.empty ()) return;
    const auto middle = ratios.begin () + static_cast<std::ptrdiff_t> (ratios.size () / 2);
    std::nth_element (ratios.begin (), middle, ratios.end ());
    for (Point& p : places) p = {p.x * *middle, p.y * *middle};
}

/// Turns places about the origin so that reactions lead downwards as well as one turn can do it.
void turn_downwards (Drawing& drawing, const std::vector<char>& flows) {
    double best = 0;
    double best_angle = 0;
    for (int k = 0; k < rotations; ++k) {
        const double angle = 2 * std::numbers::pi * k / rotations;
        const double s = std::sin (angle);
        const double c = std::cos (angle);
        double sum = 0;
        for (std::size_t r = 0; r < drawing.reactions.size (); ++r) {
            if (!flows[r]) continue;
            const Point a = drawing.nodes[at (drawing.reactions[r].from)].at;
            const Point b = drawing.nodes[at (drawing.reactions[r].to)].at;
            const double length = std::hypot (b.x - a.x, b.y - a.y);
            if (length > 0) sum += (s * (b.x - a.x) + c * (b.y - a.y)) / length;
        }
        if (sum > best + 1e-9) {
            best = sum;
            best_angle = angle;
        }
    }
    const double s = std::sin (best_angle);
    const double c = std::cos (best_angle);
    for (DrawnNode& node : drawing.nodes)
        node.at = {c * node.at.x - s * node.at.y, s * node.at.x + c * node.at.y};
}

bool start_in_layers (Drawing& drawing, bool to_the_right) {
    const PlainGraph graph = layered_graph (drawing, to_the_right);
    if (graph.nodes.size () > most_for_layers ||
        graph.edges.size () > graph.nodes.size () + most_cycles_for_layers)
        return false;
    const auto places = place_by_graphviz (graph, Method::layers);
    if (!places) return false;
    // Layers run downwards; for layers to the right the axes change places.
    for (std::size_t n = 0; n < drawing.nodes.size (); ++n) {
        const Point p = (*places)[n];
        drawing.nodes[n].at = to_the_right ? Point{p.y, p.x} : p;
    }
    return true;
}

bool start_by_stress (Drawing& drawing) {
    const Core core = core_of (drawing);
    const bool few = core.graph.nodes.size () <= most_for_stress;
    auto places = place_by_graphviz (core.graph, few ? Method::stress : Method::springs);
    if (!places) return false;
    if (!few) scale_to_lengths (core.graph, *places);
    // Distances in the graph do not know how much room labels and arcs need: the scale at which the
    // drawing costs least.
    Drawing best;
    double best_cost = 0;
    Wishes wishes;
    wishes.wall_weight = 0;
    wishes.flows.assign (drawing.reactions.size (), 0);
    for (const double scale : scales) {
        for (std::size_t n = 0; n < drawing.nodes.size (); ++n) {
            if (core.number[n] < 0) continue;
            const Point p = (*places)[at (core.number[n])];
            drawing.nodes[n].at = {p.x * scale, p.y * scale};
        }
        place_leaves (drawing, core);
        const double cost = Field (drawing, wishes).total ();
        if (!best.nodes.empty () && cost >= best_cost) continue;
        best = drawing;
        best_cost = cost;
    }
    drawing = std::move (best);
    turn_downwards (drawing, acyclic_reactions (drawing));
    return true;
}

} // namespace

bool start_places (Drawing& drawing, StartKind kind) {
    if (kind == StartKind::stress) return start_by_stress (drawing);
    return start_in_layers (drawing, kind == StartKind::right);
}

bool start_in_boxes (Drawing& drawing, const std::vector<int>& outer, double margin) {
    PlainGraph graph = layered_graph (drawing, false);
    if (graph.nodes.size () > most_for_layers ||
        graph.edges.size () > graph.nodes.size () + most_cycles_for_layers)
        return false;
    graph.group_outer = outer;
    graph.group_margin = margin;
    for (const DrawnNode& node : drawing.nodes) graph.group_of.push_back (node.compartment);
    for (const DrawnReaction& r : drawing.reactions) {
        const int from = drawing.nodes[at (r.from)].compartment;
        graph.group_of.push_back (from == drawing.nodes[at (r.to)].compartment ? from : -1);
    }
    const auto places = place_by_graphviz (graph, Method::layers);
    if (!places) return false;
    for (std::size_t n = 0; n < drawing.nodes.size (); ++n) drawing.nodes[n].at = (*places)[n];
    return true;
}

void fold (Drawing& drawing, double aspect) {
    const Box box = bounds_of (drawing);
    const bool tall = box.height () * aspect > box.width ();
    const double length = tall ? box.height () : box.width ();
    const double across = (tall ? box.width () : box.height ()) + 60;
    // k columns: (k across) : (length / k) as wanted.
    const double wanted = tall ? aspect : 1 / aspect;
    const int columns = static_cast<int> (std::lround (std::sqrt (wanted * length / across)));
    if (columns < 2) return;
    const double part = length / columns;
    for (DrawnNode& node : drawing.nodes) {
        const double along = tall ? node.at.y - box.top : node.at.x - box.left;
        const double beside = tall ? node.at.x - box.left : node.at.y - box.top;
        const int column = std::min (columns - 1, static_cast<int> (along / part));
        const double rest = along - column * part;
        const double new_along = column % 2 == 0 ? rest : part - rest;
        const double new_beside = column * across + beside;
        node.at = tall ? Point{new_beside, new_along} : Point{new_along, new_beside};
    }
}

std::vector<char> acyclic_reactions (const Drawing& drawing) {
    // Strongly connected sets of nodes by Tarjan's algorithm, without recursion. A reversible
    // reaction alone makes no cycle: it counts in its written direction.
    const std::size_t n = drawing.nodes.size ();
    std::vector<int> order (n, -1);
    std::vector<int> low (n, 0);
    std::vector<int> set (n, -1);
    std::vector<std::size_t> next (n, 0);
    std::vector<int> stack;
    std::vector<int> path;
    int count = 0;
    int sets = 0;
    for (std::size_t start = 0; start < n; ++start) {
        if (order[start] >= 0) continue;
        path.push_back (static_cast<int> (start));
        while (!path.empty ()) {
            const std::size_t v = at (path.back ());
            if (order[v] < 0) {
                order[v] = low[v] = count++;
                stack.push_back (static_cast<int> (v));
            }
            bool deeper = false;
            while (next[v] < drawing.node_reactions[v].size ()) {
                const DrawnReaction& r = drawing.reactions[at (drawing.node_reactions[v][next[v]])];
                ++next[v];
                if (at (r.from) != v) continue;
                const std::size_t w = at (r.to);
                if (order[w] < 0) {
                    path.push_back (r.to);
                    deeper = true;
                    break;
                }
                if (set[w] < 0) low[v] = std::min (low[v], order[w]);
            }
            if (deeper) continue;
            if (low[v] == order[v]) {
                while (true) {
                    const int w = stack.back ();
                    stack.pop_back ();
                    set[at (w)] = sets;
                    if (at (w) == v) break;
                }
                ++sets;
            }
            path.pop_back ();
            if (!path.empty ()) low[at (path.back ())] = std::min (low[at (path.back ())], low[v]);
        }
    }
    std::vector<char> acyclic;
    for (const DrawnReaction& r : drawing.reactions)
        acyclic.push_back (set[at (r.from)] != set[at (r.to)]);
    return acyclic;
}

} // namespace ostrand::arrange
