// Which device is painted on, and what all devices share.
#include "document/paint_device.h"

#include "base/text.h"

#include <cstdarg>

namespace ostrand::document {
namespace {

PaintDevice*& device_in_use () {
    static PaintDevice* device = nullptr;
    return device;
}

} // namespace

void PaintDevice::draw_format (unsigned font, float x, float y, const char* format, ...) {
    va_list arguments;
    va_start (arguments, format);
    const std::string text = format_text_v (format, arguments);
    va_end (arguments);
    draw_text (*font_metrics (font), text, x, y);
}

PaintDevice* current_device () { return device_in_use (); }

DeviceScope::DeviceScope (PaintDevice& device) : outer_ (device_in_use ()) {
    device_in_use () = &device;
}

DeviceScope::~DeviceScope () { device_in_use () = outer_; }

} // namespace ostrand::document
