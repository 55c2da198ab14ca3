// Journals: what they keep, and what becomes of damaged ones.
#include "sweep/journal.h"
#include "sweep/sweep_support.h"

#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace ostrand::sweep {
namespace {

using ::testing::ElementsAre;
using testing::TemporaryFolder;

struct journal : ::testing::Test {
    TemporaryFolder folder;
    std::filesystem::path path = folder / "r.gz.sweep";
    std::unique_ptr<SweepPlan> plan = plan_of (small_model);

    /// A journal with three records, closed again.
    void write_three () const {
        Journal written (path);
        ASSERT_TRUE (written.begin (plan->identity ()));
        for (const char* content : {"first", "second", "third"}) {
            ASSERT_TRUE (written.append (RecordKind::series, content));
        }
    }
    std::string bytes () const { return testing::file_text (path); }
    void put (const std::string& bytes) const {
        std::ofstream (path, std::ios::binary | std::ios::trunc) << bytes;
    }
    static std::vector<std::string> contents (Journal& opened) {
        std::vector<std::string> all;
        const bool well =
            opened.replay ([&all] (RecordKind, std::string_view content, const RecordPlace&) {
                all.emplace_back (content);
                return true;
            });
        if (!well) all.push_back ("(" + opened.error () + ")");
        return all;
    }
};

TEST_F (journal, a_new_one_is_fresh_and_empty) {
    Journal opened (path);
    EXPECT_EQ (opened.standing (), Journal::Standing::fresh);
    ASSERT_TRUE (opened.begin (plan->identity ()));
    EXPECT_TRUE (opened.is_empty ());
}

TEST_F (journal, what_was_kept_is_there_again) {
    write_three ();
    Journal opened (path);
    EXPECT_EQ (opened.standing (), Journal::Standing::leftover);
    ASSERT_TRUE (opened.identity ());
    EXPECT_EQ (opened.identity ()->to_bytes (), plan->identity ().to_bytes ());
    EXPECT_THAT (contents (opened), ElementsAre ("first", "second", "third"));
    const auto place = opened.append (RecordKind::unit, "fourth");
    ASSERT_TRUE (place);
    EXPECT_EQ (opened.read (*place), "fourth");
    EXPECT_FALSE (opened.is_empty ());
}

TEST_F (journal, a_tail_torn_at_any_byte_is_cut_off_and_the_rest_goes_on) {
    write_three ();
    const std::string whole = bytes ();
    const std::size_t frame = frame_head + frame_tail;
    const std::size_t third = whole.size () - frame - 5;
    const std::size_t second = third - frame - 6;
    for (std::size_t size = second; size < whole.size (); ++size) {
        put (whole.substr (0, size));
        Journal opened (path);
        ASSERT_EQ (opened.standing (), Journal::Standing::leftover) << size;
        const std::size_t expected = size < third ? 1 : 2;
        ASSERT_EQ (contents (opened).size (), expected) << size;
        ASSERT_TRUE (opened.append (RecordKind::series, "third"));
        opened.remove ();
    }
    put (whole.substr (0, whole.size () - 3));
    {
        Journal opened (path);
        EXPECT_THAT (contents (opened), ElementsAre ("first", "second"));
        ASSERT_TRUE (opened.append (RecordKind::series, "third"));
    }
    EXPECT_EQ (bytes (), whole);
}

TEST_F (journal, zeros_behind_the_last_record_are_a_torn_tail) {
    write_three ();
    put (bytes () + std::string (5000, '\0'));
    Journal opened (path);
    EXPECT_THAT (contents (opened), ElementsAre ("first", "second", "third"));
}

TEST_F (journal, a_record_that_has_changed_is_damage_and_the_file_stays) {
    write_three ();
    const std::string whole = bytes ();
    const std::size_t at = whole.find ("second");
    for (const std::size_t place : {at, at - 10, at + 7}) {
        std::string changed = whole;
        changed[place] = static_cast<char> (changed[place] ^ 4);
        put (changed);
        Journal opened (path);
        EXPECT_THAT (contents (opened), ElementsAre ("first", "(it is damaged)")) << place;
        EXPECT_EQ (bytes (), changed);
    }
}

TEST_F (journal, one_cut_off_while_it_was_begun_is_fresh) {
    write_three ();
    const std::string whole = bytes ();
    const std::size_t begun = whole.find ("first") - frame_head;
    for (std::size_t size = 0; size < begun; ++size) {
        put (whole.substr (0, size));
        EXPECT_EQ (Journal (path).standing (), Journal::Standing::fresh) << size;
    }
}

TEST_F (journal, files_that_are_none_are_foreign_and_stay) {
    for (const std::string text :
         {"something else", "ostrand sweep 2\n and more of it, much more", "ostrand shard 1\n"}) {
        put (text);
        EXPECT_EQ (Journal (path).standing (), Journal::Standing::foreign) << text;
        EXPECT_EQ (bytes (), text);
    }
    std::filesystem::remove (path);
    std::filesystem::create_directory (path);
    EXPECT_EQ (Journal (path).standing (), Journal::Standing::foreign);
}

TEST_F (journal, two_at_once_are_not_possible) {
    Journal first (path);
    EXPECT_EQ (Journal (path).standing (), Journal::Standing::busy);
}

TEST_F (journal, one_that_cannot_be_made_says_why) {
    const Journal opened (folder / "nowhere" / "r.sweep");
    EXPECT_EQ (opened.standing (), Journal::Standing::failed);
    EXPECT_EQ (opened.error (), "No such file or directory");
}

TEST_F (journal, a_temporary_one_leaves_nothing) {
    const std::unique_ptr<Journal> temporary = Journal::temporary ();
    ASSERT_EQ (temporary->standing (), Journal::Standing::fresh);
    ASSERT_TRUE (temporary->begin (plan->identity ()));
    const auto place = temporary->append (RecordKind::series, "content");
    ASSERT_TRUE (place);
    EXPECT_EQ (temporary->read (*place), "content");
}

TEST_F (journal, identities_differ_in_words) {
    const SweepIdentity own = plan->identity ();
    const auto differs = [&own] (std::string_view text, const SweepChoice& choice) {
        return difference (plan_of (text, choice)->identity (), own);
    };
    EXPECT_EQ (differs (small_model, {}), "");
    EXPECT_EQ (differs (std::string ("// a remark\n") + std::string (small_model), {}), "");
    EXPECT_EQ (differs (std::string (small_model) + "[b] = 3 uM;", {}), "it is of another model");
    EXPECT_EQ (differs (std::string (small_model) + "x -> y | 1;", {}), "it is of another model");
    EXPECT_EQ (differs (std::string (small_model) + "duration = 6;", {}), "it is of another model");
    EXPECT_EQ (differs (std::string (small_model) + "display (a #00ff00);", {}),
               "it is of another model");
    EXPECT_EQ (differs (std::string (small_model) + "linked (a, b);", {}),
               "it is of another model");
    EXPECT_EQ (differs (small_model, {.replicates = 3}), "it has 3 replicates, not 1");
    EXPECT_EQ (differs (small_model, {.stochastic = false}), "it is of the deterministic engine");
    EXPECT_EQ (differs (small_model, {.seed = 5}), "it is of seed 5, not without a seed");
    EXPECT_EQ (difference_of_shards (Shard{1, 3}, Shard{2, 3}),
               "it is of shard 1/3, not of shard 2/3");
    EXPECT_EQ (difference_of_shards (std::nullopt, Shard{2, 3}),
               "it is of the whole sweep, not of shard 2/3");
    EXPECT_EQ (difference_of_shards (Shard{2, 3}, Shard{2, 3}), "");
}

TEST_F (journal, damaged_identities_are_none) {
    const std::string bytes = plan->identity ().to_bytes ();
    ASSERT_TRUE (SweepIdentity::from_bytes (bytes));
    for (std::size_t size = 0; size < bytes.size (); ++size) {
        EXPECT_FALSE (SweepIdentity::from_bytes (bytes.substr (0, size))) << size;
    }
    EXPECT_FALSE (SweepIdentity::from_bytes (bytes + "x"));
}

} // namespace
} // namespace ostrand::sweep
