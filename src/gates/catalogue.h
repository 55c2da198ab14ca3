// The gate catalogue: which boolean functions are looked for, as named truth tables.
// Layer: gates.
#pragma once
#include "base/disk.h"

#include <cstddef>
#include <span>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

namespace ostrand::gates {

/// A named truth table. A row holds the inputs in order, then the output; what stands behind is
/// padding. The text is not checked, so a row or a value that it does not give reads as 0.
struct GateDefinition {
    std::string name;
    std::vector<std::vector<int>> rows;

    int value (std::size_t row, std::size_t field) const {
        return row < rows.size () && field < rows[row].size () ? rows[row][field] : 0;
    }
};

/// All gates of one number of inputs, in the order of the text.
struct GateGroup {
    int arity = 0;
    std::vector<GateDefinition> gates;
};

/// One job's share; groups in the order in which their number of inputs was first met.
using Catalogue = std::vector<GateGroup>;

/// Name of the catalogue that is built in, where a file name is asked for.
inline constexpr std::string_view builtin_gate_file = "builtin";

/// The built-in catalogue as text: "GATE" headers, "#" rows, ";;;;" between gates.
std::string_view builtin_catalogue_text ();

/// The gates whose ordinal g (from 1) falls to job `job` (1 to `partitions`): g modulo `partitions`
/// is job - 1. Lines that are no header and no row are ignored.
/// A stop ends the reading early.
Catalogue load_catalogue (std::string_view text, int partitions, int job,
                          const std::stop_token& stop = {});

/// The same from a gate file. One that could not be opened is told on standard output and gives an
/// empty catalogue.
Catalogue gateNoticeReader (const TextFile& file, int partitions, int job,
                            const std::stop_token& stop = {});

/// Type names by position, as the side that builds formulas numbers them; XOR, NAND and NOR have
/// no place.
std::span<const std::string_view> gate_type_names ();

} // namespace ostrand::gates
