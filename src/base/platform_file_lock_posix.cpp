// File locks on POSIX systems: locks of an open file description, which go when its last
// descriptor is closed. The older locks of a process would go with any descriptor of the file.
#include "base/file_lock.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace ostrand {
namespace {

/// Permissions of a new file, before the process's mask.
constexpr mode_t new_file_mode = 0666;
/// How often a file may be replaced between opening and locking it before that is a failure.
constexpr int replacement_tries = 10;

/// A lock of the whole file.
struct flock whole_file () {
    struct flock lock {};
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    return lock;
}

bool is_regular (int descriptor) {
    struct stat file {};
    return fstat (descriptor, &file) == 0 && S_ISREG (file.st_mode);
}

/// False when the name stands for another file by now: a lock on the one that went guards nothing.
bool still_named (int descriptor, const char* path) {
    struct stat open_file {};
    struct stat named {};
    return fstat (descriptor, &open_file) == 0 && stat (path, &named) == 0 &&
           open_file.st_dev == named.st_dev && open_file.st_ino == named.st_ino;
}

/// Opening something that is no file must neither wait nor make anything.
constexpr int careful = O_CLOEXEC | O_NONBLOCK | O_NOCTTY;

} // namespace

FileLock::FileLock (const std::filesystem::path& path, Missing missing) {
    const char* const name = path.c_str ();
    for (int i = 0; i < replacement_tries; ++i) {
        int file = ::open (name, O_RDWR | careful);
        if (file < 0 && errno == ENOENT) {
            if (missing == Missing::stays_missing) {
                end_ = End::not_there;
                return;
            }
            file = ::open (name, O_RDWR | O_CREAT | O_EXCL | careful, new_file_mode);
            if (file < 0 && errno == EEXIST) { // a dangling link, or somebody was faster
                end_ = End::not_a_file;
                continue;
            }
        }
        if (file < 0) {
            end_ = errno == EISDIR || errno == ENXIO ? End::not_a_file : End::failed;
            error_ = end_ == End::failed ? std::strerror (errno) : "";
            return;
        }
        if (!is_regular (file)) {
            end_ = End::not_a_file;
            ::close (file);
            return;
        }
        struct flock lock = whole_file ();
        if (fcntl (file, F_OFD_SETLK, &lock) != 0) {
            end_ = errno == EAGAIN || errno == EACCES ? End::held_elsewhere : End::failed;
            error_ = end_ == End::failed ? std::strerror (errno) : "";
            ::close (file);
            return;
        }
        if (still_named (file, name)) {
            end_ = End::taken;
            descriptor_ = file;
            return;
        }
        ::close (file);
        end_ = End::failed;
        error_ = "the file is replaced all the time";
    }
}

FileLock::FileLock (FileLock&& other) noexcept
    : end_ (other.end_), descriptor_ (std::exchange (other.descriptor_, -1)),
      error_ (std::move (other.error_)) {}

FileLock& FileLock::operator= (FileLock&& other) noexcept {
    if (this == &other) return *this;
    release ();
    end_ = other.end_;
    descriptor_ = std::exchange (other.descriptor_, -1);
    error_ = std::move (other.error_);
    return *this;
}

void FileLock::release () {
    if (descriptor_ >= 0) ::close (std::exchange (descriptor_, -1));
}

bool is_locked (const std::filesystem::path& path) {
    const int file = ::open (path.c_str (), O_RDONLY | careful);
    if (file < 0) return false;
    struct flock lock = whole_file ();
    const bool locked =
        is_regular (file) && fcntl (file, F_OFD_GETLK, &lock) == 0 && lock.l_type != F_UNLCK;
    ::close (file);
    return locked;
}

} // namespace ostrand
