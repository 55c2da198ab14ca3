// The table of bindings and the lists of words.
#include "editor/bindings.h"

#include <array>

namespace ostrand::editor {
namespace {

constexpr std::array<std::string_view, 11> key_names{
    "",
    "beginning-of-line",
    "end-of-line",
    "previous-char",
    "next-char",
    "delete-char",
    "enter-subscript",
    "enter-superscript",
    "leave-sub/superscript",
    "delete-field",
    "restore-field-placement",
};

constexpr std::array<std::string_view, 33> mouse_names{
    word::none,
    word::rubber_band,
    word::scroll_network,
    word::select_reactant,
    word::select_reaction,
    word::edit_text,
    word::add_to_selection,
    word::move_selection,
    word::clear_selection,
    word::change_species,
    word::change_arc_type,
    word::set_node_colour,
    word::set_arc_colour,
    word::add_sub_prod,
    word::add_reaction,
    word::align_node,
    word::swap_main_reactant,
    word::set_concentration,
    word::show_kinetics,
    word::fuse_node,
    word::duplicate_selection,
    word::select_comp,
    word::set_comp_shape,
    word::set_comp_colour,
    word::add_a_catalyser,
    word::display_molecule,
    word::show_clones,
    word::hide_clones,
    word::move_label,
    word::change_main_prod,
    word::show_stoichiometry,
    word::detach_reactant,
    word::multiple_conc,
};

constexpr std::array<Binding, 35> table{{
    {0x4110, word::select_reactant, "",
     "Select the molecule; what was selected before is no more."},
    {0x2110, word::select_reaction, "",
     "Select the reaction; what was selected before is no more."},
    {0x3110, word::select_reaction, "",
     "Select the arc of the catalyser; what was selected before is no more."},
    {0x5110, word::edit_text, "",
     "Put the cursor into the text, before the character under the pointer. A second click selects "
     "the word, a third one the whole line."},
    {0x1110, word::clear_selection, "", "Nothing is selected any more."},
    {0x4112, word::add_to_selection, "",
     "Add the molecule to the selection, or take it out when it is in it."},
    {0x2112, word::add_to_selection, "",
     "Add the reaction to the selection, or take it out when it is in it."},
    {0x3112, word::add_to_selection, "",
     "Add the arc of the catalyser to the selection, or take it out when it is in it."},
    {0x2111, word::add_sub_prod, "",
     "With a molecule selected, make it a further substrate of the reaction; its popup menu makes "
     "a product of it. A selected protein becomes its catalyser."},
    {0x2111, word::show_stoichiometry, "",
     "With nothing selected, give the reaction its stoichiometry labels."},
    {0x2131, word::show_kinetics, "", "Give the reaction its kinetic labels."},
    {0x4111, word::add_reaction, "",
     "With another molecule selected, make a reaction from that one to this one."},
    {0x4111, word::change_main_prod, "",
     "With a reaction selected, make the molecule its main product."},
    {0x4113, word::multiple_conc, "",
     "Choose the molecule, which must have several concentrations, as the one whose concentrations "
     "the viewer shows on multiple planes."},
    {0x4111, word::swap_main_reactant, "",
     "With a reaction selected of which the molecule is a further reactant, exchange it with the "
     "main one.@swap.png@"},
    {0x4130, word::change_species, "", "Choose the kind of the molecule from a menu."},
    {0x1210, word::rubber_band, "",
     "Select all molecules whose centre is in the frame that is drawn.@rubber-band-selection.png@"},
    {0x14210, word::move_selection, "",
     "Move what is selected. A molecule alone that is dropped on another one of its kind is fused "
     "with it."},
    {0x1230, word::scroll_network, "", "Move the view over the bio-network."},
    {0x6230, word::move_label, "", "Move the label; it follows its reaction from then on."},
    {0xf14400, word::move_selection, "", "Move what is selected by one pixel."},
    {0xf06400, word::move_label, "", "Move the label by one pixel, with Shift by eight."},
    {0x1706400, "delete-field", "", "Put the label back to its own place."},
    {0x1506400, "delete-field", "", "Delete the label."},
    {0x1505400, "delete-char", "Delete",
     "Delete the selected characters, or the character at the cursor."},
    {0x1205400, "previous-char", "^B", "Move the cursor one character to the left."},
    {0x1305400, "next-char", "^F", "Move the cursor one character to the right."},
    {0x1105401, "enter-subscript", "Shift+Down",
     "Enter the subscript of the character at the cursor, which is made when there is none."},
    {0x1005401, "enter-superscript", "Shift+Up",
     "Enter the superscript of the character at the cursor, which is made when there is none."},
    {0x1205401, "leave-sub/superscript", "Shift+Left",
     "Leave a sub- or superscript for the character that it belongs to."},
    {0x4105402, "beginning-of-line", "^A", "Move the cursor to the beginning of the line."},
    {0x4205402, "previous-char", "^B", "Move the cursor one character to the left."},
    {0x4405402, "delete-char", "^D",
     "Delete the selected characters, or the character at the cursor."},
    {0x4505402, "end-of-line", "^E", "Move the cursor to the end of the line."},
    {0x4605402, "next-char", "^F", "Move the cursor one character to the right."},
}};

} // namespace

std::span<const Binding> bindings () { return table; }

std::span<const std::string_view> keyboard_words () { return key_names; }

std::span<const std::string_view> mouse_words () { return mouse_names; }

} // namespace ostrand::editor
