// What the benchmarks share: clocks, and minima of things that are measured in turns, so that other
// work on the machine hits both alike.
#pragma once
#include <algorithm>
#include <chrono>
#include <ctime>
#include <limits>

namespace ostrand::bench {

/// Seconds that this thread has computed: what others do meanwhile does not count.
inline double thread_seconds () {
    timespec now{};
    clock_gettime (CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double> (now.tv_sec) + static_cast<double> (now.tv_nsec) * 1e-9;
}

/// Likewise of all threads of the process.
inline double process_seconds () {
    timespec now{};
    clock_gettime (CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double> (now.tv_sec) + static_cast<double> (now.tv_nsec) * 1e-9;
}

inline double wall_seconds () {
    return std::chrono::duration<double> (std::chrono::steady_clock::now ().time_since_epoch ())
        .count ();
}

/// The least time of several rounds.
class Least {
  public:
    template <class Clock, class Work>
    void add (Clock clock, Work work) {
        const double start = clock ();
        work ();
        seconds_ = std::min (seconds_, clock () - start);
    }
    double seconds () const { return seconds_; }

  private:
    double seconds_ = std::numeric_limits<double>::infinity ();
};

} // namespace ostrand::bench
