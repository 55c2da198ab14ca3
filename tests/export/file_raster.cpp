// rsvg-convert and pdftoppm as readers of drawings.
#include "export/file_raster.h"

#include <png.h>

#include <cstdlib>
#include <cstring>

namespace ostrand::testing {
namespace {

bool is_installed (const std::string& program) {
    return run_program ({"/bin/sh", "-c", "command -v " + program}).status == 0;
}

/// "P6", width, height, 255, one white byte, then the pixels.
Raster read_ppm (const std::string& bytes) {
    Raster raster;
    int at = 0;
    if (std::sscanf (bytes.c_str (), "P6 %d %d 255%n", &raster.width, &raster.height, &at) != 2)
        return {};
    raster.rgb.assign (bytes.begin () + at + 1, bytes.end ());
    return raster;
}

} // namespace

Raster png_raster (const std::string& bytes) {
    Raster raster;
    png_image image;
    std::memset (&image, 0, sizeof image);
    image.version = PNG_IMAGE_VERSION;
    if (!png_image_begin_read_from_memory (&image, bytes.data (), bytes.size ())) return raster;
    image.format = PNG_FORMAT_RGB;
    raster.rgb.resize (PNG_IMAGE_SIZE (image));
    const png_color white{255, 255, 255};
    if (png_image_finish_read (&image, &white, raster.rgb.data (), 0, nullptr)) {
        raster.width = static_cast<int> (image.width);
        raster.height = static_cast<int> (image.height);
    }
    png_image_free (&image);
    return raster;
}

std::optional<Raster> svg_raster (const std::filesystem::path& path) {
    if (!is_installed ("rsvg-convert")) return std::nullopt;
    const ProgramResult result =
        run_program ({"/usr/bin/env", "rsvg-convert", "--background-color=white", path.string ()});
    EXPECT_EQ (result.status, 0) << result.error;
    return png_raster (result.out);
}

std::optional<Raster> pdf_raster (const std::filesystem::path& path) {
    if (!is_installed ("pdftoppm")) return std::nullopt;
    const ProgramResult result =
        run_program ({"/usr/bin/env", "pdftoppm", "-r", "72", path.string ()});
    EXPECT_EQ (result.status, 0) << result.error;
    EXPECT_EQ (result.error, "");
    return read_ppm (result.out);
}

} // namespace ostrand::testing
