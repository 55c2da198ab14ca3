// Other programs, on POSIX systems.
#include "base/process.h"

#include "base/file_lock.h"

#include <cerrno>
#include <condition_variable>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <fcntl.h>
#include <features.h>
#include <filesystem>
#include <mutex>
#include <optional>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

extern char** environ; // NOLINT(readability-redundant-declaration)

namespace ostrand {
namespace {

/// First open file behind the three standard streams.
constexpr int first_other_file = 3;

/// Signals that a program may have set to be ignored and a child must not inherit so.
constexpr int default_signals[] = {SIGPIPE, SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGCHLD, SIGXFSZ};

/// Has the child close all files from a number on. Ours are closed on exec by themselves; libraries
/// open some that are not.
void close_files_from (int first, posix_spawn_file_actions_t& files) {
#if !defined(__GLIBC__) || __GLIBC_PREREQ(2, 34)
    posix_spawn_file_actions_addclosefrom_np (&files, first);
#else
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator ("/proc/self/fd", error)) {
        const int file = std::atoi (entry.path ().filename ().c_str ());
        if (file >= first) posix_spawn_file_actions_addclose (&files, file);
    }
#endif
}

/// What a child is started with, beside its words.
class SpawnSettings {
  public:
    explicit SpawnSettings (const ChildFiles& files) {
        posix_spawn_file_actions_init (&files_);
        posix_spawn_file_actions_addopen (&files_, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        send_to (STDOUT_FILENO, files.output);
        send_to (STDERR_FILENO, files.error);
        close_files_from (keep (files.shared_lock), files_);
        posix_spawnattr_init (&attributes_);
        sigset_t signals;
        sigemptyset (&signals);
        posix_spawnattr_setsigmask (&attributes_, &signals);
        for (const int signal_number : default_signals) sigaddset (&signals, signal_number);
        posix_spawnattr_setsigdefault (&attributes_, &signals);
        posix_spawnattr_setflags (&attributes_, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    }
    ~SpawnSettings () {
        posix_spawn_file_actions_destroy (&files_);
        posix_spawnattr_destroy (&attributes_);
    }
    SpawnSettings (const SpawnSettings&) = delete;
    SpawnSettings& operator= (const SpawnSettings&) = delete;

    const posix_spawn_file_actions_t* files () const { return &files_; }
    const posix_spawnattr_t* attributes () const { return &attributes_; }

  private:
    void send_to (int stream, const std::string& file) {
        if (file.empty ()) return;
        posix_spawn_file_actions_addopen (&files_, stream, file.c_str (),
                                          O_WRONLY | O_CREAT | O_TRUNC, S_IRUSR | S_IWUSR);
    }

    /// Gives the number behind the last file that stays open.
    int keep (const FileLock* lock) {
        if (lock == nullptr || !lock->held ()) return first_other_file;
        posix_spawn_file_actions_adddup2 (&files_, lock->descriptor (), first_other_file);
        return first_other_file + 1;
    }

    posix_spawn_file_actions_t files_{};
    posix_spawnattr_t attributes_{};
};

/// Starts a program. Gives 0 or the number of the system's error.
int spawn (const std::vector<std::string>& arguments, const ChildFiles& files, pid_t& child) {
    if (arguments.empty ()) return ENOENT;
    const SpawnSettings settings (files);
    std::vector<char*> words;
    words.reserve (arguments.size () + 1);
    for (const std::string& argument : arguments) {
        words.push_back (const_cast<char*> (argument.c_str ())); // posix_spawn does not write
    }
    words.push_back (nullptr);
    return posix_spawnp (&child, words[0], settings.files (), settings.attributes (), words.data (),
                         environ);
}

/// Exit status, 128 + signal, or -1 for what is neither.
int status_of (int wait_status) {
    if (WIFEXITED (wait_status)) return WEXITSTATUS (wait_status);
    return WIFSIGNALED (wait_status) ? 128 + WTERMSIG (wait_status) : -1;
}

/// Waits for a child's end and gives its status; -1 when there is no such child.
int wait_for (pid_t child) {
    int status = 0;
    while (waitpid (child, &status, 0) < 0) {
        if (errno != EINTR) return -1;
    }
    return status_of (status);
}

} // namespace

struct ChildProcess::State {
    pid_t child = 0;
    std::mutex lock; // of what follows
    std::condition_variable ended;
    std::optional<int> status; // once it has ended
    bool watched = false;      // by a thread, which takes its status

    /// Without a thread the status is taken here.
    void look () {
        int wait_status = 0;
        if (watched || status) return;
        if (waitpid (child, &wait_status, WNOHANG) != 0) status = status_of (wait_status);
    }
};

ChildProcess::ChildProcess (const std::vector<std::string>& arguments, const ChildFiles& files) {
    auto state = std::make_shared<State> ();
    const int fault = spawn (arguments, files, state->child);
    if (fault != 0) {
        error_ = std::strerror (fault);
        return;
    }
    state_ = state;
    try {
        // The only thread that is not joined: it would hold up this process's end until the
        // child's. It touches nothing but what it shares with this object.
        std::thread ([state] {
            const int status = wait_for (state->child);
            const std::lock_guard guard (state->lock);
            state->status = status;
            state->ended.notify_all ();
        }).detach ();
        state_->watched = true;
    } catch (const std::exception&) {
        // There is no thread for it: whoever asks whether the child runs takes its status.
    }
}

bool ChildProcess::is_running () const {
    if (!state_) return false;
    const std::lock_guard guard (state_->lock);
    state_->look ();
    return !state_->status;
}

int ChildProcess::wait () const {
    if (!state_) return -1;
    std::unique_lock guard (state_->lock);
    if (!state_->watched && !state_->status) state_->status = wait_for (state_->child);
    state_->ended.wait (guard, [this] { return state_->status.has_value (); });
    return *state_->status;
}

void ChildProcess::kill () const {
    if (is_running ()) ::kill (state_->child, SIGKILL);
}

int ChildProcess::id () const { return state_ ? state_->child : 0; }

} // namespace ostrand
