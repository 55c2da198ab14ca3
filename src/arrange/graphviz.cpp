// How is Graphviz asked?
#include "arrange/graphviz.h"

#include <cmath>
#include <graphviz/cgraph.h>
#include <graphviz/gvc.h>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <utility>

// The two layout plugins are linked, so that no configuration file is read and nothing else is
// loaded.
extern "C" {
extern gvplugin_library_t gvplugin_dot_layout_LTX_library;
extern gvplugin_library_t gvplugin_neato_layout_LTX_library;
}

namespace ostrand::arrange {
namespace {

constexpr double points_per_inch = 72;

int say_nothing (char*) { return 0; }

/// Process-wide state: Graphviz' context, made at its first use and kept.
struct GraphvizState {
    std::mutex mutex;
    std::unique_ptr<GVC_t, int (*) (GVC_t*)> context{nullptr, gvFreeContext};
};

GraphvizState& graphviz_state () {
    static GraphvizState state;
    return state;
}

/// Graphviz takes plain text that it may not change; its declarations say char*.
char* text (const char* s) { return const_cast<char*> (s); }

std::string inches (double pixels) {
    // Three decimals are a tenth of a pixel; std::to_string would follow the locale's point.
    const auto thousandths = static_cast<long> (std::lround (pixels / points_per_inch * 1000));
    std::string fraction = std::to_string (thousandths % 1000);
    fraction.insert (0, 3 - fraction.size (), '0');
    return std::to_string (thousandths / 1000) + "." + fraction;
}

/// Names of nodes, edges and groups as numbers in the order in which they come. Graphviz' own
/// numbers are addresses of their texts, and it visits groups in the order of their numbers: the
/// same graph would be drawn differently from one call to the next.
class Names {
  public:
    static Agiddisc_t* discipline () {
        static Agiddisc_t functions = {open, map, alloc, free, print, close, note};
        return &functions;
    }

  private:
    static void* open (Agraph_t*, Agdisc_t*) { return new Names; }
    static void close (void* state) { delete static_cast<Names*> (state); }

    static long map (void* state, int kind, char* name, IDTYPE* number, int create) {
        return static_cast<Names*> (state)->number_of (kind, name, *number, create != 0);
    }
    long number_of (int kind, const char* name, IDTYPE& number, bool create) {
        if (name == nullptr) {
            if (create) number = ++last_;
            return create ? 1 : 0;
        }
        // Kinds share no names: a node "1" is no group "1".
        const auto found = numbers_.find ({kind, name});
        if (found != numbers_.end ()) {
            number = found->second;
            return 1;
        }
        if (!create) return 0;
        number = ++last_;
        const auto made = numbers_.emplace (std::pair<int, std::string> (kind, name), number).first;
        texts_[{kind, number}] = made->first.second.c_str ();
        return 1;
    }
    static long alloc (void*, int, IDTYPE) { return 0; }
    static void free (void*, int, IDTYPE) {}
    static char* print (void* state, int kind, IDTYPE number) {
        const auto& texts = static_cast<Names*> (state)->texts_;
        const auto found = texts.find ({kind, number});
        return found == texts.end () ? nullptr : text (found->second);
    }
    static void note (void*, int, void*) {}

