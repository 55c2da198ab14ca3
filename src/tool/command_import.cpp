// ostrand-tool import: how a model text or an SBML file is laid out.
#include "files/document_io.h"
#include "files/import.h"
#include "files/native.h"
#include "files/sbml_to_model.h"
#include "tool/commands.h"

#include <array>
#include <cstdio>

namespace ostrand::tool {
namespace {

constexpr std::array options{
    ToolOption{"--arrange", nullptr, "arrange the network instead of placing it in strips"},
    ToolOption{"--raw", nullptr, "print the placement itself, before alignment"},
};

bool is_sbml_file (const std::string& path, const std::string& text) {
    return std::string_view (files::reading_format (path, text).name) == "SBML";
}

/// The drawing as placed, before it is read and aligned.
std::optional<std::string> raw_import (const std::string& text, const std::string& path) {
    std::string model = text;
    if (is_sbml_file (path, text) && !files::sbml_to_model (text, model)) {
        return std::nullopt;
    }
    std::optional<files::Imported> imported = files::import_text (model);
    if (!imported) {
        return std::nullopt;
    }
    return std::move (imported->native);
}

std::optional<std::string> aligned_import (const std::string& text, const std::string& path,
                                           bool arrange) {
    files::Document document;
    const files::LoadStatus status = files::open_text (
        text, is_sbml_file (path, text) ? "model.xml" : "model.ssa",
        {.use_annotation = false,
         .arranging = arrange ? files::Arranging::always : files::Arranging::without_places},
        document);
    if (status != files::LoadStatus::loaded) {
        return std::nullopt;
    }
    return files::write_native (*document.network);
}

int run (const Arguments& arguments) {
    const std::string& path = arguments.words[0];
    const std::optional<std::string> text = files::read_document_text (path);
    if (!text) {
        std::fprintf (stderr, "ostrand-tool import: cannot open '%s'\n", path.c_str ());
        return status_failure;
    }
    const std::optional<std::string> native =
        arguments.has ("--raw") ? raw_import (*text, path)
                                : aligned_import (*text, path, arguments.has ("--arrange"));
    if (!native) {
        std::fprintf (stderr, "ostrand-tool import: cannot read '%s'\n", path.c_str ());
        return status_failure;
    }
    return print_result (*native);
}

} // namespace

extern const ToolCommand import_command{
    .name = "import",
    .words = "FILE",
    .fewest_words = 1,
    .most_words = 1,
    .summary = "lay out a model text or an SBML file and print the drawing",
    .details = "The result is native text. A name ending in .xml or .sbml is SBML, whose own "
               "drawing is not\n"
               "looked at; any other file is model text. Files packed by gzip are unpacked.\n",
    .options = options,
    .run = run,
};

} // namespace ostrand::tool
