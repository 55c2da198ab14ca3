// Native text written.
#include "files/native.h"

#include "document/markup.h"

#include "base/text.h"

namespace ostrand::files {

std::string write_native (const document::Network& network) {
    document::Numbering numbering;
    return write_native (network, numbering);
}

std::string write_native (const document::Network& network, document::Numbering& numbering) {
    document::PrintState to;
    to.out = "# Lattrix: " + format_g (native_version) + '\n';
    network.fprint (to, 0);
    to.out += '\n';
    numbering = std::move (to.numbering);
    return std::move (to.out);
}

} // namespace ostrand::files
