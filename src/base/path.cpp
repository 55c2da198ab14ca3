// File names as texts.
#include "base/path.h"

#include "base/platform.h"

#include <filesystem>
#include <mutex>
#include <optional>
#include <utility>
#include <vector>

namespace ostrand {
namespace {

/// Process-wide state of paths.
struct PathState {
    std::mutex lock;
    std::optional<std::string> current_directory; // once it is set
};

PathState& path_state () {
    static PathState state;
    return state;
}

std::string_view last_part (std::string_view path) {
    const std::size_t slash = path.rfind ('/');
    return slash == std::string_view::npos ? path : path.substr (slash + 1);
}

/// The length of the set at the front of a pattern that begins with "[", both brackets counted; 0
/// when it has no end.
std::size_t set_length (std::string_view pattern) {
    const std::size_t end = pattern.find (']', 1);
    return end == std::string_view::npos ? 0 : end + 1;
}

/// Whether a set, its brackets taken off, holds a character.
bool set_holds (std::string_view set, char c) {
    while (!set.empty ()) {
        const bool is_range = set.size () >= 3 && set[1] == '-';
        const char first = set[0];
        const char last = is_range ? set[2] : first;
        // As bytes: letters of Latin-1 and UTF-8 come behind the others.
        const auto byte = [] (char letter) { return static_cast<unsigned char> (letter); };
        if (byte (first) <= byte (c) && byte (c) <= byte (last)) return true;
        set.remove_prefix (is_range ? 3 : 1);
    }
    return false;
}

/// How much of a pattern, which does not begin with "*", stands for the character; 0 when it does
/// not fit.
std::size_t fitting_length (std::string_view pattern, char c) {
    if (pattern[0] == '?') return 1;
    if (pattern[0] == '[') {
        const std::size_t length = set_length (pattern);
        if (length > 0) return set_holds (pattern.substr (1, length - 2), c) ? length : 0;
    }
    return pattern[0] == c ? 1 : 0;
}

} // namespace

std::string lower_extension (std::string_view path) {
    const std::string_view name = last_part (path);
    const std::size_t dot = name.rfind ('.');
    if (dot == std::string_view::npos) return {};
    std::string extension (name.substr (dot));
    for (char& c : extension) {
        if (c >= 'A' && c <= 'Z') c = static_cast<char> (c - 'A' + 'a');
    }
    return extension;
}

std::string base_name (std::string_view path) {
    const std::string_view name = last_part (path);
    const std::size_t dot = name.rfind ('.');
    return std::string (dot == 0 ? name : name.substr (0, dot));
}

std::string folder_of (std::string_view path) {
    return std::string (path.substr (0, path.size () - last_part (path).size ()));
}

std::string current_directory () {
    {
        const std::lock_guard guard (path_state ().lock);
        if (path_state ().current_directory) return *path_state ().current_directory;
    }
    std::error_code error;
    const std::string working = std::filesystem::current_path (error).string ();
    return error ? "/" : working; // a working directory that was removed
}

void set_current_directory (std::string_view path) {
    const std::string folder = folder_of (path);
    if (folder.empty ()) return;
    std::string absolute = absolute_path ({}, folder);
    const std::lock_guard guard (path_state ().lock);
    path_state ().current_directory = std::move (absolute);
}

std::string normalise_path (std::string_view path) {
    if (path.empty ()) return {};
    const bool is_absolute = path.starts_with ('/');
    std::vector<std::string_view> parts;
    while (!path.empty ()) {
        const std::size_t slash = path.find ('/');
        const std::string_view part = path.substr (0, slash);
        path.remove_prefix (slash == std::string_view::npos ? path.size () : slash + 1);
        if (part.empty () || part == ".") continue;
        const bool goes_up = part == "..";
        if (goes_up && !parts.empty () && parts.back () != "..") {
            parts.pop_back ();
        } else if (!goes_up || !is_absolute) {
            parts.push_back (part);
        }
    }
    std::string normal (is_absolute ? "/" : "");
    std::string_view gap;
    for (const std::string_view part : parts) {
        normal.append (gap).append (part);
        gap = "/";
    }
    return normal.empty () ? "." : normal;
}

std::string absolute_path (std::string_view base, std::string_view path) {
    const std::string from = base.empty () ? current_directory () : std::string (base);
    if (path.empty ()) return normalise_path (from);
    if (path.starts_with ('/')) return normalise_path (path);
    if (path == "~" || path.starts_with ("~/")) {
        const std::string home = home_directory ().string ();
        return home.empty () ? std::string (path)
                             : normalise_path (home + std::string (path.substr (1)));
    }
    return normalise_path (from + "/" + std::string (path));
}

bool wildcard_match (std::string_view pattern, std::string_view text) {
    // Only the last "*" needs to be tried again: what an earlier one could take is taken by it.
    std::optional<std::string_view> behind_star;
    std::string_view star_text; // what is left of the text behind what that "*" has taken
    for (;;) {
        if (pattern.starts_with ('*')) {
            pattern.remove_prefix (1);
            if (pattern.empty ()) return true;
            behind_star = pattern;
            star_text = text;
            continue;
        }
        if (text.empty ()) return pattern.empty ();
        const std::size_t length = pattern.empty () ? 0 : fitting_length (pattern, text[0]);
        if (length > 0) {
            pattern.remove_prefix (length);
            text.remove_prefix (1);
        } else if (behind_star && !star_text.empty ()) {
            star_text.remove_prefix (1);
            pattern = *behind_star;
            text = star_text;
        } else {
            return false;
        }
    }
}

bool matches_filter (std::string_view filter, std::string_view name) {
    bool any = false;
    while (!filter.empty ()) {
        const std::size_t blank = filter.find (' ');
        const std::string_view pattern = filter.substr (0, blank);
        filter.remove_prefix (blank == std::string_view::npos ? filter.size () : blank + 1);
        if (pattern.empty ()) continue;
        if (wildcard_match (pattern, name)) return true;
        any = true;
    }
    return !any;
}

} // namespace ostrand
