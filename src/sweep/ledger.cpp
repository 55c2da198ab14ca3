// The ledger of a sweep.
#include "sweep/ledger.h"

#include "sim/engine.h"

#include <algorithm>
#include <iterator>

namespace ostrand::sweep {

Ledger::Ledger (const SweepIdentity& identity, const sim::ResultUnits& units)
    : identity_ (identity), units_ (units), units_there_ (units.count ()) {}

/// The run that a record begins or goes on with; null when it does neither. A record of a part of
/// an interrupted run cuts it: the other parts stay where they are.
SeriesRun* Ledger::run_for (const SeriesRecord& record) {
    const std::uint64_t first = record.first_simulation;
    const std::uint64_t end = first + record.simulations;
    const auto next = runs_.upper_bound (first);
    const bool before_next = next == runs_.end () || next->first >= end;
    const auto before = next == runs_.begin () ? runs_.end () : std::prev (next);
    const bool behind_before =
        before == runs_.end () || before->first + before->second.simulations <= first;
    if (behind_before) {
        if (!before_next || record.first_point != 0) return nullptr;
        SeriesRun& begun = runs_[first];
        begun.simulations = record.simulations;
        return &begun;
    }
    const std::uint64_t whole_first = before->first;
    SeriesRun& whole = before->second;
    const std::uint64_t whole_end = whole_first + whole.simulations;
    if (end > whole_end || whole.finished || whole.points != record.first_point) return nullptr;
    const auto part = [&] (std::uint64_t from, std::uint64_t to) {
        SeriesRun copy = whole;
        copy.simulations = static_cast<std::uint32_t> (to - from);
        return copy;
    };
    if (end < whole_end) runs_[end] = part (end, whole_end);
    if (whole_first < first) {
        runs_[first] = part (first, end);
        whole.simulations = static_cast<std::uint32_t> (first - whole_first);
    } else {
        whole.simulations = record.simulations;
    }
    return &runs_.at (first);
}

bool Ledger::enter_series (const SeriesRecord& record, const RecordPlace& place,
                           std::size_t source) {
    const std::uint64_t end = record.first_simulation + record.simulations;
    const bool inside = record.first_simulation >= identity_.first_simulation () &&
                        end <= identity_.end_simulation () && end > record.first_simulation;
    const std::uint64_t counts =
        std::uint64_t{record.simulations} * identity_.n_displayed * record.points;
    const std::uint64_t points = std::uint64_t{record.first_point} + record.points;
    if (!inside || record.counts.size () != counts || points > identity_.n_points) return false;
    if (record.finished () && points != identity_.n_points) return false;
    // A point is recorded before its second is simulated.
    if (!record.finished () && points != record.time_steps / sim::stats + 1) return false;
    SeriesRun* const found = run_for (record);
    if (found == nullptr) return false;
    SeriesRun& run = *found;
    run.points += record.points;
    run.time_steps = record.time_steps;
    run.finished = record.finished ();
    run.slices.push_back ({record.first_point, record.points, place, source});
    return true;
}

bool Ledger::enter_unit (std::uint64_t index, const RecordPlace& place, std::size_t source) {
    if (index >= units_there_.size () || units_there_[index].there ()) return false;
    const sim::ResultUnit unit = units_.unit (index);
    if (unit.first_simulation < identity_.first_simulation () ||
        unit.first_simulation + unit.simulations > identity_.end_simulation ()) {
        return false;
    }
    units_there_[index] = {place, source};
    return true;
}

void Ledger::forget_series (const sim::ResultCell& cell) {
    runs_.erase (runs_.lower_bound (cell.first_simulation),
                 runs_.lower_bound (cell.first_simulation + cell.simulations));
}

std::vector<std::pair<std::uint64_t, SeriesRun>>
Ledger::runs_of (const sim::ResultUnit& unit) const {
    std::vector<std::pair<std::uint64_t, SeriesRun>> found;
    const auto end = runs_.lower_bound (unit.first_simulation + unit.simulations);
    auto run = runs_.upper_bound (unit.first_simulation);
    if (run != runs_.begin ()) --run;
    for (; run != end; ++run) {
        if (run->first + run->second.simulations > unit.first_simulation) found.push_back (*run);
    }
    return found;
}

std::vector<std::uint32_t>
collect_unit (const SweepIdentity& identity, const sim::ResultUnit& unit,
              std::span<const std::pair<std::uint64_t, SeriesRun>> runs,
              const std::function<std::string (const SeriesRun::Slice& slice)>& read) {
    std::vector<std::uint32_t> lines (unit.size ());
    std::uint64_t collected = 0;
    const std::uint64_t unit_end = unit.first_line + unit.lines;
    for (const auto& [first, run] : runs) {
        for (const SeriesRun::Slice& slice : run.slices) {
            if (slice.points == 0) continue;
            const std::optional<SeriesRecord> record = SeriesRecord::from_bytes (read (slice));
            const bool holds =
                record && record->first_simulation <= first &&
                record->first_simulation + record->simulations >= first + run.simulations &&
                record->points == slice.points;
            if (!holds) return {};
            const std::uint64_t from = std::max (first, unit.first_simulation);
            const std::uint64_t to =
                std::min (first + run.simulations, unit.first_simulation + unit.simulations);
            for (std::uint64_t simulation = from; simulation < to; ++simulation) {
                for (std::uint64_t d = 0; d < identity.n_displayed; ++d) {
                    const std::uint64_t line = d * identity.n_points + slice.first_point;
                    const std::uint64_t begin = std::max (line, unit.first_line);
                    const std::uint64_t end = std::min (line + slice.points, unit_end);
                    if (begin >= end) continue;
                    const std::uint64_t row =
                        (simulation - record->first_simulation) * identity.n_displayed + d;
                    std::copy_n (record->counts.data () + row * slice.points + (begin - line),
                                 end - begin,
                                 lines.data () + (simulation - unit.first_simulation) * unit.lines +
                                     (begin - unit.first_line));
                    collected += end - begin;
                }
            }
        }
    }
    if (collected != unit.size ()) return {};
    return lines;
}

} // namespace ostrand::sweep
