// The lane engines of all instruction sets, and which of them this machine has.

// Scalable vectors cannot be members of a class; where there are such, there are fixed ones too.
#define HWY_DISABLED_TARGETS                                                                       \
    (HWY_SSSE3 | HWY_AVX3_DL | HWY_SVE | HWY_SVE2 | HWY_SVE_256 | HWY_SVE2_128 | HWY_RVV)
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "sim/lane_kernels.cpp"
#include <hwy/foreach_target.h>

#include "sim/lane_kernels.h"

#include <hwy/highway.h>
#include <vector>

#include "sim/lane_single-inl.h"
#if HWY_TARGET != HWY_SCALAR
#include "sim/lane_deterministic-inl.h"
#include "sim/lane_stochastic-inl.h"
#endif

HWY_BEFORE_NAMESPACE ();
namespace ostrand::sim::HWY_NAMESPACE {

inline void append_kernels (const char* target, std::vector<LaneKernel>& kernels) {
    kernels.push_back ({target, 1, run_stochastic_single, run_deterministic_single});
#if HWY_TARGET != HWY_SCALAR
    // One vector of lanes, or two, which keep the processor busier.
    kernels.push_back ({target, lanes, run_stochastic_lanes<1>, run_deterministic_lanes<1>});
    kernels.push_back ({target, 2 * lanes, run_stochastic_lanes<2>, run_deterministic_lanes<2>});
#endif
}

} // namespace ostrand::sim::HWY_NAMESPACE
HWY_AFTER_NAMESPACE ();

#if HWY_ONCE
#include <algorithm>

namespace ostrand::sim {
namespace {

std::vector<LaneKernel> find_kernels () {
    std::vector<LaneKernel> kernels;
    const auto supported = hwy::SupportedTargets ();
    (void)supported;
#if HWY_TARGETS & HWY_AVX3
    if ((supported & HWY_AVX3) != 0) N_AVX3::append_kernels ("AVX-512", kernels);
#endif
#if HWY_TARGETS & HWY_AVX2
    if ((supported & HWY_AVX2) != 0) N_AVX2::append_kernels ("AVX2", kernels);
#endif
#if HWY_TARGETS & HWY_SSE4
    if ((supported & HWY_SSE4) != 0) N_SSE4::append_kernels ("SSE4", kernels);
#endif
#if HWY_TARGETS & HWY_NEON
    if ((supported & HWY_NEON) != 0) N_NEON::append_kernels ("NEON", kernels);
#endif
        // What serves where none of these is there.
#if HWY_TARGETS & HWY_EMU128
    N_EMU128::append_kernels ("emulated", kernels);
#endif
#if HWY_TARGETS & HWY_SCALAR
    N_SCALAR::append_kernels ("scalar", kernels);
#endif
    return kernels;
}

} // namespace

StochasticLanes::StochasticLanes (std::uint32_t species, unsigned lanes_wide, unsigned lanes_used)
    : n_species (species), width (lanes_wide), used (lanes_used),
      counts (std::size_t{species} * lanes_wide), state0 (lanes_wide), state1 (lanes_wide),
      idle (lanes_wide), scratch (std::size_t{species} * lanes_wide) {
    for (unsigned lane = used; lane < width; ++lane) {
        idle[lane] = ~0U;
        // Any numbers but small ones: a number drawn as 0 would look as if it could fire.
        state0[lane] = 0x44E2068BF01FB7;
        state1[lane] = 0x12BB113D13EAF7F;
    }
}

DeterministicLanes::DeterministicLanes (std::uint32_t species, unsigned lanes_wide,
                                        unsigned lanes_used)
    : n_species (species), width (lanes_wide), used (lanes_used),
      amounts (std::size_t{species} * lanes_wide) {}

std::span<const LaneKernel> lane_kernels () {
    static const std::vector<LaneKernel> kernels = find_kernels ();
    return kernels;
}

const LaneKernel* choose_kernel (std::span<const LaneKernel> kernels, std::size_t simulations) {
    const LaneKernel* chosen = nullptr;
    for (const LaneKernel& kernel : kernels) {
        const bool fits = kernel.width >= simulations;
        const bool chosen_fits = chosen != nullptr && chosen->width >= simulations;
        if (chosen == nullptr || (fits && (!chosen_fits || kernel.width < chosen->width)) ||
            (!fits && !chosen_fits && kernel.width > chosen->width)) {
            chosen = &kernel;
        }
    }
    return chosen;
}

unsigned widest (std::span<const LaneKernel> kernels) {
    unsigned width = 1;
    for (const LaneKernel& kernel : kernels) width = std::max (width, kernel.width);
    return width;
}

} // namespace ostrand::sim
#endif // HWY_ONCE
