// The table of sub-commands.
#include "tool/command.h"
#include "tool/commands.h"

#include <array>

namespace ostrand::tool {

std::span<const ToolCommand* const> tool_commands () {
    static constexpr std::array rows{
        &check_command,         &completion_command, &convert_command,     &doctor_command,
        &formula_command,       &gates_command,      &import_command,      &layout_command,
        &man_command,           &merge_command,      &metabolites_command, &model_command,
        &sbml_to_model_command, &sweep_command,      &variants_command,
    };
    return rows;
}

} // namespace ostrand::tool
