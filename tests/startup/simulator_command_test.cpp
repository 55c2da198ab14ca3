// The simulator's command line, driven as a user would.
#include "support/support.h"

#include <array>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace ostrand {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using testing::ProgramResult;
using testing::run_program;
using testing::TemporaryFolder;

std::string usage () {
    const std::string name = std::string (OSTRAND_BUILD_DIR) + "/ostrand";
    return "usage: " + name +
           " model\t[-v(erbose)]\n\t\t\t[-o(ut) output-file]\n\t\t\t[-d(etrministic)]\n\t\t\t"
           "[-s(equential)]\n\t\t\t[-npt (number of cores)]\n";
}

constexpr const char* small_model =
    "duration = 2; [a] = 1 uM; a -> b | 0.1 ; display (a #ff0000);\n";

struct simulator_command : ::testing::Test {
    void SetUp () override { folder.write ("model", small_model); }
    ProgramResult run (std::vector<std::string> words) {
        words.insert (words.begin (), {"ostrand", "-a"});
        return run_program (words, folder.path ());
    }
    std::string result (std::string_view name = "data.gz") {
        return testing::unzipped_file (folder / name);
    }
    TemporaryFolder folder;
};

TEST_F (simulator_command, no_word_is_wrong_usage) {
    const auto done = run ({});
    EXPECT_EQ (done.status, 1);
    EXPECT_EQ (done.error, usage ());
    EXPECT_EQ (done.out, "");
}

TEST_F (simulator_command, a_model_leaves_data_gz_and_says_nothing) {
    const auto done = run ({"model"});
    EXPECT_EQ (done.status, 0);
    EXPECT_EQ (done.error, "");
    EXPECT_EQ (done.out, "");
    EXPECT_THAT (result (), ::testing::StartsWith ("1 1 2\na\nff000000\n0\n602\n"));
    EXPECT_THAT (folder.names (), ElementsAre ("data.gz", "model"));
}

TEST_F (simulator_command, every_beginning_of_a_switch_is_that_switch) {
    for (const char* word : {"-", "-o", "-ou", "-out"}) {
        EXPECT_EQ (run ({"model", word, "other.gz"}).status, 0) << word;
        EXPECT_NE (result ("other.gz"), "") << word;
        std::filesystem::remove (folder / "other.gz");
    }
    for (const char* word : {"-v", "-ve", "-verbose"}) {
        EXPECT_THAT (run ({word, "model"}).error, HasSubstr ("init (a) = 602\n")) << word;
    }
    for (const char* word : {"-c", "-comp", "-compile"}) {
        EXPECT_EQ (run ({word, "model"}).error, "compile_model has been removed.\n") << word;
    }
    const std::string chance = [&] {
        run ({"model"});
        return result ();
    }();
    for (const char* word : {"-d", "-det", "-deterministic"}) {
        EXPECT_EQ (run ({word, "model"}).status, 0) << word;
    }
    for (const char* word : {"-s", "-seq", "-sequential"}) {
        EXPECT_EQ (run ({word, "model"}).status, 0) << word;
        EXPECT_EQ (result (), chance);
    }
    for (const char* word : {"-n", "-np", "-npt"}) {
        EXPECT_THAT (run ({word, "model"}).error,
                     ::testing::MatchesRegex ("[0-9]+ parallel threads\n"))
            << word;
    }
}

TEST_F (simulator_command, a_word_longer_than_a_switch_is_unknown) {
    for (const std::string word : {"-outt", "-verbosely", "-x", "-h", "-a", "--", "-O"}) {
        const auto done = run ({"model", word, "x"});
        EXPECT_EQ (done.status, 1) << word;
        EXPECT_EQ (done.error, "unknown switch: '" + word + "'\n" + usage ());
    }
}

TEST_F (simulator_command, a_h_goes_to_the_simulators_own_parser) {
    const auto done = run ({"-h"});
    EXPECT_EQ (done.status, 1);
    EXPECT_EQ (done.error, "unknown switch: '-h'\n" + usage ());
}

