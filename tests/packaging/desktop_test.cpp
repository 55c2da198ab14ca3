// What the desktop reads of us: entries, metainfo, kinds of files, icons.
#include "support/support.h"

#include <cstdlib>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <regex>
#include <set>

namespace ostrand {
namespace {

namespace fs = std::filesystem;
using testing::run_program;
using testing::source_file;
using testing::source_path;
using testing::TemporaryFolder;

/// True when PATH has the program.
bool has (const std::string& program) {
    return run_program ({"sh", "-c", "command -v \"$1\"", "has", program}).status == 0;
}

std::string packaging (const std::string& name) {
    return source_path ("packaging/" + name).string ();
}

TEST (desktop, entries_are_valid) {
    if (!has ("desktop-file-validate")) GTEST_SKIP () << "there is no desktop-file-validate";
    const auto done = run_program ({"desktop-file-validate", packaging ("ostrand.desktop"),
                                    packaging ("ostrand-viewer.desktop")});
    EXPECT_EQ (done.status, 0);
    EXPECT_EQ (done.out + done.error, "");
}

TEST (desktop, metainfo_is_valid) {
    if (!has ("appstreamcli")) GTEST_SKIP () << "there is no appstreamcli";
    TemporaryFolder folder;
    const std::string text =
        std::regex_replace (source_file ("packaging/example.ostrand.Ostrand.metainfo.xml.in"),
                            std::regex ("@PROJECT_VERSION@"), "0.1.0");
    const auto done = run_program ({"appstreamcli", "validate", "--no-net", "--no-color",
                                    folder.write ("example.ostrand.Ostrand.metainfo.xml", text)});
    EXPECT_EQ (done.status, 0) << done.out << done.error;
}

TEST (desktop, metainfo_and_entries_name_the_same_kinds) {
    const std::string metainfo = source_file ("packaging/example.ostrand.Ostrand.metainfo.xml.in");
    const std::string kinds = source_file ("packaging/ostrand.xml");
    const std::string entries = source_file ("packaging/ostrand.desktop") +
                                source_file ("packaging/ostrand-viewer.desktop");
    const std::regex row ("mime-type type=\"([^\"]+)\"");
    int count = 0;
    for (std::sregex_iterator it (kinds.begin (), kinds.end (), row), end; it != end; ++it) {
        const std::string kind = (*it)[1];
        EXPECT_NE (metainfo.find ("<mediatype>" + kind + "</mediatype>"), std::string::npos)
            << kind;
        EXPECT_NE (entries.find (kind + ';'), std::string::npos) << kind;
        ++count;
    }
    EXPECT_EQ (count, 4);
}

TEST (desktop, every_screenshot_has_a_caption) {
    const std::string text = source_file ("packaging/example.ostrand.Ostrand.metainfo.xml.in");
    const std::regex shot ("<screenshot[ >][\\s\\S]*?</screenshot>");
    int count = 0;
    for (std::sregex_iterator it (text.begin (), text.end (), shot), end; it != end; ++it) {
        EXPECT_NE (it->str ().find ("<caption>"), std::string::npos) << it->str ();
        ++count;
    }
    EXPECT_GE (count, 2);
}

/// What a pattern catches in a file of the tree.
std::string caught (const std::string& file, const std::string& pattern) {
    const std::string text = source_file (file);
    std::smatch match;
    return std::regex_search (text, match, std::regex (pattern)) ? match[1].str () : "nothing";
}

TEST (desktop, version_and_date_are_the_same_wherever_they_stand) {
    const std::string version = caught ("CMakeLists.txt", "project \\(ostrand VERSION ([0-9.]+)");
    EXPECT_EQ (caught ("CITATION.cff", "\nversion: ([0-9.]+)\n"), version);
    EXPECT_EQ (caught ("packaging/changelog", "^ostrand \\(([0-9.]+)\\)"), version);
    EXPECT_EQ (caught ("CITATION.cff", "\ndate-released: ([0-9-]+)\n"),
               caught ("packaging/example.ostrand.Ostrand.metainfo.xml.in",
                       "@PROJECT_VERSION@\" date=\"([0-9-]+)\""));
}

/// A folder of data with our kinds of files in it, beside the machine's own.
class Kinds {
  public:
    Kinds () {
        const fs::path place = folder_ / "mime/packages";
        fs::create_directories (place);
        fs::copy (source_path ("packaging/ostrand.xml"), place / "ostrand.xml");
        const auto made = run_program ({"env", "XDG_DATA_HOME=" + folder_.path ().string (),
                                        "update-mime-database", (folder_ / "mime").string ()});
        EXPECT_EQ (made.status, 0) << made.error;
        EXPECT_EQ (made.out + made.error, "");
    }
    /// The kind of a file as the desktop sees it.
    std::string of (const fs::path& file) const {
        const auto done = run_program ({"env", "XDG_DATA_HOME=" + folder_.path ().string (), "gio",
                                        "info", "-a", "standard::content-type", file.string ()});
        std::smatch match;
        const std::regex kind ("standard::content-type: (\\S+)");
        return std::regex_search (done.out, match, kind) ? match[1].str () : done.out + done.error;
    }
    const TemporaryFolder& folder () const { return folder_; }

