// Letters and pictures of documents on an OpenGL canvas.
// Layer: toolkit.
#pragma once
#include "glpaint/gl_device.h"
#include "toolkit/glyph_atlas.h"
#include "toolkit/picture_cache.h"

namespace ostrand::toolkit {

/// For one OpenGL context. Letters are sharp at every zoom and display scale: they stand on device
/// pixels, and as far apart as the document measured them.
class DocumentContent : public glpaint::GlContent {
  public:
    /// Device pixels of one unit of the window; to be set before each frame.
    float pixels_per_unit = 1;

    void draw_text (const document::FontMetrics& font, std::string_view letters, float x, float y,
                    float zoom) override;
    void draw_picture (std::string_view path, float x, float y, float w, float h) override;
    /// The context is new: its textures are gone.
    void forget ();

  private:
    GlyphAtlas atlas_;
    PictureCache pictures_;
};

} // namespace ostrand::toolkit
