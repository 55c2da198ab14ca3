// The mouse help says what a press would do.
#include "bench.h"

#include "editor/bindings.h"

#include <gtest/gtest.h>
#include <map>
#include <set>

namespace ostrand::editor {
namespace {

using test::Bench;

/// What is in hand when the pointer comes.
enum class InHand { nothing, node, other_node, protein, two_nodes, reaction, catalysis, text, all };
constexpr InHand states[]{InHand::nothing,   InHand::node,      InHand::other_node,
                          InHand::protein,   InHand::two_nodes, InHand::reaction,
                          InHand::catalysis, InHand::text,      InHand::all};

/// What it is over.
enum class Over {
    background,
    node,
    shared_node,
    node_text,
    reaction,
    catalysis,
    substrate_link,
    arc_text,
    compart,
    compart_text,
    complex
};
constexpr Over places[]{Over::background, Over::node,         Over::shared_node,    Over::node_text,
                        Over::reaction,   Over::catalysis,    Over::substrate_link, Over::arc_text,
                        Over::compart,    Over::compart_text, Over::complex};

void take_in_hand (Bench& b, InHand state) {
    switch (state) {
    case InHand::nothing: break;
    case InHand::node: b.click (b.on (b.node ("glc"))); break;
    case InHand::other_node: b.click (b.on (b.node ("f6p"))); break;
    case InHand::protein: b.click (b.on (b.node ("HK"))); break;
    case InHand::two_nodes:
        b.click (b.on (b.node ("f6p")));
        b.click (b.on (b.node ("G"), test::ctrl));
        break;
    case InHand::reaction: b.click (b.on (b.arc ("glc"))); break;
    case InHand::catalysis: b.click (b.on (b.arc ("HK"))); break;
    case InHand::text: b.click (b.on_letter (b.node ("f6p"), 1)); break;
    case InHand::all: b.run (Command::select_all); break;
    }
}

Pointer pointer_over (Bench& b, Over place, Modifiers held) {
    switch (place) {
    case Over::background: return b.beside (held);
    case Over::node: return b.on (b.node ("glc"), held);
    case Over::shared_node: return b.on (b.node ("ATP"), held);
    case Over::node_text: return b.on_letter (b.node ("glc"), 0, held);
    case Over::reaction: return b.on (b.arc ("glc"), held);
    case Over::catalysis: return b.on (b.arc ("HK"), held);
    case Over::substrate_link: return b.on (b.arc ("ATP"), held);
    case Over::arc_text: {
        const document::Arque& arc = b.arc ("glc");
        return b.on_text (arc, *arc.label_line (), held);
    }
    case Over::compart: {
        const document::Compart& cell = *b.network ().comps ().front ();
        return b.at (cell.x () + 2, cell.y () + 40, held);
    }
    case Over::compart_text: {
        const document::Compart& cell = *b.network ().comps ().front ();
        return b.at (cell.x () + cell.label ()->x () + 2, cell.y () + cell.label ()->y () - 3,
                     held);
    }
    case Over::complex: {
        for (const auto& n : b.network ().nodes ())
            if (n->nested () != nullptr) return b.at (n->extent ().x + 1, n->y (), held);
        break;
    }
    }
    return b.beside (held);
}

/// What a press and its release did, in a word or two.
std::string effect_of (Bench& b, int button, const Pointer& at) {
    const std::vector<std::int32_t> before = b.selected ();
    const Mode mode = b.canvas ().mode;
    const std::string text = b.text ();
    const std::size_t records = b.record_count ();
    std::vector<bool> marks;
    for (const auto& n : b.network ().nodes ())
        marks.push_back (n->highlight != document::no_highlight);
    b.world.last_popup.clear ();
    b.world.questions.clear ();
    b.world.pass (1);
    b.canvas ().press (button, at);
    const bool scrolls = b.canvas ().gesture.button == 3 && b.canvas ().gesture.press_valid &&
                         b.canvas ().gesture.label == nullptr;
    const bool moves_label = b.canvas ().gesture.label != nullptr;
    b.canvas ().release (button, at);
    if (moves_label) return "label";
    if (scrolls) return "scroll";
    if (!b.world.questions.empty ()) return "concentration";
    if (!b.world.last_popup.empty ())
        return b.world.last_popup.back ().label == "Dark Grey" ? "colours" : "kinds";
    std::vector<bool> marks_now;
    for (const auto& n : b.network ().nodes ())
        marks_now.push_back (n->highlight != document::no_highlight);
    if (b.text () != text) {
        const std::vector<std::string> written = b.records (records);
        return written.empty () ? "unrecorded" : "edit";
    }
    if (marks != marks_now) return "clones";
    if (b.canvas ().mode == Mode::text &&
        (mode != Mode::text || before != b.selected () || records == b.record_count ()))
        return "text";
    const std::vector<std::int32_t> now = b.selected ();
    if (now != before)
        return now.empty () ? "cleared" : now.size () > before.size () ? "more" : "selected";
    if (b.record_count () != records) return "record";
    return "none";
}

/// What each word promises; "none" where nothing may be left to do (a node that is in line
/// already).
const std::map<std::string_view, std::set<std::string>> promises{
    {word::rubber_band, {"none", "cleared"}}, // a drag follows
    {word::scroll_network, {"scroll"}},
    {word::select_reactant, {"selected", "more", "none"}}, // is selected already
    {word::select_reaction, {"selected", "more", "none"}},
    {word::select_comp, {"selected", "more", "none"}},
    {word::edit_text, {"text"}},
    {word::add_to_selection, {"more", "selected", "cleared"}}, // or taken out of it
    {word::move_selection, {"none"}},
    {word::clear_selection, {"cleared"}},
    {word::change_species, {"kinds"}},
    {word::change_arc_type, {"kinds"}},
    {word::set_comp_shape, {"kinds"}},
    {word::set_node_colour, {"colours"}},
    {word::set_arc_colour, {"colours"}},
    {word::set_comp_colour, {"colours"}},
    {word::add_sub_prod, {"edit"}},
    {word::add_a_catalyser, {"edit"}},
    {word::add_reaction, {"edit"}},
    {word::align_node, {"edit", "none"}},
    {word::swap_main_reactant, {"edit"}},
    {word::change_main_prod, {"edit"}},
    {word::set_concentration, {"concentration"}},
    {word::show_kinetics, {"edit", "none"}}, // they are there
    {word::show_stoichiometry, {"edit", "none"}},
    {word::duplicate_selection, {"edit"}},
    {word::display_molecule, {"edit"}},
    {word::show_clones, {"clones"}},
    {word::hide_clones, {"clones"}},
    {word::move_label, {"label"}},
    {word::detach_reactant, {"edit"}},
    {word::multiple_conc, {"edit"}},
};

TEST (mouse_help, a_word_is_what_the_press_does) {
    for (const InHand state : states) {
        for (const Over place : places) {
            for (int button = 1; button <= 3; ++button) {
                for (int row = 0; row < 4; ++row) {
                    Bench b;
                    b.open_rich ();
                    take_in_hand (b, state);
                    const Modifiers held{.shift = (row & 1) != 0, .ctrl = (row & 2) != 0};
                    const Pointer at = pointer_over (b, place, held);
                    b.canvas ().motion (at);
                    const std::string_view said = b.world.mouse_help[mouse_help_slot (button, row)];
                    b.world.alerts.clear ();
                    std::string effect = effect_of (b, button, at);
                    const std::string where =
                        "in hand " + std::to_string (static_cast<int> (state)) + ", over " +
                        std::to_string (static_cast<int> (place)) + ", button " +
                        std::to_string (button) + ", row " + std::to_string (row) + ": said '" +
                        std::string (said) + "', did '" + effect + "'";
                    if (!b.world.alerts.empty ()) continue; // the rules of links, which are told
                    if (!said.empty ()) {
                        EXPECT_TRUE (promises.at (said).contains (effect)) << where;
                    }
                }
            }
        }
    }
}

} // namespace
} // namespace ostrand::editor
