// The platform on POSIX systems, with Linux's /proc where it is there.
#include "base/platform.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <memory>
#include <sched.h>
#include <sys/ioctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace ostrand {
namespace {

constexpr std::array ending_signals{SIGINT, SIGTERM, SIGHUP};

/// One file to remove on interruption. Entries are never taken out of the list, only marked free
/// and used again, so the signal handler can walk it at any moment.
struct DoomedFile {
    std::atomic<bool> taken{false};
    std::atomic<bool> live{false}; // the path is complete
    std::array<char, PATH_MAX> path{};
    DoomedFile* next = nullptr;
};

/// Process-wide state of the interruption guard; owned for the life of the process.
struct InterruptionState {
    std::atomic<DoomedFile*> first{nullptr};
    std::atomic<bool> installed{false};
};
InterruptionState interruption_state; // NOLINT: a signal handler cannot call a function's static

extern "C" void remove_doomed_files (int signal_number) {
    for (DoomedFile* file = interruption_state.first.load (); file != nullptr; file = file->next) {
        if (file->live.load ()) unlink (file->path.data ());
    }
    // The handler was installed for one delivery, so the same signal now ends the process.
    raise (signal_number);
}

void install_handlers () {
    if (interruption_state.installed.exchange (true)) return;
    for (const int signal_number : ending_signals) {
        struct sigaction current {};
        sigaction (signal_number, nullptr, &current);
        if (current.sa_handler == SIG_IGN) continue; // nohup
        struct sigaction action {};
        action.sa_handler = remove_doomed_files;
        action.sa_flags = static_cast<int> (SA_RESETHAND | SA_NODEFER);
        sigemptyset (&action.sa_mask);
        sigaction (signal_number, &action, nullptr);
    }
}

} // namespace

std::filesystem::path home_directory () {
    for (const char* name : {"USERPROFILE", "HOME"}) {
        const char* value = std::getenv (name);
        if (value != nullptr && *value != '\0') return value;
    }
    return {};
}

std::filesystem::path temporary_directory () {
    std::error_code error;
    std::filesystem::path path = std::filesystem::temp_directory_path (error);
    return error ? std::filesystem::path ("/tmp") : path;
}

std::filesystem::path make_private_folder (const std::string& name) {
    std::string pattern = (temporary_directory () / (name + "-XXXXXX")).string ();
    if (mkdtemp (pattern.data ()) == nullptr) return {};
    return pattern;
}

int processor_count () {
    cpu_set_t allowed;
    CPU_ZERO (&allowed);
    if (sched_getaffinity (0, sizeof allowed, &allowed) == 0) {
        return std::max (1, CPU_COUNT (&allowed));
    }
    return std::max (1, static_cast<int> (sysconf (_SC_NPROCESSORS_ONLN)));
}

std::uint64_t available_memory () {
    std::uint64_t bytes = static_cast<std::uint64_t> (sysconf (_SC_PHYS_PAGES)) *
                          static_cast<std::uint64_t> (sysconf (_SC_PAGESIZE));
    std::ifstream memory ("/proc/meminfo");
    for (std::string word; memory >> word;) {
        std::uint64_t kilobytes = 0;
        if (word == "MemAvailable:" && memory >> kilobytes) {
            bytes = std::min (bytes, kilobytes * 1024);
            break;
        }
    }
    struct rlimit limit {};
    if (getrlimit (RLIMIT_AS, &limit) == 0 && limit.rlim_cur != RLIM_INFINITY) {
        bytes = std::min<std::uint64_t> (bytes, limit.rlim_cur);
    }
    return bytes;
}

std::filesystem::path executable_path () {
    std::error_code error;
    std::filesystem::path path = std::filesystem::read_symlink ("/proc/self/exe", error);
    return error ? std::filesystem::path () : path;
}

bool flush_to_disk (int descriptor, const std::stop_token& stop) {
#ifdef SYNC_FILE_RANGE_WRITE
    // In pieces when a stop may come: a whole file can take seconds.
    constexpr off64_t piece = off64_t{4} << 20;
    constexpr unsigned write_and_wait =
        SYNC_FILE_RANGE_WAIT_BEFORE | SYNC_FILE_RANGE_WRITE | SYNC_FILE_RANGE_WAIT_AFTER;
    struct stat file {};
    const bool in_pieces = stop.stop_possible () && fstat (descriptor, &file) == 0;
    for (off64_t place = 0; in_pieces && place < file.st_size; place += piece) {
        if (stop.stop_requested ()) break;
        if (sync_file_range (descriptor, place, piece, write_and_wait) == 0) continue;
        if (errno == EIO || errno == ENOSPC || errno == EDQUOT) return false;
        break; // not known here: what follows does it all
    }
#endif
    if (stop.stop_requested ()) {
        errno = ECANCELED;
        return false;
    }
    return fsync (descriptor) == 0;
}

void make_write_failures_errors () {
    std::signal (SIGPIPE, SIG_IGN);
    std::signal (SIGXFSZ, SIG_IGN);
}

bool is_terminal (int stream) { return isatty (stream) == 1; }

int terminal_width () {
    struct winsize size {};
    if (ioctl (STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0) return size.ws_col;
    return 80;
}

int process_id () { return getpid (); }

InterruptionGuard::InterruptionGuard (const std::filesystem::path& path) : entry_ (nullptr) {
    const std::string text = path.string ();
    if (text.size () >= PATH_MAX) return; // no such file can be opened either
    install_handlers ();
    DoomedFile* entry = interruption_state.first.load ();
    while (entry != nullptr && entry->taken.exchange (true)) entry = entry->next;
    const bool fresh = entry == nullptr;
    if (fresh) {
        entry = std::make_unique<DoomedFile> ().release ();
        entry->taken.store (true);
    }
    std::copy (text.begin (), text.end (), entry->path.begin ());
    entry->path[text.size ()] = '\0';
    if (fresh) {
        entry->next = interruption_state.first.load ();
        while (!interruption_state.first.compare_exchange_weak (entry->next, entry)) {
        }
    }
    entry->live.store (true);
    entry_ = entry;
}

InterruptionGuard::~InterruptionGuard () {
    if (entry_ == nullptr) return;
    auto* entry = static_cast<DoomedFile*> (entry_);
    entry->live.store (false);
    entry->taken.store (false);
}

InterruptionBlock::InterruptionBlock () {
    sigset_t blocked;
    sigset_t before;
    sigemptyset (&blocked);
    for (const int signal_number : ending_signals) {
        sigaddset (&blocked, signal_number);
    }
    pthread_sigmask (SIG_BLOCK, &blocked, &before);
    for (const int signal_number : ending_signals) {
        if (sigismember (&before, signal_number) == 0) to_unblock_.push_back (signal_number);
    }
}

InterruptionBlock::~InterruptionBlock () {
    sigset_t unblocked;
    sigemptyset (&unblocked);
    for (const int signal_number : to_unblock_) {
        sigaddset (&unblocked, signal_number);
    }
    pthread_sigmask (SIG_UNBLOCK, &unblocked, nullptr);
}

} // namespace ostrand
