// ostrand-mpi as a program: any number of ranks makes the bytes of one machine, and ranks that die
// or are interrupted cost no more than what was in work.
#include "base/process.h"
#include "support/support.h"

#include <chrono>
#include <csignal>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <thread>
#include <unistd.h>

namespace ostrand::ranks {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using testing::ProgramResult;
using testing::TemporaryFolder;

const std::string mpi_program = std::string (OSTRAND_BUILD_DIR) + "/ostrand-mpi";
const std::string tool = std::string (OSTRAND_BUILD_DIR) + "/ostrand-tool";

constexpr std::string_view model =
    "duration = 6; [a] = 1 uM -> 8 uM : 1 uM; [b] = 1 uM, 5 uM, 9 uM, 20 uM; [e] = 0.1 uM;"
    "[f] = 0.1 uM; e : a -> c | 5 uM - 30; f : c + b -> g | 5 uM, 1 uM - 20; a + b -> d | 0.5;"
    "d -> a | 0.0001; display (a #ff0000, c, d, g);";

/// Seconds to simulate, so that there is time for a signal; under sanitizers everything takes longer.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr const char* long_enough = "duration = 100;";
#else
constexpr const char* long_enough = "duration = 600;";
#endif

/// mpirun with more ranks than processors, as root too, on this machine alone.
std::vector<std::string> on_ranks (int ranks, const std::vector<std::string>& words) {
    std::vector<std::string> all{"env", "OMPI_ALLOW_RUN_AS_ROOT=1",
                                 "OMPI_ALLOW_RUN_AS_ROOT_CONFIRM=1", "OMPI_MCA_plm=isolated",
                                 "OMPI_MCA_btl_vader_single_copy_mechanism=none",
                                 "OMPI_MCA_rmaps_base_oversubscribe=1",
                                 // What the library leaves to the system at its end, and its own
                                 // threads, are not ours to mend.
                                 "LSAN_OPTIONS=detect_leaks=0", "ASAN_OPTIONS=detect_leaks=0",
                                 "TSAN_OPTIONS=ignore_noninstrumented_modules=1", "mpirun", "-n",
                                 std::to_string (ranks), mpi_program};
    all.insert (all.end (), words.begin (), words.end ());
    return all;
}

struct ranks_program : ::testing::Test {
    void SetUp () override { folder.write ("m.ssa", model); }
    ProgramResult run (int ranks, const std::vector<std::string>& words) const {
        return testing::run_program (on_ranks (ranks, words), folder.path ());
    }
    /// The bytes of the same sweep on one machine.
    std::string expected (std::vector<std::string> words) const {
        words.insert (words.begin (), {tool, "sweep"});
        words.insert (words.end (), {"-o", "expected.gz"});
        EXPECT_EQ (testing::run_program (words, folder.path ()).status, 0);
        std::string bytes = this->bytes ("expected.gz");
        std::filesystem::remove (folder / "expected.gz");
        return bytes;
    }
    std::string bytes (std::string_view name) const { return testing::file_text (folder / name); }
    TemporaryFolder folder;
};

TEST_F (ranks_program, any_number_of_ranks_makes_the_file_of_one_machine) {
    const std::string file = expected ({"m.ssa", "--replicates", "5"});
    for (const int ranks : {1, 2, 3, 8}) {
        const ProgramResult result = run (ranks, {"m.ssa", "-o", "r.gz", "--replicates", "5"});
        ASSERT_EQ (result.status, 0) << result.error;
        ASSERT_EQ (bytes ("r.gz"), file) << ranks;
        ASSERT_THAT (folder.names (), ElementsAre ("m.ssa", "r.gz"));
        std::filesystem::remove (folder / "r.gz");
    }
}

TEST_F (ranks_program, threads_options_and_shards_are_those_of_a_sweep) {
    const std::string file = expected ({"m.ssa", "--deterministic", "--seed", "3"});
    ASSERT_EQ (
        run (2, {"m.ssa", "-o", "r.gz", "--deterministic", "--seed=3", "--threads", "2"}).status,
        0);
    EXPECT_EQ (bytes ("r.gz"), file);
    const std::string shard = expected ({"m.ssa", "--shard", "2/3"});
    ASSERT_EQ (run (2, {"m.ssa", "-o", "s", "--shard", "2/3"}).status, 0);
    EXPECT_EQ (bytes ("s"), shard);
}

TEST_F (ranks_program, large_and_small_units_come_together) {
    // 1.2 million lines each: two units a simulation.
    folder.write ("m.ssa", "duration = 400000; [a] = 5 uM, 7 uM; x -> y | 1; display (a, x, y);");
    const std::string file = expected ({"m.ssa"});
    ASSERT_EQ (run (3, {"m.ssa", "-o", "r.gz"}).status, 0);
    EXPECT_EQ (bytes ("r.gz"), file);
}

TEST_F (ranks_program, faults_are_told_once_and_end_all_ranks) {
    ProgramResult result = run (3, {"none.ssa", "-o", "r.gz"});
    EXPECT_EQ (result.status, 1);
    EXPECT_THAT (result.error, HasSubstr ("ostrand-mpi: Cannot open 'none.ssa'\n"));
    folder.write ("bad.ssa", "[a = 5 uM;");
    result = run (2, {"bad.ssa", "-o", "r.gz"});
    EXPECT_EQ (result.status, 1);
    const std::size_t first = result.error.find ("ostrand-mpi: bad.ssa");
    EXPECT_NE (first, std::string::npos) << result.error;
    EXPECT_EQ (result.error.find ("ostrand-mpi: bad.ssa", first + 1), std::string::npos);
    EXPECT_EQ (run (1, {"m.ssa"}).status, 2);
    EXPECT_EQ (run (1, {"m.ssa", "-o", "r.gz", "--speed"}).status, 2);
    EXPECT_THAT (folder.names (), ElementsAre ("bad.ssa", "m.ssa"));
}

TEST_F (ranks_program, help_tells_every_option) {
    const ProgramResult result = run (2, {"--help"});
    EXPECT_EQ (result.status, 0);
    for (const char* option : {"-o OUT", "--replicates N", "--deterministic", "--resume",
                               "--shard I/N", "--threads N", "--seed N"}) {
        EXPECT_THAT (result.out, HasSubstr (option));
    }
}

/// Process numbers of the ranks of a running sweep in a folder, rank 0 first.
std::vector<int> rank_processes (const std::filesystem::path& folder) {
    std::vector<int> found;
    for (const auto& entry : std::filesystem::directory_iterator ("/proc")) {
        std::error_code gone;
        const std::string name = entry.path ().filename ().string ();
        if (name.find_first_not_of ("0123456789") != std::string::npos) continue;
        if (std::filesystem::read_symlink (entry.path () / "exe", gone) != mpi_program) continue;
        if (std::filesystem::read_symlink (entry.path () / "cwd", gone) != folder) continue;
        found.push_back (std::stoi (name));
    }
    std::sort (found.begin (), found.end ());
    return found;
}

struct EndedRun {
    int status = 0;
    std::string error;
};

/// Starts a long sweep on some ranks and, when something of it is finished, sends one of them a
/// signal.
EndedRun signal_a_rank (const TemporaryFolder& folder, int ranks, std::size_t which,
                        int signal_number, bool resume) {
    std::vector<std::string> words{"m.ssa", "-o", "r.gz", "--replicates", "5"};
    if (resume) words.push_back ("--resume");
    words = on_ranks (ranks, words);
    words.insert (words.begin (), {"sh", "-c", "cd \"$0\" && exec \"$@\" 2>error.txt >out.txt",
                                   folder.path ().string ()});
    const std::filesystem::path journal = folder / "r.gz.sweep";
    std::error_code none;
    const std::uintmax_t before = resume ? std::filesystem::file_size (journal, none) : 0;
    const ChildProcess child (words);
    const auto grown = [&] {
        return std::filesystem::exists (journal, none) &&
               std::filesystem::file_size (journal, none) > before + 2000;
    };
    while (child.is_running () && !grown ()) {
        std::this_thread::sleep_for (std::chrono::milliseconds (5));
    }
    const std::vector<int> processes = rank_processes (std::filesystem::canonical (folder.path ()));
    if (which < processes.size ()) ::kill (processes[which], signal_number);
    const int status = child.wait ();
    return {status, testing::file_text (folder / "error.txt")};
}

TEST_F (ranks_program, a_rank_that_dies_ends_the_run_with_a_message_and_another_number_goes_on) {
    folder.write ("m.ssa", std::string (model) + long_enough);
    const std::string file = expected ({"m.ssa", "--replicates", "5"});
    const EndedRun died = signal_a_rank (folder, 3, 2, SIGKILL, false);
    EXPECT_NE (died.status, 0);
    EXPECT_THAT (died.error, HasSubstr ("exited on signal 9"));
    EXPECT_FALSE (std::filesystem::exists (folder / "r.gz"));
    EXPECT_TRUE (std::filesystem::exists (folder / "r.gz.sweep"));
    // Rank 0 itself.
    EXPECT_NE (signal_a_rank (folder, 2, 0, SIGKILL, true).status, 0);
    EXPECT_FALSE (std::filesystem::exists (folder / "r.gz"));
    const ProgramResult result = run (4, {"m.ssa", "-o", "r.gz", "--replicates", "5", "--resume"});
    ASSERT_EQ (result.status, 0) << result.error;
    EXPECT_EQ (bytes ("r.gz"), file);
    EXPECT_THAT (folder.names (), ElementsAre ("error.txt", "m.ssa", "out.txt", "r.gz"));
}

TEST_F (ranks_program, a_rank_that_is_interrupted_ends_all_and_threads_go_on) {
    folder.write ("m.ssa", std::string (model) + long_enough);
    const std::string file = expected ({"m.ssa", "--replicates", "5"});
    const EndedRun ended = signal_a_rank (folder, 3, 1, SIGTERM, false);
    EXPECT_NE (ended.status, 0);
    EXPECT_THAT (ended.error, HasSubstr ("ostrand-mpi: what was finished is kept in 'r.gz.sweep'; "
                                         "the same command with --resume goes on\n"));
    // What ranks have left, threads take over.
    const ProgramResult result = testing::run_program (
        {tool, "sweep", "m.ssa", "-o", "r.gz", "--replicates", "5", "--resume"}, folder.path ());
    ASSERT_EQ (result.status, 0) << result.error;
    EXPECT_EQ (bytes ("r.gz"), file);
}

TEST_F (ranks_program, an_interruption_of_rank_0_keeps_what_was_finished) {
    folder.write ("m.ssa", std::string (model) + "duration = 100000;");
    const EndedRun ended = signal_a_rank (folder, 3, 0, SIGINT, false);
    EXPECT_EQ (ended.status, 130) << ended.error;
    EXPECT_THAT (ended.error, HasSubstr ("ostrand-mpi: interrupted\nostrand-mpi: what was finished "
                                         "is kept in 'r.gz.sweep'"));
}

TEST_F (ranks_program, a_result_that_finds_no_room_is_told) {
    const ProgramResult full = run (2, {"m.ssa", "-o", "/dev/full"});
    EXPECT_EQ (full.status, 1);
    EXPECT_THAT (full.error,
                 HasSubstr ("ostrand-mpi: Cannot write '/dev/full': No space left on device\n"));
}

TEST_F (ranks_program, a_disk_that_fills_ends_all_ranks_with_the_reason) {
    const std::string disk = (folder / "disk").string ();
    std::filesystem::create_directory (disk);
    if (geteuid () != 0 ||
        testing::run_program ({"mount", "-t", "tmpfs", "-o", "size=16k", "none", disk}).status !=
            0) {
        GTEST_SKIP () << "a small disk can be mounted by root only";
    }
    const ProgramResult full = run (3, {"m.ssa", "-o", "disk/r.gz", "--replicates", "20"});
    EXPECT_EQ (full.status, 1);
    EXPECT_THAT (full.error, HasSubstr ("ostrand-mpi: Cannot write 'disk/r.gz"));
    EXPECT_THAT (full.error, HasSubstr ("No space left on device"));
    EXPECT_FALSE (std::filesystem::exists (folder / "disk" / "r.gz"));
    EXPECT_EQ (testing::run_program ({"umount", disk}).status, 0);
}

} // namespace
} // namespace ostrand::ranks
