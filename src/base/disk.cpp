// Writing files beside their place.
#include "base/disk.h"

#include "base/report.h"
#include "base/text.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace ostrand {
namespace {

namespace fs = std::filesystem;

/// Permissions of a new file, before the process's mask.
constexpr mode_t new_file_mode = 0666;
/// How many names are tried for a temporary file before giving up.
constexpr int name_tries = 100;
/// Bytes between two looks for a stop: a few milliseconds of writing.
constexpr std::size_t most_at_once = std::size_t{1} << 20;

/// Opens a new file beside `target`, named after it with a dot in front.
int open_beside (const fs::path& target, fs::path& chosen) {
    static std::atomic<unsigned> counter{0};
    // A long name is cut, so that the temporary one is never too long for the file system.
    const std::string name = target.filename ().string ().substr (0, 200);
    for (int i = 0; i < name_tries; ++i) {
        chosen = target.parent_path () /
                 format_text (".%s.%d-%u", name.c_str (), process_id (), counter.fetch_add (1));
        const int descriptor =
            ::open (chosen.c_str (), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, new_file_mode);
        if (descriptor >= 0 || errno != EEXIST) return descriptor;
    }
    return -1;
}

} // namespace

fs::path end_of_links (fs::path path) {
    std::error_code error;
    for (int depth = 0; depth < 40 && fs::is_symlink (path, error); ++depth) {
        const fs::path next = fs::read_symlink (path, error);
        if (error) break;
        path = next.is_absolute () ? next : path.parent_path () / next;
    }
    return path;
}

// Built up from an object that is whole, so that what fails halfway, for want of memory, is taken
// back by the destructor.
OutputFile::OutputFile (const fs::path& path, std::stop_token stop) : OutputFile () {
    target_ = end_of_links (path);
    stop_ = std::move (stop);
    struct stat old {};
    const bool exists = ::stat (target_.c_str (), &old) == 0;
    if (!exists && errno != ENOENT) { // a ring of links, a folder that may not be searched
        fail ();
        return;
    }
    if (exists && !S_ISREG (old.st_mode)) {
        descriptor_ = S_ISDIR (old.st_mode) ? -1 : ::open (target_.c_str (), O_WRONLY | O_CLOEXEC);
        if (S_ISDIR (old.st_mode)) errno = EISDIR;
        if (descriptor_ < 0) fail ();
        return;
    }
    // A file that may not be written must not be replaced either.
    const bool replaceable = !exists || ::access (target_.c_str (), W_OK) == 0;
    if (replaceable && target_.filename ().empty ()) errno = ENOENT;
    if (!replaceable || target_.filename ().empty ()) {
        fail ();
        return;
    }
    std::error_code ignored;
    fs::path beside = fs::absolute (target_, ignored);
    const InterruptionBlock unguarded_moment;
    descriptor_ = open_beside (beside, temporary_);
    if (descriptor_ < 0) {
        temporary_.clear ();
        fail ();
        return;
    }
    guard_ = std::make_unique<InterruptionGuard> (temporary_);
    if (exists && ::fchmod (descriptor_, old.st_mode & 07777) != 0) fail ();
}

OutputFile OutputFile::standard_output () {
    OutputFile file;
    file.descriptor_ = STDOUT_FILENO;
    file.owned_ = false;
    if (::fcntl (STDOUT_FILENO, F_GETFD) < 0) file.fail ();
    return file;
}

OutputFile::OutputFile (OutputFile&& other) noexcept
    : descriptor_ (std::exchange (other.descriptor_, -1)), owned_ (other.owned_),
      target_ (std::move (other.target_)), temporary_ (std::move (other.temporary_)),
      guard_ (std::move (other.guard_)), stop_ (std::move (other.stop_)), stopped_ (other.stopped_),
      error_ (std::move (other.error_)) {
    other.temporary_.clear ();
}

OutputFile::~OutputFile () { close_and_remove (); }

void OutputFile::fail () {
    if (error_.empty ()) error_ = std::strerror (errno);
}

/// Whether a stop was asked for, which fails the file.
bool OutputFile::is_stopped () {
    if (!stopped_ && stop_.stop_requested ()) {
        stopped_ = true;
        errno = ECANCELED;
        fail ();
    }
    return stopped_;
}

void OutputFile::close_and_remove () {
    if (descriptor_ >= 0 && owned_) ::close (descriptor_);
    descriptor_ = -1;
    if (!temporary_.empty ()) ::unlink (temporary_.c_str ());
    temporary_.clear ();
    guard_.reset ();
}

bool OutputFile::write (std::string_view bytes) {
    while (ok () && !bytes.empty () && !is_stopped ()) {
        const std::size_t length = std::min (bytes.size (), most_at_once);
        const ssize_t written = ::write (descriptor_, bytes.data (), length);
        if (written >= 0) {
            bytes.remove_prefix (static_cast<std::size_t> (written));
        } else if (errno != EINTR) {
            fail ();
        }
    }
    return ok ();
}

bool OutputFile::commit () {
    if (!ok () || is_stopped ()) return false;
    if (temporary_.empty ()) {
        if (owned_ && ::close (std::exchange (descriptor_, -1)) != 0) fail ();
        if (!owned_) descriptor_ = -1;
        return error_.empty ();
    }
    if (!flush_to_disk (descriptor_, stop_)) fail ();
    if (::close (std::exchange (descriptor_, -1)) != 0) fail ();
    is_stopped (); // the last moment for it
    if (error_.empty () && ::rename (temporary_.c_str (), target_.c_str ()) != 0) fail ();
    if (error_.empty ()) temporary_.clear ();
    close_and_remove ();
    return error_.empty ();
}

bool write_file (const fs::path& path, std::string_view bytes, std::string& error,
                 std::stop_token stop) {
    OutputFile file (path, std::move (stop));
    const bool written = file.write (bytes) && file.commit ();
    if (!written) error = file.error ();
    return written;
}

void remove_file (const fs::path& path) noexcept { ::unlink (path.c_str ()); }

bool write_standard_output (std::string_view bytes) {
    OutputFile file = OutputFile::standard_output ();
    const bool written = file.write (bytes) && file.commit ();
    if (!written) report_message ("Cannot write standard output: %s", file.error ().c_str ());
    return written;
}

} // namespace ostrand
