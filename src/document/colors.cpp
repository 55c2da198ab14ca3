// The colour map, the dark map, lighter colours.
#include "document/colors.h"

#include <algorithm>
#include <array>
#include <utility>

namespace ostrand::document {
namespace {

// The map's first 56 entries, 0xRRGGBB00: eight plain colours, eight mixed ones, sixteen that are
// free for users (with the values that they start with), a ramp of 24 greys. A test holds all 256
// against the toolkit.
constexpr std::array<std::uint32_t, 56> low_entries{
    0x00000000, 0xff000000, 0x00ff0000, 0xffff0000, 0x0000ff00, 0xff00ff00, 0x00ffff00, 0xffffff00,
    0x55555500, 0xc6717100, 0x71c67100, 0x8e8e3800, 0x7171c600, 0x8e388e00, 0x388e8e00, 0x00008000,
    0xa8a89800, 0xe8e8d800, 0x68685800, 0x98a8a800, 0xd8e8e800, 0x58686800, 0x9c9ca800, 0xdcdce800,
    0x5c5c6800, 0x9ca89c00, 0xdce8dc00, 0x5c685c00, 0x90909000, 0xc0c0c000, 0x50505000, 0xa0a0a000,
    0x00000000, 0x0d0d0d00, 0x1a1a1a00, 0x26262600, 0x31313100, 0x3d3d3d00, 0x48484800, 0x55555500,
    0x5f5f5f00, 0x6a6a6a00, 0x75757500, 0x80808000, 0x8a8a8a00, 0x95959500, 0xa0a0a000, 0xaaaaaa00,
    0xb5b5b500, 0xc0c0c000, 0xcbcbcb00, 0xd5d5d500, 0xe0e0e000, 0xeaeaea00, 0xf5f5f500, 0xffffff00,
};

// Entries 56 to 255 are a cube of five blues by five reds by eight greens, green counting fastest.
constexpr std::array<std::uint32_t, 5> fifths{0x00, 0x3f, 0x7f, 0xbf, 0xff};
constexpr std::array<std::uint32_t, 8> eighths{0x00, 0x24, 0x48, 0x6d, 0x91, 0xb6, 0xda, 0xff};

constexpr std::array<std::uint32_t, 256> make_map () {
    std::array<std::uint32_t, 256> map{};
    for (unsigned i = 0; i < low_entries.size (); ++i) map[i] = low_entries[i];
    for (unsigned i = 56; i < map.size (); ++i) {
        const unsigned cell = i - 56;
        map[i] = fifths[cell / 8 % 5] << 24 | eighths[cell % 8] << 16 | fifths[cell / 40] << 8;
    }
    return map;
}

constexpr std::array<std::uint32_t, 256> color_map = make_map ();

constexpr std::array<std::pair<unsigned, unsigned>, 16> dark_map{{
    {0, 7},
    {7, 0},
    {3, 82},
    {4, 6},
    {6, 0x1040C000},
    {72, 5},
    {58, 207},
    {207, 58},
    {159, 100},
    {173, 113},
    {204, 192},
    {247, 178},
    {0x7FFFBF00, 100},
    {0xBF91BF00, 192},
    {0xFFB67F00, 113},
    {0xFFFF0000, 82},
}};

struct Rgb {
    int red;
    int green;
    int blue;
};

Rgb split (unsigned color) {
    const std::uint32_t rgb = color_rgb (color);
    return {static_cast<int> (rgb >> 24), static_cast<int> (rgb >> 16 & 255U),
            static_cast<int> (rgb >> 8 & 255U)};
}

/// Black is given as the map's entry 56, since 0 would count as an index.
unsigned join (int red, int green, int blue) {
    const auto byte = [] (int value) { return static_cast<unsigned> (std::clamp (value, 0, 255)); };
    const unsigned color = byte (red) << 24 | byte (green) << 16 | byte (blue) << 8;
    return color == 0 ? 56U : color;
}

} // namespace

std::uint32_t color_rgb (unsigned color) {
    return color < color_map.size () ? color_map[color] : color & 0xFFFFFF00U;
}

unsigned dark_color (unsigned color) {
    for (const auto& [from, to] : dark_map)
        if (from == color) return to;
    return color;
}

unsigned lighten (unsigned color, int n) {
    const Rgb rgb = split (color);
    return join (rgb.red + n, rgb.green + n, rgb.blue + n);
}

unsigned light_band_color (unsigned color) {
    const Rgb rgb = split (color);
    const int largest = std::max ({rgb.red, rgb.green, rgb.blue});
    if (largest == 0) return join (224, 224, 224); // black has no hue: a light grey
    // Scaled to full value, then moved three quarters of the way to white.
    const auto band = [largest] (int part) { return 255 - (255 - part * 255 / largest) / 4; };
    return join (band (rgb.red), band (rgb.green), band (rgb.blue));
}

} // namespace ostrand::document
