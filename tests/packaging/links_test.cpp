// Every page of docs can be reached from the README, and every link leads somewhere.
#include "support/support.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <regex>
#include <set>
#include <string>
#include <vector>

namespace ostrand {
namespace {

namespace fs = std::filesystem;

bool is_page (const fs::path& file) {
    return file.extension () == ".md" || file.extension () == ".html";
}

/// What a page leads to, without links to other machines and to places within the page.
std::vector<fs::path> links_of (const fs::path& page) {
    static const std::regex in_markdown ("\\]\\(([^)\\s]+)\\)");
    static const std::regex in_html ("(?:href|src)=\"([^\"]+)\"", std::regex::icase);
    const std::string text = testing::file_text (page);
    std::vector<fs::path> links;
    const std::regex& form = page.extension () == ".md" ? in_markdown : in_html;
    for (std::sregex_iterator it (text.begin (), text.end (), form), end; it != end; ++it) {
        std::string target = (*it)[1];
        target.resize (std::min (target.find ('#'), target.size ()));
        if (target.empty () || target.find (':') != std::string::npos) continue;
        links.push_back ((page.parent_path () / target).lexically_normal ());
    }
    return links;
}

/// All pages that can be reached from one.
std::set<fs::path> reachable_from (const fs::path& start) {
    std::set<fs::path> seen{start};
    std::vector<fs::path> waiting{start};
    while (!waiting.empty ()) {
        const fs::path page = waiting.back ();
        waiting.pop_back ();
        for (const fs::path& target : links_of (page)) {
            EXPECT_TRUE (fs::exists (target)) << page << " leads to " << target;
            if (is_page (target) && fs::is_regular_file (target) && seen.insert (target).second)
                waiting.push_back (target);
        }
    }
    return seen;
}

TEST (links, every_page_of_docs_is_reachable_from_the_readme) {
    const std::set<fs::path> seen = reachable_from (testing::source_path ("README.md"));
    int pages = 0;
    for (const auto& entry : fs::recursive_directory_iterator (testing::source_path ("docs"))) {
        if (!is_page (entry.path ())) continue;
        ++pages;
        EXPECT_TRUE (seen.contains (entry.path ().lexically_normal ())) << entry.path ();
    }
    EXPECT_GE (pages, 7);
}

TEST (links, pages_for_visitors_are_reachable_too) {
    const std::set<fs::path> seen = reachable_from (testing::source_path ("README.md"));
    for (const char* const page : {"CHANGELOG.md", "CONTRIBUTING.md", "SECURITY.md"})
        EXPECT_TRUE (seen.contains (testing::source_path (page))) << page;
}

TEST (links, the_readme_begins_with_a_picture_of_the_editor) {
    const std::string readme = testing::source_file ("README.md");
    const std::size_t picture = readme.find ("![");
    ASSERT_NE (picture, std::string::npos);
    EXPECT_EQ (readme.substr (picture, readme.find ('\n', picture) - picture).find ("docs/editor/"),
               std::string ("![The editor](").size ());
    // Nothing but the title stands above it.
    EXPECT_EQ (readme.substr (0, picture), "# Ostrand\n\n");
}

} // namespace
} // namespace ostrand
