// The files that were opened or saved last, kept from run to run.
// Layer: editor (uses base).
#pragma once
#include <string>
#include <vector>

namespace ostrand::editor {

/// Newest first. The list lies in a small file of its own in the home directory, a path a line;
/// editors that run side by side share it.
class RecentFiles {
  public:
    static constexpr std::size_t most = 10;

    explicit RecentFiles (const std::string& home) : path_ (home + "/.ostrand_recent") {}

    /// The files that are still there.
    std::vector<std::string> list () const;
    /// A file was opened or saved. A list that cannot be written is no fault.
    void add (const std::string& file);
    void clear ();

  private:
    std::vector<std::string> read () const;
    void write (const std::vector<std::string>& files) const;

    std::string path_;
};

} // namespace ostrand::editor
