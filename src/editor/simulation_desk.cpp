// Running simulations beside the editor.
#include "editor/simulation_desk.h"

#include "base/file_access.h"
#include "base/report.h"

#include <filesystem>

namespace ostrand::editor {
namespace {

constexpr int most_runs = 1000;

} // namespace

RunFiles run_files (const std::string& folder, int k) {
    const std::string number = k == 1 ? "" : std::to_string (k);
    return {folder + "/_tmp_" + number + ".ssa", folder + "/_data_" + number + ".gz"};
}

SimulationDesk::SimulationDesk (std::string folder, std::string executable)
    : folder_ (std::move (folder)), executable_ (std::move (executable)) {}

SimulationDesk::~SimulationDesk () = default;

void SimulationDesk::end () {
    run_.reset ();
    run_lock_.release ();
}

bool SimulationDesk::start (const std::string& model_text, bool deterministic, bool reverse_video,
                            std::string& error) {
    if (run_) {
        error = "a simulation goes on";
        return false;
    }
    for (int k = 1; k <= most_runs; ++k) {
        const RunFiles files = run_files (folder_, k);
        FileLock lock (files.model);
        if (lock.end () == FileLock::End::held_elsewhere) continue;
        if (!lock.held ()) {
            error = lock.error ().empty () ? "'" + files.model + "' is no file" : lock.error ();
            return false;
        }
        std::error_code ignored;
        if (is_locked (files.result)) { // a viewer shows it, of this editor or of another one
            std::filesystem::remove (files.model, ignored);
            continue;
        }
        std::filesystem::remove (files.result, ignored);
        truncate_file (lock.descriptor (), 0);
        if (!write_at (lock.descriptor (), 0, model_text, error)) {
            std::filesystem::remove (files.model, ignored);
            return false;
        }
        run_ = std::make_unique<sim::BackgroundRun> (
            sim::BackgroundRequest{.model = files.model,
                                   .out = files.result,
                                   .executable = executable_,
                                   .stochastic = !deterministic,
                                   .reverse_video = reverse_video});
        run_lock_ = std::move (lock);
        return true;
    }
    error = "too many simulations are shown";
    return false;
}

void SimulationDesk::stop () {
    if (run_) run_->stop ();
}

std::optional<float> SimulationDesk::progress () const {
    if (!run_) return std::nullopt;
    return run_->progress_fraction ();
}

bool SimulationDesk::poll () {
    if (!run_) return false;
    for (const std::string& message : run_->take_messages ())
        report_message ("%s", message.c_str ());
    const std::optional<Outcome> outcome = run_->outcome ();
    if (!outcome) return false;
    if (outcome->failed ()) report_message ("%s", outcome->reason.c_str ());
    if (outcome->stopped ()) report_message ("The simulation was stopped.");
    end ();
    return true;
}

} // namespace ostrand::editor
