// A second simulator, as plain as can be: models as lists of statements instead of a text,
// complexes by the digits of their substrates, one loop for everything. The real one must agree bit
// for bit.
#pragma once
#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace ostrand::sim::plain {

struct Statement {
    enum Kind { mass_action, enzyme, inhibitor, values, link } kind;
    std::vector<std::string> left;  // reactants; enzyme then substrates; enzyme, inhibitor; species
    std::vector<std::string> right; // products
    std::vector<float> numbers;     // k; Kms (mM) then Kcat; Ki (mM); concentrations (mM)
};

struct Model {
    std::vector<Statement> statements;
    std::vector<std::string> displayed;
    int seconds = 1;

    std::string text () const;
};

/// counts[simulation][species by order of first mention][point]
struct Result {
    std::vector<std::string> names;
    std::vector<std::vector<std::vector<std::uint32_t>>> counts;
};

/// first_number  of the first kinetic statement
Result simulate (const Model& model, bool stochastic, int first_number);

/// The result file's text.
std::string result_text (const Model& model, const Result& result, int first_number);

/// A random model; the same seed gives the same one.
Model random_model (unsigned seed);

} // namespace ostrand::sim::plain
