// An export is a repaint into a device that is a file.
#include "export/export.h"

#include "base/disk.h"
#include "document/colors.h"
#include "export/bounds_device.h"
#include "export/pdf_device.h"
#include "export/svg_device.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace ostrand::drawing {
namespace {

using document::Network;

constexpr int everything = std::numeric_limits<int>::max () / 4;

/// Puts the network's place and clip window back.
class PlaceScope {
  public:
    explicit PlaceScope (Network& network)
        : network_ (network), x_ (network.x), y_ (network.y), clip_x_ (network.clip_x),
          clip_y_ (network.clip_y), clip_w_ (network.clip_w), clip_h_ (network.clip_h) {}
    ~PlaceScope () {
        network_.x = x_;
        network_.y = y_;
        network_.clip_x = clip_x_;
        network_.clip_y = clip_y_;
        network_.clip_w = clip_w_;
        network_.clip_h = clip_h_;
    }
    PlaceScope (const PlaceScope&) = delete;
    PlaceScope& operator= (const PlaceScope&) = delete;

  private:
    Network& network_;
    float x_;
    float y_;
    int clip_x_;
    int clip_y_;
    int clip_w_;
    int clip_h_;
};

/// Whole pixels of a size, which may be no number at all.
unsigned whole (double size) {
    constexpr double largest = 4294967295.0;
    if (!(size > 0)) return 0;
    return size >= largest ? 4294967295U : static_cast<unsigned> (size);
}

/// Paints the network with its origin at (x, y), as large as it is.
void paint_at (Network& network, document::PaintDevice& device, float x, float y) {
    const PlaceScope place (network);
    const document::DeviceScope scope (device);
    network.x = x;
    network.y = y;
    if (network.align == 1) network.y += static_cast<float> (network.get_height ()) / 2;
    if (network.align == 0) network.y += static_cast<float> (network.get_height ());
    network.clip_x = network.clip_y = -everything;
    network.clip_w = network.clip_h = 2 * everything;
    network.paint (0, 0, true);
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

DrawingPage drawing_page (Network& network) {
    constexpr float right_margin = 13;
    constexpr float lower_margin = 12;
    BoundsDevice device;
    paint_at (network, device, 0, 0);
    const Bounds& painted = device.bounds ();
    const Side across = side_of (painted.left, painted.right, network.get_width (), right_margin);
    const Side down = side_of (painted.top, painted.bottom,
                               static_cast<float> (network.get_height ()), lower_margin);
    return {across.origin, down.origin, across.length, down.length};
}

void paint_export (Network& network, document::PaintDevice& device, const DrawingPage& page) {
    if (document::document_state ().dark_mode) {
        // The ground reaches below the page, since a filled rectangle of a PDF ends early.
        device.set_color (document::painted_color (7));
        device.fill_rect (0, 0, static_cast<float> (page.width),
                          static_cast<float> (page.height) + 2);
    }
    paint_at (network, device, page.origin_x, page.origin_y);
}

std::string svg_text (Network& network) {
    const DrawingPage page = drawing_page (network);
    SvgDevice device (page.width, page.height);
    paint_export (network, device, page);
    device.end ();
    return device.text ();
}

bool export_svg (Network& network, const std::filesystem::path& path, std::string& error) {
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

bool export_pdf (Network& network, const std::filesystem::path& path, std::string& error) {
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
