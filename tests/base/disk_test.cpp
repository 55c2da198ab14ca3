// Files that are replaced without ever losing the old one.
#include "base/disk.h"
#include "support/support.h"

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <random>
#include <regex>
#include <stop_token>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace ostrand {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using testing::file_text;
using testing::TemporaryFolder;

TEST (disk, a_file_is_read_whole) {
    const TemporaryFolder folder;
    const std::string bytes ("a\r\nb\0c", 6);
    const std::string path = folder.write ("f", bytes);
    EXPECT_EQ (read_file (path), bytes);
    EXPECT_EQ (read_text_file (path), std::string ("a\nb\0c", 5));
    {
        const testing::CaughtMessages messages;
        EXPECT_EQ (read_file (path, 3), std::nullopt);
        EXPECT_EQ (read_file ("/dev/zero", 100000), std::nullopt);
        EXPECT_EQ (messages.all.size (), 2U);
    }
    EXPECT_EQ (read_file (folder / "nothing"), std::nullopt);
    EXPECT_EQ (read_file (folder.path ()), std::nullopt);
}

TEST (disk, a_pipe_is_read_to_its_end) {
    const TemporaryFolder folder;
    const std::string pipe = (folder / "pipe").string ();
    ASSERT_EQ (mkfifo (pipe.c_str (), 0600), 0);
    std::thread writer ([&pipe] {
        const int end = open (pipe.c_str (), O_WRONLY);
        const std::string text (100000, 'x');
        std::size_t done = 0;
        while (done < text.size ()) {
            done +=
                static_cast<std::size_t> (write (end, text.data () + done, text.size () - done));
        }
        close (end);
    });
    EXPECT_EQ (read_file (pipe)->size (), 100000U);
    writer.join ();
}

TEST (disk, what_is_larger_than_the_bound_is_not_read_and_told) {
    const TemporaryFolder folder;
    const std::string path = folder.write ("f", std::string (1000, 'x'));
    EXPECT_TRUE (read_input (path, {.bound = 1000}).whole ());
    const Input input = read_input (path, {.bound = 999});
    EXPECT_EQ (input.end, ReadEnd::too_large);
    EXPECT_EQ (input.fault, "'" + path + "' has more than 999 bytes, the most that is read");
    EXPECT_EQ (read_input ("/dev/zero", {.text_mode = true, .bound = 200000}).end,
               ReadEnd::too_large);
    const testing::CaughtMessages messages;
    EXPECT_EQ (read_text_file (path, 10), std::nullopt);
    EXPECT_EQ (messages.joined (),
               "'" + path + "' has more than 10 bytes, the most that is read\n");
}

TEST (disk, the_bound_is_1_gib_and_the_environment_may_lower_it) {
    EXPECT_EQ (input_bound (), std::size_t{1} << 30);
    setenv ("OSTRAND_INPUT_BOUND", "5000", 1);
    EXPECT_EQ (input_bound (), 5000U);
    EXPECT_EQ (TextFile ("/dev/zero").fault,
               "'/dev/zero' has more than 5000 bytes, the most that is read");
    setenv ("OSTRAND_INPUT_BOUND", "99999999999999", 1); // never raised
    EXPECT_EQ (input_bound (), std::size_t{1} << 30);
    setenv ("OSTRAND_INPUT_BOUND", "nonsense", 1);
    EXPECT_EQ (input_bound (), std::size_t{1} << 30);
    unsetenv ("OSTRAND_INPUT_BOUND");
}

TEST (disk, in_text_mode_cr_lf_becomes_lf_and_a_lone_cr_stays) {
    const TemporaryFolder folder;
    EXPECT_EQ (read_text_file (folder.write ("f", "a\r\nb\rc\r\r\n")), "a\nb\rc\r\n");
    EXPECT_EQ (read_text_file (folder.write ("cr", "a\r")), "a\r");
}

TEST (disk, text_mode_does_not_see_where_a_block_of_reading_ends) {
    const TemporaryFolder folder;
    std::mt19937 random (5);
    for (int i = 0; i < 30; ++i) {
        std::string text;
        while (text.size () < 200000) {
            text += std::string (random () % 3000, 'x');
            constexpr const char* ends[] = {"\n", "\r\n", "\r", "\r\r\n", "\r\r"};
            text += ends[random () % 5];
        }
        // The places where the reader goes on: with CR LF across each of them.
        for (std::size_t at = (1 << 16) - 1; at + 1 < text.size (); at += 1 << 16) {
            text.replace (at, 2, i % 2 == 0 ? "\r\n" : "\rx");
        }
        const std::string path = folder.write ("f", text);
        ASSERT_EQ (read_text_file (path), std::regex_replace (text, std::regex ("\r\n"), "\n"))
            << i;
    }
}