    IDTYPE last_ = 0;
    std::map<std::pair<int, std::string>, IDTYPE> numbers_;
    std::map<std::pair<int, IDTYPE>, const char*> texts_;
};

/// A graph of Graphviz with its layout, freed in the right order.
class GraphvizGraph {
  public:
    GraphvizGraph (GVC_t* context, const PlainGraph& graph, Method method) : context_ (context) {
        Agdisc_t disciplines = {nullptr, Names::discipline (), nullptr};
        graph_ = agopen (text ("arrange"), Agstrictdirected, &disciplines);
        default_of (AGNODE, "label", "");
        default_of (AGNODE, "shape", "box");
        default_of (AGNODE, "fixedsize", "true");
        Agsym_t* const width = default_of (AGNODE, "width", "0.1");
        Agsym_t* const height = default_of (AGNODE, "height", "0.1");
        Agsym_t* const length = default_of (AGEDGE, "len", "1");
        Agsym_t* const weight = default_of (AGEDGE, "weight", "1");
        default_of (AGRAPH, "splines", "false");
        default_of (AGRAPH, "overlap", "true");
        if (method == Method::layers) {
            default_of (AGRAPH, "ranksep", inches (graph.layer_gap).c_str ());
            default_of (AGRAPH, "nodesep", inches (graph.node_gap).c_str ());
            // Bounds of the network simplex and of the sweeps, so that no graph takes for ever.
            default_of (AGRAPH, "nslimit", "4");
            default_of (AGRAPH, "nslimit1", "4");
            default_of (AGRAPH, "mclimit", graph.nodes.size () > 400 ? "0.5" : "1");
        } else if (method == Method::stress) {
            default_of (AGRAPH, "maxiter", "200");
            default_of (AGRAPH, "epsilon", "0.001");
        }
        for (std::size_t i = 0; i < graph.nodes.size (); ++i) {
            Agnode_t* const node = agnode (graph_, text (std::to_string (i).c_str ()), 1);
            agxset (node, width, text (inches (graph.nodes[i].width).c_str ()));
            agxset (node, height, text (inches (graph.nodes[i].height).c_str ()));
            nodes_.push_back (node);
        }
        for (const PlainEdge& e : graph.edges) {
            Agedge_t* const edge = agedge (graph_, nodes_[static_cast<std::size_t> (e.from)],
                                           nodes_[static_cast<std::size_t> (e.to)], nullptr, 1);
            agxset (edge, length, text (inches (e.length).c_str ()));
            agxset (edge, weight, text (std::to_string (e.weight).c_str ()));
        }
        const char* const engine = method == Method::layers   ? "dot"
                                   : method == Method::stress ? "neato"
                                                              : "sfdp";
        if (method == Method::layers) add_groups (graph);
        placed_ = gvLayout (context_, graph_, engine) == 0;
    }
    ~GraphvizGraph () {
        if (placed_) gvFreeLayout (context_, graph_);
        agclose (graph_);
    }
    GraphvizGraph (const GraphvizGraph&) = delete;
    GraphvizGraph& operator= (const GraphvizGraph&) = delete;

    std::optional<std::vector<Point>> centres () const {
        if (!placed_) return std::nullopt;
        std::vector<Point> points;
        for (Agnode_t* const node : nodes_) {
            const Point p{ND_coord (node).x, -ND_coord (node).y};
            if (!std::isfinite (p.x) || !std::isfinite (p.y)) return std::nullopt;
            points.push_back (p);
        }
        return points;
    }

  private:
    Agsym_t* default_of (int kind, const char* name, const char* value) {
        return agattr (graph_, kind, text (name), text (value));
    }

    void add_groups (const PlainGraph& graph) {
        if (graph.group_of.empty ()) return;
        default_of (AGRAPH, "margin", std::to_string (std::lround (graph.group_margin)).c_str ());
        std::vector<Agraph_t*> groups (graph.group_outer.size (), nullptr);
        // A group comes into the one around it, so that one is made first.
        const auto group = [&] (const auto& self, int g, std::size_t depth) -> Agraph_t* {
            if (g < 0 || depth > groups.size ()) return graph_;
            Agraph_t*& made = groups[static_cast<std::size_t> (g)];
            if (made == nullptr) {
                Agraph_t* const outer =
                    self (self, graph.group_outer[static_cast<std::size_t> (g)], depth + 1);
                made = agsubg (outer, text (("cluster" + std::to_string (g)).c_str ()), 1);
            }
            return made;
        };
        for (std::size_t n = 0; n < nodes_.size (); ++n) {
            if (graph.group_of[n] >= 0)
                agsubnode (group (group, graph.group_of[n], 0), nodes_[n], 1);
        }
    }

    GVC_t* context_;
    Agraph_t* graph_;
    std::vector<Agnode_t*> nodes_;
    bool placed_ = false;
};

} // namespace

std::optional<std::vector<Point>> place_by_graphviz (const PlainGraph& graph, Method method) {
    if (graph.nodes.empty ()) return std::vector<Point>{};
    GraphvizState& state = graphviz_state ();
    const std::lock_guard<std::mutex> lock (state.mutex);
    if (!state.context) {
        static lt_symlist_t plugins[] = {
            {"gvplugin_dot_layout_LTX_library", &gvplugin_dot_layout_LTX_library},
            {"gvplugin_neato_layout_LTX_library", &gvplugin_neato_layout_LTX_library},
            {nullptr, nullptr}};
        state.context.reset (gvContextPlugins (plugins, 0));
        agseterr (AGMAX);
        agseterrf (say_nothing);
    }
    return GraphvizGraph (state.context.get (), graph, method).centres ();
}

} // namespace ostrand::arrange
