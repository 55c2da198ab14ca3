// A display without a screen, programs on it, and what can be seen there.
#pragma once
#include <cstdint>
#include <memory>
#include <string>
#include <sys/types.h>
#include <vector>

namespace ostrand::testing {

/// What stood on the display at a moment.
struct Screenshot {
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> pixels; // 0xRRGGBB

    std::uint32_t at (int x, int y) const {
        return pixels[static_cast<std::size_t> (y) * static_cast<std::size_t> (width) +
                      static_cast<std::size_t> (x)];
    }
    /// True when a pixel within `radius` of the place has the colour, each channel within 40 of
    /// 255.
    bool has_near (float x, float y, std::uint32_t colour, int radius = 3) const;
    /// Pixels of a rectangle that have the colour.
    int count (int x, int y, int w, int h, std::uint32_t colour) const;
};

/// A display of its own (Xvfb), which goes with its scope. DISPLAY is set for programs started
/// meanwhile.
class VirtualDisplay {
  public:
    /// options  further words for the server
    explicit VirtualDisplay (const std::vector<std::string>& options = {});
    ~VirtualDisplay ();
    VirtualDisplay (const VirtualDisplay&) = delete;
    VirtualDisplay& operator= (const VirtualDisplay&) = delete;

    Screenshot screenshot () const;
    /// Runs xdotool with these words; its standard output.
    std::string input (std::vector<std::string> words) const;
    /// Waits for a window of that title and moves it to the top left corner. Throws when none
    /// comes.
    void place_window (const std::string& title) const;

  private:
    pid_t server_ = 0;
    std::string name_;
    std::string outer_; // DISPLAY before
};

/// A program that runs beside the test.
class RunningProgram {
  public:
    explicit RunningProgram (std::vector<std::string> words);
    ~RunningProgram ();
    RunningProgram (const RunningProgram&) = delete;
    RunningProgram& operator= (const RunningProgram&) = delete;

    bool running ();
    pid_t id () const { return child_; }
    /// Waits for its end; its exit status, or -1 when it did not end in time.
    int wait (double seconds = 20);

  private:
    pid_t child_ = 0;
    int status_ = -1;
    bool ended_ = false;
};

} // namespace ostrand::testing
