// The current OpenGL picture as a PNG file.
#include "toolkit/gl_picture.h"

#include "base/disk.h"

#include <FL/gl.h>
#include <png.h>
#include <vector>

namespace ostrand::toolkit {

bool write_gl_picture (const std::string& path, int width, int height, std::string& error) {
    std::vector<unsigned char> pixels (static_cast<std::size_t> (width) *
                                       static_cast<std::size_t> (height) * 3);
    glPixelStorei (GL_PACK_ALIGNMENT, 1);
    glReadBuffer (GL_BACK);
    glReadPixels (0, 0, width, height, GL_RGB, GL_UNSIGNED_BYTE, pixels.data ());
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32> (width);
    image.height = static_cast<png_uint_32> (height);
    image.format = PNG_FORMAT_RGB;
    // OpenGL's first row is the lowest one.
    const png_int_32 stride = -width * 3;
    png_alloc_size_t length = 0;
    std::string bytes;
    if (png_image_write_to_memory (&image, nullptr, &length, 0, pixels.data (), stride, nullptr) !=
        0) {
        bytes.resize (length);
        png_image_write_to_memory (&image, bytes.data (), &length, 0, pixels.data (), stride,
                                   nullptr);
        bytes.resize (length);
    }
    if (bytes.empty ()) {
        error = image.message;
        return false;
    }
    return write_file (path, bytes, error);
}

} // namespace ostrand::toolkit
