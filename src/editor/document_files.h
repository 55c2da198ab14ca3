// Files and canvases: opening, inserting, saving, and noticing that another program wrote a file.
// Layer: editor (uses files).
#pragma once
#include "editor/canvas.h"

#include <string>
#include <string_view>

namespace ostrand::editor {

/// Reads a file into a canvas, as one step of its history. False, with the canvas as it was, when
/// it cannot be opened or is none of our formats.
/// path  absolute; becomes the document's name
bool open_file (Canvas& canvas, const std::string& path);

/// Merges a file to the right of the network; an empty canvas opens it. False, with the canvas as
/// it was, when it cannot be read.
bool insert_file (Canvas& canvas, const std::string& path);

/// Writes the document; the path becomes its name and it counts as unmodified. False, with the
/// reason in `error` and everything as it was, when the file cannot be written.
bool save_file (Canvas& canvas, const std::string& path, std::string& error);

/// Shows a network that the program itself made, as one step of the history.
/// file_name  its name; no file of it exists yet
bool load_text_document (Canvas& canvas, std::string_view sbml_text, const std::string& file_name);

/// True when the document's file is another one now than when the canvas last read or wrote it:
/// another inode, size or time. False for a document without a file.
bool changed_on_disk (const Canvas& canvas);

} // namespace ostrand::editor
