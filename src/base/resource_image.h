// Pictures that are part of the program's file.
// Layer: base.
#pragma once

namespace ostrand {

/// One image, as the bytes of a PNG file that live as long as the program.
struct ResourceImage {
    const char* name; // with its ".png"; null in the row behind the last
    const unsigned char* data;
    unsigned size; // bytes
};

} // namespace ostrand
