// Drawing files as pixels, by the programs that people look at them with.
#pragma once
#include "contract/paint_device_contract.h"

#include <filesystem>
#include <optional>

namespace ostrand::testing {

/// A PNG file's bytes; no pixels when they are none.
Raster png_raster (const std::string& bytes);
/// The picture of an SVG file, by rsvg-convert on a white ground; nothing when it is not installed.
std::optional<Raster> svg_raster (const std::filesystem::path& path);
/// The first page of a PDF file, one pixel a point, by pdftoppm.
std::optional<Raster> pdf_raster (const std::filesystem::path& path);

} // namespace ostrand::testing