TEST_F (simulator_command, out_with_nothing_behind_it_is_wrong_usage) {
    for (const std::vector<std::string>& words :
         {std::vector<std::string>{"-o"}, {"model", "-o"}, {"model", "-"}}) {
        const auto done = run (words);
        EXPECT_EQ (done.status, 1);
        EXPECT_EQ (done.error, usage ());
    }
}

TEST_F (simulator_command, no_model_is_wrong_usage) {
    EXPECT_EQ (run ({"-v", "-o", "x"}).error, usage ());
    EXPECT_EQ (run ({"-compile"}).error, usage ());
}

TEST_F (simulator_command, compile_answers_after_the_whole_line) {
    const auto done = run ({"-compile", "model", "-nonsense"});
    EXPECT_EQ (done.error, "unknown switch: '-nonsense'\n" + usage ());
    const auto plain = run ({"model", "-compile"});
    EXPECT_EQ (plain.status, 1);
    EXPECT_EQ (plain.error, "compile_model has been removed.\n");
    EXPECT_THAT (folder.names (), ElementsAre ("model"));
}

TEST_F (simulator_command, a_value_given_to_npt_replaces_the_model) {
    const auto done = run ({"model", "-npt", "4"});
    EXPECT_EQ (done.status, 1);
    EXPECT_THAT (done.error,
                 ::testing::MatchesRegex ("[0-9]+ parallel threads\nCannot open '4'\n"));
}

TEST_F (simulator_command, the_last_model_wins) {
    EXPECT_EQ (run ({"nothing", "model"}).status, 0);
    EXPECT_EQ (run ({"model", "nothing"}).error, "Cannot open 'nothing'\n");
}

TEST_F (simulator_command, a_bad_model_ends_with_two_messages) {
    folder.write ("bad", "duration 5;");
    const auto done = run ({"bad"});
    EXPECT_EQ (done.status, 1);
    EXPECT_EQ (done.error, "'=' expected, got: '5'\nCannot open 'bad'\n");
    EXPECT_THAT (folder.names (), ElementsAre ("bad", "model"));
}

TEST_F (simulator_command, a_grid_too_large_for_memory_is_refused) {
    folder.write ("huge", "duration = 400000; [a] = 0 mM -> 127 mM : 1 mM;"
                          "[b] = 0 mM -> 127 mM : 1 mM; [c] = 0 mM -> 127 mM : 1 mM;"
                          "display (a, b, c);");
    const auto done = run ({"huge"});
    EXPECT_EQ (done.status, 1);
    EXPECT_THAT (done.error, ::testing::MatchesRegex (
                                 "too many simulations for the memory: 2097152 simulations of 3 "
                                 "species at 400000 points need [0-9]+ bytes, [0-9]+ can be had\n"
                                 "Cannot open 'huge'\n"));
}

TEST_F (simulator_command, verbose_dumps_tables_and_tells_what_ran) {
    const auto done = run ({"model", "-v"});
    EXPECT_THAT (
        done.error,
        ::testing::MatchesRegex (
            "init .a. = 602\ninit .b. = 0\n\na -> b .0.1.;\n\n#simulations = 1, #species = "
            "2, #reactions = 1\n\nSimulated time: 2 s, Simulation time: [-0-9.e]+ s\n"));
}

TEST_F (simulator_command, a_dash_writes_gzip_data_to_standard_output) {
    run ({"model"});
    const auto done = run ({"model", "-o", "-"});
    EXPECT_EQ (done.status, 0);
    folder.write ("piped.gz", done.out);
    EXPECT_EQ (result ("piped.gz"), result ());
    EXPECT_EQ (done.out.substr (0, 2), "\x1f\x8b");
}

TEST_F (simulator_command, every_way_of_running_gives_the_same_bytes) {
    folder.write ("sweep", "duration = 3; [a] = 1 uM -> 9 uM : 2 uM; [e] = 1 uM, 2 uM;"
                           "e : a -> b | 10 uM - 30; a + b -> c | 5 ; display (a, b, c);");
    run ({"sweep", "-o", "1"});
    run ({"sweep", "-s", "-o", "2"});
    run_program ({"taskset", "-c", "0", std::string (OSTRAND_BUILD_DIR) + "/ostrand", "-a", "sweep",
                  "-o", "3"},
                 folder.path ());
    EXPECT_EQ (result ("1"), result ("2"));
    EXPECT_EQ (result ("1"), result ("3"));
    EXPECT_NE (result ("1"), "");
}

