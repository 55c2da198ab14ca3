// Opening a document for a sub-command.
#include "tool/open_input.h"

#include "files/model_gaps.h"

#include <cstdio>

namespace ostrand::tool {

bool open_input (const char* command, const std::string& path, files::Document& document,
                 const files::OpenOptions& options) {
    switch (files::open_document (path, options, document)) {
    case files::LoadStatus::loaded: return true;
    case files::LoadStatus::not_found:
        std::fprintf (stderr, "ostrand-tool %s: cannot open '%s'\n", command, path.c_str ());
        break;
    case files::LoadStatus::not_readable:
        std::fprintf (stderr, "ostrand-tool %s: cannot read '%s' as %s\n", command, path.c_str (),
                      files::reading_format (path).name);
    }
    return false;
}

void tell_model_gaps (const files::Document& document) {
    for (const std::string& gap : files::model_gaps (*document.network)) {
        std::fprintf (stderr, "model text: %s\n", gap.c_str ());
    }
}

} // namespace ostrand::tool
