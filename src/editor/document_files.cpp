// Reading and writing the document of a canvas.
#include "editor/document_files.h"

namespace ostrand::editor {
namespace {

files::OpenOptions options_of (Canvas& canvas) {
    return {.use_annotation = canvas.use_annotation,
            .arranging = canvas.shared ().arrange_opened ? files::Arranging::without_places
                                                         : files::Arranging::never};
}

/// Room between the window's edge and a drawing that was placed by a rule.
constexpr float beginning = 10;

/// A drawing that was placed by a rule is seen from its beginning, also where that lies left of or
/// above the network's own.
void show_beginning (document::Network& network) {
    if (network.x () != beginning || network.y () != beginning) return; // the file tells a place
    document::Extent all;
    for (const auto& node : network.nodes ()) all.join (node->extent ());
    for (const auto& box : network.comps ()) all.join (box->extent ());
    network.set_origin (beginning - all.x, beginning - all.y);
}

/// A document that came in takes the place of what is there.
void take_document (Canvas& canvas, files::Document read, const std::string& name) {
    const bool is_native = &files::reading_format (name) == &files::formats ().back ();
    if (!is_native) show_beginning (*read.network);
    canvas.replace_network (std::move (read.network));
    canvas.set_duration (read.duration);
    canvas.set_file_name (name);
}

} // namespace

bool open_file (Canvas& canvas, const std::string& path) {
    files::Document read;
    read.duration = canvas.duration (); // kept by files that tell none
    if (files::open_document (path, options_of (canvas), read) != files::LoadStatus::loaded)
        return false;
    take_document (canvas, std::move (read), path);
    canvas.set_modified (false);
    canvas.push_snapshot ();
    canvas.note_saved ();
    canvas.tell_selection_count ();
    canvas.redraw ();
    return true;
}

bool insert_file (Canvas& canvas, const std::string& path) {
    if (canvas.is_empty ()) return open_file (canvas, path);
    if (files::insert_document (path, options_of (canvas), canvas.document ()) !=
        files::LoadStatus::loaded)
        return false;
    canvas.finish_edit (Edit::structure ());
    return true;
}

bool save_file (Canvas& canvas, const std::string& path, std::string& error) {
    if (!files::save_document (canvas.document (), path, error)) return false;
    if (canvas.file_name () != path) canvas.rename_history (canvas.file_name (), path);
    canvas.set_file_name (path);
    canvas.set_modified (false);
    canvas.note_saved ();
    return true;
}

bool load_text_document (Canvas& canvas, std::string_view sbml_text, const std::string& file_name) {
    files::Document read;
    read.duration = canvas.duration ();
    if (files::load_text_document (sbml_text, read) != files::LoadStatus::loaded) return false;
    take_document (canvas, std::move (read), file_name);
    canvas.set_modified (false);
    canvas.push_snapshot ();
    canvas.tell_selection_count ();
    canvas.redraw ();
    return true;
}

bool changed_on_disk (const Canvas& canvas) {
    if (!canvas.file_name () || !canvas.file_stamp ()) return false;
    return ostrand::file_stamp (*canvas.file_name ()) != canvas.file_stamp ();
}

} // namespace ostrand::editor
