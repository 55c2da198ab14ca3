// An export is a repaint into a device that is a file.
#include "export/export.h"

#include "base/disk.h"
#include "document/paint_style.h"
#include "export/bounds_device.h"
#include "export/pdf_device.h"
#include "export/svg_device.h"

#include <algorithm>
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

/// As the document's switches have it, without what only a view shows.
document::PaintStyle export_style () {
    document::PaintStyle style = document::paint_style_of_switches ();
    style.marks = false;
    return style;
}

/// One side of a page: how far the picture moves along it, and how long it is.
struct Side {
    float origin;
    unsigned length;
};

/// first, last  the ends of what is painted
/// size         of the network
/// margin       beyond it
Side side_of (float first, float last, float size, float margin) {
    constexpr float unseen = 1.0F / 64; // of a pixel: the rounding of places
    Side side{0, whole (static_cast<double> (size) + static_cast<double> (margin))};
    if (first < -unseen) {
        side.origin = std::ceil (-first - unseen);
        // A network that lies wholly on the far side of its origin has no size of its own.
        const float end = size > 0 ? size : last;
        side.length = whole (static_cast<double> (end) + static_cast<double> (side.origin) +
                             static_cast<double> (margin));
    }
    const double needed =
        std::ceil (static_cast<double> (last) + static_cast<double> (side.origin - unseen));
    side.length = std::max (side.length, whole (needed));
    return side;
}

} // namespace

DrawingPage drawing_page (const Network& network) {
    constexpr float right_margin = 13;
    constexpr float lower_margin = 12;
    BoundsDevice device;
    network.paint_contents (device, export_style (), 0, 0);
    const Bounds& painted = device.bounds ();
    const Side across = side_of (painted.left, painted.right, network.get_width (), right_margin);
    const Side down = side_of (painted.top, painted.bottom,
                               static_cast<float> (network.get_height ()), lower_margin);
    return {across.origin, down.origin, across.length, down.length};
}

void paint_export (const Network& network, document::PaintDevice& device, const DrawingPage& page) {
    const document::PaintStyle style = export_style ();
    if (style.dark) {
        // The ground reaches below the page, since a filled rectangle of a PDF ends early.
        device.set_color (style.color (7));
        device.fill_rect (0, 0, static_cast<float> (page.width),
                          static_cast<float> (page.height) + 2);
    }
    network.paint_contents (device, style, page.origin_x, page.origin_y);
}

std::string svg_text (const Network& network) {
    const DrawingPage page = drawing_page (network);
    SvgDevice device (page.width, page.height);
    paint_export (network, device, page);
    device.end ();
    return device.text ();
}

bool export_svg (const Network& network, const std::filesystem::path& path, std::string& error) {
    OutputFile file (path);
    if (file.ok ()) {
        const DrawingPage page = drawing_page (network);
        SvgDevice device (page.width, page.height, &file);
        paint_export (network, device, page);
        if (device.end () && file.commit ()) return true;
    }
    error = file.error ();
    return false;
}

bool export_pdf (const Network& network, const std::filesystem::path& path, std::string& error) {
    OutputFile file (path);
    if (file.ok ()) {
        const DrawingPage page = drawing_page (network);
        PdfDevice device (static_cast<float> (page.width), static_cast<float> (page.height));
        if (device.begin ()) paint_export (network, device, page);
        if (device.write_to (file) && file.commit ()) return true;
    }
    error = file.error ();
    return false;
}

} // namespace ostrand::drawing
