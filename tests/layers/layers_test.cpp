// Every #include of src against the table of layers.
#include "support/support.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <map>
#include <regex>
#include <set>
#include <sstream>

namespace ostrand {
namespace {

namespace fs = std::filesystem;

/// Folder -> folders and outside libraries that it may use.
std::map<std::string, std::set<std::string>> read_table () {
    std::map<std::string, std::set<std::string>> table;
    std::istringstream lines (testing::source_file ("src/layers.txt"));
    for (std::string line; std::getline (lines, line);) {
        std::smatch match;
        if (!std::regex_match (line, match, std::regex ("([a-z_]+): *(.*)"))) continue;
        std::istringstream words (match[2]);
        std::set<std::string>& uses = table[match[1]];
        for (std::string word; words >> word;) uses.insert (word);
    }
    return table;
}

/// The outside library that a header belongs to; empty for the standard ones.
std::string library_of (const std::string& header) {
    if (header.starts_with ("FL/") || header.starts_with ("X11/")) return "fltk";
    if (header.starts_with ("GL/")) return "opengl";
    if (header == "zlib.h") return "zlib";
    if (header.starts_with ("hwy/")) return "hwy";
    if (header == "mpi.h") return "mpi";
    if (header == "png.h") return "png";
    if (header.starts_with ("jpeglib") || header.starts_with ("jerror")) return "jpeg";
    if (header.starts_with ("hpdf")) return "haru";
    if (header.starts_with ("graphviz/")) return "graphviz";
    if (header.starts_with ("sbml/")) return "sbml";
    if (header.starts_with ("librsvg/") || header == "cairo.h") return "rsvg";
    return {};
}

TEST (layers, every_include_is_allowed_by_the_table) {
    const auto table = read_table ();
    ASSERT_GE (table.size (), 10U);
    const std::regex include ("^ *# *include *([\"<])([^\">]+)[\">]");
    int seen = 0;
    for (const auto& entry : fs::recursive_directory_iterator (testing::source_path ("src"))) {
        const std::string extension = entry.path ().extension ().string ();
        if (extension != ".h" && extension != ".cpp") continue;
        const fs::path inside = fs::relative (entry.path (), testing::source_path ("src"));
        const std::string folder = inside.begin ()->string ();
        ASSERT_TRUE (table.contains (folder)) << folder << " is not in src/layers.txt";
        std::istringstream lines (testing::file_text (entry.path ()));
        for (std::string line; std::getline (lines, line);) {
            std::smatch match;
            if (!std::regex_search (line, match, include)) continue;
            ++seen;
            const std::string header = match[2];
            const std::string used =
                match[1] == "\"" ? fs::path (header).begin ()->string () : library_of (header);
            if (used.empty () || used == folder) continue;
            EXPECT_TRUE (table.at (folder).contains (used))
                << inside.string () << " includes " << header << ", but " << folder
                << " may not use " << used;
        }
    }
    EXPECT_GT (seen, 100);
}

TEST (layers, arrows_run_downwards_only) {
    const auto table = read_table ();
    // A folder may use only folders whose own line stands higher up in the table.
    std::set<std::string> above;
    std::istringstream lines (testing::source_file ("src/layers.txt"));
    for (std::string line; std::getline (lines, line);) {
        const std::string folder = line.substr (0, line.find (':'));
        if (!table.contains (folder)) continue;
        for (const std::string& used : table.at (folder)) {
            if (table.contains (used)) {
                EXPECT_TRUE (above.contains (used)) << folder << " uses " << used;
            }
        }
        above.insert (folder);
    }
}

TEST (layers, everything_but_the_windows_is_free_of_the_toolkit) {
    for (const auto& [folder, uses] : read_table ()) {
        if (folder != "toolkit" && folder != "viewer" && folder != "shell") {
            EXPECT_FALSE (uses.contains ("fltk")) << folder;
        }
    }
}

} // namespace
} // namespace ostrand
