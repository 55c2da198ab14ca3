// Decides who does what of a sweep, and keeps what comes back. One coordinator serves all threads
// of a process or, in the first one, all processes. Layer: sweep.
#pragma once
#include "base/long_work.h"
#include "sweep/journal.h"
#include "sweep/ledger.h"
#include "sweep/sweep_plan.h"
#include "sweep/task.h"

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <mutex>
#include <optional>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

namespace ostrand::sweep {

/// A task with the number under which it was given away.
struct NumberedTask {
    std::uint64_t number = 0;
    Task task;
};

/// Simulations are handed out in the order of the result, those first that are likely to cost most,
/// in portions of a fraction of a second; towards the end in smaller ones, so that all workers end
/// together. A unit is packed as soon as its simulations are finished. Safe to use from any thread.
class Coordinator {
  public:
    /// Plan and journal, which has been begun or replayed into the ledger, are looked at as long as
    /// this lives.
    /// width    simulations that a worker takes side by side
    /// workers  how many there are
    Coordinator (const SweepPlan& plan, Journal& journal, Ledger& ledger, unsigned width,
                 unsigned workers);

    /// Recorded points of what was finished at the beginning.
    std::uint64_t points_there () const { return points_there_; }
    /// Recorded points that the sweep has in all.
    std::uint64_t points_in_all () const;

    /// The next task; nothing when there is none at the moment.
    std::optional<NumberedTask> next ();
    /// The same; waits for one. Nothing when all is given away and done, after a failure and after
    /// a stop.
    std::optional<NumberedTask> wait_for_next (const std::stop_token& stop);
    /// The task was carried out, in so many seconds.
    void done (std::uint64_t number, double seconds);
    /// All is there.
    bool finished () const;

    /// Keeps a record; false when the disk does not take it or it is none. Then nothing is handed
    /// out any more.
    bool take (RecordKind kind, std::string_view content);
    /// Why the sweep cannot go on; empty while it can.
    std::string failure () const;
    void fail (const std::string& reason);

  private:
    /// Simulations of one cell that nobody works on yet.
    struct OpenRange {
        std::uint64_t first = 0;
        std::uint64_t simulations = 0;
        bool interrupted = false; // a run that is to go on as it was
    };
    struct Cell {
        sim::ResultCell cell;
        std::uint64_t first = 0; // of the simulations that belong to this shard
        std::uint64_t end = 0;
        bool whole = false;      // the shard has all of them, so that units are packed
        bool given_away = false; // all to one worker, who packs it too
        double cost_each = 0;    // steps of a simulation
        std::deque<OpenRange> open;
        std::uint64_t unfinished = 0; // simulations
        std::uint64_t unpacked = 0;   // units
    };
    struct GivenTask {
        bool pack = false;
        double cost = 0;
    };

    void add_cell (std::uint64_t index);
    double cost_each (const Cell& cell) const;
    Cell* cell_with_work ();
    std::optional<NumberedTask> next_locked ();
    NumberedTask give (Task task, double cost);
    std::uint64_t portion (const Cell& cell) const;
    Task pack_task (std::uint64_t unit);
    bool enter_series (std::string_view content, const RecordPlace& place);
    bool enter_unit (std::string_view content, const RecordPlace& place);
    void note_finished (Cell& cell, std::uint64_t simulations);
    Cell* find_cell (std::uint64_t index);
    bool finished_locked () const { return open_cells_ == 0; }

    const SweepPlan& plan_;
    Journal& journal_;
    Ledger& ledger_;
    unsigned width_;
    unsigned workers_;

    mutable std::mutex lock_;
    std::condition_variable_any changed_;
    std::vector<Cell> cells_;                    // unfinished at the beginning, costly ones first
    std::map<std::uint64_t, std::size_t> place_; // of a cell in the list
    std::size_t first_open_ = 0;                 // of the list: those before have given all away
    std::size_t open_cells_ = 0;                 // not yet all there
    std::uint64_t unassigned_ = 0;               // simulations
    std::deque<std::uint64_t> to_pack_;
    std::map<std::uint64_t, GivenTask> given_;
    std::uint64_t next_number_ = 0;
    std::uint64_t points_there_ = 0;
    double seconds_a_step_;
    std::string failure_;
};

} // namespace ostrand::sweep
