// Questions that several commands ask.
#include "editor/workbench.h"

#include "document/colors.h"
#include "editor/document_files.h"

#include "base/path.h"
#include "base/report.h"
#include "sim/concentration.h"

#include <utility>

namespace ostrand::editor {
namespace {

/// The hint behind every question.
constexpr const char* yes_no_hint = "[y/n]: ";

constexpr unsigned map_size = 256;

} // namespace

std::string Workbench::suggest_name (const Canvas& canvas, std::string_view extension) const {
    if (!canvas.file_name ()) return "Untitled" + std::string (extension);
    std::string name = *canvas.file_name ();
    const std::size_t dot = name.rfind ('.');
    const std::size_t slash = name.rfind ('/');
    const bool has_extension =
        dot != std::string::npos && (slash == std::string::npos || dot > slash + 1);
    if (has_extension) name.erase (dot);
    return name + std::string (extension);
}

bool Workbench::yes_no (const std::string& question) {
    return world_.yes_no (question, yes_no_hint, "?");
}

void Workbench::concentration_dialog (Canvas& canvas, document::Node& node) {
    const std::string present = node.user_data () ? *node.user_data () : std::string ();
    canvas.asked_node = &node;
    ValueQuestion question{.prompt = "Concentration: ",
                           .title = "Init. Concentration",
                           .initial = present,
                           .type = FieldType::text,
                           .fault = [] (const std::string& text) {
                               return sim::concentration_fault (text).value_or ("");
                           }};
    world_.ask_value (question, [this, asker = &canvas] (const std::string& text) {
        // Tab and node may be gone by the time of the answer.
        if (!is_open (asker) || asker->asked_node == nullptr) return;
        document::Node* const asked = std::exchange (asker->asked_node, nullptr);
        if (const std::optional<std::string> fault = sim::concentration_fault (text);
            fault && !text.empty ())
            report_message ("The simulator does not read this concentration: %s", fault->c_str ());
        if (asked->set_concentration (text)) asker->finish_edit (Edit::structure ());
    });
}

std::string Workbench::save_extension (const Canvas& canvas) {
    const std::string extension =
        canvas.file_name () ? lower_extension (*canvas.file_name ()) : std::string ();
    return extension.empty () ? ".net" : extension;
}

void Workbench::tell_what_is_lost (const std::string& path) {
    if (lower_extension (path) == ".ssa")
        report_message ("Saved as a model text: the drawing is not in that file.");
}

unsigned Workbench::pick_colour (unsigned colour) {
    const std::optional<unsigned> rgb =
        world_.choose_colour ("Color Selection", document::color_rgb (colour) >> 8);
    if (!rgb) return colour;
    for (unsigned i = 0; i < map_size; ++i)
        if (document::color_rgb (i) >> 8 == *rgb) return i;
    return *rgb << 8;
}

bool Workbench::save (Canvas& canvas, const std::string& path) {
    if (canvas.file_name () == path && changed_on_disk (canvas) &&
        !world_.yes_no ("Another program changed this file, overwrite it", "[y/N]: ", "?"))
        return false;
    std::string error;
    if (!save_file (canvas, path, error)) {
        report_message ("Cannot save '%s'", path.c_str ());
        return false;
    }
    return true;
}

} // namespace ostrand::editor
