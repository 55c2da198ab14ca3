// The reactions of a network as equations with kinetics.
// Layer: sbml_out, internal.
#pragma once
#include "document/network.h"

#include <optional>
#include <string>
#include <vector>

namespace ostrand::sbml_out {

/// A species' part in a reaction.
struct Part {
    const document::Arque* arc = nullptr; // the link, or the reaction itself for its own ends
    const document::Node* node = nullptr;
    double stoichiometry = 1;
    std::optional<double> constant; // Km or Ki, uM
};

struct Equation {
    const document::Arque* arc = nullptr;
    std::vector<Part> reactants;
    std::vector<Part> products;
    std::vector<Part> modifiers;
};

/// A node that is no species: the small mark of a source or a sink.
bool is_mark (const document::Node& n);

/// What a reaction turns into what.
Equation equation_of (const document::Network& network, const document::Arque& reaction);

/// A concentration text's first value in uM; 0 when it has none.
double first_concentration (const std::string* text);

/// A constant with its unit, in uM; nothing for other texts.
std::optional<double> constant_um (const document::Char* field);

/// The letters of a field; empty when there is none.
std::string letters_of (const document::Char* field);

} // namespace ostrand::sbml_out