TEST (disk, a_stop_ends_the_reading_of_what_never_ends) {
    std::stop_source stop;
    std::thread stopper ([&stop] { stop.request_stop (); });
    EXPECT_EQ (read_input ("/dev/zero", {.stop = stop.get_token ()}).end, ReadEnd::stopped);
    stopper.join ();
}

TEST (disk, a_stop_ends_the_waiting_for_a_silent_pipe) {
    const TemporaryFolder folder;
    const std::string pipe = (folder / "pipe").string ();
    ASSERT_EQ (mkfifo (pipe.c_str (), 0600), 0);
    for (const bool somebody_has_it_open : {false, true}) {
        const int other_end = somebody_has_it_open ? open (pipe.c_str (), O_RDWR) : -1;
        std::stop_source stop;
        std::thread stopper ([&stop] {
            std::this_thread::sleep_for (std::chrono::milliseconds (20));
            stop.request_stop ();
        });
        EXPECT_EQ (read_input (pipe, {.stop = stop.get_token ()}).end, ReadEnd::stopped);
        stopper.join ();
        if (other_end >= 0) close (other_end);
    }
}

TEST (disk, a_pipe_that_could_be_stopped_is_read_to_its_end) {
    const TemporaryFolder folder;
    const std::string pipe = (folder / "pipe").string ();
    ASSERT_EQ (mkfifo (pipe.c_str (), 0600), 0);
    std::thread writer ([&pipe] {
        std::this_thread::sleep_for (std::chrono::milliseconds (30)); // behind the reader
        std::string error;
        write_file (pipe, std::string (100000, 'x'), error);
    });
    const std::stop_source never;
    EXPECT_EQ (read_input (pipe, {.stop = never.get_token ()}).bytes.size (), 100000U);
    writer.join ();
}

TEST (disk, a_stop_while_writing_leaves_the_old_file) {
    const TemporaryFolder folder;
    folder.write ("f", "old");
    std::stop_source stop;
    OutputFile file (folder / "f", stop.get_token ());
    EXPECT_TRUE (file.write (std::string (5000000, 'x')));
    stop.request_stop ();
    EXPECT_FALSE (file.write ("more"));
    EXPECT_FALSE (file.commit ());
    EXPECT_TRUE (file.stopped ());
    EXPECT_EQ (file.error (), "Operation canceled");
    EXPECT_EQ (file_text (folder / "f"), "old");
}

TEST (disk, a_stop_at_the_last_moment_leaves_the_old_file_too) {
    const TemporaryFolder folder;
    folder.write ("f", "old");
    std::stop_source stop;
    {
        OutputFile file (folder / "f", stop.get_token ());
        EXPECT_TRUE (file.write ("new"));
        stop.request_stop ();
        EXPECT_FALSE (file.commit ());
    }
    std::string error;
    EXPECT_FALSE (write_file (folder / "f", "new", error, stop.get_token ()));
    EXPECT_THAT (folder.names (), ElementsAre ("f"));
    EXPECT_EQ (file_text (folder / "f"), "old");
}

TEST (disk, what_could_be_stopped_is_written_whole_when_nobody_does) {
    const TemporaryFolder folder;
    const std::stop_source never;
    std::string error;
    const std::string text (9'000'000, 'x'); // more than one piece of flushing
    EXPECT_TRUE (write_file (folder / "f", text, error, never.get_token ())) << error;
    EXPECT_EQ (file_text (folder / "f"), text);
}

TEST (disk, a_new_file_appears_only_when_it_is_complete) {
    const TemporaryFolder folder;
    {
        OutputFile file (folder / "f");
        ASSERT_TRUE (file.ok ());
        EXPECT_TRUE (file.write ("text"));
        const auto names = folder.names ();
        ASSERT_EQ (names.size (), 1U);
        EXPECT_EQ (names[0].substr (0, 3), ".f.");
        EXPECT_TRUE (file.commit ());
    }
    EXPECT_THAT (folder.names (), ElementsAre ("f"));
    EXPECT_EQ (file_text (folder / "f"), "text");
}

TEST (disk, without_a_commit_the_old_file_is_untouched) {
    const TemporaryFolder folder;
    folder.write ("f", "old");
    { EXPECT_TRUE (OutputFile (folder / "f").write ("new")); }
    EXPECT_THAT (folder.names (), ElementsAre ("f"));
    EXPECT_EQ (file_text (folder / "f"), "old");
}