TEST_F (simulator_command, a_model_may_come_through_a_pipe_and_with_cr_lf) {
    run ({"model"});
    const std::string expected = result ();
    const auto done = run_program ({"ostrand", "-a", "/dev/stdin"}, folder.path (),
                                   "duration = 2;\r\n[a] = 1 uM;\r\na -> b | 0.1\r\n;display (a "
                                   "#ff0000);\r\n");
    EXPECT_EQ (done.status, 0) << done.error;
    EXPECT_EQ (result (), expected);
}

TEST_F (simulator_command, a_result_that_cannot_be_created_is_silent) {
    const auto done = run ({"model", "-o", "nowhere/data.gz"});
    EXPECT_EQ (done.status, 0);
    EXPECT_EQ (done.error, "");
}

TEST_F (simulator_command, a_full_disk_does_not_pass_in_silence) {
    const auto done = run ({"model", "-o", "/dev/full"});
    EXPECT_EQ (done.status, 1);
    EXPECT_EQ (done.error, "Cannot write '/dev/full': No space left on device\n");
}

TEST_F (simulator_command, a_limit_of_file_size_leaves_the_old_result_whole) {
    folder.write ("long", "duration = 3000; display (a, b, c); [a] = 1 mM; a -> b | 0.0000001 ;"
                          "b -> c | 0.0000003 ;");
    folder.write ("data.gz", "the old result");
    const auto done = run_program ({"bash", "-c", "trap '' XFSZ; ulimit -f 1; exec \"$0\" -a long",
                                    std::string (OSTRAND_BUILD_DIR) + "/ostrand"},
                                   folder.path ());
    EXPECT_EQ (done.status, 1);
    EXPECT_EQ (done.error, "Cannot write 'data.gz': File too large\n");
    EXPECT_EQ (testing::file_text (folder / "data.gz"), "the old result");
    EXPECT_THAT (folder.names (), ElementsAre ("data.gz", "long", "model"));
}

TEST_F (simulator_command, closed_standard_output_is_a_failure) {
    const std::string program = std::string (OSTRAND_BUILD_DIR) + "/ostrand";
    const auto closed =
        run_program ({"bash", "-c", "exec \"$0\" -a model -o - >&-", program}, folder.path ());
    EXPECT_EQ (closed.status, 1);
    EXPECT_EQ (closed.error, "Cannot write '-': Bad file descriptor\n");
    const auto broken = run_program (
        {"bash", "-c", "set -o pipefail; { sleep 0.2; \"$0\" -a model -o -; } | true", program},
        folder.path ());
    EXPECT_EQ (broken.status, 1);
    EXPECT_EQ (broken.error, "Cannot write '-': Broken pipe\n");
}

/// Flags (octal) of the descriptors, beside 1 itself, on which a process has its standard output.
std::vector<std::string> flags_of_copied_output (pid_t process) {
    const std::filesystem::path here = "/proc/" + std::to_string (process);
    std::vector<std::string> flags;
    std::error_code error;
    // Between the fork and the start of the program the test's own descriptors are there.
    if (std::filesystem::read_symlink (here / "exe", error).filename () != "ostrand") return {};
    const auto output = std::filesystem::read_symlink (here / "fd/1", error);
    for (const auto& entry : std::filesystem::directory_iterator (here / "fd", error)) {
        const std::string number = entry.path ().filename ().string ();
        if (number == "1" || std::filesystem::read_symlink (entry.path (), error) != output) {
            continue;
        }
        std::ifstream info (here / "fdinfo" / number);
        for (std::string word; info >> word;) {
            if (word == "flags:" && info >> word) flags.push_back (word);
        }
    }
    return flags;
}

