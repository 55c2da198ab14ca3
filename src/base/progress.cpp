// One-line progress displays on a terminal.
#include "base/progress.h"

#include "base/platform.h"
#include "base/text.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <exception>
#include <utility>

namespace ostrand {

ProgressLine::ProgressLine () : active_ (is_terminal (2)) {}

void ProgressLine::show (const std::string& text) {
    if (!active_) return;
    const std::size_t room = static_cast<std::size_t> (std::max (terminal_width () - 1, 1));
    const std::string line = "\r" + text.substr (0, room) + "\x1b[K";
    std::fwrite (line.data (), 1, line.size (), stderr);
    std::fflush (stderr);
    shown_ = true;
}

void ProgressLine::clear () {
    if (!shown_) return;
    std::fputs ("\r\x1b[K", stderr);
    std::fflush (stderr);
    shown_ = false;
}

ProgressWatch::ProgressWatch (bool wanted, std::function<std::string (double seconds)> line)
    : line_ (std::move (line)) {
    if (!wanted || !is_terminal (2)) return;
    try {
        thread_ = std::thread ([this] {
            try {
                watch ();
            } catch (const std::exception&) {
                // No memory for a line: the work goes on without it.
            }
        });
    } catch (const std::exception&) {
        // No thread: likewise.
    }
}

ProgressWatch::~ProgressWatch () {
    if (!thread_.joinable ()) return;
    {
        const std::lock_guard guard (lock_);
        ended_ = true;
    }
    wake_.notify_all ();
    thread_.join ();
}

void ProgressWatch::watch () {
    constexpr auto interval = std::chrono::milliseconds (200);
    ProgressLine shown;
    const auto start = std::chrono::steady_clock::now ();
    std::unique_lock guard (lock_);
    while (!wake_.wait_for (guard, interval, [this] { return ended_; })) {
        const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now () - start;
        shown.show (line_ (elapsed.count ()));
    }
}

std::string format_duration (double seconds) {
    if (!std::isfinite (seconds) || seconds < 0) return "?";
    const auto whole = static_cast<long long> (std::min (std::ceil (seconds), 1e15));
    if (whole < 60) return format_text ("%lld s", whole);
    if (whole < 3600) return format_text ("%lld min %02lld s", whole / 60, whole % 60);
    return format_text ("%lld h %02lld min", whole / 3600, whole / 60 % 60);
}

std::string progress_bar (double fraction, int width) {
    const int filled = static_cast<int> (std::clamp (fraction, 0.0, 1.0) * width);
    return "[" + std::string (static_cast<std::size_t> (filled), '#') +
           std::string (static_cast<std::size_t> (width - filled), '-') + "]";
}

} // namespace ostrand
