// Reading a copied text back.
#include "editor/copied_drawing.h"

#include "document/markup.h"
#include "export/export.h"
#include "export/png_export.h"

#include "base/report.h"

#include <algorithm>

namespace ostrand::editor {

std::unique_ptr<document::Network> copied_network (std::string_view text) {
    const MessageScope silence ([] (std::string_view) {});
    std::unique_ptr<document::Network> network = document::read_network (text);
    if (!network) return nullptr;
    network->find_masters ();
    network->layout ();
    network->normalize_origin ();
    network->layout ();
    return network;
}

std::string copied_svg (std::string_view text) {
    const std::unique_ptr<document::Network> network = copied_network (text);
    return network ? drawing::svg_text (*network) : std::string ();
}

std::string copied_png (std::string_view text) {
    constexpr double wanted_scale = 2;
    constexpr double longest_side = 4096;
    const std::unique_ptr<document::Network> network = copied_network (text);
    if (!network) return {};
    const drawing::DrawingPage page = drawing::drawing_page (*network);
    const double side = std::max ({page.width, page.height, 1U});
    const double scale =
        std::max (std::min (wanted_scale, longest_side / side), drawing::least_png_scale);
    std::string error;
    return drawing::png_bytes (*network, scale, error);
}

} // namespace ostrand::editor
