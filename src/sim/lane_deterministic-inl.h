// The deterministic engine in vector lanes. Compiled once for each instruction set, by
// lane_kernels.cpp.
// Layer: sim.
#if defined(OSTRAND_SIM_LANE_DETERMINISTIC_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef OSTRAND_SIM_LANE_DETERMINISTIC_INL_H_
#undef OSTRAND_SIM_LANE_DETERMINISTIC_INL_H_
#else
#define OSTRAND_SIM_LANE_DETERMINISTIC_INL_H_
#endif

#include "sim/lane_kernels.h"

#include <cstddef>
#include <cstdint>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE ();
namespace ostrand::sim::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

using AmountTag = hn::ScalableTag<double>;
using Amounts = hn::Vec<AmountTag>;

/// Amounts of one vector.
inline constexpr std::size_t amounts = hn::MaxLanes (AmountTag ());

/// One run of time steps over `vectors` vectors.
template <std::size_t vectors>
class DeterministicKernel {
  public:
    static constexpr std::size_t width = vectors * amounts;

    HWY_INLINE static void run (const LaneProgram& program, DeterministicLanes& state,
                                std::uint32_t time_steps) {
        DeterministicKernel kernel;
        kernel.rows_ = state.amounts.data ();
        for (std::uint32_t it = 0; it < time_steps; it += 2) {
            kernel.moved_ = false;
            for (const LaneStep& step : program.forward) kernel.apply (step);
            for (const LaneStep& step : program.backward) kernel.apply (step);
            if (!kernel.moved_) return; // nothing ever will
        }
    }

  private:
    /// One species in all lanes.
    struct Row {
        Amounts of[vectors];
    };

    HWY_INLINE Row row (std::uint32_t species) const {
        Row row;
        for (std::size_t v = 0; v < vectors; ++v) {
            row.of[v] = hn::Load (AmountTag (), rows_ + std::size_t{species} * width + v * amounts);
        }
        return row;
    }
    HWY_INLINE void put (std::uint32_t species, const Row& row) {
        for (std::size_t v = 0; v < vectors; ++v) {
            hn::Store (row.of[v], AmountTag (), rows_ + std::size_t{species} * width + v * amounts);
        }
    }
    HWY_INLINE static void add (Row& row, const Row& n) {
        for (std::size_t v = 0; v < vectors; ++v) row.of[v] = hn::Add (row.of[v], n.of[v]);
    }
    HWY_INLINE static void take (Row& row, const Row& n) {
        for (std::size_t v = 0; v < vectors; ++v) row.of[v] = hn::Sub (row.of[v], n.of[v]);
    }

    /// What reacts: 0 in a lane with less than one molecule of a reactant. False when no lane has
    /// enough. Not-a-number is never too little, and every choice is made as the plain engine makes
    /// it.
    HWY_INLINE bool reacts (const Row& a, float k, Row& n) {
        const AmountTag d;
        const Amounts least = hn::Set (d, 1.0);
        auto spent = hn::Lt (a.of[0], least);
        for (std::size_t v = 1; v < vectors; ++v) spent = hn::And (spent, hn::Lt (a.of[v], least));
        if (hn::AllTrue (d, spent)) return false;
        moved_ = true;
        const Amounts factor = hn::Set (d, static_cast<double> (k));
        for (std::size_t v = 0; v < vectors; ++v) {
            n.of[v] = hn::IfThenZeroElse (hn::Lt (a.of[v], least), hn::Mul (factor, a.of[v]));
        }
        return true;
    }
    HWY_INLINE bool reacts (const Row& a, const Row& c, float k, Row& n) {
        const AmountTag d;
        const Amounts least = hn::Set (d, 1.0);
        auto spent = hn::Or (hn::Lt (a.of[0], least), hn::Lt (c.of[0], least));
        for (std::size_t v = 1; v < vectors; ++v) {
            spent = hn::And (spent, hn::Or (hn::Lt (a.of[v], least), hn::Lt (c.of[v], least)));
        }
        if (hn::AllTrue (d, spent)) return false;
        moved_ = true;
        const Amounts factor = hn::Set (d, static_cast<double> (k));
        for (std::size_t v = 0; v < vectors; ++v) {
            Amounts amount = hn::Mul (hn::Mul (factor, a.of[v]), c.of[v]);
            const Amounts scarcer =
                hn::IfThenElse (hn::Lt (a.of[v], c.of[v]), a.of[v], c.of[v]); // known before
            amount = hn::IfThenElse (hn::Lt (amount, scarcer), amount, scarcer);
            n.of[v] = hn::IfThenZeroElse (hn::Or (hn::Lt (a.of[v], least), hn::Lt (c.of[v], least)),
                                          amount);
        }
        return true;
    }

