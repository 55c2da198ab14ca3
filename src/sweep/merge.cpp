// Merging shards.
#include "sweep/merge.h"

#include "base/disk.h"
#include "base/platform.h"
#include "base/text.h"
#include "base/workers.h"
#include "sweep/bytes.h"
#include "sweep/journal.h"
#include "sweep/ledger.h"
#include "sweep/sweep_result.h"

#include <algorithm>
#include <cerrno>
#include <condition_variable>
#include <cstring>
#include <exception>
#include <filesystem>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <system_error>
#include <utility>

namespace ostrand::sweep {
namespace {

namespace fs = std::filesystem;

std::string in_quotes (const std::string& path) { return "'" + path + "'"; }

/// A shard that is read.
struct ShardFile {
    std::string path;
    RecordFile file;
    SweepIdentity identity;
    std::uint64_t records_begin = 0;
};

/// Opens a shard and reads whose it is.
Outcome open_shard (const std::string& path, ShardFile& shard) {
    shard.path = path;
    shard.file = RecordFile (path);
    if (!shard.file.is_open ()) {
        return Outcome::failure ("Cannot open " + in_quotes (path) + ": " + std::strerror (errno));
    }
    std::optional<SweepIdentity> identity =
        read_identity (shard.file.descriptor (), shard_mark, shard.records_begin);
    if (!identity || !identity->choice.shard) {
        return Outcome::failure (in_quotes (path) + " is no shard, or damaged");
    }
    shard.identity = std::move (*identity);
    return Outcome::success ();
}

/// All are of one sweep, and each is there once.
Outcome check_set (std::vector<ShardFile>& shards) {
    const SweepIdentity& first = shards.front ().identity;
    for (const ShardFile& shard : shards) {
        std::string why = difference (shard.identity, first);
        if (why.empty () && shard.identity.choice.shard->count != first.choice.shard->count) {
            why = format_text ("it is one of %u", shard.identity.choice.shard->count);
        }
        if (!why.empty ()) {
            return Outcome::failure (in_quotes (shard.path) + " does not go with " +
                                     in_quotes (shards.front ().path) + ": " + why);
        }
    }
    std::stable_sort (shards.begin (), shards.end (), [] (const ShardFile& a, const ShardFile& b) {
        return a.identity.choice.shard->index < b.identity.choice.shard->index;
    });
    const std::uint32_t count = first.choice.shard->count;
    std::uint32_t expected = 1;
    for (const ShardFile& shard : shards) {
        const std::uint32_t index = shard.identity.choice.shard->index;
        if (index < expected) {
            return Outcome::failure (format_text ("shard %u/%u is there twice: ", index, count) +
                                     in_quotes (shard.path));
        }
        if (index > expected) break;
        ++expected;
    }
    if (expected <= count) {
        return Outcome::failure (format_text ("shard %u/%u is missing", expected, count));
    }
    return Outcome::success ();
}

/// Enters the records of a shard. A shard says at its end how many there are.
Outcome enter_shard (const ShardFile& shard, std::size_t source, const sim::ResultUnits& units,
                     Ledger& ledger) {
    std::uint64_t records = 0;
    std::optional<std::uint64_t> sealed;
    std::uint64_t end = shard.records_begin;
    const std::uint64_t first = shard.identity.first_simulation ();
    const std::uint64_t last = shard.identity.end_simulation ();
    const RecordsEnd how = read_records (
        shard.file.descriptor (), end,
        [&] (RecordKind kind, std::string_view content, const RecordPlace& place) {
            if (sealed) return false;
            if (kind == RecordKind::seal) {
                ByteReader reader (content);
                sealed = reader.take_long ();
                return reader.finished () && *sealed == records;
            }
            ++records;
            if (kind == RecordKind::series) {
                const std::optional<SeriesRecord> record = SeriesRecord::from_bytes (content);
                return record && record->finished () && record->first_simulation >= first &&
                       record->first_simulation + record->simulations <= last &&
                       ledger.enter_series (*record, place, source);
            }
            if (kind != RecordKind::unit) return false;
            const std::optional<UnitRecord> record = UnitRecord::from_bytes (content);
            if (!record || record->index >= units.count ()) return false;
            const sim::ResultUnit unit = units.unit (record->index);
            return unit.first_simulation >= first &&
                   unit.first_simulation + unit.simulations <= last &&
                   ledger.enter_unit (record->index, place, source);
        });
    if (how == RecordsEnd::failed) {
        return Outcome::failure ("Cannot read " + in_quotes (shard.path) + ": " +
                                 std::strerror (errno));
    }
    if (how != RecordsEnd::whole || !sealed) {
        return Outcome::failure (in_quotes (shard.path) + " is damaged");
    }
    return Outcome::success ();
}

/// Units in order, made ready by several threads some way ahead of who takes them.
class UnitSource {
  public:
    UnitSource (const std::vector<ShardFile>& shards, const SweepIdentity& identity,
                const sim::ResultUnits& units, const Ledger& ledger)
        : shards_ (shards), identity_ (identity), units_ (units), ledger_ (ledger) {}

