// The random numbers of a stochastic simulation.
// Layer: sim.
#pragma once
#include <cstdint>

namespace ostrand::sim {

/// xorshift128+ (Vigna 2017, shifts 23, 17, 26). State must not be all zero.
struct RandomState {
    std::uint64_t rd_state0 = 0;
    std::uint64_t rd_state1 = 0;

    /// A float from 0 to 1, both ends included: the sum's 64 bits rounded to a float, times 2^-64.
    float draw () {
        std::uint64_t x = rd_state0;
        const std::uint64_t y = rd_state1;
        rd_state0 = y;
        x ^= x << 23;
        rd_state1 = x ^ y ^ (x >> 17) ^ (y >> 26);
        return static_cast<float> (rd_state1 + y) * 0x1p-64F;
    }
};

/// Seeds the simulations of a process: the first one always alike, the later ones, also those of
/// later runs, from a sequence that goes on.
class SeedSequence {
  public:
    RandomState next ();

  private:
    bool seeded_ = false;
    std::uint64_t state_ = 3;
};

} // namespace ostrand::sim
