// The data of a result cut into units that are formatted and compressed apart. Where the cuts are
// is told by the text alone, so that the file is the same however its parts were made. Layer: sim.
#pragma once
#include "sim/deflated_text.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace ostrand::sim {

/// A part of the data: some whole simulations, or a part of one.
struct ResultUnit {
    std::uint64_t first_simulation = 0;
    std::uint64_t simulations = 0;
    std::uint64_t first_line = 0; // within each simulation
    std::uint64_t lines = 0;      // of each simulation
    std::uint64_t size () const { return simulations * lines; }
};

/// Lines of a unit at least, when there are so many. Compressing them takes a fraction of a second,
/// and they are so many that a series that never changes takes no more room in units than in one
/// piece, to a percent or two.
inline constexpr std::uint64_t unit_lines = 1 << 19;

/// The least that is both whole simulations and whole units.
struct ResultCell {
    std::uint64_t first_simulation = 0;
    std::uint64_t simulations = 0;
    std::uint64_t first_unit = 0;
    std::uint64_t units = 0;
};

class ResultUnits {
  public:
    ResultUnits () = default;
    /// lines_each  lines of data of each simulation
    ResultUnits (std::uint64_t simulations, std::uint64_t lines_each);

    std::uint64_t count () const { return count_; }
    ResultUnit unit (std::uint64_t index) const;
    /// Cells lie behind each other too, and cover all.
    std::uint64_t cell_count () const { return count_ / units_a_simulation_; }
    ResultCell cell (std::uint64_t index) const;
    std::uint64_t cell_of_simulation (std::uint64_t simulation) const {
        return simulation / simulations_a_unit_;
    }
    std::uint64_t cell_of_unit (std::uint64_t unit) const { return unit / units_a_simulation_; }

  private:
    std::uint64_t simulations_ = 0;
    std::uint64_t lines_each_ = 0;
    std::uint64_t simulations_a_unit_ = 1; // where units hold whole simulations
    std::uint64_t units_a_simulation_ = 1; // where simulations hold whole units
    std::uint64_t count_ = 0;
};

/// A unit in pieces that can be compressed side by side, each with the help of the text in front of
/// it: few of them where the text hardly changes and each piece's code table would weigh.
/// counts  of the whole unit
/// front   text in front of the unit: the head of the result goes with the first one
std::size_t piece_count (std::span<const std::uint32_t> counts);
DeflatedText deflate_piece (std::span<const std::uint32_t> counts, std::size_t piece,
                            std::size_t pieces, std::string_view front = {});

/// All pieces of a unit.
DeflatedText deflate_unit (std::span<const std::uint32_t> counts, std::string_view front = {});

} // namespace ostrand::sim
