// One image as the SVG text that is rendered: its source, with what it inserts, light or dark.
// Layer: image_maker.
#pragma once
#include "image_maker/palette.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace ostrand::image_maker {

/// A text to be rendered, and its size in pixels at scale 1.
struct ComposedImage {
    std::string svg;
    int width = 0;
    int height = 0;
};

/// Composes `<name>.svg` of the folder `assets`.
///
/// A comment "insert FILE" in it stands for the content of another .svg of that folder, which may
/// insert others in turn, without its outermost element. What is inserted keeps its own coordinates;
/// a <g transform> around the comment moves it.
///
/// palette  colours of the SVG sources; null: they may have any, and stay as they are when `dark`
/// Nothing when a file cannot be read, has no size, has a colour that is not in the palette, or
/// inserts itself; `error` tells the file and the reason.
std::optional<ComposedImage> compose_image (const std::filesystem::path& assets,
                                            std::string_view name, bool dark,
                                            const Palette* palette, std::string& error);

} // namespace ostrand::image_maker
