// The reaction table of an extraction, for as long as that takes.
// Layer: gates (uses base).
#pragma once
#include "base/file_lock.h"
#include "base/platform.h"

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

namespace ostrand::gates {

/// Name of the table; it stands in the current directory. While another extraction there has this
/// one, "tmp_kinetics_2.csv" is taken, and so on.
inline constexpr const char* temporary_kinetics = "tmp_kinetics.csv";

/// A file that nobody else takes for his own while it lives. It goes with this object, and when an
/// interruption ends the process; what was there under its name before is gone with it. A file that
/// cannot be written is left as it is.
class TemporaryTable {
  public:
    explicit TemporaryTable (std::string_view text);
    ~TemporaryTable ();
    TemporaryTable (const TemporaryTable&) = delete;
    TemporaryTable& operator= (const TemporaryTable&) = delete;

    /// As it is found from the current directory.
    const std::string& name () const { return name_; }
    bool ok () const { return error_.empty (); }
    /// Why it could not be written, as the system tells it.
    const std::string& error () const { return error_; }

  private:
    bool take (const std::string& name);

    std::string name_ = temporary_kinetics;
    std::string error_;
    std::filesystem::path path_; // absolute, so that it is the same file at the end
    std::unique_ptr<InterruptionGuard> guard_;
    FileLock lock_;
};

} // namespace ostrand::gates
