// A file that one process at a time has for itself.
#include "base/file_lock.h"
#include "base/process.h"
#include "support/support.h"

#include <csignal>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <optional>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace ostrand {
namespace {

namespace fs = std::filesystem;
using testing::TemporaryFolder;
using End = FileLock::End;

/// A child process that holds a lock until it is killed.
class Holder {
  public:
    explicit Holder (const fs::path& path) {
        int ready[2];
        if (pipe (ready) != 0) return;
        child_ = fork ();
        if (child_ == 0) {
            const FileLock lock (path);
            const char answer = lock.held () ? 'y' : 'n';
            if (write (ready[1], &answer, 1) != 1) _exit (1);
            for (;;) pause ();
        }
        char answer = 0;
        holds_ = read (ready[0], &answer, 1) == 1 && answer == 'y';
        close (ready[0]);
        close (ready[1]);
    }
    ~Holder () { kill_now (); }
    Holder (const Holder&) = delete;
    Holder& operator= (const Holder&) = delete;

    bool holds () const { return holds_; }
    void kill_now () {
        if (child_ <= 0) return;
        kill (child_, SIGKILL);
        waitpid (child_, nullptr, 0);
        child_ = 0;
    }

  private:
    pid_t child_ = 0;
    bool holds_ = false;
};

TEST (file_lock, is_taken_once) {
    const TemporaryFolder folder;
    const std::string path = folder.write ("f", "text");
    EXPECT_FALSE (is_locked (path));
    FileLock first (path);
    EXPECT_TRUE (first.held ());
    EXPECT_EQ (first.end (), End::taken);
    EXPECT_TRUE (is_locked (path));
    const FileLock second (path); // in the same process
    EXPECT_FALSE (second.held ());
    EXPECT_EQ (second.end (), End::held_elsewhere);
    first.release ();
    EXPECT_FALSE (is_locked (path));
    EXPECT_TRUE (FileLock (path).held ());
    EXPECT_EQ (testing::file_text (path), "text"); // untouched
}

TEST (file_lock, reading_and_writing_the_file_by_its_name_does_not_lose_it) {
    const TemporaryFolder folder;
    const std::string path = folder.write ("f", "text");
    const FileLock lock (path);
    EXPECT_EQ (testing::file_text (path), "text");
    const int again = open (path.c_str (), O_RDWR);
    EXPECT_EQ (write (again, "T", 1), 1);
    close (again);
    EXPECT_FALSE (FileLock (path).held ());
    EXPECT_EQ (lseek (lock.descriptor (), 0, SEEK_END), 4); // and it can be used through the lock
}

TEST (file_lock, of_another_process_is_seen_and_dies_with_it) {
    const TemporaryFolder folder;
    const std::string path = folder.write ("f", "");
    Holder other (path);
    ASSERT_TRUE (other.holds ());
    EXPECT_TRUE (is_locked (path));
    EXPECT_EQ (FileLock (path).end (), End::held_elsewhere);
    other.kill_now ();
    EXPECT_FALSE (is_locked (path));
    EXPECT_TRUE (FileLock (path).held ());
}

TEST (file_lock, a_program_that_is_started_does_not_keep_it) {
    const TemporaryFolder folder;
    const std::string path = folder.write ("f", "");
    std::optional<FileLock> lock (path);
    const ChildProcess sleeper ({"sleep", "1000"});
    ASSERT_TRUE (sleeper.started ());
    lock.reset ();
    EXPECT_TRUE (FileLock (path).held ());
    kill (sleeper.id (), SIGKILL);
}

TEST (file_lock, that_is_shared_with_a_program_goes_with_the_last_of_the_two) {
    const TemporaryFolder folder;
    const std::string path = folder.write ("f", "");
    std::optional<FileLock> lock (path);
    const ChildProcess sleeper ({"sleep", "1000"}, {.shared_lock = &*lock});
    ASSERT_TRUE (sleeper.started ());
    lock.reset ();
    EXPECT_TRUE (is_locked (path));
    EXPECT_EQ (FileLock (path).end (), End::held_elsewhere);
    sleeper.kill ();
    sleeper.wait ();
    EXPECT_TRUE (FileLock (path).held ());
    // The program's end takes nothing from who shares it still.
    lock.emplace (path);
    EXPECT_EQ (ChildProcess ({"true"}, {.shared_lock = &*lock}).wait (), 0);
    EXPECT_TRUE (is_locked (path));
}

TEST (file_lock, that_is_not_held_is_shared_with_no_program) {
    const TemporaryFolder folder;
    const FileLock none (folder / "f", FileLock::Missing::stays_missing);
    EXPECT_EQ (ChildProcess ({"true"}, {.shared_lock = &none}).wait (), 0);
    EXPECT_TRUE (folder.names ().empty ());
}

TEST (file_lock, asking_hinders_nobody) {
    const TemporaryFolder folder;
    const std::string path = folder.write ("f", "");
    for (int i = 0; i < 100; ++i) {
        EXPECT_FALSE (is_locked (path));
        EXPECT_TRUE (FileLock (path).held ());
    }
}

TEST (file_lock, a_missing_file_is_made_or_not) {
    const TemporaryFolder folder;
    EXPECT_EQ (FileLock (folder / "f", FileLock::Missing::stays_missing).end (), End::not_there);
    EXPECT_TRUE (folder.names ().empty ());
    EXPECT_FALSE (is_locked (folder / "f"));
    EXPECT_TRUE (FileLock (folder / "f").held ());
    EXPECT_TRUE (fs::exists (folder / "f"));
}

TEST (file_lock, odd_things_are_no_files_and_nobody_waits_for_them) {
    const TemporaryFolder folder;
    fs::create_directory (folder / "folder");
    fs::create_symlink ("nothing", folder / "dangling");
    ASSERT_EQ (mkfifo ((folder / "pipe").c_str (), 0600), 0);
    for (const fs::path& odd : {folder / "folder", folder / "dangling", folder / "pipe"}) {
        EXPECT_EQ (FileLock (odd).end (), End::not_a_file) << odd;
        EXPECT_FALSE (is_locked (odd)) << odd;
    }
    EXPECT_EQ (FileLock ("/dev/null").end (), End::not_a_file);
    const FileLock nowhere (folder / "no/f");
    EXPECT_NE (nowhere.end (), End::taken);
}

TEST (file_lock, moves_with_its_holder) {
    const TemporaryFolder folder;
    FileLock first (folder / "f");
    FileLock second (std::move (first));
    EXPECT_TRUE (second.held ());
    EXPECT_FALSE (FileLock (folder / "f").held ());
    second = FileLock (folder / "g"); // lets go of f
    EXPECT_TRUE (FileLock (folder / "f").held ());
    EXPECT_FALSE (FileLock (folder / "g").held ());
}

} // namespace
} // namespace ostrand
