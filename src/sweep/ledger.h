// What of a sweep is finished, and where it is kept.
// Layer: sweep.
#pragma once
#include "sweep/journal.h"
#include "sweep/record.h"
#include "sweep/sweep_plan.h"

#include <cstdint>
#include <functional>
#include <map>
#include <span>
#include <string>
#include <vector>

namespace ostrand::sweep {

/// Recorded points of simulations that went on together, in one or more records. A record may hold
/// more simulations: those went on in other company, on a machine with narrower lanes.
struct SeriesRun {
    struct Slice {
        std::uint32_t first_point = 0;
        std::uint32_t points = 0;
        RecordPlace place;
        std::size_t source = 0; // which of several files
    };
    std::uint32_t simulations = 0;
    std::uint32_t points = 0; // recorded so far
    std::uint64_t time_steps = 0;
    bool finished = false;
    std::vector<Slice> slices;
};

class Ledger {
  public:
    /// A unit that is kept in packed form; a size of 0 where it is not.
    struct UnitPlace {
        RecordPlace place;
        std::size_t source = 0;
        bool there () const { return place.size != 0; }
    };

    Ledger (const SweepIdentity& identity, const sim::ResultUnits& units);

    /// Enter records. False when one does not go with the others or with the plan.
    /// source  the file that it is in, where there are several
    bool enter_series (const SeriesRecord& record, const RecordPlace& place,
                       std::size_t source = 0);
    bool enter_unit (std::uint64_t index, const RecordPlace& place, std::size_t source = 0);

    const UnitPlace& unit (std::uint64_t index) const { return units_there_[index]; }
    /// Runs by their first simulation; those of units that are there may be missing.
    const std::map<std::uint64_t, SeriesRun>& runs () const { return runs_; }
    /// Drops what packed units have made needless.
    void forget_series (const sim::ResultCell& cell);

    /// The slices that hold lines of a unit. All of them only when its simulations are finished.
    std::vector<std::pair<std::uint64_t, SeriesRun>> runs_of (const sim::ResultUnit& unit) const;

  private:
    SeriesRun* run_for (const SeriesRecord& record);

    SweepIdentity identity_;
    sim::ResultUnits units_;
    std::vector<UnitPlace> units_there_;
    std::map<std::uint64_t, SeriesRun> runs_;
};

/// The lines of a unit out of its simulations' slices. Empty when one cannot be read or is missing.
/// read  gives the content of a slice's record
std::vector<std::uint32_t>
collect_unit (const SweepIdentity& identity, const sim::ResultUnit& unit,
              std::span<const std::pair<std::uint64_t, SeriesRun>> runs,
              const std::function<std::string (const SeriesRun::Slice& slice)>& read);

} // namespace ostrand::sweep
