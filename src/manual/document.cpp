// What a page knows of its colours and links.
#include "manual/document.h"

namespace ostrand::manual {
namespace {

constexpr double red_weight = 0.3;
constexpr double green_weight = 0.59;
constexpr double blue_weight = 0.11;
constexpr double full = 255.0;
constexpr double dark_below = 0.4;

constexpr unsigned link_colour = 0x00d0d000;
constexpr PageColours light_page{.link = link_colour, .found = 0xf0c8f000, .current = 0xffff6000};
constexpr PageColours dark_page{.link = link_colour, .found = 0x8a4e8a00, .current = 0x70700000};

} // namespace

bool Document::is_dark () const {
    const double red = background >> 24 & 255U;
    const double green = background >> 16 & 255U;
    const double blue = background >> 8 & 255U;
    return (red_weight * red + green_weight * green + blue_weight * blue) / full < dark_below;
}

PageColours Document::colours () const { return is_dark () ? dark_page : light_page; }

std::optional<std::size_t> Document::target_of (const Link& link) const {
    std::string_view name = link.href;
    if (!name.starts_with ('#')) return std::nullopt;
    name.remove_prefix (1);
    const auto found = anchors.find (name);
    if (found == anchors.end () || found->second >= blocks.size ()) return std::nullopt;
    return found->second;
}

} // namespace ostrand::manual
