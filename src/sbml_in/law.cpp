// Holds the normal form of a rate law against the forms that the simulator knows.
#include "sbml_in/law.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace ostrand::sbml_in {
namespace {

/// Two numbers that should be the same differ by this part at most: results of one formula.
constexpr double same = 1e-9;

bool is_whole (double x) { return x == std::floor (x) && x >= 1 && x <= 8; }

bool is_constant (double x) { return x > 0 && std::isfinite (x); }

class Matcher {
  public:
    Matcher (const ModelReaction& reaction, const Model& model, Quantities& quantities)
        : reaction_ (reaction), model_ (model), quantities_ (quantities) {}

    bool mass_action (const Rational& rate, Law& law);
    bool michaelis_menten (const Rational& rate, Law& law);
    std::string why;

  private:
    struct Side {
        Monomial all;           // as the reaction states it
        Monomial changing;      // without what is held at a number
        double held_factor = 1; // of that
        int order = 0;
        bool good = true;
    };
    Side side (const std::vector<Reference>& references, bool with_catalysts);
    bool term (const Monomial& m, double c, const std::vector<Reference>& references,
               double& constant, int& order);
    int enzyme_in (const Monomial& m) const;
    bool other_catalysts (const Law& law, const std::vector<int>& substrates) const;
    bool one_substrate (const Polynomial& below, int s, Law& law);
    bool many_substrates (const Polynomial& below, const std::vector<int>& substrates, Law& law);

    const ModelReaction& reaction_;
    const Model& model_;
    Quantities& quantities_;
};

Matcher::Side Matcher::side (const std::vector<Reference>& references, bool with_catalysts) {
    std::map<int, double> exponents;
    for (const Reference& r : references) exponents[r.species] += r.stoichiometry;
    if (with_catalysts) {
        for (const ModelModifier& m : reaction_.modifiers) {
            if (m.role == Role::catalysis) exponents[m.species] += 1;
        }
    }
    Side out;
    for (const auto& [s, exponent] : exponents) {
        if (!is_whole (exponent)) {
            out.good = false;
            return out;
        }
        const int n = static_cast<int> (exponent);
        out.all.emplace_back (s, n);
        out.order += n;
        const ModelSpecies& species = model_.species[static_cast<std::size_t> (s)];
        const bool is_number = species.held && quantities_.is_fixed (species.id) &&
                               species.concentration && *species.concentration > 0;
        if (is_number) {
            out.held_factor *= std::pow (*species.concentration, n);
        } else {
            out.changing.emplace_back (s, n);
        }
    }
    return out;
}

/// One term of mass action: all reactants, with all catalysts or without them.
bool Matcher::term (const Monomial& m, double c, const std::vector<Reference>& references,
                    double& constant, int& order) {
    for (const bool with_catalysts : {false, true}) {
        const Side s = side (references, with_catalysts);
        if (!s.good || s.changing != m) continue;
        constant = c / s.held_factor;
        order = s.order;
        return true;
    }
    return false;
}

bool Matcher::mass_action (const Rational& rate, Law& law) {
    if (rate.denominator.size () != 1 || !rate.denominator.begin ()->first.empty ()) return false;
    if (rate.numerator.empty () || rate.numerator.size () > 2) return false;
    const Monomial* forward = nullptr;
    for (const auto& [m, c] : rate.numerator) {
        double constant = 0;
        int order = 0;
        if (c > 0 && forward == nullptr && term (m, c, reaction_.reactants, constant, order)) {
            law.forward = constant;
            law.forward_order = order;
            forward = &m;
        } else if (c < 0 && !law.reverse && term (m, -c, reaction_.products, constant, order)) {
            law.reverse = constant;
            law.reverse_order = order;
        } else {
            return false;
        }
    }
    if (forward == nullptr || !is_constant (law.forward)) return false;
    if (law.reverse && !is_constant (*law.reverse)) return false;
    law.kind = LawKind::mass_action;
    return true;
}

int Matcher::enzyme_in (const Monomial& m) const {
    for (std::size_t i = 0; i < reaction_.modifiers.size (); ++i) {
        const ModelModifier& modifier = reaction_.modifiers[i];
        const bool may_be = modifier.role == Role::catalysis || !modifier.role_is_told;
        if (may_be && exponent_of (m, modifier.species) == 1) return static_cast<int> (i);
    }
    return -1;
}

/// a + b S + c I + ...: a / b is Km, a / c the constant of the inhibitor I.
bool Matcher::one_substrate (const Polynomial& below, int s, Law& law) {
    const double a = coefficient_of (below, {});
    const double b = coefficient_of (below, {{s, 1}});
    if (!is_constant (a / b)) return false;
    law.km = {a / b};
    for (const auto& [m, c] : below) {
        if (m.empty () || m == Monomial{{s, 1}}) continue;
        if (m.size () != 1 || m[0].second != 1 || !is_constant (a / c)) return false;
        const auto inhibitor = std::find_if (
            reaction_.modifiers.begin (), reaction_.modifiers.end (),
            [species = m[0].first] (const ModelModifier& one) { return one.species == species; });
        if (inhibitor == reaction_.modifiers.end ()) return false;
        if (inhibitor->role_is_told && inhibitor->role != Role::inhibition) return false;
        const int index = static_cast<int> (inhibitor - reaction_.modifiers.begin ());
        if (index == law.enzyme) return false;
        law.inhibitors.emplace_back (index, a / c);
    }
    return true;
}

/// (K1 + S1) (K2 + S2) ..., multiplied out.
bool Matcher::many_substrates (const Polynomial& below, const std::vector<int>& substrates,
                               Law& law) {
    const std::size_t n = substrates.size ();
    const auto monomial = [&] (unsigned subset) {
        Monomial m;
        for (std::size_t i = 0; i < n; ++i) {
            if ((subset >> i & 1U) != 0) m.emplace_back (substrates[i], 1);
        }
        std::sort (m.begin (), m.end ());
        return m;
    };
    const unsigned all = (1U << n) - 1;
    const double b = coefficient_of (below, monomial (all));
    if (b == 0 || below.size () != std::size_t{1} << n) return false;
    std::vector<double> k;
    for (std::size_t i = 0; i < n; ++i) {
        k.push_back (coefficient_of (below, monomial (all & ~(1U << i))) / b);
        if (!is_constant (k.back ())) return false;
    }
    for (unsigned subset = 0; subset <= all; ++subset) {
        double expected = b;
        for (std::size_t i = 0; i < n; ++i) {
            if ((subset >> i & 1U) == 0) expected *= k[i];
        }
        const double c = coefficient_of (below, monomial (subset));
        if (std::fabs (c - expected) > same * std::fabs (expected)) return false;
    }
    law.km = std::move (k);
    return true;
}

/// A turnover is that of every catalyst in a drawing, so there may be only the one; the inhibitors
/// that the law told are none.
bool Matcher::other_catalysts (const Law& law, const std::vector<int>& substrates) const {
    for (std::size_t i = 0; i < reaction_.modifiers.size (); ++i) {
        const int index = static_cast<int> (i);
        const ModelModifier& m = reaction_.modifiers[i];
        if (index == law.enzyme || m.role != Role::catalysis) continue;
        const bool inhibits =
            std::any_of (law.inhibitors.begin (), law.inhibitors.end (),
                         [index] (const auto& one) { return one.first == index; });
        const bool is_substrate =
            std::count (substrates.begin (), substrates.end (), m.species) > 0;
        if (!inhibits && !is_substrate) return true;
    }
    return false;
}

bool Matcher::michaelis_menten (const Rational& rate, Law& law) {
    if (rate.numerator.size () != 1 || rate.denominator.size () < 2) return false;
    if (reaction_.reactants.empty () || reaction_.reactants.size () > 4) return false;
    std::vector<int> substrates;
    for (const Reference& r : reaction_.reactants) {
        if (r.stoichiometry != 1) return false;
        if (std::count (substrates.begin (), substrates.end (), r.species) > 0) return false;
        substrates.push_back (r.species);
    }
    const auto& [above, factor] = *rate.numerator.begin ();
    Monomial expected;
    for (const int s : substrates) expected.emplace_back (s, 1);
    law.enzyme = enzyme_in (above);
    if (law.enzyme >= 0) {
        const int e = reaction_.modifiers[static_cast<std::size_t> (law.enzyme)].species;
        if (std::count (substrates.begin (), substrates.end (), e) > 0) return false;
        expected.emplace_back (e, 1);
    }
    std::sort (expected.begin (), expected.end ());
    if (above != expected) return false;
    const bool good = substrates.size () == 1 ? one_substrate (rate.denominator, substrates[0], law)
                                              : many_substrates (rate.denominator, substrates, law);
    if (!good || (law.enzyme >= 0 && other_catalysts (law, substrates))) return false;
    Monomial saturated;
    for (const int s : substrates) saturated.emplace_back (s, 1);
    std::sort (saturated.begin (), saturated.end ());
    const double v = factor / coefficient_of (rate.denominator, saturated);
    if (!is_constant (v)) return false;
    if (law.enzyme >= 0) {
        law.kcat = v;
    } else {
        law.vmax = v;
    }
    law.kind = LawKind::michaelis_menten;
    return true;
}

} // namespace

