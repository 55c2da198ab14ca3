// Reading an image's source, and replacing its "insert" comments.
#include "image_maker/compose.h"

#include "base/disk.h"
#include "base/text.h"

#include <utility>

namespace ostrand::image_maker {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view insert_front = "<!-- insert ";
constexpr std::string_view comment_end = " -->";
/// Far more than an image needs: only one that inserts itself gets there.
constexpr int deepest_insert = 8;

/// What all files of one image share.
struct Composition {
    const fs::path& assets;
    bool dark;
    const Palette* palette;
    std::string& error;
};

/// What stands between the outermost tags of an SVG text.
std::string_view inner_svg (std::string_view svg) {
    const std::size_t tag = svg.find ("<svg");
    const std::size_t front = tag == std::string_view::npos ? tag : svg.find ('>', tag);
    const std::size_t end = svg.rfind ("</svg>");
    if (front == std::string_view::npos || end == std::string_view::npos || end < front) return {};
    return svg.substr (front + 1, end - front - 1);
}

/// A whole number in an attribute of the outermost tag; 0 when it is not there.
int outer_number (std::string_view svg, std::string_view attribute) {
    const std::size_t tag = svg.find ("<svg");
    if (tag == std::string_view::npos) return 0;
    const std::string_view outer = svg.substr (tag, svg.find ('>', tag) - tag);
    const std::size_t at = outer.find (attribute);
    return at == std::string_view::npos ? 0 : parse_atoi (outer.substr (at + attribute.size ()));
}

std::optional<std::string> composed_file (const Composition& image, const fs::path& file,
                                          int depth);

/// The content that one "insert" comment stands for.
/// name  of a file below assets
std::optional<std::string> inserted (const Composition& image, std::string_view name, int depth) {
    const fs::path file = image.assets / name;
    if (depth == deepest_insert) {
        image.error = file.string () + ": inserts itself";
        return std::nullopt;
    }
    const std::optional<std::string> text = composed_file (image, file, depth + 1);
    if (!text) return std::nullopt;
    return std::string (inner_svg (*text));
}

/// A source as it is to be shown, with all that it inserts.
std::optional<std::string> composed_file (const Composition& image, const fs::path& file,
                                          int depth) {
    std::optional<std::string> source = read_text_file (file);
    if (!source) {
        image.error = file.string () + ": cannot be read";
        return std::nullopt;
    }
    if (image.palette != nullptr) {
        const std::string color = image.palette->unknown_color (*source);
        if (!color.empty ()) {
            image.error = file.string () + ": the colour " + color + " is not in the palette";
            return std::nullopt;
        }
        if (image.dark) source = image.palette->darkened (*source);
    }
    std::string result;
    std::size_t done = 0;
    for (std::size_t at = source->find (insert_front); at != std::string::npos;
         at = source->find (insert_front, done)) {
        const std::size_t name = at + insert_front.size ();
        const std::size_t end = source->find (comment_end, name);
        if (end == std::string::npos) break;
        const auto content =
            inserted (image, std::string_view (*source).substr (name, end - name), depth);
        if (!content) return std::nullopt;
        result.append (*source, done, at - done);
        result += *content;
        done = end + comment_end.size ();
    }
    result.append (*source, done);
    return result;
}

} // namespace

std::optional<ComposedImage> compose_image (const fs::path& assets, std::string_view name,
                                            bool dark, const Palette* palette, std::string& error) {
    const fs::path file = assets / (std::string (name) + ".svg");
    std::optional<std::string> svg = composed_file ({assets, dark, palette, error}, file, 0);
    if (!svg) return std::nullopt;
    ComposedImage image{.svg = std::move (*svg)};
    image.width = outer_number (image.svg, " width=\"");
    image.height = outer_number (image.svg, " height=\"");
    if (image.width <= 0 || image.height <= 0) {
        error = file.string () + ": no width and height";
        return std::nullopt;
    }
    return image;
}

} // namespace ostrand::image_maker
