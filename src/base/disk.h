// Reading whole files and writing them so that nothing is ever lost.
// Layer: base.
#pragma once
#include "base/platform.h"

#include <cstddef>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace ostrand {

/// Bound of an input that has no end of its own (a device, a pipe): 1 GiB.
inline constexpr std::size_t input_bound = std::size_t{1} << 30;

/// A whole file, byte for byte, read once from front to end, so that it may be a pipe; "-" is not
/// special. Nothing when it cannot be opened, is a folder, fails while reading or passes the bound.
std::optional<std::string> read_file (const std::filesystem::path& path,
                                      std::size_t bound = input_bound);

/// Likewise in text mode: CR LF reads as LF.
std::optional<std::string> read_text_file (const std::filesystem::path& path,
                                           std::size_t bound = input_bound);

/// A text file that has been read, so that several readers can have it though it may be a pipe.
struct TextFile {
    explicit TextFile (const std::filesystem::path& path) : text (read_text_file (path)) {}
    std::optional<std::string> text; // nothing when it could not be read
};

/// The whole of standard input.
std::optional<std::string> read_standard_input (std::size_t bound = input_bound);

/// A file that is being written. A regular file is written beside its target, under a name that
/// begins with a dot, and takes the target's place in `commit`; until then, and after any failure,
/// the old file is whole. What a symbolic link points to is replaced, the link stays; the old
/// file's permissions are kept. A pipe, a device or standard output is opened once and written
/// directly. An interruption of the process removes the unfinished file.
class OutputFile {
  public:
    /// Opens for writing to `path`; ok() tells whether that worked.
    explicit OutputFile (const std::filesystem::path& path);
    /// Writes to standard output.
    static OutputFile standard_output ();
    /// Without a commit the unfinished file is removed.
    ~OutputFile ();
    OutputFile (OutputFile&& other) noexcept;
    OutputFile& operator= (OutputFile&&) = delete;
    OutputFile (const OutputFile&) = delete;
    OutputFile& operator= (const OutputFile&) = delete;

    bool ok () const { return descriptor_ >= 0 && error_.empty (); }
    /// Why opening or writing failed, as the system tells it; empty while all is well.
    const std::string& error () const { return error_; }
    /// The open file, for libraries that write by themselves; -1 when not open.
    int descriptor () const { return descriptor_; }

    /// Writes all bytes. False at the first failure, and from then on.
    bool write (std::string_view bytes);
    /// Flushes to disk and puts the file in its place. False, with nothing changed, when that fails
    /// or anything failed before.
    bool commit ();

  private:
    OutputFile () = default;
    void fail ();
    void close_and_remove ();

    int descriptor_ = -1;
    bool owned_ = true; // standard output is not closed by us
    std::filesystem::path target_;
    std::filesystem::path temporary_; // empty when written directly
    std::unique_ptr<InterruptionGuard> guard_;
    std::string error_;
};

/// Writes a whole file through OutputFile. False with the reason in `error` when that fails.
bool write_file (const std::filesystem::path& path, std::string_view bytes, std::string& error);

/// Writes to standard output; false, and reported, when it is closed or full.
bool write_standard_output (std::string_view bytes);

} // namespace ostrand
