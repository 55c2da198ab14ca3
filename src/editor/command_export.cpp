// The commands that write drawings.
#include "editor/command_functions.h"
#include "editor/workbench.h"
#include "export/export.h"
#include "sbml_out/standard_write.h"

#include "base/disk.h"
#include "base/path.h"
#include "base/report.h"

namespace ostrand::editor::run {
namespace {

/// What kinds of drawings have in common.
struct ExportKind {
    const char* extension;
    FileQuestion question;
    bool (*write) (const document::Network& network, const std::filesystem::path& path,
                   std::string& error);
};

void export_drawing (Workbench& bench, ExportKind kind) {
    Canvas& canvas = bench.current ();
    kind.question.initial = bench.suggest_name (canvas, kind.extension);
    kind.question.saving = true;
    const std::vector<std::string> names = bench.world ().ask_files (kind.question);
    if (names.empty ()) return;
    const std::string path = absolute_path ("", names.front ());
    std::string error;
    canvas.network ().layout ();
    if (kind.write (canvas.network (), path, error))
        report_message ("Written: %s", path.c_str ());
    else
        report_message ("Cannot write '%s': %s", path.c_str (), error.c_str ());
}

bool write_standard_sbml (const document::Network& network, const std::filesystem::path& path,
                          std::string& error) {
    const std::string text = sbml_out::write_standard (network, base_name (path.string ()));
    if (text.empty ()) {
        error = "the SBML library failed";
        return false;
    }
    return write_file (path.string (), text, error);
}

} // namespace

void export_pdf (Workbench& bench) {
    export_drawing (bench, {.extension = ".pdf",
                            .question = {.prompt = "PDF Export: ",
                                         .filter = "*.pdf",
                                         .title = "PDF Export",
                                         .native_filter = "PDF\t*.pdf\n"},
                            .write = drawing::export_pdf});
}

void export_svg (Workbench& bench) {
    export_drawing (bench, {.extension = ".svg",
                            .question = {.prompt = "SVG Export: ",
                                         .filter = "*.pdf",
                                         .title = "SVG Export",
                                         .native_filter = "SVG\t*.svg\n"},
                            .write = drawing::export_svg});
}

void export_standard_sbml (Workbench& bench) {
    export_drawing (bench, {.extension = ".xml",
                            .question = {.prompt = "SBML Export: ",
                                         .filter = "*.xml",
                                         .title = "SBML Export",
                                         .native_filter = "SBML\t*.xml\n"},
                            .write = write_standard_sbml});
}

} // namespace ostrand::editor::run
