// The table of formats, and opening and saving by it.
#include "files/document_io.h"

#include "files/import.h"
#include "files/model_write.h"
#include "files/name_markup.h"
#include "files/native.h"
#include "files/sbml_to_model.h"
#include "files/sbml_write.h"
#include "files/xml.h"

#include "document/line.h"
#include "document/markup.h"

#include "base/disk.h"
#include "base/path.h"

#include <array>

namespace ostrand::files {
namespace {

LoadStatus read_native_format (std::string_view text, const OpenOptions&, Document& document) {
    if (!is_native_text (text)) return LoadStatus::not_readable;
    document.network = read_native (text);
    return document.network ? LoadStatus::loaded : LoadStatus::not_readable;
}

std::string write_native_format (const Document& document, const std::string&) {
    return write_native (*document.network);
}

/// A model text laid out: what is nearly in line is aligned.
LoadStatus read_model_format (std::string_view text, const OpenOptions&, Document& document) {
    const std::optional<Imported> imported = import_text (text);
    if (!imported) return LoadStatus::not_readable;
    document.network = read_native (imported->native);
    if (!document.network) return LoadStatus::not_readable;
    if (imported->duration) document.duration = *imported->duration;
    if (!imported->displayed_name.empty ()) {
        // As the label says it: marks for scripts may be written in more than one way.
        document.network->set_multi_name (
            document::line_from_markup (name_markup (imported->displayed_name),
                                        document::start_font, 0)
                ->name ());
    }
    document.network->align_all ();
    return LoadStatus::loaded;
}

LoadStatus read_sbml_format (std::string_view text, const OpenOptions& options,
                             Document& document) {
    const std::string_view block =
        options.use_annotation ? find_xml_block (text) : std::string_view ();
    if (!block.empty ()) {
        document.network = read_xml_block (block);
        return LoadStatus::loaded;
    }
    std::string model;
    if (!sbml_to_model (text, model)) return LoadStatus::not_readable;
    return read_model_format (model, options, document);
}

std::string write_sbml_format (const Document& document, const std::string& model_id) {
    return write_sbml (*document.network, model_id);
}

std::string write_model_format (const Document& document, const std::string&) {
    // Sharing is brought up to date on a copy: saving changes nothing.
    const std::unique_ptr<document::Network> copy = document.network->copy (nullptr);
    copy->update_shared_nodes ();
    return write_model (*copy, document.duration, copy->multi_name ());
}

constexpr std::array all_formats{
    Format{.suffix = ".ssa",
           .name = "model text",
           .read = read_model_format,
           .write = write_model_format},
    Format{.suffix = ".xml", .name = "SBML", .read = read_sbml_format, .write = write_sbml_format},
    // The native format takes every other name, so it stays the last row.
    Format{.suffix = "",
           .name = "native text",
           .read = read_native_format,
           .write = write_native_format},
};

} // namespace

std::span<const Format> formats () { return all_formats; }

const Format& reading_format (std::string_view path) {
    for (const Format& format : all_formats) {
        if (path.size () > 4 && path.ends_with (format.suffix)) return format;
    }
    return all_formats.back ();
}

const Format& writing_format (std::string_view path) {
    const std::size_t dot = path.rfind ('.');
    const std::string_view extension =
        dot == std::string_view::npos ? std::string_view () : path.substr (dot);
    for (const Format& format : all_formats) {
        if (extension == format.suffix) return format;
    }
    return all_formats.back ();
}

LoadStatus open_text (std::string_view text, std::string_view path, const OpenOptions& options,
                      Document& document) {
    const Format& format = reading_format (path);
    if (format.read == nullptr) return LoadStatus::not_readable;
    Document opened;
    opened.duration = document.duration;
    const LoadStatus status = format.read (text, options, opened);
    if (status != LoadStatus::loaded) return status;
    document::Network& network = *opened.network;
    if (network.x () == 0 && network.y () == 0) network.set_origin (10, 10);
    network.update_shared_nodes ();
    network.layout ();
    document = std::move (opened);
    return status;
}

LoadStatus open_document (const std::string& path, const OpenOptions& options, Document& document) {
    const std::optional<std::string> text = read_text_file (path);
    if (!text) return LoadStatus::not_found;
    return open_text (*text, path, options, document);
}

LoadStatus insert_document (const std::string& path, const OpenOptions& options, Document& into) {
    if (!into.network || into.network->is_empty ()) return open_document (path, options, into);
    const std::optional<std::string> text = read_text_file (path);
    if (!text) return LoadStatus::not_found;
    Document inserted;
    const bool is_sbml = reading_format (path).read == read_sbml_format;
    if (!is_sbml && !is_insertable_text (*text)) return LoadStatus::not_readable;
    const auto read = is_sbml ? read_sbml_format : read_native_format;
    const LoadStatus status = read (*text, options, inserted);
    if (status != LoadStatus::loaded) return status;
    into.network->insert_network (*inserted.network);
    return status;
}

LoadStatus load_text_document (std::string_view sbml_text, Document& document) {
    return open_text (sbml_text, "implementation.xml", {.use_annotation = false}, document);
}

bool save_document (const Document& document, const std::string& path, std::string& error) {
    const Format& format = writing_format (path);
    return write_file (path, format.write (document, base_name (path)), error);
}

} // namespace ostrand::files
