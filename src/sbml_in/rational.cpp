// Arithmetic of rational functions.
#include "sbml_in/rational.h"

#include <algorithm>
#include <cmath>

namespace ostrand::sbml_in {
namespace {

/// More terms than this are no law of a simple reaction.
constexpr std::size_t most_terms = 300;
constexpr int largest_exponent = 8;
/// Coefficients below this part of the largest are rounding.
constexpr double rounding = 1e-13;

Monomial times (const Monomial& a, const Monomial& b) {
    Monomial out;
    std::size_t i = 0;
    std::size_t k = 0;
    while (i < a.size () || k < b.size ()) {
        if (k == b.size () || (i < a.size () && a[i].first < b[k].first)) {
            out.push_back (a[i++]);
        } else if (i == a.size () || b[k].first < a[i].first) {
            out.push_back (b[k++]);
        } else {
            out.emplace_back (a[i].first, a[i].second + b[k].second);
            ++i;
            ++k;
        }
    }
    return out;
}

std::optional<Polynomial> times (const Polynomial& a, const Polynomial& b) {
    Polynomial out;
    if (a.size () * b.size () > most_terms * 4) return std::nullopt;
    for (const auto& [m, c] : a) {
        for (const auto& [n, d] : b) {
            Monomial mn = times (m, n);
            for (const auto& [v, exponent] : mn) {
                if (exponent > largest_exponent) return std::nullopt;
            }
            out[std::move (mn)] += c * d;
        }
    }
    if (out.size () > most_terms) return std::nullopt;
    return out;
}

Polynomial plus (const Polynomial& a, const Polynomial& b, double sign) {
    Polynomial out = a;
    for (const auto& [m, c] : b) {
        double& place = out[m];
        const double before = place;
        place += sign * c;
        if (std::fabs (place) <= rounding * std::fabs (before)) out.erase (m);
    }
    return out;
}

void drop_rounding (Polynomial& p) {
    std::erase_if (p, [] (const auto& term) { return term.second == 0; });
}

/// A constant denominator becomes 1.
void make_monic (Rational& r) {
    if (r.denominator.size () != 1 || !r.denominator.begin ()->first.empty ()) return;
    const double d = r.denominator.begin ()->second;
    for (auto& [m, c] : r.numerator) c /= d;
    r.denominator.begin ()->second = 1;
}

} // namespace

Rational number (double value) {
    Rational r;
    if (value != 0) r.numerator[{}] = value;
    return r;
}

Rational variable (int v) {
    Rational r;
    r.numerator[{{v, 1}}] = 1;
    return r;
}

std::optional<double> value_of (const Rational& r) {
    Rational copy = r;
    simplify (copy);
    if (copy.numerator.empty ()) return 0.0;
    if (copy.numerator.size () != 1 || !copy.numerator.begin ()->first.empty ()) return {};
    if (copy.denominator.size () != 1 || !copy.denominator.begin ()->first.empty ()) return {};
    return copy.numerator.begin ()->second / copy.denominator.begin ()->second;
}

std::optional<Rational> sum (const Rational& a, const Rational& b, double sign) {
    if (a.denominator == b.denominator) {
        return Rational{plus (a.numerator, b.numerator, sign), a.denominator};
    }
    const auto left = times (a.numerator, b.denominator);
    const auto right = times (b.numerator, a.denominator);
    auto below = times (a.denominator, b.denominator);
    if (!left || !right || !below) return std::nullopt;
    Rational r{plus (*left, *right, sign), std::move (*below)};
    make_monic (r);
    return r;
}

std::optional<Rational> product (const Rational& a, const Rational& b) {
    auto above = times (a.numerator, b.numerator);
    auto below = times (a.denominator, b.denominator);
    if (!above || !below) return std::nullopt;
    Rational r{std::move (*above), std::move (*below)};
    simplify (r);
    return r;
}

std::optional<Rational> quotient (const Rational& a, const Rational& b) {
    Polynomial above = b.numerator;
    drop_rounding (above);
    if (above.empty ()) return std::nullopt;
    return product (a, Rational{b.denominator, std::move (above)});
}

std::optional<Rational> power (const Rational& a, int exponent) {
    if (exponent < 0) {
        const auto inverse = quotient (number (1), a);
        return inverse && exponent >= -largest_exponent ? power (*inverse, -exponent)
                                                        : std::nullopt;
    }
    if (exponent > largest_exponent) return std::nullopt;
    std::optional<Rational> r = number (1);
    for (int i = 0; i < exponent && r; ++i) r = product (*r, a);
    return r;
}

void simplify (Rational& r) {
    drop_rounding (r.numerator);
    drop_rounding (r.denominator);
    if (r.numerator.empty ()) {
        r.denominator = {{Monomial (), 1.0}};
        return;
    }
    // The smallest exponent that every term has of each variable of the first term.
    Monomial common = r.numerator.begin ()->first;
    for (const Polynomial* p : {&r.numerator, &r.denominator}) {
        for (const auto& [m, c] : *p) {
            for (auto& [v, exponent] : common) exponent = std::min (exponent, exponent_of (m, v));
        }
    }
    std::erase_if (common, [] (const auto& factor) { return factor.second == 0; });
    if (!common.empty ()) {
        for (Polynomial* p : {&r.numerator, &r.denominator}) {
            Polynomial less;
            for (const auto& [m, c] : *p) {
                Monomial reduced;
                for (const auto& [v, exponent] : m) {
                    const int left = exponent - exponent_of (common, v);
                    if (left > 0) reduced.emplace_back (v, left);
                }
                less[std::move (reduced)] += c;
            }
            *p = std::move (less);
        }
    }
    make_monic (r);
}

int exponent_of (const Monomial& m, int v) {
    const auto at =
        std::find_if (m.begin (), m.end (), [v] (const auto& factor) { return factor.first == v; });
    return at == m.end () ? 0 : at->second;
}

double coefficient_of (const Polynomial& p, const Monomial& m) {
    const auto at = p.find (m);
    return at == p.end () ? 0 : at->second;
}

} // namespace ostrand::sbml_in
