// The current OpenGL picture as pixels and as a PNG file.
// Layer: toolkit.
#pragma once
#include <string>
#include <vector>

namespace ostrand::toolkit {

/// The back buffer of the current context from its lower left corner: 3 bytes for each pixel, red,
/// green and blue, the top row first. Of a pixel with several samples it is their mean, as the
/// display shows it.
/// width, height  device pixels
std::vector<unsigned char> read_gl_pixels (int width, int height);

/// Writes these pixels to a file. False with the reason in `error` when that fails.
bool write_gl_picture (const std::string& path, int width, int height, std::string& error);

} // namespace ostrand::toolkit
