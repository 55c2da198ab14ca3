// What the desktop's own settings say of a program that has none yet: dark or light, how large.
// Layer: desktop (uses base).
#pragma once
#include <filesystem>
#include <string>
#include <string_view>

namespace ostrand::desktop {

/// What the desktop says of itself, as it stands in the environment and in files. What is not
/// there is empty.
struct DesktopFacts {
    std::string current_desktop = {}; // XDG_CURRENT_DESKTOP
    std::string gtk_theme = {};       // GTK_THEME
    std::string gdk_dpi_scale = {};   // GDK_DPI_SCALE
    std::string gtk3_settings = {};   // text of gtk-3.0/settings.ini
    std::string gtk4_settings = {};   // text of gtk-4.0/settings.ini
    std::string kde_globals = {};     // text of kdeglobals
    std::string kde_fonts = {};       // text of kcmfontsrc
    std::string colour_scheme = {};   // what gsettings tells of color-scheme
    std::string text_factor = {};     // what gsettings tells of text-scaling-factor
};

struct FirstLook {
    bool dark = false;
    float text_scale = 1; // of everything in windows, 1 to 4
};

/// How an interface should look that nobody has told otherwise. The environment counts before
/// files, the desktop that runs before the files of others.
FirstLook first_look (const DesktopFacts& facts);

/// The value of a key in a section of a settings file; empty when it is not there.
std::string setting (std::string_view text, std::string_view section, std::string_view key);

/// Reads the facts of this process's desktop. Asks the program gsettings where the desktop is one
/// whose settings are no text, and waits for it a second at most.
/// home  where the folder .config is, unless XDG_CONFIG_HOME names another
DesktopFacts read_desktop_facts (const std::filesystem::path& home);

} // namespace ostrand::desktop
