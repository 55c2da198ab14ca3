#include "arrange/plain_crossings.h"

#include <graphviz/cgraph.h>
#include <graphviz/gvc.h>
#include <map>
#include <string>

extern "C" {
extern gvplugin_library_t gvplugin_dot_layout_LTX_library;
}

namespace ostrand::testing {
namespace {

using arrange::Point;

std::size_t at (int i) { return static_cast<std::size_t> (i); }

double turn (Point a, Point b, Point c) {
    return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

char* text (const char* s) { return const_cast<char*> (s); }

std::string inches (double pixels) { return std::to_string (pixels / 72); }

} // namespace

bool cut (Point a, Point b, Point c, Point d) {
    return turn (a, b, c) * turn (a, b, d) < 0 && turn (c, d, a) * turn (c, d, b) < 0;
}

int PlainDrawing::add (Point place, arrange::Size size, int box) {
    places.push_back (place);
    sizes.push_back (size);
    boxes.push_back (box);
    return static_cast<int> (places.size ()) - 1;
}

void PlainDrawing::join (int from, int to) {
    if (from >= 0 && to >= 0 && !edges.contains ({to, from})) edges.emplace (from, to);
}

PlainDrawing plain_drawing (const arrange::Layout& layout) {
    PlainDrawing drawing;
    for (const arrange::NodePlace& n : layout.nodes) drawing.add (n.centre, n.size, n.compartment);
    for (const arrange::ReactionPlace& r : layout.reactions) {
        const int square = drawing.add (r.square, {14, 14}, -1);
        for (const int n : r.substrates) drawing.join (n, square);
        for (const int n : r.products) drawing.join (square, n);
        for (const int n : r.modifiers) drawing.join (n, square);
    }
    return drawing;
}

/// Lines that share an end do not cross.
int crossings (const PlainDrawing& drawing) {
    const std::vector<std::pair<int, int>> list (drawing.edges.begin (), drawing.edges.end ());
    const auto place = [&] (int n) { return drawing.places[at (n)]; };
    int count = 0;
    for (std::size_t a = 0; a < list.size (); ++a) {
        const auto [p, q] = list[a];
        for (std::size_t b = 0; b < a; ++b) {
            const auto [r, s] = list[b];
            if (p == r || p == s || q == r || q == s) continue;
            if (cut (place (p), place (q), place (r), place (s))) ++count;
        }
    }
    return count;
}

int dot_crossings (const PlainDrawing& drawing, bool boxes) {
    static lt_symlist_t plugins[] = {
        {"gvplugin_dot_layout_LTX_library", &gvplugin_dot_layout_LTX_library}, {nullptr, nullptr}};
    static GVC_t* const context = gvContextPlugins (plugins, 0);
    agseterr (AGMAX);
    agseterrf ([] (char*) { return 0; });
    Agraph_t* const g = agopen (text ("dot"), Agstrictdirected, nullptr);
    agattr (g, AGNODE, text ("label"), text (""));
    agattr (g, AGNODE, text ("shape"), text ("box"));
    agattr (g, AGNODE, text ("fixedsize"), text ("true"));
    agattr (g, AGRAPH, text ("splines"), text ("line"));
    Agsym_t* const width = agattr (g, AGNODE, text ("width"), text ("0.2"));
    Agsym_t* const height = agattr (g, AGNODE, text ("height"), text ("0.2"));
    std::vector<Agnode_t*> nodes;
    std::map<int, Agraph_t*> clusters;
    for (std::size_t n = 0; n < drawing.places.size (); ++n) {
        Agnode_t* const node = agnode (g, text (std::to_string (n).c_str ()), 1);
        agxset (node, width, text (inches (drawing.sizes[n].width).c_str ()));
        agxset (node, height, text (inches (drawing.sizes[n].height).c_str ()));
        nodes.push_back (node);
        const int box = drawing.boxes[n];
        if (!boxes || box < 0) continue;
        Agraph_t*& cluster = clusters[box];
        if (!cluster) cluster = agsubg (g, text (("cluster" + std::to_string (box)).c_str ()), 1);
        agsubnode (cluster, node, 1);
    }
    for (const auto& [from, to] : drawing.edges)
        agedge (g, nodes[at (from)], nodes[at (to)], nullptr, 1);
    int count = -1;
    if (gvLayout (context, g, "dot") == 0) {
        PlainDrawing other = drawing;
        for (std::size_t n = 0; n < nodes.size (); ++n)
            other.places[n] = {ND_coord (nodes[n]).x, ND_coord (nodes[n]).y};
        count = crossings (other);
        gvFreeLayout (context, g);
    }
    agclose (g);
    return count;
}

} // namespace ostrand::testing
