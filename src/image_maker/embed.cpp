// Bytes as string literals, names of arrays, tables.
#include "image_maker/embed.h"

#include "base/text.h"

namespace ostrand::image_maker {
namespace {

constexpr std::size_t bytes_in_a_line = 24;

/// One table of the program.
struct Table {
    const char* folder;
    const char* name; // in the program
    int scale;
    bool dark;
};
constexpr Table tables[] = {
    {"manual", "manual_images", 1, false},
    {"manual", "manual_images_2x", 2, false},
    {"manual", "dark_manual_images", 1, true},
    {"manual", "dark_manual_images_2x", 2, true},
    {"interface", "interface_images", 1, false},
    {"interface", "interface_images_2x", 2, false},
    {"interface", "dark_interface_images", 1, true},
    {"interface", "dark_interface_images_2x", 2, true},
    {"icon", "icon_images", 1, false},
};

} // namespace

std::string array_name (const ImageName& image, int scale, bool dark) {
    std::string name = image.folder + "_" + image.name;
    for (char& c : name) {
        if (c == '-') c = '_';
    }
    if (dark) name += "_dark";
    return name + (scale == 2 ? "_2x" : "_1x");
}

std::string array_text (std::string_view array, std::string_view bytes) {
    // A string literal, since compilers read it many times faster than a list of numbers.
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text = "constexpr unsigned char ";
    text.append (array).append ("[] =");
    for (std::size_t i = 0; i < bytes.size (); ++i) {
        if (i % bytes_in_a_line == 0) text += i == 0 ? "\n    \"" : "\"\n    \"";
        const auto byte = static_cast<unsigned char> (bytes[i]);
        text.append ("\\x").append (1, digits[byte >> 4]).append (1, digits[byte & 15U]);
    }
    return text + (bytes.empty () ? " \"\";\n" : "\";\n");
}

std::string alias_text (std::string_view array, std::string_view same_as) {
    return format_text ("constexpr const auto& %.*s = %.*s;\n", static_cast<int> (array.size ()),
                        array.data (), static_cast<int> (same_as.size ()), same_as.data ());
}

std::string tables_text (std::span<const ImageName> images) {
    std::string text = "// Made by the build from the folder assets.\n"
                       "#include \"resources/resources.h\"\n\n"
                       "#include \"resources/image_tables.h\"\n\n"
                       "#include <cstddef>\n\n"
                       "namespace ostrand {\nnamespace {\n";
    for (const ImageName& image : images) {
        text += "#include \"" + image.folder + "/" + image.name + ".inc\"\n";
    }
    text += "\ntemplate <std::size_t size>\n"
            "constexpr ResourceImage row (const char* name, const unsigned char (&bytes)[size]) {\n"
            "    return {name, bytes, static_cast<unsigned> (size - 1)};\n}\n\n} // namespace\n";
    for (const Table& table : tables) {
        text += format_text ("\nconst ResourceImage %s[] = {\n", table.name);
        for (const ImageName& image : images) {
            if (image.folder != table.folder) continue;
            text += "    row (\"" + image.name + ".png\", " +
                    array_name (image, table.scale, table.dark) + "),\n";
        }
        text += "    {nullptr, nullptr, 0},\n};\n";
    }
    return text + "\n} // namespace ostrand\n";
}

} // namespace ostrand::image_maker
