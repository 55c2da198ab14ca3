// ostrand-tool import: how a model text or an SBML file is laid out.
#include "base/disk.h"
#include "files/document_io.h"
#include "files/import.h"
#include "files/native.h"
#include "files/sbml_to_model.h"
#include "tool/commands.h"

#include <cstdio>

namespace ostrand::tool {
namespace {

constexpr ToolOption raw_option{"--raw", nullptr, "print the placement itself, before alignment"};

/// The drawing as placed, before it is read and aligned.
std::optional<std::string> raw_import (const std::string& text, const std::string& path) {
    std::string model = text;
    if (path.size () > 4 && path.ends_with (".xml") && !files::sbml_to_model (text, model)) {
        return std::nullopt;
    }
    std::optional<files::Imported> imported = files::import_text (model);
    if (!imported) {
        return std::nullopt;
    }
    return std::move (imported->native);
}

std::optional<std::string> aligned_import (const std::string& text, const std::string& path) {
    files::Document document;
    const bool is_sbml = path.size () > 4 && path.ends_with (".xml");
    const files::LoadStatus status = files::open_text (text, is_sbml ? "model.xml" : "model.ssa",
                                                       {.use_annotation = false}, document);
    if (status != files::LoadStatus::loaded) {
        return std::nullopt;
    }
    return files::write_native (*document.network);
}

int run (const Arguments& arguments) {
    const std::string& path = arguments.words[0];
    const std::optional<std::string> text = read_text_file (path);
    if (!text) {
        std::fprintf (stderr, "ostrand-tool import: cannot open '%s'\n", path.c_str ());
        return status_failure;
    }
    const std::optional<std::string> native =
        arguments.has ("--raw") ? raw_import (*text, path) : aligned_import (*text, path);
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
    .details =
        "The result is native text. A name ending in .xml is SBML, whose own drawing is not\n"
        "looked at; any other file is model text.\n",
    .options = {&raw_option, 1},
    .run = run,
};

} // namespace ostrand::tool
