// Rational functions of a few variables with numeric coefficients: the normal form of rate laws.
// Layer: sbml_in, internal.
#pragma once
#include <map>
#include <optional>
#include <utility>
#include <vector>

namespace ostrand::sbml_in {

/// A product of variables: (variable, exponent from 1), ascending by variable.
using Monomial = std::vector<std::pair<int, int>>;

/// A sum of monomials with their coefficients.
using Polynomial = std::map<Monomial, double>;

/// numerator / denominator.
struct Rational {
    Polynomial numerator;
    Polynomial denominator{{Monomial (), 1.0}};
};

Rational number (double value);
Rational variable (int v);

/// The value when no variable is in it.
std::optional<double> value_of (const Rational& r);

// Nothing when the result would be too large to be the law of a simple reaction.
std::optional<Rational> sum (const Rational& a, const Rational& b, double sign);
std::optional<Rational> product (const Rational& a, const Rational& b);
std::optional<Rational> quotient (const Rational& a, const Rational& b);
std::optional<Rational> power (const Rational& a, int exponent);

/// Coefficients that are nothing but rounding go, and so do variables common to all terms.
void simplify (Rational& r);

/// Exponent of a variable in a monomial.
int exponent_of (const Monomial& m, int v);
/// Coefficient of a monomial; 0 when it is not there.
double coefficient_of (const Polynomial& p, const Monomial& m);

} // namespace ostrand::sbml_in
