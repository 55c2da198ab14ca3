// Text compressed in pieces that know nothing of each other and are put together to one gzip
// member: what threads, processes and machines have compressed apart is one file. Layer: sim.
#pragma once
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace ostrand::sim {

/// A piece of text as whole deflate blocks, none of them the last one of its stream.
struct DeflatedText {
    std::string bytes;           // unused bits of the last byte are 0
    std::uint64_t bits = 0;      // used ones: blocks end anywhere in a byte
    std::uint64_t text_size = 0; // bytes of the text
    std::uint32_t crc = 0;       // CRC-32 of the text

    /// Puts a piece behind this one.
    void append (const DeflatedText& more);
};

/// Compresses a text that comes in parts, at the level that gzip has by default. The same parts
/// give the same bits. A text that is to stand behind others must be one of digits and line ends:
/// it never comes out as a stored block, which could not be moved within a byte.
class TextDeflater {
  public:
    /// before  text that will stand in front; its last 32 KiB help
    explicit TextDeflater (std::string_view before = {});
    ~TextDeflater ();
    TextDeflater (const TextDeflater&) = delete;
    TextDeflater& operator= (const TextDeflater&) = delete;

    void add (std::string_view text);
    /// What has become of all that was added. To be called once.
    DeflatedText finish ();

  private:
    struct Stream;
    void run (std::string_view text, int flush);

    std::unique_ptr<Stream> stream_;
    std::size_t given_ = 0; // bytes of the result
    DeflatedText result_;
};

/// The same for a text in one part.
DeflatedText deflate_text (std::string_view text, std::string_view before = {});

/// Writes one gzip member, without name and time, to whatever takes its bytes.
class GzipMember {
  public:
    /// take  gets the bytes in order; false ends it
    explicit GzipMember (std::function<bool (std::string_view bytes)> take);

    bool append (const DeflatedText& piece);
    bool finish ();

  private:
    bool pass_on ();

    std::function<bool (std::string_view bytes)> take_;
    DeflatedText pending_; // bytes not yet passed on, with sizes and sum of all that came before
};

} // namespace ostrand::sim
