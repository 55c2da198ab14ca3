// The progress line of a run.
#include "sim/run_progress.h"

#include "base/progress.h"
#include "base/text.h"

#include <chrono>
#include <system_error>

namespace ostrand::sim {

std::string progress_text (std::uint64_t done, std::uint64_t total, double seconds) {
    const double fraction =
        total == 0 ? 1.0 : static_cast<double> (done) / static_cast<double> (total);
    const double speed = seconds > 0 ? static_cast<double> (done) / seconds : 0.0;
    std::string text = progress_bar (fraction, 24) + format_text (" %3.0f %%", fraction * 100);
    if (done == 0) return text;
    text += "  " + format_g (speed, 3) + " simulated s/s";
    return text + "  " + format_duration (static_cast<double> (total - done) / speed) + " left";
}

RunProgress::RunProgress (bool wanted, std::uint64_t total,
                          const std::atomic<std::uint64_t>& done) {
    if (!wanted || !ProgressLine ().active ()) return;
    try {
        thread_ = std::thread ([this, total, &done] { watch (total, done); });
    } catch (const std::system_error&) {
        // A run without its progress line is still a run.
    }
}

RunProgress::~RunProgress () {
    if (!thread_.joinable ()) return;
    {
        const std::lock_guard guard (lock_);
        ended_ = true;
    }
    wake_.notify_all ();
    thread_.join ();
}

void RunProgress::watch (std::uint64_t total, const std::atomic<std::uint64_t>& done) {
    constexpr auto interval = std::chrono::milliseconds (200);
    ProgressLine line;
    const auto start = std::chrono::steady_clock::now ();
    std::unique_lock guard (lock_);
    while (!wake_.wait_for (guard, interval, [this] { return ended_; })) {
        const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now () - start;
        line.show (progress_text (done.load (std::memory_order_relaxed), total, elapsed.count ()));
    }
}

} // namespace ostrand::sim
