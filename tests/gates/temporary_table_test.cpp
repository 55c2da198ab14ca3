// Tables of extractions that go on at once in one folder.
#include "gates/temporary_table.h"

#include "support/full_disk.h"
#include "support/support.h"

#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>

namespace ostrand::gates {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct temporary_table : ::testing::Test {
    temporary_table () { std::filesystem::current_path (folder.path ()); }
    ~temporary_table () override { std::filesystem::current_path (before); }
    const std::filesystem::path before = std::filesystem::current_path ();
    testing::TemporaryFolder folder;
};

TEST_F (temporary_table, lives_as_long_as_its_object) {
    {
        const TemporaryTable table ("rows");
        EXPECT_TRUE (table.ok ());
        EXPECT_EQ (table.name (), "tmp_kinetics.csv");
        EXPECT_EQ (testing::file_text (folder / "tmp_kinetics.csv"), "rows");
    }
    EXPECT_THAT (folder.names (), IsEmpty ());
}

TEST_F (temporary_table, of_two_at_once_each_has_a_name_of_its_own) {
    std::optional<TemporaryTable> one ("one");
    std::optional<TemporaryTable> two ("two");
    EXPECT_EQ (two->name (), "tmp_kinetics_2.csv");
    EXPECT_EQ (testing::file_text (folder / "tmp_kinetics.csv"), "one");
    one.reset ();
    EXPECT_THAT (folder.names (), ElementsAre ("tmp_kinetics_2.csv"));
    one.emplace ("third");
    EXPECT_EQ (one->name (), "tmp_kinetics.csv");
    two.reset ();
    EXPECT_THAT (folder.names (), ElementsAre ("tmp_kinetics.csv"));
}

TEST_F (temporary_table, takes_the_place_of_a_longer_one_that_was_left_behind) {
    folder.write ("tmp_kinetics.csv", "left behind by a killed process");
    const TemporaryTable table ("rows");
    EXPECT_EQ (testing::file_text (folder / "tmp_kinetics.csv"), "rows");
}

TEST_F (temporary_table, goes_where_it_was_though_the_current_directory_changes) {
    {
        const TemporaryTable table ("rows");
        std::filesystem::current_path (before);
    }
    EXPECT_THAT (folder.names (), IsEmpty ());
}

TEST_F (temporary_table, that_cannot_be_written_says_why_and_leaves_nothing) {
    {
        const testing::FileSizeLimit full (2);
        const TemporaryTable table ("rows");
        EXPECT_EQ (table.error (), "File too large");
    }
    EXPECT_THAT (folder.names (), IsEmpty ());
    std::filesystem::create_directory ("tmp_kinetics.csv");
    EXPECT_EQ (TemporaryTable ("rows").error (), "Is a directory");
    EXPECT_THAT (folder.names (), ElementsAre ("tmp_kinetics.csv"));
}

} // namespace
} // namespace ostrand::gates
