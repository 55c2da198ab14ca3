// A whole run: model file in, result file out.
// Layer: sim.
#pragma once
#include "base/disk.h"
#include "base/long_work.h"
#include "sim/grid.h"
#include "sim/lane_group.h"
#include "sim/model.h"

#include <atomic>
#include <cstdint>
#include <string>
#include <vector>

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

/// Where a run failed.
enum class RunFault {
    none, // or outside of these, for want of memory
    model_not_opened,
    model_refused,      // it could not be read, or its grid does not fit into memory
    result_lost,        // the result was begun and could not be written to its end
    result_not_created, // which counts as done
};

/// What goes on from run to run of a process; all process-wide state of the simulator. Runs may
/// share it while they go on at the same time.
struct SimulatorState {
    SeedSequence seeds;
    std::atomic<std::int32_t> complex_counter{0}; // kinetic statements of all models so far
};
SimulatorState& simulator_state ();

/// One run. Its model, its grid and its progress are its own, so several may go on at once.
/// Progress counts recorded points of all simulations, one for each simulated second; it is at its
/// end while the result is written. A result that cannot be created counts as done. A stopped run
/// leaves the result file as it was.
class SimulationRun : public LongWork {
  public:
    explicit SimulationRun (RunRequest request, SimulatorState& state = simulator_state ());

    /// Frees the series, and the model's text.
    void tidy () override;

    /// Where it failed; the outcome has the reason in words.
    RunFault fault () const { return fault_; }
    /// Why there is no result though the run is done, one line; empty when there is one.
    const std::string& no_result_because () const { return no_result_because_; }

  protected:
    Outcome work (const std::stop_token& stop) override;

  private:
    Outcome read (const std::stop_token& stop);
    Outcome write (const std::stop_token& stop);
    void simulate (const std::stop_token& stop);

    RunRequest request_;
    SimulatorState& state_;
    Input text_; // of the model, until it is read
    ModelTables tables_;
    Grid grid_;
    RunFault fault_ = RunFault::none;
    std::string no_result_because_;
};

/// A whole run in one call, whose faults are reported; a model that cannot be opened is not. True
/// unless the run failed.
bool run_model (const char* model, const char* out, bool sequential, bool report, bool verbose,
                bool stochastic);

/// Runs all simulations of a grid, in the lanes of this machine and on at most as many threads as
/// there are processors; where a thread cannot be started its work is done on the calling one.
/// Counts do not depend on any of it: they are those of the plain engines of engine.h. Returns
/// early, with points missing, when a stop is asked for. Throws what went wrong, on whatever
/// thread, when all of them have ended.
/// progress    told of each recorded point of each simulation; may be null
/// sequential  all on the calling thread
/// kernels     what to simulate with; at least one
void run_simulations (const LaneModel& model, Grid& grid, bool sequential,
                      Progress* progress = nullptr, const std::stop_token& stop = {},
                      std::span<const LaneKernel> kernels = lane_kernels ());

/// The verbose dump: initial counts of each species, then each step.
std::string dump_tables (const ModelTables& tables);

} // namespace ostrand::sim
