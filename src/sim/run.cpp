// A whole run.
#include "sim/run.h"

#include "base/disk.h"
#include "base/report.h"
#include "base/text.h"
#include "sim/colours.h"
#include "sim/read_model.h"
#include "sim/result_writer.h"
#include "sim/run_progress.h"

#include <chrono>
#include <cstdio>

namespace ostrand::sim {

SimulatorState& simulator_state () {
    static SimulatorState state;
    return state;
}

void add_progress (float steps) {
    SimulatorState& state = simulator_state ();
    state.progress_done.store (state.progress_done.load (std::memory_order_relaxed) + steps,
                               std::memory_order_relaxed);
    state.points_done.fetch_add (1, std::memory_order_relaxed);
}

float progress_fraction () {
    const SimulatorState& state = simulator_state ();
    const float total = state.progress_total.load (std::memory_order_relaxed);
    return total > 0 ? state.progress_done.load (std::memory_order_relaxed) / total : 0.0F;
}

std::string dump_tables (const ModelTables& tables) {
    std::string text;
    for (const auto& species : tables.species) {
        text += "init (" + species->name + ") = ";
        for (std::int32_t v = 0; v < species->nb; ++v) {
            if (v > 0) text += ", ";
            append_decimal (text, species->conc[static_cast<std::size_t> (v)]);
        }
        text += '\n';
    }
    text += '\n';
    const auto name = [&tables] (std::uint16_t index) { return tables.species[index]->name; };
    for (const ElemStep& step : tables.steps) {
        text += name (step.m);
        if (step.q != no_species) text += " + " + name (step.q);
        text += " -> " + name (step.p[0]);
        for (std::size_t i = 1; i < step.p.size (); ++i) {
            if (step.p[i] < tables.n_species ()) text += " + " + name (step.p[i]);
        }
        text += " [" + format_g (static_cast<double> (step.k)) + "];\n";
    }
    text += '\n';
    return text;
}

namespace {

/// Prints on standard error, whole, after what stands in its buffer.
void print_error_stream (const std::string& text) {
    std::fwrite (text.data (), 1, text.size (), stderr);
    std::fflush (stderr);
}

} // namespace

RunOutcome run (const RunRequest& request) {
    const std::optional<std::string> text = read_text_file (request.model);
    if (!text) return RunOutcome::model_failed;
    SimulatorState& state = simulator_state ();
    ModelTables& tables = state.tables;
    tables.reset ();
    if (!read_model (*text, tables)) return RunOutcome::model_failed;
    assign_colours (tables);
    if (request.verbose) print_error_stream (dump_tables (tables));
    Grid grid;
    if (!prepare_run (tables, state.seeds, available_memory (), grid)) {
        return RunOutcome::model_failed;
    }
    state.progress_done = 0;
    state.progress_total = static_cast<float> (std::uint64_t{grid.n_simul} * tables.nb_gen);
    state.points_done = 0;
    const bool talkative = request.verbose || request.report;
    if (talkative) {
        print_error_stream (format_text ("#simulations = %u, #species = %u, #reactions = %u\n",
                                         grid.n_simul, tables.n_species (), tables.n_reactions ()));
    }
    const auto start = std::chrono::steady_clock::now ();
    {
        const RunProgress progress (request.show_progress && !talkative,
                                    std::uint64_t{grid.n_simul} * grid.n_points, state.points_done);
        const EngineModel model{tables.steps, tables.n_species (), tables.nb_gen, grid.n_points,
                                add_progress};
        run_simulations (model, grid.simulations, request.sequential, request.stochastic);
    }
    if (talkative) {
        const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now () - start;
        print_error_stream (
            "\nSimulated time: " + format_text ("%u", tables.nb_gen / time_steps_per_second) +
            " s, Simulation time: " + format_g (elapsed.count (), 4) + " s\n");
    }
    std::string error;
    if (write_result (request.out, tables, grid, error) == ResultStatus::lost) {
        report_message ("Cannot write '%s': %s", request.out.c_str (), error.c_str ());
        return RunOutcome::result_lost;
    }
    return RunOutcome::done;
}

bool run_model (const char* model, const char* out, bool sequential, bool report, bool verbose,
                bool stochastic) {
    return run ({.model = model,
                 .out = out,
                 .sequential = sequential,
                 .report = report,
                 .verbose = verbose,
                 .stochastic = stochastic}) == RunOutcome::done;
}

} // namespace ostrand::sim
