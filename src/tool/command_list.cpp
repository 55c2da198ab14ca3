// The table of sub-commands.
#include "tool/command.h"
#include "tool/commands.h"

#include <array>

namespace ostrand::tool {

std::span<const ToolCommand* const> tool_commands () {
    static constexpr std::array rows{
        &completion_command, &formula_command,     &gates_command,
        &man_command,        &metabolites_command, &variants_command,
    };
    return rows;
}

} // namespace ostrand::tool
