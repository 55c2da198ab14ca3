// Handing out work and keeping results.
#include "sweep/coordinator.h"

#include "sim/engine.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace ostrand::sweep {
namespace {

/// What a portion of simulations is to take.
constexpr double portion_seconds = 0.15;
/// A first guess of what one step costs side by side in all lanes; measured from then on.
constexpr double guessed_seconds_a_step = 8e-9;
/// Beside its steps a time step costs so many more.
constexpr double steps_of_overhead = 1;

} // namespace

Coordinator::Coordinator (const SweepPlan& plan, Journal& journal, Ledger& ledger, unsigned width,
                          unsigned workers)
    : plan_ (plan), journal_ (journal), ledger_ (ledger), width_ (width), workers_ (workers),
      seconds_a_step_ (guessed_seconds_a_step) {
    const sim::ResultUnits& units = plan.units ();
    const SweepIdentity& identity = plan.identity ();
    if (units.count () > 0 && identity.first_simulation () < identity.end_simulation ()) {
        const std::uint64_t last = units.cell_of_simulation (identity.end_simulation () - 1);
        for (std::uint64_t i = units.cell_of_simulation (identity.first_simulation ()); i <= last;
             ++i) {
            add_cell (i);
        }
    }
    std::stable_sort (cells_.begin (), cells_.end (), [] (const Cell& a, const Cell& b) {
        return a.cost_each * static_cast<double> (a.unfinished) >
               b.cost_each * static_cast<double> (b.unfinished);
    });
    for (std::size_t i = 0; i < cells_.size (); ++i) {
        place_[units.cell_of_simulation (cells_[i].first)] = i;
    }
    open_cells_ = cells_.size ();
    for (Cell& cell : cells_) {
        if (cell.unfinished == 0) note_finished (cell, 0);
    }
}

/// Notes what is to be done of a cell. Not entered when nothing is.
void Coordinator::add_cell (std::uint64_t index) {
    const SweepIdentity& identity = plan_.identity ();
    Cell cell;
    cell.cell = plan_.units ().cell (index);
    const std::uint64_t cell_end = cell.cell.first_simulation + cell.cell.simulations;
    cell.first = std::max (cell.cell.first_simulation, identity.first_simulation ());
    cell.end = std::min (cell_end, identity.end_simulation ());
    cell.whole = cell.end - cell.first == cell.cell.simulations;
    for (std::uint64_t i = 0; cell.whole && i < cell.cell.units; ++i) {
        cell.unpacked += ledger_.unit (cell.cell.first_unit + i).there () ? 0 : 1;
    }
    if (cell.whole && cell.unpacked == 0) {
        points_there_ += (cell.end - cell.first) * identity.n_points;
        ledger_.forget_series (cell.cell);
        return;
    }
    std::uint64_t at = cell.first;
    const auto open_until = [&] (std::uint64_t end) {
        if (at < end) cell.open.push_back ({at, end - at, false});
        cell.unfinished += end - at;
    };
    const auto last = ledger_.runs ().lower_bound (cell.end);
    for (auto run = ledger_.runs ().lower_bound (cell.first); run != last; ++run) {
        open_until (run->first);
        at = run->first + run->second.simulations;
        points_there_ += std::uint64_t{run->second.simulations} * run->second.points;
        if (run->second.finished) continue;
        cell.open.push_back ({run->first, run->second.simulations, true});
        cell.unfinished += run->second.simulations;
    }
    open_until (cell.end);
    if (!cell.whole && cell.unfinished == 0) return;
    for (const OpenRange& range : cell.open) unassigned_ += range.simulations;
    cell.cost_each = cost_each (cell);
    cells_.push_back (std::move (cell));
}

/// From a few of its simulations.
double Coordinator::cost_each (const Cell& cell) const {
    constexpr std::uint64_t samples = 4;
    double steps = 0;
    for (std::uint64_t i = 0; i < samples; ++i) {
        const std::uint64_t simulation = cell.first + i * (cell.end - cell.first) / samples;
        steps += static_cast<double> (sim::live_steps (plan_.model (), plan_.counts (simulation)));
    }
    return (steps / samples + steps_of_overhead) * static_cast<double> (plan_.time_steps ());
}

