// The first start follows the desktop, saved preferences win, and windows come back where they were.
#include "shell/running_editor.h"

#include <gtest/gtest.h>
#include <sstream>

namespace ostrand::testing {
namespace {

constexpr std::uint32_t black = 0x000000;

/// Pixels of the canvas that are black.
int black_in_canvas (const Editor& editor) {
    return editor.display ().screenshot ().count (100, canvas_y + 100, 200, 200, black);
}

void wish_dark (const Editor& editor) {
    std::filesystem::create_directories (editor.home () / ".config/gtk-3.0");
    editor.home ().write (".config/gtk-3.0/settings.ini",
                          "[Settings]\ngtk-application-prefer-dark-theme=1\n");
}

/// Neither the machine's own settings folder nor its desktop count.
class DesktopLook : public ::testing::Test {
    Environment config_{"XDG_CONFIG_HOME", ""};
    Environment theme_{"GTK_THEME", ""};
    Environment desktop_{"XDG_CURRENT_DESKTOP", ""};
};

TEST_F (DesktopLook, the_first_start_is_dark_where_the_desktop_is) {
    Editor editor;
    wish_dark (editor);
    editor.start ({}, "Ostrand");
    EXPECT_TRUE (wait_until ([&] { return black_in_canvas (editor) > 30000; }));
}

TEST_F (DesktopLook, without_a_wish_the_first_start_is_light) {
    Editor editor;
    editor.start ({}, "Ostrand");
    EXPECT_TRUE (editor.shows_colour (100, canvas_y + 100, 200, 200, 0xFFFFFF, 30000));
}

TEST_F (DesktopLook, saved_preferences_win) {
    Editor editor;
    wish_dark (editor);
    editor.home ().write (".lattrix_rc",
                          "<?xml version=\"1.0\"?>\n<lattrixprefs xmlns=\"x\" lastupdate=\"1\">\n"
                          "<pref dark_mode=\"false\">\n</lattrixprefs>\n");
    editor.start ({}, "Ostrand");
    EXPECT_TRUE (editor.shows_colour (100, canvas_y + 100, 200, 200, 0xFFFFFF, 30000));
}

/// Place and size of the window, as the display tells them.
std::vector<int> geometry_of (const Editor& editor, const std::string& title) {
    std::istringstream text (editor.display ().input (
        {"search", "--onlyvisible", "--name", "^" + title + "$", "getwindowgeometry", "--shell"}));
    std::vector<int> numbers;
    for (std::string line; std::getline (text, line);) {
        for (const char* const name : {"X=", "Y=", "WIDTH=", "HEIGHT="})
            if (line.starts_with (name))
                numbers.push_back (std::stoi (line.substr (line.find ('=') + 1)));
    }
    return numbers;
}

void quit (Editor& editor) {
    editor.key ("ctrl+q");
    EXPECT_EQ (editor.program ().wait (), 0);
}

TEST_F (DesktopLook, the_window_comes_back_where_it_was) {
    Editor editor;
    editor.start ({}, "Ostrand");
    editor.display ().input ({"search", "--onlyvisible", "--name", "^Ostrand$", "windowsize",
                              "--sync", "%1", "880", "640", "windowmove", "--sync", "%1", "120",
                              "90"});
    const std::vector<int> wanted{120, 90, 880, 640};
    ASSERT_TRUE (wait_until ([&] { return geometry_of (editor, "Ostrand") == wanted; }));
    editor.move (400, 400);
    std::this_thread::sleep_for (std::chrono::milliseconds (300));
    quit (editor);
    EXPECT_NE (file_text (editor.home () / ".ostrand_windows").find (" editor 120 90 880 640\n"),
               std::string::npos);
    editor.launch ({});
    ASSERT_TRUE (editor.shows_window ("Ostrand"));
    EXPECT_TRUE (wait_until ([&] { return geometry_of (editor, "Ostrand") == wanted; }));
}

TEST_F (DesktopLook, a_place_of_other_screens_is_not_used) {
    Editor editor;
    editor.home ().write (".ostrand_windows", "123x456 editor 300 200 700 500\n");
    editor.launch ({});
    ASSERT_TRUE (editor.shows_window ("Ostrand"));
    EXPECT_NE (geometry_of (editor, "Ostrand"), (std::vector<int>{300, 200, 700, 500}));
}

/// Starts the editor without a scale of the environment.
void start_unscaled (Editor& editor) {
    const Environment at_home ("HOME", editor.home ().path ().string ());
    editor.run ({"/usr/bin/env", "-u", "FLTK_SCALING_FACTOR", OSTRAND_BUILD_DIR "/ostrand"});
}

TEST_F (DesktopLook, the_first_start_has_the_text_scale_of_the_desktop_and_keeps_it) {
    Editor editor;
    start_unscaled (editor);
    ASSERT_TRUE (editor.shows_window ("Ostrand"));
    const std::vector<int> plain = geometry_of (editor, "Ostrand");
    editor.kill ();
    editor.program ().wait ();
    std::filesystem::remove (editor.home () / ".kill_stack_0.dat");

    std::filesystem::create_directories (editor.home () / ".config/gtk-3.0");
    editor.home ().write (".config/gtk-3.0/settings.ini", "[Settings]\ngtk-xft-dpi=122880\n");
    start_unscaled (editor);
    ASSERT_TRUE (editor.shows_window ("Ostrand"));
    const std::vector<int> scaled = geometry_of (editor, "Ostrand"); // 1.25 times as large
    ASSERT_EQ (plain.size (), 4U);
    ASSERT_EQ (scaled.size (), 4U);
    EXPECT_NEAR (scaled[2], plain[2] * 1.25, 2);
    editor.display ().place_window ("Ostrand");
    editor.move (400, 400);
    std::this_thread::sleep_for (std::chrono::milliseconds (300));
    quit (editor);

    // With saved preferences the desktop is asked no more; what was in use stays.
    editor.home ().write (".lattrix_rc",
                          "<?xml version=\"1.0\"?>\n<lattrixprefs xmlns=\"x\" lastupdate=\"1\">\n"
                          "</lattrixprefs>\n");
    editor.home ().write (".config/gtk-3.0/settings.ini", "[Settings]\ngtk-xft-dpi=196608\n");
    start_unscaled (editor);
    ASSERT_TRUE (editor.shows_window ("Ostrand"));
    EXPECT_NEAR (geometry_of (editor, "Ostrand").at (2), scaled[2], 2);
}

} // namespace
} // namespace ostrand::testing
