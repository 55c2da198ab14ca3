// The stochastic engine in vector lanes. Compiled once for each instruction set, by
// lane_kernels.cpp.
//
// Most steps fire in no lane, and that is what this engine is quick at: draw, compare, go on. Where
// a step fires, what it writes is worked out as the plain engine does it, from the same floats in
// the same order. Counts live in one of two forms: as floats, which hold whole numbers below 2^24
// exactly, or as integers below 2^31. A run of time steps in which a count leaves its form is
// thrown away and done again in the next one; beyond the second it is the plain engine's. Layer:
// sim.
#if defined(OSTRAND_SIM_LANE_STOCHASTIC_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef OSTRAND_SIM_LANE_STOCHASTIC_INL_H_
#undef OSTRAND_SIM_LANE_STOCHASTIC_INL_H_
#else
#define OSTRAND_SIM_LANE_STOCHASTIC_INL_H_
#endif

#include "sim/lane_kernels.h"
#include "sim/lane_random-inl.h"

#include <cstddef>
#include <cstdint>

HWY_BEFORE_NAMESPACE ();
namespace ostrand::sim::HWY_NAMESPACE {

/// Counts below 2^24 as floats.
struct FloatCounts {
    using Tag = FloatTag;
    using Counts = Floats;
    static constexpr std::uint32_t limit = 1U << 24;
    HWY_INLINE static Counts from_words (Words counts) {
        return hn::ConvertTo (FloatTag (), hn::BitCast (IntegerTag (), counts));
    }
    HWY_INLINE static Words to_words (Counts counts) {
        return hn::BitCast (WordTag (), hn::ConvertTo (IntegerTag (), counts));
    }
    HWY_INLINE static Floats as_floats (Counts counts) { return counts; }
    HWY_INLINE static Counts from_firings (Floats firings) { return firings; }

    /// Remembers whether a count has left the form.
    struct Watch {
        Floats most;
        Floats least;
        HWY_INLINE Watch () : most (hn::Zero (FloatTag ())), least (hn::Zero (FloatTag ())) {}
        HWY_INLINE void grown (Counts counts) { most = hn::Max (most, counts); }
        HWY_INLINE void shrunk (Counts) {}
        HWY_INLINE void shrunk_without_limit (Counts counts) { least = hn::Min (least, counts); }
        HWY_INLINE bool well () const {
            const FloatTag d;
            const Floats bound = all_lanes (static_cast<float> (limit));
            return hn::AllTrue (d, hn::And (hn::Lt (most, bound), hn::Ge (least, hn::Zero (d))));
        }
    };
};

/// Counts below 2^31 as integers.
struct IntegerCounts {
    using Tag = IntegerTag;
    using Counts = Integers;
    static constexpr std::uint32_t limit = 1U << 31;
    HWY_INLINE static Counts from_words (Words counts) { return hn::BitCast (Tag (), counts); }
    HWY_INLINE static Words to_words (Counts counts) { return hn::BitCast (WordTag (), counts); }
    HWY_INLINE static Floats as_floats (Counts counts) {
        return hn::ConvertTo (FloatTag (), counts);
    }
    HWY_INLINE static Counts from_firings (Floats firings) {
        return hn::ConvertTo (Tag (), firings);
    }

    /// Remembers whether a count has had its highest bit set.
    struct Watch {
        Integers bits;
        HWY_INLINE Watch () : bits (hn::Zero (IntegerTag ())) {}
        HWY_INLINE void grown (Counts counts) { bits = hn::Or (bits, counts); }
        HWY_INLINE void shrunk (Counts counts) { bits = hn::Or (bits, counts); }
        HWY_INLINE void shrunk_without_limit (Counts counts) { bits = hn::Or (bits, counts); }
        HWY_INLINE bool well () const {
            const IntegerTag d;
            return hn::AllFalse (d, hn::Lt (bits, hn::Zero (d)));
        }
    };
};

/// One run of time steps over `vectors` vectors of lanes.
template <class Form, std::size_t vectors>
class StochasticKernel {
  public:
    static constexpr std::size_t width = vectors * lanes;

    /// False, with nothing changed, when the form does not hold the counts.
    HWY_INLINE static bool run (const LaneProgram& program, StochasticLanes& state,
                                std::uint32_t time_steps) {
        StochasticKernel kernel;
        if (!kernel.load (state)) return false;
        for (std::uint32_t it = 0; it < time_steps; it += 2) {
            for (const LaneStep& step : program.forward) kernel.apply (step);
            for (const LaneStep& step : program.backward) kernel.apply (step);
        }
        if (kernel.overflow_ || !kernel.watch_.well ()) return false;
        kernel.store (state);
        return true;
    }

  private:
    using Counts = typename Form::Counts;
    using Value = hn::TFromD<typename Form::Tag>;

