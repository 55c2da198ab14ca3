// The manual's tutorial, done step by step as it is written.
#include "shell/drawing_user.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace ostrand::testing {
namespace {

using ::testing::HasSubstr;

constexpr int add_substrate_x = 592;
constexpr int add_product_x = 617;

/// The user of the tutorial; places are pixels from the canvas's corner.
class Reader {
  public:
    explicit Reader (Editor& editor) : editor_ (editor), draw_ (editor) {}

    const Drawing& draw () const { return draw_; }
    void click_on_the_background () const {
        editor_.click (900, canvas_y + 400);
        pause (300); // no double click
    }
    void name (int x, int y, const std::string& text) const {
        draw_.rename (x, y, text);
        click_on_the_background ();
    }
    /// A tool for what is selected: the square of the reaction.
    void press_with_square (int tool_x, int square_x, int square_y) const {
        editor_.click (square_x, canvas_y + square_y);
        pause (150);
        editor_.click (tool_x, tool_bar_y);
        pause (150);
        click_on_the_background ();
    }
    void drag (int x, int y, int to_x, int to_y) const {
        editor_.drag (x, canvas_y + y, to_x, canvas_y + to_y);
        click_on_the_background ();
    }
    void shift_right_click (int x, int y) const {
        editor_.display ().input ({"keydown", "shift", "mousemove", std::to_string (x),
                                   std::to_string (canvas_y + y), "click", "3", "keyup", "shift"});
        pause (300);
    }
    void concentration (int x, int y, const std::string& value) const {
        editor_.click (x, canvas_y + y, "2");
        answer (value);
    }
    void answer (const std::string& value) const {
        pause (300);
        editor_.type (value);
        editor_.key ("Return");
        pause (300);
    }

  private:
    Editor& editor_;
    Drawing draw_;
};

std::string model_of (const std::string& file) {
    return run_program ({"ostrand-tool", "model", file}).out;
}

TEST (tutorial_story, from_an_empty_canvas_to_a_reaction_with_numbers_and_to_its_curves) {
    Editor editor;
    editor.ask_in_the_line ();
    editor.start ({}, "Ostrand");
    const Reader reader (editor);

    // 1. Draw a reaction
    editor.click (new_reaction_x, tool_bar_y);
    pause (300);
    reader.click_on_the_background ();
    reader.name (200, 97, "glucose");
    reader.name (333, 97, "G6P");
    reader.name (263, 51, "HK");
    reader.press_with_square (add_substrate_x, 274, 97);
    reader.name (200, 137, "ATP");
    reader.drag (200, 127, 200, 187);
    reader.press_with_square (add_product_x, 274, 97);
    reader.name (200, 137, "ADP");
    reader.drag (200, 127, 340, 187);
    reader.drag (330, 87, 420, 89);
    reader.drag (260, 42, 305, 27);
    reader.drag (340, 187, 400, 187);
    editor.key ("ctrl+j");
    pause (300);
    const std::string drawn = reader.draw ().saved ("hexokinase.net");
    for (const char* const name : {"glucose", "G6P", "HK", "ATP", "ADP"})
        EXPECT_THAT (drawn, HasSubstr (std::string ("{") + name + "}"));
    const std::string file = (editor.home () / "hexokinase.net").string ();

    // 2. Give it numbers
    reader.click_on_the_background ();
    reader.shift_right_click (319, 99);
    reader.name (267, 89, "80 uM");
    reader.name (368, 89, "37.7");
    reader.shift_right_click (285, 110);
    reader.name (299, 119, "150 uM");
    reader.concentration (305, 47, "10 uM");
    reader.concentration (246, 140, "4 mM");
    reader.concentration (170, 99, "1 mM -> 5 mM : 1 mM");
    reader.shift_right_click (170, 99);
    reader.shift_right_click (440, 105);
    reader.shift_right_click (272, 140);
    editor.key ("ctrl+s");
    ASSERT_TRUE (editor.shows_window ("hexokinase.net"));
    const std::string model = model_of (file);
    for (const char* const line :
         {R"("HK" : "glucose" + "ATP" -> "G6P" + "ADP" | 80 uM, 150 uM - 37.7 ;)",
          R"(["glucose"] = 1 mM -> 5 mM : 1 mM;)", R"(["ATP"] = 4 mM;)", R"(["HK"] = 10 uM;)"}) {
        EXPECT_THAT (model, HasSubstr (line));
        EXPECT_THAT (model_of (source_path ("examples/hexokinase.net").string ()),
                     HasSubstr (line));
    }
    const std::size_t shown = model.find ("display (");
    ASSERT_NE (shown, std::string::npos) << model;
    const std::string display = model.substr (shown, model.find (';', shown) - shown);
    for (const char* const name : {"\"glucose\"", "\"G6P\"", "\"ATP\""})
        EXPECT_THAT (display, HasSubstr (name));

    // ... and look at its curves
    editor.key ("ctrl+d");
    reader.answer ("20");
    editor.key ("Tab");
    EXPECT_TRUE (editor.shows_window ("Stochora"));
    editor.display ().input ({"search", "--onlyvisible", "--name", "^Stochora$", "mousemove",
                              "--window", "%1", "200", "200", "key", "Escape"});
    EXPECT_TRUE (editor.loses_window ("Stochora"));
    EXPECT_TRUE (editor.program ().running ());
}

} // namespace
} // namespace ostrand::testing
