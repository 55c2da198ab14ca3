// Entries of the menus on objects.
#include "editor/popup_menus.h"

#include "document/arque.h"
#include "document/node.h"

#include "base/text.h"

#include <array>

namespace ostrand::editor {

using document::CharKind;
using document::GraphBase;

namespace {

constexpr std::array<NamedColour, 17> colours{{
    {"Red", 1},
    {"Medium Red", 0x59},
    {"Dark Red", 0x48},
    {"Green", 2},
    {"Medium Green", 0x44},
    {"Dark Green", 0x3a},
    {"Light Blue", 0xf7},
    {"Blue", 4},
    {"Yellow", 3},
    {"Cyan", 6},
    {"Magenta", 5},
    {"White", 7},
    {"Orange", 0x5c},
    {"Black", 0},
    {"Grey", 0xa0a0a000},
    {"Light Grey", 0x30},
    {"Dark Grey", 0x1e},
}};

constexpr std::size_t kinds_of_reaction = 3; // at the front of the arc menu

std::vector<PopupEntry> species_menu () {
    namespace kind = document::node::kind;
    return {{"Receptor", kind::receptor},
            {"Gene", kind::gene},
            {"Shared Gene", kind::shared_gene},
            {"Protein", kind::protein},
            {"Shared Protein", kind::shared_protein},
            {"Molecule", kind::molecule},
            {"SharedMolecule", kind::shared_molecule},
            {"No Border", kind::no_border, true, true},
            {"With State", kind::with_state},
            {"Without State", kind::without_state}};
}

std::vector<PopupEntry> arc_menu (bool of_reaction) {
    namespace arc = document::arc;
    std::vector<PopupEntry> entries{{"&Transport", arc::transport},
                                    {"&Reaction", arc::reaction},
                                    {"R&ev. reaction", arc::reversible_reaction},
                                    {"&Substrate", arc::substrate},
                                    {"&Product", arc::product},
                                    {"S&ubstrate rev.", arc::reversible_substrate},
                                    {"Pr&oduct rev.", arc::reversible_product},
                                    {"&Catalysis", arc::catalysis},
                                    {"&Inhibition", arc::inhibition},
                                    {"Ac&tivation", arc::activation},
                                    {"In&fluence", arc::influence},
                                    {"&Nec. Act", arc::necessary_activation}};
    for (std::size_t i = 0; i < entries.size (); ++i)
        entries[i].active = (i < kinds_of_reaction) == of_reaction;
    return entries;
}

std::vector<PopupEntry> shape_menu () { return {{"&Rectangle", 0}, {"&Ellipse", 1}}; }

} // namespace

std::span<const NamedColour> named_colours () { return colours; }

std::string custom_label (unsigned colour) {
    return colour > 255 ? format_text ("#%06x", colour >> 8) : "Custom";
}

std::vector<PopupEntry> kind_menu (const GraphBase& object) {
    switch (object.kind ()) {
    case CharKind::node: return species_menu ();
    case CharKind::arque:
        return arc_menu (
            document::is_reaction (static_cast<const document::Arque&> (object).type ()));
    case CharKind::compart: return shape_menu ();
    case CharKind::std_char:
    case CharKind::line:
    case CharKind::picture:
    case CharKind::network: break;
    }
    return {};
}

std::vector<PopupEntry> colour_menu (unsigned present) {
    std::vector<PopupEntry> entries{
        {custom_label (present), static_cast<int> (custom_colour), true, true}};
    for (const NamedColour& colour : colours)
        entries.push_back ({std::string (colour.label), static_cast<int> (colour.value)});
    return entries;
}

} // namespace ostrand::editor
