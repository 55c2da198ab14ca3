// All images of the program: from the folder assets to C++ files in the build folder.
// Layer: image_maker.
#pragma once
#include "image_maker/embed.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ostrand::image_maker {

/// Reads the list of images: a line holds a folder and a name, "#" at its front makes it a comment.
/// Nothing, with the line in `error`, when one has another form.
std::optional<std::vector<ImageName>> read_image_list (std::string_view text, std::string& error);

/// Makes what `images.txt` of `assets` lists. An image is drawn, NAME.svg, or taken from the screen:
/// then NAME.png, NAME@2x.png and the same with "-dark" are embedded as they are.
///
/// In `target` there are afterwards, for each drawn image, the rendered PNG files (name.png and
/// name@2x.png, name-dark.png and name-dark@2x.png where it differs on a dark ground; of an icon the
/// first), for each image its arrays (name.inc), and `embedded_images.cpp` with the tables. Files
/// whose content would stay the same are not touched, and images whose text, size and renderer are
/// those of the last time are not rendered again. An icon "NAME-48" without a source of its own is
/// NAME drawn 48 pixels wide.
///
/// renderer  the program rsvg-convert
/// rendered  out: how many images were made anew
/// False with place and reason in `error` at the first failure.
bool make_images (const std::filesystem::path& assets, const std::filesystem::path& target,
                  const std::string& renderer, int& rendered, std::string& error);

} // namespace ostrand::image_maker
