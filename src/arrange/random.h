// Pseudo-random numbers that are the same on every machine and in every run.
// Layer: arrange, internal.
#pragma once
#include <cstdint>

namespace ostrand::arrange {

/// splitmix64 (Steele, Lea, Flood 2014): 64 bits of state, a new number by mixing a counter.
class Random {
  public:
    explicit Random (std::uint64_t seed) : state_ (seed) {}
    std::uint64_t next () {
        state_ += 0x9E3779B97F4A7C15U;
        std::uint64_t z = state_;
        z = (z ^ (z >> 30U)) * 0xBF58476D1CE4E5B9U;
        z = (z ^ (z >> 27U)) * 0x94D049BB133111EBU;
        return z ^ (z >> 31U);
    }
    /// Uniform in [0, 1).
    double unit () { return static_cast<double> (next () >> 11U) * 0x1p-53; }
    /// Uniform in [-1, 1).
    double symmetric () { return 2 * unit () - 1; }
    /// 0 .. count - 1; count > 0.
    int below (std::size_t count) { return static_cast<int> (next () % count); }

  private:
    std::uint64_t state_;
};

} // namespace ostrand::arrange
