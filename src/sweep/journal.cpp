// Journals of sweeps.
#include "sweep/journal.h"

#include "base/platform.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace ostrand::sweep {
namespace {

/// Records are no larger; a length beyond it is none.
constexpr std::uint64_t largest_record = std::uint64_t{1} << 40;

/// True when all bytes were read; errno is 0 when the file ended before.
bool read_whole (int descriptor, std::uint64_t offset, char* to, std::size_t size) {
    while (size > 0) {
        const ssize_t now = ::pread (descriptor, to, size, static_cast<off_t> (offset));
        if (now < 0 && errno == EINTR) continue;
        if (now <= 0) {
            if (now == 0) errno = 0;
            return false;
        }
        to += now;
        offset += static_cast<std::uint64_t> (now);
        size -= static_cast<std::size_t> (now);
    }
    return true;
}

bool write_whole (int descriptor, std::uint64_t offset, std::string_view bytes) {
    while (!bytes.empty ()) {
        const ssize_t now =
            ::pwrite (descriptor, bytes.data (), bytes.size (), static_cast<off_t> (offset));
        if (now < 0 && errno == EINTR) continue;
        if (now <= 0) {
            if (now == 0) errno = ENOSPC;
            return false;
        }
        bytes.remove_prefix (static_cast<std::size_t> (now));
        offset += static_cast<std::uint64_t> (now);
    }
    return true;
}

std::uint64_t size_of (int descriptor) {
    struct stat state {};
    return ::fstat (descriptor, &state) == 0 ? static_cast<std::uint64_t> (state.st_size) : 0;
}

/// After a crash of the machine a file may end in zeros that nobody wrote.
bool is_zero_to_the_end (int descriptor, std::uint64_t offset, std::uint64_t size) {
    std::string buffer (1 << 16, '\0');
    while (offset < size) {
        const std::size_t now = std::min<std::uint64_t> (buffer.size (), size - offset);
        if (!read_whole (descriptor, offset, buffer.data (), now)) return false;
        if (buffer.find_first_not_of ('\0') < now) return false;
        offset += now;
    }
    return true;
}

std::string read_content (int descriptor, const RecordPlace& place) {
    std::string content (place.size, '\0');
    if (!read_whole (descriptor, place.offset, content.data (), content.size ())) return {};
    return content;
}

} // namespace

RecordsEnd read_records (int descriptor, std::uint64_t& end, const RecordVisitor& visit) {
    const std::uint64_t size = size_of (descriptor);
    std::string bytes;
    while (end < size) {
        if (size - end < frame_head + frame_tail) return RecordsEnd::torn;
        bytes.resize (frame_head);
        if (!read_whole (descriptor, end, bytes.data (), frame_head)) return RecordsEnd::failed;
        const std::optional<FrameHead> head = read_frame_head (bytes);
        if (!head || head->size > largest_record) {
            return is_zero_to_the_end (descriptor, end, size) ? RecordsEnd::torn
                                                              : RecordsEnd::damaged;
        }
        const std::uint64_t left = size - end - frame_head;
        if (head->size + frame_tail > left) return RecordsEnd::torn;
        bytes.resize (head->size + frame_tail);
        if (!read_whole (descriptor, end + frame_head, bytes.data (), bytes.size ())) {
            return RecordsEnd::failed;
        }
        if (!is_sound_body (bytes)) {
            return bytes.size () == left ? RecordsEnd::torn : RecordsEnd::damaged;
        }
        const std::string_view content = std::string_view (bytes).substr (0, head->size);
        if (!visit (head->kind, content, {end + frame_head, head->size})) {
            return RecordsEnd::refused;
        }
        end += frame_head + bytes.size ();
    }
    return RecordsEnd::whole;
}

std::optional<SweepIdentity> read_identity (int descriptor, std::string_view mark,
                                            std::uint64_t& end) {
    std::string found (mark.size (), '\0');
    if (!read_whole (descriptor, 0, found.data (), found.size ()) || found != mark) {
        return std::nullopt;
    }
    end = mark.size ();
    std::optional<SweepIdentity> identity;
    std::uint64_t behind = end;
    read_records (descriptor, end,
                  [&] (RecordKind kind, std::string_view content, const RecordPlace& place) {
                      if (kind == RecordKind::identity) {
                          identity = SweepIdentity::from_bytes (content);
                          behind = place.offset + place.size + frame_tail;
                      }
                      return false;
                  });
    end = behind;
    return identity;
}

RecordFile::RecordFile (const std::filesystem::path& path)
    : descriptor_ (::open (path.c_str (), O_RDONLY | O_CLOEXEC)) {}

