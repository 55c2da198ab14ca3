// Pictures that are part of the program's file.
// Layer: base.
#pragma once
#include <string_view>

namespace ostrand {

/// A PNG file that is linked in.
struct ResourceImage {
    std::string_view name;               // "fog.png"
    const unsigned char* data = nullptr; // the file's bytes
    unsigned size = 0;                   // their number
};

} // namespace ostrand
