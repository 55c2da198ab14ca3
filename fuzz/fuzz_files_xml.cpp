// The reader of the drawing inside an SBML file, on any input, and the writer of what it read.
#include "files/xml.h"

#include "base/report.h"

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput (const std::uint8_t* data, std::size_t size) {
    const ostrand::MessageScope quiet ([] (std::string_view) {});
    const std::string_view text (reinterpret_cast<const char*> (data), size);
    const auto network = ostrand::files::read_xml_block (text);
    ostrand::document::PrintState to;
    ostrand::files::write_xml_block (*network, to, 0);
    ostrand::files::find_xml_block (to.out);
    return 0;
}
