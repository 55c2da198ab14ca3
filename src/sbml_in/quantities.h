// What the numbers of a model are worth: its symbols at the start and as rational functions of the
// species, in uM, litres and seconds.
// Layer: sbml_in, internal.
#pragma once
#include "sbml_in/model.h"
#include "sbml_in/rational.h"

#include <map>
#include <optional>
#include <set>
#include <string>

#include <sbml/SBMLTypes.h>

namespace ostrand::sbml_in {

/// The model's units as factors: so many umol, litres and seconds are one of them.
struct UnitFactors {
    double substance = 1;
    double volume = 1;
    double time = 1;
    bool told = false; // by the file; otherwise they are what such models usually mean
};

/// The units of a model. Without any of its own they are mole, litre and second up to Level 2, and
/// umol, litre and second from Level 3 on. Molecules in volumes without a unit are those of the
/// simulator.
UnitFactors unit_factors (const ::Model& model);

/// Values of the model's symbols.
class Quantities {
  public:
    Quantities (const ::Model& model, const Model& read, const UnitFactors& units);

    /// A law as a function of species concentrations in uM, which are variables by their index in
    /// the model. Those that nothing changes are numbers. Nothing when it is no such function.
    /// law  whose own parameters come first; may be null
    std::optional<Rational> function (const ::ASTNode& node, const ::KineticLaw* law);
    /// A number at the start of a simulation, with species at their initial values.
    std::optional<double> at_start (const ::ASTNode& node);
    /// Concentration of a species at the start, uM.
    std::optional<double> start_concentration (int species);
    /// What nothing changes while a simulation runs.
    bool is_fixed (const std::string& id) const { return !varied_.contains (id); }
    /// Of a symbol at the start, in the model's units.
    std::optional<double> symbol_at_start (const std::string& id);
    const UnitFactors& units () const { return units_; }

  private:
    using Bindings = std::map<std::string, Rational>;
    struct Frame {
        const Bindings* arguments = nullptr;
        const ::KineticLaw* law = nullptr;
        int depth = 0;
    };

    std::optional<Rational> evaluate (const ::ASTNode& node, const Frame& frame);
    std::optional<Rational> symbol (const std::string& id, const Frame& frame);
    std::optional<Rational> species_symbol (int s, const Frame& frame);
    std::optional<Rational> call (const ::ASTNode& node, const Frame& frame);
    std::optional<Rational> fold (const ::ASTNode& node, const Frame& frame);
    std::optional<Rational> numeric (const ::ASTNode& node, const Frame& frame);
    std::optional<double> volume_of (int s);

    const ::Model& model_;
    const Model& read_;
    UnitFactors units_;
    std::map<std::string, int> species_;
    std::set<std::string> varied_; // by rate rules, events and algebraic rules
    bool at_start_ = false;
    long long budget_ = 0; // nodes that may still be looked at
};

} // namespace ostrand::sbml_in
