// Loading pictures into textures.
#include "toolkit/picture_cache.h"

#include <FL/Fl_Pixmap.H>
#include <FL/Fl_RGB_Image.H>
#include <FL/Fl_Shared_Image.H>
#include <FL/gl.h>
#include <FL/glu.h>
#include <algorithm>
#include <memory>
#include <vector>

namespace ostrand::toolkit {
namespace {

constexpr int largest_side = 2048; // pixels of a texture

/// The picture as rows of red, green, blue, opacity.
std::vector<unsigned char> rgba_of (const Fl_RGB_Image& image) {
    const int w = image.data_w ();
    const int h = image.data_h ();
    const int depth = image.d ();
    const int line = image.ld () != 0 ? image.ld () : w * depth;
    const auto* const bytes = reinterpret_cast<const unsigned char*> (image.data ()[0]);
    std::vector<unsigned char> pixels;
    pixels.reserve (static_cast<std::size_t> (w) * static_cast<std::size_t> (h) * 4);
    for (int row = 0; row < h; ++row)
        for (int column = 0; column < w; ++column) {
            const unsigned char* const p = bytes + row * line + column * depth;
            const bool grey = depth < 3;
            pixels.push_back (p[0]);
            pixels.push_back (grey ? p[0] : p[1]);
            pixels.push_back (grey ? p[0] : p[2]);
            pixels.push_back (depth == 2 ? p[1] : depth == 4 ? p[3] : 255);
        }
    return pixels;
}

unsigned load (const std::string& path) {
    Fl_Shared_Image* const shared = Fl_Shared_Image::get (path.c_str ());
    if (shared == nullptr || shared->fail () != 0) {
        if (shared != nullptr) shared->release ();
        return 0;
    }
    const float shrink =
        std::min (1.0F, static_cast<float> (largest_side) /
                            static_cast<float> (std::max (shared->data_w (), shared->data_h ())));
    // The image inside: a copy of the shared one would be another shared one, without pixels to see.
    const std::unique_ptr<Fl_Image> copy (shared->image ()->copy (
        std::max (static_cast<int> (static_cast<float> (shared->data_w ()) * shrink), 1),
        std::max (static_cast<int> (static_cast<float> (shared->data_h ()) * shrink), 1)));
    shared->release ();
    std::unique_ptr<Fl_RGB_Image> converted;
    auto* image = dynamic_cast<Fl_RGB_Image*> (copy.get ());
    if (image == nullptr && dynamic_cast<Fl_Pixmap*> (copy.get ()) != nullptr) {
        converted = std::make_unique<Fl_RGB_Image> (static_cast<Fl_Pixmap*> (copy.get ()));
        image = converted.get ();
    }
    if (image == nullptr || image->count () < 1 || image->data_w () < 1) return 0;
    const std::vector<unsigned char> pixels = rgba_of (*image);
    unsigned texture = 0;
    glGenTextures (1, &texture);
    glBindTexture (GL_TEXTURE_2D, texture);
    glTexParameteri (GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR_MIPMAP_LINEAR);
    glTexParameteri (GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glPixelStorei (GL_UNPACK_ALIGNMENT, 1);
    gluBuild2DMipmaps (GL_TEXTURE_2D, GL_RGBA, image->data_w (), image->data_h (), GL_RGBA,
                       GL_UNSIGNED_BYTE, pixels.data ());
    return texture;
}

void draw_missing (float x, float y, float w, float h) {
    glColor4ub (128, 128, 128, 255);
    glBegin (GL_LINE_LOOP);
    glVertex2f (x, y);
    glVertex2f (x + w, y);
    glVertex2f (x + w, y + h);
    glVertex2f (x, y + h);
    glEnd ();
    glBegin (GL_LINES);
    glVertex2f (x, y);
    glVertex2f (x + w, y + h);
    glVertex2f (x + w, y);
    glVertex2f (x, y + h);
    glEnd ();
}

} // namespace

void PictureCache::draw (std::string_view path, float x, float y, float w, float h) {
    auto found = textures_.find (path);
    if (found == textures_.end ()) {
        const std::string name (path);
        found = textures_.emplace (name, load (name)).first;
    }
    if (found->second == 0) {
        draw_missing (x, y, w, h);
        return;
    }
    glEnable (GL_TEXTURE_2D);
    glBindTexture (GL_TEXTURE_2D, found->second);
    glTexEnvi (GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_REPLACE);
    glBegin (GL_QUADS);
    glTexCoord2f (0, 0);
    glVertex2f (x, y);
    glTexCoord2f (1, 0);
    glVertex2f (x + w, y);
    glTexCoord2f (1, 1);
    glVertex2f (x + w, y + h);
    glTexCoord2f (0, 1);
    glVertex2f (x, y + h);
    glEnd ();
    glDisable (GL_TEXTURE_2D);
}

} // namespace ostrand::toolkit
