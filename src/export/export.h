// A network as a drawing file.
// Layer: export.
#pragma once
#include "document/network.h"
#include "document/paint_device.h"

#include <filesystem>
#include <string>

namespace ostrand::drawing {

/// Paints the whole network, as it is laid out, into a file: a page as drawing_page has it. The
/// document's switches (dark mode, kinetics, stoichiometry) count. The file is written beside its
/// target and takes its place when it is whole. False with the reason in `error` (empty for a
/// failure of libHaru, which told it) when that fails; then nothing is left.
bool export_svg (const document::Network& network, const std::filesystem::path& path,
                 std::string& error);
bool export_pdf (const document::Network& network, const std::filesystem::path& path,
                 std::string& error);

/// The SVG text alone.
std::string svg_text (const document::Network& network);

/// The page of a drawing, in pixels, and where the network's origin stands on it.
struct DrawingPage {
    float origin_x = 0;
    float origin_y = 0;
    unsigned width = 0;
    unsigned height = 0;
};

/// The origin is the page's corner and the page is 13 wider and 12 higher than the network, unless
/// something of the drawing would then lie left of the page or above it: the whole picture is moved
/// right or down by as many whole pixels as that takes, and the page grows with it. A page is never
/// smaller than what is painted on it.
DrawingPage drawing_page (const document::Network& network);

/// Paints the network into any device as an export does: nothing left out, in dark mode on a black
/// ground.
void paint_export (const document::Network& network, document::PaintDevice& device,
                   const DrawingPage& page);

} // namespace ostrand::drawing
