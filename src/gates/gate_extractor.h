// One extraction: from a model file to the gate file and the reports.
// Layer: gates.
#pragma once
#include "base/long_work.h"
#include "gates/gate_search.h"
#include "gates/sbml_reader.h"

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

/// What an extraction is asked for.
struct ExtractionRequest {
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
    bool tell_progress = true; // estimate the work, which takes a small part of it
};

/// Runs all jobs, writes the summaries asked for and the gate file. Every file is written that can
/// be; the outcome is a failure when one could not be, and `lost` has all that could not. A stopped
/// extraction leaves the gate file of before, whole.
class GateExtractor : public LongWork {
  public:
    GateExtractor () = default;
    explicit GateExtractor (ExtractionRequest asked) : request (std::move (asked)) {}

    const SearchProgress& progress () const override { return search_progress_; }
    /// Frees the texts of the files that were read.
    void tidy () override;

    ExtractionRequest request;

    // What there is after it has run.
    SbmlModel model;
    EquationGraph graph;
    std::vector<GateJob> jobs;
    std::uint64_t circuit_counter = 0; // "Nb Circuits", the same for every job
    TrialTimes times;                  // summed over the jobs
    double total_time = 0;             // seconds
    bool gate_file_opened = true;
    bool kinetics_opened = true;
    bool gate_csv_written = false;
    std::vector<std::string> lost; // a message for each thing that could not be written

    int gate_count () const;
    int fork_gate_count () const;
    std::string gate_csv_path () const { return request.output_base + "_gates.csv"; }

  protected:
    Outcome work (const std::stop_token& stop) override;

  private:
    Outcome prepare_jobs (const std::stop_token& stop);
    void search_together (const std::stop_token& stop);
    void search_traced (const std::stop_token& stop);
    void write_summaries (const std::stop_token& stop);
    bool write (const std::string& path, const std::string& text, const std::stop_token& stop);

    SearchProgress search_progress_;
    std::optional<TextFile> catalogue_file_;
    std::optional<TextFile> kinetics_file_;
};

/// The path without its extension: cut at its last ".", unless a "/" comes behind that.
std::string base_of_model (const std::string& path);

} // namespace ostrand::gates
