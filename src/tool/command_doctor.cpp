// ostrand-tool doctor: looks at this machine.
#include "base/disk.h"
#include "base/file_lock.h"
#include "base/platform.h"
#include "base/process.h"
#include "base/text.h"
#include "base/version.h"
#include "editor/undo_file.h"
#include "tool/commands.h"
#include "tool/doctor.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <thread>

namespace ostrand::tool {
namespace {

namespace fs = std::filesystem;

/// Longest time that a program may take for an answer.
constexpr std::chrono::seconds patience{20};

/// Where a program is: beside this one, else in a folder of PATH; empty when it is nowhere.
std::string find_program (const std::string& name) {
    std::error_code error;
    const fs::path beside = executable_path ().parent_path () / name;
    if (fs::is_regular_file (beside, error)) return beside.string ();
    const char* const path = std::getenv ("PATH");
    std::string_view folders = path == nullptr ? std::string_view () : path;
    while (!folders.empty ()) {
        const std::size_t end = std::min (folders.find (':'), folders.size ());
        const fs::path file = fs::path (folders.substr (0, end)) / name;
        if (end > 0 && fs::is_regular_file (file, error)) return file.string ();
        folders.remove_prefix (std::min (end + 1, folders.size ()));
    }
    return {};
}

/// A folder for the answer of another program, gone with its scope.
class AnswerFolder {
  public:
    AnswerFolder () : path_ (make_private_folder ("ostrand-doctor")) {}
    ~AnswerFolder () {
        std::error_code ignored;
        if (made ()) fs::remove_all (path_, ignored);
    }
    AnswerFolder (const AnswerFolder&) = delete;
    AnswerFolder& operator= (const AnswerFolder&) = delete;

    bool made () const { return !path_.empty (); }
    std::string out () const { return (path_ / "out").string (); }
    std::string error () const { return (path_ / "error").string (); }

  private:
    fs::path path_;
};

/// Asks another program by one word. It is a process of its own, so that a driver that breaks, or
/// never comes back, breaks nothing here.
Answer ask (const std::string& program, const std::string& word) {
    Answer answer;
    const std::string path = find_program (program);
    if (path.empty ()) return answer;
    const AnswerFolder folder;
    if (!folder.made ()) {
        answer.end = Answer::End::not_asked;
        answer.error = "no folder can be made in " + temporary_directory ().string ();
        return answer;
    }
    const ChildProcess child ({path, word}, {.output = folder.out (), .error = folder.error ()});
    if (!child.started ()) {
        answer.end = Answer::End::not_asked;
        answer.error = child.error ();
        return answer;
    }
    const auto limit = std::chrono::steady_clock::now () + patience;
    while (child.is_running () && std::chrono::steady_clock::now () < limit)
        std::this_thread::sleep_for (std::chrono::milliseconds (10));
    answer.end = child.is_running () ? Answer::End::no_answer : Answer::End::ended;
    child.kill ();
    answer.status = child.wait ();
    answer.out = read_file (folder.out ()).value_or ("");
    answer.error = read_file (folder.error ()).value_or ("");
    return answer;
}

std::vector<HistoryFile> histories_in (const fs::path& folder) {
    std::vector<HistoryFile> found;
    std::error_code error;
    for (fs::directory_iterator entry (folder, error), end; !error && entry != end;
         entry.increment (error)) {
        const std::string name = entry->path ().filename ().string ();
        if (editor::undo_file_number (name)) found.push_back ({name, is_locked (entry->path ())});
    }
    std::ranges::sort (found, {}, &HistoryFile::name);
    return found;
}

/// Tries to make a file in the home.
std::optional<std::string> fault_of_home (const fs::path& home) {
    const OutputFile probe (home / "ostrand-doctor");
    if (probe.ok ()) return std::nullopt; // never put in its place
    return probe.error ();
}

int run (const Arguments&) {
    MachineFacts facts;
    facts.version = version_line ("ostrand-tool", tool_commit ());
    facts.editor = ask ("ostrand", "--version");
    facts.display = ask ("ostrand", "--show-display");
    facts.ranks = ask ("ostrand-mpi", "--version");
    facts.has_mpirun = !find_program ("mpirun").empty ();
    facts.home = home_directory ().string ();
    if (!facts.home.empty ()) {
        facts.home_fault = fault_of_home (facts.home);
        facts.histories = histories_in (facts.home);
    }
    const std::vector<Finding> findings = examine (facts);
    if (print_result (doctor_text (findings)) != status_success) return status_failure;
    return std::ranges::all_of (findings, &Finding::fine) ? status_success : status_failure;
}

} // namespace

extern const ToolCommand doctor_command{
    .name = "doctor",
    .words = "",
    .fewest_words = 0,
    .most_words = 0,
    .summary = "tell what this machine has, what is missing and which package brings it",
    .details =
        "Looks at the version, the display and who draws on it with OpenGL, the fonts, the home\n"
        "folder, the files that running editors hold, and the programs beside this one. Exit\n"
        "status 0 when all is fine, 1 when something is missing, which is named with the Debian\n"
        "package that has it.\n",
    .options = {},
    .run = run,
};

} // namespace ostrand::tool
