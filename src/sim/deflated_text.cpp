// Compressing text in pieces.
#include "sim/deflated_text.h"

#include <algorithm>
#include <climits>
#include <cstddef>
#include <limits>
#include <new>
#include <utility>
#include <zlib.h>

namespace ostrand::sim {
namespace {

constexpr std::size_t window_size = 32768;

/// A raw deflate stream.
class Deflater {
  public:
    Deflater () {
        constexpr int memory_level = 8; // as gzip has it
        if (deflateInit2 (&stream_, Z_DEFAULT_COMPRESSION, Z_DEFLATED, -MAX_WBITS, memory_level,
                          Z_DEFAULT_STRATEGY) != Z_OK) {
            throw std::bad_alloc ();
        }
    }
    ~Deflater () { deflateEnd (&stream_); }
    Deflater (const Deflater&) = delete;
    Deflater& operator= (const Deflater&) = delete;
    z_stream& operator* () { return stream_; }

  private:
    z_stream stream_{};
};

Bytef* zlib_bytes (const char* text) {
    return const_cast<Bytef*> (reinterpret_cast<const Bytef*> (text)); // zlib does not write there
}

std::uint64_t load_little_endian (const char* from, std::size_t size) {
    std::uint64_t word = 0;
    for (std::size_t i = 0; i < size; ++i) {
        word |= std::uint64_t{static_cast<unsigned char> (from[i])} << i * CHAR_BIT;
    }
    return word;
}

void store_little_endian (std::uint64_t word, char* to) {
    for (std::size_t i = 0; i < sizeof word; ++i) to[i] = static_cast<char> (word >> i * CHAR_BIT);
}

void append_number (std::string& to, std::uint32_t number) {
    for (int shift = 0; shift < 32; shift += 8) {
        to += static_cast<char> (number >> shift & 0xFF);
    }
}

} // namespace

void DeflatedText::append (const DeflatedText& more) {
    const unsigned shift = bits % CHAR_BIT;
    const std::size_t begin = bits / CHAR_BIT; // where the new bits begin, within a byte maybe
    bytes.resize (begin + (shift != 0 ? 1 : 0) + more.bytes.size () + sizeof (std::uint64_t));
    char* to = bytes.data () + begin;
    const char* from = more.bytes.data ();
    std::size_t left = more.bytes.size ();
    std::uint64_t carry = static_cast<unsigned char> (*to);
    // Seven bytes at a time, so that shifted they fit a word with what was there before.
    constexpr std::size_t stride = sizeof (std::uint64_t) - 1;
    for (; left > 0; from += stride, to += stride) {
        const std::size_t now = std::min (stride, left);
        const std::uint64_t word = carry | load_little_endian (from, now) << shift;
        store_little_endian (word, to);
        carry = word >> stride * CHAR_BIT;
        left -= now;
    }
    bits += more.bits;
    bytes.resize ((bits + CHAR_BIT - 1) / CHAR_BIT);
    crc = static_cast<std::uint32_t> (
        crc32_combine (crc, more.crc, static_cast<z_off_t> (more.text_size)));
    text_size += more.text_size;
}

DeflatedText deflate_text (std::string_view text, std::string_view before) {
    DeflatedText result;
    result.text_size = text.size ();
    result.crc = static_cast<std::uint32_t> (
        crc32_z (crc32_z (0, nullptr, 0), zlib_bytes (text.data ()), text.size ()));
    if (text.empty ()) return result;
    Deflater deflater;
    z_stream& stream = *deflater;
    if (!before.empty ()) {
        const std::string_view window =
            before.substr (before.size () - std::min (before.size (), window_size));
        deflateSetDictionary (&stream, zlib_bytes (window.data ()),
                              static_cast<uInt> (window.size ()));
    }
    // What the blocks need, and beyond it a flush, which carries the last bits out.
    result.bytes.resize (deflateBound (&stream, text.size ()) + 64);
    std::size_t taken = 0;
    std::size_t given = 0;
    int flush = Z_BLOCK;
    const auto run = [&] {
        constexpr std::size_t most = std::numeric_limits<uInt>::max ();
        do {
            const std::size_t now = std::min (most, text.size () - taken);
            const std::size_t room = std::min (most, result.bytes.size () - given);
            stream.next_in = zlib_bytes (text.data () + taken);
            stream.avail_in = static_cast<uInt> (now);
            stream.next_out = zlib_bytes (result.bytes.data () + given);
            stream.avail_out = static_cast<uInt> (room);
            deflate (&stream, flush);
            taken += now - stream.avail_in;
            given += room - stream.avail_out;
        } while (taken < text.size ());
    };
    run ();
    unsigned bytes_left = 0;
    int bits_left = 0;
    deflatePending (&stream, &bytes_left, &bits_left);
    result.bits = std::uint64_t{given} * CHAR_BIT + static_cast<std::uint64_t> (bits_left);
    flush = Z_FULL_FLUSH;
    run ();
    result.bytes.resize ((result.bits + CHAR_BIT - 1) / CHAR_BIT);
    if (bits_left != 0) {
        const unsigned last = static_cast<unsigned char> (result.bytes.back ());
        result.bytes.back () = static_cast<char> (last & ((1U << bits_left) - 1));
    }
    return result;
}

GzipMember::GzipMember (std::function<bool (std::string_view bytes)> take)
    : take_ (std::move (take)) {
    constexpr std::string_view header{"\x1f\x8b\x08\0\0\0\0\0\0\x03", 10};
    pending_.bytes = header;
    pending_.bits = header.size () * CHAR_BIT;
}

bool GzipMember::append (const DeflatedText& piece) {
    pending_.append (piece);
    return pass_on ();
}

/// Keeps the last byte, when it is not full.
bool GzipMember::pass_on () {
    const std::size_t whole = pending_.bits / CHAR_BIT;
    if (!take_ (std::string_view (pending_.bytes).substr (0, whole))) return false;
    pending_.bytes.erase (0, whole);
    pending_.bits %= CHAR_BIT;
    return true;
}

bool GzipMember::finish () {
    // An empty last block with the fixed codes: a one, the two bits of its kind, seven of its end.
    DeflatedText end;
    end.bytes = std::string ("\x03\0", 2);
    end.bits = 10;
    pending_.append (end);
    append_number (pending_.bytes, pending_.crc);
    append_number (pending_.bytes, static_cast<std::uint32_t> (pending_.text_size));
    pending_.bits = pending_.bytes.size () * CHAR_BIT;
    return pass_on ();
}

} // namespace ostrand::sim
