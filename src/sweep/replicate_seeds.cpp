// Seeds of simulations.
#include "sweep/replicate_seeds.h"

#include <array>
#include <bit>

namespace ostrand::sweep {
namespace {

/// The sequence that seeds a plain run: a state's second word follows its first.
constexpr std::uint64_t multiplier = 1103515245;
constexpr std::uint64_t increment = 12345;

/// The key of a sweep without a seed. Seeds are below 2^63; the keys under this one serve the case
/// that a state must not be used.
constexpr std::uint64_t no_seed_key = ~std::uint64_t{0};

sim::RandomState permute (std::uint64_t key, std::uint64_t index) {
    constexpr std::array<int, 8> rotations{16, 42, 12, 31, 16, 32, 24, 21};
    constexpr unsigned rounds = 20;
    // Fractions of the golden ratio and of the square root of 2.
    std::uint64_t x = key + 0x9E3779B97F4A7C15;
    std::uint64_t y = index + 0x6A09E667F3BCC909;
    for (unsigned round = 0; round < rounds; ++round) {
        x += y;
        y = std::rotl (y, rotations[round % rotations.size ()]) ^ x;
        if (round % 4 != 3) continue;
        x += 0x6A09E667F3BCC909 + round;
        y += 0x9E3779B97F4A7C15;
    }
    return {x, y};
}

/// A state that a plain run may give to one of its simulations, or that the generator never leaves.
bool is_taken (const sim::RandomState& state) {
    const sim::RandomState first = plain_seed (0);
    const bool is_first = state.rd_state0 == first.rd_state0 && state.rd_state1 == first.rd_state1;
    return is_first || state.rd_state1 == state.rd_state0 * multiplier + increment ||
           (state.rd_state0 == 0 && state.rd_state1 == 0);
}

} // namespace

sim::RandomState plain_seed (std::uint64_t simulation) {
    sim::Seeds seeds;
    seeds.skip (simulation);
    return seeds.next ();
}

sim::RandomState simulation_seed (const std::optional<std::uint64_t>& seed,
                                  std::uint64_t combination, std::uint64_t replicate) {
    if (!seed && replicate == 0) return plain_seed (combination);
    const std::uint64_t index = combination << 32 | replicate;
    sim::RandomState state = permute (seed.value_or (no_seed_key), index);
    // Different keys give different states, so that a state of a key that nobody uses is free.
    for (std::uint64_t key = no_seed_key - 1; is_taken (state); --key) state = permute (key, index);
    return state;
}

} // namespace ostrand::sweep