    HWY_INLINE void make (const LaneStep& step, Row& b0, Row& b1, const Row& n) {
        add (b0, n);
        put (step.p0, b0);
        if (!step.two_products) return;
        add (b1, n);
        put (step.p1, b1);
        for (std::size_t i = 0; i < step.more_size; ++i) {
            Row further = row (step.more[i]);
            add (further, n);
            put (step.more[i], further);
        }
    }

    HWY_INLINE void apply_mono (const LaneStep& step) {
        Row a = row (step.m);
        Row n;
        if (!reacts (a, step.k, n)) return;
        Row b0 = row (step.p0);
        Row b1 = step.two_products ? row (step.p1) : b0;
        take (a, n);
        put (step.m, a);
        make (step, b0, b1, n);
    }

    HWY_INLINE void apply_bi (const LaneStep& step) {
        Row a = row (step.m);
        Row c = row (step.q);
        Row n;
        if (!reacts (a, c, step.k, n)) return;
        Row b0 = row (step.p0);
        Row b1 = step.two_products ? row (step.p1) : b0;
        take (a, n);
        put (step.m, a);
        take (c, n);
        put (step.q, c);
        make (step, b0, b1, n);
    }

    HWY_INLINE void bind (const LaneStep& step, Row& a, Row& c, Row& bound) {
        Row n;
        if (!reacts (a, c, step.k, n)) return;
        take (a, n);
        take (c, n);
        add (bound, n);
        put (step.m, a);
        put (step.q, c);
        put (step.p0, bound);
    }

    template <bool bind_first>
    HWY_INLINE void apply_pair (const LaneStep& step) {
        Row a = row (step.m);
        Row c = row (step.q);
        Row bound = row (step.p0);
        if (bind_first) bind (step, a, c, bound);
        release (step, a, c, bound);
        if (!bind_first) bind (step, a, c, bound);
    }
    template <bool bind_first>
    HWY_INLINE void apply_enzyme (const LaneStep& step) {
        Row a = row (step.m);
        Row c = row (step.q);
        Row bound = row (step.p0);
        if (!bind_first) close (step, a, bound);
        if (bind_first) bind (step, a, c, bound);
        release (step, a, c, bound);
        if (!bind_first) bind (step, a, c, bound);
        if (bind_first) close (step, a, bound);
    }
    HWY_INLINE void release (const LaneStep& step, Row& a, Row& c, Row& bound) {
        Row n;
        if (!reacts (bound, step.release, n)) return;
        take (bound, n);
        add (a, n);
        add (c, n);
        put (step.p0, bound);
        put (step.m, a);
        put (step.q, c);
    }
    HWY_INLINE void close (const LaneStep& step, Row& a, Row& bound) {
        Row n;
        if (!reacts (bound, step.close, n)) return;
        take (bound, n);
        add (a, n);
        put (step.p0, bound);
        put (step.m, a);
        if (!step.two_products) return;
        Row further = row (step.p1);
        add (further, n);
        put (step.p1, further);
        for (std::size_t i = 0; i < step.more_size; ++i) {
            further = row (step.more[i]);
            add (further, n);
            put (step.more[i], further);
        }
    }

    HWY_INLINE void apply (const LaneStep& step) {
        switch (step.op) {
        case LaneOp::bind_release: apply_pair<true> (step); break;
        case LaneOp::release_bind: apply_pair<false> (step); break;
        case LaneOp::enzyme: apply_enzyme<true> (step); break;
        case LaneOp::enzyme_back: apply_enzyme<false> (step); break;
        case LaneOp::mono:
        case LaneOp::mono_large: apply_mono (step); break;
        case LaneOp::bi: apply_bi (step); break;
        case LaneOp::bi_empty: break;
        }
    }

    double* rows_ = nullptr;
    bool moved_ = false; // something reacted in these two time steps
};

/// vectors  of 32-bit words: each holds as many lanes as two vectors of amounts
template <std::size_t vectors>
void run_deterministic_lanes (const LaneProgram& program, DeterministicLanes& state,
                              std::uint32_t time_steps) {
    DeterministicKernel<2 * vectors>::run (program, state, time_steps);
}

} // namespace ostrand::sim::HWY_NAMESPACE
HWY_AFTER_NAMESPACE ();

#endif
