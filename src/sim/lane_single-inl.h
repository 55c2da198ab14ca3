// One simulation alone: a lane program walked in scalars, with what the vector kernels know. For
// the last simulation that is left over, and for machines without vectors. Compiled once for each
// instruction set, by lane_kernels.cpp.
// Layer: sim.
#if defined(OSTRAND_SIM_LANE_SINGLE_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef OSTRAND_SIM_LANE_SINGLE_INL_H_
#undef OSTRAND_SIM_LANE_SINGLE_INL_H_
#else
#define OSTRAND_SIM_LANE_SINGLE_INL_H_
#endif

#include "sim/lane_kernels.h"
#include "sim/random.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE ();
namespace ostrand::sim::HWY_NAMESPACE {

/// The stochastic engine on counts below 2^24, which are exact as floats.
class SingleStochastic {
  public:
    HWY_INLINE static bool run (const LaneProgram& program, StochasticLanes& state,
                                std::uint32_t time_steps) {
        SingleStochastic engine;
        if (!engine.load (state)) return false;
        for (std::uint32_t it = 0; it < time_steps; it += 2) {
            const RandomState before = engine.random_;
            for (const LaneStep& step : program.forward) engine.apply (step);
            for (const LaneStep& step : program.backward) engine.apply (step);
            // Who draws no number has nothing that could react, and never will have. (From a state
            // of zeros numbers are drawn that leave it as it is.)
            if (engine.random_.rd_state1 == before.rd_state1 &&
                engine.random_.rd_state0 == before.rd_state0 && before.rd_state1 != 0)
                break;
        }
        if (!(engine.most_ < limit) || engine.least_ < 0 || engine.overflow_) return false;
        engine.store (state);
        return true;
    }

  private:
    static constexpr float limit = 0x1p24F;

    HWY_INLINE SingleStochastic () {}

    HWY_INLINE bool load (StochasticLanes& state) {
        r_ = state.scratch.data ();
        for (std::uint32_t i = 0; i < state.n_species; ++i) {
            r_[i] = static_cast<float> (state.counts[i]);
            if (r_[i] >= limit) return false;
        }
        random_ = {state.state0[0], state.state1[0]};
        return true;
    }
    HWY_INLINE void store (StochasticLanes& state) const {
        for (std::uint32_t i = 0; i < state.n_species; ++i) {
            state.counts[i] = static_cast<std::uint32_t> (r_[i]);
        }
        state.state0[0] = random_.rd_state0;
        state.state1[0] = random_.rd_state1;
    }

    /// Draws, and gives in n how often a step of that mean fires. False for not at all, which the
    /// leading 24 bits of the number drawn nearly always tell.
    HWY_INLINE bool fires (float mean, float& n) {
        const std::uint64_t y = random_.rd_state1;
        std::uint64_t x = random_.rd_state0;
        x ^= x << 23;
        const std::uint64_t next = x ^ y ^ (x >> 17) ^ (y >> 26);
        random_.rd_state0 = y;
        random_.rd_state1 = next;
        const std::uint64_t sum = next + y;
        const float low = static_cast<float> (static_cast<std::int32_t> (sum >> 40)) * 0x1p-24F;
        if (!(mean >= low)) return false;
        // Once, as the mean of most steps is below 1: a number that waits for no computation.
        if (mean < 1.0F && HWY_LIKELY (mean - low > 0x1p-24F)) {
            n = 1.0F;
            return true;
        }
        const float whole = std::trunc (mean);
        const float above = mean - whole - low;
        n = whole + (above > 0 ? 1.0F : 0.0F);
        // Between low and low + 2^-24 only the whole number drawn tells.
        if (HWY_UNLIKELY (std::abs (above - 0x1p-25F) <= 0x1p-25F)) {
            const float number = static_cast<float> (sum) * 0x1p-64F;
            n = whole + (mean - whole > number ? 1.0F : 0.0F);
        }
        return true;
    }
    HWY_INLINE bool fires (float a, float c, float k, float& n) {
        if (a == 0) return false;
        const float mean = k * a * c;
        if (!fires (mean, n)) return false;
        const float scarcer = a < c ? a : c;
        n = n < scarcer ? n : scarcer;
        // A mean above what a count can hold saturates; one more wraps it to 0.
        if (HWY_UNLIKELY (mean > 0x1p32F)) n = 0;
        return true;
    }

