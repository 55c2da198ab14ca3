// The viewer's window on a virtual display: what is drawn, mouse, wheel, keys, sliders, closing.
// Pictures are compared on facts that hold on every machine: a curve's colour stands where the data
// and the state say that the curve is.
#include "base/text.h"
#include "support/support.h"
#include "viewer/scene.h"
#include "viewer/series_view.h"
#include "viewer/virtual_display.h"

#include <chrono>
#include <cmath>
#include <gtest/gtest.h>
#include <thread>

namespace ostrand::viewer {
namespace {

using testing::RunningProgram;
using testing::Screenshot;
using testing::TemporaryFolder;
using testing::VirtualDisplay;

constexpr std::uint32_t red = 0xE00000;
constexpr std::uint32_t blue = 0x0000E0;
constexpr std::uint32_t points = 50;

/// Where a curve of a constant count is expected.
struct Expectation {
    std::uint32_t colour;
    std::uint32_t plane;
    std::uint32_t count;
};

/// A viewer on a result whose curves are constants: in simulation i, red stands at 1000 + 500 * i,
/// blue at 200 + 100 * i. `sizes` are the numbers of values of the varying concentrations.
class Viewer {
  public:
    explicit Viewer (std::vector<std::uint32_t> sizes, std::vector<std::string> words = {},
                     float scaling = 1)
        : width (static_cast<int> (900 * scaling)), height (static_cast<int> (600 * scaling)),
          unit (scaling) {
        if (scaling != 1) setenv ("FLTK_SCALING_FACTOR", std::to_string (scaling).c_str (), 1);
        std::string text;
        std::uint32_t n_simul = 1;
        for (const std::uint32_t size : sizes) n_simul *= size;
        text = format_text ("%u 2 %u\nred\ne0000000\nblue\ne000\n", n_simul, points);
        text += std::to_string (sizes.size ()) + "\n";
        for (std::size_t v = 0; v < sizes.size (); ++v) {
            text += format_text ("var%zu@&\n%u\n", v, sizes[v]);
            for (std::uint32_t i = 0; i < sizes[v]; ++i)
                text += format_text ("%u\n", 602 * (i + 1));
        }
        for (std::uint32_t i = 0; i < n_simul; ++i) {
            for (const std::uint32_t count : {red_count (i), blue_count (i)}) {
                for (std::uint32_t t = 0; t < points; ++t) text += std::to_string (count) + "\n";
            }
        }
        max = red_count (n_simul - 1);
        planes = sizes.empty () ? 1 : sizes.back ();
        file = folder.write ("data", text);
        words.insert (words.begin (), {"ostrand", "-v", file});
        program = std::make_unique<RunningProgram> (words);
        unsetenv ("FLTK_SCALING_FACTOR");
        display.place_window ("Stochora");
        wait_until ([this] { return sees (state, {red, 0, red_count (0)}); });
    }
    static std::uint32_t red_count (std::uint32_t i) { return 1000 + 500 * i; }
    static std::uint32_t blue_count (std::uint32_t i) { return 200 + 100 * i; }

    /// The state after window and first drawing.
    ViewState start () const {
        ViewState fresh;
        initial_pan (fresh,
                     ViewSize{static_cast<float> (width), static_cast<float> (height), unit});
        return fresh;
    }

    /// True when the curve stands where a state says, at several places along it.
    bool sees (const ViewState& expected, Expectation curve) const {
        return sees (display.screenshot (), expected, curve);
    }
    bool sees (const Screenshot& shot, const ViewState& expected, Expectation curve) const {
        const ViewSize size =
            ViewSize{static_cast<float> (width), static_cast<float> (height), unit};
        ViewState view = expected;
        if (view.auto_scale) view.scale = fitting_scale (size.h (), max);
        ViewLayout layout;
        layout.size = size;
        layout.planes = planes;
        layout.depth = std::trunc ((size.hp - 100) / (size.h () / 5)) * (size.h () / 5);
        const Camera camera (view, layout);
        int found = 0;
        for (const float part : {0.35F, 0.5F, 0.65F}) {
            const auto place = camera.project (
                {size.w * part, layout.y_of (curve.count, view.scale), layout.z_of (curve.plane)});
            if (place && shot.has_near (place->x, place->y, curve.colour)) ++found;
        }
        return found == 3;
    }
    bool sees_all (const ViewState& expected, std::uint32_t offset = 0) const {
        const Screenshot shot = display.screenshot ();
        for (std::uint32_t plane = 0; plane < planes; ++plane) {
            if (!sees (shot, expected, {red, plane, red_count (offset + plane)}) ||
                !sees (shot, expected, {blue, plane, blue_count (offset + plane)})) {
                return false;
            }
        }
        return true;
    }

    /// Waits until it holds; false when it never does.
    template <class Condition>
    bool wait_until (Condition condition) const {
        const auto end = std::chrono::steady_clock::now () + std::chrono::seconds (5);
        while (!condition ()) {
            if (std::chrono::steady_clock::now () > end) return false;
            std::this_thread::sleep_for (std::chrono::milliseconds (30));
        }
        return true;
    }
    bool shows (const ViewState& expected, std::uint32_t offset = 0) const {
        return wait_until ([&] { return sees_all (expected, offset); });
    }
    void input (std::vector<std::string> words) const { display.input (std::move (words)); }
    void key (const std::string& name) const { input ({"mousemove", "450", "500", "key", name}); }
    void drag (const std::string& button, int dx, int dy) const {
        input ({"mousemove", "400", "300", "mousedown", button});
        input ({"mousemove", std::to_string (400 + dx / 2), std::to_string (300 + dy / 2)});
        input (
            {"mousemove", std::to_string (400 + dx), std::to_string (300 + dy), "mouseup", button});
    }
    void wheel (const std::string& modifier, const std::string& button) const {
        input ({"mousemove", "450", "300"});
        if (!modifier.empty ()) input ({"keydown", modifier});
        input ({"click", button});
        if (!modifier.empty ()) input ({"keyup", modifier});
    }

    TemporaryFolder folder;
    VirtualDisplay display;
    int width; // of the view, device pixels
    int height;
    float unit;
    std::uint32_t max = 0;
    std::uint32_t planes = 1;
    std::string file;
    ViewState state = start ();
    std::unique_ptr<RunningProgram> program;
};

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
    one.key ("c");
    EXPECT_TRUE (rows (one, true, false)); // time alone, in the first row
    one.key ("c");
    EXPECT_TRUE (rows (one, false, false));
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