TEST (disk, permissions_are_kept_and_links_stay) {
    const TemporaryFolder folder;
    fs::create_directory (folder / "deep");
    folder.write ("deep/f", "old");
    chmod ((folder / "deep/f").c_str (), 0604);
    fs::create_symlink ("deep/f", folder / "link");
    fs::create_symlink ("link", folder / "chain");
    std::string error;
    EXPECT_TRUE (write_file (folder / "chain", "new", error)) << error;
    EXPECT_TRUE (fs::is_symlink (folder / "chain"));
    EXPECT_TRUE (fs::is_symlink (folder / "link"));
    EXPECT_EQ (file_text (folder / "deep/f"), "new");
    struct stat status {};
    stat ((folder / "deep/f").c_str (), &status);
    EXPECT_EQ (status.st_mode & 07777, 0604U);
    EXPECT_THAT (folder.names (), ElementsAre ("chain", "deep", "link"));
}

TEST (disk, a_link_to_nothing_makes_what_it_points_to) {
    const TemporaryFolder folder;
    fs::create_symlink ("later", folder / "link");
    std::string error;
    EXPECT_TRUE (write_file (folder / "link", "x", error));
    EXPECT_EQ (file_text (folder / "later"), "x");
}

TEST (disk, a_ring_of_links_stays) {
    const TemporaryFolder folder;
    fs::create_symlink ("ring", folder / "ring");
    std::string error;
    EXPECT_FALSE (write_file (folder / "ring", "x", error));
    EXPECT_EQ (error, "Too many levels of symbolic links");
    EXPECT_TRUE (fs::is_symlink (folder / "ring"));
}

TEST (disk, failures_tell_why_and_leave_nothing) {
    const TemporaryFolder folder;
    std::string error;
    EXPECT_FALSE (write_file (folder / "no/f", "x", error));
    EXPECT_EQ (error, "No such file or directory");
    EXPECT_FALSE (write_file (folder.path (), "x", error));
    EXPECT_EQ (error, "Is a directory");
    EXPECT_FALSE (write_file ("/dev/full", "x", error));
    EXPECT_EQ (error, "No space left on device");
    EXPECT_FALSE (write_file ("", "x", error));
    EXPECT_TRUE (folder.names ().empty ());
}

TEST (disk, a_disk_that_fills_up_leaves_the_old_file) {
    const TemporaryFolder folder;
    folder.write ("f", "old");
    const pid_t child = fork ();
    if (child == 0) {
        std::signal (SIGXFSZ, SIG_IGN);
        const struct rlimit limit { 4096, 4096 };
        setrlimit (RLIMIT_FSIZE, &limit);
        std::string error;
        const bool written = write_file (folder / "f", std::string (10000, 'x'), error);
        _exit (!written && error == "File too large" ? 0 : 1);
    }
    int status = 0;
    waitpid (child, &status, 0);
    EXPECT_EQ (WEXITSTATUS (status), 0);
    EXPECT_EQ (file_text (folder / "f"), "old");
    EXPECT_THAT (folder.names (), ElementsAre ("f"));
}

TEST (disk, devices_and_pipes_are_written_directly) {
    const TemporaryFolder folder;
    const std::string pipe = (folder / "pipe").string ();
    ASSERT_EQ (mkfifo (pipe.c_str (), 0600), 0);
    std::string got;
    std::thread reader ([&] { got = read_file (pipe).value_or (""); });
    std::string error;
    EXPECT_TRUE (write_file (pipe, "through", error));
    reader.join ();
    EXPECT_EQ (got, "through");
    EXPECT_TRUE (write_file ("/dev/null", "x", error));
    EXPECT_THAT (folder.names (), ElementsAre ("pipe"));
}

TEST (disk, names_at_the_limit_of_the_file_system_are_written) {
    const TemporaryFolder folder;
    const std::string name (255, 'n');
    std::string error;
    EXPECT_TRUE (write_file (folder / name, "x", error)) << error;
    EXPECT_THAT (folder.names (), ElementsAre (name));
}

TEST (disk, an_interruption_leaves_no_unfinished_file) {
    const TemporaryFolder folder;
    folder.write ("f", "old");
    for (const int signal_number : {SIGINT, SIGTERM, SIGHUP}) {
        const pid_t child = fork ();
        if (child == 0) {
            OutputFile first (folder / "f");
            OutputFile second (folder / "g");
            first.write ("half");
            raise (signal_number);
            _exit (0);
        }
        int status = 0;
        waitpid (child, &status, 0);
        EXPECT_TRUE (WIFSIGNALED (status) && WTERMSIG (status) == signal_number);
        EXPECT_THAT (folder.names (), ElementsAre ("f"));
    }
    EXPECT_EQ (file_text (folder / "f"), "old");
}

TEST (disk, many_files_may_be_open_and_their_guards_are_used_again) {
    const TemporaryFolder folder;
    for (int round = 0; round < 3; ++round) {
        std::vector<OutputFile> files;
        for (int i = 0; i < 10; ++i) files.emplace_back (folder / std::to_string (i));
        for (OutputFile& file : files) EXPECT_TRUE (file.write ("x") && file.commit ());
    }
    EXPECT_EQ (folder.names ().size (), 10U);
}

} // namespace
} // namespace ostrand
