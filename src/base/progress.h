// One-line progress displays on a terminal.
// Layer: base.
#pragma once
#include <condition_variable>
#include <functional>
#include <mutex>
#include <string>
#include <thread>

namespace ostrand {

/// Writes a line over the one before it on standard error, cut to the terminal's width, and takes
/// it away at the end. Does nothing at all when standard error is no terminal.
class ProgressLine {
  public:
    ProgressLine ();
    ~ProgressLine () { clear (); }
    ProgressLine (const ProgressLine&) = delete;
    ProgressLine& operator= (const ProgressLine&) = delete;

    bool active () const { return active_; }
    void show (const std::string& text);
    void clear ();

  private:
    bool active_;
    bool shown_ = false;
};

/// While it lives, shows a line that tells how far some work is, five times a second, on a thread
/// of its own that does nothing else. Nothing at all when not wanted or standard error is no
/// terminal.
class ProgressWatch {
  public:
    /// line  called ON THAT THREAD for the text
    ///       seconds  since the beginning
    ProgressWatch (bool wanted, std::function<std::string (double seconds)> line);
    ~ProgressWatch ();
    ProgressWatch (const ProgressWatch&) = delete;
    ProgressWatch& operator= (const ProgressWatch&) = delete;

  private:
    void watch ();

    std::function<std::string (double seconds)> line_;
    std::mutex lock_;
    std::condition_variable wake_;
    bool ended_ = false;
    std::thread thread_;
};

/// Seconds in words for a progress line: "5 s", "2 min 05 s", "1 h 02 min".
std::string format_duration (double seconds);

/// A bar of `width` characters filled to `fraction` (0 to 1): "[####----]".
std::string progress_bar (double fraction, int width);

} // namespace ostrand
