// Storage of an undo file.
#include "editor/undo_file.h"

#include "base/file_access.h"
#include "base/text.h"

#include <algorithm>
#include <filesystem>

namespace ostrand::editor {
namespace {

constexpr std::string_view name_front = ".kill_stack_";
constexpr std::string_view name_back = ".dat";
constexpr int most_tries = 100000;

/// Something of this name is there, be it a link that leads nowhere.
bool is_taken (const std::filesystem::path& path) {
    std::error_code error;
    return std::filesystem::symlink_status (path, error).type () !=
           std::filesystem::file_type::not_found;
}

} // namespace

std::string undo_file_name (int number) { return format_text (".kill_stack_%d.dat", number); }

std::optional<int> undo_file_number (std::string_view name) {
    if (!name.starts_with (name_front) || !name.ends_with (name_back)) return std::nullopt;
    if (name.size () < name_front.size () + name_back.size () + 1) return std::nullopt;
    name.remove_prefix (name_front.size ());
    name.remove_suffix (name_back.size ());
    if (name.size () > 9 || !std::ranges::all_of (name, is_digit)) return std::nullopt;
    const int number = parse_atoi (name);
    if (undo_file_name (number).size () != name_front.size () + name.size () + name_back.size ()) {
        return std::nullopt; // zeros in front
    }
    return number;
}

std::optional<UndoFile> UndoFile::create (const std::string& folder, int& next_number) {
    for (int tries = 0; tries < most_tries; ++tries) {
        const std::string path = folder + '/' + undo_file_name (next_number++);
        if (is_taken (path)) continue;
        FileLock lock (path);
        if (lock.end () == FileLock::End::held_elsewhere) continue; // made by another meanwhile
        if (!lock.held ()) return std::nullopt;
        if (file_size (lock.descriptor ()) != 0) continue; // likewise, and ended again
        return UndoFile (std::move (lock), path, 0);
    }
    return std::nullopt;
}

UndoFile::UndoFile (FileLock lock, std::string path, std::int64_t size)
    : lock_ (std::move (lock)), path_ (std::move (path)), on_disk_ (size) {}

std::int64_t UndoFile::size () const {
    std::int64_t bytes = on_disk_;
    for (const std::string& record : waiting_) bytes += static_cast<std::int64_t> (record.size ());
    return bytes;
}

bool UndoFile::write_whole (std::string_view bytes) {
    if (!write_at (lock_.descriptor (), on_disk_, bytes, error_)) {
        truncate_file (lock_.descriptor (), on_disk_); // a part of a record is none
        return false;
    }
    on_disk_ += static_cast<std::int64_t> (bytes.size ());
    return true;
}

bool UndoFile::append (std::string_view record) {
    if (flush () && write_whole (record)) return true;
    waiting_.emplace_back (record);
    return false;
}

bool UndoFile::flush () {
    error_.clear ();
    std::size_t written = 0;
    while (written < waiting_.size () && write_whole (waiting_[written])) ++written;
    waiting_.erase (waiting_.begin (), waiting_.begin () + static_cast<std::ptrdiff_t> (written));
    return waiting_.empty ();
}

void UndoFile::cut (std::int64_t size) {
    if (size <= on_disk_) {
        waiting_.clear ();
        if (size < on_disk_) {
            on_disk_ = size;
            truncate_file (lock_.descriptor (), on_disk_);
        }
        return;
    }
    std::int64_t end = on_disk_;
    std::size_t kept = 0;
    while (kept < waiting_.size () && end < size) {
        end += static_cast<std::int64_t> (waiting_[kept].size ());
        ++kept;
    }
    waiting_.resize (kept);
}

std::string UndoFile::read (std::int64_t at, std::int64_t count) const {
    std::string bytes;
    if (at < 0 || count <= 0) return bytes;
    if (at < on_disk_) bytes = read_at (lock_.descriptor (), at, std::min (count, on_disk_ - at));
    std::int64_t place = on_disk_;
    for (const std::string& record : waiting_) {
        const auto length = static_cast<std::int64_t> (record.size ());
        const std::int64_t wanted = at + static_cast<std::int64_t> (bytes.size ());
        const std::int64_t missing = count - static_cast<std::int64_t> (bytes.size ());
        if (missing > 0 && wanted >= place && wanted < place + length) {
            bytes += record.substr (static_cast<std::size_t> (wanted - place),
                                    static_cast<std::size_t> (missing));
        }
        place += length;
    }
    return bytes;
}

void UndoFile::remove () {
    std::error_code error;
    if (lock_.held ()) std::filesystem::remove (path_, error);
    lock_.release ();
    waiting_.clear ();
    on_disk_ = 0;
}

} // namespace ostrand::editor
