// The deterministic engine: the mean-value twin of the stochastic one. Not a solver of differential
// equations: no error control, no variable step; each time step applies every elementary step once.
#include "sim/engine.h"

#include <algorithm>
#include <vector>

namespace ostrand::sim {
namespace {

/// Below one molecule a reactant is spent.
constexpr double least_amount = 1.0;

inline void apply_step (const ElemStep& e, double* r, std::uint32_t spare) {
    const double a = r[e.m];
    if (a < least_amount) return;
    // Read before the reactants change, as in the stochastic engine.
    const double b0 = r[e.p[0]];
    const double b1 = r[e.p[1]];
    if (e.q == no_species) {
        const double n = static_cast<double> (e.k) * a;
        r[e.m] = a - n;
        r[e.p[0]] = b0 + n;
        r[e.p[1]] = b1 + n;
        if (e.p[2] != spare) {
            r[e.p[2]] += n;
            r[e.p[3]] += n;
            r[e.p[4]] += n;
        }
        return;
    }
    const double c = r[e.q];
    if (c < least_amount) return;
    const float f = e.k * alpha;
    double n = static_cast<double> (f) * a * c;
    n = std::min (a, n);
    n = std::min (c, n);
    r[e.m] = a - n;
    r[e.q] = c - n;
    r[e.p[0]] = b0 + n;
    r[e.p[1]] = b1 + n;
}

} // namespace

void run_deterministic (const EngineModel& model, Simulation& simulation) {
    if (model.nb_gen == 0) return;
    std::vector<double> amounts (simulation.copy_num.begin (), simulation.copy_num.end ());
    amounts[model.n_species] = 0;
    double* r = amounts.data ();
    run_points (
        model, simulation, [r] (std::uint32_t i) { return to_count (r[i]); },
        [r, spare = model.n_species] (const ElemStep& e) { apply_step (e, r, spare); });
}

} // namespace ostrand::sim