    HWY_INLINE void put (std::uint32_t species, float count) { r_[species] = count; }
    HWY_INLINE float grown (float count, float n) {
        const float sum = count + n;
        most_ = sum > most_ ? sum : most_;
        return sum;
    }

    HWY_INLINE void apply_mono (const LaneStep& step) {
        const float a = r_[step.m];
        if (a == 0) return;
        const float mean = a * step.k;
        float n = 0;
        if (!fires (mean, n)) return;
        const float b0 = grown (r_[step.p0], n);
        const float b1 = step.two_products ? grown (r_[step.p1], n) : 0;
        put (step.m, a - n);
        if (step.op == LaneOp::mono_large) {
            least_ = a - n < least_ ? a - n : least_;
            overflow_ = overflow_ || mean >= 0x1p31F;
        }
        put (step.p0, b0);
        if (!step.two_products) return;
        put (step.p1, b1);
        for (std::size_t i = 0; i < step.more_size; ++i) {
            put (step.more[i], grown (r_[step.more[i]], n));
        }
    }

    HWY_INLINE void apply_bi (const LaneStep& step) {
        const float a = r_[step.m];
        const float c = r_[step.q];
        float n = 0;
        if (!fires (a, c, step.k, n)) return;
        const float b0 = grown (r_[step.p0], n);
        const float b1 = step.two_products ? grown (r_[step.p1], n) : 0;
        put (step.m, a - n);
        put (step.q, c - n);
        put (step.p0, b0);
        if (step.two_products) put (step.p1, b1);
    }

    /// Three different species: what one of the two steps writes, the other has at hand.
    template <bool bind_first>
    HWY_INLINE void apply_pair (const LaneStep& step) {
        float a = r_[step.m];
        float c = r_[step.q];
        float bound = r_[step.p0];
        if (bind_first) bind (step, a, c, bound);
        release (step, a, c, bound);
        if (!bind_first) bind (step, a, c, bound);
    }
    template <bool bind_first>
    HWY_INLINE void apply_enzyme (const LaneStep& step) {
        float a = r_[step.m];
        float c = r_[step.q];
        float bound = r_[step.p0];
        if (!bind_first) close (step, a, bound);
        if (bind_first) bind (step, a, c, bound);
        release (step, a, c, bound);
        if (!bind_first) bind (step, a, c, bound);
        if (bind_first) close (step, a, bound);
    }
    HWY_INLINE void release (const LaneStep& step, float& a, float& c, float& bound) {
        float n = 0;
        if (bound != 0 && fires (bound * step.release, n)) {
            bound -= n;
            a = grown (a, n);
            c = grown (c, n);
            put (step.p0, bound);
            put (step.m, a);
            put (step.q, c);
        }
    }
    HWY_INLINE void close (const LaneStep& step, float& a, float& bound) {
        float n = 0;
        if (bound != 0 && fires (bound * step.close, n)) {
            bound -= n;
            a = grown (a, n);
            put (step.p0, bound);
            put (step.m, a);
            if (!step.two_products) return;
            put (step.p1, grown (r_[step.p1], n));
            for (std::size_t i = 0; i < step.more_size; ++i) {
                put (step.more[i], grown (r_[step.more[i]], n));
            }
        }
    }
    HWY_INLINE void bind (const LaneStep& step, float& a, float& c, float& bound) {
        float n = 0;
        if (!fires (a, c, step.k, n)) return;
        a -= n;
        c -= n;
        bound = grown (bound, n);
        put (step.m, a);
        put (step.q, c);
        put (step.p0, bound);
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
        case LaneOp::bi_empty: {
            float unused = 0;
            fires (r_[step.m], 0, step.k, unused);
            break;
        }
        }
    }

    float* r_ = nullptr;
    RandomState random_;
    float most_ = 0;
    float least_ = 0;
    bool overflow_ = false;
};

/// The deterministic engine.
class SingleDeterministic {
  public:
    HWY_INLINE static void run (const LaneProgram& program, DeterministicLanes& state,
                                std::uint32_t time_steps) {
        SingleDeterministic engine (state.amounts.data ());
        for (std::uint32_t it = 0; it < time_steps; it += 2) {
            engine.moved_ = false;
            for (const LaneStep& step : program.forward) engine.apply (step);
            for (const LaneStep& step : program.backward) engine.apply (step);
            if (!engine.moved_) return; // nothing ever will
        }
    }

  private:
    static constexpr double least_amount = 1.0;