RecordFile::~RecordFile () {
    if (descriptor_ >= 0) ::close (descriptor_);
}

RecordFile::RecordFile (RecordFile&& other) noexcept
    : descriptor_ (std::exchange (other.descriptor_, -1)) {}

RecordFile& RecordFile::operator= (RecordFile&& other) noexcept {
    std::swap (descriptor_, other.descriptor_);
    return *this;
}

std::string RecordFile::read (const RecordPlace& place) const {
    return read_content (descriptor_, place);
}

Journal::Journal (std::filesystem::path path) : path_ (std::move (path)), lock_ (path_) {
    switch (lock_.end ()) {
    case FileLock::End::taken: break;
    case FileLock::End::held_elsewhere: standing_ = Standing::busy; return;
    case FileLock::End::not_a_file: standing_ = Standing::foreign; return;
    case FileLock::End::not_there:
    case FileLock::End::failed: error_ = lock_.error (); return;
    }
    descriptor_ = lock_.descriptor ();
    identity_ = read_identity (descriptor_, journal_mark, end_);
    if (identity_) {
        begin_ = end_;
        standing_ = Standing::leftover;
        return;
    }
    // A journal that was cut off at once holds the beginning of what `begin` writes.
    const std::uint64_t size = size_of (descriptor_);
    std::string start (std::min<std::uint64_t> (size, journal_mark.size ()), '\0');
    const bool read = read_whole (descriptor_, 0, start.data (), start.size ());
    std::uint64_t end = journal_mark.size ();
    const bool cut_off = read && journal_mark.starts_with (start) &&
                         (size <= end || read_records (descriptor_, end, [] (auto&&...) {
                                             return false;
                                         }) == RecordsEnd::torn);
    standing_ = cut_off ? Standing::fresh : Standing::foreign;
}

std::unique_ptr<Journal> Journal::temporary () {
    std::unique_ptr<Journal> journal (new Journal ());
    journal->named_ = false;
    std::string name = (temporary_directory () / "ostrand-sweep-XXXXXX").string ();
    const InterruptionBlock unnamed_moment;
    journal->descriptor_ = ::mkostemp (name.data (), O_CLOEXEC);
    if (journal->descriptor_ < 0) {
        journal->fail ();
        return journal;
    }
    ::unlink (name.c_str ());
    journal->standing_ = Standing::fresh;
    return journal;
}

Journal::~Journal () {
    if (!named_ && descriptor_ >= 0) ::close (descriptor_);
}

bool Journal::fail () {
    error_ = std::strerror (errno);
    return false;
}

bool Journal::replay (const RecordVisitor& visit) {
    std::uint64_t end = end_;
    switch (read_records (descriptor_, end, visit)) {
    case RecordsEnd::whole: break;
    case RecordsEnd::torn:
        if (::ftruncate (descriptor_, static_cast<off_t> (end)) != 0) return fail ();
        break;
    case RecordsEnd::damaged:
    case RecordsEnd::refused: error_ = "it is damaged"; return false;
    case RecordsEnd::failed: return fail ();
    }
    end_ = end;
    return true;
}

bool Journal::begin (const SweepIdentity& identity) {
    if (::ftruncate (descriptor_, 0) != 0) return fail ();
    const std::string start =
        std::string (journal_mark) + framed (RecordKind::identity, identity.to_bytes ());
    if (!write_whole (descriptor_, 0, start)) return fail ();
    begin_ = end_ = start.size ();
    identity_ = identity;
    return true;
}

std::optional<RecordPlace> Journal::append (RecordKind kind, std::string_view content) {
    const std::string frame = framed (kind, content);
    const std::lock_guard guard (appending_);
    if (!write_whole (descriptor_, end_, frame)) {
        fail ();
        if (::ftruncate (descriptor_, static_cast<off_t> (end_)) != 0) {
            // The torn record is cut off when the journal is read again.
        }
        return std::nullopt;
    }
    const RecordPlace place{end_ + frame_head, content.size ()};
    end_ += frame.size ();
    return place;
}

std::string Journal::read (const RecordPlace& place) const {
    return read_content (descriptor_, place);
}

bool Journal::is_empty () const {
    const std::lock_guard guard (appending_);
    return end_ == begin_;
}

void Journal::remove () {
    if (!named_ || descriptor_ < 0) return;
    std::error_code ignored;
    std::filesystem::remove (path_, ignored);
    lock_.release ();
    descriptor_ = -1;
}

} // namespace ostrand::sweep
