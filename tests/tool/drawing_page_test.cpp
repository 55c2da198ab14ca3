// Whole files as drawings: nothing of any example or model is cut by the page.
#include "base/disk.h"
#include "document/document_state.h"
#include "export/export.h"
#include "files/document_io.h"
#include "support/support.h"
#include "support/svg_page.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <initializer_list>

namespace ostrand::testing {
namespace {

namespace fs = std::filesystem;

struct Switches {
    const char* name;
    bool kinetics;
    bool stoichiometry;
};

/// Puts the document's switches back.
class SwitchScope {
  public:
    explicit SwitchScope (const Switches& switches) {
        document::document_state ().show_kinetics = switches.kinetics;
        document::document_state ().show_stoichiometry = switches.stoichiometry;
    }
    ~SwitchScope () {
        document::document_state ().show_kinetics = true;
        document::document_state ().show_stoichiometry = false;
    }
    SwitchScope (const SwitchScope&) = delete;
    SwitchScope& operator= (const SwitchScope&) = delete;
};

/// Labels of nodes that hold letters, those of nested networks too.
std::size_t written_labels (const document::Network& network) {
    std::size_t count = 0;
    for (const auto& n : network.nodes ()) {
        if (const document::Network* inner = n->nested ())
            count += written_labels (*inner);
        else if (n->label () != nullptr && !n->name ().empty ())
            ++count;
    }
    return count;
}

constexpr Switches as_opened{"as opened", true, false};
constexpr Switches bare{"bare", false, false};
constexpr Switches with_stoichiometry{"with stoichiometry", true, true};

/// Paints a file and looks at each of its labels and shapes. Gives the number of labels.
std::size_t expect_whole (const fs::path& path, const files::OpenOptions& options,
                          std::initializer_list<Switches> all) {
    std::size_t labels = 0;
    for (const Switches& switches : all) {
        SCOPED_TRACE (path.filename ().string () + ", " + switches.name);
        const SwitchScope scope (switches);
        const CaughtMessages messages;
        files::Document document;
        EXPECT_EQ (files::open_document (path.string (), options, document),
                   files::LoadStatus::loaded);
        if (!document.network) return 0;
        document::Network& network = *document.network;
        const SvgPage page = read_svg_page (drawing::svg_text (network));
        EXPECT_EQ (page.outside (), "");
        EXPECT_GE (page.texts.size (), written_labels (network));
        labels += page.texts.size ();
        const drawing::DrawingPage told = drawing::drawing_page (network);
        EXPECT_EQ (page.width, told.width);
        EXPECT_EQ (page.height, told.height);
        if (told.origin_x == 0 && told.origin_y == 0) {
            // Nothing had to be moved: the page is the network and its margin.
            EXPECT_EQ (told.width, std::floor (network.get_width () + 13));
            EXPECT_EQ (told.height, static_cast<unsigned> (network.get_height () + 12));
        }
    }
    return labels;
}

TEST (DrawingPage, every_label_of_every_example_is_inside) {
    int files = 0;
    std::size_t labels = 0;
    for (const auto& entry : fs::directory_iterator (source_path ("examples"))) {
        const std::string kind = entry.path ().extension ().string ();
        if (kind != ".net" && kind != ".ssa" && kind != ".xml") continue;
        ++files;
        labels += expect_whole (entry.path (), {}, {as_opened, bare, with_stoichiometry});
    }
    EXPECT_GE (files, 10);
    EXPECT_GT (labels, 1000U);
}

TEST (DrawingPage, every_label_of_every_model_is_inside) {
    const std::optional<fs::path> folder = models_folder ();
    if (!folder) GTEST_SKIP () << "no folder of models beside the source tree";
    std::vector<fs::path> paths;
    for (const auto& entry : fs::recursive_directory_iterator (*folder))
        if (entry.path ().extension () == ".xml") paths.push_back (entry.path ());
    int files = 0;
    std::size_t labels = 0;
    // With sanitizers every third.
    for (const fs::path& path : those_in_time (std::move (paths))) {
        ++files;
        labels += expect_whole (path, {}, {as_opened});
        // Placed as the text of its reactions, which takes no search for places.
        labels += expect_whole (path, {.use_annotation = false, .as_model_text = true},
                                {as_opened, bare, with_stoichiometry});
    }
    EXPECT_GE (files, 6);
    EXPECT_GT (labels, 1000U);
}

TEST (DrawingPage, the_enzymes_of_an_imported_chain_are_there) {
    const TemporaryFolder folder;
    const std::string model =
        folder.write ("chain.ssa", "hexokinase : glucose -> G6P | 1 mM - 5 ;\n"
                                   "isomerase : G6P -> F6P | 1 mM - 5 ;\n");
    for (const char* kind : {"svg", "pdf"}) {
        const std::string target = (folder / (std::string ("chain.") + kind)).string ();
        const auto result = run_program ({"ostrand-tool", "convert", model, target});
        EXPECT_EQ (result.status, 0) << result.error;
    }
    const SvgPage page = read_svg_page (file_text (folder / "chain.svg"));
    EXPECT_EQ (page.outside (), "");
    int enzymes = 0;
    for (const PaintedBox& text : page.texts)
        enzymes += text.what == "hexokinase" || text.what == "isomerase" ? 1 : 0;
    EXPECT_EQ (enzymes, 2);
    const std::string size =
        "/MediaBox [ 0 0 " + format_g (page.width) + " " + format_g (page.height) + " ]";
    EXPECT_NE (file_text (folder / "chain.pdf").find (size), std::string::npos) << size;
}

} // namespace
} // namespace ostrand::testing
