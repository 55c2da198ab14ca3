// What processes that ended without leave left behind: their undo files, found, told of, restored.
// Layer: editor.
#pragma once
#include "editor/undo_file.h"
#include "editor/world.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace ostrand::editor {

class Workbench;

/// An undo file that nobody uses, and what can be had from it. Its lock is held as long as this
/// lives, so of two editors that start at once only one has it.
struct Leftover {
    UndoFile file;
    std::int32_t last_snapshot = 0;
    bool damaged = false;  // what stands behind the sound records was left out
    std::string name;      // of the document, empty when it had none
    std::int64_t time = 0; // of its last record, seconds since 1970
};

/// All leftovers in a folder that hold at least one state, oldest number first. What other running
/// editors use, and odd things of such a name, are passed over and not touched.
std::vector<Leftover> find_leftovers (const std::string& folder);

/// How leftovers are dealt with at the start.
enum class RecoveryMode { ask, restore_all, leave_all };

/// Deals with the leftovers in the workbench's home: restored ones come into tabs of their own,
/// behind the others.
/// files_opened  the command line named files; without, an untouched first tab makes way
void recover (Workbench& bench, RecoveryMode mode, bool files_opened);

} // namespace ostrand::editor
