// Networks that a user draws from nothing, by mouse and keyboard.
#include "shell/running_editor.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace ostrand::testing {
namespace {

using ::testing::HasSubstr;

constexpr int start_x = 200; // where a new object stands in the canvas
constexpr int start_y = 50;

void pause (int milliseconds) {
    // A sanitized editor needs more time to follow.
    std::this_thread::sleep_for (std::chrono::milliseconds (milliseconds * (sanitized ? 3 : 1)));
}

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

int count (const std::string& text, const std::string& word) {
    int found = 0;
    for (std::size_t at = text.find (word); at != std::string::npos; at = text.find (word, at + 1))
        ++found;
    return found;
}

void ask_in_the_line (const Editor& editor) {
    editor.home ().write (".lattrix_rc", "<?xml version=\"1.0\"?>\n<lattrixprefs date=\"1\">\n"
                                         "<pref smart_dialog=\"true\">\n</lattrixprefs>\n");
}

TEST (drawing_story, upper_glycolysis_from_nothing) {
    Editor editor;
    ask_in_the_line (editor);
    editor.start ({}, "Ostrand");
    const Drawing draw (editor);
    const int column[] = {100, 280, 460, 640};
    const char* const molecules[] = {"Glc", "G6P", "F6P", "F16BP"};
    const char* const enzymes[] = {"HK", "GPI", "PFK"};
    for (int i = 0; i < 4; ++i) draw.add (new_molecule_x, molecules[i], column[i], 250);
    for (int i = 0; i < 3; ++i)
        draw.add (new_protein_x, enzymes[i], (column[i] + column[i + 1]) / 2, 170);
    for (int i = 0; i < 3; ++i) {
        draw.select (column[i], 250);
        draw.shift_click (column[i + 1], 250);
    }
    for (int i = 0; i < 3; ++i) {
        const int square = (column[i] + column[i + 1]) / 2;
        draw.select (square, 170);
        draw.shift_click (square, 250);
    }
    const std::string text = draw.saved ("upper.net");
    for (const char* const name : molecules)
        EXPECT_THAT (text, HasSubstr (std::string ("{") + name + "}"));
    for (const char* const name : enzymes)
        EXPECT_THAT (text, HasSubstr (std::string ("{") + name + "}"));
    EXPECT_EQ (count (text, "\n[A"), 6); // three reactions, each with its enzyme
    EXPECT_EQ (count (text, " 0 272 "), 3);
    EXPECT_EQ (count (text, " 0 32 "), 3);
}

TEST (drawing_story, a_name_with_a_subscript_a_superscript_and_a_picture) {
    Editor editor;
    ask_in_the_line (editor);
    editor.home ().write ("dot.png", file_text (source_path ("docs/editor/light.png")));
    editor.start ({}, "Ostrand");
    const Drawing draw (editor);
    draw.add (new_molecule_x, "Ca", 300, 250);
    for (const char* const key : {"Left", "shift+Up"}) editor.key (key);
    editor.type ("2+");
    for (const char* const key : {"shift+Left", "ctrl+e"}) editor.key (key);
    draw.add (new_molecule_x, "H", 600, 250);
    for (const char* const key : {"Left", "shift+Down"}) editor.key (key);
    editor.type ("2");
    for (const char* const key : {"shift+Left", "ctrl+e"}) editor.key (key);
    editor.type ("O");
    editor.key ("ctrl+shift+i");
    pause (300);
    editor.type ("dot.png");
    editor.key ("Return");
    pause (300);
    const std::string text = draw.saved ("rich.net");
    EXPECT_THAT (text, HasSubstr ("[Ea-{<66F>2+}]"));
    EXPECT_THAT (text, HasSubstr ("[EH{<"));
    EXPECT_THAT (text, HasSubstr ("dot.png]"));
}

} // namespace
} // namespace ostrand::testing
