// How soon long work answers when it is asked to stop, at twenty moments of its way. The goal is 50
// ms. `median_ms` and `worst_ms` are of the clock on the wall, so whatever else keeps the machine
// busy counts too; `worst_cpu_ms` is what our own threads computed meanwhile.
#include "base/background_work.h"
#include "base/disk.h"
#include "base/platform.h"
#include "formula/parse.h"
#include "formula/tectrix.h"
#include "formula/variants.h"
#include "gates/gate_extractor.h"
#include "sim/run.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <ctime>
#include <functional>
#include <memory>
#include <optional>
#include <thread>
#include <vector>

namespace ostrand {
namespace {

using Clock = std::chrono::steady_clock;
using MakeWork = std::function<std::shared_ptr<LongWork> ()>;

constexpr int moments = 20;

/// Starts the work, lets it go on for a while (of up to `longest` milliseconds) and stops it.
void measure (benchmark::State& state, int longest, const MakeWork& make) {
    std::vector<double> answers;
    double worst_computed = 0;
    int too_late = 0;
    for (auto _ : state) {
        for (int i = 0; i < moments; ++i) {
            BackgroundWork work (make ());
            std::this_thread::sleep_for (std::chrono::milliseconds (longest * i / moments));
            const std::clock_t computed = std::clock ();
            const auto asked = Clock::now ();
            work.stop ();
            too_late += work.wait ().done () ? 1 : 0;
            const std::chrono::duration<double, std::milli> waited = Clock::now () - asked;
            answers.push_back (waited.count ());
            worst_computed =
                std::max (worst_computed, static_cast<double> (std::clock () - computed) * 1e3 /
                                              static_cast<double> (CLOCKS_PER_SEC));
        }
    }
    std::sort (answers.begin (), answers.end ());
    state.counters["median_ms"] = answers[answers.size () / 2];
    state.counters["worst_ms"] = answers.back ();
    state.counters["worst_cpu_ms"] = worst_computed;
    state.counters["too_late"] = too_late;
}

/// A file that goes with its scope.
struct Scratch {
    Scratch (const std::string& ending, const std::string& text)
        : path (
              (temporary_directory () / ("ostrand-stop-" + std::to_string (process_id ()) + ending))
                  .string ()) {
        std::string error;
        write_file (path, text, error);
    }
    ~Scratch () { remove_file (path); }
    Scratch (const Scratch&) = delete;
    Scratch& operator= (const Scratch&) = delete;
    std::string path;
};

/// 2,000 elementary steps: one simulated second takes a third of a real one.
void simulation (benchmark::State& state) {
    std::string text = "duration = 1000; [a] = 1 mM, 2 mM, 3 mM; display (a);";
    for (int i = 0; i < 2000; ++i) text += "a -> b | 0.00000001 ;\n";
    const Scratch model (".ssa", text);
    const Scratch out (".gz", "");
    measure (state, 400, [&] {
        return std::make_shared<sim::SimulationRun> (
            sim::RunRequest{.model = model.path, .out = out.path});
    });
}

/// No reactions, so all of the time goes into a result of 40 million counts.
void result_writing (benchmark::State& state) {
    std::string values = "1 uM";
    for (int i = 0; i < 99; ++i) values += ", 1 uM";
    const Scratch model (".ssa", "duration = 400000; display (a); [a] = " + values + ";");
    const Scratch out (".gz", "");
    measure (state, 3000, [&] {
        return std::make_shared<sim::SimulationRun> (
            sim::RunRequest{.model = model.path, .out = out.path});
    });
}

std::string gate_model (int reactions, int substrates) {
    std::string text;
    for (int i = 0; i < reactions; ++i) {
        text += "<reaction id=\"r" + std::to_string (i) + "\" reversible=\"false\">\n";
        text += "<listOfReactants>\n";
        for (int s = 0; s < substrates; ++s) {
            text += "<speciesReference species=\"s" + std::to_string (i + s) + "\"/>\n";
        }
        text += "</listOfReactants>\n<listOfProducts>\n<speciesReference species=\"p" +
                std::to_string (i % 7) + "\"/>\n</listOfProducts>\n</reaction>\n";
    }
    return text;
}

void gates (benchmark::State& state, int reactions, int substrates, bool trace) {
    const Scratch model (".xml", gate_model (reactions, substrates));
    const Scratch table (".csv", "");
    measure (state, 600, [&] {
        return std::make_shared<gates::GateExtractor> (
            gates::ExtractionRequest{.input_path = model.path,
                                     .model_file = {},
                                     .output_base = model.path,
                                     .kinetics_path = table.path,
                                     .depth = 7,
                                     .trace = trace,
                                     .threads = processor_count ()});
    });
}
void gates_of_many_circuits (benchmark::State& state) { gates (state, 60, 3, false); }
void gates_of_a_wide_circuit (benchmark::State& state) { gates (state, 1, 45, false); }
void gates_with_traces (benchmark::State& state) { gates (state, 60, 3, true); }

/// YES gates from each species to each other one: walks without number.
std::string clique_text () {
    std::string text;
    for (int from = 0; from < 20; ++from) {
        for (int to = 0; to < 20; ++to) {
            if (from == to) continue;
            const std::string a = "s" + std::to_string (from);
            const std::string b = "s" + std::to_string (to);
            text += "E/S;1;" + a + ";1;" + b + ";YES;ENZ;0;ELNEC;0;ELABS;0;REACTIONS;1;REACBEGIN;" +
                    a + "-" + b + ";0;;SUBS;1;" + a + ";;PROD;1;" + b +
                    ";;ENZY;0;INHI;0;REACEND;\n";
        }
    }
    return text;
}

void formula (benchmark::State& state, const std::string& library, const std::string& formula,
              const std::string& output) {
    const Scratch gates ("_gates.csv", library);
    const std::string base = gates.path.substr (0, gates.path.size () - 10);
    measure (state, 1500, [&] {
        return std::make_shared<formula::FormulaSearch> (
            formula::SearchRequest{.base = base, .formula = formula, .output = output});
    });
}
void formula_walk (benchmark::State& state) { formula (state, clique_text (), "s0", "s19"); }
/// Grows all variants of a formula of eight names: more than half a million trees.
class Growing : public LongWork {
  public:
    void tidy () override { growth_.reset (); }

