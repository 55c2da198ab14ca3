// The editor running on a virtual display, with a home of its own.
#pragma once
#include "support/support.h"
#include "support/virtual_display.h"

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace ostrand::testing {

/// An environment variable that has its old value again behind the scope.
class Environment {
  public:
    Environment (const char* name, const std::string& value) : name_ (name) {
        if (const char* const before = std::getenv (name)) before_ = before;
        setenv (name, value.c_str (), 1);
    }
    ~Environment () {
        if (before_)
            setenv (name_, before_->c_str (), 1);
        else
            unsetenv (name_);
    }
    Environment (const Environment&) = delete;
    Environment& operator= (const Environment&) = delete;

  private:
    const char* name_;
    std::optional<std::string> before_;
};

/// Waits for what gives no sign of having come. A sanitized editor needs more time to follow.
inline void pause (int milliseconds) {
    std::this_thread::sleep_for (std::chrono::milliseconds (milliseconds * (sanitized ? 3 : 1)));
}

/// Places in the window at scale 1, pixels from its top left corner.
inline constexpr int tool_bar_y = 42;
inline constexpr int new_protein_x = 13;
inline constexpr int new_molecule_x = 38;
inline constexpr int new_reaction_x = 568;
inline constexpr int tab_bar_y = 88;
inline constexpr int canvas_y = 103; // of its top

/// An editor that was started with some words. Its home is a folder of its own.
class Editor {
  public:
    struct Options {
        float scale = 1;
        std::vector<std::string> server = {};         // further words for the display's server
        std::shared_ptr<VirtualDisplay> display = {}; // of another editor, to run beside it
    };

    Editor () : Editor (Options{}) {}
    explicit Editor (Options options)
        : options_ (std::move (options)),
          display_ (options_.display ? options_.display
                                     : std::make_shared<VirtualDisplay> (options_.server)) {}

    /// Starts it, with its window in the corner of the screen.
    /// title  that the window will have
    void start (std::vector<std::string> words, const std::string& title) {
        launch (std::move (words));
        display_->place_window (title);
        // Behind the first picture the canvas has the keys.
        const std::string place = std::to_string (300 * options_.scale);
        display_->input ({"mousemove", place, place});
    }
    /// Starts it beside another one, with its window's corner at a place of the screen.
    void start_at (int x, int y, std::vector<std::string> words, const std::string& title) {
        launch (std::move (words));
        if (!shows_window (title)) throw std::runtime_error ("no window '" + title + "'");
        display_->input ({"search", "--onlyvisible", "--name", "^" + title + "$", "windowmove",
                          "--sync", std::to_string (x), std::to_string (y)});
        move (x + 300, y + 300);
    }
    /// Only starts it.
    void launch (std::vector<std::string> words) {
        const Environment at_home ("HOME", home_.path ().string ());
        const Environment temporary ("TMPDIR", home_.path ().string ());
        const Environment scaling ("FLTK_SCALING_FACTOR", std::to_string (options_.scale));
        words.insert (words.begin (), "ostrand");
        program_ = std::make_unique<RunningProgram> (std::move (words));
    }

    /// Starts a program whose words are all given as the editor of this display.
    void run (std::vector<std::string> words) {
        program_ = std::make_unique<RunningProgram> (std::move (words));
    }

    /// Before the start: questions are asked in the line above the canvas, by keys alone.
    void ask_in_the_line () const {
        home_.write (".lattrix_rc", "<?xml version=\"1.0\"?>\n<lattrixprefs date=\"1\">\n"
                                    "<pref smart_dialog=\"true\">\n</lattrixprefs>\n");
    }
    /// A copy of an example in its home.
    std::string copied_example (const char* name) const {
        return home_.write (name, file_text (source_path (std::string ("examples/") + name)));
    }

    const TemporaryFolder& home () const { return home_; }
    const VirtualDisplay& display () const { return *display_; }
    const std::shared_ptr<VirtualDisplay>& shared_display () const { return display_; }
    RunningProgram& program () { return *program_; }

    void key (const std::string& name) const { display_->input ({"key", name}); }
    void type (const std::string& text) const { display_->input ({"type", "--delay", "15", text}); }
    void move (int x, int y) const {
        display_->input ({"mousemove", std::to_string (x), std::to_string (y)});
    }
    void click (int x, int y, const char* button = "1") const {
        display_->input ({"mousemove", std::to_string (x), std::to_string (y), "click", button});
    }
    /// At a place of another window of the program.
    void click_in (const std::string& title, int x, int y) const {
        display_->input ({"search", "--onlyvisible", "--name", "^" + title + "$", "mousemove",
                          "--window", "%1", std::to_string (x), std::to_string (y), "click", "1"});
    }
    void drag (int x, int y, int to_x, int to_y, const char* button = "1") const {
        display_->input (
            {"mousemove", std::to_string (x), std::to_string (y), "mousedown", button});
        for (int step = 1; step <= 4; ++step) {
            display_->input ({"mousemove", std::to_string (x + (to_x - x) * step / 4),
                              std::to_string (y + (to_y - y) * step / 4)});
            std::this_thread::sleep_for (std::chrono::milliseconds (20));
        }
        display_->input ({"mouseup", button});
    }

    bool has_window (const std::string& title) const {
        return !display_->input ({"search", "--onlyvisible", "--name", "^" + title + "$"}).empty ();
    }
    /// Waits until there is a window of that title. Letters that mean something in a regular
    /// expression are to be escaped.
    bool shows_window (const std::string& title) const {
        return wait_until ([&] { return has_window (title); });
    }
    bool loses_window (const std::string& title) const {
        return wait_until ([&] { return !has_window (title); });
    }
    /// Waits until that many pixels of a part of the screen have a colour.
    bool shows_colour (int x, int y, int w, int h, std::uint32_t colour, int least) const {
        return wait_until (
            [&] { return display_->screenshot ().count (x, y, w, h, colour) >= least; });
    }

    /// The undo file of a number, as it is on the disk now.
    std::string undo_file (int number = 0) const {
        return file_text (home_ / (".kill_stack_" + std::to_string (number) + ".dat"));
    }
    int undo_file_count () const {
        int count = 0;
        for (const std::string& name : home_.names ())
            count += name.starts_with (".kill_stack_") ? 1 : 0;
        return count;
    }
    /// Ends it as a crash would.
    void kill () { signal (SIGKILL); }
    void signal (int number) { ::kill (program_->id (), number); }

  private:
    Options options_;
    TemporaryFolder home_;
    std::shared_ptr<VirtualDisplay> display_;
    std::unique_ptr<RunningProgram> program_;
};

} // namespace ostrand::testing
