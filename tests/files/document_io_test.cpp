// Opening and saving by the table of formats.
#include "files/document_io.h"

#include "files/native.h"
#include "support/support.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace ostrand::files {
namespace {

using testing::TemporaryFolder;

const char* small = "# Lattrix: 1.2\n[N2 0 2 8 8[S1 0 9 9 0 3 13{a}-][S2 0 99 9 0 3 13{a}-]]\n";

TEST (DocumentIo, native_text_is_told_by_its_content_whatever_the_name) {
    const TemporaryFolder folder;
    for (const char* name : {"a.net", "a.mto", "a", "a.txt"}) {
        Document document;
        EXPECT_EQ (open_document (folder.write (name, small), {}, document), LoadStatus::loaded);
        EXPECT_EQ (document.network->nb_nodes (), 2);
        EXPECT_EQ (document.duration, 10);
    }
}

TEST (DocumentIo, sharing_is_brought_up_to_date) {
    const TemporaryFolder folder;
    Document document;
    open_document (folder.write ("a.net", small), {}, document);
    EXPECT_TRUE (document.network->nodes ()[1]->is_shared ());
}

TEST (DocumentIo, an_origin_of_zero_becomes_ten) {
    Document document;
    open_text ("[N0 0 2]", "a.net", {}, document);
    EXPECT_EQ (document.network->x (), 10.0F);
    EXPECT_EQ (document.network->y (), 10.0F);
    open_text ("[N0 0 2 0 4]", "a.net", {}, document);
    EXPECT_EQ (document.network->x (), 0.0F);
}

TEST (DocumentIo, what_cannot_be_read_leaves_the_document_as_it_was) {
    const TemporaryFolder folder;
    Document document;
    open_text (small, "a.net", {}, document);
    const document::Network* before = document.network.get ();
    EXPECT_EQ (open_document ((folder / "none.net").string (), {}, document),
               LoadStatus::not_found);
    EXPECT_EQ (open_document (folder.path ().string (), {}, document), LoadStatus::not_found);
    EXPECT_EQ (open_document (folder.write ("b.net", "no network"), {}, document),
               LoadStatus::not_readable);
    const testing::CaughtMessages messages;
    EXPECT_EQ (open_document (folder.write ("c.net", "# only a comment"), {}, document),
               LoadStatus::not_readable);
    EXPECT_EQ (messages.all, std::vector<std::string>{"The file holds no network."});
    EXPECT_EQ (document.network.get (), before);
}

TEST (DocumentIo, carriage_returns_before_line_ends_are_nothing) {
    const TemporaryFolder folder;
    Document document;
    std::string text = small;
    text.insert (text.find ('\n'), "\r");
    EXPECT_EQ (open_document (folder.write ("a.net", text), {}, document), LoadStatus::loaded);
}

TEST (DocumentIo, names_choose_the_rows) {
    EXPECT_STREQ (writing_format ("a.ssa").name, "model text");
    EXPECT_STREQ (writing_format ("dir.ssa/a").name, "native text");
    EXPECT_STREQ (writing_format ("a.mto").name, "native text");
    EXPECT_STREQ (reading_format (".ssa").name, "native text"); // four letters are no name with one
    EXPECT_STREQ (reading_format ("x.ssa").name, "model text");
    EXPECT_STREQ (formats ().back ().suffix, "");
}

TEST (DocumentIo, saved_files_open_again) {
    const TemporaryFolder folder;
    Document document;
    open_text (small, "a.net", {}, document);
    std::string error;
    const std::string path = (folder / "out.net").string ();
    ASSERT_TRUE (save_document (document, path, error)) << error;
    EXPECT_EQ (testing::file_text (path), write_native (*document.network));
    EXPECT_EQ (folder.names (), std::vector<std::string>{"out.net"});
    document.duration = 30;
    ASSERT_TRUE (save_document (document, (folder / "out.ssa").string (), error));
    EXPECT_EQ (testing::file_text (folder / "out.ssa"), "duration = 30;\n\n");
}

TEST (DocumentIo, a_save_that_fails_leaves_the_old_file_and_nothing_else) {
    const TemporaryFolder folder;
    Document document;
    open_text (small, "a.net", {}, document);
    std::string error;
    EXPECT_FALSE (save_document (document, (folder / "no folder" / "a.net").string (), error));
    EXPECT_FALSE (error.empty ());
    error.clear ();
    EXPECT_FALSE (save_document (document, folder.path ().string (), error));
    EXPECT_FALSE (error.empty ());
    EXPECT_TRUE (folder.names ().empty ());
}

} // namespace
} // namespace ostrand::files
