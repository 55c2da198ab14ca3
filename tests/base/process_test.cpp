// Programs that are started and not waited for.
#include "base/process.h"
#include "support/support.h"

#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <fstream>
#include <gtest/gtest.h>
#include <thread>
#include <unistd.h>

namespace ostrand {
namespace {

using testing::file_text;
using testing::TemporaryFolder;
using testing::wait_until;

/// The state letter of a process ("S", "Z"); empty when it is gone.
std::string state_of (int process) {
    std::ifstream file ("/proc/" + std::to_string (process) + "/stat");
    std::string text;
    std::getline (file, text);
    const std::size_t name_end = text.rfind (')');
    return name_end == std::string::npos ? "" : text.substr (name_end + 2, 1);
}

TEST (process, gets_its_words_as_they_are) {
    const TemporaryFolder folder;
    const std::string script = folder.write ("s", "printf '%s|' \"$@\" >\"$0.out\"; exit 3\n");
    EXPECT_EQ (ChildProcess ({"sh", script, "a b", "$HOME", "*"}).wait (), 3);
    EXPECT_EQ (file_text (script + ".out"), "a b|$HOME|*|");
    EXPECT_EQ (ChildProcess ({"sh", "-c", "kill -TERM $$"}).wait (), 128 + 15);
}

TEST (process, that_cannot_be_started_says_why) {
    const ChildProcess none ({"/nowhere/program"});
    EXPECT_FALSE (none.started ());
    EXPECT_FALSE (none.is_running ());
    EXPECT_EQ (none.error (), "No such file or directory");
    EXPECT_EQ (none.wait (), -1);
    EXPECT_FALSE (ChildProcess (std::vector<std::string>{}).started ());
    EXPECT_FALSE (ChildProcess ().started ());
    const TemporaryFolder folder;
    EXPECT_EQ (ChildProcess ({folder.write ("text", "no program")}).error (), "Permission denied");
}

TEST (process, is_not_waited_for_and_tells_whether_it_lives) {
    const ChildProcess sleeper ({"sleep", "1000"});
    ASSERT_TRUE (sleeper.started ());
    EXPECT_TRUE (sleeper.is_running ());
    EXPECT_GT (sleeper.id (), 0);
    kill (sleeper.id (), SIGKILL);
    EXPECT_TRUE (wait_until ([&] { return !sleeper.is_running (); }));
    EXPECT_EQ (sleeper.wait (), 128 + SIGKILL);
}

TEST (process, leaves_no_zombie_though_nobody_asks) {
    int id = 0;
    {
        const ChildProcess child ({"true"});
        ASSERT_TRUE (child.started ());
        id = child.id ();
    }
    EXPECT_TRUE (
        wait_until ([id] { return state_of (id).empty (); })); // for ever while it is a zombie
}

TEST (process, goes_on_when_its_handle_is_gone) {
    const TemporaryFolder folder;
    const std::string script =
        folder.write ("s", "while [ ! -e \"$0.go\" ]; do sleep 0.01; done; touch \"$0.done\"\n");
    { const ChildProcess child ({"sh", script}); }
    folder.write ("s.go", "");
    EXPECT_TRUE (wait_until ([&] { return std::filesystem::exists (folder / "s.done"); }));
}

TEST (process, gets_an_empty_standard_input_and_no_file_of_ours) {
    const TemporaryFolder folder;
    const std::string secret = folder.write ("secret", "");
    const int ours = open (secret.c_str (), O_RDONLY); // as a library opens it: kept over an exec
    ASSERT_GE (ours, 3);
    const std::string script = folder.write (
        "s", "ls -l /proc/self/fd >\"$0.files\"; cat >\"$0.input\"; echo end >>\"$0.input\"\n");
    EXPECT_EQ (ChildProcess ({"sh", script}).wait (), 0);
    EXPECT_EQ (file_text (script + ".files").find ("secret"), std::string::npos);
    EXPECT_NE (file_text (script + ".files").find ("/dev/null"), std::string::npos);
    EXPECT_EQ (file_text (script + ".input"), "end\n");
    close (ours);
}

TEST (process, takes_signals_as_if_nobody_here_ignored_or_blocked_them) {
    const TemporaryFolder folder;
    const auto before = std::signal (SIGPIPE, SIG_IGN);
    sigset_t blocked;
    sigset_t old;
    sigemptyset (&blocked);
    sigaddset (&blocked, SIGTERM);
    pthread_sigmask (SIG_BLOCK, &blocked, &old);
    const int by_pipe = ChildProcess ({"sh", "-c", "kill -PIPE $$; exit 7"}).wait ();
    const int by_term = ChildProcess ({"sh", "-c", "kill -TERM $$; exit 7"}).wait ();
    pthread_sigmask (SIG_SETMASK, &old, nullptr);
    std::signal (SIGPIPE, before);
    EXPECT_EQ (by_pipe, 128 + SIGPIPE);
    EXPECT_EQ (by_term, 128 + SIGTERM);
}

TEST (process, its_streams_go_to_files) {
    testing::TemporaryFolder folder;
    folder.write ("out", "what was there before, and is longer");
    const ChildProcess child (
        {"sh", "-c", "echo said; echo told >&2"},
        {.output = (folder / "out").string (), .error = (folder / "error").string ()});
    EXPECT_EQ (child.wait (), 0);
    EXPECT_EQ (testing::file_text (folder / "out"), "said\n");
    EXPECT_EQ (testing::file_text (folder / "error"), "told\n");
}

TEST (process, without_a_place_for_its_streams_it_is_not_started) {
    const ChildProcess child ({"true"}, {.output = "/nowhere/out", .error = "/nowhere/error"});
    EXPECT_TRUE (!child.started () || child.wait () == 127);
}

TEST (process, that_never_ends_can_be_ended) {
    const ChildProcess child ({"sleep", "1000"});
    EXPECT_TRUE (child.is_running ());
    child.kill ();
    EXPECT_EQ (child.wait (), 128 + 9);
    child.kill (); // nothing to end any more
}

} // namespace
} // namespace ostrand
