// Numbers and texts as bytes that are the same on every machine: little-endian, lengths in front.
// Layer: sweep.
#pragma once
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace ostrand::sweep {

/// Puts values behind each other.
class ByteWriter {
  public:
    std::string bytes;

    void put_byte (std::uint8_t value) { bytes += static_cast<char> (value); }
    void put_word (std::uint32_t value) { put (value, sizeof value); }
    void put_long (std::uint64_t value) { put (value, sizeof value); }
    void put_double (double value) { put_long (std::bit_cast<std::uint64_t> (value)); }
    void put_text (std::string_view text) {
        put_long (text.size ());
        bytes += text;
    }
    void put_words (std::span<const std::uint32_t> values) {
        put_long (values.size ());
        if constexpr (std::endian::native == std::endian::little) {
            const std::size_t end = bytes.size ();
            bytes.resize (end + values.size_bytes ());
            if (!values.empty ()) {
                std::memcpy (bytes.data () + end, values.data (), values.size_bytes ());
            }
        } else {
            for (const std::uint32_t value : values) put_word (value);
        }
    }

  private:
    void put (std::uint64_t value, std::size_t size) {
        for (std::size_t i = 0; i < size; ++i) bytes += static_cast<char> (value >> 8 * i & 0xFF);
    }
};

/// Takes them again. What is missing reads as 0, and from then on `well` is false.
class ByteReader {
  public:
    explicit ByteReader (std::string_view bytes) : rest_ (bytes) {}

    bool well () const { return well_; }
    /// All was read, and nothing is left.
    bool finished () const { return well_ && rest_.empty (); }
    std::string_view rest () const { return rest_; }

    std::uint8_t take_byte () { return static_cast<std::uint8_t> (take (1)); }
    std::uint32_t take_word () { return static_cast<std::uint32_t> (take (4)); }
    std::uint64_t take_long () { return take (8); }
    double take_double () { return std::bit_cast<double> (take_long ()); }
    std::string take_text () { return std::string (take_bytes (take_long ())); }
    std::vector<std::uint32_t> take_words () {
        const std::uint64_t size = take_long ();
        const std::string_view bytes =
            size <= rest_.size () / 4 ? take_bytes (4 * size) : take_bytes (rest_.size () + 1);
        std::vector<std::uint32_t> values (bytes.size () / 4);
        if constexpr (std::endian::native == std::endian::little) {
            if (!values.empty ()) std::memcpy (values.data (), bytes.data (), bytes.size ());
        } else {
            ByteReader each (bytes);
            for (std::uint32_t& value : values) value = each.take_word ();
        }
        return values;
    }

  private:
    std::string_view take_bytes (std::uint64_t size) {
        if (size > rest_.size ()) {
            well_ = false;
            rest_ = {};
            return {};
        }
        const std::string_view bytes = rest_.substr (0, size);
        rest_.remove_prefix (size);
        return bytes;
    }
    std::uint64_t take (std::size_t size) {
        std::uint64_t value = 0;
        const std::string_view bytes = take_bytes (size);
        for (std::size_t i = 0; i < bytes.size (); ++i) {
            value |= std::uint64_t{static_cast<unsigned char> (bytes[i])} << 8 * i;
        }
        return value;
    }

    std::string_view rest_;
    bool well_ = true;
};

} // namespace ostrand::sweep
