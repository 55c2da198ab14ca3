#include "bench.h"

#include "document/line.h"
#include "document/markup.h"

#include "base/text.h"

#include <filesystem>
#include <map>
#include <stdexcept>

namespace ostrand::test {

using document::Arque;
using document::Node;
using editor::Modifiers;
using editor::Pointer;

Bench::Bench (const editor::Preferences& preferences) {
    std::filesystem::create_directories (folder / "home");
    bench = std::make_unique<editor::Workbench> (
        world, preferences,
        editor::BenchOptions{.start_directory = folder.path ().string (),
                             .home = home (),
                             .executable = "/nonexistent"});
    if (!bench->open_first_tab ()) throw std::runtime_error ("no undo file");
    canvas ().resize (900, 600);
}

Bench::~Bench () {
    bench->close_all ();
    bench.reset ();
    std::filesystem::current_path ("/");
    document::DocumentState& state = document::document_state ();
    state.dark_mode = false;
    state.show_kinetics = true;
    state.show_stoichiometry = false;
    state.default_color = 0;
}

void Bench::open_text (std::string_view native, std::string_view name) {
    const std::string path = folder.write (name, "# Lattrix: 1.2\n" + std::string (native));
    world.file_answers.push_back ({path});
    run (editor::Command::open_file);
    if (canvas ().file_name () != path) throw std::runtime_error ("not opened: " + path);
    network ().layout ();
}

std::unique_ptr<editor::Workbench> Bench::another () {
    auto made = std::make_unique<editor::Workbench> (
        world, editor::Preferences (),
        editor::BenchOptions{.start_directory = folder.path ().string (),
                             .home = home (),
                             .executable = "/nonexistent"});
    made->open_first_tab ();
    return made;
}

Node& Bench::node (std::string_view label) {
    for (const auto& n : network ().nodes ()) {
        std::string text;
        n->text (text);
        if (text == label) return *n;
    }
    throw std::runtime_error ("no node " + std::string (label));
}

Arque& Bench::arc (std::string_view source, int n) {
    const auto& arcs = node (source).arcs ();
    if (n >= static_cast<int> (arcs.size ())) throw std::runtime_error ("no such arc");
    return *arcs[static_cast<std::size_t> (n)];
}

Pointer Bench::at (float x, float y, Modifiers held) {
    const float zoom = canvas ().view.zoom ();
    return {
        .x = (x + network ().x ()) * zoom, .y = (y + network ().y ()) * zoom, .modifiers = held};
}

Pointer Bench::on (const Node& node, Modifiers held) {
    network ().layout ();
    return at (node.extent ().x + 1, node.y (), held);
}

Pointer Bench::on_letter (const Node& node, int n, Modifiers held) {
    network ().layout ();
    const document::Line& line = *node.label_line ();
    float x = node.extent ().x + line.x () + 1;
    for (int i = 0; i < n; ++i) x += line.width_at (i);
    return at (x, node.extent ().y + line.y () - 3, held);
}

Pointer Bench::on (const Arque& arc, Modifiers held) {
    network ().layout ();
    const document::ArcGeometry& way = arc.geometry ();
    // A third of the way, where no mark and no further arc is.
    return at (way.start.x + (way.end.x - way.start.x) / 3,
               way.start.y + (way.end.y - way.start.y) / 3, held);
}

Pointer Bench::on_text (const Arque& arc, const document::Line& text, Modifiers held) {
    network ().layout ();
    const bool near_source = &text == arc.label () || &text == arc.stoech_src ();
    const document::Point place =
        near_source ? arc.geometry ().label_pos : arc.geometry ().residu_pos;
    const float further = &text == arc.stoech_src () || &text == arc.stoech_dest ()
                              ? document::stoichiometry_offset
                              : 0;
    return at (place.x + further + text.x () + 1, place.y + further + text.y () - 3, held);
}

Pointer Bench::beside (Modifiers held) { return {.x = 800, .y = 500, .modifiers = held}; }

void Bench::click (const Pointer& pointer, int button) { drag (pointer, {}, button); }

void Bench::drag (const Pointer& from, std::vector<Pointer> to, int button) {
    world.pass (1);
    canvas ().press (button, from);
    for (const Pointer& place : to) canvas ().drag (place);
    canvas ().release (button, to.empty () ? from : to.back ());
}

bool Bench::key (int key, Modifiers held) {
    std::string text;
    if (held.ctrl && key >= 'a' && key <= 'z')
        text = std::string (1, static_cast<char> (key - 'a' + 1));
    else if (key < 128)
        text = std::string (1, static_cast<char> (key));
    return canvas ().key_down ({.key = key, .text = text, .modifiers = held});
}

void Bench::type (std::string_view letters) {
    for (const char letter : letters) key (static_cast<unsigned char> (letter));
}

std::string Bench::whole_text () {
    document::PrintState state;
    network ().fprint (state, 0);
    return std::move (state.out);
}

std::vector<std::string> Bench::records (std::size_t from) {
    using editor::RecordType;
    std::vector<std::string> all;
    const editor::History& history = canvas ().history ();
    for (std::int32_t at = 0; at < history.end ();) {
        const auto entry = history.read (at);
        if (!entry) {
            all.emplace_back ("unreadable");
            break;
        }
        const editor::Record& record = entry->record;
        std::string words;
        switch (record.header.type) {
        case RecordType::snapshot: words = "snapshot"; break;
        case RecordType::selection:
            words = "selection";
            for (const std::int32_t id : record.ids) words += format_text (" %d", id);
            break;
        case RecordType::move: words = format_text ("move %d %d", record.dx, record.dy); break;
        case RecordType::kind:
            words = format_text ("kind %d %u", record.ids.front (), record.value);
            break;
        case RecordType::colour:
            words = format_text ("colour %d %u", record.ids.front (), record.value);
            break;
        case RecordType::labels:
            words = format_text ("labels %d ", record.ids.front ()) + std::string (record.text);
            break;
        }
        all.push_back (std::move (words));
        at += static_cast<std::int32_t> (record.header.length ());
    }
    all.erase (all.begin (),
               all.begin () + static_cast<std::ptrdiff_t> (std::min (from, all.size ())));
    return all;
}

std::string Bench::undo_and_redo () {
    editor::Canvas& on = canvas ();
    const std::string done = text ();
    std::map<std::int32_t, std::string> texts;
    texts[on.history ().position ()] = done;
    // All the way back, then all the way again.
    for (int steps = 0; steps < 1000 && on.history ().position () > 0; ++steps) {
        on.undo ();
        texts.emplace (on.history ().position (), text ());
    }
    if (!on.is_empty ()) return "something is left when all is undone";
    while (on.history ().can_redo ()) {
        on.redo ();
        const auto before = texts.find (on.history ().position ());
        if (before == texts.end ()) return "redo stops at another place";
        if (before->second != text ()) return "redo gives another text:\n" + text ();
    }
    return text () == done ? "" : "the end is another one:\n" + text ();
}

} // namespace ostrand::test
