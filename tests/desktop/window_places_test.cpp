// Places of windows: the file, and what fits on the screens there are.
#include "base/text.h"
#include "desktop/window_places.h"
#include "support/support.h"

#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <optional>
#include <random>

namespace ostrand::desktop {
namespace {

const std::vector<Place> one_screen{{0, 0, 1920, 1080}};
const std::vector<Place> two_screens{{0, 0, 1920, 1080}, {1920, 0, 1280, 1024}};

TEST (window_places, are_kept_for_each_arrangement_of_screens) {
    WindowPlaces places;
    places.note (screens_name (one_screen), "editor", {10, 20, 900, 700});
    places.note (screens_name (two_screens), "editor", {2000, 30, 800, 600});
    places.note (screens_name (one_screen), "manual", {1, 2, 300, 400});
    const WindowPlaces again = WindowPlaces::from_text (places.text ());
    EXPECT_EQ (again.find ("1920x1080", "editor"), (Place{10, 20, 900, 700}));
    EXPECT_EQ (again.find ("1920x1080+1280x1024", "editor"), (Place{2000, 30, 800, 600}));
    EXPECT_EQ (again.find ("1920x1080", "manual"), (Place{1, 2, 300, 400}));
    EXPECT_EQ (again.find ("1024x768", "editor"), std::nullopt);
    EXPECT_EQ (again.find ("1920x1080", "curves"), std::nullopt);
    EXPECT_EQ (again.text (), places.text ());
}

TEST (window_places, the_scale_is_kept_too) {
    WindowPlaces places;
    EXPECT_EQ (places.scale (), std::nullopt);
    places.note_scale (1.25F);
    EXPECT_EQ (WindowPlaces::from_text (places.text ()).scale (), 1.25F);
    for (const char* const wrong : {"scale 0\n", "scale nan\n", "scale inf\n", "scale 1.5x\n",
                                    "scale\n", "scale -1\n", "scale 1 1\n"})
        EXPECT_EQ (WindowPlaces::from_text (wrong).scale (), std::nullopt) << wrong;
}

TEST (window_places, lines_that_are_none_are_left_out) {
    const WindowPlaces places = WindowPlaces::from_text (
        "# a comment of six words here\nfoo\n1x1 editor 1 2 3\n1x1 editor 1 2 3 4\n"
        "1x1 editor 1 2 x 400\n1x1 editor 1 2 400 99999999999999999999\n1x1 editor 1 2 400 300\n"
        "2x2 editor 1 2 400 -300");
    EXPECT_EQ (places.find ("1x1", "editor"), (Place{1, 2, 400, 300}));
    EXPECT_EQ (places.find ("2x2", "editor"), std::nullopt);
}

TEST (window_places, arrangements_not_seen_for_long_are_forgotten) {
    WindowPlaces places;
    for (int i = 0; i < 40; ++i) {
        places.note (format_text ("%dx100", i), "editor", {i, 0, 100, 100});
        places.note ("0x100", "editor", {0, 0, 100, 100}); // in use all the time
    }
    EXPECT_TRUE (places.find ("0x100", "editor"));
    EXPECT_TRUE (places.find ("39x100", "editor"));
    EXPECT_FALSE (places.find ("1x100", "editor"));
    EXPECT_LT (places.text ().size (), 40U * WindowPlaces::most_screens + 100);
}

TEST (window_places, a_window_that_is_on_a_screen_stays_there) {
    EXPECT_EQ (fitted ({10, 20, 900, 700}, one_screen), (Place{10, 20, 900, 700}));
    EXPECT_EQ (fitted ({2000, 20, 900, 700}, two_screens), (Place{2000, 20, 900, 700}));
}

TEST (window_places, a_window_of_a_screen_that_is_gone_is_not_placed) {
    EXPECT_EQ (fitted ({2000, 20, 900, 700}, one_screen), std::nullopt);
    EXPECT_EQ (fitted ({10, 20, 900, 700}, {}), std::nullopt);
}

TEST (window_places, a_window_is_no_larger_than_its_screen_and_can_be_taken_hold_of) {
    EXPECT_EQ (fitted ({0, 0, 4000, 3000}, one_screen), (Place{0, 0, 1920, 1080}));
    const auto low = fitted ({1900, 1070, 500, 500}, one_screen);
    ASSERT_TRUE (low);
    EXPECT_EQ (low->x, 1820);
    EXPECT_EQ (low->y, 1050);
}

TEST (window_places, whatever_is_placed_can_be_taken_hold_of) {
    std::mt19937 random (7);
    std::uniform_int_distribution<int> at (-5000, 5000);
    std::uniform_int_distribution<int> size (50, 5000);
    for (int i = 0; i < 2000; ++i) {
        const Place place{at (random), at (random), size (random), size (random)};
        const auto fit = fitted (place, two_screens);
        if (!fit) continue;
        bool reachable = false;
        for (const Place& screen : two_screens) {
            const int wide =
                std::min (fit->x + fit->w, screen.x + screen.w) - std::max (fit->x, screen.x);
            reachable = reachable || (wide >= std::min (100, fit->w) && fit->y >= screen.y &&
                                      fit->y + 30 <= screen.y + screen.h && fit->w <= screen.w &&
                                      fit->h <= screen.h);
        }
        EXPECT_TRUE (reachable) << place.x << ' ' << place.y << ' ' << place.w << ' ' << place.h;
    }
}

TEST (window_places, the_file_lies_in_the_home_and_is_written_only_when_it_changes) {
    const testing::TemporaryFolder home;
    const std::string before = std::getenv ("HOME") != nullptr ? std::getenv ("HOME") : "/";
    setenv ("HOME", home.path ().c_str (), 1);
    std::string error;
    WindowPlaces places = read_window_places ();
    places.note ("1x1", "editor", {1, 2, 300, 400});
    EXPECT_TRUE (write_window_places (places, error));
    EXPECT_EQ (read_window_places ().find ("1x1", "editor"), (Place{1, 2, 300, 400}));
    const auto time = std::filesystem::last_write_time (home / ".ostrand_windows");
    EXPECT_TRUE (write_window_places (read_window_places (), error));
    EXPECT_EQ (std::filesystem::last_write_time (home / ".ostrand_windows"), time);
    std::filesystem::remove (home / ".ostrand_windows");
    std::filesystem::create_directory (home / ".ostrand_windows");
    EXPECT_EQ (read_window_places ().text (), WindowPlaces ().text ());
    EXPECT_FALSE (write_window_places (places, error));
    EXPECT_NE (error, "");
    setenv ("HOME", before.c_str (), 1);
}

} // namespace
} // namespace ostrand::desktop
