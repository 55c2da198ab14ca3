// One extraction: from a model file to the gate file and the reports.
// Layer: gates.
#pragma once
#include "gates/gate_search.h"
#include "gates/sbml_reader.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace ostrand::gates {

/// One job: a share of the catalogue and what was found of it. Model, graph and walk are the same
/// for all jobs, so the extraction holds them once.
struct GateJob {
    int number = 1;   // J, from 1
    std::string stem; // "<base>_N<P>_N<J>"
    Catalogue catalogue;
    SearchResult result;

    int gate_count () const { return static_cast<int> (result.gates.size ()); }
    int fork_gate_count () const;
};

class GateExtractor {
  public:
    // What to do; set before run.
    std::string input_path;             // the model
    std::optional<TextFile> model_file; // as read, when somebody has done so
    std::string output_base;            // stem of all files that are written
    std::string gate_file{builtin_gate_file};
    std::string kinetics_path; // the reaction table
    int partition_count = 8;   // P, the number of jobs
    int depth = 3;             // enzymes of a gate at most
    bool evaluate_forks = true;
    bool multiple_firing = true;
    bool verbose = false; // write the two summaries
    bool trace = false;   // write each job's trace; the search is then done job by job
    bool console = false; // print each job's short summary
    int threads = 1;
    std::function<void (const SearchProgress&)> progress; // may be empty

    /// Runs all jobs, writes the summaries asked for and the gate file. False when the gate file
    /// could not be written, with the reason in `error`; a summary or trace that cannot be written
    /// is lost without a word.
    bool run (std::string& error);

    // What there is after run.
    SbmlModel model;
    EquationGraph graph;
    std::vector<GateJob> jobs;
    std::uint64_t circuit_counter = 0; // "Nb Circuits", the same for every job
    TrialTimes times;                  // summed over the jobs
    double total_time = 0;             // seconds
    bool gate_file_opened = true;
    bool kinetics_opened = true;

    int gate_count () const;
    int fork_gate_count () const;
    std::string gate_csv_path () const { return output_base + "_gates.csv"; }

  private:
    void prepare_jobs ();
    void search_together ();
    void search_traced ();
};

/// The path without its extension: cut at its last ".", unless a "/" comes behind that.
std::string base_of_model (const std::string& path);

} // namespace ostrand::gates
