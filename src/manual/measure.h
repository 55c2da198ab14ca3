// What laying out a page needs to know of letters and pictures; the window asks its toolkit, tests
// use letters of one width.
// Layer: manual.
#pragma once
#include <string>
#include <string_view>

namespace ostrand::manual {

/// The toolkit's numbers of the plain faces that the manual uses; bold is one more, italic two.
inline constexpr int serif_font = 8;
inline constexpr int fixed_font = 4;
inline constexpr int default_size = 14;

/// A face at a size.
struct TextStyle {
    int font = serif_font;
    int size = default_size; // in pixels
    bool bold = false;
    bool italic = false;

    bool operator== (const TextStyle&) const = default;
    /// The toolkit's number of the face.
    int font_number () const { return font + (bold ? 1 : 0) + (italic ? 2 : 0); }
};

/// A picture as an "img" shows it.
struct ImageBox {
    std::string name; // in the table of pictures
    int width = 0;    // pixels; 0 when the picture is not known and nothing is shown
    int height = 0;
};

class PageMeasure {
  public:
    virtual ~PageMeasure () = default;
    /// Width of a text (UTF-8) in pixels.
    virtual float text_width (std::string_view text, const TextStyle& style) const = 0;
    /// Pixels above and below the base line.
    virtual int ascent (const TextStyle& style) const = 0;
    virtual int descent (const TextStyle& style) const = 0;
    /// The picture that an "img" names.
    virtual ImageBox image (std::string_view source) const = 0;
};

} // namespace ostrand::manual