TEST_F (simulator_command, no_copy_of_standard_output_is_left_to_other_programs) {
    // Counts by chance, which no compression makes so small that they fit into the pipe: the
    // program waits there until somebody reads.
    folder.write ("long", "duration = 30; [a] = 1 mM -> 100 mM : 1 mM; a -> b | 0.0001 ;"
                          "b -> a | 0.0001 ; display (a, b);");
    int ends[2];
    ASSERT_EQ (pipe2 (ends, O_CLOEXEC), 0);
    ASSERT_EQ (fcntl (ends[0], F_SETPIPE_SZ, 4096), 4096);
    const pid_t child = fork ();
    if (child == 0) {
        dup2 (ends[1], STDOUT_FILENO);
        if (chdir (folder.path ().c_str ()) != 0) _exit (126);
        const std::string program = std::string (OSTRAND_BUILD_DIR) + "/ostrand";
        execl (program.c_str (), program.c_str (), "-a", "long", "-o", "-", nullptr);
        _exit (127);
    }
    close (ends[1]);
    pollfd written{ends[0], POLLIN, 0};
    ASSERT_EQ (poll (&written, 1, -1), 1);
    // It is in the middle of writing. Whatever it holds beside the stream itself ends with exec.
    for (const std::string& flags : flags_of_copied_output (child)) {
        EXPECT_EQ (std::stoul (flags, nullptr, 8) & O_CLOEXEC, O_CLOEXEC);
    }
    std::array<char, 4096> block{};
    while (read (ends[0], block.data (), block.size ()) > 0) {
    }
    close (ends[0]);
    int status = 0;
    waitpid (child, &status, 0);
    EXPECT_EQ (WEXITSTATUS (status), 0);
}

/// The program on a terminal of its own: what it printed until it ended, or until `patience` was
/// over and it was sent SIGINT.
struct OnTerminal {
    OnTerminal (const TemporaryFolder& folder, std::vector<std::string> words,
                std::chrono::milliseconds patience) {
        words.insert (words.begin (), std::string (OSTRAND_BUILD_DIR) + "/ostrand");
        int terminal = 0;
        const pid_t child = forkpty (&terminal, nullptr, nullptr, nullptr);
        if (child == 0) {
            if (chdir (folder.path ().c_str ()) != 0) _exit (126);
            std::vector<char*> arguments;
            for (std::string& word : words) arguments.push_back (word.data ());
            arguments.push_back (nullptr);
            execv (arguments[0], arguments.data ());
            _exit (127);
        }
        fcntl (terminal, F_SETFL, O_NONBLOCK);
        const auto end = std::chrono::steady_clock::now () + patience;
        bool interrupted = false;
        int state = 0;
        for (;;) {
            char block[4096];
            const ssize_t got = read (terminal, block, sizeof block);
            if (got > 0) printed.append (block, static_cast<std::size_t> (got));
            if (waitpid (child, &state, WNOHANG) == child) break;
            if (!interrupted && std::chrono::steady_clock::now () > end) {
                interrupted = true;
                kill (child, SIGINT);
            }
            if (got <= 0) std::this_thread::sleep_for (std::chrono::milliseconds (5));
        }
        signal_number = WIFSIGNALED (state) ? WTERMSIG (state) : 0;
        status = WIFEXITED (state) ? WEXITSTATUS (state) : -1;
        close (terminal);
    }
    std::string printed;
    int status = 0;
    int signal_number = 0;
};

constexpr const char* endless_model =
    "duration = 400000; [a] = 1 mM; a -> b | 0.0000001 ; b -> a | 0.0000003 ;";

TEST_F (simulator_command, a_terminal_shows_progress_and_ctrl_c_ends_at_once) {
    folder.write ("endless", endless_model);
    const OnTerminal run (folder, {"-a", "endless"}, std::chrono::milliseconds (900));
    EXPECT_EQ (run.signal_number, SIGINT);
    EXPECT_THAT (run.printed, HasSubstr ("simulated s/s"));
    EXPECT_THAT (run.printed, HasSubstr (" left"));
    EXPECT_THAT (folder.names (), ElementsAre ("endless", "model"));
}

TEST_F (simulator_command, verbose_has_no_progress_line) {
    folder.write ("endless", endless_model);
    const OnTerminal run (folder, {"-a", "endless", "-v"}, std::chrono::milliseconds (900));
    EXPECT_EQ (run.printed.find ("simulated s/s"), std::string::npos);
    EXPECT_THAT (run.printed, HasSubstr ("#simulations = 1"));
}

} // namespace
} // namespace ostrand
