// The first step of every sub-command that works on a document: read it, and say what went wrong.
// Layer: tool.
#pragma once
#include "files/document_io.h"
#include "tool/command.h"

#include <string>

namespace ostrand::tool {

/// Opens a document; a failure is reported on standard error under the command's name.
bool open_input (const char* command, const std::string& path, files::Document& document,
                 const files::OpenOptions& options = {});

/// Tells on standard error, line by line, what a model text of the document leaves out.
void tell_model_gaps (const files::Document& document);

} // namespace ostrand::tool
