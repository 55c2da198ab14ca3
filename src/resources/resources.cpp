// Looking images up.
#include "resources/resources.h"

#include "resources/image_tables.h"

namespace ostrand {
namespace {

constexpr int double_scale = 2;

const ResourceImage* find_in (const ResourceImage* table, std::string_view name) {
    for (; table->name != nullptr; ++table) {
        if (table->name == name) return table;
    }
    return nullptr;
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

} // namespace ostrand
