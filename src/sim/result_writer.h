// The result file: a gzip text of all recorded points.
// Layer: sim.
#pragma once
#include "sim/grid.h"
#include "sim/model.h"

#include <functional>
#include <stop_token>
#include <string>
#include <string_view>

namespace ostrand::sim {

/// Gives the result's text in pieces, in order; stops when a piece is not taken. True when all
/// were. Head: number of simulations, displayed species and points; name and colour of each
/// displayed species; the varying concentrations; then every count on a line of its own, simulation
/// by simulation, species by species, point by point.
bool format_result (const ModelTables& tables, const Grid& grid,
                    const std::function<bool (std::string_view piece)>& take);

enum class ResultStatus {
    written,
    not_created, // the file could not be opened
    lost,        // it was begun but could not be written to its end; nothing is left of it
    stopped,     // likewise nothing
};

/// Compresses the text into a file, "-" standard output. `error` tells why it was lost.
ResultStatus write_result (const std::string& out, const ModelTables& tables, const Grid& grid,
                           std::string& error, const std::stop_token& stop = {});

} // namespace ostrand::sim
