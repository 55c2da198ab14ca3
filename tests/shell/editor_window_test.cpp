// The editor in its window: opening, tabs, saving, leaving.
#include "shell/running_editor.h"

#include <gtest/gtest.h>

namespace ostrand::testing {
namespace {

namespace fs = std::filesystem;

std::string example (const char* name) {
    return source_path (std::string ("examples/") + name).string ();
}

/// A copy of an example in the editor's home.
std::string copied (const Editor& editor, const char* name, const char* as) {
    return editor.home ().write (as, file_text (example (name)));
}

TEST (editor_window, opens_empty_with_one_tab_and_its_name) {
    Editor editor;
    editor.start ({}, "Ostrand");
    EXPECT_EQ (editor.undo_file_count (), 1);
    EXPECT_TRUE (editor.shows_colour (2, canvas_y + 5, 1000, 500, 0xFFFFFF, 490000));
    EXPECT_TRUE (editor.shows_colour (0, tab_bar_y - 6, 60, 14, 0xF0F000, 200)); // the tab on top
}

TEST (editor_window, a_file_of_the_command_line_is_shown_under_its_name) {
    Editor editor;
    const std::string file = copied (editor, "hexokinase.net", "hexo.net");
    editor.start ({file}, "hexo.net");
    EXPECT_TRUE (editor.shows_colour (2, canvas_y, 1000, 550, 0xFFFF00, 500)); // its molecules
    EXPECT_EQ (file_text (editor.home () / ".ostrand_recent"), file + "\n");
}

TEST (editor_window, several_files_open_in_tabs_and_the_last_is_on_top) {
    Editor editor;
    const std::string one = copied (editor, "hexokinase.net", "one.net");
    const std::string two = copied (editor, "clones.net", "two.net");
    editor.start ({one, two}, "two.net");
    editor.key ("ctrl+Left");
    EXPECT_TRUE (editor.shows_window ("one.net"));
    editor.key ("ctrl+Left");
    EXPECT_TRUE (editor.shows_window ("two.net"));
}

TEST (editor_window, an_unreadable_first_file_leaves_an_empty_tab_of_its_name) {
    Editor editor;
    const std::string two = copied (editor, "clones.net", "two.net");
    editor.start ({(editor.home () / "missing.net").string (), two}, "two.net");
    editor.key ("ctrl+Left");
    ASSERT_TRUE (editor.shows_window ("missing.net"));
    editor.click (new_protein_x, tool_bar_y);
    ASSERT_TRUE (editor.shows_window ("missing.net\\*"));
    editor.key ("ctrl+s");
    ASSERT_TRUE (editor.shows_window ("missing.net"));
    EXPECT_NE (file_text (editor.home () / "missing.net").find ("protein"), std::string::npos);
}

TEST (editor_window, of_forty_files_thirty_two_are_opened) {
    Editor editor;
    std::vector<std::string> files;
    for (int i = 0; i < 40; ++i)
        files.push_back (copied (editor, "hexokinase.net", ("n" + std::to_string (i)).c_str ()));
    editor.start (files, "n31");
    EXPECT_EQ (editor.undo_file_count (), 32);
}

TEST (editor_window, an_edit_is_saved_and_the_star_goes) {
    Editor editor;
    const std::string file = copied (editor, "hexokinase.net", "hexo.net");
    editor.start ({file}, "hexo.net");
    editor.click (new_molecule_x, tool_bar_y);
    ASSERT_TRUE (editor.shows_window ("hexo.net\\*"));
    editor.key ("ctrl+s");
    ASSERT_TRUE (editor.shows_window ("hexo.net"));
    EXPECT_NE (file_text (file).find ("molecule"), std::string::npos);
}

TEST (editor_window, undo_and_redo_go_through_every_edit_and_the_load) {
    Editor editor;
    const std::string file = copied (editor, "hexokinase.net", "hexo.net");
    editor.start ({file}, "hexo.net");
    editor.key ("ctrl+s");
    const auto loaded = [&] {
        editor.key ("ctrl+s");
        std::this_thread::sleep_for (std::chrono::milliseconds (300));
        return file_text (file);
    };
    const std::string before = loaded ();
    editor.click (new_molecule_x, tool_bar_y);
    ASSERT_TRUE (editor.shows_window ("hexo.net\\*"));
    const std::string after = loaded ();
    EXPECT_NE (before, after);
    editor.key ("ctrl+z");
    std::this_thread::sleep_for (std::chrono::milliseconds (200));
    EXPECT_EQ (loaded (), before);
    editor.key ("ctrl+y");
    std::this_thread::sleep_for (std::chrono::milliseconds (200));
    EXPECT_EQ (loaded (), after);
}

TEST (editor_window, escape_does_not_quit) {
    Editor editor;
    editor.start ({}, "Ostrand");
    editor.key ("Escape");
    editor.key ("Escape");
    std::this_thread::sleep_for (std::chrono::milliseconds (300));
    EXPECT_TRUE (editor.program ().running ());
    EXPECT_TRUE (editor.has_window ("Ostrand"));
}

TEST (editor_window, leaves_without_a_question_when_nothing_is_modified) {
    Editor editor;
    editor.start ({}, "Ostrand");
    editor.key ("ctrl+q");
    EXPECT_EQ (editor.program ().wait (), 0);
    EXPECT_EQ (editor.undo_file_count (), 0);
}

TEST (editor_window, asks_before_it_leaves_a_modified_network) {
    Editor editor;
    editor.start ({}, "Ostrand");
    editor.click (new_protein_x, tool_bar_y);
    ASSERT_TRUE (editor.shows_colour (0, tab_bar_y - 6, 90, 14, 0xF0F000, 200));
    std::this_thread::sleep_for (std::chrono::milliseconds (200));
    editor.key ("ctrl+q");
    std::this_thread::sleep_for (std::chrono::milliseconds (400));
    editor.key ("Return"); // No is the default
    std::this_thread::sleep_for (std::chrono::milliseconds (400));
    EXPECT_TRUE (editor.program ().running ());
    editor.key ("ctrl+q");
    std::this_thread::sleep_for (std::chrono::milliseconds (400));
    editor.key ("y");
    EXPECT_EQ (editor.program ().wait (), 0);
    EXPECT_EQ (editor.undo_file_count (), 0);
}

TEST (editor_window, a_tab_is_dragged_to_another_place) {
    Editor editor;
    const std::string one = copied (editor, "hexokinase.net", "one.net");
    const std::string two = copied (editor, "clones.net", "two.net");
    const std::string three = copied (editor, "clones.net", "three.net");
    editor.start ({one, two, three}, "three.net");
    // The first tab goes behind the second.
    editor.drag (20, tab_bar_y, 105, tab_bar_y);
    std::this_thread::sleep_for (std::chrono::milliseconds (200));
    editor.key ("ctrl+Left");
    EXPECT_TRUE (editor.shows_window ("one.net"));
    editor.key ("ctrl+Left");
    EXPECT_TRUE (editor.shows_window ("two.net"));
}

TEST (editor_window, a_short_drag_of_a_tab_selects_it) {
    Editor editor;
    const std::string one = copied (editor, "hexokinase.net", "one.net");
    const std::string two = copied (editor, "clones.net", "two.net");
    editor.start ({one, two}, "two.net");
    editor.drag (20, tab_bar_y, 24, tab_bar_y);
    EXPECT_TRUE (editor.shows_window ("one.net"));
}

TEST (editor_window, dark_mode_is_a_black_canvas) {
    Editor editor;
    editor.start ({}, "Ostrand");
    EXPECT_TRUE (editor.shows_colour (2, canvas_y + 5, 1000, 500, 0xFFFFFF, 490000));
    editor.key ("ctrl+shift+d");
    EXPECT_TRUE (editor.shows_colour (2, canvas_y + 5, 1000, 500, 0x000000, 490000));
}

TEST (editor_window, on_a_scaled_display_a_node_is_where_it_is_seen) {
    Editor editor ({.scale = 2, .server = {"-screen", "0", "2200x1500x24"}});
    editor.start ({}, "Ostrand");
    editor.click (2 * new_molecule_x, 2 * tool_bar_y);
    // The node is yellow; it stands around (200, 50) of the canvas.
    ASSERT_TRUE (editor.shows_colour (300, 2 * canvas_y, 300, 300, 0xFFFF00, 2000));
    const Screenshot shot = editor.display ().screenshot ();
    int left = shot.width;
    int top = shot.height;
    for (int y = 2 * canvas_y; y < 2 * canvas_y + 300; ++y)
        for (int x = 300; x < 600; ++x)
            if (shot.at (x, y) == 0xFFFF00) {
                left = std::min (left, x);
                top = std::min (top, y);
            }
    const std::size_t before = editor.undo_file ().size ();
    editor.drag (left + 8, top + 30, left + 308, top + 230);
    EXPECT_TRUE (wait_until ([&] { return editor.undo_file ().size () > before; }));
    EXPECT_TRUE (editor.shows_colour (left + 300, top + 200, 200, 80, 0xFFFF00, 1000));
}

TEST (editor_window, fits_a_small_screen) {
    Editor editor ({.server = {"-screen", "0", "1024x600x24"}});
    editor.start ({}, "Ostrand");
    const std::string geometry = editor.display ().input (
        {"search", "--onlyvisible", "--name", "^Ostrand$", "getwindowgeometry", "--shell"});
    const auto value = [&] (const std::string& key) {
        return std::stoi (geometry.substr (geometry.find (key + "=") + key.size () + 1));
    };
    EXPECT_LE (value ("WIDTH"), 1024);
    EXPECT_LE (value ("HEIGHT"), 600);
}

TEST (editor_window, without_a_display_it_says_so) {
    const Environment none ("DISPLAY", "");
    const TemporaryFolder folder;
    const Environment at_home ("HOME", folder.path ().string ());
    const ProgramResult result = run_program ({"ostrand"});
    EXPECT_EQ (result.status, 1);
    EXPECT_EQ (result.error, "The editor needs a display. Is DISPLAY set?\n");
}

TEST (editor_window, without_opengl_it_says_so) {
    const VirtualDisplay display ({"-extension", "GLX"});
    const TemporaryFolder folder;
    const Environment at_home ("HOME", folder.path ().string ());
    const ProgramResult result = run_program ({"ostrand"});
    EXPECT_EQ (result.status, 1);
    EXPECT_EQ (result.error, "The editor needs OpenGL, which this display does not have.\n");
}

TEST (editor_window, goes_on_behind_a_broken_command) {
    Editor editor;
    editor.start ({}, "Ostrand");
    // Once it waits for events: a command that breaks holds no lock of the display either.
    std::this_thread::sleep_for (std::chrono::seconds (1));
    editor.signal (SIGSEGV);
    std::this_thread::sleep_for (std::chrono::milliseconds (200));
    editor.click (new_protein_x, tool_bar_y);
    EXPECT_TRUE (
        wait_until ([&] { return editor.undo_file ().find ("protein") != std::string::npos; }));
    EXPECT_TRUE (editor.program ().running ());
}

TEST (editor_window, help_windows_open) {
    Editor editor;
    editor.start ({}, "Ostrand");
    editor.key ("alt+h");
    editor.key ("a");
    EXPECT_TRUE (editor.shows_window ("About Ostrand"));
    editor.click_in ("About Ostrand", 310, 402); // Close
    EXPECT_TRUE (editor.loses_window ("About Ostrand"));
    editor.move (300, 300);
    editor.key ("alt+h");
    editor.key ("d");
    EXPECT_TRUE (editor.shows_window ("Ostrand Documentation"));
}

} // namespace
} // namespace ostrand::testing
