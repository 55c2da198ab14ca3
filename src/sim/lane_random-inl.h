// Random numbers of all lanes of a vector. Compiled once for each instruction set, by
// lane_kernels.cpp.
// Layer: sim.
#if defined(OSTRAND_SIM_LANE_RANDOM_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef OSTRAND_SIM_LANE_RANDOM_INL_H_
#undef OSTRAND_SIM_LANE_RANDOM_INL_H_
#else
#define OSTRAND_SIM_LANE_RANDOM_INL_H_
#endif

#include "sim/lane_kernels.h"
#include "sim/random.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE ();
namespace ostrand::sim::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

using WordTag = hn::ScalableTag<std::uint32_t>;
using IntegerTag = hn::ScalableTag<std::int32_t>;
using FloatTag = hn::ScalableTag<float>;
using LongTag = hn::ScalableTag<std::uint64_t>;
using Words = hn::Vec<WordTag>;
using Integers = hn::Vec<IntegerTag>;
using Floats = hn::Vec<FloatTag>;
using Longs = hn::Vec<LongTag>;

/// Lanes of one vector.
inline constexpr std::size_t lanes = hn::MaxLanes (WordTag ());

HWY_INLINE Floats all_lanes (float value) { return hn::Set (FloatTag (), value); }

#if HWY_TARGET == HWY_AVX3

/// A number drawn in each lane, from 0 to 1. The plain engine's own float, exactly.
struct Draw {
    static constexpr bool is_exact = true;
    Floats low;
    HWY_INLINE Floats high () const { return low; }
    HWY_INLINE Floats exact () const { return low; }
};

/// The generator of each lane. One vector holds the states of eight lanes.
class LaneRandom {
  public:
    HWY_INLINE void load (const StochasticLanes& from, std::size_t lane) {
        const LongTag d;
        low0_ = hn::Load (d, from.state0.data () + lane);
        high0_ = hn::Load (d, from.state0.data () + lane + lanes / 2);
        low1_ = hn::Load (d, from.state1.data () + lane);
        high1_ = hn::Load (d, from.state1.data () + lane + lanes / 2);
    }

    HWY_INLINE void store (StochasticLanes& to, std::size_t lane) const {
        const LongTag d;
        hn::Store (low0_, d, to.state0.data () + lane);
        hn::Store (high0_, d, to.state0.data () + lane + lanes / 2);
        hn::Store (low1_, d, to.state1.data () + lane);
        hn::Store (high1_, d, to.state1.data () + lane + lanes / 2);
    }

    /// Every lane draws.
    HWY_INLINE Draw draw () {
        const Longs low = advance<true> (low0_, low1_);
        const Longs high = advance<true> (high0_, high1_);
        return to_floats (low, high);
    }

    /// The lanes whose word is not 0 draw. The others get a number that means nothing.
    HWY_INLINE Draw draw_where (Words alive) {
        const __mmask16 mask = _mm512_test_epi32_mask (alive.raw, alive.raw);
        const Longs low = advance<false> (low0_, low1_, static_cast<__mmask8> (mask));
        const Longs high = advance<false> (high0_, high1_, static_cast<__mmask8> (mask >> 8));
        return to_floats (low, high);
    }

  private:
    /// The sum is formed whether the lane draws or not, so that what fires now does not wait for
    /// what the step before left over.
    template <bool all>
    HWY_INLINE static Longs advance (Longs& state0, Longs& state1, __mmask8 mask = 0xFF) {
        constexpr int exclusive_or = 0x96;
        const __m512i y = state1.raw;
        const __m512i x = _mm512_xor_si512 (state0.raw, _mm512_slli_epi64 (state0.raw, 23));
        const __m512i three =
            _mm512_ternarylogic_epi64 (x, y, _mm512_srli_epi64 (x, 17), exclusive_or);
        const __m512i next = _mm512_xor_si512 (three, _mm512_srli_epi64 (y, 26));
        state0.raw = all ? y : _mm512_mask_mov_epi64 (state0.raw, mask, y);
        state1.raw = all ? next : _mm512_mask_mov_epi64 (y, mask, next);
        return Longs{_mm512_add_epi64 (next, y)};
    }

    HWY_INLINE static Draw to_floats (Longs low, Longs high) {
        const __m512 sum =
            _mm512_insertf32x8 (_mm512_castps256_ps512 (_mm512_cvtepu64_ps (low.raw)),
                                _mm512_cvtepu64_ps (high.raw), 1);
        return {hn::Mul (Floats{sum}, all_lanes (0x1p-64F))};
    }

    Longs low0_, high0_, low1_, high1_;
};

#else

/// A number drawn in each lane, from 0 to 1, between two bounds: its leading 24 bits with nothing
/// and with 2^-24 behind them. What it is exactly is asked for once in millions of draws.
struct Draw {
    static constexpr bool is_exact = false;
    Floats low;
    Longs even; // the 64-bit sums of lanes 0, 2, 4, ...
    Longs odd;
    HWY_INLINE Floats high () const { return hn::Add (low, all_lanes (0x1p-24F)); }
    HWY_NOINLINE Floats exact () const;
};

