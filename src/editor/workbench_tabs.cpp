// Tabs: opening, choosing, closing, and the end of the program.
#include "editor/workbench.h"

#include "editor/document_files.h"
#include "editor/history.h"

#include "base/path.h"
#include "base/report.h"
#include "base/text.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>

namespace ostrand::editor {
namespace {

constexpr const char* too_many_tabs = "no more than 32 tabs";
/// Leftover of the toolkit's fonts in PDF files.
constexpr const char* temporary_font = ".tmpfile.ttf";

/// The part of a path behind its last "/".
std::string last_part (const std::string& path) {
    const std::size_t slash = path.rfind ('/');
    return slash == std::string::npos ? path : path.substr (slash + 1);
}

} // namespace

bool Workbench::has_free_slot () const {
    return std::ranges::any_of (slots_, [] (const OpenTab& tab) { return !tab.canvas; });
}

Workbench::OpenTab& Workbench::slot_of (const Canvas& canvas) {
    return *std::ranges::find_if (
        slots_, [&canvas] (const OpenTab& tab) { return tab.canvas.get () == &canvas; });
}

const Workbench::OpenTab& Workbench::slot_of (const Canvas& canvas) const {
    return *std::ranges::find_if (
        slots_, [&canvas] (const OpenTab& tab) { return tab.canvas.get () == &canvas; });
}

Canvas& Workbench::put_canvas (History history, std::string label) {
    OpenTab& slot = *std::ranges::find_if (slots_, [] (const OpenTab& tab) { return !tab.canvas; });
    slot.canvas = std::make_unique<Canvas> (shared_, world_, std::move (history));
    slot.label = std::move (label);
    attach (*slot.canvas);
    return *slot.canvas;
}

Canvas* Workbench::make_canvas (std::string label) {
    if (!has_free_slot ()) return nullptr;
    std::optional<UndoFile> undo = UndoFile::create (options_.home, shared_.next_undo_number);
    if (!undo) return nullptr;
    return &put_canvas (History (std::move (*undo)), std::move (label));
}

bool Workbench::is_open (const Canvas* canvas) const {
    return std::ranges::any_of (
        slots_, [canvas] (const OpenTab& tab) { return tab.canvas.get () == canvas; });
}

void Workbench::restore (std::vector<Leftover> leftovers, bool replaces_first) {
    const bool untouched = tabs_.count () == 1 && current ().is_empty () &&
                           !current ().file_name () && current ().history ().end () == 0;
    Canvas* const first = untouched && replaces_first ? &current () : nullptr;
    int restored = 0;
    int damaged = 0;
    for (Leftover& leftover : leftovers) {
        if (!has_free_slot ()) {
            report_message (too_many_tabs);
            break; // the others stay for another time
        }
        Canvas& canvas = put_canvas (
            History::resumed (std::move (leftover.file), leftover.last_snapshot), "New tab");
        if (!canvas.restore_last_state ()) {
            canvas.keep_history ();
            slot_of (canvas).canvas.reset ();
            continue;
        }
        tabs_.add (canvas);
        ++restored;
        damaged += leftover.damaged ? 1 : 0;
    }
    if (restored > 0 && first != nullptr) {
        tabs_.remove (0);
        world_.refresh ();
        slot_of (*first).canvas.reset ();
        select_tab (0);
    }
    if (damaged > 0)
        report_message ("%d restored, %d of them up to a damaged record", restored, damaged);
    else if (restored > 0)
        report_message ("%d restored", restored);
    world_.refresh ();
}

bool Workbench::open_first_tab () {
    Canvas* const canvas = make_canvas ("new tab");
    if (canvas == nullptr) {
        std::fputs ("kill-stack???\n", stderr);
        return false;
    }
    tabs_.add (*canvas);
    world_.refresh ();
    return true;
}

void Workbench::open_command_line (const std::vector<std::string>& names) {
    const std::string start = options_.start_directory + '/';
    for (std::size_t i = 0; i < names.size (); ++i) {
        set_current_directory (start);
        if (i == 0) {
            const std::string path = absolute_path ("", names[i]);
            set_current_directory (path);
            // A name that cannot be read stays: a later save makes the file.
            if (open_file (current (), path))
                recent_.add (path);
            else
                current ().set_file_name (path);
            continue;
        }
        switch (add_tab (names[i])) {
        case AddTab::full: report_message (too_many_tabs); break;
        case AddTab::unreadable: report_message ("Cannot load %s", names[i].c_str ()); break;
        case AddTab::no_history:
        case AddTab::added: break;
        }
    }
    world_.refresh ();
}

AddTab Workbench::add_tab (const std::optional<std::string>& path) {
    if (!has_free_slot ()) return AddTab::full;
    Canvas* const canvas = make_canvas ("New tab");
    if (canvas == nullptr) {
        report_message ("kill-stack???");
        return AddTab::no_history;
    }
    tabs_.add (*canvas);
    select_tab (tabs_.count () - 1);
    if (!path) return AddTab::added;
    const std::string absolute = absolute_path ("", *path);
    const bool read = open_file (*canvas, absolute);
    if (read) {
        set_current_directory (absolute);
        recent_.add (absolute);
    }
    world_.refresh ();
    return read ? AddTab::added : AddTab::unreadable;
}

void Workbench::select_tab (int index) {
    if (index < 0 || index >= tabs_.count ()) return;
    if (index != tabs_.active ()) tabs_.select (index);
    world_.refresh ();
    world_.redraw (current ());
}

void Workbench::move_tab (int from, int to) {
    tabs_.move (from, to);
    world_.refresh ();
}

void Workbench::close_tab (int index) {
    Canvas& canvas = tabs_.at (index);
    if (tabs_.count () == 1) {
        if (!yes_no (canvas.modified () ? "Modified network, still quit" : "Really quit")) return;
        quit ();
        return;
    }
    if (canvas.modified () && !yes_no ("Modified network, still close")) return;
    // The question may have changed the tabs.
    index = tabs_.index_of (canvas);
    if (index < 0) return;
    tabs_.remove (index);
    world_.refresh (); // nobody shows the canvas any more
    OpenTab& slot = slot_of (canvas);
    slot.canvas.reset ();
    slot.label.clear ();
    select_tab (tabs_.active ());
}

void Workbench::quit_request () {
    const bool modified = std::ranges::any_of (
        slots_, [] (const OpenTab& tab) { return tab.canvas && tab.canvas->modified (); });
    if (modified && !yes_no ("Modified network, still quit")) return;
    quit ();
}

void Workbench::close_all () {
    simulations_.end ();
    tabs_ = TabList ();
    for (OpenTab& tab : slots_) tab.canvas.reset ();
    std::error_code error;
    std::filesystem::remove (temporary_font, error);
}

void Workbench::accept_dropped_paths (std::string_view text) {
    static constexpr std::string_view scheme = "file://";
    for (std::string line : split_fields (text, '\n')) {
        while (!line.empty () && (line.back () == '\r' || line.back () == '\0')) line.pop_back ();
        if (line.starts_with (scheme)) line.erase (0, scheme.size ());
        if (line.empty () || tab_of_file (line) >= 0) continue;
        add_tab (line);
    }
}

int Workbench::tab_of_file (const std::string& absolute) const {
    for (int i = 0; i < tabs_.count (); ++i)
        if (tabs_.at (i).file_name () == absolute) return i;
    return -1;
}

std::string Workbench::window_title () const {
    if (!has_tab () || !current ().file_name ()) return "Ostrand";
    return last_part (*current ().file_name ()) + (current ().modified () ? "*" : "");
}

std::string Workbench::tab_label (int index) const {
    const Canvas& canvas = tabs_.at (index);
    const std::string name =
        canvas.file_name () ? last_part (*canvas.file_name ()) : slot_of (canvas).label;
    return canvas.modified () ? name + '*' : name;
}

void Workbench::set_tab_label (const Canvas& canvas, std::string label) {
    slot_of (canvas).label = std::move (label);
    world_.refresh ();
}

} // namespace ostrand::editor
