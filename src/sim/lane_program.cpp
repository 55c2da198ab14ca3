// From elementary steps to lane programs.
#include "sim/lane_program.h"

#include "sim/engine.h"

#include <cmath>

namespace ostrand::sim {
namespace {

/// Marks every species that can come up.
void spread (std::span<const ElemStep> steps, std::uint32_t n_species, std::vector<bool>& present) {
    for (bool changed = true; changed;) {
        changed = false;
        for (const ElemStep& e : steps) {
            if (!present[e.m] || (e.q != no_species && !present[e.q])) continue;
            for (const std::uint16_t product : e.p) {
                if (product >= n_species || present[product]) continue;
                present[product] = true;
                changed = true;
            }
        }
    }
}

LaneStep single_step (const ElemStep& e, std::uint32_t n_species, bool second_present) {
    LaneStep step{};
    step.m = e.m;
    step.p0 = e.p[0];
    step.two_products = e.p[1] < n_species;
    step.p1 = step.two_products ? e.p[1] : 0;
    if (e.q == no_species) {
        step.op = e.k > 1 ? LaneOp::mono_large : LaneOp::mono;
        step.k = e.k;
        if (e.p[2] < n_species) {
            for (std::size_t i = 2; i < e.p.size (); ++i) {
                if (e.p[i] < n_species) step.more[step.more_size++] = e.p[i];
            }
        }
        return step;
    }
    step.op = second_present ? LaneOp::bi : LaneOp::bi_empty;
    step.q = e.q;
    step.k = e.k * alpha;
    return step;
}

/// True when the second step takes apart what the first one puts together, and no other species
/// has a part in either.
bool is_pair (const LaneStep& bind, const LaneStep& release) {
    const bool shapes = bind.op == LaneOp::bi && !bind.two_products && release.op == LaneOp::mono &&
                        release.two_products && release.more_size == 0;
    if (!shapes || bind.m == bind.q || bind.m == bind.p0 || bind.q == bind.p0) return false;
    const bool forward = release.p0 == bind.m && release.p1 == bind.q;
    const bool swapped = release.p0 == bind.q && release.p1 == bind.m;
    return release.m == bind.p0 && (forward || swapped);
}

/// True when the step closes what the pair bound, and makes nothing of what the pair is about.
bool is_close (const LaneStep& pair, const LaneStep& close) {
    if (close.op != LaneOp::mono || close.m != pair.p0 || close.p0 != pair.m) return false;
    const auto outside = [&] (std::uint32_t p) {
        return p != pair.m && p != pair.q && p != pair.p0;
    };
    bool all_outside = !close.two_products || outside (close.p1);
    for (std::size_t i = 0; i < close.more_size; ++i)
        all_outside = all_outside && outside (close.more[i]);
    return all_outside;
}

/// Marks the steps whose first reactant is what the pair before binds.
void mark_followers (std::vector<LaneStep>& steps) {
    for (std::size_t i = 1; i < steps.size (); ++i) {
        const LaneOp before = steps[i - 1].op;
        steps[i].follows = (before == LaneOp::bind_release || before == LaneOp::release_bind) &&
                           steps[i].m == steps[i - 1].p0;
    }
}

} // namespace

LaneProgram compile_lanes (std::span<const ElemStep> steps, std::uint32_t n_species,
                           std::vector<bool> present, bool draws) {
    LaneProgram program;
    program.n_species = n_species;
    spread (steps, n_species, present);
    std::vector<LaneStep> singles;
    for (const ElemStep& e : steps) {
        if (!present[e.m]) continue;
        const bool second_present = e.q == no_species || present[e.q];
        if (!second_present && !draws) continue;
        singles.push_back (single_step (e, n_species, second_present));
        program.finite = program.finite && std::isfinite (singles.back ().k);
    }
    program.n_steps = singles.size ();
    for (std::size_t i = 0; i < singles.size (); ++i) {
        LaneStep step = singles[i];
        if (i + 1 < singles.size () && is_pair (step, singles[i + 1])) {
            step.op = LaneOp::bind_release;
            step.release = singles[++i].k;
            if (i + 1 < singles.size () && is_close (step, singles[i + 1])) {
                const LaneStep& close = singles[++i];
                step.op = LaneOp::enzyme;
                step.close = close.k;
                step.two_products = close.two_products;
                step.p1 = close.p1;
                step.more = close.more;
                step.more_size = close.more_size;
            }
        }
        program.forward.push_back (step);
    }
    program.backward.assign (program.forward.rbegin (), program.forward.rend ());
    for (LaneStep& step : program.backward) {
        if (step.op == LaneOp::bind_release) step.op = LaneOp::release_bind;
        if (step.op == LaneOp::enzyme) step.op = LaneOp::enzyme_back;
    }
    mark_followers (program.forward);
    mark_followers (program.backward);
    return program;
}

} // namespace ostrand::sim
