// The table of formats, and opening and saving by it.
#include "files/document_io.h"

#include "files/model_write.h"
#include "files/native.h"

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

std::string write_native_format (Document& document, const std::string&) {
    return write_native (*document.network);
}

std::string write_model_format (Document& document, const std::string&) {
    document.network->update_shared_nodes ();
    return write_model (*document.network, document.duration,
                        document::document_state ().multi_name);
}

constexpr std::array all_formats{
    Format{.suffix = ".ssa", .name = "model text", .read = nullptr, .write = write_model_format},
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
    if (network.x == 0 && network.y == 0) {
        network.x = 10;
        network.y = 10;
    }
    if (network.update_shared_nodes ()) network.layout ();
    document = std::move (opened);
    return status;
}

LoadStatus open_document (const std::string& path, const OpenOptions& options, Document& document) {
    const std::optional<std::string> text = read_text_file (path);
    if (!text) return LoadStatus::not_found;
    return open_text (*text, path, options, document);
}

bool save_document (Document& document, const std::string& path, std::string& error) {
    const Format& format = writing_format (path);
    return write_file (path, format.write (document, base_name (path)), error);
}

} // namespace ostrand::files
