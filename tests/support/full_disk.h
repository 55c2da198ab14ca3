// A disk that is full when a test wants it.
#pragma once
#include <csignal>
#include <sys/resource.h>

namespace ostrand::testing {

/// While it lives, no file of this process grows beyond a size; a write that would fails, as on a
/// full disk. Programs that are started meanwhile are bound too.
class FileSizeLimit {
  public:
    explicit FileSizeLimit (rlim_t bytes) : old_action_ (std::signal (SIGXFSZ, SIG_IGN)) {
        getrlimit (RLIMIT_FSIZE, &old_);
        const rlimit limit{bytes, old_.rlim_max};
        setrlimit (RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit () {
        setrlimit (RLIMIT_FSIZE, &old_);
        std::signal (SIGXFSZ, old_action_);
    }
    FileSizeLimit (const FileSizeLimit&) = delete;
    FileSizeLimit& operator= (const FileSizeLimit&) = delete;

  private:
    rlimit old_{};
    void (*old_action_) (int);
};

} // namespace ostrand::testing
