// The current OpenGL picture as pixels and as a PNG file.
#define GL_GLEXT_PROTOTYPES // declares the functions of OpenGL 3
#include "toolkit/gl_picture.h"

#include "base/disk.h"

#include <FL/gl.h>
#include <algorithm>
#include <cstdlib>
#include <png.h>

namespace ostrand::toolkit {
namespace {

/// While it lives, pixels are read from a copy of the back buffer that has one sample for each.
/// Reading the buffer itself gives only one of several samples with some renderers, and so ragged
/// lines.
class SingleSamples {
  public:
    SingleSamples (int width, int height) {
        glReadBuffer (GL_BACK);
        GLint samples = 0;
        glGetIntegerv (GL_SAMPLES, &samples);
        const auto* version = reinterpret_cast<const char*> (glGetString (GL_VERSION));
        if (samples <= 1 || version == nullptr || std::atoi (version) < 3) return;
        glGenFramebuffers (1, &buffer_);
        glGenRenderbuffers (1, &colours_);
        glBindRenderbuffer (GL_RENDERBUFFER, colours_);
        glRenderbufferStorage (GL_RENDERBUFFER, GL_RGB8, width, height);
        glBindFramebuffer (GL_DRAW_FRAMEBUFFER, buffer_);
        glFramebufferRenderbuffer (GL_DRAW_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_RENDERBUFFER,
                                   colours_);
        if (glCheckFramebufferStatus (GL_DRAW_FRAMEBUFFER) != GL_FRAMEBUFFER_COMPLETE) return;
        glBlitFramebuffer (0, 0, width, height, 0, 0, width, height, GL_COLOR_BUFFER_BIT,
                           GL_NEAREST);
        glBindFramebuffer (GL_READ_FRAMEBUFFER, buffer_);
    }
    SingleSamples (const SingleSamples&) = delete;
    SingleSamples& operator= (const SingleSamples&) = delete;
    ~SingleSamples () {
        if (buffer_ == 0) return;
        glBindFramebuffer (GL_FRAMEBUFFER, 0);
        glBindRenderbuffer (GL_RENDERBUFFER, 0);
        glDeleteFramebuffers (1, &buffer_);
        glDeleteRenderbuffers (1, &colours_);
    }

  private:
    GLuint buffer_ = 0; // 0 where the back buffer itself is read
    GLuint colours_ = 0;
};

} // namespace

std::vector<unsigned char> read_gl_pixels (int width, int height) {
    const auto row = static_cast<std::size_t> (width) * 3;
    const auto rows = static_cast<std::size_t> (height);
    std::vector<unsigned char> pixels (row * rows);
    {
        const SingleSamples source (width, height);
        glPixelStorei (GL_PACK_ALIGNMENT, 1);
        glReadPixels (0, 0, width, height, GL_RGB, GL_UNSIGNED_BYTE, pixels.data ());
    }
    // OpenGL's first row is the lowest one.
    for (std::size_t y = 0; y < rows / 2; ++y) {
        const auto upper = pixels.begin () + static_cast<std::ptrdiff_t> (y * row);
        const auto lower = pixels.begin () + static_cast<std::ptrdiff_t> ((rows - 1 - y) * row);
        std::swap_ranges (upper, upper + static_cast<std::ptrdiff_t> (row), lower);
    }
    return pixels;
}

bool write_gl_picture (const std::string& path, int width, int height, std::string& error) {
    const std::vector<unsigned char> pixels = read_gl_pixels (width, height);
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32> (width);
    image.height = static_cast<png_uint_32> (height);
    image.format = PNG_FORMAT_RGB;
    png_alloc_size_t length = 0;
    std::string bytes;
    if (png_image_write_to_memory (&image, nullptr, &length, 0, pixels.data (), 0, nullptr) != 0) {
        bytes.resize (length);
        png_image_write_to_memory (&image, bytes.data (), &length, 0, pixels.data (), 0, nullptr);
        bytes.resize (length);
    }
    if (bytes.empty ()) {
        error = image.message;
        return false;
    }
    return write_file (path, bytes, error);
}

} // namespace ostrand::toolkit
