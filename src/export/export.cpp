// An export is a repaint into a device that is a file.
#include "export/export.h"

#include "base/disk.h"
#include "document/colors.h"
#include "export/pdf_device.h"
#include "export/svg_device.h"

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

} // namespace

DrawingSize drawing_size (const Network& network) {
    return {whole (static_cast<double> (network.get_width ()) + 13),
            whole (static_cast<double> (network.get_height ()) + 12)};
}

void paint_export (Network& network, document::PaintDevice& device) {
    const PlaceScope place (network);
    const document::DeviceScope scope (device);
    network.x = 0;
    network.y = network.align == 1   ? static_cast<float> (network.get_height ()) / 2
                : network.align == 0 ? static_cast<float> (network.get_height ())
                                     : 0;
    network.clip_x = network.clip_y = -everything;
    network.clip_w = network.clip_h = 2 * everything;
    if (document::document_state ().dark_mode) {
        // The ground reaches below the page, since a filled rectangle of a PDF ends early.
        const DrawingSize size = drawing_size (network);
        device.set_color (document::painted_color (7));
        device.fill_rect (0, 0, static_cast<float> (size.width),
                          static_cast<float> (size.height) + 2);
    }
    network.paint (0, 0, true);
}

std::string svg_text (Network& network) {
    const DrawingSize size = drawing_size (network);
    SvgDevice device (size.width, size.height);
    paint_export (network, device);
    device.end ();
    return device.text ();
}

bool export_svg (Network& network, const std::filesystem::path& path, std::string& error) {
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

bool export_pdf (Network& network, const std::filesystem::path& path, std::string& error) {
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