std::uint64_t Coordinator::points_in_all () const {
    const SweepIdentity& identity = plan_.identity ();
    if (identity.lines_each () == 0) return 0;
    return (identity.end_simulation () - identity.first_simulation ()) * identity.n_points;
}

Coordinator::Cell* Coordinator::find_cell (std::uint64_t index) {
    const auto found = place_.find (index);
    return found == place_.end () ? nullptr : &cells_[found->second];
}

Coordinator::Cell* Coordinator::cell_with_work () {
    while (first_open_ < cells_.size () && cells_[first_open_].open.empty ()) ++first_open_;
    return first_open_ < cells_.size () ? &cells_[first_open_] : nullptr;
}

/// How many simulations of a cell one worker gets now.
std::uint64_t Coordinator::portion (const Cell& cell) const {
    const double group_seconds = cell.cost_each * seconds_a_step_;
    const double groups_in_time =
        std::clamp (portion_seconds / std::max (group_seconds, 1e-12), 1.0, 1e9);
    const std::uint64_t groups_left = (unassigned_ + width_ - 1) / width_;
    if (groups_left < workers_) {
        std::uint64_t busy = 0;
        for (const auto& [number, task] : given_) busy += task.pack ? 0 : 1;
        const std::uint64_t idle = busy < workers_ ? workers_ - busy : 1;
        return std::clamp<std::uint64_t> ((unassigned_ + idle - 1) / idle, 1, width_);
    }
    const std::uint64_t share = std::max<std::uint64_t> (groups_left / (2 * workers_), 1);
    return width_ * std::min (static_cast<std::uint64_t> (groups_in_time), share);
}

NumberedTask Coordinator::give (Task task, double cost) {
    const std::uint64_t number = next_number_++;
    given_[number] = {task.kind == Task::Kind::pack, cost};
    return {number, std::move (task)};
}

std::optional<NumberedTask> Coordinator::next_locked () {
    if (!failure_.empty ()) return std::nullopt;
    if (!to_pack_.empty ()) {
        const std::uint64_t unit = to_pack_.front ();
        to_pack_.pop_front ();
        return give (pack_task (unit), 0);
    }
    Cell* const cell = cell_with_work ();
    if (cell == nullptr) return std::nullopt;
    OpenRange& range = cell->open.front ();
    Task task;
    task.first_simulation = range.first;
    task.simulations =
        range.interrupted ? range.simulations : std::min (range.simulations, portion (*cell));
    const auto groups = static_cast<double> ((task.simulations + width_ - 1) / width_);
    if (range.interrupted) {
        const SeriesRun& run = ledger_.runs ().at (range.first);
        const std::optional<SeriesRecord> record =
            SeriesRecord::from_bytes (journal_.read (run.slices.back ().place));
        // The record may hold others too, which went on in other company.
        const std::uint64_t skipped = record ? range.first - record->first_simulation : 0;
        if (!record || record->states.size () < skipped + range.simulations) {
            failure_ = "what was finished cannot be read";
            return std::nullopt;
        }
        task.time_steps = run.time_steps;
        const auto states = record->states.begin () + static_cast<std::ptrdiff_t> (skipped);
        task.states.assign (states, states + static_cast<std::ptrdiff_t> (range.simulations));
    }
    const bool all_of_cell = cell->whole && cell->cell.units == 1 && cell->open.size () == 1 &&
                             task.simulations == cell->cell.simulations && !range.interrupted;
    if (all_of_cell) {
        task.unit = cell->cell.first_unit;
        cell->given_away = true;
    }
    unassigned_ -= task.simulations;
    range.first += task.simulations;
    range.simulations -= task.simulations;
    if (range.simulations == 0) cell->open.pop_front ();
    return give (std::move (task), cell->cost_each * groups);
}

