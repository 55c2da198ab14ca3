// Lines of a gzip stream, of at most 255 bytes each.
// Layer: viewer.
#pragma once
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

using gzFile = struct gzFile_s*;

namespace ostrand::viewer {

/// Takes lines as C's fgets does into 256 bytes: with their line end, a longer one in pieces. CR LF
/// reads as LF. What a damaged stream still yields is read before it ends.
class LineReader {
  public:
    explicit LineReader (gzFile stream);

    /// The next line, valid until the next call; nothing at the end.
    std::optional<std::string_view> next ();

    /// Called each time a block has been read, with the compressed bytes taken so far.
    template <class Report>
    void on_block (Report report) {
        if (fresh_block_) report (taken_);
        fresh_block_ = false;
    }

  private:
    bool refill ();

    static constexpr std::size_t longest_line = 255;

    gzFile stream_;
    std::vector<char> block_;
    std::size_t begin_ = 0; // unread bytes of the block
    std::size_t end_ = 0;
    bool ended_ = false;
    bool fresh_block_ = false;
    std::uint64_t taken_ = 0;
};

} // namespace ostrand::viewer