    HWY_INLINE explicit SingleDeterministic (double* amounts) : r_ (amounts) {}

    HWY_INLINE bool reacts (double a, double c, float k, double& n) {
        if (a < least_amount || c < least_amount) return false;
        moved_ = true;
        n = static_cast<double> (k) * a * c;
        const double scarcer = a < c ? a : c; // known before n is
        n = n < scarcer ? n : scarcer;
        return true;
    }

    /// The first reactant. What the pair before bound is at hand: a value that is read back from
    /// memory right behind its writing comes late.
    HWY_INLINE double first (const LaneStep& step) const {
        if (step.follows) return bound_;
        return r_[step.m];
    }

    HWY_INLINE void apply_mono (const LaneStep& step) {
        const double a = first (step);
        if (a < least_amount) return;
        moved_ = true;
        const double n = static_cast<double> (step.k) * a;
        const double b0 = r_[step.p0] + n;
        const double b1 = step.two_products ? r_[step.p1] + n : 0;
        r_[step.m] = a - n;
        r_[step.p0] = b0;
        if (!step.two_products) return;
        r_[step.p1] = b1;
        for (std::size_t i = 0; i < step.more_size; ++i) r_[step.more[i]] += n;
    }

    HWY_INLINE void apply_bi (const LaneStep& step) {
        const double a = r_[step.m];
        const double c = r_[step.q];
        double n = 0;
        if (!reacts (a, c, step.k, n)) return;
        const double b0 = r_[step.p0] + n;
        const double b1 = step.two_products ? r_[step.p1] + n : 0;
        r_[step.m] = a - n;
        r_[step.q] = c - n;
        r_[step.p0] = b0;
        if (step.two_products) r_[step.p1] = b1;
    }

    template <bool bind_first>
    HWY_INLINE void apply_pair (const LaneStep& step) {
        double a = first (step);
        double c = r_[step.q];
        double bound = r_[step.p0];
        double n = 0;
        if (bind_first && reacts (a, c, step.k, n)) bind (step, n, a, c, bound);
        release (step, a, c, bound);
        if (!bind_first && reacts (a, c, step.k, n)) bind (step, n, a, c, bound);
        bound_ = bound;
    }
    template <bool bind_first>
    HWY_INLINE void apply_enzyme (const LaneStep& step) {
        double a = r_[step.m];
        double c = r_[step.q];
        double bound = r_[step.p0];
        double n = 0;
        if (!bind_first) close (step, a, bound);
        if (bind_first && reacts (a, c, step.k, n)) bind (step, n, a, c, bound);
        release (step, a, c, bound);
        if (!bind_first && reacts (a, c, step.k, n)) bind (step, n, a, c, bound);
        if (bind_first) close (step, a, bound);
    }
    HWY_INLINE void release (const LaneStep& step, double& a, double& c, double& bound) {
        if (!(bound < least_amount)) {
            moved_ = true;
            const double n = static_cast<double> (step.release) * bound;
            bound -= n;
            a += n;
            c += n;
            r_[step.p0] = bound;
            r_[step.m] = a;
            r_[step.q] = c;
        }
    }
    HWY_INLINE void close (const LaneStep& step, double& a, double& bound) {
        if (!(bound < least_amount)) {
            moved_ = true;
            const double n = static_cast<double> (step.close) * bound;
            bound -= n;
            a += n;
            r_[step.p0] = bound;
            r_[step.m] = a;
            if (!step.two_products) return;
            r_[step.p1] += n;
            for (std::size_t i = 0; i < step.more_size; ++i) r_[step.more[i]] += n;
        }
    }
    HWY_INLINE void bind (const LaneStep& step, double n, double& a, double& c, double& bound) {
        a -= n;
        c -= n;
        bound += n;
        r_[step.m] = a;
        r_[step.q] = c;
        r_[step.p0] = bound;
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

    double* r_;
    double bound_ = 0;   // by the pair before
    bool moved_ = false; // something reacted in these two time steps
};

inline bool run_stochastic_single (const LaneProgram& program, StochasticLanes& state,
                                   std::uint32_t time_steps) {
    return SingleStochastic::run (program, state, time_steps);
}
inline void run_deterministic_single (const LaneProgram& program, DeterministicLanes& state,
                                      std::uint32_t time_steps) {
    SingleDeterministic::run (program, state, time_steps);
}

} // namespace ostrand::sim::HWY_NAMESPACE
HWY_AFTER_NAMESPACE ();

#endif
