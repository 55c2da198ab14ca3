// From a formula to all minimal networks that compute it: the whole tool in a few calls.
// Layer: formula.
#pragma once
#include "base/disk.h"
#include "base/long_work.h"
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
    refused_formula,   // beyond the parser's bounds: there was no search
    long_circuits,     // circuits beyond circuit_bound were left out
};

struct SearchResult {
    std::unique_ptr<Library> library; // null when the search failed before there was one
    bool library_opened = false;
    std::vector<Implementation> implementations; // ordered by their lines of reaction ids
    std::size_t variant_count = 0;
    SearchEnd end = SearchEnd::complete;
};

/// What a search is asked for.
struct SearchRequest {
    std::string base;    // of the gate file, `base`_gates.csv
    std::string formula; //
    std::string output;  // the species that carries its value; quotes in its name are taken away
    SearchLimits limits = {};
};

/// Finds all minimal sets of gates that compute a formula. While the formula's variants grow,
/// nobody knows how much there is to do; from then on progress counts variants. Its results are the
/// minimal sets so far. A formula beyond the parser's bounds and a gate file that cannot be read
/// are failures.
class FormulaSearch : public LongWork {
  public:
    /// Loads the gate file.
    explicit FormulaSearch (SearchRequest request);
    /// Searches a library that is there.
    FormulaSearch (std::unique_ptr<Library> library, SearchRequest request);
    ~FormulaSearch () override;

    /// Frees what the search grew; the result stays.
    void tidy () override;

    /// What it found, when it is done.
    SearchResult& result () { return result_; }

  protected:
    Outcome work (const std::stop_token& stop) override;

  private:
    struct Walk; // variants and the search over them
    Outcome load (const std::stop_token& stop);

    SearchRequest request_;
    Input file_; // the gate file, until it is read
    SearchResult result_;
    std::unique_ptr<Walk> walk_;
};

/// The same in one call, with what goes wrong reported.
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