    HWY_INLINE StochasticKernel () {} // here, so that it is compiled for the instruction set

    /// One species in all lanes.
    struct Row {
        Counts of[vectors];
    };

    HWY_INLINE bool load (StochasticLanes& state) {
        const WordTag d;
        rows_ = reinterpret_cast<Value*> (state.scratch.data ());
        Words all = hn::Zero (d);
        const std::size_t size = std::size_t{state.n_species} * width;
        for (std::size_t i = 0; i < size; i += lanes) {
            const Words counts = hn::Load (d, state.counts.data () + i);
            all = hn::Or (all, counts);
            hn::Store (Form::from_words (counts), typename Form::Tag (), rows_ + i);
        }
        const Words outside = hn::And (all, hn::Set (d, ~(Form::limit - 1)));
        if (!hn::AllTrue (d, hn::Eq (outside, hn::Zero (d)))) return false;
        for (std::size_t v = 0; v < vectors; ++v) {
            random_[v].load (state, v * lanes);
            idle_[v] = hn::Load (d, state.idle.data () + v * lanes);
        }
        return true;
    }

    HWY_INLINE void store (StochasticLanes& state) const {
        const WordTag d;
        const std::size_t size = std::size_t{state.n_species} * width;
        for (std::size_t i = 0; i < size; i += lanes) {
            const Counts counts = hn::Load (typename Form::Tag (), rows_ + i);
            hn::Store (Form::to_words (counts), d, state.counts.data () + i);
        }
        for (std::size_t v = 0; v < vectors; ++v) random_[v].store (state, v * lanes);
    }

    HWY_INLINE Row row (std::uint32_t species) const {
        Row row;
        for (std::size_t v = 0; v < vectors; ++v) {
            row.of[v] =
                hn::Load (typename Form::Tag (), rows_ + std::size_t{species} * width + v * lanes);
        }
        return row;
    }
    HWY_INLINE void put (std::uint32_t species, const Row& row) {
        for (std::size_t v = 0; v < vectors; ++v) {
            hn::Store (row.of[v], typename Form::Tag (),
                       rows_ + std::size_t{species} * width + v * lanes);
        }
    }
    HWY_INLINE void add (Row& row, const Row& n) {
        for (std::size_t v = 0; v < vectors; ++v) {
            row.of[v] = hn::Add (row.of[v], n.of[v]);
            watch_.grown (row.of[v]);
        }
    }
    HWY_INLINE void take (Row& row, const Row& n) {
        for (std::size_t v = 0; v < vectors; ++v) {
            row.of[v] = hn::Sub (row.of[v], n.of[v]);
            watch_.shrunk (row.of[v]);
        }
    }

    /// Lanes with a molecule of the first reactant draw. False when there is none.
    HWY_INLINE bool draw (const Row& first, Draw (&draws)[vectors]) {
        const WordTag d;
        auto rests = hn::Eq (hn::Or (hn::BitCast (d, first.of[0]), idle_[0]), hn::Zero (d));
        for (std::size_t v = 1; v < vectors; ++v) {
            const Words alive = hn::Or (hn::BitCast (d, first.of[v]), idle_[v]);
            rests = hn::Or (rests, hn::Eq (alive, hn::Zero (d)));
        }
        if (HWY_LIKELY (hn::AllFalse (d, rests))) {
            for (std::size_t v = 0; v < vectors; ++v) draws[v] = random_[v].draw ();
            return true;
        }
        Words any = hn::BitCast (d, first.of[0]);
        for (std::size_t v = 1; v < vectors; ++v) {
            any = hn::Or (any, hn::BitCast (d, first.of[v]));
        }
        if (hn::AllTrue (d, hn::Eq (any, hn::Zero (d)))) return false;
        for (std::size_t v = 0; v < vectors; ++v) {
            draws[v] = random_[v].draw_where (hn::BitCast (d, first.of[v]));
        }
        return true;
    }

    /// How often a step of mean `mean` fires: the whole part for certain, the fraction by chance.
    /// That is mean - number rounded up, unless the difference, which is rounded itself, is a whole
    /// number or too near to one.
    template <bool two_reactants>
    HWY_INLINE Counts firings (Floats mean, const Draw& draw) {
        const FloatTag d;
        const Floats one = all_lanes (1.0F);
        Floats n = hn::Ceil (hn::Sub (mean, draw.high ()));
        const Floats other =
            Draw::is_exact ? hn::Sub (mean, draw.low) : hn::Floor (hn::Sub (mean, draw.low));
        const auto doubtful = Draw::is_exact ? hn::Eq (n, other) : hn::Ne (hn::Sub (n, other), one);
        if (HWY_UNLIKELY (!hn::AllFalse (d, doubtful))) {
            const Floats whole = hn::Trunc (mean);
            const auto one_more = hn::Gt (hn::Sub (mean, whole), draw.exact ());
            n = hn::IfThenElse (one_more, hn::Add (whole, one), whole);
            if (two_reactants) {
                // A mean above what a count can hold saturates; one more wraps it to 0.
                n = hn::IfThenElse (hn::Gt (mean, all_lanes (0x1p32F)), hn::Zero (d), n);
            } else if (!hn::AllTrue (d, hn::Lt (mean, all_lanes (0x1p31F)))) {
                overflow_ = true;
            }
        }
        return Form::from_firings (n);
    }

