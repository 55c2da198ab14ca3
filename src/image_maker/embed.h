// Images as C++ text: their bytes, and the tables of the program.
// Layer: image_maker.
#pragma once
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace ostrand::image_maker {

/// What one image is embedded under: "interface", "hp-mouse-1".
struct ImageName {
    std::string folder;
    std::string name;
};

/// The array that holds one rendering of an image: `interface_hp_mouse_1_dark_2x`.
std::string array_name (const ImageName& image, int scale, bool dark);

/// The definition of an array with these bytes, followed by a zero that is not counted.
std::string array_text (std::string_view array, std::string_view bytes);

/// The definition of an array as another name of one defined before.
std::string alias_text (std::string_view array, std::string_view same_as);

/// The source file that includes all arrays and lists them in tables: manual and interface images
/// at both scales, light and dark, and icons at scale 1.
/// images  in the order of the tables
std::string tables_text (std::span<const ImageName> images);

} // namespace ostrand::image_maker
