// Roads through the whole program, as a user takes them.
#include "shell/running_editor.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace ostrand::testing {
namespace {

constexpr int status_y = 661;

TEST (story, a_network_is_simulated_and_its_curves_are_shown_twice) {
    Editor editor;
    editor.start ({editor.copied_example ("hexokinase.net")}, "hexokinase.net");
    editor.key ("Tab");
    ASSERT_TRUE (editor.shows_window ("Stochora"));
    // A second run may start while the first viewer is open; the pointer gives the keys back.
    editor.display ().input (
        {"search", "--onlyvisible", "--name", "^Stochora$", "windowmove", "1000", "700"});
    editor.move (300, 300);
    editor.key ("Tab");
    EXPECT_TRUE (wait_until ([&] {
        const std::string windows =
            editor.display ().input ({"search", "--onlyvisible", "--name", "^Stochora$"});
        return std::count (windows.begin (), windows.end (), '\n') == 2;
    }));
    EXPECT_TRUE (editor.program ().running ());
    editor.display ().input ({"search", "--name", "^Stochora$", "windowkill", "%@"});
}

TEST (story, a_refused_model_says_why_and_the_editor_goes_on) {
    Editor editor;
    editor.start ({}, "Ostrand");
    editor.click (new_reaction_x, tool_bar_y);
    ASSERT_TRUE (wait_until ([&] {
        return editor.undo_file ().find ("prod") != std::string::npos ||
               editor.undo_file ().size () > 150;
    }));
    const auto status_line = [&] { // the lowest 20 pixels of the window
        const Screenshot screen = editor.display ().screenshot ();
        std::vector<std::uint32_t> line;
        for (int y = status_y; y < status_y + 16; ++y)
            for (int x = 200; x < 800; ++x) line.push_back (screen.at (x, y));
        return line;
    };
    const std::vector<std::uint32_t> before = status_line ();
    editor.key ("Tab");
    EXPECT_TRUE (wait_until ([&] { return status_line () != before; })); // the reason
    EXPECT_FALSE (editor.has_window ("Stochora"));
    EXPECT_TRUE (editor.program ().running ());
    editor.click (new_molecule_x, tool_bar_y);
    EXPECT_TRUE (
        wait_until ([&] { return editor.undo_file ().find ("molecule") != std::string::npos; }));
}

TEST (story, a_file_is_opened_from_the_line_by_keys_alone) {
    Editor editor;
    editor.ask_in_the_line ();
    editor.copied_example ("clones.net");
    editor.start ({}, "Ostrand");
    editor.key ("ctrl+o");
    std::this_thread::sleep_for (std::chrono::milliseconds (300));
    editor.type ("clo");
    editor.key ("Tab"); // the only match is completed and taken
    EXPECT_TRUE (editor.shows_window ("clones.net"));
}

TEST (story, escape_in_the_line_of_save_as_writes_nothing) {
    Editor editor;
    editor.ask_in_the_line ();
    editor.start ({}, "Ostrand");
    editor.click (new_molecule_x, tool_bar_y);
    editor.move (300, 300);
    editor.key ("ctrl+shift+s");
    std::this_thread::sleep_for (std::chrono::milliseconds (300));
    editor.type ("other.net");
    editor.key ("Escape");
    std::this_thread::sleep_for (std::chrono::milliseconds (300));
    EXPECT_FALSE (std::filesystem::exists (editor.home () / "other.net"));
    editor.key ("ctrl+shift+s");
    std::this_thread::sleep_for (std::chrono::milliseconds (300));
    editor.type ("other.net");
    editor.key ("Return");
    EXPECT_TRUE (editor.shows_window ("other.net"));
    EXPECT_NE (file_text (editor.home () / "other.net").find ("molecule"), std::string::npos);
}

TEST (story, a_formula_becomes_a_network_in_a_tab_of_its_own) {
    Editor editor;
    editor.ask_in_the_line ();
    editor.copied_example ("glycolysis-upper.xml");
    editor.start ({}, "Ostrand");
    editor.key ("alt+f"); // the first menu of that letter is the file menu; go right to Formula
    for (int i = 0; i < 4; ++i) editor.key ("Right");
    editor.key ("e"); // Extract Gates...
    std::this_thread::sleep_for (std::chrono::milliseconds (400));
    editor.type ("glyc");
    editor.key ("Tab");
    ASSERT_TRUE (wait_until (
        [&] { return std::filesystem::exists (editor.home () / "glycolysis-upper_gates.csv"); }));
    std::this_thread::sleep_for (std::chrono::milliseconds (500));
    editor.key ("alt+f");
    for (int i = 0; i < 4; ++i) editor.key ("Right");
    editor.key ("f"); // Enter Formula...
    ASSERT_TRUE (editor.shows_window ("Enter Formula"));
    editor.click_in ("Enter Formula", 200, 20);
    editor.key ("ctrl+a");
    editor.type ("GAP");
    editor.click_in ("Enter Formula", 200, 53);
    editor.type ("ATP . G6P");
    editor.key ("Return");
    EXPECT_TRUE (editor.shows_window ("implementation.ssa\\*"));
    EXPECT_NE (editor.undo_file (1).find ("PFK"), std::string::npos);
    EXPECT_NE (editor.undo_file (1).find ("ALD"), std::string::npos);
}

} // namespace
} // namespace ostrand::testing
