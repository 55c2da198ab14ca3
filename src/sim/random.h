// The random numbers of a stochastic simulation.
// Layer: sim.
#pragma once
#include <cstdint>
#include <mutex>

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

/// Seeds of simulations, one after the other: the very first one is always alike, the later ones
/// come from a linear congruential sequence.
class Seeds {
  public:
    RandomState next ();
    /// Goes on as if so many had been drawn.
    void skip (std::uint64_t count);

  private:
    bool first_drawn_ = false;
    std::uint64_t state_ = 3;
};

/// The seeds of a process, which go on over all of its runs. Safe to use from any thread.
class SeedSequence {
  public:
    /// The seeds of the next `count` simulations.
    Seeds take (std::uint64_t count);

  private:
    std::mutex lock_;
    Seeds next_;
};

} // namespace ostrand::sim
