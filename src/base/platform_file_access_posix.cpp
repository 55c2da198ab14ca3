// Files at places, by POSIX.
#include "base/file_access.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <sys/stat.h>
#include <unistd.h>

namespace ostrand {

bool write_at (int descriptor, std::int64_t at, std::string_view bytes, std::string& error) {
    while (!bytes.empty ()) {
        const ssize_t written = pwrite (descriptor, bytes.data (), bytes.size (), at);
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) {
            error = written < 0 ? std::strerror (errno) : "no room";
            return false;
        }
        bytes.remove_prefix (static_cast<std::size_t> (written));
        at += written;
    }
    return true;
}

std::string read_at (int descriptor, std::int64_t at, std::int64_t count) {
    const std::int64_t there = std::max<std::int64_t> (file_size (descriptor) - at, 0);
    std::string bytes (static_cast<std::size_t> (std::clamp<std::int64_t> (count, 0, there)), '\0');
    std::size_t done = 0;
    while (done < bytes.size ()) {
        const ssize_t got = pread (descriptor, bytes.data () + done, bytes.size () - done,
                                   at + static_cast<std::int64_t> (done));
        if (got < 0 && errno == EINTR) continue;
        if (got <= 0) break;
        done += static_cast<std::size_t> (got);
    }
    bytes.resize (done);
    return bytes;
}

bool truncate_file (int descriptor, std::int64_t size) { return ftruncate (descriptor, size) == 0; }

std::int64_t file_size (int descriptor) {
    struct stat info {};
    return fstat (descriptor, &info) == 0 ? info.st_size : -1;
}

std::optional<FileStamp> file_stamp (const std::string& path) {
    struct stat info {};
    if (stat (path.c_str (), &info) != 0) return std::nullopt;
    return FileStamp{info.st_ino, static_cast<std::uint64_t> (info.st_size),
                     static_cast<std::int64_t> (info.st_mtim.tv_sec) * 1000000000 +
                         info.st_mtim.tv_nsec};
}

} // namespace ostrand
