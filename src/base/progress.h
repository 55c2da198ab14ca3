// A one-line progress display on a terminal.
// Layer: base.
#pragma once
#include <string>

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

/// Seconds in words for a progress line: "5 s", "2 min 05 s", "1 h 02 min".
std::string format_duration (double seconds);

/// A bar of `width` characters filled to `fraction` (0 to 1): "[####----]".
std::string progress_bar (double fraction, int width);

} // namespace ostrand
