// The script that takes the pictures of the manual.
#include "support/support.h"

#include <algorithm>
#include <cstdlib>
#include <gtest/gtest.h>
#include <png.h>

namespace ostrand::testing {
namespace {

namespace fs = std::filesystem;

struct Picture {
    unsigned width = 0;
    unsigned height = 0;
    std::vector<unsigned char> bytes; // red, green and blue of each pixel
};

Picture decoded (const fs::path& path) {
    Picture picture;
    png_image png{};
    png.version = PNG_IMAGE_VERSION;
    if (png_image_begin_read_from_file (&png, path.c_str ()) == 0) return picture;
    png.format = PNG_FORMAT_RGB;
    picture.bytes.resize (PNG_IMAGE_SIZE (png));
    if (png_image_finish_read (&png, nullptr, picture.bytes.data (), 0, nullptr) == 0) return {};
    picture.width = png.width;
    picture.height = png.height;
    return picture;
}

/// The part of all pixels that differ clearly in a colour.
double difference (const Picture& one, const Picture& other) {
    constexpr int clearly = 48;
    std::size_t count = 0;
    for (std::size_t i = 0; i + 2 < one.bytes.size (); i += 3) {
        bool differs = false;
        for (std::size_t part = i; part < i + 3; ++part)
            differs = differs || std::abs (one.bytes[part] - other.bytes[part]) > clearly;
        count += differs ? 1 : 0;
    }
    return static_cast<double> (count) / (one.width * one.height);
}

/// The committed pictures for a light ground.
std::vector<std::string> light_pictures () {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator (source_path ("assets/manual"))) {
        const std::string name = entry.path ().filename ().string ();
        if (name.ends_with (".png") && name.find ("-dark") == std::string::npos)
            names.push_back (name);
    }
    std::ranges::sort (names);
    return names;
}

TEST (manual_pictures, are_taken_again_as_they_are) {
    if (sanitized) GTEST_SKIP () << "a sanitized editor takes too long to show what is pictured";
    for (const char* tool : {"Xvfb", "xdotool"})
        if (run_program ({"/usr/bin/env", "which", tool}).status != 0)
            GTEST_SKIP () << tool << " is not installed";
    const TemporaryFolder folder;
    const auto script =
        run_program ({"/usr/bin/env", std::string ("OSTRAND_BUILD=") + OSTRAND_BUILD_DIR,
                      source_path ("scripts/take_manual_pictures.sh").string (),
                      folder.path ().string (), "light"});
    ASSERT_EQ (script.status, 0) << script.error;
    const std::vector<std::string> names = light_pictures ();
    EXPECT_EQ (names.size (), 2 * 17U); // at both scales
    EXPECT_EQ (folder.names (), names);
    for (const std::string& name : names) {
        const Picture there = decoded (source_path ("assets/manual") / name);
        const Picture taken = decoded (folder / name);
        ASSERT_GT (there.width, 0U) << name;
        ASSERT_EQ (taken.width, there.width) << name;
        ASSERT_EQ (taken.height, there.height) << name;
        // Letters may be drawn a little otherwise on another machine.
        EXPECT_LT (difference (taken, there), 0.05) << name;
    }
}

TEST (manual_pictures, are_small_and_as_wide_as_fits_beside_text) {
    for (const std::string& name : light_pictures ()) {
        if (name.find ("@2x") != std::string::npos) continue;
        const fs::path path = source_path ("assets/manual") / name;
        EXPECT_LT (fs::file_size (path), 60000U) << name;
        const unsigned width = decoded (path).width;
        EXPECT_GE (width, 300U) << name;
        EXPECT_LE (width, 800U) << name;
    }
}

} // namespace
} // namespace ostrand::testing
