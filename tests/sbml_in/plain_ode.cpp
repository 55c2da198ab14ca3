#include "sbml_in/plain_ode.h"

#include <algorithm>
#include <cmath>

namespace ostrand::testing {

PlainOde::PlainOde (const std::string& text) : document_ (::readSBMLFromString (text.c_str ())) {
    const ::Model& m = model ();
    for (unsigned i = 0; i < m.getNumCompartments (); ++i) {
        const ::Compartment& c = *m.getCompartment (i);
        constants_[c.getId ()] = c.isSetSize () ? c.getSize () : 1;
    }
    for (unsigned i = 0; i < m.getNumParameters (); ++i) {
        constants_[m.getParameter (i)->getId ()] = m.getParameter (i)->getValue ();
    }
    for (unsigned i = 0; i < m.getNumSpecies (); ++i) {
        const ::Species& s = *m.getSpecies (i);
        const double size = constants_[s.getCompartment ()];
        double amount = 0;
        if (s.isSetInitialAmount ()) amount = s.getInitialAmount ();
        if (s.isSetInitialConcentration ()) amount = s.getInitialConcentration () * size;
        amounts_.push_back (amount);
    }
    for (unsigned i = 0; i < m.getNumInitialAssignments (); ++i) {
        const ::InitialAssignment& a = *m.getInitialAssignment (i);
        const double value = evaluate (*a.getMath (), values_of (amounts_), nullptr);
        for (unsigned k = 0; k < m.getNumSpecies (); ++k) {
            const ::Species& s = *m.getSpecies (k);
            if (s.getId () != a.getSymbol ()) continue;
            const double size = constants_[s.getCompartment ()];
            amounts_[k] = s.getHasOnlySubstanceUnits () ? value : value * size;
        }
        if (constants_.contains (a.getSymbol ())) constants_[a.getSymbol ()] = value;
    }
}

PlainOde::Values PlainOde::values_of (const std::vector<double>& amounts) const {
    Values values = constants_;
    for (unsigned i = 0; i < model ().getNumSpecies (); ++i) {
        const ::Species& s = *model ().getSpecies (i);
        const double size = constants_.at (s.getCompartment ());
        values[s.getId ()] = s.getHasOnlySubstanceUnits () ? amounts[i] : amounts[i] / size;
    }
    return values;
}

double PlainOde::symbol (const std::string& id, const Values& values) const {
    if (const ::AssignmentRule* rule = model ().getAssignmentRule (id)) {
        return evaluate (*rule->getMath (), values, nullptr);
    }
    const auto at = values.find (id);
    return at == values.end () ? std::nan ("") : at->second;
}

double PlainOde::evaluate (const ::ASTNode& node, const Values& values, const Values* local) const {
    const auto child = [&] (unsigned i) { return evaluate (*node.getChild (i), values, local); };
    switch (node.getType ()) {
    case ::AST_INTEGER: return static_cast<double> (node.getInteger ());
    case ::AST_REAL:
    case ::AST_REAL_E:
    case ::AST_RATIONAL: return node.getReal ();
    case ::AST_NAME_TIME: return time_;
    case ::AST_NAME:
        if (local != nullptr && local->contains (node.getName ())) {
            return local->at (node.getName ());
        }
        return symbol (node.getName (), values);
    case ::AST_PLUS: {
        double total = 0;
        for (unsigned i = 0; i < node.getNumChildren (); ++i) total += child (i);
        return total;
    }
    case ::AST_TIMES: {
        double total = 1;
        for (unsigned i = 0; i < node.getNumChildren (); ++i) total *= child (i);
        return total;
    }
    case ::AST_MINUS: return node.getNumChildren () == 1 ? -child (0) : child (0) - child (1);
    case ::AST_DIVIDE: return child (0) / child (1);
    case ::AST_POWER:
    case ::AST_FUNCTION_POWER: return std::pow (child (0), child (1));
    case ::AST_FUNCTION_EXP: return std::exp (child (0));
    case ::AST_FUNCTION: {
        const ::FunctionDefinition& f = *model ().getFunctionDefinition (node.getName ());
        Values arguments;
        for (unsigned i = 0; i < f.getNumArguments (); ++i) {
            arguments[f.getArgument (i)->getName ()] = child (i);
        }
        return evaluate (*f.getBody (), values, &arguments);
    }
    default: return std::nan ("");
    }
}

std::vector<double> PlainOde::derivative (const std::vector<double>& amounts) const {
    const Values values = values_of (amounts);
    std::map<std::string, double> change;
    for (unsigned i = 0; i < model ().getNumReactions (); ++i) {
        const ::Reaction& r = *model ().getReaction (i);
        const ::KineticLaw& law = *r.getKineticLaw ();
        Values local;
        for (unsigned k = 0; k < law.getNumParameters (); ++k) {
            local[law.getParameter (k)->getId ()] = law.getParameter (k)->getValue ();
        }
        for (unsigned k = 0; k < law.getNumLocalParameters (); ++k) {
            local[law.getLocalParameter (k)->getId ()] = law.getLocalParameter (k)->getValue ();
        }
        const double rate = evaluate (*law.getMath (), values, &local);
        const auto count = [] (const ::SpeciesReference& s) {
            return std::isfinite (s.getStoichiometry ()) ? s.getStoichiometry () : 1;
        };
        for (unsigned k = 0; k < r.getNumReactants (); ++k) {
            change[r.getReactant (k)->getSpecies ()] -= rate * count (*r.getReactant (k));
        }
        for (unsigned k = 0; k < r.getNumProducts (); ++k) {
            change[r.getProduct (k)->getSpecies ()] += rate * count (*r.getProduct (k));
        }
    }
    std::vector<double> out;
    for (unsigned i = 0; i < model ().getNumSpecies (); ++i) {
        const ::Species& s = *model ().getSpecies (i);
        const bool held = s.getBoundaryCondition () || s.getConstant ();
        out.push_back (held ? 0 : change[s.getId ()]);
    }
    return out;
}

std::vector<double> PlainOde::stepped (const std::vector<double>& amounts, double h) const {
    const auto moved = [&] (const std::vector<double>& by, double part) {
        std::vector<double> to = amounts;
        for (std::size_t i = 0; i < to.size (); ++i) to[i] += part * by[i];
        return to;
    };
    const auto a = derivative (amounts);
    const auto b = derivative (moved (a, h / 2));
    const auto c = derivative (moved (b, h / 2));
    const auto d = derivative (moved (c, h));
    std::vector<double> to = amounts;
    for (std::size_t i = 0; i < to.size (); ++i)
        to[i] += h / 6 * (a[i] + 2 * b[i] + 2 * c[i] + d[i]);
    return to;
}

void PlainOde::run_to (double time, double step) {
    while (time_ < time - 1e-12) {
        const double h = std::min (step, time - time_);
        amounts_ = stepped (amounts_, h);
        time_ += h;
    }
}

bool PlainOde::run_in_steps (double time, int most) {
    constexpr double tolerance = 1e-6;
    double largest = 0;
    for (const double amount : amounts_) largest = std::max (largest, std::fabs (amount));
    for (int steps = 0; time_ < time - 1e-12; ++steps) {
        if (steps == most) return false;
        const double h = std::min (step_, time - time_);
        const auto whole = stepped (amounts_, h);
        auto halves = stepped (stepped (amounts_, h / 2), h / 2);
        double error = 0;
        for (std::size_t i = 0; i < halves.size (); ++i) {
            error = std::max (error, std::fabs (halves[i] - whole[i]) /
                                         (std::fabs (halves[i]) + 1e-4 * largest + 1e-300));
        }
        if (!(error <= tolerance)) {
            step_ = h / 2;
            continue;
        }
        amounts_ = std::move (halves);
        time_ += h;
        if (error < tolerance / 40 && h == step_) step_ = 2 * h;
    }
    return true;
}

double PlainOde::concentration (const std::string& species) const {
    for (unsigned i = 0; i < model ().getNumSpecies (); ++i) {
        const ::Species& s = *model ().getSpecies (i);
        if (s.getId () == species) return amounts_[i] / constants_.at (s.getCompartment ());
    }
    return std::nan ("");
}

} // namespace ostrand::testing