    /// What a helper thread does until all units are there or it is told to end.
    void make_ahead () {
        std::unique_lock guard (lock_);
        while (!ended_ && next_ < units_.count ()) {
            if (next_ >= taken_ + most_ahead) {
                changed_.wait (guard);
                continue;
            }
            const std::uint64_t index = next_++;
            guard.unlock ();
            std::optional<sim::DeflatedText> unit;
            std::exception_ptr fault;
            try {
                unit = make (index);
            } catch (...) {
                fault = std::current_exception ();
            }
            guard.lock ();
            if (!fault) {
                try {
                    ready_[index] = std::move (unit);
                } catch (...) {
                    fault = std::current_exception ();
                }
            }
            if (fault) {
                fault_ = fault; // who waits for the unit throws it
                ended_ = true;
            }
            changed_.notify_all ();
        }
    }
    void end () {
        const std::lock_guard guard (lock_);
        ended_ = true;
        changed_.notify_all ();
    }

    std::optional<sim::DeflatedText> take (std::uint64_t index) {
        std::unique_lock guard (lock_);
        if (next_ == index) { // no helper is as far
            ++next_;
            taken_ = index + 1;
            changed_.notify_all ();
            guard.unlock ();
            return make (index);
        }
        changed_.wait (guard, [&] { return fault_ != nullptr || ready_.contains (index); });
        if (fault_ != nullptr) std::rethrow_exception (fault_);
        std::optional<sim::DeflatedText> unit = std::move (ready_[index]);
        ready_.erase (index);
        taken_ = index + 1;
        changed_.notify_all ();
        return unit;
    }

  private:
    /// Bounds the memory.
    static constexpr std::uint64_t most_ahead = 16;

    std::optional<sim::DeflatedText> make (std::uint64_t index) const {
        if (const Ledger::UnitPlace& place = ledger_.unit (index); place.there ()) {
            std::optional<UnitRecord> record =
                UnitRecord::from_bytes (shards_[place.source].file.read (place.place));
            return record ? std::optional (std::move (record->text)) : std::nullopt;
        }
        const sim::ResultUnit unit = units_.unit (index);
        const std::vector<std::uint32_t> counts = collect_unit (
            identity_, unit, ledger_.runs_of (unit), [this] (const SeriesRun::Slice& slice) {
                return shards_[slice.source].file.read (slice.place);
            });
        if (counts.empty ()) return std::nullopt;
        return deflated_unit (identity_, index, counts).text;
    }

    const std::vector<ShardFile>& shards_;
    const SweepIdentity& identity_;
    const sim::ResultUnits& units_;
    const Ledger& ledger_;
    std::mutex lock_;
    std::condition_variable changed_;
    std::map<std::uint64_t, std::optional<sim::DeflatedText>> ready_;
    std::uint64_t next_ = 0;
    std::uint64_t taken_ = 0;
    bool ended_ = false;
    std::exception_ptr fault_;
};

/// Ends the helpers of a source, whatever happens to who takes from it.
class SourceEnd {
  public:
    explicit SourceEnd (UnitSource& source) : source_ (source) {}
    ~SourceEnd () { source_.end (); }
    SourceEnd (const SourceEnd&) = delete;
    SourceEnd& operator= (const SourceEnd&) = delete;

  private:
    UnitSource& source_;
};

} // namespace

ShardMerge::ShardMerge (std::string out, std::vector<std::string> shards)
    : out_ (std::move (out)), shards_ (std::move (shards)) {}

Outcome ShardMerge::work (const std::stop_token& stop) {
    std::vector<ShardFile> shards (shards_.size ());
    for (std::size_t i = 0; i < shards.size (); ++i) {
        Outcome opened = open_shard (shards_[i], shards[i]);
        if (!opened.done ()) return opened;
        std::error_code none;
        if (out_ != "-" && fs::equivalent (out_, shards_[i], none)) {
            return Outcome::failure (in_quotes (out_) + " is one of the shards");
        }
    }
    if (Outcome checked = check_set (shards); !checked.done ()) return checked;
    SweepIdentity identity = shards.front ().identity;
    identity.choice.shard.reset ();
    const sim::ResultUnits units (identity.n_simul (), identity.lines_each ());
    progress_.expect (units.count ());
    Ledger ledger (identity, units);
    for (std::size_t i = 0; i < shards.size (); ++i) {
        if (stop.stop_requested ()) return Outcome::stop ();
        if (Outcome entered = enter_shard (shards[i], i, units, ledger); !entered.done ())
            return entered;
    }
    OutputFile file = open_output (out_, stop);
    if (!file.ok ()) return output_failure (file, out_);
    UnitSource source (shards, identity, units, ledger);
    WorkerThreads helpers;
    const SourceEnd before_they_are_joined (source);
    for (int started = 1; started < processor_count (); ++started) {
        if (!helpers.start ([&source] { source.make_ahead (); })) break;
    }
    return write_gzip_result (
        file, out_, identity, units.count (),
        [&] (std::uint64_t index, std::string& error) {
            std::optional<sim::DeflatedText> unit = source.take (index);
            if (!unit) error = "the shards do not have all simulations";
            progress_.add_progress (1);
            return unit;
        },
        stop);
}

} // namespace ostrand::sweep
