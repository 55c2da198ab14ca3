// The words for what mouse and keys do on a canvas, and the table of them for the manual.
// Layer: editor.
#pragma once
#include <span>
#include <string_view>

namespace ostrand::editor {

/// Words for what the mouse does, as the mouse help shows them.
namespace word {
inline constexpr std::string_view none = "";
inline constexpr std::string_view rubber_band = "rubber band";
inline constexpr std::string_view scroll_network = "scroll network";
inline constexpr std::string_view select_reactant = "select reactant";
inline constexpr std::string_view select_reaction = "select reaction";
inline constexpr std::string_view edit_text = "edit text";
inline constexpr std::string_view add_to_selection = "add to selection";
inline constexpr std::string_view move_selection = "move selection";
inline constexpr std::string_view clear_selection = "clear selection";
inline constexpr std::string_view change_species = "change species";
inline constexpr std::string_view change_arc_type = "change arc type";
inline constexpr std::string_view set_node_colour = "set node colour";
inline constexpr std::string_view set_arc_colour = "set arc colour";
inline constexpr std::string_view add_sub_prod = "add sub/prod";
inline constexpr std::string_view add_reaction = "add reaction";
inline constexpr std::string_view align_node = "align node";
inline constexpr std::string_view swap_main_reactant = "swap main reactant";
inline constexpr std::string_view set_concentration = "set concentration";
inline constexpr std::string_view show_kinetics = "show kinetics";
inline constexpr std::string_view fuse_node = "fuse node";
inline constexpr std::string_view duplicate_selection = "duplicate selection";
inline constexpr std::string_view select_comp = "select comp.";
inline constexpr std::string_view set_comp_shape = "set comp. shape";
inline constexpr std::string_view set_comp_colour = "set comp. colour";
inline constexpr std::string_view add_a_catalyser = "add a catalyser";
inline constexpr std::string_view display_molecule = "display molecule";
inline constexpr std::string_view show_clones = "show clones";
inline constexpr std::string_view hide_clones = "hide clones";
inline constexpr std::string_view move_label = "move label";
inline constexpr std::string_view change_main_prod = "change main prod.";
inline constexpr std::string_view show_stoichiometry = "show stoichiometry";
inline constexpr std::string_view detach_reactant = "detach reactant";
inline constexpr std::string_view multiple_conc = "multiple conc";
} // namespace word

/// What a binding is about, as its code tells it.
enum class BindingContext {
    background = 1,
    reaction = 2,
    catalyse_arc = 3,
    molecule = 4,
    text_field = 5,
    kinetics_field = 6 // a kinetics or stoichiometry field
};

enum class BindingEvent { click = 1, drag = 2, motion = 3, key = 4 };

/// Keys of a code that are no characters.
enum class BindingKey {
    any_arrow = 15,
    up = 16,
    down = 17,
    left = 18,
    right = 19,
    backspace = 20,
    delete_key = 21,
    escape = 23
};

/// One binding. The code packs, from the low bits: modifiers (bit 0 Shift, bit 1 Ctrl; 4 bits),
/// button (4 bits, 0 for a key), event, context, selected (4 bits each), key (8 bits).
struct Binding {
    unsigned code;
    std::string_view name;
    std::string_view key_text;
    std::string_view help;

    bool shift () const { return (code & 1U) != 0; }
    bool ctrl () const { return (code & 2U) != 0; }
    unsigned button () const { return code >> 4 & 15U; }
    BindingEvent event () const { return static_cast<BindingEvent> (code >> 8 & 15U); }
    BindingContext context () const { return static_cast<BindingContext> (code >> 12 & 15U); }
    bool selected () const { return (code >> 16 & 15U) != 0; }
    /// A BindingKey, or the code of a character in upper case.
    unsigned key () const { return code >> 20 & 255U; }
};

/// All bindings in the manual's order: the mouse first, then the keys.
std::span<const Binding> bindings ();

/// Words for keys in a text, the empty one first.
std::span<const std::string_view> keyboard_words ();
/// Words for the mouse, the empty one first. The mouse help shows these.
std::span<const std::string_view> mouse_words ();

} // namespace ostrand::editor
