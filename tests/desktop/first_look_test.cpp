// What the first start takes from the desktop.
#include "desktop/first_look.h"
#include "support/support.h"

#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <optional>
#include <sys/stat.h>

namespace ostrand::desktop {
namespace {

constexpr const char* dark_ini = "[Settings]\ngtk-application-prefer-dark-theme = true\n";
constexpr const char* light_ini = "[Settings]\ngtk-application-prefer-dark-theme=0\n";

bool dark (const DesktopFacts& facts) { return first_look (facts).dark; }
float scale (const DesktopFacts& facts) { return first_look (facts).text_scale; }

TEST (first_look, without_a_word_it_is_light_and_plain) {
    EXPECT_FALSE (dark ({}));
    EXPECT_EQ (scale ({}), 1.0F);
}

TEST (first_look, a_theme_in_the_environment_decides) {
    EXPECT_TRUE (dark ({.gtk_theme = "Adwaita:dark"}));
    EXPECT_TRUE (dark ({.gtk_theme = "Yaru-Dark"}));
    EXPECT_FALSE (dark ({.gtk_theme = "Adwaita"}));
    EXPECT_FALSE (dark ({.gtk_theme = "Adwaita", .gtk3_settings = dark_ini}));
}

TEST (first_look, settings_of_gtk_tell_a_wish_or_a_dark_theme) {
    EXPECT_TRUE (dark ({.gtk3_settings = dark_ini}));
    EXPECT_TRUE (dark ({.gtk4_settings = "[Settings]\r\ngtk-application-prefer-dark-theme=1\r\n"}));
    EXPECT_FALSE (dark ({.gtk3_settings = light_ini}));
    EXPECT_TRUE (dark ({.gtk3_settings = "[Settings]\ngtk-theme-name=Arc-Dark\n"}));
    EXPECT_FALSE (dark ({.gtk3_settings = "[Settings]\ngtk-theme-name=Arc\n"}));
    EXPECT_FALSE (dark ({.gtk3_settings = dark_ini, .gtk4_settings = light_ini}));
    // A key of another section is none of ours.
    EXPECT_FALSE (dark ({.gtk3_settings = "[Other]\ngtk-application-prefer-dark-theme=1\n"}));
}

TEST (first_look, settings_of_kde_tell_the_ground_of_windows) {
    const std::string night = "[Colors:View]\nBackgroundNormal=255,255,255\n"
                              "[Colors:Window]\nBackgroundNormal=42,46,50\n";
    EXPECT_TRUE (dark ({.kde_globals = night}));
    EXPECT_FALSE (dark ({.kde_globals = "[Colors:Window]\nBackgroundNormal=239,240,241\n"}));
    EXPECT_TRUE (dark ({.kde_globals = "[General]\nColorScheme=BreezeDark\n"}));
    EXPECT_FALSE (dark ({.kde_globals = "[General]\nColorScheme=BreezeLight\n"}));
    for (const char* const broken : {"", "1", "1,2", "a,b,c", "1;2;3", ",,"})
        EXPECT_FALSE (dark (
            {.kde_globals = std::string ("[Colors:Window]\nBackgroundNormal=") + broken + '\n'}))
            << broken;
}

TEST (first_look, the_desktop_that_runs_counts_before_files_of_others) {
    const std::string day = "[Colors:Window]\nBackgroundNormal=239,240,241\n";
    EXPECT_FALSE (dark ({.current_desktop = "KDE", .gtk3_settings = dark_ini, .kde_globals = day}));
    EXPECT_TRUE (dark ({.current_desktop = "XFCE", .gtk3_settings = dark_ini, .kde_globals = day}));
    EXPECT_TRUE (dark ({.current_desktop = "GNOME", .colour_scheme = "'prefer-dark'\n"}));
    EXPECT_FALSE (dark ({.current_desktop = "GNOME",
                         .gtk3_settings = dark_ini,
                         .colour_scheme = "'prefer-light'\n"}));
    EXPECT_TRUE (dark ({.gtk3_settings = dark_ini, .colour_scheme = "'default'\n"}));
}

TEST (first_look, text_is_scaled_as_the_desktop_scales_it) {
    EXPECT_EQ (scale ({.gdk_dpi_scale = "1.5"}), 1.5F);
    EXPECT_EQ (scale ({.gtk3_settings = "[Settings]\ngtk-xft-dpi=147456\n"}), 1.5F); // 144 * 1024
    EXPECT_EQ (scale ({.kde_fonts = "[General]\nforceFontDPI=120\n"}), 1.25F);
    EXPECT_EQ (scale ({.current_desktop = "GNOME", .text_factor = "1.25\n"}), 1.25F);
    EXPECT_EQ (scale ({.current_desktop = "KDE",
                       .gtk3_settings = "[Settings]\ngtk-xft-dpi=147456\n",
                       .kde_fonts = "[General]\nforceFontDPI=192\n"}),
               2.0F);
}

TEST (first_look, senseless_scales_stay_within_bounds) {
    EXPECT_EQ (scale ({.gdk_dpi_scale = "0.2"}), 1.0F);
    EXPECT_EQ (scale ({.gdk_dpi_scale = "900"}), 4.0F);
    for (const char* const none : {"", "0", "-2", "big", "nan", "inf", "-1"})
        EXPECT_EQ (scale ({.gdk_dpi_scale = none}), 1.0F) << none;
    EXPECT_EQ (scale ({.gtk3_settings = "[Settings]\ngtk-xft-dpi=-1\n"}), 1.0F);
}

TEST (first_look, a_setting_is_found_in_its_section_only) {
    const std::string text = "a=0\n[One]\na = 1 \n[Two]\r\na=2\r\nb=x=y\n";
    EXPECT_EQ (setting (text, "One", "a"), "1");
    EXPECT_EQ (setting (text, "Two", "a"), "2");
    EXPECT_EQ (setting (text, "Two", "b"), "x=y");
    EXPECT_EQ (setting (text, "Two", "c"), "");
    EXPECT_EQ (setting (text, "Three", "a"), "");
    EXPECT_EQ (setting ("[", "", ""), "");
}

/// An environment variable for a scope.
class Variable {
  public:
    Variable (const char* name, const std::string& value) : name_ (name) {
        if (const char* const before = std::getenv (name)) before_ = before;
        setenv (name, value.c_str (), 1);
    }
    ~Variable () {
        if (before_)
            setenv (name_, before_->c_str (), 1);
        else
            unsetenv (name_);
    }
    Variable (const Variable&) = delete;
    Variable& operator= (const Variable&) = delete;

