// Results and shards of sweeps.
#include "sweep/sweep_result.h"

#include "sweep/bytes.h"
#include "sweep/journal.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

namespace ostrand::sweep {
namespace {

const char* const unreadable = "what was finished cannot be read";

Outcome failed_write (const std::string& out, const std::string& reason) {
    return Outcome::failure ("Cannot write '" + out + "': " + reason);
}

/// Series of one cell's part of a shard, each simulation whole, cut at fixed places only.
class ShardSeries {
  public:
    ShardSeries (const SweepIdentity& identity,
                 const std::function<std::string (const RecordPlace& place)>& read)
        : identity_ (identity), read_ (read) {}

    /// Records for the simulations from first to end; false when one cannot be read.
    bool write (const Ledger& ledger, std::uint64_t first, std::uint64_t end,
                const std::function<bool (const SeriesRecord& record)>& take) const {
        // Portions of so many lines, whatever the groups were that the simulations went on in.
        const std::uint64_t lines_each = std::max<std::uint64_t> (identity_.lines_each (), 1);
        const std::uint64_t portion =
            std::clamp<std::uint64_t> (sim::unit_lines / lines_each, 1, end - first);
        for (std::uint64_t at = first; at < end; at += portion) {
            SeriesRecord record;
            record.first_simulation = at;
            record.simulations = static_cast<std::uint32_t> (std::min (portion, end - at));
            record.points = identity_.n_points;
            const sim::ResultUnit part{at, record.simulations, 0, identity_.lines_each ()};
            record.counts = collect_unit (
                identity_, part, ledger.runs_of (part),
                [this] (const SeriesRun::Slice& slice) { return read_ (slice.place); });
            if (record.counts.empty () || !take (record)) return false;
        }
        return true;
    }

  private:
    const SweepIdentity& identity_;
    const std::function<std::string (const RecordPlace& place)>& read_;
};

} // namespace

OutputFile open_output (const std::string& out, const std::stop_token& stop) {
    return out == "-" ? OutputFile::standard_output () : OutputFile (out, stop);
}

Outcome output_failure (const OutputFile& file, const std::string& out) {
    return file.stopped () ? Outcome::stop () : failed_write (out, file.error ());
}

Outcome write_gzip_result (
    OutputFile& file, const std::string& out, const SweepIdentity& identity, std::uint64_t units,
    const std::function<std::optional<sim::DeflatedText> (std::uint64_t index, std::string& error)>&
        unit,
    const std::stop_token& stop) {
    sim::GzipMember member ([&file] (std::string_view bytes) { return file.write (bytes); });
    // The first unit has the head in front of it; where there is none the head is all.
    if (units == 0 && !member.append (sim::deflate_text (identity.head))) {
        return output_failure (file, out);
    }
    for (std::uint64_t i = 0; i < units; ++i) {
        if (stop.stop_requested ()) return Outcome::stop ();
        std::string error;
        const std::optional<sim::DeflatedText> text = unit (i, error);
        if (!text) return Outcome::failure (error);
        if (!member.append (*text)) return output_failure (file, out);
    }
    if (!member.finish () || !file.commit ()) return output_failure (file, out);
    return Outcome::success ();
}

Outcome write_shard (OutputFile& file, const std::string& out, const SweepIdentity& identity,
                     const sim::ResultUnits& units, const Ledger& ledger,
                     const std::function<std::string (const RecordPlace& place)>& read,
                     const std::stop_token& stop) {
    file.write (shard_mark);
    file.write (framed (RecordKind::identity, identity.to_bytes ()));
    std::uint64_t records = 0;
    const std::uint64_t begin = identity.first_simulation ();
    const std::uint64_t end = identity.end_simulation ();
    const ShardSeries series (identity, read);
    const bool has_data = units.count () > 0 && begin < end;
    const std::uint64_t last = has_data ? units.cell_of_simulation (end - 1) : 0;
    for (std::uint64_t i = has_data ? units.cell_of_simulation (begin) : 1; i <= last; ++i) {
        if (stop.stop_requested ()) return Outcome::stop ();
        const sim::ResultCell cell = units.cell (i);
        const bool whole =
            cell.first_simulation >= begin && cell.first_simulation + cell.simulations <= end;
        if (whole) {
            for (std::uint64_t u = 0; u < cell.units; ++u) {
                const std::string content = read (ledger.unit (cell.first_unit + u).place);
                if (content.empty ()) return Outcome::failure (unreadable);
                file.write (framed (RecordKind::unit, content));
                ++records;
            }
            continue;
        }
        const bool read_all =
            series.write (ledger, std::max (cell.first_simulation, begin),
                          std::min (cell.first_simulation + cell.simulations, end),
                          [&] (const SeriesRecord& record) {
                              ++records;
                              return file.write (framed (RecordKind::series, record.to_bytes ()));
                          });
        if (!read_all && file.ok ()) return Outcome::failure (unreadable);
    }
    ByteWriter seal;
    seal.put_long (records);
    file.write (framed (RecordKind::seal, seal.bytes));
    return file.commit () ? Outcome::success () : output_failure (file, out);
}

} // namespace ostrand::sweep