  protected:
    Outcome work (const std::stop_token& stop) override {
        growth_.emplace (formula::Patience{.stop = stop});
        growth_->grow (formula::FormCreator ().parse ("!a+b+!c+d+!e+f+!g+h"));
        return growth_->growth () == formula::Growth::abandoned ? Outcome::stop ()
                                                                : Outcome::success ();
    }

  private:
    std::optional<formula::VariantGrowth> growth_;
};
void formula_growth (benchmark::State& state) {
    measure (state, 500, [] { return std::make_shared<Growing> (); });
}

/// Reads what has no end.
class Reading : public LongWork {
  public:
    void tidy () override { input_ = {}; }

  protected:
    Outcome work (const std::stop_token& stop) override {
        input_ = read_input ("/dev/zero", {.text_mode = true, .stop = stop});
        return input_.end == ReadEnd::stopped ? Outcome::stop () : Outcome::success ();
    }

  private:
    Input input_;
};
void reading (benchmark::State& state) {
    measure (state, 600, [] { return std::make_shared<Reading> (); });
}

BENCHMARK (simulation)->Iterations (1)->Unit (benchmark::kMillisecond);
BENCHMARK (result_writing)->Iterations (1)->Unit (benchmark::kMillisecond);
BENCHMARK (gates_of_many_circuits)->Iterations (1)->Unit (benchmark::kMillisecond);
BENCHMARK (gates_of_a_wide_circuit)->Iterations (1)->Unit (benchmark::kMillisecond);
BENCHMARK (gates_with_traces)->Iterations (1)->Unit (benchmark::kMillisecond);
BENCHMARK (formula_walk)->Iterations (1)->Unit (benchmark::kMillisecond);
BENCHMARK (formula_growth)->Iterations (1)->Unit (benchmark::kMillisecond);
BENCHMARK (reading)->Iterations (1)->Unit (benchmark::kMillisecond);

} // namespace
} // namespace ostrand
