// Parts of the screen as PNG files.
#pragma once
#include "support/virtual_display.h"

#include <filesystem>

namespace ostrand::testing {

/// A part of the screen in pixels.
struct Area {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
};

/// What stood in a part of the screen; what is beyond its edges is black.
Screenshot cut_out (const Screenshot& shot, const Area& area);

/// Two pictures of one height beside each other, with a gap in the colour of the first one's corner.
Screenshot beside (const Screenshot& left, const Screenshot& right, int gap);

/// Half as wide and high: each pixel the mean of four.
Screenshot halved (const Screenshot& picture);

/// Writes a PNG file: one with a table of colours where 256 are enough.
bool write_picture (const Screenshot& picture, const std::filesystem::path& path);

} // namespace ostrand::testing
