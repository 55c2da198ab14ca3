// Undo files that a process left behind.
#include "bench.h"

#include "base/file_lock.h"
#include "editor/history.h"

#include "support/full_disk.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace ostrand::editor {
namespace {

using test::Bench;
using Strings = std::vector<std::string>;
namespace fs = std::filesystem;

/// The bytes of a short session with a record of each type, where each record ends, and the text of
/// the document there.
struct Session {
    std::string bytes;
    std::vector<std::size_t> ends;
    Strings texts;

    Session () {
        Bench b;
        const auto note = [&] {
            const auto end = static_cast<std::size_t> (b.canvas ().history ().end ());
            if (!ends.empty () && ends.back () == end) return;
            ends.push_back (end);
            texts.push_back (b.text ());
        };
        b.open_text ("[N2 0 2 8 8\n[S1 0 90 60 0 3 13{a}-]\n[S2 0 250 60 0 3 9{b}-]\n]");
        note ();
        b.click (b.on (b.node ("a")));
        note ();
        b.key (document::keys::right);
        note ();
        b.world.popup_answers = {5, 1};
        b.click (b.on (b.node ("b")), 3);
        note ();
        b.click (b.on (b.node ("b"), test::ctrl), 3);
        note ();
        b.click (b.on_letter (b.node ("a"), 0));
        b.type ("x");
        note ();
        b.run (Command::new_gene);
        note ();
        b.click (b.on (b.node ("gene")));
        note ();
        bytes = b.undo_bytes ();
    }
};

void put (const std::string& path, std::string_view bytes) {
    std::ofstream (path, std::ios::binary) << bytes;
}

std::string name_of (const Bench& b, int number) {
    return b.home () + "/.kill_stack_" + std::to_string (number) + ".dat";
}

TEST (recovery, a_history_cut_at_any_byte_gives_the_last_whole_record) {
    const Session session;
    ASSERT_EQ (session.bytes.size (), session.ends.back ());
    ASSERT_EQ (session.ends.size (), 8U);
    Bench b;
    const std::string path = name_of (b, 7);
    for (std::size_t kept = 0; kept <= session.bytes.size (); ++kept) {
        put (path, std::string_view (session.bytes).substr (0, kept));
        std::vector<Leftover> found = find_leftovers (b.home ());
        if (kept < session.ends.front ()) {
            EXPECT_TRUE (found.empty ()) << kept;
            continue;
        }
        ASSERT_EQ (found.size (), 1U) << kept;
        std::size_t whole = 0;
        while (whole + 1 < session.ends.size () && session.ends[whole + 1] <= kept) ++whole;
        EXPECT_EQ (found[0].damaged, kept != session.ends[whole]) << kept;
        b.bench->restore (std::move (found), false);
        Canvas& restored = b.bench->tabs ().at (b.bench->tabs ().count () - 1);
        EXPECT_EQ (restored.text_without_view (), session.texts[whole]) << kept;
        EXPECT_TRUE (restored.modified ());
        // The whole way back is there.
        if (whole > 0) {
            restored.undo ();
            EXPECT_EQ (restored.text_without_view (), session.texts[whole - 1]) << kept;
        }
        b.world.yes_no_answers = {true};
        b.bench->close_tab (b.bench->tabs ().count () - 1);
        EXPECT_FALSE (fs::exists (path));
    }
}

TEST (recovery, any_damaged_byte_ends_the_history_there_at_most) {
    const Session session;
    Bench b;
    const std::string path = name_of (b, 7);
    for (std::size_t at = 0; at < session.bytes.size (); ++at) {
        std::string bytes = session.bytes;
        bytes[at] = static_cast<char> (bytes[at] ^ (at % 3 == 0   ? 0xFF
                                                    : at % 3 == 1 ? 0x01
                                                                  : 0x80));
        put (path, bytes);
        std::vector<Leftover> found = find_leftovers (b.home ());
        if (found.empty ()) {
            EXPECT_LT (at, session.ends.front ());
            continue;
        }
        b.bench->restore (std::move (found), false);
        if (b.bench->tabs ().count () > 1) {
            Canvas& restored = b.bench->tabs ().at (1);
            for (int i = 0; i < 10; ++i) restored.undo ();
            for (int i = 0; i < 10; ++i) restored.redo ();
            b.world.yes_no_answers = {true};
            b.bench->close_tab (1);
        }
        fs::remove (path);
    }
}

TEST (recovery, noise_is_not_read_and_not_touched) {
    Bench b;
    std::string noise;
    for (int i = 0; i < 5000; ++i) noise += static_cast<char> (i * 7919 % 251);
    put (name_of (b, 3), noise);
    put (name_of (b, 4), "");
    fs::create_directory (name_of (b, 5));
    fs::create_symlink (b.home () + "/nowhere", name_of (b, 6));
    ASSERT_EQ (mkfifo (name_of (b, 7).c_str (), 0600), 0);
    put (b.home () + "/.kill_stack_x.dat", "x");
    put (b.home () + "/.kill_stack_08.dat", noise);
    EXPECT_TRUE (find_leftovers (b.home ()).empty ());
    recover (*b.bench, RecoveryMode::restore_all, false);
    EXPECT_EQ (b.bench->tabs ().count (), 1);
    EXPECT_EQ (testing::file_text (name_of (b, 3)), noise);
    // New canvases go round all of them.
    for (int i = 0; i < 9; ++i) b.run (Command::new_tab);
    EXPECT_EQ (testing::file_text (name_of (b, 3)), noise);
    EXPECT_EQ (fs::file_size (name_of (b, 4)), 0U);
    EXPECT_TRUE (fs::is_symlink (name_of (b, 6)));
    EXPECT_TRUE (fs::exists (name_of (b, 8)));
}

TEST (recovery, what_a_running_editor_holds_is_not_found_and_not_changed) {
    Bench b;
    b.open_rich ();
    const std::string bytes = b.undo_bytes ();
    EXPECT_TRUE (find_leftovers (b.home ()).empty ());
    const auto next = b.another ();
    recover (*next, RecoveryMode::restore_all, false);
    EXPECT_EQ (next->tabs ().count (), 1);
    EXPECT_EQ (next->current ().history ().file ().path (), name_of (b, 1));
    next->close_all ();
    EXPECT_EQ (b.undo_bytes (), bytes);
    EXPECT_TRUE (fs::exists (name_of (b, 0)));
}

TEST (recovery, of_two_that_look_at_once_only_one_gets_it) {
    const Session session;
    Bench b;
    put (name_of (b, 7), session.bytes);
    const std::vector<Leftover> first = find_leftovers (b.home ());
    EXPECT_EQ (first.size (), 1U);
    EXPECT_TRUE (find_leftovers (b.home ()).empty ());
}

TEST (recovery, the_question_names_the_documents_and_later_loses_nothing) {
    const Session session;
    Bench b;
    put (name_of (b, 7), session.bytes);
    b.world.recovery_answer = RecoveryAnswer::later;
    recover (*b.bench, RecoveryMode::ask, false);
    ASSERT_EQ (b.world.offered.size (), 1U);
    EXPECT_TRUE (b.world.offered[0].name.ends_with ("/start.net"));
    EXPECT_GT (b.world.offered[0].time, 1700000000);
    EXPECT_EQ (b.bench->tabs ().count (), 1);
    EXPECT_EQ (testing::file_text (name_of (b, 7)), session.bytes);
    b.bench->close_all (); // leaving deletes nothing either
    EXPECT_EQ (testing::file_text (name_of (b, 7)), session.bytes);
}

TEST (recovery, delete_deletes_and_no_restore_asks_nothing) {
    const Session session;
    Bench b;
    put (name_of (b, 7), session.bytes);
    recover (*b.bench, RecoveryMode::leave_all, false);
    EXPECT_TRUE (b.world.offered.empty ());
    b.world.recovery_answer = RecoveryAnswer::remove;
    recover (*b.bench, RecoveryMode::ask, false);
    EXPECT_FALSE (fs::exists (name_of (b, 7)));
}

TEST (recovery, a_restored_tab_takes_the_place_of_the_empty_one_and_has_name_and_star) {
    const Session session;
    Bench b;
    put (name_of (b, 7), session.bytes);
    recover (*b.bench, RecoveryMode::restore_all, false);
    ASSERT_EQ (b.bench->tabs ().count (), 1);
    EXPECT_EQ (b.bench->tab_label (0), "start.net*");
    EXPECT_EQ (b.text (), session.texts.back ());
    EXPECT_EQ (b.world.status, "1 restored");
    EXPECT_FALSE (fs::exists (name_of (b, 0))); // the empty tab's
}

TEST (recovery, files_of_the_command_line_stay_on_top) {
    const Session session;
    Bench b;
    b.folder.write ("mine.net", "[N1 0 2 8 8\n[S1 0 50 60 0 3 13{mine}-]\n]");
    b.bench->open_command_line ({"mine.net"});
    put (name_of (b, 7), session.bytes);
    put (name_of (b, 9), session.bytes);
    recover (*b.bench, RecoveryMode::restore_all, true);
    ASSERT_EQ (b.bench->tabs ().count (), 3);
    EXPECT_EQ (b.bench->tabs ().active (), 0);
    EXPECT_EQ (b.bench->window_title (), "mine.net");
    EXPECT_EQ (b.world.status, "2 restored");
}

TEST (recovery, a_restored_tab_goes_on_in_its_history) {
    const Session session;
    Bench b;
    put (name_of (b, 7), session.bytes);
    recover (*b.bench, RecoveryMode::restore_all, false);
    b.run (Command::new_protein);
    const std::string now = b.text ();
    EXPECT_TRUE (b.undo_bytes ().starts_with (session.bytes));
    b.canvas ().keep_history (); // the process dies
    b.bench->close_all ();
    const auto next = b.another ();
    recover (*next, RecoveryMode::restore_all, false);
    EXPECT_EQ (next->current ().text_without_view (), now);
    next->current ().undo ();
    EXPECT_EQ (next->current ().text_without_view (), session.texts.back ());
    next->close_all ();
}

TEST (recovery, damage_is_told) {
    const Session session;
    Bench b;
    put (name_of (b, 7), session.bytes + "rest");
    recover (*b.bench, RecoveryMode::restore_all, false);
    EXPECT_EQ (b.world.status, "1 restored, 1 of them up to a damaged record");
}

TEST (recovery, more_than_32_stay_for_another_time) {
    const Session session;
    Bench b;
    for (int i = 40; i < 75; ++i) put (name_of (b, i), session.bytes);
    recover (*b.bench, RecoveryMode::restore_all, false);
    EXPECT_EQ (b.bench->tabs ().count (), 31); // the first was there while they came
    for (const int left : {71, 72, 73, 74})
        EXPECT_EQ (testing::file_text (name_of (b, left)), session.bytes) << left;
}

TEST (full_disk, editing_goes_on_and_undo_works_and_the_file_ends_behind_a_whole_record) {
    Bench b;
    b.open_rich ();
    Strings texts{b.text ()};
    const std::size_t begun = b.undo_bytes ().size ();
    {
        const testing::FileSizeLimit full (begun + 100);
        for (int i = 0; i < 4; ++i) {
            b.run (Command::new_gene);
            texts.push_back (b.text ());
            EXPECT_EQ (b.undo_bytes ().size (), begun);
            EXPECT_TRUE (b.world.status.starts_with ("The undo file cannot be written: "));
        }
        EXPECT_TRUE (b.world.alerts.empty ());
        for (std::size_t i = texts.size () - 1; i > 0; --i) {
            b.canvas ().undo ();
            EXPECT_EQ (b.text (), texts[i - 1]);
        }
        for (std::size_t i = 1; i < texts.size (); ++i) {
            b.canvas ().redo ();
            EXPECT_EQ (b.text (), texts[i]);
        }
        b.canvas ().undo ();
    }
    // There is room again.
    b.run (Command::new_protein);
    EXPECT_EQ (b.undo_bytes ().size (), static_cast<std::size_t> (b.canvas ().history ().end ()));
    const std::string now = b.text ();
    b.canvas ().keep_history ();
    b.bench->close_all ();
    const auto next = b.another ();
    recover (*next, RecoveryMode::restore_all, false);
    EXPECT_EQ (next->current ().text_without_view (), now);
    next->close_all ();
}

TEST (full_disk, small_records_wait_too) {
    Bench b;
    b.open_rich ();
    b.click (b.on (b.node ("G")));
    const std::size_t begun = b.undo_bytes ().size ();
    {
        const testing::FileSizeLimit full (begun + 10);
        for (int i = 0; i < 5; ++i) b.key (document::keys::right);
        EXPECT_EQ (b.undo_bytes ().size (), begun);
        b.canvas ().undo ();
        EXPECT_EQ (b.node ("G").x (), 104);
        b.key (document::keys::left); // cuts off what was undone
        EXPECT_EQ (b.node ("G").x (), 103);
    }
    b.key (document::keys::left);
    EXPECT_EQ (b.node ("G").x (), 102);
    EXPECT_EQ (b.undo_bytes ().size (), begun + 6 * 24);
    EXPECT_EQ (b.undo_and_redo (), "");
}

TEST (full_disk, saving_into_it_fails_and_keeps_the_old_file_and_the_star) {
    Bench b;
    b.open_rich ();
    b.run (Command::new_gene);
    const std::string path = (b.folder / "rich.net").string ();
    const std::string before = testing::file_text (path);
    {
        const testing::FileSizeLimit full (20);
        b.run (Command::save_file);
    }
    EXPECT_EQ (b.world.status, "Cannot save '" + path + "'");
    EXPECT_EQ (testing::file_text (path), before);
    EXPECT_EQ (b.bench->window_title (), "rich.net*");
    b.run (Command::save_file);
    EXPECT_EQ (b.bench->window_title (), "rich.net");
}

} // namespace
} // namespace ostrand::editor
