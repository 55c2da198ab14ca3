// A user at the canvas of a running editor.
#pragma once
#include "shell/running_editor.h"

namespace ostrand::testing {

inline constexpr int start_x = 200; // where a new object stands in the canvas
inline constexpr int start_y = 50;

/// A user at the canvas; places are pixels from its corner.
class Drawing {
  public:
    explicit Drawing (Editor& editor) : editor_ (editor) {}

    /// An object of a tool bar's button, brought to its place and given its name.
    void add (int button_x, const std::string& name, int x, int y) const {
        editor_.click (button_x, tool_bar_y);
        pause (150);
        // Above the letters, on the upper edge.
        editor_.drag (start_x, canvas_y + start_y - 10, x, canvas_y + y - 10);
        pause (300); // no double click
        rename (x, y, name);
    }
    void rename (int x, int y, const std::string& name) const {
        editor_.display ().input ({"mousemove", std::to_string (x), std::to_string (canvas_y + y),
                                   "click", "--repeat", "3", "--delay", "40", "1"});
        pause (60);
        editor_.type (name);
        pause (60);
    }
    void select (int x, int y) const {
        editor_.click (900, canvas_y + 500);
        pause (300);
        editor_.drag (x - 25, canvas_y + y - 20, x + 25, canvas_y + y + 20);
        pause (60);
    }
    void shift_click (int x, int y) const {
        editor_.display ().input ({"keydown", "shift", "mousemove", std::to_string (x),
                                   std::to_string (canvas_y + y), "click", "1", "keyup", "shift"});
        pause (300);
    }
    /// The document, as it is saved under a name.
    std::string saved (const std::string& name) const {
        editor_.key ("ctrl+shift+s");
        pause (300);
        editor_.type (name);
        editor_.key ("Return");
        editor_.shows_window (name);
        return file_text (editor_.home () / name);
    }

  private:
    Editor& editor_;
};

} // namespace ostrand::testing
