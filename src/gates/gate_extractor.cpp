// Running an extraction.
#include "gates/gate_extractor.h"

#include "base/disk.h"
#include "gates/gate_csv.h"
#include "gates/job_trace.h"
#include "gates/reaction_table.h"
#include "gates/summary_report.h"

#include <algorithm>
#include <chrono>

namespace ostrand::gates {
namespace {

double now () {
    return std::chrono::duration<double> (std::chrono::steady_clock::now ().time_since_epoch ())
        .count ();
}

} // namespace

int GateJob::fork_gate_count () const {
    return static_cast<int> (
        std::count_if (result.gates.begin (), result.gates.end (),
                       [] (const Gate& gate) { return !gate.open_forks.empty (); }));
}

int GateExtractor::gate_count () const {
    int sum = 0;
    for (const GateJob& job : jobs) sum += job.gate_count ();
    return sum;
}

int GateExtractor::fork_gate_count () const {
    int sum = 0;
    for (const GateJob& job : jobs) sum += job.fork_gate_count ();
    return sum;
}

void GateExtractor::tidy () {
    request.model_file.reset ();
    catalogue_file_.reset ();
    kinetics_file_.reset ();
}

Outcome GateExtractor::work (const std::stop_token& stop) {
    const double start = now ();
    if (Outcome prepared = prepare_jobs (stop); !prepared.done ()) return prepared;
    if (request.trace) {
        search_traced (stop);
    } else {
        search_together (stop);
    }
    total_time = now () - start;
    if (stop.stop_requested ()) return Outcome::stop ();
    write_summaries (stop);
    const TextFile& table = kinetics_file_.emplace (request.kinetics_path, stop);
    if (stop.stop_requested ()) return Outcome::stop ();
    kinetics_opened = table.text.has_value ();
    if (table.end == ReadEnd::too_large) return Outcome::failure (table.fault);
    const std::vector<Reaction> coefficients = CSVCineticReader (table, stop);
    const std::string text = gate_csv_text (*this, coefficients, stop);
    if (stop.stop_requested ()) return Outcome::stop ();
    gate_csv_written = write (gate_csv_path (), text, stop);
    if (!gate_csv_written && stop.stop_requested ()) return Outcome::stop ();
    std::string reason;
    for (const std::string& message : lost) reason += (reason.empty () ? "" : "; ") + message;
    return lost.empty () ? Outcome::success () : Outcome::failure (std::move (reason));
}

/// True when the file is written. One that a stop left out is not lost.
bool GateExtractor::write (const std::string& path, const std::string& text,
                           const std::stop_token& stop) {
    std::string error;
    if (write_file (path, text, error, stop)) return true;
    if (!stop.stop_requested ()) lost.push_back ("cannot write '" + path + "': " + error);
    return false;
}

void GateExtractor::write_summaries (const std::stop_token& stop) {
    if (request.console) {
        std::string told;
        for (const GateJob& job : jobs) told += console_summary (*this, job);
        OutputFile out = OutputFile::standard_output ();
        if (!out.write (told) || !out.commit ()) {
            lost.push_back ("cannot write standard output: " + out.error ());
        }
    }
    if (!request.verbose) return;
    write (request.output_base + ".txt", summary_text (*this), stop);
    write (request.output_base + ".csv", summary_csv (*this), stop);
}

Outcome GateExtractor::prepare_jobs (const std::stop_token& stop) {
    const TextFile& file = request.model_file
                               ? *request.model_file
                               : request.model_file.emplace (request.input_path, stop);
    if (stop.stop_requested ()) return Outcome::stop ();
    if (file.end == ReadEnd::too_large) return Outcome::failure (file.fault);
    model = sbmlReader (file, stop);
    if (request.gate_file != builtin_gate_file) catalogue_file_.emplace (request.gate_file, stop);
    if (catalogue_file_ && catalogue_file_->end == ReadEnd::too_large) {
        return Outcome::failure (catalogue_file_->fault);
    }
    gate_file_opened = !catalogue_file_ || catalogue_file_->text;
    jobs.clear ();
    for (int number = 1; number <= request.partition_count; ++number) {
        if (stop.stop_requested ()) return Outcome::stop ();
        GateJob& job = jobs.emplace_back ();
        job.number = number;
        job.stem = request.output_base + "_N" + std::to_string (request.partition_count) + "_N" +
                   std::to_string (number);
        job.catalogue =
            catalogue_file_
                ? gateNoticeReader (*catalogue_file_, request.partition_count, number, stop)
                : load_catalogue (builtin_catalogue_text (), request.partition_count, number);
    }
    return stop.stop_requested () ? Outcome::stop () : Outcome::success ();
}

void GateExtractor::search_together (const std::stop_token& stop) {
    add_stand_in_enzymes (model.reactions);
    graph = build_equation_graph (model.reactions, model.elements, stop);
    if (stop.stop_requested ()) return;
    std::vector<const Catalogue*> shares;
    for (const GateJob& job : jobs) shares.push_back (&job.catalogue);
    SearchOutcome outcome =
        search_gates (graph, shares,
                      {.limit = request.depth,
                       .rules = {request.evaluate_forks, request.multiple_firing},
                       .threads = request.threads,
                       .progress = request.tell_progress ? &search_progress_ : nullptr,
                       .stop = stop});
    if (outcome.stopped) return;
    circuit_counter = outcome.circuits;
    times = outcome.times;
    for (std::size_t i = 0; i < jobs.size (); ++i) jobs[i].result = std::move (outcome.jobs[i]);
}

void GateExtractor::search_traced (const std::stop_token& stop) {
    const std::vector<Reaction> as_read = model.reactions;
    add_stand_in_enzymes (model.reactions);
    graph = build_equation_graph (model.reactions, model.elements, stop);
    for (GateJob& job : jobs) {
        if (stop.stop_requested ()) return;
        JobTrace report (job.stem + ".txt", stop);
        report.write_model (*this, job, as_read);
        TrialTimes job_times;
        if (is_searchable (graph)) {
            circuit_counter = report.write_search (*this, job, job_times, search_progress_);
        }
        report.write_result (*this, job, job_times);
        std::string error;
        if (!report.finish (error) && !stop.stop_requested ()) {
            lost.push_back ("cannot write '" + job.stem + ".txt': " + error);
        }
        times.gate += job_times.gate;
        times.model += job_times.model;
        times.sort += job_times.sort;
    }
}

std::string base_of_model (const std::string& path) {
    const std::size_t at = path.find_last_of ("./");
    return at != std::string::npos && path[at] == '.' ? path.substr (0, at) : path;
}

} // namespace ostrand::gates
