// What is seen while a large file loads.
// Layer: viewer.
#pragma once
#include "base/progress.h"

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>

class Fl_Progress;
class Fl_Window;

namespace ostrand::viewer {

/// A line on the terminal, and after a moment a small window with a bar, where there is a display.
/// Small files are loaded before either appears.
class LoadDisplay {
  public:
    /// `file` empty: standard input, whose size is not known.
    explicit LoadDisplay (const std::string& file);
    ~LoadDisplay ();
    LoadDisplay (const LoadDisplay&) = delete;
    LoadDisplay& operator= (const LoadDisplay&) = delete;

    /// `bytes` of the file have been read.
    void show (std::uint64_t bytes);

  private:
    void open_window ();

    using Clock = std::chrono::steady_clock;
    std::string name_;
    double total_ = 0; // bytes; 0 not known
    Clock::time_point start_ = Clock::now ();
    Clock::time_point last_ = start_;
    ProgressLine line_;
    std::unique_ptr<Fl_Window> window_;
    Fl_Progress* bar_ = nullptr; // in the window
    std::string label_;
    bool window_tried_ = false;
};

} // namespace ostrand::viewer
