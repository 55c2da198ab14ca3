// The trace of one job: what was read, the rows that were made of it, every circuit that was tried
// and the gates seen in it.
// Layer: gates.
#pragma once
#include "base/disk.h"
#include "gates/gate_extractor.h"

#include <map>
#include <stop_token>
#include <string>
#include <vector>

namespace ostrand::gates {

class JobTrace {
  public:
    /// Opens the file. Whether that and all the writing worked is told by `finish`.
    /// stop  looked at on the way; the file is then not put in its place
    JobTrace (const std::string& path, std::stop_token stop);
    JobTrace (const JobTrace&) = delete;
    JobTrace& operator= (const JobTrace&) = delete;

    /// The head, the reader's lines, the two matrices and the rows.
    /// as_read  the reactions before any got a stand-in enzyme
    void write_model (const GateExtractor& extractor, const GateJob& job,
                      const std::vector<Reaction>& as_read);
    /// Searches this job's share step by step, so that each can be told; fills the job's result and
    /// gives "Nb Circuits".
    std::uint64_t write_search (const GateExtractor& extractor, GateJob& job, TrialTimes& times,
                                SearchProgress& progress);
    /// The gates, times and parameters.
    void write_result (const GateExtractor& extractor, const GateJob& job, const TrialTimes& times);
    /// Puts the file in its place. False with the reason in `error` when it is not whole; the old
    /// file stays then.
    bool finish (std::string& error);

  private:
    void put (const std::string& text);
    void put_rows (const EquationGraph& graph, const std::vector<Reaction>& reactions);
    void put_circuit (const Circuit& circuit, const std::map<std::string, Gate>& seen);

    std::stop_token stop_;
    OutputFile file_;
    std::string waiting_; // not yet handed to the file
    double start_;        // of the job, seconds of a steady clock
};

} // namespace ostrand::gates
