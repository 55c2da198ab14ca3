// The viewer's window on a virtual display: what is drawn, mouse, wheel, keys, sliders, closing.
// Pictures are compared on facts that hold on every machine: a curve's colour stands where the data
// and the state say that the curve is.
#include "viewer/running_viewer.h"

#include <gtest/gtest.h>

namespace ostrand::viewer {
namespace {

TEST (window, opens_with_one_plane_for_each_value) {
    const Viewer viewer ({3});
    EXPECT_TRUE (viewer.shows (viewer.state));
    const Screenshot shot = viewer.display.screenshot ();
    EXPECT_GT (shot.count (20, 19, 31, 3, red), 50);            // the legend's first row
    EXPECT_GT (shot.count (20, 39, 31, 3, blue), 50);           // and its second
    EXPECT_GT (shot.count (2, 2, 896, 2, 0x004B4B), 800);       // the frame
    EXPECT_GT (shot.count (100, 100, 700, 480, 0xC0C0C0), 500); // the grid
}

TEST (window, a_file_without_series_draws_only_the_ground) {
    const TemporaryFolder folder;
    const VirtualDisplay display;
    RunningProgram program ({"ostrand", "-v", folder.write ("data", "1 0 5\n0\n")});
    display.place_window ("Stochora");
    bool white = false;
    for (int i = 0; i < 300 && !white; ++i) {
        std::this_thread::sleep_for (std::chrono::milliseconds (30));
        white = display.screenshot ().count (0, 0, 900, 600, 0xFFFFFF) == 900 * 600;
    }
    EXPECT_TRUE (white);
}

TEST (window, dragging_with_button_1_rotates) {
    const Viewer viewer ({3});
    viewer.drag ("1", 80, -40);
    ViewState turned = viewer.state;
    turned.rot_x = wrap_angle (turned.rot_x - 10);
    turned.rot_y += 20;
    EXPECT_TRUE (viewer.shows (turned));
    EXPECT_FALSE (viewer.sees_all (viewer.state));
}

TEST (window, dragging_with_button_3_moves) {
    const Viewer viewer ({3});
    viewer.drag ("3", 60, 40);
    ViewState moved = viewer.state;
    moved.pan_x += 60 * 1.18F;
    moved.pan_y += 40 * 1.18F;
    EXPECT_TRUE (viewer.shows (moved));
}

TEST (window, the_wheel_changes_the_distance) {
    const Viewer viewer ({3});
    viewer.wheel ("", "5");
    viewer.wheel ("", "5");
    viewer.wheel ("", "5");
    ViewState nearer = viewer.state;
    nearer.dist += 3000;
    EXPECT_TRUE (viewer.shows (nearer));
    for (int i = 0; i < 8; ++i) viewer.wheel ("", "4");
    ViewState farther = viewer.state;
    farther.dist -= 5000;
    EXPECT_TRUE (viewer.shows (farther));
}

TEST (window, the_wheel_never_comes_nearer_than_its_limit) {
    const Viewer viewer ({3});
    viewer.input ({"mousemove", "450", "300", "click", "--repeat", "40", "--delay", "5", "5"});
    ViewState nearest = viewer.state;
    nearest.dist = -20000;
    nearest.scale = fitting_scale (560, viewer.max);
    // At this distance only the lower curves stand inside the window.
    EXPECT_TRUE (viewer.wait_until ([&] { return viewer.sees (nearest, {red, 0, 1000}); }));
}

TEST (window, the_wheel_with_shift_changes_the_opening) {
    const Viewer viewer ({3});
    for (int i = 0; i < 4; ++i) viewer.wheel ("shift", "5");
    ViewState wider = viewer.state;
    wider.fov += 4;
    EXPECT_TRUE (viewer.shows (wider));
    for (int i = 0; i < 20; ++i) viewer.wheel ("shift", "4");
    ViewState least = viewer.state;
    least.fov = 1;
    EXPECT_TRUE (viewer.shows (least));
}

TEST (window, the_wheel_with_ctrl_changes_the_scale) {
    const Viewer viewer ({3});
    viewer.wheel ("ctrl", "4");
    ViewState half = viewer.state;
    half.auto_scale = false;
    half.scale = fitting_scale (560, viewer.max) / 2;
    EXPECT_TRUE (viewer.shows (half));
    viewer.wheel ("ctrl", "5");
    EXPECT_TRUE (viewer.shows (viewer.state));
}

TEST (window, the_wheel_with_ctrl_never_enlarges_the_scale_past_the_limit) {
    const Viewer viewer ({3});
    // Far beyond the limit and back: half of the largest scale that the limit allows.
    ViewState expected = viewer.state;
    expected.auto_scale = false;
    expected.scale = fitting_scale (560, viewer.max);
    for (int i = 0; i < 20; ++i) {
        viewer.wheel ("ctrl", "5");
        expected.scale = doubled_scale (expected.scale, 560);
    }
    for (int i = 0; i < 10; ++i) {
        viewer.wheel ("ctrl", "4");
        expected.scale /= 2;
    }
    EXPECT_TRUE (viewer.shows (expected));
}

TEST (window, plus_minus_and_space) {
    const Viewer viewer ({3});
    ViewState half = viewer.state;
    half.auto_scale = false;
    half.scale = fitting_scale (560, viewer.max) / 2;
    viewer.key ("plus");
    EXPECT_TRUE (viewer.shows (half));
    viewer.key ("equal");
    half.scale /= 2;
    EXPECT_TRUE (viewer.shows (half));
    viewer.key ("minus");
    half.scale *= 2;
    EXPECT_TRUE (viewer.shows (half));
    viewer.key ("space");
    ViewState reset = viewer.state;
    reset_view (reset, ViewSize::of (900, 600, 1));
    EXPECT_TRUE (viewer.shows (reset));
}

TEST (window, digits_hide_and_show_species) {
    const Viewer viewer ({2});
    ASSERT_TRUE (viewer.shows (viewer.state));
    viewer.key ("1");
    EXPECT_TRUE (viewer.wait_until (
        [&] { return viewer.display.screenshot ().count (0, 0, 900, 600, blue) == 0; }));
    EXPECT_TRUE (viewer.sees (viewer.state, {red, 0, 1000}));
    viewer.key ("1");
    EXPECT_TRUE (viewer.shows (viewer.state));
    viewer.key ("7"); // no such species: nothing happens
    EXPECT_TRUE (viewer.shows (viewer.state));
}

TEST (window, only_the_first_ten_species_can_be_toggled_from_the_keyboard) {
    const TemporaryFolder folder;
    std::string text = "1 12 2\n";
    for (int s = 0; s < 12; ++s) text += s == 11 ? "last\ne0000000\n" : "other\ne000\n";
    text += "0\n";
    for (int s = 0; s < 24; ++s) text += "5\n";
    const VirtualDisplay display;
    RunningProgram program ({"ostrand", "-v", folder.write ("data", text)});
    display.place_window ("Stochora");
    display.input ({"mousemove", "450", "500"});
    for (char key = '0'; key <= '9'; ++key) display.input ({"key", std::string (1, key)});
    // Ten rows are gone; what is left has closed up.
    bool closed = false;
    for (int i = 0; i < 200 && !closed; ++i) {
        std::this_thread::sleep_for (std::chrono::milliseconds (30));
        const Screenshot shot = display.screenshot ();
        closed = shot.count (20, 19, 31, 3, blue) > 50 && shot.count (20, 39, 31, 3, red) > 50 &&
                 shot.count (20, 50, 31, 300, blue) == 0;
    }
    EXPECT_TRUE (closed);
}

/// True when the slider panel's room holds a slider's trough.
bool slider_at (const Screenshot& shot, int y) {
    return shot.count (100, y, 60, 6, 0x001414) > 200;
}

TEST (window, leaving_and_entering_3d_shows_and_hides_the_sliders) {
    const Viewer two ({3, 2});
    const auto rows = [] (const Viewer& viewer, bool first, bool second) {
        return viewer.wait_until ([&] {
            const Screenshot shot = viewer.display.screenshot ();
            // With one variable the window ends below the first row.
            const bool below = viewer.planes == 2 && slider_at (shot, 637);
            return slider_at (shot, 607) == first && below == second;
        });
    };
    EXPECT_TRUE (rows (two, true, false)); // a concentration, no time
    two.key ("c");
    EXPECT_TRUE (rows (two, true, true));
    two.key ("c");
    EXPECT_TRUE (rows (two, true, false));
    const Viewer one ({3});
    EXPECT_TRUE (rows (one, false, false));
    const auto labelled = [&one] (bool wanted) { // the label stands beside its slider
        return one.wait_until ([&] {
            const int letters = one.display.screenshot ().count (812, 602, 80, 16, 0xFFFFFF);
            return wanted ? letters > 20 : letters == 0;
        });
    };
    one.key ("c");
    EXPECT_TRUE (rows (one, true, false)); // time alone, in the first row
    EXPECT_TRUE (labelled (true));
    one.key ("c");
    EXPECT_TRUE (rows (one, false, false));
    EXPECT_TRUE (labelled (false));
}

TEST (window, r_reverses_the_ground) {
    const Viewer viewer ({2});
    viewer.key ("r");
    EXPECT_TRUE (viewer.wait_until (
        [&] { return viewer.display.screenshot ().count (400, 30, 100, 4, 0x000000) > 300; }));
    EXPECT_TRUE (viewer.shows (viewer.state));
    viewer.key ("r");
    EXPECT_TRUE (viewer.wait_until (
        [&] { return viewer.display.screenshot ().count (400, 30, 100, 4, 0xFFFFFF) > 300; }));
}

TEST (window, starts_reversed_with_r) {
    const Viewer viewer ({2}, {"-r"});
    EXPECT_GT (viewer.display.screenshot ().count (400, 30, 100, 4, 0x000000), 300);
}

/// Where the flat chart has a count, at the given plane.
bool chart_sees (const Viewer& viewer, std::uint32_t colour, std::uint32_t plane,
                 std::uint32_t count) {
    const Screenshot shot = viewer.display.screenshot ();
    const float x = 80 + static_cast<float> (plane) * 740 / static_cast<float> (viewer.planes - 1);
    const float y = 520 - static_cast<float> (count) * 400 / static_cast<float> (viewer.max);
    return shot.has_near (x, y, colour);
}

TEST (window, c_and_t_switch_to_the_flat_chart_and_back) {
    const Viewer viewer ({3});
    for (const char* name : {"c", "t"}) {
        viewer.key (name);
        EXPECT_TRUE (viewer.wait_until ([&] {
            return chart_sees (viewer, red, 0, 1000) && chart_sees (viewer, red, 2, 2000) &&
                   chart_sees (viewer, blue, 1, 300);
        }));
        viewer.key (name);
        EXPECT_TRUE (viewer.shows (viewer.state));
    }
}

TEST (window, one_plane_stays_in_the_3d_drawing) {
    const Viewer viewer ({});
    viewer.key ("c");
    std::this_thread::sleep_for (std::chrono::milliseconds (200));
    EXPECT_TRUE (viewer.shows (viewer.state));
}

TEST (window, a_concentration_slider_selects_the_planes) {
    const Viewer viewer ({3, 2});
    ASSERT_TRUE (viewer.shows (viewer.state));
    // The slider of three values is 230 long, under the view; its right end is the third value.
    viewer.input ({"mousemove", "236", "610", "click", "1"});
    EXPECT_TRUE (viewer.shows (viewer.state, 4));
    viewer.input ({"mousemove", "125", "610", "click", "1"});
    EXPECT_TRUE (viewer.shows (viewer.state, 2));
}

TEST (window, the_time_slider_selects_the_second_of_the_flat_chart) {
    const TemporaryFolder folder;
    // Red jumps from 0 to 1000 in second 30 of 50, in both planes.
    std::string text = "2 1 50\nred\ne0000000\n1\nvar\n2\n602\n1204\n";
    for (int i = 0; i < 2; ++i) {
        for (int t = 0; t < 50; ++t) text += t < 30 ? "0\n" : "1000\n";
    }
    const VirtualDisplay display;
    RunningProgram program ({"ostrand", "-v", folder.write ("data", text)});
    display.place_window ("Stochora");
    const auto red_at = [&display] (float y) {
        for (int i = 0; i < 300; ++i) {
            if (display.screenshot ().has_near (450, y, red)) return true;
            std::this_thread::sleep_for (std::chrono::milliseconds (30));
        }
        return false;
    };
    for (int i = 0; i < 300 && display.screenshot ().count (20, 18, 30, 5, red) < 50; ++i) {
        std::this_thread::sleep_for (std::chrono::milliseconds (30));
    }
    display.input ({"mousemove", "450", "500", "key", "c"});
    EXPECT_TRUE (red_at (520));
    display.input ({"mousemove", "800", "610", "click", "1"});
    EXPECT_TRUE (red_at (120));
}

TEST (window, a_larger_window_shows_the_picture_alike) {
    Viewer viewer ({3});
    viewer.input ({"search", "--name", "Stochora", "windowsize", "1600", "1020"});
    viewer.width = 1600;
    viewer.height = 1000;
    EXPECT_TRUE (viewer.shows (viewer.start ()));
}

TEST (window, a_scaled_display_shows_the_picture_alike) {
    const Viewer viewer ({3}, {}, 1.75F);
    EXPECT_TRUE (viewer.shows (viewer.state));
    // The legend has grown: its second row is 40 units down.
    EXPECT_GT (viewer.display.screenshot ().count (35, 67, 52, 6, blue), 150);
}

TEST (window, what_the_user_moved_keeps_its_part_of_a_larger_window) {
    Viewer viewer ({3});
    viewer.drag ("3", 60, 40);
    ViewState moved = viewer.state;
    moved.pan_x += 60 * 1.18F;
    moved.pan_y += 40 * 1.18F;
    ASSERT_TRUE (viewer.shows (moved));
    viewer.input ({"search", "--name", "Stochora", "windowsize", "1800", "1120"});
    viewer.width = 1800;
    viewer.height = 1100;
    moved.pan_x *= 1800.0F / 900;
    moved.pan_y *= 1100.0F / 600;
    EXPECT_TRUE (viewer.shows (moved));
}

TEST (window, escape_closes_it_and_the_file_stays) {
    const Viewer viewer ({2});
    viewer.key ("Escape");
    EXPECT_EQ (viewer.program->wait (), 0);
    EXPECT_TRUE (std::filesystem::exists (viewer.file));
}

TEST (window, closing_deletes_the_file_with_d_and_not_before) {
    const Viewer viewer ({2}, {"-delete"});
    EXPECT_TRUE (std::filesystem::exists (viewer.file));
    viewer.key ("Escape");
    EXPECT_EQ (viewer.program->wait (), 0);
    EXPECT_FALSE (std::filesystem::exists (viewer.file));
}

TEST (window, a_picture_is_written_for_scripts) {
    const TemporaryFolder folder;
    const VirtualDisplay display;
    const std::string picture = (folder / "p.png").string ();
    setenv ("OSTRAND_PICTURE", picture.c_str (), 1);
    RunningProgram program (
        {"ostrand", "-v", folder.write ("data", "1 1 2\na\ne0000000\n0\n5\n6\n")});
    EXPECT_EQ (program.wait (), 0);
    unsetenv ("OSTRAND_PICTURE");
    EXPECT_EQ (testing::file_text (picture).substr (1, 3), "PNG");
}

TEST (window, a_picture_that_cannot_be_written_is_a_failure) {
    const TemporaryFolder folder;
    const VirtualDisplay display;
    const std::string data = folder.write ("data", "1 1 2\na\ne0000000\n0\n5\n6\n");
    const std::string old = folder.write ("p.png", "old");
    const std::string program = std::string (OSTRAND_BUILD_DIR) + "/ostrand";
    const auto run = [&] (const std::string& limit, const std::string& picture) {
        return testing::run_program ({"bash", "-c",
                                      limit + "OSTRAND_PICTURE=\"$1\" exec \"$0\" -v \"$2\"",
                                      program, picture, data});
    };
    const auto full = run ("", "/dev/full");
    EXPECT_EQ (full.status, 1);
    EXPECT_EQ (full.error, "Cannot write '/dev/full': No space left on device\n");
    const auto limited = run ("ulimit -f 1; ", old);
    EXPECT_EQ (limited.status, 1);
    EXPECT_EQ (limited.error, "Cannot write '" + old + "': File too large\n");
    EXPECT_EQ (testing::file_text (old), "old");
}

TEST (window, a_slow_file_shows_that_it_loads) {
    const TemporaryFolder folder;
    const VirtualDisplay display;
    RunningProgram program (
        {"/bin/bash", "-c",
         "{ printf '1 1 400000\\na\\ne0000000\\n0\\n'; for i in 1 2 3 4 5 6 7 8; do "
         "yes 7 | head -n 50000; sleep 0.3; done; } | \"$0\" -v -",
         std::string (OSTRAND_BUILD_DIR) + "/ostrand"});
    bool loading = false;
    bool shown = false;
    for (int i = 0; i < 600 && !shown; ++i) {
        std::this_thread::sleep_for (std::chrono::milliseconds (20));
        const std::string size = display.input (
            {"search", "--onlyvisible", "--name", "Stochora", "getwindowgeometry", "--shell"});
        loading = loading || size.find ("WIDTH=420") != std::string::npos;
        shown = size.find ("WIDTH=900") != std::string::npos;
    }
    EXPECT_TRUE (loading);
    EXPECT_TRUE (shown);
    display.input ({"mousemove", "450", "300", "key", "Escape"});
    EXPECT_EQ (program.wait (), 0);
}

} // namespace
} // namespace ostrand::viewer
