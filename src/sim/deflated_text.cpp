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

/// A raw deflate stream.
struct TextDeflater::Stream {
    z_stream z{};
    Stream () {
        constexpr int memory_level = 8; // as gzip has it
        if (deflateInit2 (&z, Z_DEFAULT_COMPRESSION, Z_DEFLATED, -MAX_WBITS, memory_level,
                          Z_DEFAULT_STRATEGY) != Z_OK) {
            throw std::bad_alloc ();
        }
    }
    ~Stream () { deflateEnd (&z); }
    Stream (const Stream&) = delete;
    Stream& operator= (const Stream&) = delete;
};

TextDeflater::TextDeflater (std::string_view before) : stream_ (std::make_unique<Stream> ()) {
    result_.crc = static_cast<std::uint32_t> (crc32_z (0, nullptr, 0));
    if (before.empty ()) return;
    const std::string_view window =
        before.substr (before.size () - std::min (before.size (), window_size));
    deflateSetDictionary (&stream_->z, zlib_bytes (window.data ()),
                          static_cast<uInt> (window.size ()));
}

TextDeflater::~TextDeflater () = default;

void TextDeflater::run (std::string_view text, int flush) {
    constexpr std::size_t room = 1 << 16;
    z_stream& z = stream_->z;
    do {
        const std::size_t now =
            std::min<std::size_t> (text.size (), std::numeric_limits<uInt>::max ());
        z.next_in = zlib_bytes (text.data ());
        z.avail_in = static_cast<uInt> (now);
        do { // until it leaves room unused
            if (result_.bytes.size () < given_ + room) result_.bytes.resize (given_ + 2 * room);
            z.next_out = zlib_bytes (result_.bytes.data () + given_);
            z.avail_out = room;
            deflate (&z, flush);
            given_ += room - z.avail_out;
        } while (z.avail_out == 0);
        text.remove_prefix (now);
    } while (!text.empty ());
}

void TextDeflater::add (std::string_view text) {
    if (text.empty ()) return;
    result_.crc =
        static_cast<std::uint32_t> (crc32_z (result_.crc, zlib_bytes (text.data ()), text.size ()));
    result_.text_size += text.size ();
    run (text, Z_NO_FLUSH);
}

DeflatedText TextDeflater::finish () {
    if (result_.text_size == 0) return std::move (result_);
    run ({}, Z_BLOCK);
    unsigned bytes_left = 0;
    int bits_left = 0;
    deflatePending (&stream_->z, &bytes_left, &bits_left);
    result_.bits = std::uint64_t{given_} * CHAR_BIT + static_cast<std::uint64_t> (bits_left);
    run ({}, Z_FULL_FLUSH); // carries the last bits out
    result_.bytes.resize ((result_.bits + CHAR_BIT - 1) / CHAR_BIT);
    if (bits_left != 0) {
        const unsigned last = static_cast<unsigned char> (result_.bytes.back ());
        result_.bytes.back () = static_cast<char> (last & ((1U << bits_left) - 1));
    }
    return std::move (result_);
}

DeflatedText deflate_text (std::string_view text, std::string_view before) {
    TextDeflater deflater (before);
    deflater.add (text);
    return deflater.finish ();
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
