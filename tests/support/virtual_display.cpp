// A display without a screen.
#include "support/virtual_display.h"

#include "support/support.h"

#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <stdexcept>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace ostrand::testing {
namespace {

using Clock = std::chrono::steady_clock;

void pause () { std::this_thread::sleep_for (std::chrono::milliseconds (20)); }

pid_t start (std::vector<std::string> words, bool silent) {
    const pid_t child = fork ();
    if (child != 0) return child;
    if (silent) {
        const int nothing = open ("/dev/null", O_WRONLY);
        dup2 (nothing, 1);
        dup2 (nothing, 2);
    }
    std::vector<char*> arguments;
    for (std::string& word : words) arguments.push_back (word.data ());
    arguments.push_back (nullptr);
    execvp (arguments[0], arguments.data ());
    _exit (127);
}

bool alike (std::uint32_t a, std::uint32_t b) {
    for (const int shift : {16, 8, 0}) {
        const int x = static_cast<int> (a >> shift & 0xFF);
        const int y = static_cast<int> (b >> shift & 0xFF);
        if (std::abs (x - y) > 40) return false;
    }
    return true;
}

} // namespace

bool Screenshot::has_near (float x, float y, std::uint32_t colour, int radius) const {
    const int cx = static_cast<int> (x);
    const int cy = static_cast<int> (y);
    for (int py = std::max (cy - radius, 0); py <= std::min (cy + radius, height - 1); ++py) {
        for (int px = std::max (cx - radius, 0); px <= std::min (cx + radius, width - 1); ++px) {
            if (alike (at (px, py), colour)) return true;
        }
    }
    return false;
}

int Screenshot::count (int x, int y, int w, int h, std::uint32_t colour) const {
    int found = 0;
    for (int py = y; py < std::min (y + h, height); ++py) {
        for (int px = x; px < std::min (x + w, width); ++px) found += alike (at (px, py), colour);
    }
    return found;
}

VirtualDisplay::VirtualDisplay (const std::vector<std::string>& options) {
    // Numbers follow the process, so that tests that run side by side never share one.
    static int counter = 0;
    const int number = 1000 + (getpid () * 7 + counter++) % 50000;
    name_ = ":" + std::to_string (number);
    const char* outer = std::getenv ("DISPLAY");
    outer_ = outer == nullptr ? "" : outer;
    std::vector<std::string> words{"Xvfb",         name_,       "-screen", "0",
                                   "1920x1200x24", "-nolisten", "tcp",     "-noreset"};
    words.insert (words.end (), options.begin (), options.end ());
    server_ = start (words, true);
    setenv ("DISPLAY", name_.c_str (), 1);
    setenv ("LIBGL_ALWAYS_SOFTWARE", "1", 1);
    const auto end = Clock::now () + std::chrono::seconds (20);
    for (;;) {
        Display* display = XOpenDisplay (name_.c_str ());
        if (display != nullptr) {
            XCloseDisplay (display);
            return;
        }
        if (Clock::now () > end) throw std::runtime_error ("no virtual display");
        pause ();
    }
}

VirtualDisplay::~VirtualDisplay () {
    kill (server_, SIGTERM);
    waitpid (server_, nullptr, 0);
    if (outer_.empty ()) {
        unsetenv ("DISPLAY");
    } else {
        setenv ("DISPLAY", outer_.c_str (), 1);
    }
}

Screenshot VirtualDisplay::screenshot () const {
    Display* display = XOpenDisplay (name_.c_str ());
    if (display == nullptr) throw std::runtime_error ("display is gone");
    Screenshot shot;
    shot.width = DisplayWidth (display, 0);
    shot.height = DisplayHeight (display, 0);
    shot.pixels.reserve (static_cast<std::size_t> (shot.width) *
                         static_cast<std::size_t> (shot.height));
    XImage* image =
        XGetImage (display, DefaultRootWindow (display), 0, 0, static_cast<unsigned> (shot.width),
                   static_cast<unsigned> (shot.height), AllPlanes, ZPixmap);
    if (image->bits_per_pixel != 32) throw std::runtime_error ("display is not 24 bits deep");
    for (int y = 0; y < shot.height; ++y) {
        const char* row = image->data + std::ptrdiff_t{y} * image->bytes_per_line;
        for (int x = 0; x < shot.width; ++x) {
            std::uint32_t pixel = 0;
            std::memcpy (&pixel, row + std::ptrdiff_t{x} * 4, 4);
            shot.pixels.push_back (pixel & 0xFFFFFF);
        }
    }
    XDestroyImage (image);
    XCloseDisplay (display);
    return shot;
}

std::string VirtualDisplay::input (std::vector<std::string> words) const {
    words.insert (words.begin (), "xdotool");
    return run_program (words).out;
}

void VirtualDisplay::place_window (const std::string& title) const {
    const auto end = Clock::now () + std::chrono::seconds (20);
    while (input ({"search", "--onlyvisible", "--name", "^" + title + "$"}).empty ()) {
        if (Clock::now () > end) throw std::runtime_error ("no window '" + title + "'");
        pause ();
    }
    input (
        {"search", "--onlyvisible", "--name", "^" + title + "$", "windowmove", "--sync", "0", "0"});
}

RunningProgram::RunningProgram (std::vector<std::string> words) {
    if (words[0].find ('/') == std::string::npos) {
        words[0] = std::string (OSTRAND_BUILD_DIR) + "/" + words[0];
    }
    child_ = start (std::move (words), false);
}

RunningProgram::~RunningProgram () {
    if (!running ()) return;
    kill (child_, SIGKILL);
    waitpid (child_, nullptr, 0);
}

bool RunningProgram::running () {
    int state = 0;
    if (!ended_ && waitpid (child_, &state, WNOHANG) == child_) {
        ended_ = true;
        status_ = WIFEXITED (state) ? WEXITSTATUS (state) : 128 + WTERMSIG (state);
    }
    return !ended_;
}

int RunningProgram::wait (double seconds) {
    const auto end = Clock::now () + std::chrono::duration<double> (seconds);
    while (running () && Clock::now () < end) pause ();
    return status_;
}

} // namespace ostrand::testing
