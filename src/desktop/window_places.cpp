// The file of window places, line by line.
#include "desktop/window_places.h"

#include "base/disk.h"
#include "base/platform.h"
#include "base/text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <filesystem>

namespace ostrand::desktop {
namespace {

constexpr std::size_t largest_file = std::size_t{1} << 20;
constexpr std::string_view first_line =
    "# Where Ostrand's windows stood, for each size of the screen.";

/// No window is smaller or larger, and none further away.
constexpr int least_size = 50;
constexpr int most_size = 100000;

/// So much of a window's top must be on a screen, to take hold of it.
constexpr int reachable_width = 100;
constexpr int reachable_height = 30;

constexpr float least_scale = 0.5F;
constexpr float most_scale = 10;

std::vector<std::string> words_of (std::string_view line) {
    std::vector<std::string> words;
    while (!line.empty ()) {
        const std::size_t end = std::min (line.find (' '), line.size ());
        if (end > 0) words.emplace_back (line.substr (0, end));
        line.remove_prefix (std::min (end + 1, line.size ()));
    }
    return words;
}

template <class Number>
std::optional<Number> whole_number (const std::string& word) {
    Number number{};
    const auto [end, error] = std::from_chars (word.data (), word.data () + word.size (), number);
    if (error != std::errc () || end != word.data () + word.size ()) return std::nullopt;
    return number;
}

/// The four numbers behind the names of screens and window.
std::optional<Place> place_of (const std::vector<std::string>& words) {
    std::array<int, 4> numbers{};
    for (std::size_t i = 0; i < numbers.size (); ++i) {
        const auto number = whole_number<int> (words[i + 2]);
        if (!number || std::abs (*number) > most_size) return std::nullopt;
        numbers[i] = *number;
    }
    const Place place{numbers[0], numbers[1], numbers[2], numbers[3]};
    if (place.w < least_size || place.h < least_size) return std::nullopt;
    return place;
}

/// Width and height of what two rectangles share, 0 where they do not meet.
std::pair<int, int> shared (const Place& a, const Place& b) {
    return {std::max (0, std::min (a.x + a.w, b.x + b.w) - std::max (a.x, b.x)),
            std::max (0, std::min (a.y + a.h, b.y + b.h) - std::max (a.y, b.y))};
}

} // namespace

WindowPlaces WindowPlaces::from_text (std::string_view text) {
    WindowPlaces places;
    while (!text.empty ()) {
        const std::size_t end = std::min (text.find ('\n'), text.size ());
        const std::vector<std::string> words = words_of (text.substr (0, end));
        text.remove_prefix (std::min (end + 1, text.size ()));
        if (words.size () == 2 && words[0] == "scale") {
            const auto scale = whole_number<float> (words[1]);
            if (scale && *scale >= least_scale && *scale <= most_scale) places.scale_ = scale;
        } else if (words.size () == 6 && words[0] != "#") {
            if (const auto place = place_of (words)) places.note (words[0], words[1], *place);
        }
    }
    return places;
}

std::string WindowPlaces::text () const {
    std::string text = std::string (first_line) + '\n';
    if (scale_) text += format_text ("scale %g\n", static_cast<double> (*scale_));
    for (const auto& [screens, windows] : screens_) {
        for (const auto& [window, place] : windows)
            text += format_text ("%s %s %d %d %d %d\n", screens.c_str (), window.c_str (), place.x,
                                 place.y, place.w, place.h);
    }
    return text;
}

std::optional<Place> WindowPlaces::find (const std::string& screens,
                                         const std::string& window) const {
    for (const auto& [name, windows] : screens_) {
        if (name != screens) continue;
        const auto found = windows.find (window);
        if (found != windows.end ()) return found->second;
    }
    return std::nullopt;
}

void WindowPlaces::note (const std::string& screens, const std::string& window,
                         const Place& place) {
    const auto found = std::ranges::find (
        screens_, screens, [](const auto& row) -> const auto& { return row.first; });
    if (found == screens_.end ())
        screens_.emplace_back (screens, Windows ());
    else
        std::rotate (found, found + 1, screens_.end ()); // it is the last in use
    Windows& windows = screens_.back ().second;
    if (windows.size () < most_windows || windows.contains (window)) windows[window] = place;
    if (screens_.size () > most_screens) screens_.erase (screens_.begin ());
}

std::string screens_name (const std::vector<Place>& screens) {
    std::string name;
    for (const Place& screen : screens) {
        if (!name.empty ()) name += '+';
        name += format_text ("%dx%d", screen.w, screen.h);
    }
    return name;
}

std::optional<Place> fitted (const Place& place, const std::vector<Place>& screens) {
    const Place* best = nullptr;
    int most = 0;
    for (const Place& screen : screens) {
        const auto [w, h] = shared ({place.x, place.y, place.w, reachable_height}, screen);
        if (w * h > most) {
            most = w * h;
            best = &screen;
        }
    }
    if (best == nullptr) return std::nullopt;
    Place out = place;
    out.w = std::min (out.w, best->w);
    out.h = std::min (out.h, best->h);
    const int reach = std::min (reachable_width, out.w);
    out.x = std::clamp (out.x, best->x + reach - out.w, best->x + best->w - reach);
    out.y = std::clamp (out.y, best->y, std::max (best->y, best->y + best->h - reachable_height));
    return out;
}

std::string window_places_path () { return (home_directory () / ".ostrand_windows").string (); }

WindowPlaces read_window_places () {
    std::error_code error;
    const std::filesystem::path path = window_places_path ();
    if (!std::filesystem::is_regular_file (path, error)) return {};
    if (std::filesystem::file_size (path, error) > largest_file) return {};
    return WindowPlaces::from_text (read_text_file (path, largest_file).value_or (""));
}

bool write_window_places (const WindowPlaces& places, std::string& error) {
    const std::string text = places.text ();
    const std::filesystem::path path = window_places_path ();
    std::error_code ignored;
    if (std::filesystem::is_regular_file (path, ignored) &&
        read_text_file (path, largest_file) == text)
        return true;
    return write_file (path, text, error);
}

} // namespace ostrand::desktop
