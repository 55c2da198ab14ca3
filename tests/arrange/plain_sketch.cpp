#include "arrange/plain_sketch.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <map>

namespace ostrand::testing {
namespace {

using arrange::Box;
using arrange::Point;

std::string escaped (const std::string& text) {
    std::string result;
    for (const char c : text) {
        if (c == '&')
            result += "&amp;";
        else if (c == '<')
            result += "&lt;";
        else
            result += c;
    }
    return result;
}

template <typename... Values>
std::string format (const char* pattern, Values... values) {
    char buffer[600];
    std::snprintf (buffer, sizeof buffer, pattern, values...);
    return buffer;
}

Point edge (const arrange::NodePlace& node, Point towards) {
    const double dx = towards.x - node.centre.x;
    const double dy = towards.y - node.centre.y;
    double t = 1;
    if (dx != 0) t = std::min (t, node.size.width / 2 / std::abs (dx));
    if (dy != 0) t = std::min (t, node.size.height / 2 / std::abs (dy));
    return {node.centre.x + t * dx, node.centre.y + t * dy};
}

std::string line (Point a, Point b, const char* colour) {
    return format (
        "<line x1='%.1f' y1='%.1f' x2='%.1f' y2='%.1f' stroke='%s' stroke-width='1.5'/>\n", a.x,
        a.y, b.x, b.y, colour);
}

std::string arrow (Point tip, Point from, const char* colour) {
    const double length = std::max (1e-9, std::hypot (tip.x - from.x, tip.y - from.y));
    const double ux = (tip.x - from.x) / length;
    const double uy = (tip.y - from.y) / length;
    return format ("<path d='M%.1f %.1f L%.1f %.1f L%.1f %.1f Z' fill='%s'/>\n", tip.x, tip.y,
                   tip.x - 13 * ux - 5 * uy, tip.y - 13 * uy + 5 * ux, tip.x - 13 * ux + 5 * uy,
                   tip.y - 13 * uy - 5 * ux, colour);
}

} // namespace

std::string sketch (const arrange::Graph& graph, const arrange::Layout& layout) {
    std::string svg = format ("<svg xmlns='http://www.w3.org/2000/svg' width='%.0f' height='%.0f' "
                              "font-family='Liberation Sans' font-size='14'>\n"
                              "<rect width='100%%' height='100%%' fill='white'/>\n",
                              layout.page.width, layout.page.height);
    // Outer compartments first.
    std::map<int, std::vector<std::size_t>> by_depth;
    for (std::size_t c = 0; c < layout.compartments.size (); ++c) {
        int depth = 0;
        for (int p = graph.compartments[c].parent; p >= 0 && depth < 100;
             p = graph.compartments[static_cast<std::size_t> (p)].parent)
            ++depth;
        by_depth[depth].push_back (c);
    }
    for (const auto& [depth, members] : by_depth) {
        for (const std::size_t c : members) {
            const Box& b = layout.compartments[c];
            svg += format ("<rect x='%.1f' y='%.1f' width='%.1f' height='%.1f' rx='8' fill='#fff' "
                           "stroke='#3050c0' stroke-width='2'/>\n<rect x='%.1f' y='%.1f' "
                           "width='%.1f' height='%.1f' rx='5' fill='none' stroke='#c8d0f0' "
                           "stroke-width='6'/>\n",
                           b.left, b.top, b.width (), b.height (), b.left + 5, b.top + 5,
                           b.width () - 10, b.height () - 10);
            svg += format ("<text x='%.1f' y='%.1f' text-anchor='middle' fill='#3050c0'>",
                           (b.left + b.right) / 2, b.bottom - 14) +
                   escaped (graph.compartments[c].name) + "</text>\n";
        }
    }
    const auto node = [&] (int n) -> const arrange::NodePlace& {
        return layout.nodes.at (static_cast<std::size_t> (n));
    };
    std::map<std::pair<int, int>, int> parallel;
    for (const auto& r : layout.reactions)
        ++parallel[std::minmax (r.substrates.at (0), r.products.at (0))];
    std::string squares;
    for (std::size_t i = 0; i < layout.reactions.size (); ++i) {
        const arrange::ReactionPlace& r = layout.reactions[i];
        const int a = r.substrates.at (0);
        const int b = r.products.at (0);
        Point from = edge (node (a), node (b).centre);
        Point to = edge (node (b), node (a).centre);
        const double length = std::max (1e-9, std::hypot (to.x - from.x, to.y - from.y));
        const double ux = (to.x - from.x) / length;
        const double uy = (to.y - from.y) / length;
        if (parallel[std::minmax (a, b)] > 1) {
            const Point middle{(from.x + to.x) / 2, (from.y + to.y) / 2};
            const double off = (r.square.x - middle.x) * -uy + (r.square.y - middle.y) * ux;
            from = {from.x - uy * off, from.y + ux * off};
            to = {to.x - uy * off, to.y + ux * off};
        }
        svg += line (from, to, "black") + arrow (to, from, "black");
        if (graph.reactions[i].reversible) svg += arrow (from, to, "black");
        squares += format ("<rect x='-7' y='-7' width='14' height='14' fill='white' stroke='black' "
                           "stroke-width='2' transform='translate(%.1f %.1f) rotate(%.1f)'/>\n",
                           r.square.x, r.square.y, std::atan2 (uy, ux) * 180 / 3.14159265);
        for (std::size_t k = 1; k < r.substrates.size (); ++k) {
            if (r.substrates[k] < 0) continue;
            const Point end{r.square.x - 25 * ux, r.square.y - 25 * uy};
            svg += line (edge (node (r.substrates[k]), end), end, "black");
        }
        for (std::size_t k = 1; k < r.products.size (); ++k) {
            if (r.products[k] < 0) continue;
            const Point end{r.square.x + 25 * ux, r.square.y + 25 * uy};
            const Point tip = edge (node (r.products[k]), end);
            svg += line (end, tip, "black") + arrow (tip, end, "black");
        }
        for (std::size_t k = 0; k < r.modifiers.size (); ++k) {
            if (r.modifiers[k] < 0) continue;
            const arrange::NodePlace& n = node (r.modifiers[k]);
            const bool stops =
                graph.reactions[i].modifiers[k].role == arrange::ModifierRole::inhibition;
            const double reach =
                std::max (std::abs (n.centre.x - r.square.x), std::abs (n.centre.y - r.square.y));
            const double t = reach > 9 ? 11 / reach : 0;
            const Point end{r.square.x + t * (n.centre.x - r.square.x),
                            r.square.y + t * (n.centre.y - r.square.y)};
            svg += line (edge (n, r.square), end, stops ? "#d02020" : "#206020");
            squares +=
                format ("<circle cx='%.1f' cy='%.1f' r='3.5' fill='%s' stroke='%s'/>\n", end.x,
                        end.y, stops ? "#d02020" : "white", stops ? "#d02020" : "#206020");
        }
    }
    svg += squares;
    for (const arrange::NodePlace& n : layout.nodes) {
        const double left = n.centre.x - n.size.width / 2;
        const double top = n.centre.y - n.size.height / 2;
        if (n.species < 0) {
            svg += format ("<circle cx='%.1f' cy='%.1f' r='%.1f' fill='white' stroke='#808080' "
                           "stroke-width='1.5'/><line x1='%.1f' y1='%.1f' x2='%.1f' y2='%.1f' "
                           "stroke='#808080'/>\n",
                           n.centre.x, n.centre.y, n.size.width / 2, left, top + n.size.height,
                           left + n.size.width, top);
            continue;
        }
        const arrange::Species& s = graph.species[static_cast<std::size_t> (n.species)];
        if (s.kind == arrange::SpeciesKind::molecule) {
            svg += format ("<ellipse cx='%.1f' cy='%.1f' rx='%.1f' ry='%.1f' fill='%s' "
                           "stroke='black' stroke-width='1.5'/>\n",
                           n.centre.x, n.centre.y, n.size.width / 2, n.size.height / 2,
                           n.shared ? "#fff0a0" : "#ffd820");
        } else {
            svg += format ("<rect x='%.1f' y='%.1f' width='%.1f' height='%.1f' rx='%d' "
                           "fill='%s' stroke='black' stroke-width='1.5'/>\n",
                           left, top, n.size.width, n.size.height,
                           s.kind == arrange::SpeciesKind::protein ? 7 : 0,
                           n.shared ? "#e0ffff" : "#b0ffff");
        }
        if (n.shared)
            svg += format ("<rect x='%.1f' y='%.1f' width='%.1f' height='3' fill='black'/>\n",
                           left + n.size.width * 0.25, top + n.size.height - 4, n.size.width * 0.5);
        svg += format ("<text x='%.1f' y='%.1f' text-anchor='middle'>", n.centre.x,
                       n.centre.y + (n.shared ? 3 : 5)) +
               escaped (s.name) + "</text>\n";
    }
    return svg + "</svg>\n";
}

} // namespace ostrand::testing
