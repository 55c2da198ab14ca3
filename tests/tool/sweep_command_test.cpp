// ostrand-tool sweep and merge as programs: interruptions, kills, full disks, words.
#include "base/process.h"
#include "support/support.h"

#include <chrono>
#include <csignal>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <random>
#include <thread>
#include <unistd.h>

namespace ostrand::tool {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using testing::ProgramResult;
using ::testing::StartsWith;
using testing::TemporaryFolder;
using Clock = std::chrono::steady_clock;

const std::string program = std::string (OSTRAND_BUILD_DIR) + "/ostrand-tool";

/// Some tenths of a second of work for two threads.
constexpr std::string_view model =
    "duration = 40; [a] = 1 uM -> 8 uM : 1 uM; [b] = 1 uM, 5 uM, 9 uM, 20 uM; [e] = 0.1 uM;"
    "[f] = 0.1 uM; e : a -> c | 5 uM - 30; f : c + b -> g | 5 uM, 1 uM - 20; a + b -> d | 0.5;"
    "d -> a | 0.0001; display (a #ff0000, c, d, g);";

struct sweep_command : ::testing::Test {
    void SetUp () override { folder.write ("m.ssa", model); }
    ProgramResult run (const std::vector<std::string>& words) const {
        std::vector<std::string> all{program};
        all.insert (all.end (), words.begin (), words.end ());
        return testing::run_program (all, folder.path ());
    }
    std::string path (std::string_view name) const { return (folder / name).string (); }
    std::string bytes (std::string_view name) const { return testing::file_text (folder / name); }
    TemporaryFolder folder;
};

TEST_F (sweep_command, writes_what_the_simulator_writes) {
    ASSERT_EQ (run ({"sweep", "m.ssa", "-o", "r.gz"}).status, 0);
    ASSERT_EQ (
        testing::run_program ({"ostrand", "-a", "m.ssa", "-out", "a.gz"}, folder.path ()).status,
        0);
    EXPECT_EQ (testing::unzipped_file (folder / "r.gz"), testing::unzipped_file (folder / "a.gz"));
    EXPECT_EQ (bytes ("r.gz"), bytes ("a.gz"));
    EXPECT_THAT (folder.names (), ElementsAre ("a.gz", "m.ssa", "r.gz"));
}

TEST_F (sweep_command, standard_output_takes_the_same_bytes) {
    ASSERT_EQ (run ({"sweep", "m.ssa", "-o", "r.gz"}).status, 0);
    const ProgramResult result = run ({"sweep", "m.ssa", "-o", "-"});
    EXPECT_EQ (result.status, 0);
    EXPECT_EQ (result.error, "");
    EXPECT_EQ (result.out, bytes ("r.gz"));
}

TEST_F (sweep_command, gzip_takes_the_result) {
    ASSERT_EQ (run ({"sweep", "m.ssa", "-o", "r.gz", "--replicates", "40"}).status, 0);
    EXPECT_EQ (testing::run_program ({"gzip", "-t", "r.gz"}, folder.path ()).status, 0);
    EXPECT_EQ (testing::run_program ({"gzip", "-cd", "r.gz"}, folder.path ()).out,
               testing::unzipped_file (folder / "r.gz"));
}

TEST_F (sweep_command, words_that_do_not_fit_are_wrong_usage) {
    const auto fault = [this] (std::vector<std::string> words) {
        words.insert (words.begin (), {"sweep", "m.ssa", "-o", "r.gz"});
        const ProgramResult result = run (words);
        EXPECT_EQ (result.status, 2);
        return result.error;
    };
    EXPECT_EQ (fault ({"--replicates", "0"}),
               "ostrand-tool sweep: --replicates needs a whole number from 1 to 4294967295, not "
               "'0'\n");
    EXPECT_EQ (fault ({"--seed", "-1"}),
               "ostrand-tool sweep: --seed needs a whole number from 0 to 9223372036854775807, not "
               "'-1'\n");
    EXPECT_EQ (fault ({"--threads", "two"}),
               "ostrand-tool sweep: --threads needs a whole number from 1 to 4294967295, not "
               "'two'\n");
    for (const char* shard : {"0/3", "4/3", "1", "/", "1/0", "a/b", "1/3/5", "-1/3"}) {
        EXPECT_EQ (fault ({"--shard", shard}),
                   "ostrand-tool sweep: --shard needs I/N, with I from 1 to N, not '" +
                       std::string (shard) + "'\n");
    }
    EXPECT_THAT (fault ({"--speed", "5"}), HasSubstr ("unknown option '--speed'"));
    EXPECT_EQ (run ({"sweep", "m.ssa"}).error, "ostrand-tool sweep: -o OUT is missing\n");
    EXPECT_EQ (run ({"merge", "s1"}).error, "ostrand-tool merge: -o OUT is missing\n");
    EXPECT_EQ (run ({"merge", "-o", "x"}).status, 2);
    EXPECT_THAT (folder.names (), ElementsAre ("m.ssa"));
}

TEST_F (sweep_command, help_tells_every_option) {
    const std::string help = run ({"sweep", "--help"}).out;
    for (const char* option : {"-o OUT", "--replicates N", "--deterministic", "--resume",
                               "--shard I/N", "--threads N", "--seed N"}) {
        EXPECT_THAT (help, HasSubstr (option));
    }
    EXPECT_THAT (run ({"merge", "--help"}).out, HasSubstr ("-o OUT"));
}

TEST_F (sweep_command, shards_are_merged_by_the_command) {
    ASSERT_EQ (run ({"sweep", "m.ssa", "-o", "r.gz", "--seed=9"}).status, 0);
    for (const char* shard : {"1/2", "2/2"}) {
        ASSERT_EQ (run ({"sweep", "m.ssa", "-o", std::string ("s") + shard[0], "--shard", shard,
                         "--seed", "9"})
                       .status,
                   0);
    }
    ASSERT_EQ (run ({"merge", "-o", "merged.gz", "s2", "s1"}).status, 0);
    EXPECT_EQ (bytes ("merged.gz"), bytes ("r.gz"));
    const ProgramResult refused = run ({"merge", "-o", "merged.gz", "s2"});
    EXPECT_EQ (refused.status, 1);
    EXPECT_EQ (refused.error, "ostrand-tool merge: shard 1/2 is missing\n");
    EXPECT_EQ (bytes ("merged.gz"), bytes ("r.gz"));
}

TEST_F (sweep_command, the_scripts_of_job_arrays_make_the_file_of_one_machine) {
    ASSERT_EQ (run ({"sweep", "m.ssa", "-o", "r.gz", "--seed=9"}).status, 0);
    const std::string cluster = testing::source_path ("examples/cluster").string ();
    const auto job = [&] (int index, const std::string& settings) {
        return testing::run_program (
            {"env", "OSTRAND_TOOL=" + program, "SLURM_ARRAY_TASK_MIN=1", "SLURM_ARRAY_TASK_STEP=1",
             "SLURM_ARRAY_TASK_MAX=3", "SLURM_ARRAY_TASK_ID=" + std::to_string (index), settings,
             "bash", cluster + "/sweep.slurm", "m.ssa", "array.gz", "--seed", "9"},
            folder.path ());
    };
    for (const int index : {3, 1, 2}) ASSERT_EQ (job (index, "SLURM_CPUS_PER_TASK=2").status, 0);
    ASSERT_EQ (testing::run_program ({"env", "OSTRAND_TOOL=" + program, "bash",
                                      cluster + "/merge.slurm", "array.gz", "3"},
                                     folder.path ())
                   .status,
               0);
    EXPECT_EQ (bytes ("array.gz"), bytes ("r.gz"));
    EXPECT_THAT (folder.names (), ElementsAre ("array.gz", "m.ssa", "r.gz"));
    EXPECT_EQ (job (2, "SLURM_ARRAY_TASK_MIN=2").status, 2);
    EXPECT_EQ (job (2, "OSTRAND_SHARDS=3").status, 0);
}

/// Starts a sweep with output to /dev/null and sends it a signal after so long. Gives its status.
int killed_after (std::vector<std::string> words, const TemporaryFolder& folder, int signal_number,
                  std::chrono::milliseconds delay) {
    words.insert (words.begin (), {"sh", "-c", "cd \"$0\" && exec \"$@\" 2>error.txt",
                                   folder.path ().string (), program, "sweep"});
    const ChildProcess child (words);
    EXPECT_TRUE (child.started ());
    std::this_thread::sleep_for (delay);
    if (child.is_running ()) ::kill (child.id (), signal_number);
    return child.wait ();
}

TEST_F (sweep_command, kills_at_twenty_random_moments_cost_no_more_than_what_was_in_work) {
    const std::vector<std::string> words{"m.ssa", "-o",     "r.gz", "--replicates",
                                         "12",    "--seed", "4"};
    std::vector<std::string> all = words;
    all.insert (all.begin (), "sweep");
    ASSERT_EQ (run (all).status, 0);
    const std::string expected = bytes ("r.gz");
    std::filesystem::remove (folder / "r.gz");
    std::mt19937 random (6);
    int kills = 0;
    int rounds = 0;
    while (kills < 20 && rounds < 60) {
        ++rounds;
        std::vector<std::string> resumed = words;
        resumed.insert (resumed.end (),
                        {"--resume", "--threads", std::to_string (1 + random () % 3)});
        const int status =
            killed_after (resumed, folder, SIGKILL, std::chrono::milliseconds (random () % 250));
        if (status == 128 + SIGKILL) {
            ++kills;
            ASSERT_FALSE (std::filesystem::exists (folder / "r.gz"));
            continue;
        }
        // It came through: from the beginning again.
        ASSERT_EQ (status, 0) << bytes ("error.txt");
        ASSERT_EQ (bytes ("r.gz"), expected);
        std::filesystem::remove (folder / "r.gz");
    }
    EXPECT_EQ (kills, 20);
    all.push_back ("--resume");
    ASSERT_EQ (run (all).status, 0);
    EXPECT_EQ (bytes ("r.gz"), expected);
    EXPECT_THAT (folder.names (), ElementsAre ("error.txt", "m.ssa", "r.gz"));
}

TEST_F (sweep_command, an_interruption_keeps_what_was_finished_and_says_how_to_go_on) {
    folder.write ("m.ssa", std::string (model) + "duration = 4000;");
    const std::vector<std::string> words{"m.ssa", "-o", "r.gz"};
    for (const auto& [signal_number, status] :
         {std::pair (SIGINT, 130), std::pair (SIGTERM, 143)}) {
        EXPECT_EQ (killed_after (words, folder, signal_number, std::chrono::milliseconds (400)),
                   status);
        EXPECT_THAT (bytes ("error.txt"),
                     HasSubstr ("ostrand-tool sweep: interrupted\n"
                                "ostrand-tool sweep: what was finished is kept in 'r.gz.sweep'; "
                                "the same command with --resume goes on\n"));
        EXPECT_THAT (folder.names (), ElementsAre ("error.txt", "m.ssa", "r.gz.sweep"));
    }
}

TEST_F (sweep_command, an_interruption_is_answered_soon) {
    folder.write ("m.ssa", std::string (model) + "duration = 400000;");
    const auto start = Clock::now ();
    EXPECT_EQ (
        killed_after ({"m.ssa", "-o", "r.gz"}, folder, SIGINT, std::chrono::milliseconds (300)),
        130);
    EXPECT_LT (Clock::now () - start, std::chrono::seconds (30)); // of days
}

TEST_F (sweep_command, a_disk_that_fills_keeps_what_was_finished) {
    std::vector<std::string> words{"sweep", "m.ssa", "-o", "r.gz", "--replicates", "20"};
    ASSERT_EQ (run (words).status, 0);
    const std::string expected = bytes ("r.gz");
    std::filesystem::remove (folder / "r.gz");
    const auto limited = [&] (int blocks) {
        return testing::run_program ({"bash", "-c",
                                      "ulimit -f " + std::to_string (blocks) +
                                          "; exec \"$0\" sweep m.ssa -o r.gz --replicates 20 "
                                          "--resume",
                                      program},
                                     folder.path ());
    };
    for (const int blocks : {1, 40, 100}) {
        const ProgramResult result = limited (blocks);
        EXPECT_EQ (result.status, 1) << blocks;
        EXPECT_THAT (result.error, StartsWith ("ostrand-tool sweep: Cannot write 'r.gz"));
        EXPECT_THAT (result.error, HasSubstr ("File too large"));
        EXPECT_FALSE (std::filesystem::exists (folder / "r.gz"));
    }
    words.push_back ("--resume");
    EXPECT_EQ (run (words).status, 0);
    EXPECT_EQ (bytes ("r.gz"), expected);
    EXPECT_THAT (folder.names (), ElementsAre ("m.ssa", "r.gz"));
}

TEST_F (sweep_command, a_real_disk_that_fills_is_told_and_gone_on_with_when_there_is_room) {
    const std::string disk = path ("disk");
    std::filesystem::create_directory (disk);
    const auto mount = [&] (const std::string& options) {
        return testing::run_program ({"mount", "-t", "tmpfs", "-o", options, "none", disk}).status;
    };
    if (geteuid () != 0 || mount ("size=64k") != 0) {
        GTEST_SKIP () << "a small disk can be mounted by root only";
    }
    const std::vector<std::string> words{"sweep",        "m.ssa", "-o",      "disk/r.gz",
                                         "--replicates", "20",    "--resume"};
    const ProgramResult full = run (words);
    EXPECT_EQ (full.status, 1);
    EXPECT_THAT (full.error, HasSubstr ("No space left on device"));
    EXPECT_FALSE (std::filesystem::exists (folder / "disk" / "r.gz"));
    EXPECT_EQ (mount ("remount,size=64m"), 0);
    EXPECT_EQ (run (words).status, 0);
    EXPECT_EQ (run ({"sweep", "m.ssa", "-o", "whole.gz", "--replicates", "20"}).status, 0);
    EXPECT_EQ (bytes ("disk/r.gz"), bytes ("whole.gz"));
    EXPECT_EQ (testing::run_program ({"umount", disk}).status, 0);
}

} // namespace
} // namespace ostrand::tool
