// Taking a name for the table, and giving it back.
#include "gates/temporary_table.h"

#include "base/disk.h"
#include "base/file_access.h"

namespace ostrand::gates {
namespace {

constexpr int most_tables = 1000;

std::string numbered (int k) {
    if (k == 1) return temporary_kinetics;
    return "tmp_kinetics_" + std::to_string (k) + ".csv";
}

} // namespace

/// False when another extraction has the name.
bool TemporaryTable::take (const std::string& name) {
    name_ = name;
    std::error_code ignored;
    path_ = std::filesystem::absolute (name, ignored);
    const InterruptionBlock block;
    guard_ = std::make_unique<InterruptionGuard> (path_);
    lock_ = FileLock (path_);
    if (!lock_.held ()) guard_.reset ();
    return lock_.end () != FileLock::End::held_elsewhere;
}

TemporaryTable::TemporaryTable (std::string_view text) {
    for (int k = 1; k < most_tables; ++k)
        if (take (numbered (k))) break;
    if (!lock_.held ()) { // the system says why
        write_file (path_, text, error_);
        return;
    }
    truncate_file (lock_.descriptor (), 0);
    if (!write_at (lock_.descriptor (), 0, text, error_)) remove_file (path_);
}

TemporaryTable::~TemporaryTable () {
    if (error_.empty ()) remove_file (path_);
}

} // namespace ostrand::gates
