// Which networks compute a formula?
#include "formula/tectrix.h"

#include "base/report.h"
#include "base/text.h"
#include "formula/growner.h"
#include "formula/network_text.h"
#include "formula/parse.h"
#include "formula/variants.h"

#include <chrono>
#include <set>
#include <utility>

namespace ostrand::formula {

namespace {

using Clock = std::chrono::steady_clock;

/// A share of the time that a search may take.
struct Deadline {
    Clock::time_point begin = Clock::now ();
    double seconds = 0; // 0: none

    bool passed () const {
        const std::chrono::duration<double> taken = Clock::now () - begin;
        return seconds > 0 && taken.count () >= seconds;
    }
};

/// Runs a search to its end and hands its result out. That the gate file is not there was told.
SearchResult finish (FormulaSearch& search) {
    const Outcome outcome = search.run ();
    const SearchResult& result = search.result ();
    const bool no_file = result.library != nullptr && !result.library_opened;
    if (outcome.failed () && !no_file) report_message ("%s", outcome.reason.c_str ());
    return std::move (search.result ());
}

} // namespace

struct FormulaSearch::Walk {
    Walk (const Library& library, const std::string& output, const std::set<std::string>& variables,
          const Patience& growing, const Patience& walking)
        : growner (library, output, variables, walking), growth (growing, growner.tree_use ()) {}
    Growner growner;
    VariantGrowth growth;
};

FormulaSearch::FormulaSearch (SearchRequest request) : request_ (std::move (request)) {}

FormulaSearch::FormulaSearch (std::unique_ptr<Library> library, SearchRequest request)
    : request_ (std::move (request)) {
    result_.library = std::move (library);
    result_.library_opened = true;
}

FormulaSearch::~FormulaSearch () = default;

void FormulaSearch::tidy () {
    walk_.reset ();
    file_ = {};
}

/// Fills the library, unless it was given.
Outcome FormulaSearch::load (const std::stop_token& stop) {
    if (result_.library) return Outcome::success ();
    auto library = std::make_unique<Lib_v1> ();
    result_.library_opened = library->load (request_.base, stop, file_);
    if (stop.stop_requested ()) return Outcome::stop ();
    if (!file_.fault.empty ()) return Outcome::failure (file_.fault);
    result_.library = std::move (library);
    if (!result_.library_opened) {
        return Outcome::failure ("cannot read '" + request_.base + "_gates.csv'");
    }
    file_ = {};
    return Outcome::success ();
}

Outcome FormulaSearch::work (const std::stop_token& stop) {
    formula_state.operators_made = 0;
    formula_state.operators_destroyed = 0;
    const SearchLimits& limits = request_.limits;
    const Deadline whole_time{.seconds = limits.seconds};
    // Trees that nobody has time to search are of no use.
    const Deadline growing_time{.begin = whole_time.begin, .seconds = limits.seconds / 2};
    std::erase_if (request_.output, [] (char c) { return c == '\'' || c == '"'; });
    if (Outcome loaded = load (stop); !loaded.done ()) return loaded;

    FormCreator creator;
    std::string fault;
    OperatorPtr root;
    {
        const MessageScope listening ([&fault] (std::string_view text) { fault = text; });
        root = creator.parse (request_.formula);
    }
    if (creator.refused ()) {
        result_.end = SearchEnd::refused_formula;
        return Outcome::failure (fault);
    }
    walk_ = std::make_unique<Walk> (
        *result_.library, request_.output, creator.variables (),
        Patience{.late = [&] { return growing_time.passed (); }, .stop = stop},
        Patience{.late = [&] { return whole_time.passed (); }, .stop = stop});
    Growner& growner = walk_->growner;
    growner.set_limit (limits.implementations);
    growner.set_progress (&progress_);
    walk_->growth.grow (root);
    if (stop.stop_requested ()) return Outcome::stop ();
    const VariantSet& trees = walk_->growth.trees ();
    result_.variant_count = trees.size ();
    progress_.expect (trees.size ());
    for (const OperatorPtr& tree : trees) {
        if (growner.stopped ()) break;
        growner.try_variant (tree);
        progress_.add_progress (1);
    }
    result_.implementations = growner.implementations ();
    if (stop.stop_requested ()) return Outcome::stop ();
    const Growth growth = walk_->growth.growth ();
    if (growner.stopped ()) {
        const bool enough =
            limits.implementations > 0 && result_.implementations.size () >= limits.implementations;
        result_.end = enough ? SearchEnd::implementation_limit : SearchEnd::time_limit;
    } else if (growth == Growth::stopped) {
        result_.end = SearchEnd::time_limit;
    } else if (growth == Growth::bound_reached) {
        result_.end = SearchEnd::too_many_variants;
    } else if (growner.left_out_long_circuits ()) {
        result_.end = SearchEnd::long_circuits;
    }
    return Outcome::success ();
}

SearchResult search (const std::string& base, const std::string& formula, std::string output,
                     const SearchLimits& limits) {
    FormulaSearch whole (
        {.base = base, .formula = formula, .output = std::move (output), .limits = limits});
    return finish (whole);
}

SearchResult search (std::unique_ptr<Library> library, const std::string& formula,
                     std::string output, const SearchLimits& limits) {
    FormulaSearch whole (
        std::move (library),
        {.base = {}, .formula = formula, .output = std::move (output), .limits = limits});
    return finish (whole);
}

const std::string& implementation_text (SearchResult& result, std::size_t index) {
    static const std::string nothing;
    if (index >= result.implementations.size ()) return nothing;
    Implementation& one = result.implementations[index];
    if (one.text.empty ()) {
        set_thresholds (one, low_threshold, high_threshold);
        write_network (one);
    }
    return one.text;
}

std::string search_message (const SearchResult& result, const std::string& formula,
                            const std::string& output) {
    const std::size_t count = result.implementations.size ();
    if (count == 0) {
        return format_text ("No implementation found for %s = %s", output.c_str (),
                            formula.c_str ());
    }
    return format_text ("%zu implementation%s found\n", count, count == 1 ? "" : "s");
}

std::string search_end_message (const SearchResult& result, const SearchLimits& limits) {
    switch (result.end) {
    case SearchEnd::complete:
    case SearchEnd::refused_formula: return {};
    case SearchEnd::implementation_limit:
        return format_text ("Search stopped at the limit of %zu implementation%s, others may exist",
                            limits.implementations, limits.implementations == 1 ? "" : "s");
    case SearchEnd::time_limit:
        return format_text ("Search stopped after %s s, others may exist",
                            format_g (limits.seconds).c_str ());
    case SearchEnd::too_many_variants:
        return format_text ("Search tried %zu variants of the formula and left others out",
                            result.variant_count);
    case SearchEnd::long_circuits:
        return format_text ("Search left out circuits of more than %zu gates", circuit_bound);
    }
    return {};
}

} // namespace ostrand::formula
