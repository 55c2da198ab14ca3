// ostrand-tool convert: a document from one format to another, or to a drawing.
#include "document/document_state.h"
#include "export/export.h"
#include "export/png_export.h"
#include "files/rates.h"
#include "sbml_out/standard_write.h"
#include "tool/commands.h"
#include "tool/open_input.h"

#include <array>
#include <cstdio>

namespace ostrand::tool {
namespace {

constexpr std::array options{
    ToolOption{"--arrange", nullptr, "arrange the network, whatever places it has"},
    ToolOption{"--dark", nullptr, "paint on a dark ground"},
    ToolOption{"--duration", "S", "seconds of a simulation, for .ssa"},
    ToolOption{"--kinetics", nullptr, "lay out and paint kinetic labels (so from the start)"},
    ToolOption{"--no-annotation", nullptr, "lay SBML out afresh, whatever drawing it has"},
    ToolOption{"--no-kinetics", nullptr, "leave kinetic labels out"},
    ToolOption{"--scale", "X", "pixels of a .png for one of the drawing (1)"},
    ToolOption{"--standard", nullptr, "write .xml as SBML Level 3 Version 2 for other tools"},
    ToolOption{"--stoichiometry", nullptr, "lay out and paint stoichiometries"},
};

/// What the options say about writing.
struct Writing {
    bool standard = false;
    double scale = 1;
};

/// Writes by the extension; drawings have their own.
bool write (files::Document& document, const std::string& path, const Writing& how,
            std::string& error) {
    if (how.standard) return sbml_out::export_standard (*document.network, path, error);
    if (path.ends_with (".svg")) return drawing::export_svg (*document.network, path, error);
    if (path.ends_with (".pdf")) return drawing::export_pdf (*document.network, path, error);
    if (path.ends_with (".png"))
        return drawing::export_png (*document.network, path, how.scale, error);
    return files::save_document (document, path, error);
}

int run (const Arguments& arguments) {
    const std::optional<int> duration = arguments.number ("--duration", files::default_duration);
    if (!duration) return status_usage;
    document::DocumentState& state = document::document_state ();
    state.dark_mode = arguments.has ("--dark");
    state.show_kinetics = !arguments.has ("--no-kinetics");
    state.show_stoichiometry = arguments.has ("--stoichiometry");
    files::Document document;
    Writing writing{.standard = arguments.has ("--standard")};
    const std::string& target = arguments.words[1];
    std::string error;
    if (arguments.has ("--scale")) {
        const auto scale = drawing::read_png_scale (arguments.value ("--scale"), error);
        if (!scale) {
            std::fprintf (stderr, "ostrand-tool convert: %s, not '%s'\n", error.c_str (),
                          arguments.value ("--scale").c_str ());
            return status_usage;
        }
        writing.scale = *scale;
    }
    if (writing.standard && std::string_view (files::writing_format (target).name) != "SBML") {
        std::fprintf (stderr, "ostrand-tool convert: --standard writes .xml, not '%s'\n",
                      target.c_str ());
        return status_usage;
    }
    const files::OpenOptions how{.use_annotation = !arguments.has ("--no-annotation"),
                                 .arranging = arguments.has ("--arrange")
                                                  ? files::Arranging::always
                                                  : files::Arranging::without_places};
    if (!open_input ("convert", arguments.words[0], document, how)) return status_failure;
    if (arguments.has ("--duration")) document.duration = *duration;
    // What was taken over of rate laws and does not fit into a model text is lost in it.
    if (!writing.standard &&
        std::string_view (files::writing_format (target).name) == "model text" &&
        files::is_any_rated (*document.network))
        tell_model_gaps (document);
    if (write (document, target, writing, error)) return status_success;
    std::fprintf (stderr, "ostrand-tool convert: cannot write '%s'%s%s\n", target.c_str (),
                  error.empty () ? "" : ": ", error.c_str ());
    return status_failure;
}

} // namespace

extern const ToolCommand convert_command{
    .name = "convert",
    .words = "IN OUT",
    .fewest_words = 2,
    .most_words = 2,
    .summary = "convert a network to another format or to a drawing",
    .details =
        "The extension of each name tells its format: .ssa is model text, .xml is SBML, .svg, "
        ".pdf\n"
        "and .png are drawings, every other name is native text (.net, .mto), which is told by "
        "its\n"
        "first line when it is read. Model text, and SBML without a drawing, is laid out.\n"
        "SBML of other tools (.xml or .sbml, also packed by gzip) is read with its "
        "stoichiometries,\n"
        "roles and kinetics, and arranged when it tells no places; what it says beyond that is "
        "named\n"
        "on standard error, line by line.\n",
    .options = options,
    .run = run,
};

} // namespace ostrand::tool
