// Interruptions as requests to stop, on POSIX systems.
#include "base/interruption.h"
#include "base/platform.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <system_error>
#include <thread>
#include <unistd.h>

namespace ostrand {
namespace {

constexpr std::array ending_signals{SIGINT, SIGTERM, SIGHUP};

/// What the signal handler needs; it may do next to nothing.
struct InterruptionPipe {
    std::atomic<int> write_end{-1};
    std::atomic<int> signal_number{0};
    std::array<struct sigaction, ending_signals.size ()> before{};
};
InterruptionPipe interruption_pipe; // NOLINT: a signal handler cannot call a function's static

extern "C" void ask_for_stop (int signal_number) {
    const int error = errno;
    int none = 0;
    interruption_pipe.signal_number.compare_exchange_strong (none, signal_number);
    const char wake = 1;
    if (write (interruption_pipe.write_end.load (), &wake, 1) < 0) {
        // Nobody waits for it any more.
    }
    // From now on as it was before.
    for (std::size_t i = 0; i < ending_signals.size (); ++i) {
        sigaction (ending_signals[i], &interruption_pipe.before[i], nullptr);
    }
    errno = error;
}

} // namespace

struct InterruptionStop::State {
    // Its handlers must be there before ours are, or they would take their place later.
    InterruptionGuard older_handlers{std::filesystem::path ()};
    std::stop_source source;
    std::array<int, 2> ends{-1, -1};
    std::thread watcher;
};

InterruptionStop::InterruptionStop () : state_ (std::make_unique<State> ()) {
    if (pipe2 (state_->ends.data (), O_CLOEXEC) != 0) return;
    const auto watch = [end = state_->ends[0], source = state_->source] () mutable {
        char wake = 0;
        while (read (end, &wake, 1) < 0 && errno == EINTR) {
        }
        if (wake == 1) source.request_stop ();
    };
    try {
        const InterruptionBlock the_watcher_takes_no_signal;
        state_->watcher = std::thread (watch);
    } catch (const std::system_error&) {
        return; // interruptions stay what they were
    }
    interruption_pipe.signal_number = 0;
    interruption_pipe.write_end = state_->ends[1];
    for (std::size_t i = 0; i < ending_signals.size (); ++i) {
        struct sigaction& before = interruption_pipe.before[i];
        sigaction (ending_signals[i], nullptr, &before);
        if (before.sa_handler == SIG_IGN) continue; // nohup
        struct sigaction action {};
        action.sa_handler = ask_for_stop;
        action.sa_flags = SA_RESTART;
        sigfillset (&action.sa_mask);
        sigaction (ending_signals[i], &action, nullptr);
    }
}

InterruptionStop::~InterruptionStop () {
    if (state_->watcher.joinable ()) {
        for (std::size_t i = 0; i < ending_signals.size (); ++i) {
            sigaction (ending_signals[i], &interruption_pipe.before[i], nullptr);
        }
        const char end = 0;
        if (write (state_->ends[1], &end, 1) < 0) {
            // Closing the pipe wakes the watcher as well.
        }
        interruption_pipe.write_end = -1;
        close (state_->ends[1]);
        state_->watcher.join ();
    } else if (state_->ends[1] >= 0) {
        close (state_->ends[1]);
    }
    if (state_->ends[0] >= 0) close (state_->ends[0]);
}

std::stop_token InterruptionStop::token () const { return state_->source.get_token (); }

int InterruptionStop::status () const {
    const int signal_number = interruption_pipe.signal_number.load ();
    return signal_number == 0 ? 0 : 128 + signal_number;
}

} // namespace ostrand
