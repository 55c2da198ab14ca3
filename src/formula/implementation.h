// A set of gates that computes a formula, and the network it stands for.
// Layer: formula.
#pragma once
#include "formula/library.h"

#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace ostrand::formula {

/// One minimal network. Gates and reactions belong to the library that they were found in.
struct Implementation {
    std::string text;                   // the network as SBML; see write_network
    std::set<std::string> species;      // all names of its reactions
    ReactionSet reactions;              // one for each id
    std::set<std::string> reaction_ids; //
    std::vector<const LibGate*> gates;  // in the order in which the search put them on the tree
    std::set<std::string> inputs;       // the formula's variables
    std::set<std::string> forbidden;    // species that must be absent
    std::set<std::string> excess;       // species that must be there
    std::string output;                 //
    /// Species to its low and high threshold; see set_thresholds.
    std::map<std::string, std::pair<double, double>> thresholds;
};

/// The reaction ids in order, joined by blanks.
std::string reaction_line (const Implementation& implementation);

} // namespace ostrand::formula
