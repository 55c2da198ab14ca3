// Which version this is.
#include "base/version.h"

namespace ostrand {

std::string version_line (std::string_view program, std::string_view commit) {
    return std::string (program) + " " OSTRAND_VERSION ", commit " + std::string (commit) + "\n";
}

} // namespace ostrand
