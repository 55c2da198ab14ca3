// The import of model texts by the number of reactions, and the reading of SBML.
#include "base/report.h"
#include "base/text.h"
#include "files/import.h"
#include "files/import_steps.h"
#include "files/sbml_to_model.h"

#include <benchmark/benchmark.h>

namespace {

using namespace ostrand;

/// Pathways of 40 reactions as metabolic models have them: chains with a side chain that branches
/// off and one that merges, cofactors at every other reaction, one enzyme to thirty reactions so
/// that all names fit into the table.
std::string pathways (int reactions) {
    std::string model;
    for (int i = 0; i < reactions; ++i) {
        const int from = i % 40 == 20 ? i - 10 : i;   // branches off
        const int to = i % 40 == 39 ? i - 25 : i + 1; // merges
        model += format_text ("e%d : m%d%s -> m%d%s | 10 uM%s - 5 ;\n", i / 30, from % 3900,
                              i % 2 == 0 ? " + ATP" : "", to % 3900, i % 2 == 0 ? " + ADP" : "",
                              i % 2 == 0 ? ", 1 mM" : "");
    }
    return model;
}

/// Chains of 20 different metabolites that never meet.
std::string chains (int reactions) {
    std::string model;
    for (int i = 0; i < reactions; ++i) {
        const int chain = i / 20;
        model += format_text ("e : m%d -> m%d | 10 uM - 5 ;\n", (chain % 190) * 21 + i % 20,
                              (chain % 190) * 21 + i % 20 + 1);
    }
    return model;
}

void import_model (benchmark::State& state, const std::string& model) {
    const MessageScope quiet (
        [&state] (std::string_view text) { state.SkipWithError (std::string (text).c_str ()); });
    for (auto _ : state) {
        benchmark::DoNotOptimize (files::import_text (model));
    }
    state.SetComplexityN (state.range (0));
}

void import_chains (benchmark::State& state) {
    import_model (state, chains (static_cast<int> (state.range (0))));
}
BENCHMARK (import_chains)->Arg (10)->Arg (100)->Arg (1000)->Arg (4000)->Complexity ();

void import_pathways (benchmark::State& state) {
    import_model (state, pathways (static_cast<int> (state.range (0))));
}
BENCHMARK (import_pathways)->Arg (10)->Arg (100)->Arg (1000)->Arg (4000)->Complexity ();

void read_model_text (benchmark::State& state) {
    const std::string model = chains (static_cast<int> (state.range (0)));
    for (auto _ : state) {
        benchmark::DoNotOptimize (files::read_statements (model, files::import_tables ()));
        files::import_reset ();
    }
    state.SetBytesProcessed (static_cast<std::int64_t> (state.iterations () * model.size ()));
}
BENCHMARK (read_model_text)->Arg (1000)->Arg (4000);

/// SBML with annotations and kinetic laws of the size that simulators write.
void read_sbml (benchmark::State& state) {
    const MessageScope quiet ([] (std::string_view) {});
    const int count = static_cast<int> (state.range (0));
    std::string text = "<sbml><model id=\"m\">\n<listOfSpecies>\n";
    for (int i = 0; i <= count; ++i) {
        text += format_text ("<species id=\"s%d\" name=\"species %d\" compartment=\"c\" "
                             "initialAmount=\"0\"><annotation><rdf:li rdf:resource=\"urn:x:%d\"/>"
                             "</annotation></species>\n",
                             i, i, i);
    }
    text += "</listOfSpecies>\n<listOfReactions>\n";
    for (int i = 0; i < count; ++i) {
        text += format_text (
            "<reaction id=\"r%d\"><listOfReactants><speciesReference species=\"s%d\"/>"
            "</listOfReactants><listOfProducts><speciesReference species=\"s%d\"/>"
            "</listOfProducts><kineticLaw><math xmlns=\"http://www.w3.org/1998/Math/MathML\">"
            "<apply><times/><ci>k</ci><ci>s%d</ci></apply></math></kineticLaw></reaction>\n",
            i, i, i + 1, i);
    }
    text += "</listOfReactions></model></sbml>\n";
    std::string model;
    for (auto _ : state) {
        benchmark::DoNotOptimize (files::sbml_to_model (text, model));
    }
    state.SetBytesProcessed (static_cast<std::int64_t> (state.iterations () * text.size ()));
}
BENCHMARK (read_sbml)->Arg (100)->Arg (1000)->Arg (4000);

} // namespace
