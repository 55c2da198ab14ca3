// Which reader and which writer a file has: the one table of formats.
// Layer: files.
#pragma once
#include "document/network.h"

#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace ostrand::files {

/// Seconds that a simulation takes until a file or the user says otherwise.
inline constexpr int default_duration = 10;

/// A document and what its files tell beside the network.
struct Document {
    std::unique_ptr<document::Network> network;
    int duration = default_duration; // seconds
};

struct OpenOptions {
    /// An SBML file's own drawing is taken where it has one.
    bool use_annotation = true;
};

/// How reading ended. Faults inside a file that still gave a network are reported, no failure.
enum class LoadStatus {
    loaded,
    not_found,    // cannot be opened or read
    not_readable, // none of our formats, or nothing could be made of it
};

/// One format. Rows are tried in order; the first that claims a file reads or writes it.
struct Format {
    const char* suffix; // of the name, with its dot; empty: every other name
    const char* name;   // for messages and help
    /// Fills the document from a text; null when the format is only written.
    LoadStatus (*read) (std::string_view text, const OpenOptions& options, Document& document);
    /// The file's text; null when the format is only read.
    /// model_id  the last part of the path without its extension
    std::string (*write) (const Document& document, const std::string& model_id);
};

/// All formats of documents, the native one, which takes every name, last.
std::span<const Format> formats ();

/// The row that reads a file of this name: by its last four letters, when it has more.
const Format& reading_format (std::string_view path);
/// The row that writes one: by what stands behind the last dot.
const Format& writing_format (std::string_view path);

/// Opens a file: reads it, brings sharing up to date and lays it out. An origin of (0, 0) becomes
/// (10, 10). `document` is as before unless the result is `loaded`.
LoadStatus open_document (const std::string& path, const OpenOptions& options, Document& document);

/// The same for a text that is in memory; `path` only chooses the format.
LoadStatus open_text (std::string_view text, std::string_view path, const OpenOptions& options,
                      Document& document);

/// Merges a file to the right of a document; an empty one is opened instead. Model text is taken
/// only when it looks like native text. A failure leaves `into` as it was.
LoadStatus insert_document (const std::string& path, const OpenOptions& options, Document& into);

/// Opens an SBML text that is in memory, laid out afresh: the way by which a network made by the
/// program itself comes in.
LoadStatus load_text_document (std::string_view sbml_text, Document& document);

/// Writes a document beside its target and puts it in its place. False with the reason in `error`;
/// the old file is whole then.
bool save_document (const Document& document, const std::string& path, std::string& error);

} // namespace ostrand::files
