// An export is a repaint into a device that is a file.
#include "export/export.h"

#include "base/disk.h"
#include "document/paint_style.h"
#include "export/pdf_device.h"
#include "export/svg_device.h"

#include <cmath>

namespace ostrand::drawing {
namespace {

using document::Network;

/// Whole pixels of a size, which may be no number at all.
unsigned whole (double size) {
    constexpr double largest = 4294967295.0;
    if (!(size > 0)) return 0;
    return size >= largest ? 4294967295U : static_cast<unsigned> (size);
}

} // namespace

DrawingSize drawing_size (const Network& network) {
    return {whole (static_cast<double> (network.get_width ()) + 13),
            whole (static_cast<double> (network.get_height ()) + 12)};
}

void paint_export (const Network& network, document::PaintDevice& device) {
    document::PaintStyle style = document::paint_style_of_switches ();
    style.marks = false;
    if (style.dark) {
        // The ground reaches below the page, since a filled rectangle of a PDF ends early.
        const DrawingSize size = drawing_size (network);
        device.set_color (style.color (7));
        device.fill_rect (0, 0, static_cast<float> (size.width),
                          static_cast<float> (size.height) + 2);
    }
    network.paint_contents (device, style, 0, 0);
}

std::string svg_text (const Network& network) {
    const DrawingSize size = drawing_size (network);
    SvgDevice device (size.width, size.height);
    paint_export (network, device);
    device.end ();
    return device.text ();
}

bool export_svg (const Network& network, const std::filesystem::path& path, std::string& error) {
    OutputFile file (path);
    if (file.ok ()) {
        const DrawingSize size = drawing_size (network);
        SvgDevice device (size.width, size.height, &file);
        paint_export (network, device);
        if (device.end () && file.commit ()) return true;
    }
    error = file.error ();
    return false;
}

bool export_pdf (const Network& network, const std::filesystem::path& path, std::string& error) {
    OutputFile file (path);
    if (file.ok ()) {
        const DrawingSize size = drawing_size (network);
        PdfDevice device (static_cast<float> (size.width), static_cast<float> (size.height));
        if (device.begin ()) paint_export (network, device);
        if (device.write_to (file) && file.commit ()) return true;
    }
    error = file.error ();
    return false;
}

} // namespace ostrand::drawing
