// Writing what a sweep has come to: the result itself, or one shard of it.
// Layer: sweep.
#pragma once
#include "base/disk.h"
#include "base/long_work.h"
#include "sim/deflated_text.h"
#include "sweep/ledger.h"
#include "sweep/record.h"

#include <cstdint>
#include <functional>
#include <stop_token>
#include <string>

namespace ostrand::sweep {

/// The output: a file, or standard output for "-".
OutputFile open_output (const std::string& out, const std::stop_token& stop);

/// Writes a gzip result into an open file and puts it in its place.
/// unit  gives the compressed units, called in their order; nothing when one cannot be had, with
///       the reason in `error`
Outcome write_gzip_result (
    OutputFile& file, const std::string& out, const SweepIdentity& identity, std::uint64_t units,
    const std::function<std::optional<sim::DeflatedText> (std::uint64_t index, std::string& error)>&
        unit,
    const std::stop_token& stop);

/// Writes a shard: its identity, the packed units and the series of those that it has only a part
/// of, in the order of the result, and a seal. The same however they were made.
/// read_unit    the content of a unit's record
/// read_series  the content of a slice's record
Outcome write_shard (OutputFile& file, const std::string& out, const SweepIdentity& identity,
                     const sim::ResultUnits& units, const Ledger& ledger,
                     const std::function<std::string (const RecordPlace& place)>& read,
                     const std::stop_token& stop);

/// Why writing ended: a stop, or the failure with its reason.
Outcome output_failure (const OutputFile& file, const std::string& out);

} // namespace ostrand::sweep
