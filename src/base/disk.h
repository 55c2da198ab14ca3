// Reading whole files and writing them so that nothing is ever lost.
// Layer: base.
#pragma once
#include "base/platform.h"

#include <cstddef>
#include <filesystem>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

namespace ostrand {

/// What is read of one input at most: 1 GiB. An input may have no end of its own (a device, a
/// pipe).
inline constexpr std::size_t largest_input = std::size_t{1} << 30;

/// The bound in force: `largest_input`, or less where the environment variable OSTRAND_INPUT_BOUND
/// gives a smaller number of bytes, as tests do.
std::size_t input_bound ();

/// How reading an input ended.
enum class ReadEnd {
    whole,
    not_opened,
    failed,    // while reading; a folder too
    too_large, // has more bytes than the bound
    stopped,
};

struct ReadOptions {
    bool text_mode = false; // CR LF reads as LF
    std::stop_token stop = {};
    std::size_t bound = input_bound ();
};

/// An input as it was read.
struct Input {
    ReadEnd end = ReadEnd::not_opened;
    std::string bytes; // empty unless it is whole
    std::string fault; // of one that is too large: the message for the user; empty otherwise
    /// What there was of one that was stopped, so that whoever waits for the stop need not wait
    /// until a gigabyte is freed.
    std::vector<std::string> left = {};
    bool whole () const { return end == ReadEnd::whole; }
};

/// Reads a whole file, byte for byte, once from front to end, so that it may be a pipe; "-" is not
/// special. Takes no more memory than the bound and a little. A stop is answered also while a pipe
/// is silent.
Input read_input (const std::filesystem::path& path, const ReadOptions& options = {});

/// The bytes of a file, nothing unless it is whole. One that is too large is reported.
std::optional<std::string> read_file (const std::filesystem::path& path,
                                      std::size_t bound = input_bound ());

/// Likewise in text mode: CR LF reads as LF.
std::optional<std::string> read_text_file (const std::filesystem::path& path,
                                           std::size_t bound = input_bound ());

/// A text file that has been read, so that several readers can have it though it may be a pipe.
struct TextFile {
    explicit TextFile (const std::filesystem::path& path, std::stop_token stop = {});
    ReadEnd end;
    std::optional<std::string> text; // nothing unless it is whole
    std::string fault;               // as an Input has it
    std::vector<std::string> left;   // likewise
};

/// Where a path leads when its last name is a symbolic link, or a chain of them; the end need not
/// exist.
std::filesystem::path end_of_links (std::filesystem::path path);

/// A file that is being written. A regular file is written beside its target, under a name that
/// begins with a dot, and takes the target's place in `commit`; until then, and after any failure,
/// the old file is whole. What a symbolic link points to is replaced, the link stays; the old
/// file's permissions are kept. A pipe, a device or standard output is opened once and written
/// directly. An interruption of the process removes the unfinished file.
class OutputFile {
  public:
    /// Opens for writing to `path`; ok() tells whether that worked.
    /// stop  looked at while writing; a stop is a failure like others, and `stopped` tells of it
    explicit OutputFile (const std::filesystem::path& path, std::stop_token stop = {});
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
    /// True when a stop that was asked for ended the writing.
    bool stopped () const { return stopped_; }
    /// Where the unfinished file lies; empty when it is written directly.
    const std::filesystem::path& unfinished () const { return temporary_; }
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
    bool is_stopped ();
    void close_and_remove ();

    int descriptor_ = -1;
    bool owned_ = true; // standard output is not closed by us
    std::filesystem::path target_;
    std::filesystem::path temporary_; // empty when written directly
    std::unique_ptr<InterruptionGuard> guard_;
    std::stop_token stop_;
    bool stopped_ = false;
    std::string error_;
};

/// Writes a whole file through OutputFile. False with the reason in `error` when that fails or a
/// stop comes before the file is in its place.
bool write_file (const std::filesystem::path& path, std::string_view bytes, std::string& error,
                 std::stop_token stop = {});

/// Removes a file, if it is there. Needs no memory, so that destructors may use it.
void remove_file (const std::filesystem::path& path) noexcept;

/// Writes to standard output; false, and reported, when it is closed or full.
bool write_standard_output (std::string_view bytes);

} // namespace ostrand