/// The float that the plain engine makes of the sum.
HWY_NOINLINE Floats Draw::exact () const {
    std::array<std::uint64_t, lanes / 2> even_sums{};
    std::array<std::uint64_t, lanes / 2> odd_sums{};
    hn::StoreU (even, LongTag (), even_sums.data ());
    hn::StoreU (odd, LongTag (), odd_sums.data ());
    std::array<float, lanes> numbers{};
    for (std::size_t i = 0; i < lanes / 2; ++i) {
        numbers[2 * i] = static_cast<float> (even_sums[i]) * 0x1p-64F;
        numbers[2 * i + 1] = static_cast<float> (odd_sums[i]) * 0x1p-64F;
    }
    return hn::LoadU (FloatTag (), numbers.data ());
}

/// The generator of each lane. One vector holds the states of the even lanes, another those of the
/// odd ones, so that nothing has to cross from one half of a vector to the other.
class LaneRandom {
  public:
    HWY_INLINE void load (const StochasticLanes& from, std::size_t lane) {
        load_word (from.state0.data () + lane, even0_, odd0_);
        load_word (from.state1.data () + lane, even1_, odd1_);
    }

    HWY_INLINE void store (StochasticLanes& to, std::size_t lane) const {
        store_word (even0_, odd0_, to.state0.data () + lane);
        store_word (even1_, odd1_, to.state1.data () + lane);
    }

    /// Every lane draws.
    HWY_INLINE Draw draw () {
        const Longs nobody = hn::Zero (LongTag ());
        const Longs even = advance<true> (even0_, even1_, nobody);
        const Longs odd = advance<true> (odd0_, odd1_, nobody);
        return {leading_bits (even, odd), even, odd};
    }

    /// The lanes whose word is not 0 draw. The others get a number that means nothing.
    HWY_INLINE Draw draw_where (Words alive) {
        const WordTag d;
        const LongTag d64;
        const Words rests = hn::VecFromMask (d, hn::Eq (alive, hn::Zero (d)));
        const Longs even = advance<false> (even0_, even1_, hn::BitCast (d64, hn::DupEven (rests)));
        const Longs odd = advance<false> (odd0_, odd1_, hn::BitCast (d64, hn::DupOdd (rests)));
        return {leading_bits (even, odd), even, odd};
    }

  private:
    HWY_INLINE static void load_word (const std::uint64_t* from, Longs& even, Longs& odd) {
        std::array<std::uint64_t, lanes / 2> evens{};
        std::array<std::uint64_t, lanes / 2> odds{};
        for (std::size_t i = 0; i < lanes / 2; ++i) {
            evens[i] = from[2 * i];
            odds[i] = from[2 * i + 1];
        }
        even = hn::LoadU (LongTag (), evens.data ());
        odd = hn::LoadU (LongTag (), odds.data ());
    }

    HWY_INLINE static void store_word (Longs even, Longs odd, std::uint64_t* to) {
        std::array<std::uint64_t, lanes / 2> evens{};
        std::array<std::uint64_t, lanes / 2> odds{};
        hn::StoreU (even, LongTag (), evens.data ());
        hn::StoreU (odd, LongTag (), odds.data ());
        for (std::size_t i = 0; i < lanes / 2; ++i) {
            to[2 * i] = evens[i];
            to[2 * i + 1] = odds[i];
        }
    }

    /// rests  all bits in lanes that do not draw
    template <bool all>
    HWY_INLINE static Longs advance (Longs& state0, Longs& state1, Longs rests) {
        const Longs y = state1;
        const Longs x = hn::Xor (state0, hn::ShiftLeft<23> (state0));
        const Longs next =
            hn::Xor (hn::Xor (x, y), hn::Xor (hn::ShiftRight<17> (x), hn::ShiftRight<26> (y)));
        state0 = all ? y : hn::IfVecThenElse (rests, state0, y);
        state1 = all ? next : hn::IfVecThenElse (rests, y, next);
        return hn::Add (next, y);
    }

    HWY_INLINE static Floats leading_bits (Longs even, Longs odd) {
        const WordTag d;
        const Words leading = hn::OddEven (hn::ShiftRight<8> (hn::BitCast (d, odd)),
                                           hn::BitCast (d, hn::ShiftRight<40> (even)));
        return hn::Mul (hn::ConvertTo (FloatTag (), hn::BitCast (IntegerTag (), leading)),
                        all_lanes (0x1p-24F));
    }

    Longs even0_, odd0_, even1_, odd1_;
};

#endif

} // namespace ostrand::sim::HWY_NAMESPACE
HWY_AFTER_NAMESPACE ();

#endif
