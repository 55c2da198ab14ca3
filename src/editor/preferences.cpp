// The preferences file, line by line.
#include "editor/preferences.h"

#include "base/disk.h"
#include "base/platform.h"
#include "base/text.h"

#include <algorithm>
#include <array>
#include <ctime>
#include <variant>
#include <vector>

namespace ostrand::editor {
namespace {

constexpr std::size_t longest_line = 1023;

/// One setting: its key and where it is kept.
struct Row {
    std::string_view key;
    std::variant<bool Preferences::*, unsigned Preferences::*, std::string Preferences::*> field;
    bool hexadecimal = false; // how a number is written
};

// In the order of the file.
constexpr std::array<Row, 16> rows{{
    {"boundary", &Preferences::boundary},
    {"kinetics", &Preferences::kinetics},
    {"mousehelp", &Preferences::mouse_help},
    {"grid", &Preferences::grid},
    {"smart_move", &Preferences::smart_move},
    {"zoom", &Preferences::zoom},
    {"simulation", &Preferences::simulation},
    {"stoichiometry", &Preferences::stoichiometry},
    {"smart_dialog", &Preferences::smart_dialog},
    {"use_annotation", &Preferences::use_annotation},
    {"dark_mode", &Preferences::dark_mode},
    {"lift_always_visible", &Preferences::lift_always_visible},
    {"lift_background", &Preferences::lift_background, true},
    {"default_yes", &Preferences::default_yes},
    {"emacs_keys", &Preferences::emacs_keys},
    {"background", &Preferences::background, true},
}};

// Added later: they stand behind the others, and only when they differ from their defaults.
constexpr std::array<Row, 4> added_rows{{
    {"guides", &Preferences::guides},
    {"snap_to_guides", &Preferences::snap_to_guides},
    {"animate", &Preferences::animate},
    {"arrange_opened", &Preferences::arrange_opened},
}};

constexpr std::array<Row, 3> font_rows{{
    {"face", &Preferences::face},
    {"size", &Preferences::size},
    {"colour", &Preferences::colour},
}};

/// "#" and hexadecimal digits, else a decimal number; what stands behind it is ignored.
unsigned number_of (std::string_view value) {
    if (value.starts_with ('#')) return scan_hexadecimal (value.substr (1)).value_or (0);
    return scan_unsigned (value).value_or (0);
}

void take (Preferences& preferences, const Row& row, std::string_view value) {
    if (const auto* flag = std::get_if<bool Preferences::*> (&row.field)) {
        if (value == "true") preferences.*(*flag) = true;
        if (value == "false") preferences.*(*flag) = false;
    } else if (const auto* number = std::get_if<unsigned Preferences::*> (&row.field)) {
        preferences.*(*number) = number_of (value);
    } else {
        preferences.*std::get<std::string Preferences::*> (row.field) = value;
    }
}

std::string value_of (const Preferences& preferences, const Row& row) {
    if (const auto* flag = std::get_if<bool Preferences::*> (&row.field))
        return preferences.*(*flag) ? "true" : "false";
    if (const auto* number = std::get_if<unsigned Preferences::*> (&row.field))
        return format_text (row.hexadecimal ? "#%x" : "%u", preferences.*(*number));
    return preferences.*std::get<std::string Preferences::*> (row.field);
}

/// The attribute at the front of `text`: a key up to "=", then a value in quotes that is not empty.
/// False when there is none.
bool scan_attribute (std::string_view text, std::string_view& key, std::string_view& value) {
    const std::size_t equals = text.find ('=');
    if (equals == std::string_view::npos || equals == 0) return false;
    std::size_t quote = equals + 1;
    while (quote < text.size () && is_space (text[quote])) ++quote;
    if (quote >= text.size () || text[quote] != '"') return false;
    key = text.substr (0, equals);
    value = text.substr (quote + 1);
    value = value.substr (0, value.find ('"'));
    return !value.empty ();
}

/// Looks for a row's own attribute in a line that may hold several.
void scan_row (std::string_view text, const Row& row, Preferences& preferences) {
    while (!text.empty ()) {
        if (is_space (text.front ())) {
            text.remove_prefix (1);
            continue;
        }
        std::string_view key;
        std::string_view value;
        if (!scan_attribute (text, key, value)) {
            text.remove_prefix (1);
            continue;
        }
        if (key == row.key) {
            take (preferences, row, value);
            return;
        }
        text.remove_prefix (std::min (text.find (' '), text.size ()));
    }
}

/// The lines of a text, each cut to what a line may hold.
std::vector<std::string_view> lines_of (std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty ()) {
        const std::size_t end = std::min (text.find ('\n'), text.size ());
        lines.push_back (text.substr (0, std::min (end, longest_line)));
        text.remove_prefix (std::min (end + 1, text.size ()));
    }
    return lines;
}

} // namespace

unsigned Preferences::canvas_zoom () const { return std::clamp (zoom, 10U, 200U); }

Preferences preferences_from_text (std::string_view text) {
    Preferences preferences;
    const std::vector<std::string_view> lines = lines_of (text);
    if (lines.size () < 2 || !lines[0].starts_with ("<?xml ") ||
        !lines[1].starts_with ("<lattrixprefs ")) {
        return preferences;
    }
    static constexpr std::string_view pref = "<pref ";
    static constexpr std::string_view font = "<font ";
    for (std::size_t i = 2; i < lines.size () && !lines[i].starts_with ("</lattrixprefs>"); ++i) {
        if (lines[i].starts_with (pref)) {
            for (const Row& row : rows) scan_row (lines[i].substr (pref.size ()), row, preferences);
            for (const Row& row : added_rows)
                scan_row (lines[i].substr (pref.size ()), row, preferences);
        } else if (lines[i].starts_with (font)) {
            for (const Row& row : font_rows) {
                scan_row (lines[i].substr (font.size ()), row, preferences);
            }
        }
    }
    return preferences;
}

std::string preferences_text (const Preferences& preferences, long seconds) {
    std::string text = "<?xml version=\"1.0\"?>\n";
    text += format_text (
        "<lattrixprefs xmlns=\"http://ostrand.example/preferences\" lastupdate=\"%ld\">\n",
        seconds);
    const auto attribute = [&preferences] (const Row& row) {
        return std::string (row.key) + "=\"" + value_of (preferences, row) + '"';
    };
    for (const Row& row : rows) text += "<pref " + attribute (row) + ">\n";
    for (const Row& row : added_rows)
        if (value_of (preferences, row) != value_of (Preferences (), row))
            text += "<pref " + attribute (row) + ">\n";
    text += "<font";
    for (const Row& row : font_rows) text += ' ' + attribute (row);
    return text + ">\n</lattrixprefs>\n";
}

std::string preferences_path () { return (home_directory () / ".lattrix_rc").string (); }

Preferences read_preferences () {
    const std::optional<std::string> text = read_text_file (preferences_path ());
    return text ? preferences_from_text (*text) : Preferences ();
}

bool write_preferences (const Preferences& preferences, std::string& error) {
    const long now = static_cast<long> (std::time (nullptr));
    return write_file (preferences_path (), preferences_text (preferences, now), error);
}

} // namespace ostrand::editor
