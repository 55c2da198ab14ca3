// Units of a result.
#include "sim/result_units.h"

#include "sim/decimal_lines.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace ostrand::sim {
namespace {

/// Lines that compress fast enough to be one of several pieces.
constexpr std::size_t piece_lines = 1 << 16;
/// Of so many lines one must differ from the line before it, or pieces do not pay.
constexpr std::size_t rarest_change = 8;
/// Lines whose text stays in the processor's nearest memory until it is compressed.
constexpr std::size_t lines_at_once = 1024;
/// Lines whose text is surely more than what a piece can look back on.
constexpr std::size_t lines_to_look_back = 16384;

/// Writes counts as lines behind each other into a text, which then holds nothing else.
void write_lines (std::span<const std::uint32_t> counts, std::string& text) {
    text.resize (counts.size () * line_room);
    char* end = text.data ();
    for (const std::uint32_t count : counts) end = put_line (end, count);
    text.resize (static_cast<std::size_t> (end - text.data ()));
}

} // namespace

ResultUnits::ResultUnits (std::uint64_t simulations, std::uint64_t lines_each)
    : simulations_ (simulations), lines_each_ (lines_each) {
    if (lines_each == 0 || simulations == 0) return;
    units_a_simulation_ = std::max<std::uint64_t> (lines_each / unit_lines, 1);
    simulations_a_unit_ = units_a_simulation_ > 1 ? 1 : (unit_lines + lines_each - 1) / lines_each;
    count_ = units_a_simulation_ > 1
                 ? simulations * units_a_simulation_
                 : (simulations + simulations_a_unit_ - 1) / simulations_a_unit_;
}

ResultUnit ResultUnits::unit (std::uint64_t index) const {
    if (units_a_simulation_ > 1) {
        const std::uint64_t part = index % units_a_simulation_;
        const std::uint64_t begin = part * lines_each_ / units_a_simulation_;
        const std::uint64_t end = (part + 1) * lines_each_ / units_a_simulation_;
        return {index / units_a_simulation_, 1, begin, end - begin};
    }
    const std::uint64_t first = index * simulations_a_unit_;
    return {first, std::min (simulations_a_unit_, simulations_ - first), 0, lines_each_};
}

ResultCell ResultUnits::cell (std::uint64_t index) const {
    const ResultUnit first = unit (index * units_a_simulation_);
    return {first.first_simulation, first.simulations, index * units_a_simulation_,
            units_a_simulation_};
}

std::size_t piece_count (std::span<const std::uint32_t> counts) {
    const std::size_t most = std::max<std::size_t> (counts.size () / piece_lines, 1);
    if (most == 1) return 1;
    std::size_t changes = 0;
    for (std::size_t i = 1; i < counts.size (); ++i) changes += counts[i] != counts[i - 1] ? 1 : 0;
    return changes * rarest_change < counts.size () ? 1 : most;
}

DeflatedText deflate_piece (std::span<const std::uint32_t> counts, std::size_t piece,
                            std::size_t pieces, std::string_view front) {
    const std::size_t begin = piece * counts.size () / pieces;
    const std::size_t end = (piece + 1) * counts.size () / pieces;
    const std::size_t look_back = std::min (begin, lines_to_look_back);
    std::string text;
    write_lines (counts.subspan (begin - look_back, look_back), text);
    TextDeflater deflater (text);
    if (piece == 0) deflater.add (front);
    for (std::size_t at = begin; at < end; at += lines_at_once) {
        write_lines (counts.subspan (at, std::min (lines_at_once, end - at)), text);
        deflater.add (text);
    }
    return deflater.finish ();
}

DeflatedText deflate_unit (std::span<const std::uint32_t> counts, std::string_view front) {
    const std::size_t pieces = piece_count (counts);
    DeflatedText unit;
    for (std::size_t piece = 0; piece < pieces; ++piece) {
        unit.append (deflate_piece (counts, piece, pieces, front));
    }
    return unit;
}

} // namespace ostrand::sim
