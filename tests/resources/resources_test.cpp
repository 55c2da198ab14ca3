// The images that are part of the program: all there, of the right size, and written to files.
#include "resources/resources.h"

#include "support/support.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <png.h>
#include <string>
#include <vector>

namespace ostrand {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using testing::file_text;
using testing::TemporaryFolder;

/// An image and its size in pixels at scale 1.
struct Expected {
    const char* name;
    unsigned width;
    unsigned height;
};

constexpr std::array all_of_manual{
    Expected{"Trivex.png", 675, 450},
    Expected{"align-after.png", 300, 180},
    Expected{"align-before.png", 300, 180},
    Expected{"banner.png", 640, 120},
    Expected{"duplicate.png", 450, 150},
    Expected{"file-selection-box.png", 760, 160},
    Expected{"fog.png", 360, 180},
    Expected{"formula-box.png", 653, 107},
    Expected{"calyx-window.png", 773, 330},
    Expected{"keyboard-commands.png", 300, 110},
    Expected{"menu-type.png", 430, 275},
    Expected{"menubar.png", 632, 57},
    Expected{"mouse-commands.png", 340, 325},
    Expected{"mouse-help.png", 400, 76},
    Expected{"mouse-keyboard.png", 400, 76},
    Expected{"merivale.png", 773, 330},
    Expected{"rubber-band-selection.png", 340, 185},
    Expected{"ostrand.png", 128, 128},
    Expected{"swap.png", 490, 125},
};

constexpr std::array all_of_interface{
    Expected{"croix.png", 12, 12},        Expected{"plus.png", 12, 12},
    Expected{"hp-mouse.png", 44, 72},     Expected{"hp-mouse-1.png", 44, 72},
    Expected{"hp-mouse-2.png", 44, 72},   Expected{"hp-mouse-3.png", 44, 72},
    Expected{"kbd.png", 56, 72},          Expected{"kbd-shift.png", 56, 72},
    Expected{"kbd-ctrl.png", 56, 72},     Expected{"kbd-shift-ctrl.png", 56, 72},
    Expected{"about.png", 340, 200},      Expected{"oval.png", 21, 21},
    Expected{"molecule.png", 21, 21},     Expected{"rect.png", 21, 21},
    Expected{"recep.png", 21, 21},        Expected{"complex.png", 21, 21},
    Expected{"bold.png", 21, 21},         Expected{"italic.png", 21, 21},
    Expected{"memb_ellipse.png", 21, 21}, Expected{"memb_rect.png", 21, 21},
    Expected{"reaction.png", 21, 21},     Expected{"metabolite.png", 21, 21},
    Expected{"no-image.png", 32, 32},
};

template <std::size_t count>
std::vector<std::string> names_of (const std::array<Expected, count>& expected) {
    std::vector<std::string> names;
    for (const Expected& image : expected) names.emplace_back (image.name);
    return names;
}

std::vector<std::string> names_of (const ResourceImage* table) {
    std::vector<std::string> names;
    for (; table->name != nullptr; ++table) names.emplace_back (table->name);
    return names;
}

std::string bytes_of (const ResourceImage& image) {
    return {reinterpret_cast<const char*> (image.data), image.size};
}

/// A PNG's pixels, four bytes each (red, green, blue, opacity), as libpng reads them.
struct Pixels {
    unsigned width = 0;
    unsigned height = 0;
    std::vector<unsigned char> bytes;

