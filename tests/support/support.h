// Helpers that make tests short: temporary folders, caught messages, run programs.
#pragma once
#include "base/report.h"

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ostrand::testing {

/// Under a sanitizer everything takes many times as long; random trials are fewer there, for their
/// point is then the way and not the number.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
inline constexpr bool sanitized = true;
#else
inline constexpr bool sanitized = false;
#endif

/// A folder of its own that goes with its scope.
class TemporaryFolder {
  public:
    TemporaryFolder ();
    ~TemporaryFolder ();
    TemporaryFolder (const TemporaryFolder&) = delete;
    TemporaryFolder& operator= (const TemporaryFolder&) = delete;

    const std::filesystem::path& path () const { return path_; }
    std::filesystem::path operator/ (std::string_view name) const { return path_ / name; }
    /// Writes a file in the folder and gives its path.
    std::string write (std::string_view name, std::string_view text) const;
    /// Names of all that the folder holds, sorted, hidden files included.
    std::vector<std::string> names () const;

  private:
    std::filesystem::path path_;
};

/// Collects what is reported while it lives.
class CaughtMessages {
  public:
    CaughtMessages () : scope_ ([this] (std::string_view text) { all.emplace_back (text); }) {}
    std::vector<std::string> all;
    std::string joined () const;

  private:
    MessageScope scope_;
};

struct ProgramResult {
    int status = 0; // exit status, or 128 + signal
    std::string out;
    std::string error;
};

/// Runs a program to its end with an argument vector and collects its streams. `words[0]` is the
/// program: a path, or a name in the build folder ("ostrand", "ostrand-tool").
/// folder  where it starts; empty: where we are
/// input   what it finds on standard input
ProgramResult run_program (std::vector<std::string> words, const std::filesystem::path& folder = {},
                           std::string_view input = {});

/// Waits until it holds; false when it does not within `seconds`.
bool wait_until (const std::function<bool ()>& condition, double seconds = 10);

/// A file of the source tree, whole.
std::string source_file (std::string_view path);
std::filesystem::path source_path (std::string_view path);

/// The folder of models of other tools, which are no part of the project: what the environment
/// variable OSTRAND_MODELS says, else ../shared/data beside the source tree. Nothing when it is not
/// there.
std::optional<std::filesystem::path> models_folder ();

/// Of these files, sorted, those that there is time for: all, and with sanitizers, under which each
/// takes ten times as long, every third.
std::vector<std::filesystem::path> those_in_time (std::vector<std::filesystem::path> paths);

/// A whole file, empty when it cannot be read.
std::string file_text (const std::filesystem::path& path);

/// gzip data unpacked by zlib; plain text comes back as it is.
std::string unzipped_file (const std::filesystem::path& path);

} // namespace ostrand::testing
