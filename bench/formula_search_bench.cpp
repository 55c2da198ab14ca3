// The formula search against the plain one, on a made-up library of 5000 gates: the size that an
// extraction at depth 4 leaves for a metabolism of some hundred species.
#include "formula/growner.h"
#include "formula/made_up.h"
#include "formula/parse.h"
#include "formula/plain_search.h"
#include "formula/variants.h"

#include <benchmark/benchmark.h>
#include <chrono>

namespace ostrand::formula {
namespace {

struct Task {
    const char* formula;
    const char* output;
};
/// Read-once formulas, as every formula with an answer is.
constexpr Task tasks[] = {
    {"!(m61 + m29) . !m47", "m31"},
    {"(!m80 . m4) . m3", "m33"},
    {"m54 + (m98 + m22)", "m17"},
    {"((!(!m83 + m21) . !m76) + (m49 . !m95))", "m39"},
};

const Lib_v1& library () {
    static const Lib_v1* const made = [] {
        auto* fresh = new Lib_v1;
        fresh->read (made_up::gate_file (2024, {.species = 100,
                                                .reactions = 1500,
                                                .gates = 5000,
                                                .yes_percent = 2,
                                                .absent_percent = 10,
                                                .inhibitor_percent = 20,
                                                .loose_inputs = false,
                                                .three_inputs = false}));
        return fresh;
    }();
    return *made;
}

double seconds_since (std::chrono::steady_clock::time_point begin) {
    return std::chrono::duration<double> (std::chrono::steady_clock::now () - begin).count ();
}

/// One formula by both searches, growing of the variants included; `ratio` is plain over fast.
void formula_search (benchmark::State& state) {
    const Task& task = tasks[state.range (0)];
    const Library& gates = library ();
    double fast_seconds = 0;
    std::size_t answers = 0;
    std::size_t variant_count = 0;
    for (auto _ : state) {
        const auto begin = std::chrono::steady_clock::now ();
        FormCreator creator;
        const OperatorPtr root = creator.parse (task.formula);
        Growner search (gates, task.output, creator.variables ());
        const VariantSet trees = variants (root, {}, nullptr, search.tree_use ());
        for (const OperatorPtr& tree : trees) search.try_variant (tree);
        answers = search.implementations ().size ();
        fast_seconds += seconds_since (begin);
        variant_count = trees.size ();
    }
    const auto begin = std::chrono::steady_clock::now ();
    FormCreator creator;
    const VariantSet trees = variants (creator.parse (task.formula));
    plain::Search search (gates, task.output, creator.variables (), false);
    for (const OperatorPtr& tree : trees) search.try_variant (*tree);
    const std::size_t plain_answers = search.minimal ().size ();
    const double plain_seconds = seconds_since (begin);
    if (plain_answers != answers) state.SkipWithError ("the searches differ");
    state.SetLabel (task.formula);
    state.counters["variants"] = static_cast<double> (variant_count);
    state.counters["answers"] = static_cast<double> (answers);
    state.counters["plain_s"] = plain_seconds;
    state.counters["ratio"] =
        plain_seconds * static_cast<double> (state.iterations ()) / fast_seconds;
}
BENCHMARK (formula_search)->DenseRange (0, 3)->Unit (benchmark::kMillisecond)->MinTime (0.5);

} // namespace
} // namespace ostrand::formula
