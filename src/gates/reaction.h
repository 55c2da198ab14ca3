// One reaction of a metabolic model, as every reader of this folder gives it.
// Layer: gates.
#pragma once
#include <map>
#include <string>
#include <vector>

namespace ostrand::gates {

struct Reaction {
    std::vector<std::string> inhibitors;             // element names
    std::vector<std::string> enzymes;                // enzyme names
    std::vector<std::string> substrates;             // element names, in reading order
    std::vector<std::string> products;               // element names, in reading order
    std::map<std::string, std::string> coefficients; // by element; only from a reaction table
    std::string id;
    bool reversible = true;
    std::string kinetic_type; // only from a reaction table
};

} // namespace ostrand::gates
