// Reading what the desktop says of itself.
#include "base/disk.h"
#include "base/platform.h"
#include "base/process.h"
#include "base/text.h"
#include "desktop/first_look.h"

#include <chrono>
#include <cstdlib>
#include <thread>

namespace ostrand::desktop {
namespace {

namespace fs = std::filesystem;

/// Settings files are small; what is larger is none.
constexpr std::size_t largest_file = std::size_t{1} << 20;
constexpr std::chrono::seconds patience{1};

std::string variable (const char* name) {
    const char* const value = std::getenv (name);
    return value == nullptr ? "" : value;
}

std::string text_of (const fs::path& file) {
    std::error_code error;
    if (!fs::is_regular_file (file, error) || fs::file_size (file, error) > largest_file) return {};
    return read_text_file (file, largest_file).value_or ("");
}

/// What gsettings says of a key of the interface; empty when it does not say it at once.
std::string asked (const std::string& key) {
    const fs::path folder = make_private_folder ("ostrand-settings");
    if (folder.empty ()) return {};
    const fs::path file = folder / "answer";
    std::string answer;
    {
        const ChildProcess child ({"gsettings", "get", "org.gnome.desktop.interface", key},
                                  {.output = file.string (), .error = "/dev/null"});
        const auto limit = std::chrono::steady_clock::now () + patience;
        while (child.is_running () && std::chrono::steady_clock::now () < limit)
            std::this_thread::sleep_for (std::chrono::milliseconds (5));
        child.kill ();
        if (child.wait () == 0) answer = text_of (file);
    }
    std::error_code ignored;
    fs::remove_all (folder, ignored);
    return answer;
}

/// Desktops that keep these settings where only gsettings reads them.
bool keeps_no_text (std::string_view desktop) {
    for (const std::string_view name : {"GNOME", "Unity", "Budgie", "Pantheon", "X-Cinnamon"})
        if (desktop.find (name) != std::string_view::npos) return true;
    return false;
}

} // namespace

DesktopFacts read_desktop_facts (const fs::path& home) {
    const std::string told = variable ("XDG_CONFIG_HOME");
    const fs::path config = told.empty () ? home / ".config" : fs::path (told);
    DesktopFacts facts;
    facts.current_desktop = variable ("XDG_CURRENT_DESKTOP");
    facts.gtk_theme = variable ("GTK_THEME");
    facts.gdk_dpi_scale = variable ("GDK_DPI_SCALE");
    facts.gtk3_settings = text_of (config / "gtk-3.0" / "settings.ini");
    facts.gtk4_settings = text_of (config / "gtk-4.0" / "settings.ini");
    facts.kde_globals = text_of (config / "kdeglobals");
    facts.kde_fonts = text_of (config / "kcmfontsrc");
    if (keeps_no_text (facts.current_desktop)) {
        facts.colour_scheme = asked ("color-scheme");
        // One that does not answer once is not asked again.
        if (!facts.colour_scheme.empty ()) facts.text_factor = asked ("text-scaling-factor");
    }
    return facts;
}

} // namespace ostrand::desktop