    /// The two halves of a step: what would fire, and what that changes. False when nothing fires.
    HWY_INLINE bool fires (const Row& a, float k, Row& n) {
        const FloatTag d;
        Draw draws[vectors];
        if (!draw (a, draws)) return false;
        Floats mean[vectors];
        const Floats factor = all_lanes (k);
        auto may = hn::MaskFromVec (hn::Zero (d));
        for (std::size_t v = 0; v < vectors; ++v) {
            mean[v] = hn::Mul (Form::as_floats (a.of[v]), factor);
            may = hn::Or (may, hn::Ge (mean[v], draws[v].low));
        }
        if (hn::AllFalse (d, may)) return false;
        for (std::size_t v = 0; v < vectors; ++v) n.of[v] = firings<false> (mean[v], draws[v]);
        return true;
    }

    HWY_INLINE bool fires (const Row& a, const Row& c, float k, Row& n) {
        const FloatTag d;
        Draw draws[vectors];
        if (!draw (a, draws)) return false;
        Floats mean[vectors];
        const Floats factor = all_lanes (k);
        auto may = hn::MaskFromVec (hn::Zero (d));
        for (std::size_t v = 0; v < vectors; ++v) {
            mean[v] =
                hn::Mul (hn::Mul (factor, Form::as_floats (a.of[v])), Form::as_floats (c.of[v]));
            may = hn::Or (may, hn::Ge (mean[v], draws[v].low));
        }
        if (hn::AllFalse (d, may)) return false;
        for (std::size_t v = 0; v < vectors; ++v) {
            n.of[v] = hn::Min (firings<true> (mean[v], draws[v]), hn::Min (a.of[v], c.of[v]));
        }
        return true;
    }

    HWY_INLINE void apply_mono (const LaneStep& step) {
        Row a = row (step.m);
        Row n;
        if (!fires (a, step.k, n)) return;
        // Products are read before the reactant changes.
        Row b0 = row (step.p0);
        Row b1 = step.two_products ? row (step.p1) : b0;
        take (a, n);
        if (step.op == LaneOp::mono_large) {
            for (std::size_t v = 0; v < vectors; ++v) watch_.shrunk_without_limit (a.of[v]);
        }
        put (step.m, a);
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

    HWY_INLINE void apply_bi (const LaneStep& step) {
        Row a = row (step.m);
        Row c = row (step.q);
        Row n;
        if (!fires (a, c, step.k, n)) return;
        Row b0 = row (step.p0);
        Row b1 = step.two_products ? row (step.p1) : b0;
        take (a, n);
        take (c, n);
        put (step.m, a);
        put (step.q, c);
        add (b0, n);
        put (step.p0, b0);
        if (!step.two_products) return;
        add (b1, n);
        put (step.p1, b1);
    }

    /// Three different species: what one of the two steps writes, the other has at hand.
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
        if (!fires (bound, step.release, n)) return;
        take (bound, n);
        add (a, n);
        add (c, n);
        put (step.p0, bound);
        put (step.m, a);
        put (step.q, c);
    }
    HWY_INLINE void close (const LaneStep& step, Row& a, Row& bound) {
        Row n;
        if (!fires (bound, step.close, n)) return;
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
    HWY_INLINE void bind (const LaneStep& step, Row& a, Row& c, Row& bound) {
        Row n;
        if (!fires (a, c, step.k, n)) return;
        take (a, n);
        take (c, n);
        add (bound, n);
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
            Draw unused[vectors];
            draw (row (step.m), unused);
            break;
        }
        }
    }

    Value* rows_ = nullptr;
    LaneRandom random_[vectors];
    Words idle_[vectors];
    typename Form::Watch watch_;
    bool overflow_ = false;
};

template <std::size_t vectors>
bool run_stochastic_lanes (const LaneProgram& program, StochasticLanes& state,
                           std::uint32_t time_steps) {
    return StochasticKernel<FloatCounts, vectors>::run (program, state, time_steps) ||
           StochasticKernel<IntegerCounts, vectors>::run (program, state, time_steps);
}

} // namespace ostrand::sim::HWY_NAMESPACE
HWY_AFTER_NAMESPACE ();

#endif
