// Cutting pictures out, joining and writing them.
#include "pictures/picture.h"

#include <png.h>

#include <algorithm>
#include <set>

namespace ostrand::testing {
namespace {

constexpr std::size_t largest_table = 256;

void append_colour (std::vector<std::uint8_t>& bytes, std::uint32_t colour) {
    for (const int shift : {16, 8, 0})
        bytes.push_back (static_cast<std::uint8_t> (colour >> shift));
}

} // namespace

Screenshot cut_out (const Screenshot& shot, const Area& area) {
    Screenshot part{area.width, area.height, {}};
    for (int y = area.y; y < area.y + area.height; ++y)
        for (int x = area.x; x < area.x + area.width; ++x) {
            const bool there = x >= 0 && y >= 0 && x < shot.width && y < shot.height;
            part.pixels.push_back (there ? shot.at (x, y) : 0);
        }
    return part;
}

Screenshot beside (const Screenshot& left, const Screenshot& right, int gap) {
    Screenshot both{left.width + gap + right.width, std::min (left.height, right.height), {}};
    for (int y = 0; y < both.height; ++y) {
        for (int x = 0; x < left.width; ++x) both.pixels.push_back (left.at (x, y));
        both.pixels.insert (both.pixels.end (), static_cast<std::size_t> (gap), left.at (0, 0));
        for (int x = 0; x < right.width; ++x) both.pixels.push_back (right.at (x, y));
    }
    return both;
}

Screenshot halved (const Screenshot& picture) {
    Screenshot half{picture.width / 2, picture.height / 2, {}};
    for (int y = 0; y < half.height; ++y)
        for (int x = 0; x < half.width; ++x) {
            std::uint32_t mean = 0;
            for (const int shift : {16, 8, 0}) {
                std::uint32_t sum = 2; // rounds to the nearest
                for (const int dy : {0, 1})
                    for (const int dx : {0, 1})
                        sum += picture.at (2 * x + dx, 2 * y + dy) >> shift & 0xFFU;
                mean |= sum / 4 << shift;
            }
            half.pixels.push_back (mean);
        }
    return half;
}

bool write_picture (const Screenshot& picture, const std::filesystem::path& path) {
    const std::set<std::uint32_t> colours (picture.pixels.begin (), picture.pixels.end ());
    std::vector<std::uint8_t> table;
    std::vector<std::uint8_t> rows;
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32> (picture.width);
    image.height = static_cast<png_uint_32> (picture.height);
    if (colours.size () <= largest_table) {
        image.format = PNG_FORMAT_RGB_COLORMAP;
        image.colormap_entries = static_cast<png_uint_32> (colours.size ());
        for (const std::uint32_t colour : colours) append_colour (table, colour);
        for (const std::uint32_t pixel : picture.pixels) {
            const auto place = std::distance (colours.begin (), colours.find (pixel));
            rows.push_back (static_cast<std::uint8_t> (place));
        }
    } else {
        image.format = PNG_FORMAT_RGB;
        for (const std::uint32_t pixel : picture.pixels) append_colour (rows, pixel);
    }
    return png_image_write_to_file (&image, path.c_str (), 0, rows.data (), 0, table.data ()) != 0;
}

} // namespace ostrand::testing
