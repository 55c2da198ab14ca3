// Deciding by what the desktop says.
#include "desktop/first_look.h"

#include "base/text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <optional>

namespace ostrand::desktop {
namespace {

constexpr double smallest_scale = 1;
constexpr double largest_scale = 4;
/// Dots an inch at which text has its plain size; settings of GTK count in 1024ths of one.
constexpr double plain_dpi = 96;
constexpr double gtk_dpi_unit = 1024;

std::string lower (std::string_view text) {
    std::string out (text);
    std::ranges::transform (out, out.begin (), [] (char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char> (c - 'A' + 'a') : c;
    });
    return out;
}

std::string_view trimmed (std::string_view text) {
    while (!text.empty () && is_space (text.front ())) text.remove_prefix (1);
    while (!text.empty () && is_space (text.back ())) text.remove_suffix (1);
    return text;
}

bool contains (std::string_view text, std::string_view part) {
    return text.find (part) != std::string_view::npos;
}

/// A positive number at the front of a text.
std::optional<double> number_of (std::string_view text) {
    text = trimmed (text);
    double number = 0;
    const auto [end, error] = std::from_chars (text.data (), text.data () + text.size (), number);
    if (error != std::errc () || !std::isfinite (number) || number <= 0) return std::nullopt;
    return number;
}

/// A theme says by its name whether it is dark: "Adwaita-dark", "Adwaita:dark", "Yaru-dark-blue".
bool is_dark_name (std::string_view name) { return contains (lower (name), "dark"); }

/// What GTK's file says; nothing when it says neither.
std::optional<bool> gtk_dark (std::string_view text) {
    const std::string wish =
        lower (setting (text, "Settings", "gtk-application-prefer-dark-theme"));
    if (wish == "1" || wish == "true" || wish == "yes") return true;
    const std::string theme = setting (text, "Settings", "gtk-theme-name");
    if (!theme.empty () && is_dark_name (theme)) return true;
    if (!wish.empty () || !theme.empty ()) return false;
    return std::nullopt;
}

/// KDE tells the ground of its windows as "red,green,blue".
std::optional<bool> kde_dark (std::string_view text) {
    const std::string ground = setting (text, "Colors:Window", "BackgroundNormal");
    std::array<double, 3> parts{};
    std::string_view rest = ground;
    bool whole = !ground.empty ();
    for (double& part : parts) {
        const std::size_t end = std::min (rest.find (','), rest.size ());
        const std::string_view digits = trimmed (rest.substr (0, end));
        const auto [stop, error] =
            std::from_chars (digits.data (), digits.data () + digits.size (), part);
        whole = whole && error == std::errc () && stop == digits.data () + digits.size ();
        rest.remove_prefix (std::min (end + 1, rest.size ()));
    }
    // Weights of the colours in what the eye takes for light (ITU-R BT.601).
    constexpr double middle = 127.5;
    if (whole) return 0.299 * parts[0] + 0.587 * parts[1] + 0.114 * parts[2] < middle;
    const std::string scheme = setting (text, "General", "ColorScheme");
    if (!scheme.empty ()) return is_dark_name (scheme);
    return std::nullopt;
}

std::optional<bool> gnome_dark (std::string_view scheme) {
    if (contains (scheme, "prefer-dark")) return true;
    if (contains (scheme, "prefer-light")) return false;
    return std::nullopt; // "default"
}

bool decide_dark (const DesktopFacts& facts) {
    if (!facts.gtk_theme.empty ()) return is_dark_name (facts.gtk_theme);
    const auto kde = kde_dark (facts.kde_globals);
    const bool runs_kde = contains (lower (facts.current_desktop), "kde");
    if (runs_kde && kde) return *kde;
    if (const auto gnome = gnome_dark (facts.colour_scheme)) return *gnome;
    for (const std::string* const text : {&facts.gtk4_settings, &facts.gtk3_settings})
        if (const auto gtk = gtk_dark (*text)) return *gtk;
    return kde.value_or (false);
}

double decide_scale (const DesktopFacts& facts) {
    if (const auto scale = number_of (facts.gdk_dpi_scale)) return *scale;
    const auto of_dpi = [] (std::string_view value, double unit) -> std::optional<double> {
        const auto dpi = number_of (value);
        if (!dpi) return std::nullopt;
        return *dpi / unit / plain_dpi;
    };
    const auto kde = of_dpi (setting (facts.kde_fonts, "General", "forceFontDPI"), 1);
    if (contains (lower (facts.current_desktop), "kde") && kde) return *kde;
    if (const auto gnome = number_of (facts.text_factor)) return *gnome;
    for (const std::string* const text : {&facts.gtk4_settings, &facts.gtk3_settings})
        if (const auto gtk = of_dpi (setting (*text, "Settings", "gtk-xft-dpi"), gtk_dpi_unit))
            return *gtk;
    return kde.value_or (1);
}

} // namespace

std::string setting (std::string_view text, std::string_view section, std::string_view key) {
    bool inside = false;
    while (!text.empty ()) {
        const std::size_t end = std::min (text.find ('\n'), text.size ());
        const std::string_view line = trimmed (text.substr (0, end));
        text.remove_prefix (std::min (end + 1, text.size ()));
        if (line.starts_with ('[')) {
            inside = line.size () == section.size () + 2 && line.ends_with (']') &&
                     line.substr (1, section.size ()) == section;
            continue;
        }
        const std::size_t equals = line.find ('=');
        if (!inside || equals == std::string_view::npos) continue;
        if (trimmed (line.substr (0, equals)) == key)
            return std::string (trimmed (line.substr (equals + 1)));
    }
    return {};
}

FirstLook first_look (const DesktopFacts& facts) {
    return {decide_dark (facts),
            static_cast<float> (std::clamp (decide_scale (facts), smallest_scale, largest_scale))};
}

} // namespace ostrand::desktop
