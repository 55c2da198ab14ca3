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
    taken_ = static_cast<std::uint64_t> (gzoffset (stream_));
    fresh_block_ = true;
    return true;
}

std::optional<std::string_view> LineReader::next () {
    for (;;) {
        const std::size_t room = std::min (end_ - begin_, longest_line);
        char* line = block_.data () + begin_;
        auto* line_end = room == 0 ? nullptr : static_cast<char*> (std::memchr (line, '\n', room));
        if (line_end == nullptr && room < longest_line && refill ()) continue;
        if (line_end == nullptr && room == 0) return std::nullopt;
        std::size_t length =
            line_end == nullptr ? room : static_cast<std::size_t> (line_end - line) + 1;
        begin_ += length;
        if (line_end != nullptr && length >= 2 && line[length - 2] == '\r') {
            line[length - 2] = '\n';
            --length;
        }
        return std::string_view (line, length);
    }
}

} // namespace ostrand::viewer
