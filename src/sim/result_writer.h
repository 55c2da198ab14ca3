// The result file: a gzip text of all recorded points.
// Layer: sim.
#pragma once
#include "sim/grid.h"
#include "sim/model.h"

#include <stop_token>
#include <string>

namespace ostrand::sim {

enum class ResultStatus {
    written,
    not_created, // the file could not be opened
    lost,        // it was begun but could not be written to its end; nothing is left of it
    stopped,     // likewise nothing
};

/// Writes the result of a grid that has the displayed species' points, "-" to standard output: its
/// head, then every count on a line of its own, simulation by simulation, species by species, point
/// by point. Pieces of it are compressed on as many threads as there are processors; the file does
/// not depend on that.
/// sequential  all on the calling thread
/// error       why it was lost
ResultStatus write_result (const std::string& out, const ModelTables& tables, const Grid& grid,
                           bool sequential, std::string& error, const std::stop_token& stop = {});

} // namespace ostrand::sim
