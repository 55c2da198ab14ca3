// Sweeps and merges whose memory ends anywhere: a failure with its reason, and nothing is lost.
#include "support/failing_memory.h"
#include "sweep/merge.h"
#include "sweep/sweep_support.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace ostrand::sweep {
namespace {

using ::testing::ElementsAre;
using testing::TemporaryFolder;

TEST (sweep_memory, wherever_it_ends_the_sweep_fails_and_can_go_on) {
    const TemporaryFolder folder;
    folder.write ("m.ssa", small_model);
    const SweepChoice choice{.replicates = 3};
    const std::string expected = bytes_of (request_in (folder, choice));
    int failures = 0;
    bool failed = true;
    for (std::uint64_t served = 0; failed; served = testing::FailingMemory::next (served)) {
        std::filesystem::remove (folder / "r.gz");
        SweepRequest request = request_in (folder, choice);
        request.resume = true;
        Outcome outcome;
        {
            SweepRun run (request);
            const testing::FailingMemory memory (served);
            outcome = run.run ();
            failed = memory.failed ();
        }
        ASSERT_FALSE (outcome.stopped ());
        ASSERT_EQ (outcome.reason.empty (), outcome.done ()) << served;
        if (outcome.failed ()) {
            ++failures;
            ASSERT_FALSE (std::filesystem::exists (folder / "r.gz")) << served;
            ASSERT_EQ (bytes_of (request), expected) << served;
        }
        ASSERT_EQ (testing::file_text (folder / "r.gz"), expected) << served;
        ASSERT_THAT (folder.names (), ElementsAre ("m.ssa", "r.gz"));
    }
    EXPECT_GT (failures, 50);
}

TEST (sweep_memory, wherever_it_ends_the_merge_fails_and_the_old_file_stays) {
    const TemporaryFolder folder;
    folder.write ("m.ssa", small_model);
    const std::string expected = bytes_of (request_in (folder));
    std::vector<std::string> shards;
    for (const std::uint32_t index : {1U, 2U, 3U}) {
        SweepRequest request = request_in (folder, {.shard = Shard{index, 3}});
        request.out = (folder / ("s" + std::to_string (index))).string ();
        ASSERT_NE (bytes_of (request), "");
        shards.push_back (request.out);
    }
    const std::string out = (folder / "r.gz").string ();
    int failures = 0;
    bool failed = true;
    for (std::uint64_t served = 0; failed; served = testing::FailingMemory::next (served)) {
        folder.write ("r.gz", "old");
        ShardMerge merge (out, shards);
        Outcome outcome;
        {
            const testing::FailingMemory memory (served);
            outcome = merge.run ();
            failed = memory.failed ();
        }
        ASSERT_FALSE (outcome.stopped ());
        ASSERT_EQ (testing::file_text (out), outcome.failed () ? "old" : expected) << served;
        failures += outcome.failed () ? 1 : 0;
    }
    EXPECT_GT (failures, 50);
    EXPECT_THAT (folder.names (), ElementsAre ("m.ssa", "r.gz", "s1", "s2", "s3"));
}

} // namespace
} // namespace ostrand::sweep
