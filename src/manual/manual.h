// The manual as a whole: when its text is made, where it goes.
// Layer: manual.
#pragma once
#include "base/resource_image.h"
#include "manual/generator.h"
#include "manual/html.h"

#include <filesystem>
#include <optional>
#include <span>
#include <string>

namespace ostrand::manual {

/// The name that "Save User Manual" suggests.
inline constexpr const char* suggested_manual_name = "OST-User-Manual.html";

/// The text as it was last made, with what it was made for.
class Manual {
  public:
    /// images  the table of pictures; outlives this
    /// folder  where the pictures are put for browsers
    explicit Manual (std::span<const ResourceImage> images,
                     std::filesystem::path folder = default_folder ());

    /// The system's folder for temporary files.
    static std::filesystem::path default_folder ();

    /// Brings the text up to date; the first time the pictures are put into their folder. True when
    /// the text was made anew: the first time, and when ground or shortcuts are others.
    bool update (bool dark, editor::ShortcutSet shortcuts);
    const std::string& text () const { return text_; }

  private:
    std::span<const ResourceImage> images_;
    std::filesystem::path folder_;
    std::optional<ManualOptions> made_for_;
    std::string text_;
};

/// What is left to do for the window.
enum class ShowResult {
    show,  // show the window: `widget` holds the text
    saved, // the file is written
    failed // it is not, and the user knows
};

/// Makes the text when needed and gives it to the viewer when that shows another; then writes the
/// page for browsers to `file`, or asks for the window.
/// widget  null while there is no window
/// file    null to show the manual
ShowResult show_manual (Manual& manual, HTML* widget, const std::filesystem::path* file, bool dark,
                        editor::ShortcutSet shortcuts);

/// Writes a manual that is complete in itself: "OST-User-Manual.html" and its pictures beside it,
/// in a folder that is made when it is not there. False with the reason in `error`.
bool write_manual_folder (std::span<const ResourceImage> images,
                          const std::filesystem::path& folder, std::string& error);

} // namespace ostrand::manual
