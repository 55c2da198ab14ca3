// The statistics of an extraction, for the person who tunes the search: as a table, as text, and
// one job's short summary.
// Layer: gates.
#pragma once
#include "gates/gate_extractor.h"

#include <string>

namespace ostrand::gates {

/// "<base>.csv".
std::string summary_csv (const GateExtractor& extractor);

/// "<base>.txt": the list of gates, then the same data.
std::string summary_text (const GateExtractor& extractor);

/// What a job prints on standard output.
std::string console_summary (const GateExtractor& extractor, const GateJob& job);

/// One gate as the lists show it, up to its absent elements.
/// signature   what follows "E/S : "
/// fork_title  "Porte Fourche : " or the same behind a blank
std::string listed_gate (const EquationGraph& graph, const Gate& gate, const std::string& signature,
                         const char* fork_title);

/// 46 dashes.
std::string dashes ();

/// The block of times, `separator` standing where the table has its ";".
std::string times_block (const TrialTimes& times, double total_time, const char* separator);

} // namespace ostrand::gates
