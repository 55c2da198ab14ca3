// Seeding.
#include "sim/random.h"

#include <utility>

namespace ostrand::sim {

RandomState SeedSequence::next () {
    if (!std::exchange (seeded_, true)) return {0x44E2068BF01FB7, 0x12BB113D13EAF7F};
    const auto advance = [this] { return state_ = state_ * 1103515245 + 12345; };
    advance ();
    const std::uint64_t state0 = advance ();
    return {state0, advance ()};
}

} // namespace ostrand::sim
