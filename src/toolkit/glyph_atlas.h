// Letters as textures: each is drawn once by the toolkit and then put on the canvas as often as
// needed.
// Layer: toolkit.
#pragma once
#include <cstdint>
#include <memory>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace ostrand::toolkit {

/// The letters of all fonts and sizes in use, for one OpenGL context and those that share its
/// textures. All calls need that context.
class GlyphAtlas {
  public:
    GlyphAtlas ();
    ~GlyphAtlas ();
    GlyphAtlas (const GlyphAtlas&) = delete;
    GlyphAtlas& operator= (const GlyphAtlas&) = delete;

    /// Begins a run of letters in the current colour; ends with end_letters. In between nothing
    /// else is drawn.
    void begin_letters ();
    /// One letter with its base point at device pixel (x, y), in coordinates in which one unit is
    /// one device pixel.
    /// font  the toolkit's number;  size  in device pixels
    /// id    tells letters of one font and size apart;  utf8  the letter
    void letter (int font, int size, unsigned id, std::string_view utf8, int x, int y);
    void end_letters ();
    /// The context is new: its textures are gone.
    void forget ();

  private:
    struct Glyph {
        unsigned page = 0;   // index into pages_
        std::uint16_t u = 0; // place on the page
        std::uint16_t v = 0;
        std::uint16_t w = 0;
        std::uint16_t h = 0;
        std::int16_t left = 0; // of the picture from the base point
        std::int16_t top = 0;
    };
    struct Page {
        unsigned texture = 0;
        int shelf_y = 0; // where the present row of letters stands
        int shelf_h = 0;
        int next_x = 0;
    };

    const Glyph& glyph (int font, int size, unsigned id, std::string_view utf8);
    Glyph make (int font, int size, std::string_view utf8);
    Glyph place (int w, int h, const std::vector<unsigned char>& alpha);
    void bind (unsigned page);
    void end_quads ();

    std::unordered_map<std::uint64_t, Glyph> glyphs_;
    std::vector<Page> pages_;
    unsigned bound_ = 0; // page + 1
    bool open_ = false;  // between glBegin and glEnd
};

} // namespace ostrand::toolkit
