// The commands that write drawings.
#include "editor/command_functions.h"
#include "editor/workbench.h"
#include "export/export.h"
#include "export/png_export.h"
#include "sbml_out/standard_write.h"

#include "base/path.h"
#include "base/report.h"
#include "base/text.h"

#include <functional>
#include <set>

namespace ostrand::editor::run {
namespace {

/// What kinds of drawings have in common.
struct ExportKind {
    const char* extension;
    FileQuestion question;
    bool (*write) (const document::Network& network, const std::filesystem::path& path,
                   std::string& error);
};

void tell_written (const std::string& path, bool written, const std::string& error) {
    if (written)
        report_message ("Written: %s", path.c_str ());
    else
        report_message ("Cannot write '%s': %s", path.c_str (), error.c_str ());
}

void export_drawing (Workbench& bench, ExportKind kind) {
    Canvas& canvas = bench.current ();
    kind.question.initial = bench.suggest_name (canvas, kind.extension);
    kind.question.saving = true;
    const std::vector<std::string> names = bench.world ().ask_files (kind.question);
    if (names.empty ()) return;
    const std::string path = absolute_path ("", names.front ());
    std::string error;
    canvas.network ().layout ();
    const bool written = kind.write (canvas.network (), path, error);
    tell_written (path, written, error);
}

constexpr const char* usual_png_scale = "2"; // sharp on a fine screen and in a text

/// Asks for the scale of pictures of pixels; `taken` gets one that is sound.
void ask_png_scale (Workbench& bench, std::function<void (double scale)> taken) {
    const ValueQuestion question{.prompt = "Pixels of the picture for one of the drawing: ",
                                 .title = "PNG Export",
                                 .initial = usual_png_scale,
                                 .type = FieldType::number,
                                 .fault = [] (const std::string& text) {
                                     std::string fault;
                                     drawing::read_png_scale (text, fault);
                                     return fault;
                                 }};
    bench.world ().ask_value (question, [taken = std::move (taken)] (const std::string& text) {
        std::string fault;
        const std::optional<double> scale = drawing::read_png_scale (text, fault);
        if (scale)
            taken (*scale);
        else
            report_message ("Nothing was written: %s, not '%s'", fault.c_str (), text.c_str ());
    });
}

// ---- all tabs ------------------------------------------------------------------------------

/// A drawing of a tab that is going to be written.
struct TabDrawing {
    Canvas* canvas;
    std::string path;
};

/// The name of a tab as part of a file name.
std::string name_of_tab (const Canvas& canvas) {
    return canvas.file_name () ? base_name (*canvas.file_name ()) : "Untitled";
}

/// "figure.svg" gives "figure glycolysis.svg" for the tab of glycolysis.net; a second one of that
/// name is "figure glycolysis 2.svg".
std::vector<TabDrawing> drawings_of_tabs (const Workbench& bench, const std::string& path) {
    const std::size_t dot = path.rfind ('.');
    const std::string stem = path.substr (0, dot) + " ";
    const std::string suffix = path.substr (dot);
    std::vector<TabDrawing> all;
    std::set<std::string> taken;
    for (int i = 0; i < bench.tabs ().count (); ++i) {
        Canvas& canvas = bench.tabs ().at (i);
        const std::string name = stem + name_of_tab (canvas);
        std::string wanted = name + suffix;
        for (int n = 2; !taken.insert (wanted).second; ++n)
            wanted = name + " " + std::to_string (n) + suffix;
        all.push_back ({&canvas, wanted});
    }
    return all;
}

using WriteDrawing = std::function<bool (const document::Network& network,
                                         const std::filesystem::path& path, std::string& error)>;

/// Writes all of them, and says how many; the first that cannot be written ends it.
void write_all (const std::vector<TabDrawing>& all, const WriteDrawing& write) {
    for (const TabDrawing& one : all) {
        std::string error;
        one.canvas->network ().layout ();
        if (!write (one.canvas->network (), one.path, error)) {
            tell_written (one.path, false, error);
            return;
        }
    }
    if (all.empty ()) return;
    report_message ("Written: %d drawings, %s the last", static_cast<int> (all.size ()),
                    all.back ().path.c_str ());
}

/// False when the user keeps files that are there.
bool may_replace (Workbench& bench, const std::vector<TabDrawing>& all) {
    std::vector<std::string> there;
    for (const TabDrawing& one : all) {
        std::error_code unused;
        if (std::filesystem::exists (one.path, unused))
            there.push_back (std::filesystem::path (one.path).filename ().string ());
    }
    if (there.empty ()) return true;
    const std::string more =
        there.size () == 1 ? ""
                           : format_text (" and %d more", static_cast<int> (there.size () - 1));
    return bench.world ().yes_no ("Overwrite '" + there.front () + "'" + more, overwrite_hint, "?");
}

} // namespace

void export_png (Workbench& bench) {
    Canvas& canvas = bench.current ();
    const std::vector<std::string> names =
        bench.world ().ask_files ({.prompt = "PNG Export: ",
                                   .filter = "*.png",
                                   .title = "PNG Export",
                                   .native_filter = "PNG\t*.png\n",
                                   .initial = bench.suggest_name (canvas, ".png"),
                                   .saving = true});
    if (names.empty ()) return;
    const std::string path = absolute_path ("", names.front ());
    ask_png_scale (bench, [&bench, asker = &canvas, path] (double scale) {
        if (bench.tabs ().index_of (*asker) < 0) return; // closed meanwhile
        std::string error;
        asker->network ().layout ();
        const bool written = drawing::export_png (asker->network (), path, scale, error);
        tell_written (path, written, error);
    });
}

void export_all_tabs (Workbench& bench) {
    const std::vector<std::string> names = bench.world ().ask_files (
        {.prompt = "Export all tabs, each behind this name (.pdf, .svg or .png): ",
         .filter = "*.pdf *.svg *.png",
         .title = "Export all tabs",
         .native_filter = "PDF\t*.pdf\nSVG\t*.svg\nPNG\t*.png\n",
         .initial = "drawing.pdf",
         .saving = true});
    if (names.empty ()) return;
    const std::string path = absolute_path ("", names.front ());
    const bool pdf = path.ends_with (".pdf");
    const bool svg = path.ends_with (".svg");
    if (!pdf && !svg && !path.ends_with (".png")) {
        report_message ("Nothing was written: '%s' ends in none of .pdf, .svg, .png",
                        path.c_str ());
        return;
    }
    if (!may_replace (bench, drawings_of_tabs (bench, path))) return;
    if (pdf || svg) {
        write_all (drawings_of_tabs (bench, path), pdf ? drawing::export_pdf : drawing::export_svg);
        return;
    }
    ask_png_scale (bench, [&bench, path] (double scale) {
        write_all (drawings_of_tabs (bench, path),
                   [scale] (const document::Network& network, const std::filesystem::path& to,
                            std::string& error) {
                       return drawing::export_png (network, to, scale, error);
                   });
    });
}

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
                            .write = sbml_out::export_standard});
}

} // namespace ostrand::editor::run
