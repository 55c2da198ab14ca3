// What a sweep has finished, on disk beside its result: a file that only grows while the sweep goes
// on, so that whatever ends it loses no more than what was in work.
// Layer: sweep.
#pragma once
#include "base/file_lock.h"
#include "sweep/record.h"
#include "sweep/sweep_plan.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

namespace ostrand::sweep {

/// Where a record's content stands in a file.
struct RecordPlace {
    std::uint64_t offset = 0;
    std::uint64_t size = 0;
};

/// Called for each record behind the first, in order; false ends the reading.
using RecordVisitor =
    std::function<bool (RecordKind kind, std::string_view content, const RecordPlace& place)>;

/// Reads the records of an open file from a place to its end.
enum class RecordsEnd {
    whole,
    torn,    // the last record is not all there; `end` is where it begins
    damaged, // one that was written whole has changed
    refused, // by the visitor
    failed,  // reading: errno tells
};
RecordsEnd read_records (int descriptor, std::uint64_t& end, const RecordVisitor& visit);

/// First bytes of a journal and of a shard.
inline constexpr std::string_view journal_mark = "ostrand sweep 1\n";
inline constexpr std::string_view shard_mark = "ostrand shard 1\n";

/// Opens with a mark and an identity: what an open file begins with. Nothing when it does not.
/// end  out: the place behind them
std::optional<SweepIdentity> read_identity (int descriptor, std::string_view mark,
                                            std::uint64_t& end);

/// A file of records that is only read; closed with this object.
class RecordFile {
  public:
    RecordFile () = default;
    /// Not open, with the reason in errno, when that fails.
    explicit RecordFile (const std::filesystem::path& path);
    ~RecordFile ();
    RecordFile (RecordFile&& other) noexcept;
    RecordFile& operator= (RecordFile&& other) noexcept;
    RecordFile (const RecordFile&) = delete;
    RecordFile& operator= (const RecordFile&) = delete;

    bool is_open () const { return descriptor_ >= 0; }
    int descriptor () const { return descriptor_; }
    /// The content of a record; safe to call from any thread. Empty when it cannot be read.
    std::string read (const RecordPlace& place) const;

  private:
    int descriptor_ = -1;
};

class Journal {
  public:
    enum class Standing {
        fresh,    // there is nothing, or a journal that was cut off before anything stood in it
        leftover, // of a sweep that did not come to its end
        foreign,  // a file of that name that is no journal
        busy,     // another process works on it
        failed,   // it cannot be opened: error ()
    };

    /// Takes the file for this process. Nothing in it changes.
    explicit Journal (std::filesystem::path path);
    /// One in a folder for temporary files, which nobody finds and which goes with this object.
    static std::unique_ptr<Journal> temporary ();
    ~Journal ();
    Journal (const Journal&) = delete;
    Journal& operator= (const Journal&) = delete;

    Standing standing () const { return standing_; }
    const std::string& error () const { return error_; }
    const std::filesystem::path& path () const { return path_; }
    /// Of a leftover.
    const std::optional<SweepIdentity>& identity () const { return identity_; }

    /// Goes on with a leftover: shows its records. A torn tail is cut off. False, with the reason
    /// in error (), when it is damaged; then it is as it was.
    bool replay (const RecordVisitor& visit);
    /// Begins anew; what was there is gone. False, with the reason in error (), when that fails.
    bool begin (const SweepIdentity& identity);

    /// Safe to call from any thread. Nothing when the disk does not take the record; then the file
    /// ends where it did before.
    std::optional<RecordPlace> append (RecordKind kind, std::string_view content);
    /// The content of a record; safe to call from any thread. Empty when it cannot be read.
    std::string read (const RecordPlace& place) const;

    /// No record but the identity is in it.
    bool is_empty () const;
    /// Removes the file.
    void remove ();

  private:
    Journal () = default;
    bool fail ();

    std::filesystem::path path_;
    FileLock lock_;
    int descriptor_ = -1;
    bool named_ = true; // a temporary one has no name
    Standing standing_ = Standing::failed;
    std::string error_;
    std::optional<SweepIdentity> identity_;
    mutable std::mutex appending_;
    std::uint64_t begin_ = 0; // of the records behind the identity
    std::uint64_t end_ = 0;   // of the last whole record
};

} // namespace ostrand::sweep
