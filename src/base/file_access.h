// Open files written and read at places, and what tells one state of a file from another.
// Layer: base.
#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace ostrand {

/// Writes all bytes at a place of an open file. False with the system's reason in `error` when it
/// did not take all; a part may be there then.
bool write_at (int descriptor, std::int64_t at, std::string_view bytes, std::string& error);

/// Up to `count` bytes from a place of an open file; fewer at its end or when it cannot be read.
std::string read_at (int descriptor, std::int64_t at, std::int64_t count);

/// The file ends at `size` from now on; false when the system refuses.
bool truncate_file (int descriptor, std::int64_t size);

/// Bytes of an open file; -1 when the system does not tell.
std::int64_t file_size (int descriptor);

/// What tells one state of a file from another without reading it.
struct FileStamp {
    std::uint64_t inode = 0;
    std::uint64_t size = 0;
    std::int64_t time_ns = 0; // of its last change
    bool operator== (const FileStamp&) const = default;
};

/// The stamp of a file as it is now; nothing when there is none.
std::optional<FileStamp> file_stamp (const std::string& path);

} // namespace ostrand
