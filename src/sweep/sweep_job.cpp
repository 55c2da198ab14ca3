// Sweeps from model to result.
#include "sweep/sweep_job.h"

#include "base/disk.h"
#include "base/report.h"
#include "sweep/sweep_result.h"

#include <system_error>
#include <utility>

namespace ostrand::sweep {
namespace {

namespace fs = std::filesystem;

/// A journal can lie beside it: it is a file, or nothing yet.
bool is_plain_output (const std::string& out) {
    if (out == "-") return false;
    std::error_code error;
    const fs::file_status status = fs::status (end_of_links (out), error);
    return status.type () == fs::file_type::regular || status.type () == fs::file_type::not_found;
}

std::string in_quotes (const fs::path& path) { return "'" + path.string () + "'"; }

} // namespace

fs::path journal_path (const fs::path& out) {
    fs::path path = end_of_links (out);
    path += ".sweep";
    return path;
}

SweepJob::SweepJob (SweepRequest request) : request_ (std::move (request)) {}

SweepJob::~SweepJob () {
    // A journal with nothing in it helps nobody.
    if (begun_ && kept_ && journal_->is_empty ()) journal_->remove ();
}

Outcome SweepJob::read_model (const std::stop_token& stop) {
    Input input = read_input (request_.model, {.text_mode = true, .stop = stop});
    if (input.end == ReadEnd::stopped) return Outcome::stop ();
    if (input.end == ReadEnd::too_large) return Outcome::failure (input.fault);
    if (!input.whole ()) return Outcome::failure ("Cannot open '" + request_.model + "'");
    model_text_ = std::move (input.bytes);
    std::string fault;
    {
        const MessageScope listening ([&fault] (std::string_view text) { fault = text; });
        plan_ = SweepPlan::read (model_text_, request_.choice, fault);
    }
    return plan_ ? Outcome::success () : Outcome::failure (request_.model + ": " + fault);
}

Outcome SweepJob::open (const std::stop_token& stop) {
    if (Outcome outcome = read_model (stop); !outcome.done ()) return outcome;
    const bool plain = is_plain_output (request_.out);
    if (plain) {
        // That the result cannot be written should be known before hours of work.
        const OutputFile trial (request_.out);
        if (!trial.ok ()) return output_failure (trial, request_.out);
    } else if (std::error_code error; fs::is_directory (request_.out, error)) {
        return Outcome::failure ("Cannot write '" + request_.out + "': it is a folder");
    } else if (request_.resume) {
        return Outcome::failure (
            "--resume needs an output that is a file; nothing is kept beside '" + request_.out +
            "'");
    }
    journal_ =
        plain ? std::make_unique<Journal> (journal_path (request_.out)) : Journal::temporary ();
    ledger_ = std::make_unique<Ledger> (plan_->identity (), plan_->units ());
    return open_journal ();
}

Outcome SweepJob::open_journal () {
    const std::string name = in_quotes (journal_->path ());
    switch (journal_->standing ()) {
    case Journal::Standing::failed:
        return Outcome::failure ("Cannot write " + name + ": " + journal_->error ());
    case Journal::Standing::busy: return Outcome::failure ("another sweep is working on " + name);
    case Journal::Standing::foreign:
        return Outcome::failure (name + " is in the way: it is no unfinished sweep");
    case Journal::Standing::leftover:
        if (request_.resume) return resume ();
        report_message ("%s holds an unfinished sweep, which --resume would have gone on with; "
                        "beginning anew",
                        name.c_str ());
        journal_->replay ([this] (RecordKind kind, std::string_view content, const RecordPlace&) {
            return kind != RecordKind::result || enter (kind, content, {});
        });
        remove_unfinished ();
        break;
    case Journal::Standing::fresh: break;
    }
    begun_ = kept_ = true;
    if (!journal_->begin (plan_->identity ())) {
        return Outcome::failure ("Cannot write " + name + ": " + journal_->error ());
    }
    return Outcome::success ();
}

Outcome SweepJob::resume () {
    const std::string name = in_quotes (journal_->path ());
    const SweepIdentity& leftover = *journal_->identity ();
    std::string why = difference (leftover, plan_->identity ());
    if (why.empty ()) {
        why = difference_of_shards (leftover.choice.shard, plan_->identity ().choice.shard);
    }
    if (!why.empty ()) {
        return Outcome::failure ("cannot go on with " + name + ": " + why);
    }
    const bool replayed = journal_->replay (
        [this] (RecordKind kind, std::string_view content, const RecordPlace& place) {
            return enter (kind, content, place);
        });
    if (!replayed) {
        return Outcome::failure ("cannot go on with " + name + ": " + journal_->error ());
    }
    begun_ = kept_ = true;
    remove_unfinished ();
    return Outcome::success ();
}

bool SweepJob::enter (RecordKind kind, std::string_view content, const RecordPlace& place) {
    if (kind == RecordKind::series) {
        const std::optional<SeriesRecord> record = SeriesRecord::from_bytes (content);
        return record && ledger_->enter_series (*record, place);
    }
    if (kind == RecordKind::unit) {
        const std::optional<UnitRecord> record = UnitRecord::from_bytes (content);
        return record && ledger_->enter_unit (record->index, place);
    }
    if (kind != RecordKind::result) return false;
    unfinished_.emplace_back (content);
    return true;
}

/// A kill while the result is written leaves the unfinished file; so the journal says which it is.
bool SweepJob::note_result (const OutputFile& file) {
    if (file.unfinished ().empty ()) return true;
    const std::string name = file.unfinished ().filename ().string ();
    return journal_->append (RecordKind::result, name).has_value ();
}

void SweepJob::remove_unfinished () const {
    const fs::path target = end_of_links (request_.out);
    for (const std::string& name : unfinished_) {
        // Only what can be one: a hidden file named after the result.
        const bool named_so = name.starts_with ("." + target.filename ().string ().substr (0, 200));
        if (named_so && fs::path (name).filename () == name) {
            remove_file (target.parent_path () / name);
        }
    }
}

Outcome SweepJob::write (const std::stop_token& stop) {
    OutputFile file = open_output (request_.out, stop);
    if (!file.ok ()) return output_failure (file, request_.out);
    if (!note_result (file)) {
        return Outcome::failure ("Cannot write " + in_quotes (journal_->path ()) + ": " +
                                 journal_->error ());
    }
    const SweepIdentity& identity = plan_->identity ();
    Outcome outcome;
    if (identity.choice.shard) {
        outcome = write_shard (
            file, request_.out, identity, plan_->units (), *ledger_,
            [this] (const RecordPlace& place) { return journal_->read (place); }, stop);
    } else {
        const auto unit = [this] (std::uint64_t index, std::string& error) {
            std::optional<UnitRecord> record =
                UnitRecord::from_bytes (journal_->read (ledger_->unit (index).place));
            if (!record) error = "what was finished cannot be read";
            return record ? std::optional (std::move (record->text)) : std::nullopt;
        };
        outcome =
            write_gzip_result (file, request_.out, identity, plan_->units ().count (), unit, stop);
    }
    if (outcome.done ()) {
        journal_->remove ();
        kept_ = false;
    }
    return outcome;
}

std::string SweepJob::way_on () const {
    if (!begun_ || !kept_) return {};
    if (!is_plain_output (request_.out)) return "nothing is kept beside '" + request_.out + "'";
    if (journal_->is_empty ()) return "nothing was finished yet";
    return "what was finished is kept in " + in_quotes (journal_->path ()) +
           "; the same command with --resume goes on";
}

} // namespace ostrand::sweep
