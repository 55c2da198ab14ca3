// A network as a picture of pixels.
// Layer: export.
#pragma once
#include "document/network.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace ostrand::drawing {

/// Pixels of the picture for one pixel of the drawing: a picture of 1 is as large as the drawing
/// on screen at 100 %, 3 prints well.
inline constexpr double least_png_scale = 0.1;
inline constexpr double largest_png_scale = 20;

/// A scale as a user writes it; empty with the reason in `error` for another text.
std::optional<double> read_png_scale (std::string_view text, std::string& error);

/// What export_svg writes, painted by librsvg on a ground of the colour that the drawing has on
/// screen, as the bytes of a PNG file. Empty with the reason in `error` when that fails: a side
/// would be longer than 32767 pixels, or there is no room for so many.
std::string png_bytes (const document::Network& network, double scale, std::string& error);

/// The same into a file, which takes its place when it is whole. False with the reason in `error`
/// when that fails; then nothing is left.
bool export_png (const document::Network& network, const std::filesystem::path& path, double scale,
                 std::string& error);

} // namespace ostrand::drawing
