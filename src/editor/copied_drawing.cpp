// Reading a copied text back.
#include "editor/copied_drawing.h"

#include "document/markup.h"
#include "export/export.h"

#include "base/report.h"

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

} // namespace ostrand::editor
