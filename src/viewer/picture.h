// The current OpenGL picture as a PNG file.
// Layer: viewer.
#pragma once
#include <string>

namespace ostrand::viewer {

/// Writes the back buffer of the current context, `width` x `height` device pixels. False with the
/// reason in `error` when that fails.
bool write_view_picture (const std::string& path, int width, int height, std::string& error);

} // namespace ostrand::viewer
