// The rows of all sub-commands; each is defined in its own file, command_<name>.cpp.
// Layer: tool.
#pragma once
#include "tool/command.h"

namespace ostrand::tool {

extern const ToolCommand check_command;
extern const ToolCommand completion_command;
extern const ToolCommand convert_command;
extern const ToolCommand doctor_command;
extern const ToolCommand formula_command;
extern const ToolCommand gates_command;
extern const ToolCommand import_command;
extern const ToolCommand layout_command;
extern const ToolCommand man_command;
extern const ToolCommand merge_command;
extern const ToolCommand metabolites_command;
extern const ToolCommand model_command;
extern const ToolCommand sbml_to_model_command;
extern const ToolCommand sweep_command;
extern const ToolCommand variants_command;

} // namespace ostrand::tool
