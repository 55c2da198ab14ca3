// The current OpenGL picture as a PNG file.
// Layer: toolkit.
#pragma once
#include <string>

namespace ostrand::toolkit {

/// Writes the back buffer of the current context, `width` x `height` device pixels. False with the
/// reason in `error` when that fails.
bool write_gl_picture (const std::string& path, int width, int height, std::string& error);

} // namespace ostrand::toolkit