    unsigned opacity (unsigned x, unsigned y) const {
        return bytes[(std::size_t{y} * width + x) * 4 + 3];
    }
    /// Brightness 0 to 255 of a pixel on a ground of the given brightness.
    double brightness (std::size_t pixel, double ground) const {
        const unsigned char* p = &bytes[pixel * 4];
        const double own = 0.3 * p[0] + 0.59 * p[1] + 0.11 * p[2];
        return (own * p[3] + ground * (255 - p[3])) / 255;
    }
};

Pixels decoded (const ResourceImage& image) {
    Pixels pixels;
    png_image png{};
    png.version = PNG_IMAGE_VERSION;
    if (png_image_begin_read_from_memory (&png, image.data, image.size) == 0) return pixels;
    png.format = PNG_FORMAT_RGBA;
    pixels.bytes.resize (PNG_IMAGE_SIZE (png));
    if (png_image_finish_read (&png, nullptr, pixels.bytes.data (), 0, nullptr) == 0) return {};
    pixels.width = png.width;
    pixels.height = png.height;
    return pixels;
}

/// The largest difference of brightness that an image has to a ground of the given one.
double contrast_on (const ResourceImage& image, double ground) {
    const Pixels pixels = decoded (image);
    double largest = 0;
    for (std::size_t i = 0; i < pixels.bytes.size () / 4; ++i) {
        largest = std::max (largest, std::abs (pixels.brightness (i, ground) - ground));
    }
    return largest;
}

/// The types of a PNG's chunks in order.
std::vector<std::string> chunks_of (const ResourceImage& image) {
    std::vector<std::string> types;
    const std::string bytes = bytes_of (image);
    constexpr std::size_t signature = 8;
    constexpr std::size_t around_data = 12; // length, type, check sum
    for (std::size_t at = signature; at + around_data <= bytes.size ();) {
        std::size_t length = 0;
        for (std::size_t i = 0; i < 4; ++i) {
            length = length << 8 | static_cast<unsigned char> (bytes[at + i]);
        }
        types.push_back (bytes.substr (at + 4, 4));
        at += around_data + length;
    }
    return types;
}

/// All images in all their forms, with a text that tells which.
template <typename Visit>
void for_all_forms (Visit visit) {
    const auto all_of = [&] (const auto& expected) {
        for (const Expected& image : expected) {
            for (const int scale : {1, 2}) {
                for (const bool dark : {false, true}) {
                    SCOPED_TRACE (std::string (image.name) + " x" + std::to_string (scale) +
                                  (dark ? " dark" : " light"));
                    const ResourceImage* found = find_image (image.name, scale, dark);
                    ASSERT_NE (found, nullptr);
                    visit (image, *found, static_cast<unsigned> (scale));
                }
            }
        }
    };
    all_of (all_of_manual);
    all_of (all_of_interface);
}

TEST (resources, the_tables_hold_all_names_in_their_order) {
    EXPECT_THAT (names_of (manual_images), ElementsAreArray (names_of (all_of_manual)));
    EXPECT_THAT (names_of (interface_images), ElementsAreArray (names_of (all_of_interface)));
}

TEST (resources, the_row_behind_the_last_is_empty) {
    EXPECT_EQ (manual_images[all_of_manual.size ()].name, nullptr);
    EXPECT_EQ (manual_images[all_of_manual.size ()].data, nullptr);
    EXPECT_EQ (manual_images[all_of_manual.size ()].size, 0U);
    EXPECT_EQ (interface_images[all_of_interface.size ()].name, nullptr);
}

TEST (resources, every_image_has_its_size_at_both_scales_on_both_grounds) {
    for_all_forms ([] (const Expected& expected, const ResourceImage& found, unsigned scale) {
        EXPECT_STREQ (found.name, expected.name);
        const Pixels pixels = decoded (found);
        EXPECT_EQ (pixels.width, expected.width * scale);
        EXPECT_EQ (pixels.height, expected.height * scale);
    });
}

TEST (resources, no_image_is_empty) {
    for_all_forms ([] (const Expected&, const ResourceImage& found, unsigned) {
        const Pixels pixels = decoded (found);
        unsigned painted = 0;
        for (unsigned y = 0; y < pixels.height; ++y) {
            for (unsigned x = 0; x < pixels.width; ++x) painted += pixels.opacity (x, y) > 0;
        }
        EXPECT_GT (painted * 20, pixels.width * pixels.height);
    });
}

TEST (resources, the_tables_are_scale_one_for_a_light_ground) {
    for (const ResourceImage* table : {manual_images, interface_images}) {
        for (; table->name != nullptr; ++table) {
            EXPECT_EQ (find_image (table->name, 1, false)->data, table->data) << table->name;
        }
    }
}

TEST (resources, a_scale_other_than_two_is_one) {
    EXPECT_EQ (find_image ("plus.png", 0, false), find_image ("plus.png", 1, false));
    EXPECT_EQ (find_image ("plus.png", 3, true), find_image ("plus.png", 1, true));
}

TEST (resources, a_name_that_is_none_is_not_found) {
    EXPECT_EQ (find_image ("nothing.png", 1, false), nullptr);
    EXPECT_EQ (find_image ("", 2, true), nullptr);
    EXPECT_EQ (find_image ("croix", 1, false), nullptr);
    EXPECT_EQ (find_image ("Croix.png", 1, false), nullptr);
}

TEST (resources, every_interface_image_is_seen_on_the_ground_that_it_is_for) {
    constexpr double light_window = 0xc0;
    constexpr double dark_window = 0x30;
    constexpr double clearly = 75;
    for (const Expected& expected : all_of_interface) {
        // Tabs are light in a dark window, too.
        const bool on_tab = std::string_view (expected.name) == "croix.png";
        EXPECT_GT (contrast_on (*find_image (expected.name, 1, false), light_window), clearly)
            << expected.name;
        EXPECT_GT (
            contrast_on (*find_image (expected.name, 1, true), on_tab ? light_window : dark_window),
            clearly)
            << expected.name;
    }
}

TEST (resources, tabs_stay_light_so_their_cross_stays_the_same) {
    EXPECT_EQ (find_image ("croix.png", 1, true)->data, find_image ("croix.png", 1, false)->data);
    EXPECT_NE (find_image ("plus.png", 1, true)->data, find_image ("plus.png", 1, false)->data);
}

TEST (resources, the_four_mice_and_the_four_keyboards_differ) {
    for (const auto& family :
         {std::vector{"hp-mouse.png", "hp-mouse-1.png", "hp-mouse-2.png", "hp-mouse-3.png"},
          std::vector{"kbd.png", "kbd-shift.png", "kbd-ctrl.png", "kbd-shift-ctrl.png"}}) {
        std::vector<std::string> seen;
        for (const char* name : family) seen.push_back (bytes_of (*find_image (name, 1, false)));
        std::sort (seen.begin (), seen.end ());
        EXPECT_EQ (std::unique (seen.begin (), seen.end ()), seen.end ()) << family[0];
    }
}

TEST (resources, images_hold_no_time_and_no_text) {
    for_all_forms ([] (const Expected&, const ResourceImage& found, unsigned) {
        for (const std::string& type : chunks_of (found)) {
            EXPECT_THAT (type,
                         ::testing::AnyOf ("IHDR", "PLTE", "sRGB", "gAMA", "bKGD", "IDAT", "IEND"));
        }
    });
}

TEST (resources, the_same_source_gives_the_same_bytes) {
    // What the build rendered, rendered once more from the text that it left.
    const fs::path made = fs::path (OSTRAND_BUILD_DIR) / "src/images/interface";
    const TemporaryFolder folder;
    for (const char* name : {"croix", "kbd-shift", "about"}) {
        const ResourceImage& image = *find_image (std::string (name) + ".png", 1, false);
        const Pixels pixels = decoded (image);
        const std::string again = (folder / "again.png").string ();
        const auto result =
            testing::run_program ({"rsvg-convert", "--width", std::to_string (pixels.width),
                                   "--height", std::to_string (pixels.height), "--output", again,
                                   (made / (std::string (name) + ".svg")).string ()});
        ASSERT_EQ (result.status, 0) << result.error;
        EXPECT_EQ (file_text (again), bytes_of (image)) << name;
    }
}

TEST (resources, the_icon_is_there_in_all_sizes) {
    EXPECT_THAT (names_of (icon_images),
                 ElementsAre ("ostrand-16.png", "ostrand-22.png", "ostrand-32.png",
                              "ostrand-48.png", "ostrand-64.png", "ostrand-128.png",
                              "ostrand-256.png"));
    const std::array<unsigned, 7> sizes{16, 22, 32, 48, 64, 128, 256};
    for (std::size_t i = 0; i < sizes.size (); ++i) {
        const Pixels pixels = decoded (icon_images[i]);
        EXPECT_EQ (pixels.width, sizes[i]);
        EXPECT_EQ (pixels.height, sizes[i]);
        ASSERT_GT (pixels.width, 0U);
        EXPECT_LT (pixels.opacity (0, 0), 128U) << "the corner is round";
        // The mark in the middle is white, the ground in the lower right part is dark.
        const auto on_black = [&] (unsigned x, unsigned y) {
            return pixels.brightness (std::size_t{y} * sizes[i] + x, 0);
        };
        EXPECT_GT (on_black (sizes[i] / 2, sizes[i] / 2), 250);
        EXPECT_LT (on_black (sizes[i] * 3 / 4, sizes[i] * 7 / 8), 110);
        EXPECT_EQ (pixels.opacity (sizes[i] * 3 / 4, sizes[i] * 7 / 8), 255U);
    }
}

} // namespace
} // namespace ostrand
