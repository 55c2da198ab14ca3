// A whole run.
#include "sim/run.h"

#include "base/disk.h"
#include "base/platform.h"
#include "base/progress.h"
#include "base/report.h"
#include "base/text.h"
#include "sim/colours.h"
#include "sim/read_model.h"
#include "sim/result_writer.h"
#include "sim/run_progress.h"

#include <chrono>
#include <cstdio>
#include <utility>

namespace ostrand::sim {

SimulatorState& simulator_state () {
    static SimulatorState state;
    return state;
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

SimulationRun::SimulationRun (RunRequest request, SimulatorState& state)
    : request_ (std::move (request)), state_ (state) {}

void SimulationRun::tidy () {
    grid_ = {};
    text_ = {};
}

/// Fills tables and grid.
Outcome SimulationRun::read (const std::stop_token& stop) {
    std::string fault;
    const MessageScope listening ([&fault] (std::string_view text) { fault = text; });
    text_ = read_input (request_.model, {.text_mode = true, .stop = stop});
    if (text_.end == ReadEnd::stopped) return Outcome::stop ();
    if (text_.end == ReadEnd::too_large) {
        fault_ = RunFault::model_refused;
        return Outcome::failure (text_.fault);
    }
    if (!text_.whole ()) {
        fault_ = RunFault::model_not_opened;
        return Outcome::failure ("Cannot open '" + request_.model + "'");
    }
    const std::int32_t first = state_.complex_counter;
    tables_.complex_counter = first;
    bool went_well = read_model (text_.bytes, tables_, stop);
    // Also those of a model that is refused.
    state_.complex_counter += tables_.complex_counter - first;
    if (went_well) {
        assign_colours (tables_);
        if (request_.verbose) print_error_stream (dump_tables (tables_));
        went_well = prepare_run (tables_, state_.seeds, available_memory (), grid_, stop);
    }
    if (went_well) {
        text_ = {};
        return Outcome::success ();
    }
    if (stop.stop_requested ()) return Outcome::stop ();
    fault_ = RunFault::model_refused;
    return Outcome::failure (fault);
}

void SimulationRun::simulate (const std::stop_token& stop) {
    const bool talkative = request_.verbose || request_.report;
    const std::uint64_t points = std::uint64_t{grid_.n_simul} * grid_.n_points;
    progress_.expect (points);
    const ProgressWatch watch (request_.show_progress && !talkative, [this] (double seconds) {
        return progress_text (progress_.amount_done (), progress_.amount_expected (), seconds);
    });
    const LaneModel model{tables_.steps, tables_.n_species (), request_.stochastic};
    run_simulations (model, grid_, request_.sequential, &progress_, stop);
}

Outcome SimulationRun::write (const std::stop_token& stop) {
    std::string error;
    const ResultStatus status =
        write_result (request_.out, tables_, grid_, request_.sequential, error, stop);
    if (status == ResultStatus::written) return Outcome::success ();
    if (status == ResultStatus::stopped) return Outcome::stop ();
    std::string reason = "Cannot write '" + request_.out + "': " + error;
    if (status == ResultStatus::lost) {
        fault_ = RunFault::result_lost;
        return Outcome::failure (std::move (reason));
    }
    fault_ = RunFault::result_not_created;
    no_result_because_ = std::move (reason);
    return Outcome::success ();
}

Outcome SimulationRun::work (const std::stop_token& stop) {
    const bool talkative = request_.verbose || request_.report;
    if (Outcome read_outcome = read (stop); !read_outcome.done ()) return read_outcome;
    if (talkative) {
        print_error_stream (format_text ("#simulations = %u, #species = %u, #reactions = %u\n",
                                         grid_.n_simul, tables_.n_species (),
                                         tables_.n_reactions ()));
    }
    const auto start = std::chrono::steady_clock::now ();
    simulate (stop);
    if (stop.stop_requested ()) return Outcome::stop ();
    if (talkative) {
        const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now () - start;
        print_error_stream (
            "\nSimulated time: " + format_text ("%u", tables_.nb_gen / time_steps_per_second) +
            " s, Simulation time: " + format_g (elapsed.count (), 4) + " s\n");
    }
    return write (stop);
}

bool run_model (const char* model, const char* out, bool sequential, bool report, bool verbose,
                bool stochastic) {
    SimulationRun run ({.model = model,
                        .out = out,
                        .sequential = sequential,
                        .report = report,
                        .verbose = verbose,
                        .stochastic = stochastic});
    const Outcome outcome = run.run ();
    if (outcome.failed () && run.fault () != RunFault::model_not_opened) {
        report_message ("%s", outcome.reason.c_str ());
    }
    return outcome.done ();
}

} // namespace ostrand::sim