Task Coordinator::pack_task (std::uint64_t index) {
    const sim::ResultUnit unit = plan_.units ().unit (index);
    Task task;
    task.kind = Task::Kind::pack;
    task.unit = index;
    task.counts = collect_unit (
        plan_.identity (), unit, ledger_.runs_of (unit),
        [this] (const SeriesRun::Slice& slice) { return journal_.read (slice.place); });
    if (task.counts.empty () && failure_.empty ()) failure_ = "what was finished cannot be read";
    return task;
}

std::optional<NumberedTask> Coordinator::next () {
    const std::lock_guard guard (lock_);
    return next_locked ();
}

std::optional<NumberedTask> Coordinator::wait_for_next (const std::stop_token& stop) {
    std::unique_lock guard (lock_);
    std::optional<NumberedTask> task;
    changed_.wait (guard, stop, [&] {
        if (!stop.stop_requested ()) task = next_locked ();
        return task.has_value () || !failure_.empty () || finished_locked ();
    });
    if (!failure_.empty ()) return std::nullopt;
    return task;
}

void Coordinator::done (std::uint64_t number, double seconds) {
    {
        const std::lock_guard guard (lock_);
        const auto found = given_.find (number);
        if (found == given_.end ()) return;
        if (!found->second.pack && found->second.cost > 0) {
            const double measured = seconds / found->second.cost;
            seconds_a_step_ = 0.7 * seconds_a_step_ + 0.3 * measured;
        }
        given_.erase (found);
    }
    changed_.notify_all ();
}

bool Coordinator::finished () const {
    const std::lock_guard guard (lock_);
    return finished_locked ();
}

void Coordinator::note_finished (Cell& cell, std::uint64_t simulations) {
    cell.unfinished -= std::min (simulations, cell.unfinished);
    if (cell.unfinished > 0) return;
    if (!cell.whole) --open_cells_;
    if (!cell.whole || cell.given_away) return;
    for (std::uint64_t i = 0; i < cell.cell.units; ++i) {
        const std::uint64_t unit = cell.cell.first_unit + i;
        if (!ledger_.unit (unit).there ()) to_pack_.push_back (unit);
    }
}

bool Coordinator::take (RecordKind kind, std::string_view content) {
    const std::optional<RecordPlace> place = journal_.append (kind, content);
    if (!place) {
        fail (journal_.error ());
        return false;
    }
    const bool fits = kind == RecordKind::series ? enter_series (content, *place)
                      : kind == RecordKind::unit ? enter_unit (content, *place)
                                                 : false;
    if (!fits) fail ("a result that does not belong to the sweep");
    changed_.notify_all ();
    return fits;
}

bool Coordinator::enter_series (std::string_view content, const RecordPlace& place) {
    const std::optional<SeriesRecord> record = SeriesRecord::from_bytes (content);
    const std::lock_guard guard (lock_);
    if (!record || !ledger_.enter_series (*record, place)) return false;
    // A portion lies within one cell.
    Cell* const cell = find_cell (plan_.units ().cell_of_simulation (record->first_simulation));
    if (cell != nullptr && record->finished ()) note_finished (*cell, record->simulations);
    return cell != nullptr;
}

bool Coordinator::enter_unit (std::string_view content, const RecordPlace& place) {
    const std::optional<UnitRecord> record = UnitRecord::from_bytes (content);
    const std::lock_guard guard (lock_);
    if (!record || !ledger_.enter_unit (record->index, place)) return false;
    Cell* const cell = find_cell (plan_.units ().cell_of_unit (record->index));
    if (cell == nullptr) return false;
    if (--cell->unpacked == 0) {
        ledger_.forget_series (cell->cell);
        --open_cells_;
    }
    return true;
}

std::string Coordinator::failure () const {
    const std::lock_guard guard (lock_);
    return failure_;
}

void Coordinator::fail (const std::string& reason) {
    {
        const std::lock_guard guard (lock_);
        if (failure_.empty ()) failure_ = reason;
    }
    changed_.notify_all ();
}

} // namespace ostrand::sweep
