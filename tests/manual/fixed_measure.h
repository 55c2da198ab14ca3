// Letters that are all half as wide as they are high, so that places can be told by counting.
#pragma once
#include "manual/manual_images.h"
#include "manual/measure.h"

#include <map>
#include <string>

namespace ostrand::testing {

/// At the default size of 14 a letter is 7 wide, 11 above and 3 below the base line: a line is 14
/// high. Bold letters are one pixel wider.
class FixedMeasure : public manual::PageMeasure {
  public:
    float text_width (std::string_view text, const manual::TextStyle& style) const override {
        int letters = 0;
        for (const char c : text) {
            if ((static_cast<unsigned char> (c) & 0xc0U) != 0x80U) ++letters;
        }
        const int width = style.size / 2 + (style.bold ? 1 : 0);
        return static_cast<float> (letters * width);
    }
    int ascent (const manual::TextStyle& style) const override { return style.size - 3; }
    int descent (const manual::TextStyle&) const override { return 3; }
    manual::ImageBox image (std::string_view source) const override {
        const std::string name (manual::image_name (source));
        const auto found = images.find (name);
        if (found == images.end ()) return {"first.png", 0, 0};
        return {name, found->second.first, found->second.second};
    }

    std::map<std::string, std::pair<int, int>> images; // name -> width, height
};

/// A whole page around a body.
inline std::string page_of (std::string_view body) {
    return "<html><head></head><body text=#0 bgcolor=#ffffff>" + std::string (body) +
           "</body></html>";
}

} // namespace ostrand::testing
