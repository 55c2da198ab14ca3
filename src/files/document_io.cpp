// The table of formats, and opening and saving by it.
#include "files/document_io.h"

#include "files/import.h"
#include "files/model_write.h"
#include "files/native.h"
#include "files/sbml_road.h"
#include "files/sbml_to_model.h"
#include "files/sbml_write.h"
#include "files/xml.h"
#include "names/name_markup.h"

#include "document/line.h"
#include "document/markup.h"

#include "base/disk.h"
#include "base/path.h"
#include "base/report.h"
#include "sbml_in/read_sbml.h"
#include "tidy/tidy.h"

#include <algorithm>
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
            document::line_from_markup (names::name_markup (imported->displayed_name),
                                        document::start_font, 0)
                ->name ());
    }
    document.network->align_all ();
    return LoadStatus::loaded;
}

/// A text of another tool, by the library for SBML.
LoadStatus read_foreign_sbml (std::string_view text, const OpenOptions& options,
                              Document& document) {
    sbml_in::Reading reading = sbml_in::read_sbml (text, options.use_annotation);
    if (reading.network && !reading.drawing.empty ()) {
        document.network = read_native (reading.drawing);
        if (document.network) return LoadStatus::loaded;
    }
    for (const std::string& note : reading.notes) report_message ("%s", note.c_str ());
    if (!reading.network) return LoadStatus::not_readable;
    document.network = std::move (reading.network);
    document.network->update_shared_nodes ();
    document.network->layout ();
    if (!reading.has_places && options.arranging == Arranging::without_places) {
        tidy::arrange_network (*document.network, tidy::Care::quick);
    }
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
    if (!options.as_model_text && !is_plain_sbml (text)) {
        return read_foreign_sbml (text, options, document);
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

const Format& format_named (std::string_view name) {
    return *std::find_if (all_formats.begin (), all_formats.end (),
                          [name] (const Format& one) { return one.name == name; });
}

} // namespace

std::span<const Format> formats () { return all_formats; }

const Format& reading_format (std::string_view path) {
    std::string name (path);
    std::transform (name.begin (), name.end (), name.begin (), [] (char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char> (c - 'A' + 'a') : c;
    });
    for (const std::string_view packed : {".gz", ".gzip"}) {
        if (name.ends_with (packed)) name.resize (name.size () - packed.size ());
    }
    if (name.size () > 5 && name.ends_with (".sbml")) return format_named ("SBML");
    for (const Format& format : all_formats) {
        if (name.size () > 4 && name.ends_with (format.suffix)) return format;
    }
    return all_formats.back ();
}

const Format& reading_format (std::string_view path, std::string_view text) {
    if (looks_like_xml (text)) return format_named ("SBML");
    if (text.starts_with ("# Lattrix:")) return all_formats.back ();
    return reading_format (path);
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
    const Format& format = reading_format (path, text);
    if (format.read == nullptr) return LoadStatus::not_readable;
    Document opened;
    opened.duration = document.duration;
    const LoadStatus status = format.read (text, options, opened);
    if (status != LoadStatus::loaded) return status;
    document::Network& network = *opened.network;
    if (network.x () == 0 && network.y () == 0) network.set_origin (10, 10);
    network.update_shared_nodes ();
    network.layout ();
    if (options.arranging == Arranging::always) tidy::arrange_network (network);
    document = std::move (opened);
    return status;
}

std::optional<std::string> read_document_text (const std::string& path) {
    std::optional<std::string> bytes = read_file (path);
    if (!bytes) return std::nullopt;
    if (bytes->starts_with ("\x1F\x8B")) {
        bytes = sbml_in::unpacked (*bytes, input_bound ());
        if (!bytes) {
            report_message ("'%s': the packed data are damaged or too large.", path.c_str ());
            return std::nullopt;
        }
    }
    // CR LF reads as LF.
    std::size_t to = 0;
    for (std::size_t i = 0; i < bytes->size (); ++i) {
        if ((*bytes)[i] == '\r' && i + 1 < bytes->size () && (*bytes)[i + 1] == '\n') continue;
        (*bytes)[to++] = (*bytes)[i];
    }
    bytes->resize (to);
    return bytes;
}

LoadStatus open_document (const std::string& path, const OpenOptions& options, Document& document) {
    const std::optional<std::string> text = read_document_text (path);
    if (!text) return LoadStatus::not_found;
    return open_text (*text, path, options, document);
}

LoadStatus insert_document (const std::string& path, const OpenOptions& options, Document& into) {
    if (!into.network || into.network->is_empty ()) return open_document (path, options, into);
    const std::optional<std::string> text = read_document_text (path);
    if (!text) return LoadStatus::not_found;
    Document inserted;
    const bool is_sbml = reading_format (path, *text).read == read_sbml_format;
    if (!is_sbml && !is_insertable_text (*text)) return LoadStatus::not_readable;
    const auto read = is_sbml ? read_sbml_format : read_native_format;
    const LoadStatus status = read (*text, options, inserted);
    if (status != LoadStatus::loaded) return status;
    into.network->insert_network (*inserted.network);
    return status;
}

LoadStatus load_text_document (std::string_view sbml_text, Document& document) {
    return open_text (sbml_text, "implementation.xml",
                      {.use_annotation = false, .as_model_text = true}, document);
}

bool save_document (const Document& document, const std::string& path, std::string& error) {
    const Format& format = writing_format (path);
    return write_file (path, format.write (document, base_name (path)), error);
}

} // namespace ostrand::files
