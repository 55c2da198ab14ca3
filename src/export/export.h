// A network as a drawing file.
// Layer: export.
#pragma once
#include "document/network.h"
#include "document/paint_device.h"

#include <filesystem>
#include <string>

namespace ostrand::drawing {

/// Paints the whole network, as it is laid out, into a file: width + 13 by height + 12 pixels, its
/// origin in the corner. The document's switches (dark mode, kinetics, stoichiometry) count. The
/// file is written beside its target and takes its place when it is whole. False with the reason in
/// `error` (empty for a failure of libHaru, which told it) when that fails; then nothing is left.
bool export_svg (const document::Network& network, const std::filesystem::path& path,
                 std::string& error);
bool export_pdf (const document::Network& network, const std::filesystem::path& path,
                 std::string& error);

/// The SVG text alone.
std::string svg_text (const document::Network& network);

/// Paints the network into any device as an export does: at its own origin, nothing left out; in
/// dark mode on a black ground.
void paint_export (const document::Network& network, document::PaintDevice& device);

/// Size of the drawing in pixels.
struct DrawingSize {
    unsigned width = 0;
    unsigned height = 0;
};
DrawingSize drawing_size (const document::Network& network);

} // namespace ostrand::drawing
