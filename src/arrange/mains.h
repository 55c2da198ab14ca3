// Which substrate and which product of a reaction are the main ones, when the model does not say?
// Layer: arrange.
#pragma once
#include "arrange/graph.h"

namespace ostrand::arrange {

/// Indexes into the substrates and products of a reaction; -1 where a side is empty.
struct MainReactants {
    int substrate = -1;
    int product = -1;
};

/// Of each reaction the first of each side, to another species where there is one.
std::vector<MainReactants> first_reactants (const Graph& graph);

/// The main reactants of each reaction: the first ones, unless there is a reason for others.
/// Cofactors seldom are main ones, by name and by the number of reactions that a species takes part
/// in, nor is what a reaction leaves unchanged; names that share a part point to each other.
std::vector<MainReactants> main_reactants (const Graph& graph);

} // namespace ostrand::arrange
