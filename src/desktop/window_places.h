// Where the windows stood when they were closed, for each arrangement of screens.
// Layer: desktop (uses base).
#pragma once
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace ostrand::desktop {

/// A rectangle in the toolkit's units.
struct Place {
    int x = 0;
    int y = 0;
    int w = 0;
    int h = 0;
    bool operator== (const Place&) const = default;
};

/// What the file keeps.
class WindowPlaces {
  public:
    /// Reads the file's text. Lines that are none of ours are left out.
    static WindowPlaces from_text (std::string_view text);
    std::string text () const;

    /// The place of a window on these screens; nothing when it was never there.
    /// screens  as screens_name tells them
    std::optional<Place> find (const std::string& screens, const std::string& window) const;
    /// Notes a place. Arrangements of screens that were not seen for longest are forgotten beyond
    /// `most_screens`.
    void note (const std::string& screens, const std::string& window, const Place& place);

    /// The scale of the interface that was last in use; nothing before.
    std::optional<float> scale () const { return scale_; }
    void note_scale (float scale) { scale_ = scale; }

    static constexpr std::size_t most_screens = 32;
    static constexpr std::size_t most_windows = 16; // of one arrangement of screens

  private:
    using Windows = std::map<std::string, Place>;
    std::vector<std::pair<std::string, Windows>> screens_; // the last in use at the end
    std::optional<float> scale_;
};

/// The name of an arrangement of screens: "1920x1080+1280x1024", in pixels.
std::string screens_name (const std::vector<Place>& screens);

/// The place as it is to be used on these screens: no larger than the screen that it is on, and so
/// that enough of its top can be reached with the mouse. Nothing when it is on none of them.
std::optional<Place> fitted (const Place& place, const std::vector<Place>& screens);

/// Where the file lies: ".ostrand_windows" in the home directory.
std::string window_places_path ();

/// Reads the file; nothing noted when it is missing or foreign.
WindowPlaces read_window_places ();

/// Writes the file if it says something else than before. False with the reason in `error` when it
/// cannot be written.
bool write_window_places (const WindowPlaces& places, std::string& error);

} // namespace ostrand::desktop
