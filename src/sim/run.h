// A whole run: model file in, result file out.
// Layer: sim.
#pragma once
#include "sim/grid.h"
#include "sim/model.h"

#include <atomic>
#include <cstdint>
#include <string>

namespace ostrand::sim {

/// What a run is asked for.
struct RunRequest {
    std::string model;          // path of the model text
    std::string out;            // path of the result, "-" for standard output
    bool sequential = false;    // one simulation after the other, on the calling thread
    bool report = false;        // the messages of the run itself, as with verbose
    bool verbose = false;       // these and the dump of the tables, on standard error
    bool stochastic = true;     // else the deterministic engine
    bool show_progress = false; // a line on standard error when that is a terminal
};

enum class RunOutcome {
    done,         // also when the result file could not be created
    model_failed, // the model could not be opened, read or fitted into memory
    result_lost,  // the result was begun and could not be written to its end; reported
};

/// Process-wide state of the simulator: one model and one run at a time; the caller sees to that.
struct SimulatorState {
    ModelTables tables;
    SeedSequence seeds;
    std::atomic<float> progress_done{0}; // time steps of all simulations
    std::atomic<float> progress_total{0};
    std::atomic<std::uint64_t> points_done{0}; // exact, for the progress line
};
SimulatorState& simulator_state ();

/// Runs a model. Faults of the model and a lost result go through report_message.
RunOutcome run (const RunRequest& request);

/// The same in one call; true unless the run failed.
bool run_model (const char* model, const char* out, bool sequential, bool report, bool verbose,
                bool stochastic);

/// Part of the run that is done, 0 to 1, for a timer.
float progress_fraction ();

/// Adds time steps to what is done; an update that is lost to another thread's costs nothing but
/// accuracy of the display.
void add_progress (float steps);

/// Runs all simulations with one engine, on at most as many threads as there are processors; where
/// a thread cannot be started its work is done on the calling one. Counts do not depend on any of
/// it.
void run_simulations (const EngineModel& model, std::vector<Simulation>& simulations,
                      bool sequential, bool stochastic);

/// The verbose dump: initial counts of each species, then each step.
std::string dump_tables (const ModelTables& tables);

} // namespace ostrand::sim
