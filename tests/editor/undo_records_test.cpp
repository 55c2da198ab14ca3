// Bytes of the undo file's records.
#include "editor/undo_records.h"

#include <bit>
#include <gtest/gtest.h>
#include <string>

namespace ostrand::editor {
namespace {

/// The bytes of 32-bit numbers, low byte first.
std::string words (std::initializer_list<std::uint32_t> numbers) {
    std::string bytes;
    for (const std::uint32_t number : numbers)
        for (int shift = 0; shift < 32; shift += 8)
            bytes += static_cast<char> (number >> shift & 255U);
    return bytes;
}

std::uint32_t bits (float number) { return std::bit_cast<std::uint32_t> (number); }

constexpr ViewOrigin origin{8.0F, -2.5F};

TEST (undo_records, a_selection_is_a_count_and_ids) {
    EXPECT_EQ (selection_record (origin, {3, 17}),
               words ({1, 12, bits (8), bits (-2.5F), 2, 3, 17}));
    EXPECT_EQ (selection_record (origin, {}), words ({1, 4, bits (8), bits (-2.5F), 0}));
}

TEST (undo_records, a_move_is_two_whole_numbers) {
    EXPECT_EQ (move_record (origin, 5, -7), words ({2, 8, bits (8), bits (-2.5F), 5, 0xFFFFFFF9U}));
}

TEST (undo_records, a_kind_and_a_colour_name_their_object) {
    EXPECT_EQ (kind_record (origin, 4, 0x111), words ({3, 8, bits (8), bits (-2.5F), 4, 0x111}));
    EXPECT_EQ (colour_record (origin, 4, 0xFF102000U),
               words ({4, 8, bits (8), bits (-2.5F), 4, 0xFF102000U}));
}

TEST (undo_records, labels_are_an_id_and_a_text_without_a_zero_byte) {
    EXPECT_EQ (labels_record (origin, 9, "{ab}{}"),
               words ({5, 10, bits (8), bits (-2.5F), 9}) + "{ab}{}");
}

TEST (undo_records, a_snapshot_has_its_selection_behind_its_text) {
    EXPECT_EQ (snapshot_record (origin, no_snapshot, "#a\n", {6}),
               words ({0, 3, bits (8), bits (-2.5F), 0xFFFFFFFFU, 8}) + "#a\n" + words ({1, 6}));
}

TEST (undo_records, a_snapshots_text_tells_name_and_flag) {
    EXPECT_EQ (snapshot_text (std::nullopt, false, "[N0 0 2 8 8]"),
               "#::::\n#modified = 0\n[N0 0 2 8 8]\n");
    EXPECT_EQ (snapshot_text ("/a b/c.net", true, "[N0 0 2 8 8]"),
               "#/a b/c.net\n#modified = 1\n[N0 0 2 8 8]\n");
    const auto read = read_snapshot_text ("#/a b/c.net\n#modified = 1\n[N0 0 2 8 8]\n");
    ASSERT_TRUE (read);
    EXPECT_EQ (read->file_name, "/a b/c.net");
    EXPECT_TRUE (read->modified);
    EXPECT_EQ (read->network, "[N0 0 2 8 8]\n");
    EXPECT_EQ (read_snapshot_text ("#::::\n#modified = 0\n")->file_name, std::nullopt);
    EXPECT_FALSE (read_snapshot_text ("#::::"));
    EXPECT_FALSE (read_snapshot_text ("::::\n#modified = 0\n"));
}

/// One record of each type.
std::vector<std::string> one_of_each () {
    return {snapshot_record (origin, 12, "text", {1, 2, 3}),
            selection_record (origin, {1, 2}),
            move_record (origin, 1, 2),
            kind_record (origin, 1, 2),
            colour_record (origin, 1, 2),
            labels_record (origin, 1, "{a}{b}")};
}

TEST (undo_records, every_record_reads_back) {
    for (const std::string& bytes : one_of_each ()) {
        const std::optional<Record> record = read_record (bytes);
        ASSERT_TRUE (record);
        EXPECT_EQ (record->header.length (), static_cast<std::int64_t> (bytes.size ()));
        EXPECT_EQ (record->header.origin.x, origin.x);
        EXPECT_EQ (record->header.origin.y, origin.y);
    }
    EXPECT_EQ (read_record (one_of_each ()[0])->ids, (std::vector<std::int32_t>{1, 2, 3}));
    EXPECT_EQ (read_record (one_of_each ()[0])->header.previous_snapshot, 12);
    EXPECT_EQ (read_record (one_of_each ()[5])->text, "{a}{b}");
}

TEST (undo_records, a_record_cut_at_any_byte_is_none) {
    for (const std::string& bytes : one_of_each ())
        for (std::size_t kept = 0; kept < bytes.size (); ++kept)
            EXPECT_FALSE (read_record (bytes.substr (0, kept))) << kept;
}

TEST (undo_records, sizes_that_cannot_be_are_refused) {
    EXPECT_FALSE (read_record_header (words ({6, 0, 0, 0})));
    EXPECT_FALSE (read_record_header (words ({0xFFFFFFFFU, 0, 0, 0})));
    EXPECT_FALSE (read_record_header (words ({1, 0x80000000U, 0, 0})));
    EXPECT_FALSE (read_record_header (words ({0, 3, 0, 0, 0, 3})));
    EXPECT_FALSE (read_record_header (words ({0, 3, 0, 0, 0xFFFFFFFEU, 4})));
    EXPECT_FALSE (read_record_header (words ({1, 4, 0x7FC00000U, 0}))); // no number
    EXPECT_FALSE (read_record (words ({1, 8, 0, 0, 5, 1})));            // more ids than there are
    EXPECT_FALSE (read_record (words ({2, 4, 0, 0, 5})));
}

} // namespace
} // namespace ostrand::editor
