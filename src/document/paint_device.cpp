// What all devices share.
#include "document/paint_device.h"

#include "base/text.h"

#include <cstdarg>

namespace ostrand::document {

void PaintDevice::draw_format (unsigned font, float x, float y, const char* format, ...) {
    va_list arguments;
    va_start (arguments, format);
    const std::string text = format_text_v (format, arguments);
    va_end (arguments);
    draw_text (*font_metrics (font), text, x, y);
}

} // namespace ostrand::document
