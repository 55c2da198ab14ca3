// What differs between operating systems: folders, processors, memory, terminals, files that must go
// when the process is interrupted. What file_access.h, file_lock.h, interruption.h and process.h
// declare differs too; all of it is defined in the files platform*_posix.cpp.
// Layer: base.
#pragma once
#include <cstdint>
#include <filesystem>
#include <stop_token>
#include <string>
#include <vector>

namespace ostrand {

/// The user's home: the folder named by USERPROFILE, else by HOME; empty when neither is set.
std::filesystem::path home_directory ();

/// The folder for files that are needed only while the process runs.
std::filesystem::path temporary_directory ();

/// Makes a folder of its own, which nobody else can enter or foresee, for files that are needed for a
/// moment; the caller removes it. Empty when it cannot be made.
/// name  that its name begins with
std::filesystem::path make_private_folder (const std::string& name);

/// Processors that this process may use; at least 1.
int processor_count ();

/// Bytes of memory that could still be taken, as the system tells it: free memory and the process's
/// own limits, whichever is less.
std::uint64_t available_memory ();

/// Absolute path of the running program's file.
std::filesystem::path executable_path ();

/// From now on writing to a pipe that nobody reads any more, or beyond the limit of a file's size,
/// is an error of the write instead of the end of the process.
void make_write_failures_errors ();

/// Brings what was written to an open file to the disk. False, with the reason in errno, when that
/// fails or a stop is asked for, which is looked at now and then while a large file goes out.
bool flush_to_disk (int descriptor, const std::stop_token& stop);

/// True when the standard stream (0, 1, 2) is a terminal.
bool is_terminal (int stream);

/// Width of the terminal on standard error in characters; 80 when it is not known.
int terminal_width ();

/// Process id, for names of temporary files.
int process_id ();

/// Files that must not survive an interruption (Ctrl-C, termination, a closed terminal): each is
/// removed before the signal ends the process, and the process dies by that signal. The first call
/// installs the handlers. `path` is absolute.
class InterruptionGuard {
  public:
    explicit InterruptionGuard (const std::filesystem::path& path);
    ~InterruptionGuard ();
    InterruptionGuard (const InterruptionGuard&) = delete;
    InterruptionGuard& operator= (const InterruptionGuard&) = delete;

  private:
    void* entry_;
};

/// While it lives, this thread takes no interruption: for the moment between making a file and
/// guarding it.
class InterruptionBlock {
  public:
    InterruptionBlock ();
    ~InterruptionBlock ();
    InterruptionBlock (const InterruptionBlock&) = delete;
    InterruptionBlock& operator= (const InterruptionBlock&) = delete;

  private:
    std::vector<int> to_unblock_;
};

} // namespace ostrand
