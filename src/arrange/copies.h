// Which species are drawn once and which as copies beside their reactions?
// Layer: arrange, internal.
#pragma once
#include "arrange/drawing.h"
#include "arrange/graph.h"

namespace ostrand::arrange {

enum class Side : std::uint8_t { substrate, product, modifier };

/// The place of a species in a reaction: the index-th of a side.
struct Occurrence {
    int reaction;
    Side side;
    int index;
};

/// A network with its nodes made: what is drawn, and which node each occurrence has.
struct Sketch {
    Drawing drawing;                      // places still unset
    std::vector<ReactionPlace> reactions; // nodes of the occurrences
    std::vector<Occurrence> links;        // link of the drawing -> its occurrence
};

/// Makes the nodes. With `copies` false each species keeps one node, except where two arcs would
/// lie on one another and could not be told apart.
Sketch make_sketch (const Graph& graph, bool copies);

/// Gives a link (index in the drawing) a node of its own, at the place of the old one. The drawing
/// is indexed anew by the caller when all is split.
void split_link (const Graph& graph, Sketch& sketch, int link);

/// Sizes of nodes: a species with several nodes is drawn as shared. True when a size changed.
bool update_sizes (const Graph& graph, Drawing& drawing);

/// True for the usual names of cofactors (ATP, NADH, Pi, CoA, H2O ...), with or without a mark of
/// the compartment: "atp_c", "M_nadph_m", "NAD+".
bool is_cofactor_name (std::string_view name);

} // namespace ostrand::arrange
