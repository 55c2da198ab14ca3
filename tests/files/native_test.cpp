// Native text: what is read and written, every message, and what survives a fault.
#include "files/native.h"

#include "document/markup.h"
#include "support/random_document.h"
#include "support/support.h"

#include <gtest/gtest.h>

namespace ostrand::files {
namespace {

using document::Arque;
using document::Network;
using testing::CaughtMessages;

std::vector<std::string> messages_of (const std::string& text, std::unique_ptr<Network>& network) {
    const CaughtMessages messages;
    network = read_native (text);
    return messages.all;
}

/// Reads text that must be without fault.
std::unique_ptr<Network> clean (const std::string& text) {
    std::unique_ptr<Network> network;
    EXPECT_EQ (messages_of (text, network), std::vector<std::string>{}) << text;
    return network;
}

const std::string two_nodes = "[S1 0 10 20 0 3 13{a}-][S2 0 110 20 0 3 13{b}-]";

TEST (NativeText, layout_of_a_written_file) {
    const auto network =
        clean ("[N3 1 2 8 9[C1 8 0 0 300 200.5 4{cell}{80:40+1+-2+3}]" + two_nodes +
               "[S3 0 60 60 9 247 9{E}{P}F.%;10 uM]"
               "[A4 #ff8000 272 3 1 2F{0.1}(2 -3.5){2}{1}{2}(1 0)][A5 0 32 2 3 4]]");
    EXPECT_EQ (write_native (*network), "# Lattrix: 1.2\n"
                                        "[N3 1 2 8 9\n"
                                        "[C1 8 0 0 300 200 4{cell}{80:40+1+-2+3}]\n"
                                        "[S2 1 10 20 0 3 13{a}-]\n"
                                        "[S3 0 110 20 0 3 13{b}-]\n"
                                        "[S4 1 60 60 0 247 9{E}{P}F.%;10 uM]\n"
                                        "[A5 #ff8000 272 3 2 3F{0.1}(2 -3.5){2}{1}{2}(1 0)]\n"
                                        "[A6 0 32 2 4 5{}{}]]\n");
}

TEST (NativeText, user_values_are_written_with_signs_as_they_come) {
    const auto network = clean ("[N0 1 2 8 8[C1 12 5 6 70 80 4-{1:+2+-3 4 -5}]]");
    EXPECT_EQ (network->comps ()[0]->user_values (), (std::array<int, 5>{1, 2, -3, 4, -5}));
    EXPECT_EQ (network->comps ()[0]->name (), "Comp1");
}

TEST (NativeText, empty_network) {
    const auto network = clean ("[N0 0 2 8 8]");
    EXPECT_TRUE (network->is_empty ());
    EXPECT_EQ (write_native (*network), "# Lattrix: 1.2\n[N0 0 2 8 8]\n");
}

TEST (NativeText, origin_may_be_missing) {
    const auto network = clean ("[N0 0 2]");
    EXPECT_EQ (network->x (), 0.0F);
    EXPECT_EQ (network->y (), 0.0F);
    EXPECT_EQ (clean ("[N0 0 2\n -5 7]")->x (), -5.0F);
}

TEST (NativeText, a_colour_survives_the_float) {
    const auto network = clean ("[N2 0 2 8 8" + two_nodes + "[A3 #ffffff 272 2 1 2{}{}]]");
    EXPECT_EQ (network->all_arcs ()[0]->color (), 0xFFFFFF00U);
}

TEST (NativeText, the_colour_of_a_node_comes_back_as_0) {
    const auto network = clean ("[N1 0 2 8 8[S1 0 1 2 #123456 9 13{a}-]]");
    EXPECT_EQ (network->nodes ()[0]->color (), 0U);
    EXPECT_EQ (network->nodes ()[0]->bg_color (), 9U);
}

TEST (NativeText, offsets_of_0_stay_out) {
    const auto network = clean ("[N2 0 2 8 8" + two_nodes + "[A3 0 272 2 1 2{k}(0 0){r}(0 2)]]");
    const std::string text = write_native (*network);
    EXPECT_NE (text.find ("{k}{r}(0 2)]"), std::string::npos) << text;
}

TEST (NativeText, an_arc_on_an_arc_with_a_higher_number_comes_last) {
    Network network;
    const auto add = [&network] (const char* name) -> document::Node& {
        return network.add_node (std::make_unique<document::Node> (9.0F, 9.0F, 9U, 3U, name));
    };
    document::Node& e = add ("e");
    document::Node& a = add ("a");
    document::Node& b = add ("b");
    Arque& reaction = *a.connect (b, document::arc::reaction);
    e.connect (reaction, document::arc::catalysis);
    b.connect (a, document::arc::reaction);
    const std::string text = write_native (network);
    EXPECT_NE (text.find ("\n[A5 0 272 2 2 3{}{}]\n[A6 0 272 2 3 2{}{}]\n[A4 0 32 2 1 5{}{}]]\n"),
               std::string::npos)
        << text;
    EXPECT_EQ (clean (text)->count_arcs (), 3);
}

TEST (NativeText, arcs_on_waiting_arcs_wait_as_well) {
    Network network;
    std::vector<document::Node*> n;
    for (int i = 0; i < 6; ++i) {
        n.push_back (
            &network.add_node (std::make_unique<document::Node> (9.0F, 9.0F, 9U, 3U, "n")));
    }
    Arque* last = n[5]->connect (*n[4], document::arc::reaction);
    for (int i = 4; i >= 0; --i) {
        last = n[static_cast<std::size_t> (i)]->connect (*last, document::arc::catalysis);
    }
    n[5]->connect (*last, document::arc::inhibition);
    const auto read = clean (write_native (network));
    EXPECT_EQ (read->count_arcs (), 7);
    const std::string second = write_native (*read);
    EXPECT_EQ (write_native (*clean (second)), second);
}

TEST (NativeText, arcs_of_a_nested_record_stand_in_the_outer_one) {
    const auto network = clean ("[N2 0 2 8 8[S1 0 50 50 0 3 9[N2 0 2 5 4[S2 0 7 7 0 0 9{x}-]"
                                "[S3 0 77 7 0 0 9{y}-]]-][S4 0 200 50 0 3 13{b}-]"
                                "[A5 0 272 2 2 3][A6 0 272 2 4 2{}{}]]");
    ASSERT_TRUE (network->nodes ()[0]->nested ());
    EXPECT_EQ (network->nodes ()[0]->nested ()->count_arcs (), 1);
    EXPECT_EQ (network->nodes ()[1]->nb_arcs (), 1);
    const std::string text = write_native (*network);
    EXPECT_EQ (text, "# Lattrix: 1.2\n[N2 0 2 8 8\n[S1 0 50 50 0 3 9\n\t[N2 0 2 5 4\n"
                     "\t\t[S2 1 7 7 0 0 9{x}-]\n\t\t[S3 0 77 7 0 0 9{y}-]]-]\n"
                     "[S5 1 200 50 0 3 13{b}-]\n[A4 0 272 2 2 3{}{}]\n[A6 0 272 2 5 2{}{}]]\n");
    EXPECT_EQ (write_native (*clean (text)), text);
}

TEST (NativeText, a_network_inside_a_line_keeps_its_own_arcs) {
    const auto network = clean ("[N1 0 2 8 8[S1 0 50 50 0 3 9{x[N2 0 2 5 4[S2 0 7 7 0 0 9{x}-]"
                                "[S3 0 77 7 0 0 9{y}-][A4 0 272 2 2 3]]}-]]");
    const std::string text = write_native (*network);
    EXPECT_NE (text.find ("[A4 0 272 2 2 3{}{}]]}-]]"), std::string::npos) << text;
    EXPECT_EQ (write_native (*clean (text)), text);
}

TEST (NativeText, user_data_may_be_a_space_and_is_none_when_empty) {
    const auto network = clean ("[N2 0 2 8 8[S1 0 10 10 0 7 13-- ][S2 0 10 10 0 7 13--]]");
    EXPECT_FALSE (network->nodes ()[0]->label ());
    EXPECT_FALSE (network->nodes ()[0]->residu ());
    EXPECT_EQ (*network->nodes ()[0]->user_data (), " ");
    EXPECT_FALSE (network->nodes ()[1]->user_data ());
}

TEST (NativeText, user_data_cannot_be_taken_for_flags_nor_end_the_record) {
    auto network = clean ("[N1 0 2 8 8[S1 0 10 10 0 7 13{a}-]]");
    network->nodes ()[0]->set_user_data (".5 uM]");
    auto read = clean (write_native (*network));
    EXPECT_TRUE (read->nodes ()[0]->selectable ());
    EXPECT_EQ (*read->nodes ()[0]->user_data (), " .5 uM");
}

TEST (NativeText, old_groups_behind_a_dollar_are_skipped) {
    const auto network = clean ("[N1 0 2 8 8[S1 0 10 10 0 7 13{a}-%$1 2}${x]}5 mM]]");
    EXPECT_TRUE (network->nodes ()[0]->calyx_display ());
    EXPECT_EQ (*network->nodes ()[0]->user_data (), "5 mM");
}

TEST (NativeText, the_species_on_several_planes_is_remembered_by_name) {
    const auto network = clean ("[N2 0 2 8 8[S1 0 10 10 0 7 13{a b}-;][S2 0 10 10 0 7 13{a b}-]]");
    EXPECT_TRUE (network->nodes ()[0]->multi_conc ());
    EXPECT_FALSE (network->nodes ()[1]->multi_conc ());
    EXPECT_EQ (network->multi_name (), "a\\ b");
    const std::string text = write_native (*network);
    EXPECT_NE (text.find ("[S2 0 10 10 0 7 13{a b}-;]"), std::string::npos) << text;
    EXPECT_FALSE (network->nodes ()[1]->multi_conc ()); // writing changes nothing
}

TEST (NativeText, stoichiometry_of_the_destination_alone_keeps_its_place) {
    auto network = clean ("[N2 0 2 8 8" + two_nodes + "[A3 0 272 2 1 2{}{}{}{2}]]");
    Arque& arc = *network->all_arcs ()[0];
    ASSERT_TRUE (arc.stoech_src ()); // "{}" is a line here
    EXPECT_TRUE (arc.stoech_src ()->is_empty ());
    EXPECT_FALSE (arc.label ());
    arc.take_stoech_src (nullptr);
    const auto read = clean (write_native (*network));
    EXPECT_EQ (read->all_arcs ()[0]->stoech_dest ()->chars_only (), "2");
}

TEST (NativeText, an_empty_stoichiometry_keeps_its_offset) {
    const std::string fields = "{}{}{}(1 -2){}(0.5 0)]";
    const auto network =
        clean ("[N2 0 2 8 8" + two_nodes + "[A3 0 272 2 1 2{}(3 4){}(5 6){}(1 -2){}(0.5 0)]]");
    const Arque& arc = *network->all_arcs ()[0];
    EXPECT_FALSE (arc.label () || arc.residu ()); // "{}" is none for these
    EXPECT_EQ (arc.stoech_src ()->y (), -2);
    const std::string written = write_native (*network);
    EXPECT_NE (written.find (fields), std::string::npos) << written;
    EXPECT_EQ (write_native (*clean (written)), written);
}

TEST (NativeText, fog_reaches_the_texts) {
    const auto network = clean ("[N2 0 2 8 8[S1 0 10 10 0 7 13{a}{b}F]" + two_nodes.substr (23) +
                                "[A3 0 272 2 1 2F{k}{r}{1}]]");
    EXPECT_TRUE (network->nodes ()[0]->label ()->foggy ());
    EXPECT_TRUE (network->nodes ()[0]->residu ()->foggy ());
    const Arque& arc = *network->all_arcs ()[0];
    EXPECT_TRUE (arc.foggy () && arc.label ()->foggy () && arc.residu ()->foggy () &&
                 arc.stoech_src ()->foggy ());
}

TEST (NativeText, links_of_version_1_0_are_turned_round) {
    const std::string body = "[N3 0 2 8 8" + two_nodes +
                             "[S3 0 60 60 0 3 13{c}-][A4 0 272 2 1 2][A5 0 1024 2 3 4]"
                             "[A6 0 1040 2 3 4][A7 0 513 2 3 4][A8 0 529 2 3 4][A9 0 1041 2 3 4]"
                             "[A10 0 32 2 3 4]]";
    const auto types = [] (const Network& network) {
        std::vector<unsigned> all;
        for (const auto& a : network.nodes ()[2]->arcs ()) all.push_back (a->type ());
        return all;
    };
    std::unique_ptr<Network> network;
    EXPECT_EQ (
        messages_of ("# Lattrix: 1\n" + body, network),
        std::vector<std::string>{"Old file version (1) you are advised to save this network."});
    EXPECT_EQ (types (*network), (std::vector<unsigned>{0x200, 0x200, 0x401, 0x411, 0x211, 0x20}));
    EXPECT_EQ (messages_of ("# Lattrix: 1.1\n" + body, network).size (), 1U);
    EXPECT_EQ (types (*network), (std::vector<unsigned>{0x400, 0x410, 0x201, 0x211, 0x411, 0x20}));
}

TEST (NativeText, compartments_hold_the_nodes_behind_them) {
    const auto network = clean ("[N2 2 2 8 8[S1 0 10 10 0 7 13{a}-][C2 8 0 0 90 90 4{x}]"
                                "[C3 8 0 0 90 90 4{y}][S4 0 20 20 0 7 13{b}-]]");
    EXPECT_EQ (network->nodes ()[0]->compart (), nullptr);
    EXPECT_EQ (network->nodes ()[1]->compart (), network->comps ()[0].get ());
}

TEST (NativeText, numbers_that_would_need_an_exponent_are_written_in_full) {
    auto network = clean ("[N2 0 2 8 8" + two_nodes + "[A3 0 272 2 1 2{k}]]");
    network->nodes ()[0]->set_position (0.00001234567F, -123456789.0F);
    network->all_arcs ()[0]->label_line ()->set_offset (-1e-7F, 0);
    const std::string text = write_native (*network);
    EXPECT_NE (text.find ("[S1 1 0.0000123457 -123457000 0 3"), std::string::npos) << text;
    EXPECT_NE (text.find ("{k}(-0.0000001 0)"), std::string::npos) << text;
    EXPECT_EQ (write_native (*clean (text)), text);
}

// Every message, and what survives.

TEST (NativeFault, unknown_byte_ends_reading) {
    std::unique_ptr<Network> network;
    EXPECT_EQ (
        messages_of ("[N2 0 2 8 8" + two_nodes.substr (0, 23) + "x[S2 0 1 1 0 3 13{b}-]]", network),
        std::vector<std::string>{"Format error: s-10 = ' 3 13{a}-]x[S2 0 1 1 0 3 13{b}'"});
    EXPECT_EQ (network->nb_nodes (), 1);
}

TEST (NativeFault, text_of_ten_bytes_before_is_padded_to_thirty) {
    std::unique_ptr<Network> network;
    EXPECT_EQ (messages_of ("[N0 0 2 8 8", network),
               std::vector<std::string>{"Format error: s-10 = '                    N0 0 2 8 8'"});
    EXPECT_EQ (messages_of ("[N0 0}", network),
               std::vector<std::string>{"Format error: s-10 = '                        [N0 0}'"});
}

TEST (NativeFault, geometry_of_a_compartment_with_fewer_numbers) {
    std::unique_ptr<Network> network;
    EXPECT_EQ (messages_of ("[N0 2 2 8 8[C1 8 0 0 9 9 4{c}{80:40+0}][C2 8 0 0 9 9 4{d}]]", network),
               std::vector<std::string>{"Compartment geometry format error: '80:40+0}]["});
    EXPECT_EQ (network->nb_comp (), 2);
    EXPECT_EQ (messages_of ("[N0 1 2 8 8[C1 8 0 0 9 9 4{c}{a}]]", network),
               std::vector<std::string>{"Compartment geometry format error: '      a}]]"});
}

TEST (NativeFault, duplicated_node_takes_a_number_of_its_own) {
    std::unique_ptr<Network> network;
    EXPECT_EQ (messages_of ("[N3 0 2 8 8[S7 0 1 1 0 3 13{a}-][S7 0 1 1 0 3 13{b}-]"
                            "[S7 0 1 1 0 3 13{c}-][A8 0 272 2 7 7]]",
                            network),
               (std::vector<std::string>{"Node with duplicated: 7.", "Node with duplicated: 7."}));
    EXPECT_EQ (network->nodes ()[1]->id (), 10000);
    EXPECT_EQ (network->nodes ()[2]->id (), 10001);
    EXPECT_EQ (network->nodes ()[0]->nb_arcs (), 1);
}

TEST (NativeFault, unknown_ends_of_an_arc_end_reading) {
    std::unique_ptr<Network> network;
    EXPECT_EQ (messages_of ("[N2 0 2 8 8" + two_nodes +
                                "[A3 0 272 2 1 2][A4 0 272 2 9 2]"
                                "[A5 0 272 2 2 1]]",
                            network),
               std::vector<std::string>{"arc(4): unknown source node id: 9."});
    EXPECT_EQ (network->count_arcs (), 1);
    EXPECT_EQ (messages_of ("[N2 0 2 8 8" + two_nodes + "[A3 0 272 2 1 99]]", network),
               std::vector<std::string>{"arc(3): unknown destination id: 99."});
    EXPECT_EQ (network->nb_nodes (), 2);
}

TEST (NativeFault, an_arc_that_no_node_begins_is_skipped) {
    std::unique_ptr<Network> network;
    EXPECT_EQ (messages_of ("[N2 0 2 8 8" + two_nodes +
                                "[A3 0 272 2 1 2][A4 0 32 2 3 1{x}][A5 0 272 2 2 1]]",
                            network),
               std::vector<std::string>{"format error in arc #4 from 3 to 1."});
    EXPECT_EQ (network->count_arcs (), 2);
}

TEST (NativeFault, offsets_that_are_not_closed) {
    const auto fault = [] (const std::string& fields) {
        std::unique_ptr<Network> network;
        const auto messages = messages_of (
            "[N2 0 2 8 8" + two_nodes + "[A3 9 272 5 1 2" + fields + "][A4 0 272 2 2 1]]", network);
        EXPECT_EQ (network->count_arcs (), 2);
        EXPECT_EQ (network->all_arcs ()[0]->color (), 9U);
        EXPECT_EQ (network->all_arcs ()[0]->thickness (), 5);
        return messages.size () == 1 ? messages[0] : "not one message";
    };
    EXPECT_EQ (fault ("{a}(1 2{b}"), "format error in label offset (arc #3).");
    EXPECT_EQ (fault ("{a}{b}(1 2"), "format error in residu offset (arc #3).");
    EXPECT_EQ (fault ("{}{}{1}(x"), "format error in src stoech offset (arc #3).");
    EXPECT_EQ (fault ("{}{}{1}{2}(1 2 3)"), "format error in dest stoech offset (arc #3).");
}

TEST (NativeFault, wrong_number_of_nodes) {
    std::unique_ptr<Network> network;
    EXPECT_EQ (messages_of ("[N5 0 2 8 8" + two_nodes + "]", network),
               std::vector<std::string>{"Wrong number of nodes: 5 in header, 2 specified."});
    EXPECT_EQ (messages_of ("[N1 0 2 8 8" + two_nodes + "]", network),
               std::vector<std::string>{"Wrong number of nodes: 1 in header, 2 specified."});
    EXPECT_EQ (network->nb_nodes (), 2);
    EXPECT_EQ (messages_of ("[N2000000000 2000000000 2 8 8]", network).size (), 1U);
}

TEST (NativeFault, a_text_that_is_no_network) {
    std::unique_ptr<Network> network;
    EXPECT_EQ (messages_of ("# a comment\n{a line}", network),
               std::vector<std::string>{"The file holds no network."});
    EXPECT_FALSE (network);
    EXPECT_EQ (messages_of ("[U1: 2 3 4]", network).size (), 1U);
    EXPECT_FALSE (network);
}

TEST (NativeFault, an_unknown_record_is_a_format_error) {
    std::unique_ptr<Network> network;
    EXPECT_EQ (messages_of ("[N0 0 2 8 8[X1]]", network),
               std::vector<std::string>{"Format error: s-10 = '                0 0 2 8 8[X1]]'"});
}

TEST (NativeText, first_lines_that_are_taken) {
    EXPECT_TRUE (is_native_text ("# anything"));
    EXPECT_TRUE (is_native_text ("[N1 2 3 4 5"));
    EXPECT_TRUE (is_native_text ("[N-1 2 3"));
    EXPECT_FALSE (is_native_text ("[N1 2"));
    EXPECT_FALSE (is_native_text ("[N1\n2 3"));
    EXPECT_TRUE (is_native_text ("[U1: 2 3 4]"));
    EXPECT_FALSE (is_native_text ("[U1: 2 3"));
    EXPECT_FALSE (is_native_text ("<xml>"));
    EXPECT_FALSE (is_native_text (""));
}

// Writing and reading again.

TEST (NativeText, what_was_written_reads_back_to_the_same_text) {
    for (std::uint32_t seed = 0; seed < 300; ++seed) {
        testing::RandomDocumentOptions options;
        options.settled = true;
        const auto network = testing::RandomDocument (seed, options).network ();
        network->layout ();
        const std::string first = write_native (*network);
        ASSERT_EQ (write_native (*clean (first)), first) << seed;
    }
}

TEST (NativeText, held_back_arcs_settle_with_the_second_writing) {
    for (std::uint32_t seed = 0; seed < 300; ++seed) {
        const auto network = testing::RandomDocument (seed).network ();
        network->layout ();
        const auto first = clean (write_native (*network));
        ASSERT_EQ (first->count_arcs (), network->count_arcs ());
        const std::string second = write_native (*first);
        ASSERT_EQ (write_native (*clean (second)), second) << seed;
    }
}

TEST (NativeText, every_front_of_a_file_is_read_without_harm) {
    const auto network = testing::RandomDocument (7).network ();
    const std::string text = write_native (*network);
    for (std::size_t cut = 0; cut < text.size (); cut += 3) {
        const CaughtMessages messages;
        const auto read = read_native (text.substr (0, cut));
        if (read) write_native (*read);
    }
}

TEST (NativeText, damaged_bytes_are_read_without_harm) {
    testing::Dice dice (99);
    const std::string text = write_native (*testing::RandomDocument (3).network ());
    for (int round = 0; round < 500; ++round) {
        std::string damaged = text;
        for (int i = 0; i < 4; ++i) {
            const auto at = static_cast<std::size_t> (dice.below (static_cast<int> (text.size ())));
            damaged[at] = "[]{}<>_^()-0123456789NSACEPF#\\ \n"[dice.below (32)];
        }
        const CaughtMessages messages;
        const auto read = read_native (damaged);
        if (!read) continue;
        const std::string second = write_native (*read);
        const auto again = read_native (second);
        ASSERT_TRUE (again) << second;
    }
}

TEST (NativeText, ids_are_found_as_a_search_would_find_them) {
    // The same numbers everywhere: each arc must end where the first object of that number stands.
    for (std::uint32_t seed = 0; seed < 40; ++seed) {
        testing::Dice dice (seed);
        std::string text = "[N8 0 2 8 8";
        const auto number = [&dice] { return std::to_string (1 + dice.below (12)); };
        for (int i = 0; i < 8; ++i) {
            const bool nested = dice.one_in (3);
            text += "[S" + number () + " 0 9 9 0 3 9" +
                    (nested ? "[N1 1 2[C" + number () + " 8 0 0 9 9 4{c}][S" + number () +
                                  " 0 0 0 0 3 9{x}-]]"
                            : std::string ("{a}")) +
                    "-]";
        }
        const CaughtMessages messages;
        for (int i = 0; i < 12; ++i) {
            const auto before = read_native (text + "]");
            const std::string from = number ();
            const std::string to = number ();
            const document::GraphBase* source = before->find_by_id (std::stoi (from));
            const document::GraphBase* dest = before->find_by_id (std::stoi (to));
            if (source == nullptr || dest == nullptr) continue;
            if (source->kind () != document::CharKind::node) continue;
            const std::string record = "[A77 0 272 2 " + from + " " + to + "]";
            const auto after = read_native (text + record + "]");
            const document::GraphBase* again = after->find_by_id (std::stoi (from));
            ASSERT_EQ (static_cast<const document::Node&> (*again).nb_arcs (),
                       static_cast<const document::Node&> (*source).nb_arcs () + 1);
            text += "[A" + number () + record.substr (4);
        }
    }
}

TEST (NativeText, a_hub_of_all_arcs_loads_and_takes_them_with_it) {
    std::string text = "[N3001 0 2 8 8[S1 0 9 9 0 3 13{hub}-]";
    for (int i = 2; i <= 3001; ++i) text += "[S" + std::to_string (i) + " 0 9 9 0 3 13{n}-]";
    for (int i = 2; i <= 3001; ++i) {
        text += "[A" + std::to_string (3000 + i) + " 0 272 2 1 " + std::to_string (i) + "]";
    }
    const std::unique_ptr<Network> network = read_native (text + ']');
    EXPECT_EQ (network->count_arcs (), 3000);
    network->nodes ()[0]->destroy ();
    EXPECT_EQ (network->count_arcs (), 0);
}

TEST (NativeText, arcs_may_end_on_a_nested_network) {
    std::string text = "[N2 0 2 8 8[S1 0 9 9 0 3 9[N50 0 2";
    for (int i = 3; i < 53; ++i) text += "[S" + std::to_string (i) + " 0 9 9 0 3 13{n}-]";
    text += "]-][S2 0 900 9 0 3 13{m}-]";
    for (int i = 600; i < 700; ++i) text += "[A" + std::to_string (i) + " 0 272 2 2 1]";
    EXPECT_EQ (read_native (text + ']')->count_arcs (), 100);
}

TEST (NativeText, a_network_in_the_name_of_a_compartment_goes_with_it) {
    // Its arcs end on each other from network to network; what they ask is answered to the end.
    const CaughtMessages messages;
    std::unique_ptr<Network> network =
        read_native (testing::source_file ("fuzz/seeds/native/network_in_a_compartments_name.net"));
    ASSERT_NE (network, nullptr);
    EXPECT_EQ (network->nb_comp (), 1);
    network.reset ();
}

} // namespace
} // namespace ostrand::files
