// The style sheet of the page for browsers.
#include "manual/page_style.h"

#include "base/text.h"

#include <algorithm>

namespace ostrand::manual {
namespace {

/// A colour that the told text gives to some of its words, as a class of the page's style sheet.
struct ColourRow {
    std::string_view told;
    std::string_view name;
    std::string_view on_light;
    std::string_view on_dark;
};
constexpr ColourRow colour_rows[] = {
    {"#2020ff", "command", "#2020e0", "#9db4ff"},
    {"#902020", "name", "#902020", "#ff9d92"},
};

/// What the page has beside the told text and ground.
struct PageLook {
    const char* scheme;
    const char* link;
    const char* visited;
    const char* line; // between chapters
    const char* box;  // behind listings and keys
};
constexpr PageLook light_look{"light", "#00606a", "#5a4a78", "#c8ccd0", "#f0f2f4"};
constexpr PageLook dark_look{"dark", "#00d0d0", "#d0d000", "#50565c", "#1e2226"};

constexpr const char* style_sheet =
    ":root { color-scheme: %s; }\n"
    "body { margin: 0 auto; padding: 1.5em 1em 4em; max-width: 46em; color: %s;\n"
    "       background: %s; overflow-wrap: break-word;\n"
    "       font: 1rem/1.55 \"Segoe UI\", Roboto, \"Noto Sans\", \"Liberation Sans\", Arial,\n"
    "             sans-serif; }\n"
    "h1, .center { text-align: center; }\n"
    "h1 { margin: 0.5em 0 1em; font-size: 1.9em; line-height: 1.25; }\n"
    "h2 { margin: 2.2em 0 0.8em; padding-top: 0.9em; border-top: 1px solid %s;\n"
    "     font-size: 1.5em; line-height: 1.25; }\n"
    "h3 { margin: 1.8em 0 0.4em; font-size: 1.15em; }\n"
    "p { margin: 0.7em 0; }\n"
    "li { margin: 0.3em 0; }\n"
    "img { max-width: 100%%; height: auto; vertical-align: bottom; }\n"
    "a { color: %s; }\n"
    "a:visited { color: %s; }\n"
    "pre { padding: 0.7em 1em; overflow-x: auto; line-height: 1.4; }\n"
    "pre, kbd, code { border-radius: 4px; background: %s;\n"
    "                 font-family: \"Noto Sans Mono\", \"Liberation Mono\", monospace; }\n"
    "kbd, code { padding: 0.1em 0.3em; font-size: 0.92em; }\n";

std::string colour_text (unsigned rgb) { return format_text ("#%06x", rgb & 0xffffffU); }

/// One of the toolkit's colours.
std::string colour_of (unsigned colour) { return colour_text (colour >> 8); }

} // namespace

std::string page_style (const Document& told) {
    const bool dark = told.is_dark ();
    const PageLook& look = dark ? dark_look : light_look;
    std::string css = format_text (style_sheet, look.scheme, colour_of (told.text).c_str (),
                                   colour_of (told.background).c_str (), look.line, look.link,
                                   look.visited, look.box);
    for (const ColourRow& row : colour_rows) {
        const std::string_view colour = dark ? row.on_dark : row.on_light;
        css.append (".").append (row.name).append (" { color: ").append (colour).append ("; }\n");
    }
    return css;
}

std::string_view colour_class (std::string_view told) {
    const auto* const row = std::ranges::find (colour_rows, told, &ColourRow::told);
    return row == std::end (colour_rows) ? std::string_view () : row->name;
}

std::string css_colour (std::string_view told) {
    if (!told.starts_with ('#')) return {};
    const auto value = scan_hexadecimal (told.substr (1));
    return value ? colour_text (*value) : std::string ();
}

} // namespace ostrand::manual
