// The gate file: one line per gate with all that it takes to build the gate again as reactions. It
// is all that the formula side knows of an extraction.
// Layer: gates.
#pragma once
#include "gates/gate_extractor.h"
#include "gates/gate_store.h"
#include "gates/reaction.h"

#include <stop_token>
#include <string>
#include <vector>

namespace ostrand::gates {

/// Writes the lines of gates over one network.
class GateLines {
  public:
    /// reactions  of the model, each with its enzymes, stand-ins included
    /// table      the reaction table, in which each reaction looks for its coefficients
    GateLines (const EquationGraph& graph, const std::vector<Reaction>& reactions,
               const std::vector<Reaction>& table);

    /// Appends one line with its end.
    void append (std::string& out, const Gate& gate) const;

  private:
    const EquationGraph& graph_;
    std::vector<std::string> blocks_;                              // by reaction: its whole block
    std::map<std::string, std::vector<std::size_t>> reactions_of_; // by enzyme name
};

/// Names under which the enzymes of a gate are written, in name order: the two directions of a
/// reversible reaction go by one name.
std::vector<std::string> enzyme_names (const EquationGraph& graph, const Gate& gate);

/// The whole file.
/// stop  ends it early; the text is then of no use
std::string gate_csv_text (const GateExtractor& extractor, const std::vector<Reaction>& table,
                           const std::stop_token& stop = {});

} // namespace ostrand::gates