Law understand (const ::Reaction& reaction, const ModelReaction& read, const Model& model,
                Quantities& quantities, std::string& why) {
    Law law;
    const ::KineticLaw* from = reaction.getKineticLaw ();
    if (from == nullptr || !from->isSetMath () || from->getMath () == nullptr) return law;
    law.kind = LawKind::other;
    if (read.reactants.empty () && read.products.empty ()) return law;
    std::optional<double> volume;
    for (const auto* references : {&read.reactants, &read.products}) {
        for (const Reference& r : *references) {
            const ModelSpecies& s = model.species[static_cast<std::size_t> (r.species)];
            if (s.by_rule) {
                why = "a rule tells '" + s.id + "'";
                return law;
            }
            if (!r.stoichiometry_text.empty ()) {
                why = "a stoichiometry is no number";
                return law;
            }
            if (s.held || s.compartment < 0) continue;
            const ModelCompartment& c =
                model.compartments[static_cast<std::size_t> (s.compartment)];
            if (!c.fixed) {
                why = "the size of '" + c.id + "' changes";
                return law;
            }
            if (volume && std::fabs (*volume - c.size) > same * c.size) {
                why = "its species are in compartments of different sizes";
                return law;
            }
            volume = c.size;
        }
    }
    const auto rate = quantities.function (*from->getMath (), from);
    why = "neither mass action nor Michaelis-Menten";
    if (!rate) return law;
    const UnitFactors& units = quantities.units ();
    const double scale = units.substance / (units.volume * volume.value_or (1)) / units.time;
    const auto scaled = product (*rate, number (scale));
    if (!scaled) return law;
    Matcher matcher (read, model, quantities);
    Law candidate;
    if (matcher.mass_action (*scaled, candidate)) return candidate;
    candidate = {};
    if (matcher.michaelis_menten (*scaled, candidate)) return candidate;
    return law;
}

} // namespace ostrand::sbml_in
