// Evaluates a model's formulas.
#include "sbml_in/quantities.h"

#include <algorithm>
#include <cmath>
#include <memory>

namespace ostrand::sbml_in {
namespace {

using ::ASTNode;

/// Formulas inside one another, and nodes that one law may have when it is written out.
constexpr int deepest_formula = 200;
constexpr long long most_nodes = 20000;
/// Molecules of the simulator in one umol.
constexpr double molecules_per_umol = 6.02252e17;
constexpr double umol_per_mole = 1e6;
/// The volume in which a uM is that many molecules, litres.
constexpr double simulator_volume = 1e-15;
/// Concentrations beyond this, uM, speak against units that nobody stated.
constexpr double largest_plausible = 1e6;

enum class Dimension { substance, volume, time };

struct Factor {
    double value = 1;
    bool is_items = false;
    bool is_plain = false; // without a dimension
};

/// A base unit as umol, litres or seconds; nothing for one of another dimension.
std::optional<Factor> base_factor (::UnitKind_t kind, Dimension dimension) {
    if (kind == UNIT_KIND_DIMENSIONLESS) return Factor{.value = 1, .is_plain = true};
    switch (dimension) {
    case Dimension::substance:
        if (kind == UNIT_KIND_MOLE) return Factor{.value = umol_per_mole};
        if (kind == UNIT_KIND_ITEM) {
            return Factor{.value = 1 / molecules_per_umol, .is_items = true};
        }
        break;
    case Dimension::volume:
        if (kind == UNIT_KIND_LITRE || kind == UNIT_KIND_LITER) return Factor{};
        if (kind == UNIT_KIND_METRE || kind == UNIT_KIND_METER) {
            return Factor{.value = 10}; // a decimetre is a tenth; cubed by the exponent
        }
        break;
    case Dimension::time:
        if (kind == UNIT_KIND_SECOND) return Factor{};
        break;
    }
    return std::nullopt;
}

std::optional<Factor> factor_of (const ::UnitDefinition& definition, Dimension dimension) {
    Factor out;
    bool found = false;
    for (unsigned i = 0; i < definition.getNumUnits (); ++i) {
        const ::Unit& unit = *definition.getUnit (i);
        const auto base = base_factor (unit.getKind (), dimension);
        if (!base) return std::nullopt;
        const double multiplier = unit.isSetMultiplier () ? unit.getMultiplier () : 1;
        const int scale = unit.isSetScale () ? unit.getScale () : 0;
        const double exponent = unit.isSetExponent () ? unit.getExponentAsDouble () : 1;
        if (dimension != Dimension::volume && exponent != 1 && !base->is_plain) return std::nullopt;
        out.value *= std::pow (multiplier * std::pow (10.0, scale) * base->value, exponent);
        out.is_items = out.is_items || base->is_items;
        out.is_plain = base->is_plain && (!found || out.is_plain);
        found = true;
    }
    if (!found || !(out.value > 0) || !std::isfinite (out.value)) return std::nullopt;
    return out;
}

/// A unit by its id: a definition of the model, or a base unit.
std::optional<Factor> named_factor (const ::Model& model, const std::string& id,
                                    Dimension dimension) {
    if (id.empty ()) return std::nullopt;
    if (const ::UnitDefinition* own = model.getUnitDefinition (id)) {
        return factor_of (*own, dimension);
    }
    return base_factor (::UnitKind_forName (id.c_str ()), dimension);
}

bool most_species_are_in_unit (const ::Model& model, std::string& unit) {
    for (unsigned i = 0; i < model.getNumSpecies (); ++i) {
        const std::string& own = model.getSpecies (i)->getSubstanceUnits ();
        if (own.empty () || (!unit.empty () && own != unit)) return false;
        unit = own;
    }
    return !unit.empty ();
}

} // namespace

UnitFactors unit_factors (const ::Model& model) {
    const bool is_level_3 = model.getLevel () >= 3;
    std::string substance_unit = is_level_3 ? model.getSubstanceUnits () : "substance";
    std::string of_species;
    if (most_species_are_in_unit (model, of_species)) substance_unit = of_species;
    std::string volume_unit = is_level_3 ? model.getVolumeUnits () : "volume";
    if (model.getNumCompartments () > 0 && !model.getCompartment (0)->getUnits ().empty ()) {
        volume_unit = model.getCompartment (0)->getUnits ();
    }
    const std::string time_unit = is_level_3 ? model.getTimeUnits () : "time";
    const auto substance = named_factor (model, substance_unit, Dimension::substance);
    const auto volume = named_factor (model, volume_unit, Dimension::volume);
    const auto time = named_factor (model, time_unit, Dimension::time);
    UnitFactors out;
    out.told = substance.has_value () && !substance->is_plain;
    const double default_substance = is_level_3 ? 1 : umol_per_mole;
    out.substance = substance ? substance->value : default_substance;
    out.volume = volume ? volume->value : 1;
    out.time = time ? time->value : 1;
    if (substance && substance->is_items && (!volume || volume->is_plain)) {
        out.volume = simulator_volume; // molecules in a cell of no told size
    }
    if (!out.told && !is_level_3) {
        // Moles per litre that no cell has were never meant.
        double largest = 0;
        for (unsigned i = 0; i < model.getNumSpecies (); ++i) {
            const ::Species& s = *model.getSpecies (i);
            const double value = s.isSetInitialConcentration () ? s.getInitialConcentration ()
                                 : s.isSetInitialAmount ()      ? s.getInitialAmount ()
                                                                : 0;
            if (std::isfinite (value)) largest = std::max (largest, value);
        }
        if (largest * out.substance / out.volume > largest_plausible) {
            out.substance = 1;
            out.volume = 1;
        }
    }
    return out;
}

Quantities::Quantities (const ::Model& model, const Model& read, const UnitFactors& units)
    : model_ (model), read_ (read), units_ (units) {
    for (std::size_t i = 0; i < read.species.size (); ++i) {
        species_.try_emplace (read.species[i].id, static_cast<int> (i));
    }
    for (unsigned i = 0; i < model.getNumRules (); ++i) {
        const ::Rule& rule = *model.getRule (i);
        if (rule.isRate ()) varied_.insert (rule.getVariable ());
        if (!rule.isAlgebraic () || !rule.isSetMath ()) continue;
        const std::unique_ptr<::List> names (rule.getMath ()->getListOfNodes (::ASTNode_isName));
        for (unsigned k = 0; k < names->getSize (); ++k) {
            const char* name = static_cast<ASTNode*> (names->get (k))->getName ();
            if (name != nullptr) varied_.insert (name);
        }
    }
    for (unsigned i = 0; i < model.getNumEvents (); ++i) {
        const ::Event& event = *model.getEvent (i);
        for (unsigned k = 0; k < event.getNumEventAssignments (); ++k) {
            varied_.insert (event.getEventAssignment (k)->getVariable ());
        }
    }
}

std::optional<Rational> Quantities::function (const ASTNode& node, const ::KineticLaw* law) {
    at_start_ = false;
    budget_ = most_nodes;
    auto r = evaluate (node, {.law = law});
    if (r) simplify (*r);
    return r;
}

std::optional<double> Quantities::at_start (const ASTNode& node) {
    at_start_ = true;
    budget_ = most_nodes;
    const auto r = evaluate (node, {});
    at_start_ = false;
    if (!r) return std::nullopt;
    const auto value = value_of (*r);
    return value && std::isfinite (*value) ? value : std::nullopt;
}

std::optional<double> Quantities::symbol_at_start (const std::string& id) {
    const bool before = at_start_;
    at_start_ = true;
    budget_ = most_nodes;
    const auto r = symbol (id, {});
    at_start_ = before;
    return r ? value_of (*r) : std::nullopt;
}

std::optional<double> Quantities::volume_of (int s) {
    const int c = read_.species[static_cast<std::size_t> (s)].compartment;
    if (c < 0) return 1.0;
    const ModelCompartment& compartment = read_.compartments[static_cast<std::size_t> (c)];
    if (!compartment.fixed && !at_start_) return std::nullopt;
    return compartment.size;
}

std::optional<double> Quantities::start_concentration (int species) {
    const ModelSpecies& s = read_.species[static_cast<std::size_t> (species)];
    at_start_ = true;
    budget_ = most_nodes;
    const auto r = species_symbol (species, {});
    const auto volume = volume_of (species);
    at_start_ = false;
    if (!r || !volume) return std::nullopt;
    const auto value = value_of (*r);
    if (!value || !std::isfinite (*value) || *value < 0) return std::nullopt;
    return *value * units_.substance / units_.volume / (s.amount ? *volume : 1);
}

std::optional<Rational> Quantities::species_symbol (int index, const Frame& frame) {
    const ModelSpecies& s = read_.species[static_cast<std::size_t> (index)];
    const ::Species& from = *model_.getSpecies (static_cast<unsigned> (index));
    if (const ::AssignmentRule* rule = model_.getAssignmentRule (s.id);
        rule != nullptr && rule->isSetMath ()) {
        return evaluate (*rule->getMath (), {.law = nullptr, .depth = frame.depth + 1});
    }
    const auto volume = volume_of (index);
    if (!volume || !(*volume > 0)) return std::nullopt;
    const auto start = [&] () -> std::optional<Rational> {
        const ::InitialAssignment* first = model_.getInitialAssignment (s.id);
        if (first != nullptr && first->isSetMath ()) {
            const bool before = at_start_;
            at_start_ = true;
            auto r = evaluate (*first->getMath (), {.law = nullptr, .depth = frame.depth + 1});
            at_start_ = before;
            return r;
        }
        if (from.isSetInitialConcentration ()) {
            return number (from.getInitialConcentration () * (s.amount ? *volume : 1));
        }
        if (from.isSetInitialAmount ()) {
            return number (from.getInitialAmount () / (s.amount ? 1 : *volume));
        }
        return std::nullopt;
    };
    if (at_start_) return start ();
    if (s.held && is_fixed (s.id)) {
        if (auto value = start ()) {
            const auto plain = value_of (*value);
            if (plain && *plain > 0) return number (*plain);
        }
    }
    return product (number ((s.amount ? *volume : 1) * units_.volume / units_.substance),
                    variable (index));
}

std::optional<Rational> Quantities::symbol (const std::string& id, const Frame& frame) {
    if (frame.arguments != nullptr) {
        const auto at = frame.arguments->find (id);
        return at == frame.arguments->end () ? std::nullopt : std::optional (at->second);
    }
    if (frame.law != nullptr) {
        const ::Parameter* own = frame.law->getParameter (id);
        if (own == nullptr) own = frame.law->getLocalParameter (id);
        if (own != nullptr) {
            return own->isSetValue () ? std::optional (number (own->getValue ())) : std::nullopt;
        }
    }
    const auto species = species_.find (id);
    if (species != species_.end ()) return species_symbol (species->second, frame);
    const Frame inner{.law = nullptr, .depth = frame.depth + 1};
    if (const ::AssignmentRule* rule = model_.getAssignmentRule (id)) {
        return rule->isSetMath () ? evaluate (*rule->getMath (), inner) : std::nullopt;
    }
    if (!at_start_ && !is_fixed (id)) return std::nullopt;
    if (const ::InitialAssignment* first = model_.getInitialAssignment (id)) {
        if (!first->isSetMath ()) return std::nullopt;
        const bool before = at_start_;
        at_start_ = true;
        auto r = evaluate (*first->getMath (), inner);
        at_start_ = before;
        return r;
    }
    for (const ModelCompartment& c : read_.compartments) {
        if (c.id == id) return number (c.size);
    }
    if (const ::Parameter* p = model_.getParameter (id)) {
        if (!p->isSetValue () || !std::isfinite (p->getValue ())) return std::nullopt;
        return number (p->getValue ());
    }
    return std::nullopt;
}

std::optional<Rational> Quantities::call (const ASTNode& node, const Frame& frame) {
    const ::FunctionDefinition* f =
        node.getName () != nullptr ? model_.getFunctionDefinition (node.getName ()) : nullptr;
    if (f == nullptr || f->getBody () == nullptr) return std::nullopt;
    if (f->getNumArguments () != node.getNumChildren ()) return std::nullopt;
    Bindings arguments;
    for (unsigned i = 0; i < f->getNumArguments (); ++i) {
        auto value = evaluate (*node.getChild (i), frame);
        const char* name = f->getArgument (i)->getName ();
        if (!value || name == nullptr) return std::nullopt;
        arguments[name] = std::move (*value);
    }
    return evaluate (*f->getBody (), {.arguments = &arguments, .depth = frame.depth + 1});
}

/// Functions of numbers.
std::optional<Rational> Quantities::numeric (const ASTNode& node, const Frame& frame) {
    std::vector<double> x;
    for (unsigned i = 0; i < node.getNumChildren (); ++i) {
        const auto r = evaluate (*node.getChild (i), frame);
        const auto value = r ? value_of (*r) : std::nullopt;
        if (!value) return std::nullopt;
        x.push_back (*value);
    }
    double y = std::nan ("");
    switch (node.getType ()) {
    case ::AST_FUNCTION_EXP:
        if (x.size () == 1) y = std::exp (x[0]);
        break;
    case ::AST_FUNCTION_LN:
        if (x.size () == 1) y = std::log (x[0]);
        break;
    case ::AST_FUNCTION_LOG:
        if (x.size () == 1) y = std::log10 (x[0]);
        if (x.size () == 2) y = std::log (x[1]) / std::log (x[0]);
        break;
    case ::AST_FUNCTION_ROOT:
        if (x.size () == 1) y = std::sqrt (x[0]);
        if (x.size () == 2) y = std::pow (x[1], 1 / x[0]);
        break;
    case ::AST_FUNCTION_ABS:
        if (x.size () == 1) y = std::fabs (x[0]);
        break;
    case ::AST_FUNCTION_FLOOR:
        if (x.size () == 1) y = std::floor (x[0]);
        break;
    case ::AST_FUNCTION_CEILING:
        if (x.size () == 1) y = std::ceil (x[0]);
        break;
    default: return std::nullopt;
    }
    return std::isfinite (y) ? std::optional (number (y)) : std::nullopt;
}

/// Sums, products and so on.
std::optional<Rational> Quantities::fold (const ASTNode& node, const Frame& frame) {
    std::vector<Rational> x;
    for (unsigned i = 0; i < node.getNumChildren (); ++i) {
        auto r = evaluate (*node.getChild (i), frame);
        if (!r) return std::nullopt;
        x.push_back (std::move (*r));
    }
    switch (node.getType ()) {
    case ::AST_PLUS: {
        std::optional<Rational> total = number (0);
        for (const Rational& r : x) {
            if (total) total = sum (*total, r, 1);
        }
        return total;
    }
    case ::AST_TIMES: {
        std::optional<Rational> total = number (1);
        for (const Rational& r : x) {
            if (total) total = product (*total, r);
        }
        return total;
    }
    case ::AST_MINUS:
        if (x.size () == 1) return sum (number (0), x[0], -1);
        return x.size () == 2 ? sum (x[0], x[1], -1) : std::nullopt;
    case ::AST_DIVIDE: return x.size () == 2 ? quotient (x[0], x[1]) : std::nullopt;
    default: break; // a power
    }
    if (x.size () != 2) return std::nullopt;
    const auto exponent = value_of (x[1]);
    if (!exponent) return std::nullopt;
    if (*exponent == std::floor (*exponent) && std::fabs (*exponent) <= 8) {
        return power (x[0], static_cast<int> (*exponent));
    }
    const auto base = value_of (x[0]);
    if (!base) return std::nullopt;
    const double y = std::pow (*base, *exponent);
    return std::isfinite (y) ? std::optional (number (y)) : std::nullopt;
}

std::optional<Rational> Quantities::evaluate (const ASTNode& node, const Frame& outer) {
    Frame frame = outer;
    if (++frame.depth > deepest_formula || --budget_ < 0) return std::nullopt;
    switch (node.getType ()) {
    case ::AST_INTEGER: return number (static_cast<double> (node.getInteger ()));
    case ::AST_REAL:
    case ::AST_REAL_E:
    case ::AST_RATIONAL:
        return std::isfinite (node.getReal ()) ? std::optional (number (node.getReal ()))
                                               : std::nullopt;
    case ::AST_CONSTANT_E: return number (std::exp (1.0));
    case ::AST_CONSTANT_PI: return number (std::acos (-1.0));
    case ::AST_NAME_AVOGADRO: return number (6.02214179e23);
    case ::AST_NAME:
        return node.getName () != nullptr ? symbol (node.getName (), frame) : std::nullopt;
    case ::AST_FUNCTION: return call (node, frame);
    case ::AST_PLUS:
    case ::AST_MINUS:
    case ::AST_TIMES:
    case ::AST_DIVIDE:
    case ::AST_POWER:
    case ::AST_FUNCTION_POWER: return fold (node, frame);
    default: return numeric (node, frame);
    }
}

} // namespace ostrand::sbml_in
