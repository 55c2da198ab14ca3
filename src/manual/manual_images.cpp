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

struct ImageRow {
    std::string_view name;
    std::string_view description; // what is to be seen, for those who do not see it
};

constexpr std::array<ImageRow, 19> rows{{
    {"Trivex.png", "The curve viewer: amounts over time, a plane for each amount of glucose"},
    {"align-after.png", "The same molecules in straight lines"},
    {"align-before.png", "Molecules that stand nearly in line"},
    {"banner.png", "Ostrand, a workbench for biochemical networks"},
    {"duplicate.png", "A reaction, and its selected copy beside it"},
    {"file-selection-box.png", "A line that asks for a file, with the list of names under it"},
    {"fog.png", "A network of which a part is dimmed"},
    {"formula-box.png", "The formula window: output, formula, inputs and signs"},
    {"calyx-window.png", "The window of Ostrand with the reaction of hexokinase"},
    {"keyboard-commands.png", "The cursor in a subscript of a name"},
    {"menu-type.png", "The menu of a molecule, with the kinds that it may have"},
    {"menubar.png", "The menu bar and the tool bar"},
    {"mouse-commands.png", "The menu of the arc between an enzyme and its reaction"},
    {"mouse-help.png", "The mouse help: what each button does at the pointer's place"},
    {"mouse-keyboard.png",
     "The mouse help while Ctrl and Mouse-1 are held: their row and column are marked"},
    {"merivale.png", "A tab with the network that computes the formula: GPI, PFK1 and ALDOA"},
    {"rubber-band-selection.png", "A frame that is drawn around molecules, which are selected"},
    {"ostrand.png", "The sign of Ostrand"},
    {"swap.png", "A reaction, and the same with its two substrates exchanged"},
}};

constexpr std::array<std::string_view, rows.size ()> names = [] {
    std::array<std::string_view, rows.size ()> all;
    std::ranges::transform (rows, all.begin (), &ImageRow::name);
    return all;
}();

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

std::string_view image_description (std::string_view source) {
    const auto* const row = std::ranges::find (rows, image_name (source), &ImageRow::name);
    return row == rows.end () ? std::string_view () : row->description;
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
