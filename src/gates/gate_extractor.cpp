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

bool GateExtractor::run (std::string& error) {
    const double start = now ();
    prepare_jobs ();
    if (trace) {
        search_traced ();
    } else {
        search_together ();
    }
    total_time = now () - start;
    if (console) {
        for (const GateJob& job : jobs) write_standard_output (console_summary (*this, job));
    }
    if (verbose) {
        std::string lost;
        write_file (output_base + ".txt", summary_text (*this), lost);
        write_file (output_base + ".csv", summary_csv (*this), lost);
    }
    const std::vector<Reaction> table = CSVCineticReader (kinetics_path, &kinetics_opened);
    return write_file (gate_csv_path (), gate_csv_text (*this, table), error);
}

void GateExtractor::prepare_jobs () {
    model = sbmlReader (model_file ? *model_file : TextFile (input_path));
    std::optional<TextFile> catalogue_file;
    if (gate_file != builtin_gate_file) catalogue_file.emplace (gate_file);
    gate_file_opened = !catalogue_file || catalogue_file->text;
    jobs.clear ();
    for (int number = 1; number <= partition_count; ++number) {
        GateJob& job = jobs.emplace_back ();
        job.number = number;
        job.stem =
            output_base + "_N" + std::to_string (partition_count) + "_N" + std::to_string (number);
        job.catalogue = catalogue_file
                            ? gateNoticeReader (*catalogue_file, partition_count, number)
                            : load_catalogue (builtin_catalogue_text (), partition_count, number);
    }
}

void GateExtractor::search_together () {
    add_stand_in_enzymes (model.reactions);
    graph = build_equation_graph (model.reactions, model.elements);
    std::vector<const Catalogue*> shares;
    for (const GateJob& job : jobs) shares.push_back (&job.catalogue);
    SearchOutcome outcome = search_gates (graph, shares,
                                          {.limit = depth,
                                           .rules = {evaluate_forks, multiple_firing},
                                           .threads = threads,
                                           .progress = progress});
    circuit_counter = outcome.circuits;
    times = outcome.times;
    for (std::size_t i = 0; i < jobs.size (); ++i) jobs[i].result = std::move (outcome.jobs[i]);
}

void GateExtractor::search_traced () {
    const std::vector<Reaction> as_read = model.reactions;
    add_stand_in_enzymes (model.reactions);
    graph = build_equation_graph (model.reactions, model.elements);
    for (GateJob& job : jobs) {
        JobTrace report (job.stem + ".txt");
        report.write_model (*this, job, as_read);
        TrialTimes job_times;
        if (is_searchable (graph)) {
            circuit_counter = report.write_search (*this, job, job_times);
        }
        report.write_result (*this, job, job_times);
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
