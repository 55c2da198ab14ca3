// ostrand-tool formula: all minimal networks that compute a formula.
#include "base/report.h"
#include "base/text.h"
#include "formula/network_text.h"
#include "formula/tectrix.h"
#include "tool/commands.h"

#include <array>
#include <cstdio>
#include <filesystem>
#include <system_error>

namespace ostrand::tool {
namespace {

using formula::SearchEnd;
using formula::SearchLimits;
using formula::SearchResult;

constexpr std::array options{
    ToolOption{"--text", "N", "print the SBML text of the implementation in line N, from 0"},
    ToolOption{"--write", "DIR", "write all implementations to DIR, as reseau_0.xml and so on"},
    ToolOption{"--limit", "N", "end the search at N implementations"},
    ToolOption{"--time", "S", "end the search after S seconds"},
};

bool print_list (const SearchResult& result, const std::string& formula,
                 const std::string& output) {
    std::string text = formula::search_message (result, formula, output);
    if (!text.ends_with ('\n')) text += '\n';
    for (const auto& one : result.implementations) text += formula::reaction_line (one) + '\n';
    return print_result (text) == status_success;
}

bool print_text (SearchResult& result, int index, const std::string& formula,
                 const std::string& output) {
    const auto count = result.implementations.size ();
    if (count == 0) {
        std::fprintf (stderr, "%s\n", formula::search_message (result, formula, output).c_str ());
        return false;
    }
    if (static_cast<std::size_t> (index) >= count) {
        std::fprintf (stderr, "ostrand-tool formula: no implementation %d, the last is %zu\n",
                      index, count - 1);
        return false;
    }
    return print_result (formula::implementation_text (result, static_cast<std::size_t> (index))) ==
           status_success;
}

bool write_all (SearchResult& result, const std::string& folder) {
    std::error_code error;
    std::filesystem::create_directories (folder, error);
    if (error) {
        std::fprintf (stderr, "ostrand-tool formula: %s: %s\n", folder.c_str (),
                      error.message ().c_str ());
        return false;
    }
    int index = 0;
    for (auto& one : result.implementations) {
        formula::set_thresholds (one, formula::low_threshold, formula::high_threshold);
        if (!formula::write_network (one, index++, folder)) return false;
    }
    return true;
}

int run (const Arguments& arguments) {
    const std::string& base = arguments.words[0];
    const std::string& formula = arguments.words[1];
    const std::string& output = arguments.words[2];
    const auto text_index = arguments.number ("--text", -1);
    const auto limit = arguments.number ("--limit", 0, 1);
    const auto seconds = arguments.number ("--time", 0, 1);
    if (!text_index || !limit || !seconds) return status_usage;
    if (formula.empty ()) {
        std::fputs ("A boolean formula must be entered.\n", stderr);
        return status_failure;
    }
    const SearchLimits limits{.implementations = static_cast<std::size_t> (*limit),
                              .seconds = static_cast<double> (*seconds)};
    formula::FormulaSearch search (
        {.base = base, .formula = formula, .output = output, .limits = limits});
    const Outcome outcome = search.run ();
    SearchResult& result = search.result ();
    if (result.end == SearchEnd::refused_formula) {
        report_message ("%s", outcome.reason.c_str ());
        return status_failure;
    }
    bool well = outcome.done ();
    if (!well) std::fprintf (stderr, "ostrand-tool formula: %s\n", outcome.reason.c_str ());
    // Without a gate file there are no gates: the rest is told all the same.
    const bool no_file = result.library != nullptr && !result.library_opened;
    if (!well && !no_file) return status_failure;
    if (result.end != SearchEnd::complete) {
        std::fprintf (stderr, "%s\n", formula::search_end_message (result, limits).c_str ());
    }
    if (arguments.has ("--write")) {
        well = write_all (result, arguments.value ("--write")) && well;
    }
    const bool printed = arguments.has ("--text")
                             ? print_text (result, *text_index, formula, output)
                             : print_list (result, formula, output);
    return printed && well ? status_success : status_failure;
}

} // namespace

extern const ToolCommand formula_command{
    .name = "formula",
    .words = "BASE FORMULA OUTPUT",
    .fewest_words = 3,
    .most_words = 3,
    .summary = "find the minimal networks of gates that compute a boolean formula",
    .details = "Reads BASE_gates.csv, as the extraction of gates leaves it. Prints how many were\n"
               "found and then one line for each: the ids of its reactions.\n"
               "Names in the formula are letters and digits, or stand in quotes; ! is NOT, . is\n"
               "AND, + is OR; . and + have one rank and group from the left.\n",
    .options = options,
    .run = run,
};

} // namespace ostrand::tool