  private:
    TemporaryFolder folder_;
};

class KindsOfFiles : public ::testing::Test {
  protected:
    void SetUp () override {
        if (!has ("update-mime-database") || !has ("gio"))
            GTEST_SKIP () << "update-mime-database or gio is missing";
    }
};

TEST_F (KindsOfFiles, examples_have_their_kinds) {
    const Kinds kinds;
    const std::map<std::string, std::string> expected{
        {".net", "application/x-ostrand-network"},
        {".ssa", "text/x-ostrand-model"},
    };
    int seen = 0;
    for (const auto& entry : fs::directory_iterator (source_path ("examples"))) {
        const auto found = expected.find (entry.path ().extension ().string ());
        if (found == expected.end ()) continue;
        EXPECT_EQ (kinds.of (entry.path ()), found->second) << entry.path ().filename ();
        ++seen;
    }
    EXPECT_GE (seen, 12);
}

TEST_F (KindsOfFiles, native_text_is_told_by_its_first_line) {
    const Kinds kinds;
    const std::string text = source_file ("examples/hexokinase.net");
    for (const char* const name : {"network", "network.dat-x", "network.mto"})
        EXPECT_EQ (kinds.of (kinds.folder ().write (name, text)), "application/x-ostrand-network")
            << name;
}

TEST_F (KindsOfFiles, a_model_that_the_program_writes_is_one_without_a_suffix_too) {
    const Kinds kinds;
    const auto model =
        run_program ({"ostrand-tool", "model", source_path ("examples/hexokinase.net").string ()});
    ASSERT_EQ (model.status, 0);
    EXPECT_EQ (kinds.of (kinds.folder ().write ("model", model.out)), "text/x-ostrand-model");
}

TEST_F (KindsOfFiles, sbml_is_told_by_its_suffix_and_xml_stays_xml) {
    const Kinds kinds;
    const std::string text = source_file ("examples/tca-shuttles.xml");
    EXPECT_EQ (kinds.of (kinds.folder ().write ("a.sbml", text)), "application/sbml+xml");
    EXPECT_EQ (kinds.of (kinds.folder ().write ("a.xml", text)), "application/xml");
}

TEST_F (KindsOfFiles, subtitles_and_other_texts_stay_what_they_are) {
    const Kinds kinds;
    EXPECT_EQ (kinds.of (kinds.folder ().write (
                   "film.ssa", "[Script Info]\n; a film\nTitle: x\nScriptType: v4.00\n")),
               "text/x-ssa");
    EXPECT_EQ (kinds.of (kinds.folder ().write ("letter", "The duration of the display\n")),
               "text/plain");
    EXPECT_EQ (kinds.of (kinds.folder ().write ("page.xml", "<?xml version=\"1.0\"?>\n<a/>\n")),
               "application/xml");
}

TEST_F (KindsOfFiles, results_are_told_by_their_names) {
    const Kinds kinds;
    const std::string result = (kinds.folder () / "data.gz").string ();
    ASSERT_EQ (run_program ({"ostrand", "-a", source_path ("examples/glucose-sweep.ssa").string (),
                             "-o", result})
                   .status,
               0);
    EXPECT_EQ (kinds.of (result), "application/x-ostrand-result");
    fs::copy (result, kinds.folder () / "a.result.gz");
    for (const char* const name : {"_data_.gz", "_data_2.gz"}) { // of the editor
        fs::copy (result, kinds.folder () / name);
        EXPECT_EQ (kinds.of (kinds.folder () / name), "application/x-ostrand-result");
    }
    fs::copy (result, kinds.folder () / "other.gz");
    EXPECT_EQ (kinds.of (kinds.folder () / "a.result.gz"), "application/x-ostrand-result");
    EXPECT_EQ (kinds.of (kinds.folder () / "other.gz"), "application/gzip");
}

TEST (desktop, every_icon_that_is_named_is_installed) {
    const std::string install = source_file ("cmake/OstrandInstall.cmake");
    std::set<std::string> names;
    for (const char* const file : {"packaging/ostrand.desktop", "packaging/ostrand-viewer.desktop",
                                   "packaging/ostrand.xml"}) {
        const std::string text = source_file (file);
        const std::regex icon ("(?:^|\\n)Icon=(\\S+)|<icon name=\"([^\"]+)\"");
        for (std::sregex_iterator it (text.begin (), text.end (), icon), end; it != end; ++it)
            names.insert ((*it)[1].matched ? (*it)[1].str () : (*it)[2].str ());
    }
    EXPECT_EQ (names.size (), 4U);
    for (const std::string& name : names)
        EXPECT_TRUE (std::regex_search (
            install, std::regex ("ostrand_icon \\([^)]*\\$\\{size\\} \\w+ " + name + "\\)")))
            << name;
}

} // namespace
} // namespace ostrand
