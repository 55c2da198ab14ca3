// Which networks compute a formula?
#include "formula/tectrix.h"

#include "base/text.h"
#include "formula/growner.h"
#include "formula/network_text.h"
#include "formula/parse.h"
#include "formula/variants.h"

#include <chrono>
#include <functional>
#include <utility>

namespace ostrand::formula {

SearchResult search (const std::string& base, const std::string& formula, std::string output,
                     const SearchLimits& limits) {
    auto library = std::make_unique<Lib_v1> ();
    const bool opened = library->load (base);
    SearchResult result = search (std::move (library), formula, std::move (output), limits);
    result.library_opened = opened;
    return result;
}

SearchResult search (std::unique_ptr<Library> library, const std::string& formula,
                     std::string output, const SearchLimits& limits) {
    using Clock = std::chrono::steady_clock;
    const Clock::time_point begin = Clock::now ();
    const auto late = [&] (double share) {
        const std::chrono::duration<double> taken = Clock::now () - begin;
        return limits.seconds > 0 && taken.count () >= share * limits.seconds;
    };
    formula_state.operators_made = 0;
    formula_state.operators_destroyed = 0;
    std::erase_if (output, [] (char c) { return c == '\'' || c == '"'; });

    SearchResult result;
    result.library = std::move (library);
    result.library_opened = true;
    FormCreator creator;
    const OperatorPtr root = creator.parse (formula);
    if (creator.refused ()) {
        result.end = SearchEnd::refused_formula;
        return result;
    }
    Growth growth = Growth::complete;
    // Trees that nobody has time to search are of no use.
    Growner growner (*result.library, output, creator.variables (), [&] { return late (1); });
    growner.set_limit (limits.implementations);
    const VariantSet trees = variants (
        root, [&] { return late (0.5); }, &growth, growner.tree_use ());
    result.variant_count = trees.size ();
    for (const OperatorPtr& tree : trees) {
        if (!growner.stopped ()) growner.try_variant (tree);
    }
    result.implementations = growner.implementations ();
    if (growner.stopped ()) {
        const bool enough =
            limits.implementations > 0 && result.implementations.size () >= limits.implementations;
        result.end = enough ? SearchEnd::implementation_limit : SearchEnd::time_limit;
    } else if (growth == Growth::stopped) {
        result.end = SearchEnd::time_limit;
    } else if (growth == Growth::bound_reached) {
        result.end = SearchEnd::too_many_variants;
    } else if (growner.left_out_long_circuits ()) {
        result.end = SearchEnd::long_circuits;
    }
    return result;
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
