// The progress line of a run on a terminal.
// Layer: sim.
#pragma once
#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <string>
#include <thread>

namespace ostrand::sim {

/// While it lives, shows percent, simulated seconds per second and the time left, on a thread of
/// its own that does nothing but look and print. Nothing at all when not wanted or standard error
/// is no terminal.
class RunProgress {
  public:
    /// total, done  recorded points of all simulations, one for each simulated second
    RunProgress (bool wanted, std::uint64_t total, const std::atomic<std::uint64_t>& done);
    ~RunProgress ();
    RunProgress (const RunProgress&) = delete;
    RunProgress& operator= (const RunProgress&) = delete;

  private:
    void watch (std::uint64_t total, const std::atomic<std::uint64_t>& done);

    std::mutex lock_;
    std::condition_variable wake_;
    bool ended_ = false;
    std::thread thread_;
};

/// The text of the line.
std::string progress_text (std::uint64_t done, std::uint64_t total, double seconds);

} // namespace ostrand::sim
