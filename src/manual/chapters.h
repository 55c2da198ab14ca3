// The chapters of the manual that are written by hand (texts/*.html).
// Layer: manual.
#pragma once
#include <span>
#include <string_view>

namespace ostrand::manual {

/// One chapter, as HTML in plain ASCII with references to what is live:
///   "@fog.png@"           the picture of that name
///   "@start-simulation@"  the menu command or tool of that name, with its shortcut
struct Chapter {
    std::string_view name;
    std::string_view text;
};

/// All chapters in reading order: the introduction first; the last one is the heading of the menus.
std::span<const Chapter> chapters ();

} // namespace ostrand::manual
