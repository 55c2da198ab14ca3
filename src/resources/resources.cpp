// Looking images up, and writing those of the manual to files.
#include "resources/resources.h"

#include "base/disk.h"
#include "resources/image_tables.h"

#include <cstdio>
#include <fstream>
#include <string>

namespace ostrand {
namespace {

namespace fs = std::filesystem;

constexpr int double_scale = 2;

const ResourceImage* find_in (const ResourceImage* table, std::string_view name) {
    for (; table->name != nullptr; ++table) {
        if (table->name == name) return table;
    }
    return nullptr;
}

bool can_be_read (const fs::path& file) {
    return std::ifstream (file, std::ios::binary).is_open ();
}

std::string_view bytes_of (const ResourceImage& image) {
    return {reinterpret_cast<const char*> (image.data), image.size};
}

} // namespace

const ResourceImage* find_image (std::string_view name, int scale, bool dark) {
    const bool large = scale == double_scale;
    const ResourceImage* of_manual = dark ? (large ? dark_manual_images_2x : dark_manual_images)
                                          : (large ? manual_images_2x : manual_images);
    const ResourceImage* of_interface =
        dark ? (large ? dark_interface_images_2x : dark_interface_images)
             : (large ? interface_images_2x : interface_images);
    const ResourceImage* image = find_in (of_interface, name);
    return image != nullptr ? image : find_in (of_manual, name);
}

void extract_manual_images (const fs::path& directory) {
    for (const ResourceImage* image = manual_images; image->name != nullptr; ++image) {
        const fs::path file = directory / image->name;
        if (can_be_read (file)) continue;
        std::string reason;
        if (!write_file (file, bytes_of (*image), reason)) {
            std::fprintf (stderr, "Warning: cannot create '%s'\n", file.c_str ());
        }
    }
}

} // namespace ostrand
