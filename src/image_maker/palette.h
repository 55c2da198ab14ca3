// The colours that images may have, and what each becomes on a dark ground.
// Layer: image_maker.
#pragma once
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace ostrand::image_maker {

/// Colours as "#rrggbb" in small letters, light to dark.
class Palette {
  public:
    /// Reads the table: a line holds a name, the light colour, the dark one and what they are for;
    /// "#" at its front makes it a comment. Nothing, with the line in `error`, when a line has
    /// another form or a light colour stands twice.
    static std::optional<Palette> read (std::string_view text, std::string& error);

    /// The first colour of an SVG text that is not in the table: another "#rrggbb", or any other
    /// way of writing one in an attribute. Empty when all are known.
    std::string unknown_color (std::string_view svg) const;

    /// The text with each light colour replaced by its dark one.
    std::string darkened (std::string_view svg) const;

  private:
    std::map<std::string, std::string, std::less<>> dark_of_;
};

} // namespace ostrand::image_maker
