// Results cut into units, compressed apart and put together.
#include "sim/decimal_lines.h"
#include "sim/result_units.h"

#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <random>
#include <zlib.h>

namespace ostrand::sim {
namespace {

std::string line (std::uint32_t count) {
    std::array<char, line_room> text{};
    return {text.data (), put_line (text.data (), count)};
}

TEST (decimal_lines, counts_of_every_length_are_written) {
    for (std::uint64_t power = 1; power <= 10'000'000'000; power *= 10) {
        for (const std::int64_t offset : {-1, 0, 1, 7}) {
            const auto count =
                static_cast<std::uint32_t> (static_cast<std::int64_t> (power) + offset);
            EXPECT_EQ (line (count), std::to_string (count) + "\n");
        }
    }
    EXPECT_EQ (line (0), "0\n");
    EXPECT_EQ (line (4294967295U), "4294967295\n");
}

TEST (decimal_lines, random_counts_are_written_as_the_library_does) {
    std::mt19937 random (1);
    for (int i = 0; i < 100'000; ++i) {
        const auto count = static_cast<std::uint32_t> (random ()) >> i % 32;
        ASSERT_EQ (line (count), std::to_string (count) + "\n");
    }
}

/// What zlib reads from a gzip file that has exactly one member.
std::string unpacked_member (const std::string& bytes) {
    z_stream stream{};
    inflateInit2 (&stream, MAX_WBITS + 16);
    stream.next_in = reinterpret_cast<Bytef*> (const_cast<char*> (bytes.data ()));
    stream.avail_in = static_cast<uInt> (bytes.size ());
    std::string text;
    std::array<char, 65536> buffer{};
    int status = Z_OK;
    while (status == Z_OK) {
        stream.next_out = reinterpret_cast<Bytef*> (buffer.data ());
        stream.avail_out = buffer.size ();
        status = inflate (&stream, Z_NO_FLUSH);
        text.append (buffer.data (), buffer.size () - stream.avail_out);
    }
    const bool whole = status == Z_STREAM_END && stream.avail_in == 0;
    inflateEnd (&stream);
    return whole ? text : "(damaged)";
}

std::string member_of (const std::vector<DeflatedText>& pieces) {
    std::string bytes;
    GzipMember member ([&bytes] (std::string_view more) {
        bytes += more;
        return true;
    });
    for (const DeflatedText& piece : pieces) EXPECT_TRUE (member.append (piece));
    EXPECT_TRUE (member.finish ());
    return bytes;
}

TEST (deflated_text, no_piece_at_all_is_an_empty_file) {
    EXPECT_EQ (unpacked_member (member_of ({})), "");
    EXPECT_EQ (unpacked_member (member_of ({DeflatedText (), deflate_text ("")})), "");
}

TEST (deflated_text, pieces_of_any_size_and_text_become_one_member) {
    std::mt19937 generator (2);
    const auto random = [&generator] { return static_cast<unsigned> (generator ()); };
    for (int round = 0; round < 200; ++round) {
        std::string all = "a head with \xE9\x80\xFF bytes of any kind\n";
        std::vector<DeflatedText> pieces{deflate_text (all)};
        for (unsigned piece = 0; piece < 1 + random () % 6; ++piece) {
            std::string text;
            const unsigned size = random () % (round % 10 == 0 ? 30000 : 40);
            const unsigned digits = 1 + random () % 10;
            for (unsigned i = 0; i < size; ++i) {
                text += "0123456789\n"[random () % digits + (random () % 4 == 0 ? 1 : 0)];
            }
            pieces.push_back (deflate_text (text, random () % 2 == 0 ? std::string () : all));
            // Without the text in front of it a piece could not be unpacked; it must be right.
            all += text;
        }
        // The window counts only where it is what really stands before.
        ASSERT_EQ (unpacked_member (member_of (pieces)), all) << round;
    }
}

TEST (deflated_text, pieces_are_put_together_in_any_grouping) {
    const DeflatedText a = deflate_text ("1\n22\n333\n");
    const DeflatedText b = deflate_text ("4\n4\n4\n4\n");
    const DeflatedText c = deflate_text ("12345\n67890\n");
    DeflatedText left = a;
    left.append (b);
    left.append (c);
    DeflatedText right = b;
    right.append (c);
    DeflatedText all = a;
    all.append (right);
    EXPECT_EQ (left.bytes, all.bytes);
    EXPECT_EQ (left.bits, all.bits);
    EXPECT_EQ (left.crc, all.crc);
    EXPECT_EQ (left.text_size, 29U);
}

TEST (deflated_text, a_taker_that_refuses_ends_it) {
    int calls = 0;
    GzipMember member ([&calls] (std::string_view) { return ++calls < 2; });
    EXPECT_TRUE (member.append (deflate_text ("1\n")));
    EXPECT_FALSE (member.append (deflate_text ("2\n")));
}

TEST (deflated_text, the_member_holds_neither_name_nor_time) {
    const std::string bytes = member_of ({deflate_text ("1\n")});
    EXPECT_EQ (bytes.substr (0, 10), std::string ("\x1f\x8b\x08\0\0\0\0\0\0\x03", 10));
}

// ---- units ---------------------------------------------------------------------------------

/// Units must lie behind each other and cover every line once.
void expect_cover (std::uint64_t simulations, std::uint64_t lines_each) {
    const ResultUnits units (simulations, lines_each);
    std::uint64_t line = 0; // of all
    for (std::uint64_t i = 0; i < units.count (); ++i) {
        const ResultUnit unit = units.unit (i);
        ASSERT_EQ (unit.first_simulation * lines_each + unit.first_line, line);
        ASSERT_TRUE (unit.simulations == 1 || (unit.first_line == 0 && unit.lines == lines_each));
        ASSERT_GT (unit.size (), 0U);
        ASSERT_LT (unit.size (), 2 * unit_lines);
        const bool last = i + 1 == units.count ();
        ASSERT_TRUE (last || unit.size () >= unit_lines);
        const std::uint64_t cell = units.cell_of_unit (i);
        ASSERT_EQ (units.cell_of_simulation (unit.first_simulation), cell);
        ASSERT_EQ (units.cell_of_simulation (unit.first_simulation + unit.simulations - 1), cell);
        line += unit.size ();
    }
    ASSERT_EQ (line, simulations * lines_each);
    std::uint64_t simulation = 0;
    std::uint64_t unit = 0;
    for (std::uint64_t i = 0; i < units.cell_count (); ++i) {
        const ResultCell cell = units.cell (i);
        ASSERT_EQ (cell.first_simulation, simulation);
        ASSERT_EQ (cell.first_unit, unit);
        ASSERT_TRUE (cell.simulations == 1 || cell.units == 1);
        simulation += cell.simulations;
        unit += cell.units;
    }
    ASSERT_EQ (simulation, simulations);
    ASSERT_EQ (unit, units.count ());
}

TEST (result_units, every_line_is_in_one_unit) {
    for (const std::uint64_t simulations : {1U, 2U, 7U, 5000U, 300'000U}) {
        for (const std::uint64_t lines :
             {1U, 10U, 1000U, 524'287U, 524'288U, 524'289U, 1'048'575U, 1'048'576U, 3'000'000U}) {
            if (simulations * lines > std::uint64_t{10'000'000'000}) continue;
            ASSERT_NO_FATAL_FAILURE (expect_cover (simulations, lines))
                << simulations << " simulations of " << lines;
        }
    }
}

TEST (result_units, a_result_without_data_has_none) {
    EXPECT_EQ (ResultUnits (5, 0).count (), 0U);
    EXPECT_EQ (ResultUnits (0, 5).count (), 0U);
}

std::vector<std::uint32_t> wandering (std::size_t size) {
    std::vector<std::uint32_t> counts (size);
    std::mt19937 random (3);
    double count = 40'000;
    for (std::uint32_t& each : counts) {
        count += (static_cast<double> (random () % 1000) / 1000 - 0.5) * std::sqrt (count);
        each = static_cast<std::uint32_t> (count);
    }
    return counts;
}

TEST (result_units, a_unit_unpacks_to_its_lines) {
    for (const std::size_t size : {std::size_t{1}, std::size_t{1000}, std::size_t{700'000}}) {
        const std::vector<std::uint32_t> counts = wandering (size);
        std::string expected;
        for (const std::uint32_t count : counts) expected += std::to_string (count) + "\n";
        EXPECT_EQ (unpacked_member (member_of ({deflate_unit (counts)})), expected);
    }
}

TEST (result_units, series_that_change_have_pieces_and_flat_ones_have_not) {
    EXPECT_EQ (piece_count (wandering (700'000)), 10U);
    EXPECT_EQ (piece_count (wandering (100'000)), 1U);
    EXPECT_EQ (piece_count (std::vector<std::uint32_t> (700'000, 60'225)), 1U);
}

/// Bytes that zlib makes of all lines in one stream.
double one_stream (const std::vector<std::uint32_t>& counts) {
    std::string text;
    for (const std::uint32_t count : counts) text += std::to_string (count) + "\n";
    uLongf size = compressBound (static_cast<uLong> (text.size ()));
    std::string bytes (size, '\0');
    compress2 (reinterpret_cast<Bytef*> (bytes.data ()), &size,
               reinterpret_cast<const Bytef*> (text.data ()), static_cast<uLong> (text.size ()),
               Z_DEFAULT_COMPRESSION);
    return static_cast<double> (size);
}

TEST (result_units, units_take_hardly_more_room_than_one_stream) {
    const auto in_units = [] (const std::vector<std::uint32_t>& counts) {
        std::vector<DeflatedText> units;
        for (std::size_t at = 0; at < counts.size (); at += unit_lines) {
            const std::size_t size = std::min<std::size_t> (unit_lines, counts.size () - at);
            units.push_back (deflate_unit (std::span (counts).subspan (at, size)));
        }
        return static_cast<double> (member_of (units).size ());
    };
    const std::vector<std::uint32_t> zeros (4 * unit_lines, 0);
    EXPECT_LT (in_units (zeros), 1.02 * one_stream (zeros));
    const std::vector<std::uint32_t> flat (4 * unit_lines, 60'225);
    EXPECT_LT (in_units (flat), 1.02 * one_stream (flat));
    const std::vector<std::uint32_t> changing = wandering (unit_lines + 1000);
    EXPECT_LT (in_units (changing), 1.02 * one_stream (changing));
}

} // namespace
} // namespace ostrand::sim
