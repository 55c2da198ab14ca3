// Every label that can be typed comes back from every format that holds labels, and stands as its
// letters are told wherever these are read back.
#include "files/label_text.h"

#include "document/line.h"
#include "files/document_io.h"
#include "files/native.h"
#include "files/sbml_to_model.h"
#include "files/sbml_write.h"
#include "files/xml.h"
#include "files/xml_scan.h"
#include "names/name_markup.h"
#include "names/species_names.h"
#include "sim/lexer.h"
#include "support/random_document.h"
#include "support/support.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <set>

namespace ostrand::files {
namespace {

using names::model_name;
using names::name_markup;

using document::Char;
using document::Line;
using document::Network;
using document::Node;
using document::PrintState;
using ostrand::testing::CaughtMessages;
using ostrand::testing::RandomDocument;
using ostrand::testing::TemporaryFolder;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

std::unique_ptr<Line> label_of (std::string_view letters) {
    return std::make_unique<Line> (letters, document::start_font, 0U);
}

/// A letter with a subscript of these letters.
std::unique_ptr<Line> with_sub (char letter, std::string_view sub) {
    auto line = label_of (std::string (1, letter));
    auto script = std::make_unique<Line> (sub, document::reduced_font (document::start_font), 0U);
    line->set_script (0, false, std::move (script));
    return line;
}

std::string drawn (const Line& label) {
    PrintState to;
    write_drawn_label (label, to);
    return drawn_attribute (to.out);
}

/// A form of labels: how it is written, and read as its format reads it.
struct Form {
    const char* name;
    std::function<std::string (const Line&)> write;
    std::function<std::unique_ptr<Line> (const std::string&)> read;
};

/// The label of a name in a model text.
std::unique_ptr<Line> read_model_name (const std::string& name) {
    const std::string text = sim::quoted (name) + ";";
    sim::Lexer lexer (
        text, [] (std::string_view) { return 0; }, "");
    const sim::Token token = lexer.next_token ();
    EXPECT_EQ (token.kind, sim::TokenKind::ident) << text;
    EXPECT_EQ (lexer.next_token ().kind, sim::TokenKind::semicolon) << text;
    auto item = document::read_text ("{" + name_markup (token.text) + "}");
    return document::line_from_item (std::move (item));
}

const std::vector<Form>& forms () {
    static const std::vector<Form> all{
        {"native text",
         [] (const Line& label) {
             PrintState to;
             label.fprint (to, -1);
             return to.out;
         },
         [] (const std::string& text) {
             return document::line_from_item (document::read_text (text));
         }},
        {"drawing in SBML", drawn,
         [] (const std::string& text) {
             EXPECT_EQ (text.find ('"'), std::string::npos) << text;
             const std::string markup = text_of_drawn_attribute (text);
             EXPECT_FALSE (markup.starts_with ("[N")) << text; // would be a network
             document::MarkupReader reader (markup);
             return std::make_unique<Line> (reader);
         }},
        {"model text", [] (const Line& label) { return model_name_text (label); }, read_model_name},
        {"name in SBML", [] (const Line& label) { return sbml_name_text (label); },
         [] (const std::string& text) {
             EXPECT_EQ (text.find_first_of ("\"<"), std::string::npos) << text;
             std::vector<bool> by_number;
             const std::string name = decode_attribute (text, &by_number);
             return read_model_name (model_name (name, by_number));
         }},
    };
    return all;
}

void expect_back (const Line& label) {
    for (const Form& form : forms ()) {
        const std::string text = form.write (label);
        const CaughtMessages messages;
        const auto read = form.read (text);
        ASSERT_NE (read, nullptr);
        EXPECT_TRUE (read->equals (label)) << form.name << ": " << text;
        EXPECT_THAT (messages.all, IsEmpty ()) << form.name << ": " << text;
        EXPECT_EQ (form.write (*read), text) << form.name; // and it stands the same again
    }
}

/// All letters that can be typed.
std::string typed_letters () {
    std::string all;
    for (int code = 32; code < 127; ++code) all += static_cast<char> (code);
    for (int code = 160; code < 256; ++code) all += static_cast<char> (code);
    return all;
}

TEST (LabelText, every_letter_comes_back_from_every_format) {
    for (const char c : typed_letters ()) {
        const std::string one (1, c);
        for (const std::string& letters :
             {one, one + one, "a" + one, one + "a", "a" + one + "b", one + one + one}) {
            SCOPED_TRACE (letters);
            expect_back (*label_of (letters));
            expect_back (*with_sub ('x', letters));
        }
        expect_back (*with_sub (c, "i"));
        expect_back (*with_sub (c, ""));
    }
}

TEST (LabelText, every_pair_of_letters_with_a_meaning_comes_back) {
    const std::string special = "\\ \"<>&{}[]^_#;-NPE+/:|,=()'1\xC2\xC3\xA9";
    for (const char a : special) {
        for (const char b : special) {
            for (const std::string& letters : {std::string{a, b}, std::string{'x', a, b, 'y'},
                                               std::string{a, b, a}, std::string{b, a, a, b}}) {
                SCOPED_TRACE (letters);
                expect_back (*label_of (letters));
                expect_back (*with_sub ('x', letters));
                expect_back (*with_sub (a, letters));
            }
        }
    }
}

TEST (LabelText, random_labels_with_scripts_of_scripts_come_back) {
    RandomDocument random (21, {.pictures = false, .typed = true});
    for (int i = 0; i < 5000; ++i) {
        const auto label = random.line (12);
        if (label->is_empty ()) continue;
        // A name has no styles, so a name is compared with a label that has none.
        for (const Form& form : forms ()) {
            const std::string text = form.write (*label);
            const CaughtMessages messages;
            ASSERT_TRUE (form.read (text)->equals (*label)) << form.name << ": " << text;
            EXPECT_THAT (messages.all, IsEmpty ()) << form.name << ": " << text;
        }
    }
}

TEST (LabelText, ordinary_labels_stand_as_they_are_told) {
    for (const char* letters :
         {"ATP", "D-Glucose 6-phosphate", "a^b", "G_6_P", "[x]", "a[", "x & y", "p(1~U).R!2",
          "caf\xE9 \xB5", "&amp;", "'", "#;:|", "a>b", "a\\ b"}) {
        SCOPED_TRACE (letters);
        const auto label = label_of (letters);
        PrintState told;
        label->xml_print (told);
        EXPECT_EQ (drawn (*label), told.out);
        EXPECT_EQ (model_name_text (*label), label->name ());
    }
    for (const char* letters : {"a{b}", "a{b", "}", "a<b", "[N", "tail\\", "say\"hi", "Display"}) {
        SCOPED_TRACE (letters);
        EXPECT_EQ (model_name_text (*label_of (letters)), label_of (letters)->name ());
    }
    for (const char* letters : {"a\\b", "\\\\", "a\\ b", "a\\_", "tail\\", "{", "a}b{"}) {
        SCOPED_TRACE (letters);
        EXPECT_EQ (sbml_name_text (*label_of (letters)), label_of (letters)->name ());
    }
    for (const char* sub : {"i", "{a}", "a b", "{}{}", "^"}) {
        SCOPED_TRACE (sub);
        const auto label = with_sub ('K', sub);
        EXPECT_EQ (model_name_text (*label), label->name ());
        EXPECT_EQ (sbml_name_text (*label), label->name ());
    }
}

TEST (LabelText, a_letter_that_would_be_read_as_something_else_is_escaped_and_no_other) {
    EXPECT_EQ (drawn (*label_of ("E<1 {x} [N] [x] \\")), "E\\<1\\ \\{x\\}\\ \\[N]\\ [x]\\ \\\\");
    EXPECT_EQ (drawn (*label_of ("A\"B & C")), "A&#34;B\\ &\\ C");
    EXPECT_EQ (drawn (*with_sub (' ', "a")), "\\ _{<66F>a}");
    EXPECT_EQ (drawn (*with_sub ('\\', "}")), "\\\\_{<66F>\\}}");

    EXPECT_EQ (model_name_text (*label_of ("a\\b\\ {c} \\")), "a\\\\b\\\\ {c}\\ \\");
    EXPECT_EQ (model_name_text (*with_sub ('x', "{a}}b{")), "x_{{a}\\}b\\{}");
    EXPECT_EQ (model_name_text (*with_sub ('_', "a")), "\\__{a}");
    EXPECT_EQ (model_name_text (*label_of ("display")), "\\display");

    EXPECT_EQ (sbml_name_text (*label_of ("a<b & \"c\" \\")),
               "a&lt;b\\ &amp;\\ &quot;c&quot;\\ \\");
    EXPECT_EQ (sbml_name_text (*with_sub ('\\', "a")), "&#92;_{a}");
    EXPECT_EQ (sbml_name_text (*with_sub ('x', "}{")), "x_{&#125;&#123;}");
}

TEST (LabelText, an_attribute_of_the_drawing_holds_any_text) {
    for (const char* text : {"", "a", "\"", "&#34;", "&#38;", "&#38;#34;", "&quot; & &amp;",
                             "a\"&#34;b", "&&#34;", "&#3", "&#34", "&#388;"}) {
        const std::string value = drawn_attribute (text);
        EXPECT_EQ (value.find ('"'), std::string::npos);
        EXPECT_EQ (text_of_drawn_attribute (value), text) << value;
    }
    EXPECT_EQ (drawn_attribute ("&quot; & &amp; <>"), "&quot; & &amp; <>");
    EXPECT_EQ (text_of_drawn_attribute ("&quot; &amp; &lt;"), "&quot; &amp; &lt;");
}

/// All lines of a network, in the order of its objects: labels, residus, texts of arcs; empty ones,
/// which some formats leave out, are left out.
void collect_lines (const Network& network, std::vector<const Line*>& lines) {
    const auto take = [&lines] (const Char* text) {
        if (text == nullptr || text->kind () != document::CharKind::line) return;
        const auto* line = static_cast<const Line*> (text);
        if (!line->is_empty ()) lines.push_back (line);
    };
    for (const auto& c : network.comps ()) take (c->label ());
    for (const auto& n : network.nodes ()) {
        take (n->label ());
        take (n->residu ());
        if (const Network* inner = n->nested ()) collect_lines (*inner, lines);
    }
    for (const auto& n : network.nodes ()) {
        for (const auto& a : n->arcs ()) {
            take (a->label ());
            take (a->residu ());
            take (a->stoech_src ());
            take (a->stoech_dest ());
        }
    }
}

void expect_same_labels (const Network& before, const Network& after) {
    std::vector<const Line*> wanted;
    std::vector<const Line*> found;
    collect_lines (before, wanted);
    collect_lines (after, found);
    ASSERT_EQ (found.size (), wanted.size ());
    for (std::size_t i = 0; i < wanted.size (); ++i)
        EXPECT_TRUE (found[i]->equals (*wanted[i])) << wanted[i]->name ();
}

/// A random network whose objects come back in the same order, so that labels can be compared one
/// by one, and whose compartments have labels.
std::unique_ptr<Network> typed_network (std::uint32_t seed) {
    auto network =
        RandomDocument (seed, {.settled = true, .pictures = false, .typed = true}).network ();
    for (const auto& c : network->comps ())
        if (static_cast<const Line&> (*c->label ()).is_empty ()) c->set_label ("\"<&{\\");
    return network;
}

TEST (LabelText, all_labels_of_random_networks_come_back_from_native_text) {
    for (std::uint32_t seed = 1; seed <= 100; ++seed) {
        SCOPED_TRACE (seed);
        const auto network = typed_network (seed);
        const CaughtMessages messages;
        const auto read = read_native (write_native (*network));
        ASSERT_NE (read, nullptr);
        expect_same_labels (*network, *read);
        EXPECT_THAT (messages.all, IsEmpty ());
    }
}

TEST (LabelText, all_labels_of_random_networks_come_back_from_the_drawing_in_sbml) {
    for (std::uint32_t seed = 1; seed <= 100; ++seed) {
        SCOPED_TRACE (seed);
        const auto network = typed_network (seed);
        const CaughtMessages messages;
        const std::string text = write_sbml (*network, "m");
        const auto read = read_xml_block (find_xml_block (text));
        ASSERT_NE (read, nullptr);
        expect_same_labels (*network, *read);
        EXPECT_THAT (messages.all, IsEmpty ());
    }
}

/// Labels of all species, each once.
std::multiset<std::string> species_of (const Network& network) {
    std::multiset<std::string> names;
    for (const auto& n : network.nodes ())
        if (n->master () == nullptr) names.insert (model_name_text (*n->label ()));
    return names;
}

/// A chain of catalysed reactions between nodes with random labels, no two alike.
Document chain_of_random_labels (std::uint32_t seed) {
    RandomDocument random (seed, {.pictures = false, .typed = true});
    Document document;
    document.network = std::make_unique<Network> ();
    std::set<std::string> names;
    std::vector<Node*> nodes;
    while (nodes.size () < 21) {
        auto label = random.line (8);
        if (label->is_empty () || !names.insert (model_name_text (*label)).second) continue;
        auto node = std::make_unique<Node> (static_cast<float> (90 * nodes.size ()), 50.F, 13U, 3U);
        node->take_label (std::move (label));
        nodes.push_back (&document.network->add_node (std::move (node)));
    }
    for (std::size_t i = 0; i + 2 < nodes.size (); i += 2) {
        document::Arque* const reaction =
            nodes[i]->connect (*nodes[i + 2], document::arc::reaction);
        nodes[i + 1]->connect (*reaction, document::arc::catalysis);
    }
    nodes[4]->set_calyx_display (true);
    nodes[6]->set_user_data ("10 uM");
    document.network->update_shared_nodes ();
    return document;
}

TEST (LabelText, all_names_of_random_networks_come_back_from_model_text_and_from_sbml) {
    for (std::uint32_t seed = 1; seed <= 40; ++seed) {
        for (const char* name : {"a.ssa", "a.xml"}) {
            SCOPED_TRACE (std::string (name) + std::to_string (seed));
            Document document = chain_of_random_labels (seed);
            const TemporaryFolder folder;
            const std::string path = (folder / name).string ();
            std::string error;
            ASSERT_TRUE (save_document (document, path, error)) << error;
            const CaughtMessages messages;
            Document back;
            ASSERT_EQ (open_document (path, {.use_annotation = false}, back), LoadStatus::loaded)
                << messages.joined () << ostrand::testing::file_text (path);
            EXPECT_EQ (species_of (*back.network), species_of (*document.network));
            EXPECT_THAT (messages.all, IsEmpty ());
        }
    }
}

TEST (LabelText, labels_that_look_like_tags_do_not_break_the_file_around_them) {
    for (const char* label : {"</annotation>", "<annotation>", "<!-- ", "<![CDATA[", "</model>",
                              "<?", "</lattrix:network>", "/>", "<species id=\"x\"/>", "\"", ">"}) {
        SCOPED_TRACE (label);
        Document document;
        document.network = std::make_unique<Network> ();
        Node& a = document.network->add_node (std::make_unique<Node> (0.F, 0.F, 13U, 3U, label));
        Node& b = document.network->add_node (std::make_unique<Node> (90.F, 0.F, 13U, 3U, "b"));
        a.connect (b, document::arc::reaction);
        const TemporaryFolder folder;
        const std::string path = (folder / "a.xml").string ();
        std::string error;
        ASSERT_TRUE (save_document (document, path, error)) << error;
        for (const bool use_annotation : {true, false}) {
            const CaughtMessages messages;
            Document back;
            ASSERT_EQ (open_document (path, {.use_annotation = use_annotation}, back),
                       LoadStatus::loaded)
                << messages.joined ();
            EXPECT_THAT (messages.all, IsEmpty ());
            EXPECT_TRUE (back.network->nodes ()[0]->label ()->equals (*a.label ()));
        }
    }
}

TEST (LabelText, the_simulator_takes_every_name_and_keeps_it) {
    const std::filesystem::path program = std::filesystem::path (OSTRAND_BUILD_DIR) / "ostrand";
    if (!std::filesystem::exists (program)) GTEST_SKIP () << program << " is not built";
    for (const char* label :
         {"5\" end", "display", "input", "E<1", "a\\b", "{", "\"", "\\", "caf\xE9"}) {
        SCOPED_TRACE (label);
        Document document;
        document.network = std::make_unique<Network> ();
        Network& network = *document.network;
        Node& s = network.add_node (std::make_unique<Node> (0.F, 0.F, 13U, 3U, label));
        Node& p = network.add_node (std::make_unique<Node> (90.F, 0.F, 13U, 3U, "p"));
        Node& e = network.add_node (std::make_unique<Node> (45.F, 50.F, 9U, 3U, "e"));
        document::Arque* const r = s.connect (p, document::arc::reaction);
        r->set_label ("1 mM");
        r->set_residu ("5");
        e.connect (*r, document::arc::catalysis);
        s.set_user_data ("10 uM");
        e.set_user_data ("1 uM");
        s.set_calyx_display (true);
        document.duration = 1;
        const TemporaryFolder folder;
        const std::string net = (folder / "a.net").string ();
        const std::string model = (folder / "a.ssa").string ();
        std::string error;
        ASSERT_TRUE (save_document (document, net, error)) << error;
        ASSERT_TRUE (save_document (document, model, error)) << error;
        const auto checked = ostrand::testing::run_program ({"ostrand-tool", "check", net});
        EXPECT_EQ (checked.status, 0);
        EXPECT_EQ (checked.error, "");
        const std::string out = (folder / "d.gz").string ();
        const auto run = ostrand::testing::run_program ({"ostrand", "-a", model, "-out", out});
        EXPECT_EQ (run.status, 0) << run.error << ostrand::testing::file_text (model);
        EXPECT_THAT (ostrand::testing::unzipped_file (out),
                     HasSubstr ("\n" + model_name_text (*s.label ()) + "\n"));
        const auto model_checked = ostrand::testing::run_program ({"ostrand-tool", "check", model});
        EXPECT_EQ (model_checked.status, 0) << model_checked.error;
        Document back;
        ASSERT_EQ (open_document (model, {}, back), LoadStatus::loaded);
        EXPECT_TRUE (back.network->nodes ()[0]->label ()->equals (*s.label ()));
    }
}

} // namespace
} // namespace ostrand::files
