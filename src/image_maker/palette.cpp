// The table of colours, and the search for colours in a text.
#include "image_maker/palette.h"

#include "base/text.h"

#include <algorithm>
#include <array>
#include <sstream>

namespace ostrand::image_maker {
namespace {

constexpr std::size_t color_length = 7; // "#rrggbb"

bool is_color (std::string_view word) {
    return word.size () == color_length && word[0] == '#' &&
           std::all_of (word.begin () + 1, word.end (),
                        [] (char c) { return is_hex_digit (c) && (c < 'A' || c > 'F'); });
}

/// Attributes whose value is a colour.
constexpr std::array<std::string_view, 3> color_attributes{" fill=\"", " stroke=\"",
                                                           " stop-color=\""};

/// Where the next value of a colour attribute begins, from `from` on; npos at the end.
std::size_t next_value (std::string_view svg, std::size_t from) {
    std::size_t first = std::string_view::npos;
    for (const std::string_view attribute : color_attributes) {
        const std::size_t at = svg.find (attribute, from);
        if (at != std::string_view::npos) first = std::min (first, at + attribute.size ());
    }
    return first;
}

} // namespace

std::optional<Palette> Palette::read (std::string_view text, std::string& error) {
    Palette palette;
    std::istringstream lines{std::string (text)};
    for (std::string line; std::getline (lines, line);) {
        if (line.empty () || line[0] == '#') continue;
        std::istringstream words (line);
        std::string name;
        std::string light;
        std::string dark;
        words >> name >> light >> dark;
        if (!is_color (light) || !is_color (dark) ||
            !palette.dark_of_.emplace (light, dark).second) {
            error = "not a name and two colours, or a light colour for the second time: " + line;
            return std::nullopt;
        }
    }
    return palette;
}

std::string Palette::unknown_color (std::string_view svg) const {
    for (std::size_t at = next_value (svg, 0); at != std::string_view::npos;
         at = next_value (svg, at)) {
        const std::string_view value = svg.substr (at, svg.find ('"', at) - at);
        if (value == "none" || value.starts_with ("url(")) continue;
        if (!dark_of_.contains (value)) return std::string (value);
    }
    return {};
}

std::string Palette::darkened (std::string_view svg) const {
    std::string result;
    std::size_t done = 0;
    for (std::size_t at = next_value (svg, 0); at != std::string_view::npos;
         at = next_value (svg, at)) {
        const auto dark = dark_of_.find (svg.substr (at, color_length));
        if (dark == dark_of_.end ()) continue;
        result.append (svg, done, at - done);
        result += dark->second;
        done = at + color_length;
    }
    result.append (svg, done);
    return result;
}

} // namespace ostrand::image_maker
