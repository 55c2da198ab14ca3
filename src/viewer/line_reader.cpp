// Lines of a gzip stream.
#include "viewer/line_reader.h"

#include <algorithm>
#include <cstring>
#include <zlib.h>

namespace ostrand::viewer {
namespace {

constexpr std::size_t block_size = 1 << 18;

} // namespace

LineReader::LineReader (gzFile stream) : stream_ (stream), block_ (block_size) {
    gzbuffer (stream, block_size / 2); // without effect once something was read
}

/// Moves what is unread to the front and reads on; false when nothing more came.
bool LineReader::refill () {
    if (ended_) return false;
    std::copy (block_.begin () + static_cast<std::ptrdiff_t> (begin_),
               block_.begin () + static_cast<std::ptrdiff_t> (end_), block_.begin ());
    end_ -= begin_;
    begin_ = 0;
    const int got =
        gzread (stream_, block_.data () + end_, static_cast<unsigned> (block_.size () - end_));
    if (got <= 0) {
        ended_ = true;
        return false;
    }
    end_ += static_cast<std::size_t> (got);
    // A pipe has no place of its own; there the unpacked bytes are told.
    const z_off_t place = gzoffset (stream_);
    taken_ = static_cast<std::uint64_t> (place < 0 ? gztell (stream_) : place);
    fresh_block_ = true;
    return true;
}

std::optional<std::string_view> LineReader::next () {
    for (;;) {
        // The CR of a CR LF does not count.
        const std::size_t room = std::min (end_ - begin_, longest_line + 1);
        char* line = block_.data () + begin_;
        auto* line_end = room == 0 ? nullptr : static_cast<char*> (std::memchr (line, '\n', room));
        if (line_end == nullptr && room <= longest_line && refill ()) continue;
        if (room == 0) return std::nullopt;
        std::size_t length = line_end == nullptr ? std::min (room, longest_line)
                                                 : static_cast<std::size_t> (line_end - line) + 1;
        const bool cr_lf = line_end != nullptr && length >= 2 && line[length - 2] == '\r';
        if (length > longest_line && !cr_lf) length = longest_line;
        begin_ += length;
        if (cr_lf) {
            line[length - 2] = '\n';
            --length;
        }
        return std::string_view (line, length);
    }
}

} // namespace ostrand::viewer
