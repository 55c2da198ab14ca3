// From a formula to all minimal networks that compute it: the whole tool in three calls.
// Layer: formula.
#pragma once
#include "formula/implementation.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace ostrand::formula {

/// What may end a search early; 0 is no limit.
struct SearchLimits {
    std::size_t implementations = 0;
    double seconds = 0; // of the clock on the wall
};

enum class SearchEnd {
    complete,
    implementation_limit,
    time_limit,
    too_many_variants, // the formula has more variants than memory is given for
    refused_formula,   // there was no search; the reason has been told
    long_circuits,     // circuits beyond circuit_bound were left out
};

struct SearchResult {
    std::unique_ptr<Library> library;
    bool library_opened = false;
    std::vector<Implementation> implementations; // ordered by their lines of reaction ids
    std::size_t variant_count = 0;
    SearchEnd end = SearchEnd::complete;
};

/// Loads `base`_gates.csv and finds all minimal sets of gates that compute `formula` with its value
/// in `output`; quotes in the output's name are taken away.
SearchResult search (const std::string& base, const std::string& formula, std::string output,
                     const SearchLimits& limits = {});

/// Likewise in a library that is there.
SearchResult search (std::unique_ptr<Library> library, const std::string& formula,
                     std::string output, const SearchLimits& limits = {});

/// The network of one implementation as SBML, with the thresholds 50 and 500; empty when there is
/// no such index. Builds it on the first call.
const std::string& implementation_text (SearchResult& result, std::size_t index);

/// What the user is told: how many were found, or that none was.
std::string search_message (const SearchResult& result, const std::string& formula,
                            const std::string& output);

/// What the user is told when a limit ended the search; empty when none did.
std::string search_end_message (const SearchResult& result, const SearchLimits& limits);

} // namespace ostrand::formula
