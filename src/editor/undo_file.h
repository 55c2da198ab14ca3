// The undo file of one canvas as bytes on the disk: its name, its lock, and what a full disk does
// not take.
// Layer: editor (uses base).
#pragma once
#include "base/file_lock.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ostrand::editor {

/// A file of whole records, one behind the other, that its process holds locked. Every record is
/// written at once. What the disk does not take stays in memory, and is written as soon as there is
/// room; the file itself always ends behind a whole record.
class UndoFile {
  public:
    /// Makes a file in `folder` under the first number from `next_number` on that nothing there
    /// has; `next_number` becomes the one behind it. What other processes left or use is not
    /// touched. Nothing when no file can be made.
    static std::optional<UndoFile> create (const std::string& folder, int& next_number);
    /// Goes on with a file whose lock is held; its first `size` bytes are its history.
    UndoFile (FileLock lock, std::string path, std::int64_t size);
    UndoFile (UndoFile&&) noexcept = default;
    UndoFile& operator= (UndoFile&&) noexcept = default;
    UndoFile (const UndoFile&) = delete;
    UndoFile& operator= (const UndoFile&) = delete;
    ~UndoFile () = default; // the file stays: remove () is another thing

    const std::string& path () const { return path_; }
    /// Bytes of the history, whether the disk has them all or not.
    std::int64_t size () const;
    /// Writes one whole record behind the last. False when the disk did not take it; it is kept.
    bool append (std::string_view record);
    /// The history ends at `size` from now on.
    void cut (std::int64_t size);
    /// Bytes from `at` on; fewer than asked for at the end of the history.
    std::string read (std::int64_t at, std::int64_t count) const;
    /// Tries again to write what the disk did not take. True when it has everything.
    bool flush ();
    /// Why the disk did not take a record, as the system tells it; empty while it has all.
    const std::string& error () const { return error_; }
    /// Deletes the file and lets its lock go.
    void remove ();
    /// Gives the lock away; nothing can be written or read from then on.
    FileLock take_lock () { return std::move (lock_); }

  private:
    bool write_whole (std::string_view bytes);

    FileLock lock_;
    std::string path_;
    std::int64_t on_disk_ = 0;         // bytes of whole records that the disk has
    std::vector<std::string> waiting_; // records behind them
    std::string error_;
};

/// The name of the undo file of a number: ".kill_stack_%d.dat".
std::string undo_file_name (int number);

/// The number in such a name; nothing when it is another name.
std::optional<int> undo_file_number (std::string_view name);

} // namespace ostrand::editor
