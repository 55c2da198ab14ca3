// A model between the library's objects and the network: what is drawn and how fast it runs.
// Layer: sbml_in, internal.
#pragma once
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace ostrand::sbml_in {

struct ModelCompartment {
    std::string id;
    std::string name;
    int line = 0;
    int outside = -1; // the compartment around it
    double size = 1;  // in the model's unit
    bool fixed = true;
};

enum class SpeciesSort { molecule, protein, gene, receptor };

struct ModelSpecies {
    std::string id;
    std::string name; // empty: none
    std::string text; // the label's markup; different for each species
    int line = 0;
    int compartment = -1;
    SpeciesSort sort = SpeciesSort::molecule;
    bool held = false;                   // reactions do not change it
    bool by_rule = false;                // an assignment rule tells it
    bool amount = false;                 // its symbol means an amount, not a concentration
    std::optional<double> concentration; // at the start, uM
};

struct Reference {
    int species = -1;
    double stoichiometry = 1;
    std::string stoichiometry_text; // when it is no number
};

enum class Role { catalysis, inhibition, activation, necessary_activation, influence };

struct ModelModifier {
    int species = -1;
    Role role = Role::catalysis;
    bool role_is_told = false;
    std::optional<double> constant; // of a competitive inhibitor, uM
};

enum class LawKind { none, mass_action, michaelis_menten, other };

/// A law that was understood, in uM and seconds.
struct Law {
    LawKind kind = LawKind::none;
    double forward = 0; // of mass action
    int forward_order = 0;
    std::optional<double> reverse;
    int reverse_order = 0;
    std::vector<double> km;                         // of each reactant
    std::optional<double> kcat;                     // per second, with an enzyme
    std::optional<double> vmax;                     // uM/s, without
    std::vector<std::pair<int, double>> inhibitors; // modifiers and their constants
    int enzyme = -1;                                // the modifier that kcat is of
};

struct ModelReaction {
    std::string id;
    std::string name;
    int line = 0;
    bool reversible = false;
    std::vector<Reference> reactants;
    std::vector<Reference> products;
    std::vector<ModelModifier> modifiers;
    Law law;
};

struct Box {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;
};

/// A species as the layout package draws it.
struct Glyph {
    std::string id;
    int species = -1;
    Box box;
};

/// Places of the layout package.
struct Places {
    std::vector<Glyph> glyphs;
    std::vector<std::pair<int, Box>> compartments;
    /// reaction, species -> the glyph that stands for it there; as many as the file tells
    struct Use {
        int reaction;
        int species;
        int glyph;
    };
    std::vector<Use> uses;
    bool empty () const { return glyphs.empty (); }
};

struct Model {
    std::vector<ModelCompartment> compartments;
    std::vector<ModelSpecies> species;
    std::vector<ModelReaction> reactions;
    Places places;
};

} // namespace ostrand::sbml_in
