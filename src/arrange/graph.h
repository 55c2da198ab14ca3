// What an arrangement is asked for and what it answers: a network as species, reactions and
// compartments with sizes, and the places of what is drawn. Neither knows documents or files.
// Layer: arrange.
#pragma once
#include <string>
#include <vector>

namespace ostrand::arrange {

/// Width and height in network pixels.
struct Size {
    double width = 0;
    double height = 0;
    bool operator== (const Size&) const = default;
};

/// Network pixels, y down.
struct Point {
    double x = 0;
    double y = 0;
    bool operator== (const Point&) const = default;
};

struct Box {
    double left = 0;
    double top = 0;
    double right = 0;
    double bottom = 0;
    double width () const { return right - left; }
    double height () const { return bottom - top; }
    bool operator== (const Box&) const = default;
};

/// What a species is. Small molecules become copies more readily than proteins.
enum class SpeciesKind { molecule, protein, gene, receptor, other };

struct Species {
    std::string name; // as drawn; a known name of a cofactor is evidence beside the degree
    SpeciesKind kind = SpeciesKind::molecule;
    Size size;            // of the node with its label
    Size shared_size;     // of each node when the species is drawn more than once; 0: as `size`
    int compartment = -1; // index of the compartment that holds it; -1 none
};

enum class ModifierRole { catalysis, inhibition, activation, necessary_activation, influence };

struct Modifier {
    int species = -1;
    ModifierRole role = ModifierRole::catalysis;
};

/// One reaction. The first substrate and the first product are the main ones: the straight arc
/// between them carries the square. Without substrates (products) the arc starts (ends) at a small
/// mark. A species may stand several times on a side.
struct Reaction {
    std::vector<int> substrates; // species
    std::vector<int> products;   // species
    std::vector<Modifier> modifiers;
    bool reversible = false;
    Size start_label; // the text beside the start of the main arc; 0 none
    Size end_label;   // and beside its end
};

struct Compartment {
    std::string name;
    Size label;         // of the name inside the lower edge; 0 none
    int parent = -1;    // the compartment around it; -1 none
    bool round = false; // an ellipse in its box
};

struct Graph {
    std::vector<Species> species;
    std::vector<Reaction> reactions;
    std::vector<Compartment> compartments;
    Size mark{10, 10}; // of the mark that stands for a source or a sink
};

/// A node to be drawn.
struct NodePlace {
    int species = -1; // -1: the mark of a source or a sink
    Point centre;     // half sizes are kept: the box is centre -+ size / 2
    Size size;
    int compartment = -1;
    bool shared = false; // the species stands elsewhere, too
};

/// Which nodes a reaction links, and where its square falls.
struct ReactionPlace {
    std::vector<int> substrates; // nodes, in the order of the reaction; one mark if it has none
    std::vector<int> products;   // likewise
    std::vector<int> modifiers;  // likewise; empty if it has none
    Point square;                // the middle of the square
};

/// The answer. Each species has at least one node, and each occurrence of a species in a reaction
/// names its node, so that an occurrence that got a copy of its own is seen by its node. An index
/// of the input that is out of range gives node -1 and no node.
struct Layout {
    std::vector<NodePlace> nodes;
    std::vector<ReactionPlace> reactions; // as in the graph
    std::vector<Box> compartments;        // as in the graph
    Size page;                            // everything lies inside (0, 0) .. page with a margin
};

} // namespace ostrand::arrange
