// The clipboard between editors and with other programs.
#include "shell/running_editor.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace ostrand::testing {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;

/// What another program gets from the clipboard in a form.
std::string pasted_elsewhere (const std::string& type) {
    return run_program ({"timeout", "10", "xclip", "-selection", "clipboard", "-t", type, "-o"})
        .out;
}

/// Waits until a word stands in the undo file of a tab.
bool holds (const Editor& editor, int tab, const char* word) {
    return wait_until ([&] { return editor.undo_file (tab).find (word) != std::string::npos; });
}

/// Copies everything of the tab on top.
void copy_all (const Editor& editor) {
    editor.key ("ctrl+a");
    editor.key ("ctrl+c");
    wait_until (
        [] { return pasted_elsewhere ("TARGETS").find ("image/png") != std::string::npos; });
}

constexpr const char* two_molecules =
    "# Lattrix: 1.2\n[N2 1 2 8 8\n[S1 1 100 100 0 3 13{glc}-]\n[S2 0 250 100 0 3 13{g6p}-]\n"
    "[A3 0 272 2 1 2{0.1}{}]\n]\n";

TEST (clipboard, other_programs_get_text_svg_and_png) {
    Editor editor;
    editor.start ({editor.home ().write ("two.net", two_molecules)}, "two.net");
    copy_all (editor);
    const std::string types = pasted_elsewhere ("TARGETS");
    for (const char* const type :
         {"UTF8_STRING", "text/plain", "STRING", "image/svg+xml", "image/png"})
        EXPECT_THAT (types, HasSubstr (type));
    EXPECT_THAT (pasted_elsewhere ("UTF8_STRING"), StartsWith ("[N2 "));
    EXPECT_EQ (pasted_elsewhere ("STRING"), pasted_elsewhere ("UTF8_STRING"));
    const std::string svg = pasted_elsewhere ("image/svg+xml");
    EXPECT_THAT (svg, HasSubstr ("<svg"));
    EXPECT_THAT (svg, HasSubstr ("g6p\n</text>"));
    const std::string png = pasted_elsewhere ("image/png");
    EXPECT_THAT (png, StartsWith ("\x89PNG"));
    EXPECT_THAT (png, HasSubstr ("IEND"));
    EXPECT_EQ (pasted_elsewhere ("image/jpeg"), "");
}

TEST (clipboard, a_large_copy_arrives_whole) {
    Editor editor;
    std::string text = "# Lattrix: 1.2\n[N4000 0 2 8 8\n";
    for (int i = 1; i <= 4000; ++i)
        text += "[S" + std::to_string (i) + " 0 " + std::to_string (60 + i % 50 * 240) + ' ' +
                std::to_string (40 + i / 50 * 60) + " 0 3 13{" + std::string (70, 'm') +
                std::to_string (i) + "}-]\n";
    editor.start ({editor.home ().write ("many.net", text + "]\n")}, "many.net");
    copy_all (editor);
    const std::string copied = pasted_elsewhere ("UTF8_STRING");
    EXPECT_GT (copied.size (), 380000U);
    EXPECT_THAT (copied, StartsWith ("[N4000 "));
    EXPECT_TRUE (copied.ends_with ("]\n"));
    const std::string svg = pasted_elsewhere ("image/svg+xml");
    EXPECT_GT (svg.size (), 1000000U);
    EXPECT_TRUE (svg.ends_with ("</svg>\n")) << svg.substr (svg.size () - 40);
}

TEST (clipboard, a_copy_goes_into_another_running_editor_and_back) {
    Editor one;
    one.start ({one.home ().write ("two.net", two_molecules)}, "two.net");
    copy_all (one);
    Editor other ({.display = one.shared_display ()});
    other.start_at (880, 500, {}, "Ostrand");
    other.key ("ctrl+v");
    ASSERT_TRUE (holds (other, 0, "g6p"));
    // The other one adds an enzyme and gives all of it back.
    other.click (880 + new_protein_x, 500 + tool_bar_y);
    other.move (1300, 900);
    ASSERT_TRUE (holds (other, 0, "protein"));
    copy_all (other);
    EXPECT_THAT (pasted_elsewhere ("UTF8_STRING"), StartsWith ("[N3 "));
    one.move (300, 300);
    one.key ("ctrl+v");
    ASSERT_TRUE (one.shows_window ("two.net\\*"));
    EXPECT_THAT (one.undo_file (), HasSubstr ("protein"));
}

TEST (clipboard, a_network_is_copied_into_another_tab) {
    Editor editor;
    editor.start ({editor.home ().write ("two.net", two_molecules)}, "two.net");
    copy_all (editor);

    constexpr int plus_x = 88; // behind the tab's name
    editor.click (plus_x, tab_bar_y);
    ASSERT_TRUE (editor.shows_window ("Ostrand"));
    editor.move (300, 300);
    editor.key ("ctrl+v");
    EXPECT_TRUE (holds (editor, 1, "g6p"));
}

TEST (clipboard, what_another_program_copied_takes_the_place_of_the_drawing) {
    Editor editor;
    editor.start ({editor.home ().write ("two.net", two_molecules)}, "two.net");
    copy_all (editor);
    const std::string file =
        editor.home ().write ("copied", "[N1 0 2 0 0[S1 0 20 20 0 3 13{pyruvate}-]]");
    RunningProgram other ({"/usr/bin/env", "xclip", "-quiet", "-selection", "clipboard", file});
    ASSERT_TRUE (wait_until (
        [] { return pasted_elsewhere ("TARGETS").find ("image/png") == std::string::npos; }));
    editor.key ("ctrl+v");
    ASSERT_TRUE (editor.shows_window ("two.net\\*"));
    EXPECT_THAT (editor.undo_file (), HasSubstr ("pyruvate"));
}

} // namespace
} // namespace ostrand::testing
