// The stochastic engine.
//
// Products are written from counts read before the reactants change, so a species that stands on
// both sides of a step, or twice on one side, does not add up: A -> A + B makes A grow by n, A -> B
// + B gives n of B, A + A -> B takes n of A. Models are written for this, and it must stay so.
#include "sim/engine.h"

#include <algorithm>
#include <vector>

namespace ostrand::sim {
namespace {

/// How often a step fires whose mean is `pr`: the whole part for certain, the fraction by chance.
inline std::uint32_t firings (float pr, float u) {
    std::uint32_t n = to_count (pr);
    if (pr - static_cast<float> (n) > u) ++n;
    return n;
}

inline void apply_step (const ElemStep& e, std::uint32_t* r, std::uint32_t spare,
                        RandomState& random) {
    const std::uint32_t a = r[e.m];
    if (a == 0) return; // and no random number is drawn
    const std::uint32_t b0 = r[e.p[0]];
    const std::uint32_t b1 = r[e.p[1]];
    const float u = random.draw ();
    if (e.q == no_species) {
        const std::uint32_t n = firings (static_cast<float> (a) * e.k, u);
        r[e.m] = a - n; // a constant above 1 can take more than there is: the count wraps
        r[e.p[0]] = b0 + n;
        r[e.p[1]] = b1 + n;
        if (e.p[2] != spare) {
            r[e.p[2]] += n;
            r[e.p[3]] += n;
            r[e.p[4]] += n;
        }
        return;
    }
    const std::uint32_t c = r[e.q];
    if (c == 0) return;
    const float pr = e.k * alpha * static_cast<float> (a) * static_cast<float> (c);
    const std::uint32_t n = std::min (firings (pr, u), std::min (a, c));
    r[e.m] = a - n;
    r[e.q] = c - n;
    r[e.p[0]] = b0 + n;
    r[e.p[1]] = b1 + n;
}

} // namespace

void sweep_stochastic (std::span<const ElemStep> steps, std::span<std::uint32_t> counts,
                       RandomState& random, std::uint32_t time_steps) {
    const auto spare = static_cast<std::uint32_t> (counts.size () - 1);
    std::uint32_t* r = counts.data ();
    for (std::uint32_t it = 0; it < time_steps; it += 2) {
        for (const ElemStep& step : steps) apply_step (step, r, spare, random);
        for (auto step = steps.rbegin (); step != steps.rend (); ++step) {
            apply_step (*step, r, spare, random);
        }
    }
}

void run_stochastic (const EngineModel& model, Simulation& simulation) {
    if (model.nb_gen == 0) return;
    // The last entry is the spare slot: empty products are written there and nobody reads them.
    std::vector<std::uint32_t> counts (simulation.copy_num.begin (), simulation.copy_num.end ());
    counts[model.n_species] = 0;
    std::uint32_t* r = counts.data ();
    RandomState random = simulation.random;
    run_points (
        model, simulation, [r] (std::uint32_t i) { return r[i]; },
        [r, spare = model.n_species, &random] (const ElemStep& e) {
            apply_step (e, r, spare, random);
        });
    simulation.random = random;
}

} // namespace ostrand::sim
