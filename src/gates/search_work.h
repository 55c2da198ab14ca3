// How much work a search is, estimated before it begins, so that its progress can be told.
// Layer: gates.
#pragma once
#include "gates/equation_graph.h"

#include <cstdint>
#include <stop_token>
#include <vector>

namespace ostrand::gates {

/// Counts the circuits of each size, which takes a small part of what trying them takes. Sizes of
/// which there are very many are not counted but taken to go on growing as the last ones did.
class SearchWork {
  public:
    /// largest  enzymes of a circuit at most
    /// stop     ends the counting; what `part_done` says then means nothing
    SearchWork (const EquationGraph& graph, int largest, const std::stop_token& stop = {});

    /// The part of all work, 0 to 1, that is done when `tried` of the circuits of `size` enzymes
    /// and all smaller ones have been tried.
    double part_done (int size, std::uint64_t tried) const;

  private:
    std::vector<double> circuits_; // by size
};

} // namespace ostrand::gates
