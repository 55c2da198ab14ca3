// What is handed out to whoever works on a sweep: a thread, or another process.
// Layer: sweep.
#pragma once
#include "sim/lane_group.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ostrand::sweep {

struct Task {
    enum class Kind : std::uint8_t {
        simulate,
        pack, // format and compress a unit whose simulations are finished
    };
    Kind kind = Kind::simulate;

    // Of simulations.
    std::uint64_t first_simulation = 0;
    std::uint64_t simulations = 0;
    std::uint64_t time_steps = 0;             // done already, by a group that was interrupted
    std::vector<sim::SimulationState> states; // of that group; empty for a fresh start

    // A unit to pack; or the unit that the simulations make up, which is packed at once then.
    std::optional<std::uint64_t> unit;
    std::vector<std::uint32_t> counts; // of a unit to pack

    std::string to_bytes () const;
    static std::optional<Task> from_bytes (std::string_view bytes);
};

} // namespace ostrand::sweep
