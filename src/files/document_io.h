// Which reader and which writer a file has: the one table of formats.
// Layer: files.
#pragma once
#include "document/network.h"

#include <memory>
#include <optional>
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

/// Which files are arranged when they are opened.
enum class Arranging {
    without_places, // SBML of other tools that does not tell where its species stand
    never,          // such a file gets a plain grid
    always,         // every file, whatever drawing it has
};

struct OpenOptions {
    /// An SBML file's own drawing is taken where it has one.
    bool use_annotation = true;
    Arranging arranging = Arranging::without_places;
    /// SBML becomes a model text and is laid out as that, whoever wrote it.
    bool as_model_text = false;
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

/// The row that reads a file of this name: by its last letters, when it has more. Case and ".gz"
/// do not matter.
const Format& reading_format (std::string_view path);
/// The same for a file whose text is there: a text that begins like XML is SBML, and one with the
/// header of native files is one of those, whatever their names.
const Format& reading_format (std::string_view path, std::string_view text);
/// The row that writes one: by what stands behind the last dot.
const Format& writing_format (std::string_view path);

/// Opens a file: reads it, brings sharing up to date and lays it out. An origin of (0, 0) becomes
/// (10, 10). `document` is as before unless the result is `loaded`.
LoadStatus open_document (const std::string& path, const OpenOptions& options, Document& document);

/// The text of a file, unpacked when it is a gzip file; CR LF reads as LF. Nothing when it cannot
/// be read, or when packed data are damaged, which is reported.
std::optional<std::string> read_document_text (const std::string& path);

/// Opens a text that is in memory; `path` only chooses the format.
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
