// The engines in vector lanes: many simulations of one model side by side, to the last bit what the
// plain engines make of each of them. Which instruction sets there are is decided at run time.
// Layer: sim.
#pragma once
#include "sim/aligned_array.h"
#include "sim/lane_program.h"

#include <cstdint>
#include <span>

namespace ostrand::sim {

/// Simulations of the stochastic engine side by side. Entry [row * width + lane] of `counts` is one
/// species of one simulation. Lanes from `used` on are idle: they hold no molecule, and their
/// random numbers mean nothing.
struct StochasticLanes {
    StochasticLanes (std::uint32_t n_species, unsigned lanes_wide, unsigned lanes_used);

    std::uint32_t n_species;
    unsigned width;
    unsigned used;
    AlignedArray<std::uint32_t> counts; // molecules
    AlignedArray<std::uint64_t> state0; // random numbers of each lane
    AlignedArray<std::uint64_t> state1;
    AlignedArray<std::uint32_t> idle; // by lane: all bits of an idle one, else 0
    AlignedArray<float> scratch;      // of the kernels
};

/// Likewise of the deterministic engine.
struct DeterministicLanes {
    DeterministicLanes (std::uint32_t n_species, unsigned lanes_wide, unsigned lanes_used);

    std::uint32_t n_species;
    unsigned width;
    unsigned used;
    AlignedArray<double> amounts; // molecules
};

/// Both engines for one instruction set and number of lanes.
struct LaneKernel {
    const char* target; // "AVX-512", "AVX2", "SSE4", "NEON"; "emulated", "scalar" without vectors
    unsigned width;     // lanes

    /// Goes on by an even number of time steps, from an even one. False, with nothing changed, when
    /// a count comes up that only the plain engine handles: from 2^31 on, or a step that would fire
    /// more often than that.
    bool (*stochastic) (const LaneProgram& program, StochasticLanes& lanes,
                        std::uint32_t time_steps);
    void (*deterministic) (const LaneProgram& program, DeterministicLanes& lanes,
                           std::uint32_t time_steps);
};

/// What this machine can run: the widest instruction set first, of each the narrower kernel first.
/// Never empty: the last ones run everywhere.
std::span<const LaneKernel> lane_kernels ();

/// The kernel for so many simulations side by side: the narrowest that holds them all, the widest
/// when none does; null when there are no kernels. Narrow kernels are a little faster than wide
/// ones with idle lanes.
const LaneKernel* choose_kernel (std::span<const LaneKernel> kernels, std::size_t simulations);

/// Lanes of the widest kernel; 1 when there are none.
unsigned widest (std::span<const LaneKernel> kernels);

} // namespace ostrand::sim