  private:
    const char* name_;
    std::optional<std::string> before_;
};

TEST (desktop_facts, are_read_from_the_folder_of_settings) {
    const testing::TemporaryFolder home;
    const Variable config ("XDG_CONFIG_HOME", "");
    const Variable desktop ("XDG_CURRENT_DESKTOP", "XFCE");
    EXPECT_FALSE (first_look (read_desktop_facts (home.path ())).dark);
    std::filesystem::create_directories (home / ".config/gtk-3.0");
    home.write (".config/gtk-3.0/settings.ini", dark_ini);
    EXPECT_TRUE (first_look (read_desktop_facts (home.path ())).dark);
    // Another folder of settings may be named.
    const testing::TemporaryFolder other;
    const Variable elsewhere ("XDG_CONFIG_HOME", other.path ().string ());
    EXPECT_FALSE (first_look (read_desktop_facts (home.path ())).dark);
}

TEST (desktop_facts, what_is_no_file_is_passed_over) {
    const testing::TemporaryFolder home;
    const Variable config ("XDG_CONFIG_HOME", home.path ().string ());
    std::filesystem::create_directories (home / "kdeglobals");
    std::filesystem::create_directories (home / "gtk-3.0");
    ASSERT_EQ (mkfifo ((home / "gtk-3.0/settings.ini").c_str (), 0600), 0); // nobody writes to it
    EXPECT_FALSE (first_look (read_desktop_facts (home.path ())).dark);
}

TEST (desktop_facts, a_desktop_without_texts_is_asked_and_one_that_is_silent_is_not_waited_for) {
    const testing::TemporaryFolder folder;
    const Variable desktop ("XDG_CURRENT_DESKTOP", "ubuntu:GNOME");
    const Variable config ("XDG_CONFIG_HOME", folder.path ().string ());
    const Variable path ("PATH", folder.path ().string () + ":/usr/bin:/bin");
    const std::string program = folder.write (
        "gsettings", "#!/bin/sh\n[ $3 = color-scheme ] && echo \"'prefer-dark'\" || echo 1.25\n");
    chmod (program.c_str (), 0700);
    FirstLook look = first_look (read_desktop_facts (folder.path ()));
    EXPECT_TRUE (look.dark);
    EXPECT_EQ (look.text_scale, 1.25F);
    folder.write ("gsettings", "#!/bin/sh\nexec sleep 1000\n");
    look = first_look (read_desktop_facts (folder.path ()));
    EXPECT_FALSE (look.dark);
    std::filesystem::remove (program);
    EXPECT_EQ (first_look (read_desktop_facts (folder.path ())).text_scale, 1.0F);
}

} // namespace
} // namespace ostrand::desktop
