// Estimating the work of a search.
#include "gates/search_work.h"

#include "gates/gate_search.h"

#include <algorithm>

namespace ostrand::gates {
namespace {

/// Once a size has as many circuits, larger ones are not counted: that would take seconds.
constexpr double most_counted = 100'000;

/// What a circuit costs, by its enzymes. Measured: rows and elements both grow with them.
double cost (std::size_t size) { return static_cast<double> (size) * static_cast<double> (size); }

double count_circuits (const EquationGraph& graph, int size, const std::stop_token& stop) {
    double count = 0;
    const auto circuit = [&] (std::span<const int> enzymes, int) {
        if (enzymes.size () == static_cast<std::size_t> (size)) ++count;
    };
    walk_circuits (graph, size,
                   {.circuit = circuit,
                    .extend = [] (int, std::uint64_t, std::span<const int>) {},
                    .seed_done = [] (int) {}},
                   stop);
    return count;
}

} // namespace

SearchWork::SearchWork (const EquationGraph& graph, int largest, const std::stop_token& stop)
    : circuits_{0, static_cast<double> (graph.equations.size ())} {
    while (circuits_.size () <= static_cast<std::size_t> (largest) && circuits_.back () > 0) {
        const double last = circuits_.back ();
        const double before = circuits_[circuits_.size () - 2];
        circuits_.push_back (
            last > most_counted
                ? last * last / before
                : count_circuits (graph, static_cast<int> (circuits_.size ()), stop));
    }
}

double SearchWork::part_done (int size, std::uint64_t tried) const {
    double done = 0;
    double all = 0;
    for (std::size_t s = 1; s < circuits_.size (); ++s) {
        const double work = circuits_[s] * cost (s);
        all += work;
        if (s < static_cast<std::size_t> (size)) done += work;
        if (s == static_cast<std::size_t> (size)) {
            done += std::min (static_cast<double> (tried), circuits_[s]) * cost (s);
        }
    }
    return all > 0 ? std::min (done / all, 1.0) : 1.0;
}

} // namespace ostrand::gates
