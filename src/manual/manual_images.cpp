// Names, sizes and copies of the pictures.
#include "manual/manual_images.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>

namespace ostrand::manual {
namespace {

constexpr std::array<std::string_view, 19> names{
    "Trivex.png",
    "align-after.png",
    "align-before.png",
    "banner.png",
    "duplicate.png",
    "file-selection-box.png",
    "fog.png",
    "formula-box.png",
    "calyx-window.png",
    "keyboard-commands.png",
    "menu-type.png",
    "menubar.png",
    "mouse-commands.png",
    "mouse-help.png",
    "mouse-keyboard.png",
    "merivale.png",
    "rubber-band-selection.png",
    "ostrand.png",
    "swap.png",
};

struct CloseFile {
    void operator() (std::FILE* file) const { std::fclose (file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

// A PNG file begins with eight bytes of its own and the length and name of its head, whose first
// two numbers are width and height.
constexpr unsigned width_place = 16;
constexpr unsigned height_place = 20;
constexpr unsigned head_end = 24;
constexpr std::uint32_t largest_side = 32767; // no screen shows more

int big_endian (const unsigned char* bytes) {
    const std::uint32_t value = static_cast<std::uint32_t> (bytes[0]) << 24 |
                                static_cast<std::uint32_t> (bytes[1]) << 16 |
                                static_cast<std::uint32_t> (bytes[2]) << 8 | bytes[3];
    return static_cast<int> (std::min (value, largest_side));
}

bool write_new (const std::filesystem::path& path, const ResourceImage& image) {
    // "x": only a file that this call makes, never what a link points to.
    File file (std::fopen (path.c_str (), "wbx"));
    if (!file) return false;
    const bool written = std::fwrite (image.data, 1, image.size, file.get ()) == image.size;
    if (std::fclose (file.release ()) == 0 && written) return true;
    // A part of a picture would be kept at the next call.
    std::error_code ignored;
    std::filesystem::remove (path, ignored);
    return false;
}

} // namespace

std::span<const std::string_view> manual_image_names () { return names; }

std::string_view image_name (std::string_view source) {
    std::size_t separator = source.rfind ('\\');
    if (separator == std::string_view::npos) separator = source.rfind ('/');
    return separator == std::string_view::npos ? source : source.substr (separator + 1);
}

ImageBox find_image (std::span<const ResourceImage> images, std::string_view source) {
    const auto found = std::ranges::find (images, image_name (source), &ResourceImage::name);
    if (found == images.end ()) {
        return {images.empty () ? std::string () : std::string (images.front ().name), 0, 0};
    }
    if (found->size < head_end) return {std::string (found->name), 0, 0};
    return {std::string (found->name), big_endian (found->data + width_place),
            big_endian (found->data + height_place)};
}

void extract_manual_images (std::span<const ResourceImage> images,
                            const std::filesystem::path& folder) {
    for (const ResourceImage& image : images) {
        const std::filesystem::path path = folder / image.name;
        if (const File there (std::fopen (path.c_str (), "rb")); there) continue;
        if (write_new (path, image)) continue;
        std::fprintf (stderr, "Warning: cannot create '%s'\n", path.c_str ());
    }
}

} // namespace ostrand::manual
