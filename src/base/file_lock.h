// A file that one process at a time has for itself.
// Layer: base.
#pragma once
#include <filesystem>
#include <string>

namespace ostrand {

/// An advisory lock on a regular file: it hinders only who asks for it. It is let go with this
/// object and dies with its process, however that ends; a child that is executed does not keep it.
/// While it is held, nobody else gets it, in other processes or in this one.
class FileLock {
  public:
    enum class End {
        taken,
        held_elsewhere, // by a live process, maybe this one
        not_there,      // and was not to be made
        not_a_file,     // a folder, a pipe, a device, a dangling link
        failed,         // the system says why in `error`
    };
    enum class Missing { is_made, stays_missing };

    /// Holds nothing.
    FileLock () = default;
    /// Asks for the lock of a file; never waits. `end` tells what came of it.
    explicit FileLock (const std::filesystem::path& path, Missing missing = Missing::is_made);
    ~FileLock () { release (); }
    FileLock (FileLock&& other) noexcept;
    FileLock& operator= (FileLock&& other) noexcept;
    FileLock (const FileLock&) = delete;
    FileLock& operator= (const FileLock&) = delete;

    bool held () const { return descriptor_ >= 0; }
    End end () const { return end_; }
    /// What the system said of a failure; empty otherwise.
    const std::string& error () const { return error_; }

    /// The locked file itself, open for reading and writing; -1 when nothing is held. Reading and
    /// writing by its name is as good as long as the file is not replaced.
    int descriptor () const { return descriptor_; }

    void release ();

  private:
    End end_ = End::failed;
    int descriptor_ = -1;
    std::string error_;
};

/// True when a live process, maybe this one, holds the file's lock. Takes nothing, so it never
/// hinders anybody who is about to. False for what is no file or cannot be opened.
bool is_locked (const std::filesystem::path& path);

} // namespace ostrand
