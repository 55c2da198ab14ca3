// Steps of the walk, and what must hold after each.
#include "editor_walk.h"

#include "document/line.h"
#include "document/markup.h"
#include "editor/edit_selection.h"
#include "editor/history.h"

#include "base/report.h"
#include "base/text.h"

#include <algorithm>
#include <filesystem>
#include <set>

namespace ostrand::test {

using document::Arque;
using document::CharKind;
using document::Compart;
using document::GraphBase;
using document::Network;
using document::Node;
using editor::Canvas;
using editor::Command;
using editor::Pointer;

namespace {

constexpr std::size_t longest_story = 30;

/// All objects of a network and of those nested in it.
void collect (const Network& network, std::vector<GraphBase*>& all) {
    for (const auto& n : network.nodes ()) {
        all.push_back (n.get ());
        for (const auto& a : n->arcs ()) all.push_back (a.get ());
        if (const Network* const inner = n->nested ()) collect (*inner, all);
    }
    for (const auto& c : network.comps ()) all.push_back (c.get ());
}

std::string text_read_again (const std::string& text) {
    const MessageScope silence ([] (std::string_view) {});
    const std::unique_ptr<Network> read = document::read_network (text);
    if (!read) return "unreadable";
    document::PrintState state;
    read->fprint (state, 0);
    return std::move (state.out);
}

std::string native_text (const Network& network) {
    document::PrintState state;
    network.fprint (state, 0);
    return std::move (state.out);
}

/// Sizes, places and marks that follow from a document and are not written.
std::string look_of (const Network& network) {
    std::string look =
        format_text ("%g %d\n", static_cast<double> (network.get_width ()), network.get_height ());
    std::vector<GraphBase*> all;
    collect (network, all);
    for (const GraphBase* const object : all) {
        const document::Extent box = object->extent ();
        look +=
            format_text ("%d %d: %g %g %g %g fog %d, %d pixels", static_cast<int> (object->kind ()),
                         object->id (), static_cast<double> (box.x), static_cast<double> (box.y),
                         static_cast<double> (box.right), static_cast<double> (box.bottom),
                         object->foggy () ? 1 : 0, static_cast<int> (object->thickness ()));
        if (object->kind () == CharKind::node) {
            const auto& node = static_cast<const Node&> (*object);
            look += format_text (" in %d of %d",
                                 node.compart () == nullptr ? -1 : node.compart ()->id (),
                                 node.master () == nullptr ? -1 : node.master ()->id ());
        }
        look += '\n';
    }
    return look;
}

/// True when a line, or a script in it, ends in a style that no letter before it has: that of letters
/// to come, which is in no text.
bool has_loose_end (const document::Line& line) {
    unsigned font = document::no_font;
    for (const document::StdChar& entry : line.chars ()) {
        const bool is_end = &entry == &line.chars ().back ();
        if (is_end && entry.font != font) return true;
        font = entry.font;
        if (!entry.parts) continue;
        for (const document::Line* const script : {entry.sub (), entry.sup ()})
            if (script != nullptr && has_loose_end (*script)) return true;
        if (const document::Char* const item = entry.item ();
            item != nullptr && item->kind () == CharKind::line &&
            has_loose_end (static_cast<const document::Line&> (*item)))
            return true;
    }
    return false;
}

bool has_loose_end (const Network& network) {
    std::vector<GraphBase*> all;
    collect (network, all);
    return std::ranges::any_of (all, [] (GraphBase* object) {
        return std::ranges::any_of (object->texts (), [] (const document::Char* text) {
            return text != nullptr && text->kind () == CharKind::line &&
                   has_loose_end (static_cast<const document::Line&> (*text));
        });
    });
}

/// The place of a nested network follows from its height, and an empty line in it has the height of
/// the style that runs where it is read: until the next snapshot a reader may see another place.
std::string without_nested_places (const std::string& text) {
    std::string out;
    for (const std::string& line : split_fields (text, '\n'))
        out += line.find ("\t[N") == std::string::npos ? line + '\n' : "[N\n";
    return out;
}

/// Where two texts part.
std::string difference (const std::string& a, const std::string& b) {
    const auto [at, unused] = std::mismatch (a.begin (), a.end (), b.begin (), b.end ());
    const auto place = static_cast<std::size_t> (at - a.begin ());
    const std::size_t from = place > 60 ? place - 60 : 0;
    return "\n  " + a.substr (from, 160) + "\nversus\n  " + b.substr (from, 160);
}

} // namespace

std::vector<std::string> WalkWorld::ask_files (const editor::FileQuestion& question) {
    if (names.empty () || choices_.one_in (6)) return {};
    const auto any = [this] {
        return names[static_cast<std::size_t> (choices_.below (static_cast<int> (names.size ())))];
    };
    if (!question.saving) return {any ()};
    // Kept apart from what is opened, so that a walk's documents stay small.
    return {names.front () + choices_.pick ({".saved.net", ".saved.xml", ".saved.ssa"})};
}

void WalkWorld::ask_value (const editor::ValueQuestion&,
                           std::function<void (const std::string&)> taken) {
    if (choices_.one_in (6)) return;
    taken (choices_.pick<const char*> (
        {"", "1 uM", "12 mM", "1 uM, 2 uM", "abc", "5", "0 uM -> 5 uM : 1 uM"}));
}

void WalkWorld::search (const editor::SearchQuestion& question) {
    for (int i = choices_.below (3); i > 0; --i)
        question.changed (
            choices_.pick<const char*> ({"A", "AT", "ATP", "", "E", "<", "_{", "zz"}));
    for (int i = choices_.below (3); i > 0; --i) question.step (choices_.one_in (2));
    question.ended ("A");
}

std::optional<int> WalkWorld::popup (const std::vector<editor::PopupEntry>& entries) {
    if (entries.empty () || choices_.one_in (8)) return std::nullopt;
    const editor::PopupEntry& entry =
        entries[static_cast<std::size_t> (choices_.below (static_cast<int> (entries.size ())))];
    if (!entry.active) return std::nullopt;
    return entry.value;
}

std::optional<unsigned> WalkWorld::choose_colour (const std::string&, unsigned) {
    if (choices_.one_in (4)) return std::nullopt;
    return choices_.pick<unsigned> ({0, 0xffffff, 0x123456, 0xff0000, 0x00ff00});
}

EditorWalk::EditorWalk (Choices& choices, const std::string& folder, std::vector<std::string> files)
    : choices_ (choices), folder_ (folder), world_ (choices) {
    std::filesystem::create_directories (folder_ + "/home");
    world_.names = std::move (files);
    if (!world_.names.empty ()) world_.names.push_back (folder_ + "/no such file.net");
    editor::Preferences preferences;
    preferences.stoichiometry = choices_.one_in (2);
    preferences.grid = choices_.one_in (4);
    bench_ = std::make_unique<editor::Workbench> (
        world_, preferences,
        editor::BenchOptions{
            .start_directory = folder_, .home = folder_ + "/home", .executable = "/nonexistent"});
    bench_->open_first_tab ();
    if (!world_.names.empty ()) bench_->open_command_line ({world_.names.front ()});
    canvas ().resize (900, 600);
}

EditorWalk::~EditorWalk () = default;

EditorWalk::Known& EditorWalk::known_of (const Canvas& canvas) { return known_[&canvas]; }

void EditorWalk::tell (std::string what) {
    story_.push_back (std::move (what));
    if (story_.size () > longest_story) story_.pop_front ();
}

std::string EditorWalk::story () const {
    std::string all;
    for (const std::string& line : story_) all += line + '\n';
    return all;
}

editor::Modifiers EditorWalk::modifiers () {
    editor::Modifiers held;
    switch (choices_.below (12)) {
    case 0: held.shift = true; break;
    case 1: held.ctrl = true; break;
    case 2: held.shift = held.ctrl = true; break;
    case 3: held.alt = choices_.one_in (4); break;
    default: break;
    }
    return held;
}

/// On or beside some object, on a text, or anywhere.
Pointer EditorWalk::place () {
    Network& network = canvas ().network ();
    network.layout ();
    float x = static_cast<float> (choices_.below (1000) - 50);
    float y = static_cast<float> (choices_.below (700) - 50);
    const float zoom = canvas ().view.zoom ();
    const auto to = [&] (float unit_x, float unit_y) {
        x = (unit_x + network.x ()) * zoom;
        y = (unit_y + network.y ()) * zoom;
    };
    const auto jitter = [this] { return static_cast<float> (choices_.below (21) - 10); };
    const std::vector<Arque*> arcs = network.all_arcs ();
    switch (choices_.below (11)) {
    case 0:
    case 1:
    case 6:
    case 7:
    case 8: {
        if (network.nb_nodes () == 0) break;
        const Node& n =
            *network.nodes ()[static_cast<std::size_t> (choices_.below (network.nb_nodes ()))];
        if (choices_.one_in (2)) // its edge, where no letter is
            to (n.extent ().x, n.y ());
        else
            to (n.x () + jitter (), n.y () + jitter () / 4);
        break;
    }
    case 2:
    case 3:
    case 5:
    case 9: {
        if (arcs.empty ()) break;
        const Arque& a =
            *arcs[static_cast<std::size_t> (choices_.below (static_cast<int> (arcs.size ())))];
        const document::ArcGeometry& at = a.geometry ();
        if (choices_.one_in (2)) {
            to ((at.start.x + at.end.x) / 2, (at.start.y + at.end.y) / 2);
            break;
        }
        const bool second = choices_.one_in (2);
        const document::Point text = second ? at.residu_pos : at.label_pos;
        const document::Char* const shown = second ? a.residu () : a.label ();
        to (text.x + 4 + (shown != nullptr ? shown->x () : 0),
            text.y - 3 + (shown != nullptr ? shown->y () : 0));
        break;
    }
    case 4: {
        if (network.nb_comp () == 0) break;
        const Compart& c =
            *network.comps ()[static_cast<std::size_t> (choices_.below (network.nb_comp ()))];
        const auto h = static_cast<float> (c.get_height ());
        switch (choices_.below (4)) {
        case 0: to (c.x () + 3, c.y () + h / 2); break;
        case 1: to (c.x () + c.get_width () / 2, c.y () + 3); break;
        case 2: to (c.x () + 3, c.y () + 30); break;
        default: to (c.x () + c.get_width () / 2, c.y () + h - 14); break;
        }
        break;
    }
    default: break;
    }
    return {.x = std::round (x), .y = std::round (y), .modifiers = {}};
}

void EditorWalk::gesture () {
    const int button = choices_.pick ({1, 1, 1, 2, 3});
    Pointer at = place ();
    at.modifiers = modifiers ();
    Canvas& on = canvas ();
    if (choices_.one_in (3)) on.motion (at);
    std::string what = format_text ("press %d row %d at %g %g", button, at.modifiers.row (),
                                    static_cast<double> (at.x), static_cast<double> (at.y));
    const document::Hit hit = on.find_at (at.x, at.y);
    what += hit ? format_text (" on %d", static_cast<int> (hit.kind ())) : " on nothing";
    if (hit && hit.owner != nullptr)
        what += format_text (" of %d", static_cast<int> (hit.owner->kind ()));
    on.press (button, at);
    if (choices_.one_in (6)) { // a double or triple click
        for (int more = choices_.below (2); more >= 0; --more) {
            on.release (button, at);
            on.press (button, at);
            what += " again";
        }
    }
    if (choices_.one_in (2)) {
        for (int moves = 1 + choices_.below (3); moves > 0; --moves) {
            Pointer to = place ();
            if (choices_.one_in (2))
                to = {.x = at.x + static_cast<float> (choices_.below (61) - 30),
                      .y = at.y + static_cast<float> (choices_.below (61) - 30),
                      .modifiers = {}};
            if (choices_.one_in (8)) to.modifiers = modifiers ();
            at = to;
            what += format_text (" drag to %g %g", static_cast<double> (to.x),
                                 static_cast<double> (to.y));
            on.drag (to);
            if (choices_.one_in (20)) on.prepare_paint ();
            if (choices_.one_in (20)) { // near the border the view may scroll meanwhile
                world_.pass (0.5);
                what += " wait";
            }
        }
        // Whatever else goes on while a button is down.
        switch (choices_.below (40)) {
        case 0:
            what += " undo";
            mixed_ = true;
            on.undo ();
            break;
        case 1:
            what += " key";
            on.key_down ({.key = document::keys::delete_key, .text = {}, .modifiers = {}});
            break;
        case 3:
            what += " arrow key";
            on.key_down ({.key = document::keys::left, .text = {}, .modifiers = {}});
            on.drag ({.x = at.x + 7, .y = at.y + 3, .modifiers = {}});
            break;
        case 4:
            what += " command";
            command ();
            on.drag ({.x = at.x + 7, .y = at.y + 3, .modifiers = {}});
            break;
        case 5:
            what += " duplicate";
            editor::duplicate_selection (on);
            on.drag ({.x = at.x + 7, .y = at.y + 3, .modifiers = {}});
            break;
        case 2:
            what += " redo";
            mixed_ = true;
            on.redo ();
            break;
        default: break;
        }
    }
    on.release (button, at);
    world_.pass (choices_.one_in (2) ? 0.1 : 1);
    tell (what + format_text (", mode %d", static_cast<int> (on.mode)));
}

void EditorWalk::key () {
    namespace keys = document::keys;
    editor::KeyEvent event;
    event.modifiers = modifiers ();
    std::string text;
    switch (choices_.below (5)) {
    case 0: event.key = choices_.pick ({keys::left, keys::right, keys::up, keys::down}); break;
    case 1:
        event.key = choices_.pick ({keys::backspace, keys::delete_key, keys::escape, 0xff50, 0xff57,
                                    0xff55, 0xff56, keys::delete_code, 0xffe1, 0xff0d});
        if (event.key == keys::escape) text = "\x1b";
        if (event.key == keys::backspace) text = "\b";
        break;
    case 2: // Ctrl and a letter
        event.key = 'a' + choices_.below (26);
        if (event.key == 'i') ++event.key; // would be a file
        event.modifiers.ctrl = true;
        text = std::string (1, static_cast<char> (event.key - 'a' + 1));
        break;
    default:
        event.key = 32 + choices_.below (95);
        text = std::string (1, static_cast<char> (event.key));
        if (choices_.one_in (10)) text = "\xC3\xA9";
        break;
    }
    event.text = text;
    if (event.key == '=' && event.modifiers.ctrl) mixed_ = true; // may do something again
    canvas ().key_down (event);
    canvas ().key_up (event);
    tell (format_text ("key %x row %d, mode %d", static_cast<unsigned> (event.key),
                       event.modifiers.row (), static_cast<int> (canvas ().mode)));
}

void EditorWalk::command () {
    static constexpr std::array edits{Command::select_all,
                                      Command::cut,
                                      Command::copy,
                                      Command::paste,
                                      Command::duplicate,
                                      Command::align_nodes,
                                      Command::share_clones,
                                      Command::color_reactants,
                                      Command::fog_selection,
                                      Command::unfog_selection,
                                      Command::new_protein,
                                      Command::new_molecule,
                                      Command::new_gene,
                                      Command::new_receptor,
                                      Command::new_complex,
                                      Command::new_round_compartment,
                                      Command::new_oval_compartment,
                                      Command::new_reaction,
                                      Command::add_substrate,
                                      Command::add_product,
                                      Command::find_reactant,
                                      Command::set_duration,
                                      Command::show_kinetics,
                                      Command::show_stoichiometry,
                                      Command::show_grid,
                                      Command::smart_move,
                                      Command::dark_mode,
                                      Command::emacs_keys,
                                      Command::smart_dialog,
                                      Command::show_guides,
                                      Command::snap_to_guides,
                                      Command::insert_picture};
    const Command chosen =
        edits[static_cast<std::size_t> (choices_.below (static_cast<int> (edits.size ())))];
    if (choices_.one_in (20))
        world_.clipboard = choices_.pick<const char*> (
            {"", "abc", "[N1 2 3", "{", "\xC3\xA9_{2}", "[N0 0 2 8 8\n[U1: 3 4 9 3 - {Q}]]"});
    // A growing document would slow the walk down, and say nothing new.
    if (canvas ().network ().nb_nodes () > 40) {
        bench_->run (Command::select_all);
        bench_->run (Command::cut);
        tell ("everything is deleted");
        return;
    }
    if (choices_.one_in (40)) { // it takes a while
        bench_->run (Command::arrange);
        tell ("everything or the selection is arranged");
        return;
    }
    bench_->run (chosen);
    tell ("command " + std::string (editor::command_row (chosen).label));
}

void EditorWalk::style () {
    switch (choices_.below (5)) {
    case 0: bench_->set_font_face (choices_.pick<unsigned> ({0, 1, 2, 3, 4, 7})); break;
    case 1: bench_->set_font_size (static_cast<unsigned> (choices_.below (32))); break;
    case 2: bench_->toggle_bold (); break;
    case 3: bench_->toggle_italic (); break;
    default: bench_->set_text_colour (choices_.pick<unsigned> ({0, 1, 4, 0x12345600, 0x58})); break;
    }
    tell ("style");
}

void EditorWalk::files_and_tabs () {
    switch (choices_.below (10)) {
    case 0:
        bench_->run (Command::load_file);
        tell ("load");
        break;
    case 1:
        bench_->run (Command::open_file);
        tell ("open");
        break;
    case 2:
        bench_->run (Command::insert_file);
        tell ("insert");
        break;
    case 3:
        bench_->run (Command::reopen_file);
        tell ("reopen");
        break;
    case 4:
        bench_->run (choices_.one_in (2) ? Command::save_as : Command::save_file);
        tell ("save");
        break;
    case 5:
        if (bench_->tabs ().count () < 3) bench_->run (Command::new_tab);
        tell ("new tab");
        break;
    case 6:
        if (bench_->tabs ().count () > 1)
            bench_->close_tab (choices_.below (bench_->tabs ().count ()));
        tell ("close tab");
        break;
    case 7:
        bench_->move_tab (0, bench_->tabs ().count () - 1);
        tell ("move tab");
        break;
    default:
        bench_->next_tab ();
        tell ("next tab");
        break;
    }
    // What is known of canvases that are gone is forgotten: another one may get their place.
    std::set<const Canvas*> open;
    for (int i = 0; i < bench_->tabs ().count (); ++i) open.insert (&bench_->tabs ().at (i));
    std::erase_if (known_, [&open] (const auto& one) { return !open.contains (one.first); });
    canvas ().resize (900, 600);
}

void EditorWalk::view () {
    Pointer at = place ();
    switch (choices_.below (5)) {
    case 0: at.modifiers.ctrl = true; [[fallthrough]];
    case 1:
        canvas ().wheel (0, static_cast<float> (choices_.below (5) - 2), at);
        tell ("wheel");
        break;
    case 2:
        bench_->run (choices_.pick ({Command::zoom_in, Command::zoom_out, Command::zoom_reset}));
        tell ("zoom");
        break;
    case 3:
        canvas ().motion (at);
        tell ("motion");
        break;
    default:
        canvas ().prepare_paint ();
        tell ("paint");
        break;
    }
}

void EditorWalk::undo_or_redo () {
    replayed_ = true;
    const bool back = choices_.below (5) < 3;
    if (back)
        canvas ().undo ();
    else
        canvas ().redo ();
    tell (back ? "undo" : "redo");
}

void EditorWalk::type_word () {
    const std::string word = choices_.pick<const char*> ({"ATP", "a<b", "2_{", "x}", "#", "\\^ "});
    for (const char c : word) {
        const std::string text (1, c);
        canvas ().key_down ({.key = c, .text = text, .modifiers = {}});
    }
    tell ("type " + word);
}

/// A key that edits a text.
void EditorWalk::text_key () {
    namespace keys = document::keys;
    editor::KeyEvent event;
    std::string text;
    switch (choices_.below (4)) {
    case 0: // into scripts and out of them
        event.key = choices_.pick ({keys::up, keys::down, keys::left});
        event.modifiers.shift = true;
        break;
    case 1: event.key = choices_.pick ({keys::left, keys::right, keys::escape}); break;
    case 2: event.key = choices_.pick ({keys::backspace, keys::delete_key}); break;
    default:
        event.modifiers.ctrl = true;
        event.key = choices_.pick ({'a', 'b', 'd', 'e', 'f', 'h', 'k'});
        text = std::string (1, static_cast<char> (event.key - 'a' + 1));
        break;
    }
    event.text = text;
    canvas ().key_down (event);
    tell (format_text ("text key %x row %d, mode %d", static_cast<unsigned> (event.key),
                       event.modifiers.row (), static_cast<int> (canvas ().mode)));
}

void EditorWalk::act () {
    // An empty document has little to do in it.
    if (canvas ().is_empty () && choices_.one_in (2)) {
        bench_->run (choices_.pick ({Command::open_file, Command::new_reaction}));
        tell ("something to begin with");
        return;
    }
    if (canvas ().mode == editor::Mode::text && !choices_.one_in (4)) {
        switch (choices_.below (6)) {
        case 0: style (); break;
        case 1: type_word (); break;
        case 2:
            bench_->run (choices_.pick ({Command::cut, Command::copy, Command::paste}));
            tell ("clipboard of a text");
            break;
        default: text_key (); break;
        }
        return;
    }
    switch (choices_.below (20)) {
    case 0:
    case 1: command (); break;
    case 2: style (); break;
    case 3:
        if (choices_.one_in (2)) files_and_tabs ();
        break;
    case 4: view (); break;
    case 5:
    case 6:
    case 7: key (); break;
    case 8: type_word (); break;
    case 9:
    case 10:
    case 11:
    case 12: undo_or_redo (); break;
    default: gesture (); break;
    }
}

std::string EditorWalk::step () {
    replayed_ = false;
    mixed_ = false;
    act ();
    return check ();
}

std::string EditorWalk::check_objects () {
    const Canvas& on = canvas ();
    std::vector<GraphBase*> all;
    collect (on.network (), all);
    const std::set<GraphBase*> there (all.begin (), all.end ());
    std::set<int> ids;
    std::size_t marked = 0;
    for (GraphBase* const object : all) {
        if (object->id () == document::no_id || !ids.insert (object->id ()).second)
            return format_text ("id %d is none or is there twice", object->id ());
        if (on.network ().find_by_id (object->id ()) != object)
            return format_text ("id %d finds another object", object->id ());
        if (object->selected) ++marked;
    }
    for (const GraphBase* const object : on.selection.objects ()) {
        if (!there.contains (const_cast<GraphBase*> (object))) return "a selected object is gone";
        if (!object->selected) return "a selected object is not marked";
    }
    if (marked != on.selection.objects ().size ()) return "an object is marked and not selected";
    if (on.hover () != nullptr && !there.contains (on.hover ())) return "the hover is gone";
    if (on.fuse_shown () != nullptr) return "a fuse target stays lit";
    if (const document::Line* const line = on.selection.edit_line ()) {
        if (!there.contains (on.selection.text_owner ())) return "a text of no object is edited";
        if (line->cursor < 0 || line->cursor >= line->count ()) return "the cursor is nowhere";
        if (on.mode != editor::Mode::text) return "a text is edited in another mode";
    } else if (on.mode == editor::Mode::text) {
        return "no text is edited in its mode";
    }
    return "";
}

std::string EditorWalk::check_history (bool replayed) {
    Canvas& on = canvas ();
    Known& known = known_of (on);
    const std::int32_t position = on.history ().position ();
    const std::int32_t end = on.history ().end ();
    std::string text = without_nested_places (on.text_without_view ());
    on.network ().layout ();
    std::string look = has_loose_end (on.network ()) ? std::string () : look_of (on.network ());
    std::string fault;
    if (mixed_) {
        known = Known ();
        known.texts[position] = text;
    } else if (replayed && position != known.position) {
        if (end != known.end) fault = "undo or redo wrote a record";
        const auto [before, is_new] = known.texts.emplace (position, text);
        if (!is_new && before->second != text)
            fault =
                format_text ("another text at %d", position) + difference (before->second, text);
        const auto [seen, unseen] = known.looks.emplace (position, look);
        if (fault.empty () && !unseen && !seen->second.empty () && seen->second != look)
            fault = format_text ("another look at %d", position) + difference (seen->second, look);
        const auto [selected, first_time] =
            known.selections.emplace (position, on.selection.ids ());
        if (!first_time && selected->second != on.selection.ids ())
            fault = "another selection at a place of the history";
    } else if (position == known.position && end == known.end) {
        if (text != known.text) fault = "a change without a record" + difference (known.text, text);
    } else {
        if (position != end) fault = "something can be redone behind a new record";
        const auto later = [&known] (const auto& one) { return one.first > known.position; };
        std::erase_if (known.texts, later);
        std::erase_if (known.looks, later);
        std::erase_if (known.selections, later);
        known.texts[known.position] = known.text;
        known.texts[position] = text;
        known.looks[position] = look;
        for (std::int32_t at = known.position; at < position;) {
            const auto entry = on.history ().read (at);
            if (!entry) return "a record cannot be read";
            ++counts[static_cast<int> (entry->record.header.type)];
            at += static_cast<std::int32_t> (entry->record.header.length ());
        }
        // Several edits may come to nothing together; one of them may not.
        const auto only = on.history ().read (known.position);
        if (text == known.text && known.position + only->record.header.length () == position &&
            only->record.header.type >= editor::RecordType::move)
            fault = format_text ("a record %d of no change",
                                 static_cast<int> (only->record.header.type));
    }
    known.position = position;
    known.end = end;
    known.text = std::move (text);
    known.look = std::move (look);
    return fault;
}

std::string EditorWalk::check () {
    if (!known_.contains (&canvas ())) {
        Known& fresh = known_of (canvas ());
        fresh.position = canvas ().history ().position ();
        fresh.end = canvas ().history ().end ();
        fresh.text = without_nested_places (canvas ().text_without_view ());
        fresh.texts[fresh.position] = fresh.text;
        return "";
    }
    if (std::string fault = check_history (replayed_); !fault.empty ()) return fault;
    if (std::string fault = check_objects (); !fault.empty ()) return fault;
    const std::string text = native_text (canvas ().network ());
    const std::string again = text_read_again (text);
    if (without_nested_places (again) != without_nested_places (text))
        return "a reader gets another text" + difference (text, again);
    return "";
}

std::string EditorWalk::crash () {
    std::multiset<std::string> expected;
    for (int i = 0; i < bench_->tabs ().count (); ++i) {
        Canvas& tab = bench_->tabs ().at (i);
        while (tab.history ().can_redo ()) tab.redo ();
        if (tab.history ().end () > 0) expected.insert (tab.text_without_view ());
        tab.keep_history ();
    }
    bench_->close_all ();
    std::multiset<std::string> found;
    editor::Workbench next (
        world_, editor::Preferences (),
        {.start_directory = folder_, .home = folder_ + "/home", .executable = "/nonexistent"});
    next.open_first_tab ();
    next.restore (editor::find_leftovers (folder_ + "/home"), true);
    for (int i = 0; i < next.tabs ().count (); ++i)
        if (next.tabs ().at (i).history ().end () > 0)
            found.insert (next.tabs ().at (i).text_without_view ());
    next.close_all ();
    if (found.size () != expected.size ())
        return format_text ("%zu of %zu tabs came back", found.size (), expected.size ());
    if (found != expected) return "another text came back";
    return "";
}

} // namespace ostrand::test
