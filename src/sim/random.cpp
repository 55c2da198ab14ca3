// Seeding.
#include "sim/random.h"

#include <utility>

namespace ostrand::sim {
namespace {

constexpr std::uint64_t multiplier = 1103515245;
constexpr std::uint64_t increment = 12345;
/// Steps of the sequence for one seed.
constexpr std::uint64_t steps_each = 3;

} // namespace

RandomState Seeds::next () {
    if (!std::exchange (first_drawn_, true)) return {0x44E2068BF01FB7, 0x12BB113D13EAF7F};
    const auto advance = [this] { return state_ = state_ * multiplier + increment; };
    advance ();
    const std::uint64_t state0 = advance ();
    return {state0, advance ()};
}

void Seeds::skip (std::uint64_t count) {
    if (count > 0 && !std::exchange (first_drawn_, true)) --count;
    // x -> m x + a, done 1, 2, 4 … times, is again such a step.
    std::uint64_t m = multiplier;
    std::uint64_t a = increment;
    for (std::uint64_t steps = count * steps_each; steps > 0; steps >>= 1) {
        if ((steps & 1) != 0) state_ = state_ * m + a;
        a = a * m + a;
        m *= m;
    }
}

Seeds SeedSequence::take (std::uint64_t count) {
    const std::lock_guard guard (lock_);
    const Seeds taken = next_;
    next_.skip (count);
    return taken;
}

} // namespace ostrand::sim
