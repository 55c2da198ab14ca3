// The list of recent files on the disk.
#include "editor/recent_files.h"

#include "base/disk.h"
#include "base/text.h"

#include <filesystem>

namespace ostrand::editor {

std::vector<std::string> RecentFiles::read () const {
    const std::optional<std::string> text = read_text_file (path_);
    std::vector<std::string> files =
        text ? split_fields (*text, '\n') : std::vector<std::string> ();
    std::erase_if (files, [] (const std::string& file) { return !file.starts_with ('/'); });
    if (files.size () > most) files.resize (most);
    return files;
}

std::vector<std::string> RecentFiles::list () const {
    std::vector<std::string> files = read ();
    std::error_code error;
    std::erase_if (files, [&error] (const std::string& file) {
        return !std::filesystem::is_regular_file (file, error);
    });
    return files;
}

void RecentFiles::write (const std::vector<std::string>& files) const {
    std::string text;
    for (const std::string& file : files) text += file + '\n';
    std::string error;
    write_file (path_, text, error);
}

void RecentFiles::add (const std::string& file) {
    if (!file.starts_with ('/') || file.find ('\n') != std::string::npos) return;
    std::vector<std::string> files = read (); // another editor may have written meanwhile
    std::erase (files, file);
    files.insert (files.begin (), file);
    if (files.size () > most) files.resize (most);
    write (files);
}

void RecentFiles::clear () { write ({}); }

} // namespace ostrand::editor
