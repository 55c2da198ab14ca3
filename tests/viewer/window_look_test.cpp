// What the viewer's window looks like on a virtual display: legend, flat chart at other scales and
// in reverse video, sliders of a narrow window, files and displays with nothing to show.
#include "viewer/running_viewer.h"

#include <gtest/gtest.h>

namespace ostrand::viewer {
namespace {

/// A viewer on a result's text.
struct Shown {
    explicit Shown (const std::string& text)
        : program ({"ostrand", "-v", folder.write ("data", text)}) {
        display.place_window ("Stochora");
    }
    /// Waits until a screenshot passes.
    template <class Condition>
    bool shows (Condition condition) const {
        for (int i = 0; i < 200; ++i) {
            if (condition (display.screenshot ())) return true;
            std::this_thread::sleep_for (std::chrono::milliseconds (30));
        }
        return false;
    }
    TemporaryFolder folder;
    VirtualDisplay display;
    RunningProgram program;
};

TEST (window_look, a_file_with_no_simulation_shows_only_the_ground) {
    const Shown shown ("0 1 3\na\nff0000\n0\n");
    EXPECT_TRUE (shown.shows ([] (const Screenshot& shot) {
        return shot.count (0, 0, 900, 600, 0xFFFFFF) == 900 * 600;
    }));
}

TEST (window_look, two_equal_values_with_one_simulation_show_one_plane) {
    const Shown shown ("1 1 3\na\ne0000000\n1\nb\n2\n602\n602\n5\n5\n5\n");
    EXPECT_TRUE (shown.shows (
        [] (const Screenshot& shot) { return shot.count (150, 60, 600, 60, red) > 150; }));
    shown.display.input ({"mousemove", "450", "500", "key", "c"});
    EXPECT_TRUE (shown.shows ([] (const Screenshot& shot) { // no flat chart of one plane
        return shot.count (150, 60, 600, 60, red) > 150;
    }));
}

TEST (window_look, a_display_without_opengl_is_told) {
    const TemporaryFolder folder;
    const VirtualDisplay display ({"-extension", "GLX"});
    const std::string file = folder.write ("data", "1 1 2\na\nff0000\n0\n1\n2\n");
    const auto done = testing::run_program ({"ostrand", "-v", file, "-d"}, folder.path ());
    EXPECT_EQ (done.status, 1);
    EXPECT_EQ (done.error, "Cannot open a window: the display has no OpenGL\n");
    EXPECT_TRUE (std::filesystem::exists (file));
}

TEST (window_look, curves_pass_under_the_legend_at_full_strength) {
    // The largest count runs along the top of the wall, from (148, 107) to (619, 82), and so
    // through the fourth and the fifth of six long names.
    std::string text = "1 6 50\n";
    for (int s = 0; s < 5; ++s) text += std::string (60, 'n') + "\ne000\n";
    text += "red\ne0000000\n0\n";
    for (int i = 0; i < 5 * 50; ++i) text += "0\n";
    for (int i = 0; i < 50; ++i) text += "1000\n";
    const Shown shown (text);
    EXPECT_TRUE (shown.shows ([] (const Screenshot& shot) {
        int seen = 0;
        for (int x = 160; x < 600; ++x) {
            const float y = 107 - 25.0F * static_cast<float> (x - 148) / 471;
            seen += shot.has_near (static_cast<float> (x), y, red, 2);
        }
        return seen > 400;
    }));
}

TEST (window_look, the_legend_of_many_species_stays_in_the_window) {
    std::string text = "1 60 2\n";
    for (int s = 0; s < 60; ++s)
        text += "species\n" + std::string (s < 59 ? "e000\n" : "e0000000\n");
    text += "0\n";
    for (int i = 0; i < 120; ++i) text += "5\n";
    const Shown shown (text);
    EXPECT_TRUE (shown.shows ([] (const Screenshot& shot) {
        int lines = 0; // pieces of line in blue: 28 pixels in a row and nothing above and below
        for (int y = 5; y < 595; ++y) {
            for (int x = 5; x < 860; ++x) {
                if (shot.count (x, y, 30, 1, blue) == 30 &&
                    shot.count (x - 1, y, 1, 1, blue) == 0 &&
                    shot.count (x + 30, y, 1, 1, blue) == 0 &&
                    shot.count (x, y - 1, 30, 1, blue) == 0) {
                    ++lines;
                }
            }
        }
        return lines >= 50;
    }));
}

/// Where the flat chart of a viewer has a count, at the given plane.
Point2 chart_place (const Viewer& viewer, std::uint32_t plane, std::uint32_t count) {
    const auto w = static_cast<float> (viewer.width);
    const auto h = static_cast<float> (viewer.height);
    const float u = viewer.unit;
    return {80 * u +
                static_cast<float> (plane) * (w - 160 * u) / static_cast<float> (viewer.planes - 1),
            h - 80 * u -
                static_cast<float> (count) * (h - 200 * u) / static_cast<float> (viewer.max)};
}

TEST (window_look, the_flat_chart_grows_with_the_display_scale) {
    const Viewer viewer ({3}, {}, 1.5F);
    viewer.input ({"mousemove", "675", "700", "key", "c"});
    EXPECT_TRUE (viewer.wait_until ([&] {
        const Screenshot shot = viewer.display.screenshot ();
        for (std::uint32_t plane = 0; plane < 3; ++plane) {
            const Point2 a = chart_place (viewer, plane, Viewer::red_count (plane));
            const Point2 b = chart_place (viewer, plane, Viewer::blue_count (plane));
            if (!shot.has_near (a.x, a.y, red) || !shot.has_near (b.x, b.y, blue)) return false;
        }
        return true;
    }));
    const Screenshot shot = viewer.display.screenshot ();
    EXPECT_GT (shot.count (119, 170, 3, 590, 0x004B4B), 900); // the axis, two pixels wide
    EXPECT_GT (shot.count (40, 160, 70, 40, 0x000000), 20);   // the label of the highest line
    EXPECT_GT (shot.count (1266, 160, 70, 40, 0x000000), 20); // and its count
}

TEST (window_look, the_axes_of_the_flat_chart_are_seen_in_reverse_video) {
    const Viewer viewer ({3}, {"-r"});
    viewer.key ("c");
    EXPECT_TRUE (viewer.wait_until ([&] {
        const Screenshot shot = viewer.display.screenshot ();
        return shot.count (80, 130, 1, 370, bright_axis_colour >> 8) > 350 &&
               shot.count (90, 520, 700, 1, bright_axis_colour >> 8) > 600;
    }));
    viewer.key ("r");
    EXPECT_TRUE (viewer.wait_until ([&] {
        return viewer.display.screenshot ().count (80, 130, 1, 370, frame_colour >> 8) > 350;
    }));
}

TEST (window_look, lines_of_the_flat_chart_are_at_full_strength) {
    const Viewer viewer ({3});
    viewer.key ("c");
    EXPECT_TRUE (viewer.wait_until ([&] {
        const Screenshot shot = viewer.display.screenshot ();
        int sharp = 0;
        for (int y = 100; y < 530; ++y) {
            // Nothing but the grid has its colour: no line is spread over two rows of pixels.
            sharp += shot.at (600, y) == 0xC0C0C0;
        }
        return sharp >= 4;
    }));
}

TEST (window_look, sliders_give_way_to_their_labels_in_a_narrow_window) {
    const Viewer viewer ({9, 2});
    EXPECT_GT (viewer.display.screenshot ().count (400, 605, 340, 10, 0x001414), 2500);
    viewer.input ({"search", "--name", "Stochora", "windowsize", "450", "500"});
    EXPECT_TRUE (viewer.wait_until ([&] {
        const Screenshot shot = viewer.display.screenshot ();
        // Height 500: the view takes what the row of sliders leaves.
        return shot.count (200, 455, 100, 10, 0x001414) > 700 &&
               shot.count (315, 452, 130, 16, 0xFFFFFF) > 20 &&
               shot.count (315, 455, 130, 10, 0x001414) == 0;
    }));
}

} // namespace
} // namespace ostrand::viewer
