// Records and their bytes.
#include "sweep/bytes.h"
#include "sweep/record.h"
#include "sweep/task.h"

#include <gtest/gtest.h>
#include <limits>

namespace ostrand::sweep {
namespace {

TEST (bytes, what_is_put_is_taken_again) {
    ByteWriter writer;
    writer.put_byte (200);
    writer.put_word (0x12345678);
    writer.put_long (0x123456789ABCDEF0);
    writer.put_double (-0.1);
    writer.put_text ("a\0b");
    writer.put_words (std::vector<std::uint32_t>{1, 0xFFFFFFFF});
    EXPECT_EQ (writer.bytes.substr (1, 4), "\x78\x56\x34\x12"); // little-endian everywhere
    ByteReader reader (writer.bytes);
    EXPECT_EQ (reader.take_byte (), 200);
    EXPECT_EQ (reader.take_word (), 0x12345678U);
    EXPECT_EQ (reader.take_long (), 0x123456789ABCDEF0U);
    EXPECT_EQ (reader.take_double (), -0.1);
    EXPECT_EQ (reader.take_text (), "a");
    EXPECT_EQ (reader.take_words (), (std::vector<std::uint32_t>{1, 0xFFFFFFFF}));
    EXPECT_TRUE (reader.finished ());
}

TEST (bytes, what_is_missing_reads_as_nothing_and_is_noticed) {
    ByteWriter writer;
    writer.put_words (std::vector<std::uint32_t>{1, 2, 3});
    for (std::size_t size = 0; size < writer.bytes.size (); ++size) {
        ByteReader reader (std::string_view (writer.bytes).substr (0, size));
        EXPECT_TRUE (reader.take_words ().empty ());
        EXPECT_FALSE (reader.well ());
        EXPECT_EQ (reader.take_long (), 0U);
    }
    // A length that no memory could hold.
    ByteWriter huge;
    huge.put_long (std::numeric_limits<std::uint64_t>::max ());
    ByteReader words (huge.bytes);
    EXPECT_TRUE (words.take_words ().empty ());
    EXPECT_FALSE (words.well ());
    ByteReader text (huge.bytes);
    EXPECT_EQ (text.take_text (), "");
    EXPECT_FALSE (text.well ());
}

SeriesRecord series () {
    SeriesRecord record;
    record.first_simulation = 5;
    record.simulations = 2;
    record.first_point = 3;
    record.points = 2;
    record.time_steps = 45'678;
    record.counts = {1, 2, 3, 4};
    record.states.resize (2);
    record.states[0].counts = {7, 8};
    record.states[1].amounts = {0.5, 1e300};
    record.states[1].random = {1, 2};
    return record;
}

TEST (record, a_series_comes_back_from_its_bytes) {
    const SeriesRecord record = series ();
    const auto again = SeriesRecord::from_bytes (record.to_bytes ());
    ASSERT_TRUE (again);
    EXPECT_EQ (again->to_bytes (), record.to_bytes ());
    EXPECT_EQ (again->counts, record.counts);
    EXPECT_EQ (again->states[1].amounts, record.states[1].amounts);
    EXPECT_FALSE (again->finished ());
}

TEST (record, a_unit_comes_back_from_its_bytes) {
    const UnitRecord record{9, sim::deflate_text ("1\n2\n3\n")};
    const auto again = UnitRecord::from_bytes (record.to_bytes ());
    ASSERT_TRUE (again);
    EXPECT_EQ (again->to_bytes (), record.to_bytes ());
    EXPECT_EQ (again->text.bytes, record.text.bytes);
}

TEST (record, shortened_ones_are_none) {
    const std::string bytes = series ().to_bytes ();
    for (std::size_t size = 0; size < bytes.size (); ++size) {
        EXPECT_FALSE (SeriesRecord::from_bytes (bytes.substr (0, size))) << size;
    }
    const std::string unit = UnitRecord{9, sim::deflate_text ("1\n")}.to_bytes ();
    for (std::size_t size = 0; size < unit.size (); ++size) {
        EXPECT_FALSE (UnitRecord::from_bytes (unit.substr (0, size))) << size;
    }
}

TEST (record, a_changed_bit_of_a_frame_is_noticed) {
    const std::string frame = framed (RecordKind::series, "some content");
    const std::string head = frame.substr (0, frame_head);
    const std::string body = frame.substr (frame_head);
    ASSERT_TRUE (read_frame_head (head));
    EXPECT_EQ (read_frame_head (head)->kind, RecordKind::series);
    EXPECT_EQ (read_frame_head (head)->size, 12U);
    EXPECT_TRUE (is_sound_body (body));
    for (std::size_t bit = 0; bit < 8 * head.size (); ++bit) {
        std::string changed = head;
        changed[bit / 8] = static_cast<char> (changed[bit / 8] ^ 1 << bit % 8);
        EXPECT_FALSE (read_frame_head (changed)) << bit;
    }
    for (std::size_t bit = 0; bit < 8 * body.size (); ++bit) {
        std::string changed = body;
        changed[bit / 8] = static_cast<char> (changed[bit / 8] ^ 1 << bit % 8);
        EXPECT_FALSE (is_sound_body (changed)) << bit;
    }
}

TEST (task, tasks_come_back_from_their_bytes) {
    Task simulate;
    simulate.first_simulation = 10;
    simulate.simulations = 3;
    simulate.time_steps = 77;
    simulate.states = series ().states;
    Task pack;
    pack.kind = Task::Kind::pack;
    pack.unit = 4;
    pack.counts = {1, 2, 3};
    for (const Task& task : {simulate, pack}) {
        const auto again = Task::from_bytes (task.to_bytes ());
        ASSERT_TRUE (again);
        EXPECT_EQ (again->to_bytes (), task.to_bytes ());
        for (std::size_t size = 0; size < task.to_bytes ().size (); ++size) {
            EXPECT_FALSE (Task::from_bytes (task.to_bytes ().substr (0, size)));
        }
    }
}

} // namespace
} // namespace ostrand::sweep
