// Finding and restoring leftovers.
#include "editor/recovery.h"

#include "editor/history.h"
#include "editor/workbench.h"

#include "base/file_access.h"
#include "base/report.h"

#include <algorithm>
#include <filesystem>
#include <map>

namespace ostrand::editor {
namespace {

/// The undo files of a folder by their numbers.
std::map<int, std::string> undo_files (const std::string& folder) {
    std::map<int, std::string> found;
    std::error_code error;
    for (std::filesystem::directory_iterator entry (folder, error), end; !error && entry != end;
         entry.increment (error)) {
        const std::string name = entry->path ().filename ().string ();
        if (const std::optional<int> number = undo_file_number (name))
            found.emplace (*number, entry->path ().string ());
    }
    return found;
}

/// What can be had from one file; nothing when it is in use, no file, or holds no state.
std::optional<Leftover> leftover_of (const std::string& path) {
    std::error_code error;
    if (std::filesystem::symlink_status (path, error).type () !=
        std::filesystem::file_type::regular)
        return std::nullopt;
    const std::optional<FileStamp> stamp = file_stamp (path);
    if (!stamp || stamp->size == 0) return std::nullopt;
    FileLock lock (path, FileLock::Missing::stays_missing);
    if (!lock.held ()) return std::nullopt;
    UndoFile file (std::move (lock), path, static_cast<std::int64_t> (stamp->size));
    const HistoryScan scan = scan_history (file);
    if (scan.last_snapshot == no_snapshot) return std::nullopt;
    const std::string front = file.read (scan.last_snapshot, snapshot_header_size);
    const std::optional<RecordHeader> header = read_record_header (front);
    const std::string text =
        file.read (scan.last_snapshot + snapshot_header_size, header ? header->size : 0);
    const std::optional<SnapshotText> snapshot = read_snapshot_text (text);
    if (!snapshot) return std::nullopt;
    Leftover found{.file = UndoFile (file.take_lock (), path, scan.sound_end),
                   .last_snapshot = scan.last_snapshot,
                   .damaged = scan.damaged,
                   .name = snapshot->file_name.value_or (""),
                   .time = stamp->time_ns / 1000000000};
    return found;
}

/// How a leftover is called in the question.
RecoveryItem item_of (const Leftover& leftover) { return {leftover.name, leftover.time}; }

} // namespace

std::vector<Leftover> find_leftovers (const std::string& folder) {
    std::vector<Leftover> found;
    for (const auto& [number, path] : undo_files (folder))
        if (std::optional<Leftover> leftover = leftover_of (path))
            found.push_back (std::move (*leftover));
    return found;
}

void recover (Workbench& bench, RecoveryMode mode, bool files_opened) {
    if (mode == RecoveryMode::leave_all) return;
    std::vector<Leftover> leftovers = find_leftovers (bench.options ().home);
    if (leftovers.empty ()) return;
    RecoveryAnswer answer = RecoveryAnswer::restore;
    if (mode == RecoveryMode::ask) {
        std::vector<RecoveryItem> items;
        std::ranges::transform (leftovers, std::back_inserter (items), item_of);
        answer = bench.world ().ask_recovery (items);
    }
    switch (answer) {
    case RecoveryAnswer::later: return;
    case RecoveryAnswer::remove:
        for (Leftover& leftover : leftovers) leftover.file.remove ();
        return;
    case RecoveryAnswer::restore: break;
    }
    bench.restore (std::move (leftovers), !files_opened);
}

} // namespace ostrand::editor
