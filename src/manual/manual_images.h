// The pictures of the manual: their names, their sizes, their copies for a browser.
// Layer: manual.
#pragma once
#include "base/resource_image.h"
#include "manual/measure.h"

#include <filesystem>
#include <span>
#include <string_view>

namespace ostrand::manual {

/// The names that the manual may use, in the table's order.
std::span<const std::string_view> manual_image_names ();

/// The last part of an "img"'s source: behind the last "\", failing that behind the last "/".
std::string_view image_name (std::string_view source);

/// What is to be seen on the picture that an "img" names, in words; empty for a name that is not in
/// the table.
std::string_view image_description (std::string_view source);

/// The picture that an "img" names, with its size as its PNG head tells it. A name that is not in
/// the table gives the first picture with size 0.
ImageBox find_image (std::span<const ResourceImage> images, std::string_view source);

/// Writes the pictures into a folder, so that a browser can show a saved manual. What is there
/// already is kept, whatever it holds. A picture that cannot be written is warned of on standard
/// error and leaves nothing behind.
void extract_manual_images (std::span<const ResourceImage> images,
                            const std::filesystem::path& folder);

} // namespace ostrand::manual
