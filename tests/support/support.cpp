// Helpers that make tests short.
#include "support/support.h"

#include "base/disk.h"
#include "base/platform.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <zlib.h>

namespace ostrand::testing {

namespace fs = std::filesystem;

TemporaryFolder::TemporaryFolder () {
    std::string name = (temporary_directory () / "ostrand-test-XXXXXX").string ();
    if (mkdtemp (name.data ()) == nullptr) std::abort ();
    path_ = name;
}

TemporaryFolder::~TemporaryFolder () {
    std::error_code ignored;
    fs::remove_all (path_, ignored);
}

std::string TemporaryFolder::write (std::string_view name, std::string_view text) const {
    const fs::path file = path_ / name;
    std::string error;
    if (!write_file (file, text, error)) std::abort ();
    return file.string ();
}

std::vector<std::string> TemporaryFolder::names () const {
    std::vector<std::string> all;
    for (const fs::directory_entry& entry : fs::directory_iterator (path_)) {
        all.push_back (entry.path ().filename ().string ());
    }
    std::sort (all.begin (), all.end ());
    return all;
}

std::string CaughtMessages::joined () const {
    std::string text;
    for (const std::string& message : all) text += message + "\n";
    return text;
}

namespace {

std::string build_path (const std::string& word) {
    if (word.find ('/') != std::string::npos) return word;
    const fs::path built = fs::path (OSTRAND_BUILD_DIR) / word;
    return fs::exists (built) ? built.string () : word;
}

[[noreturn]] void run_child (std::vector<std::string>& words, const fs::path& folder,
                             const std::array<int, 3>& streams) {
    for (int i = 0; i < 3; ++i) dup2 (streams[static_cast<std::size_t> (i)], i);
    if (!folder.empty () && chdir (folder.c_str ()) != 0) _exit (126);
    std::vector<char*> arguments;
    for (std::string& word : words) arguments.push_back (word.data ());
    arguments.push_back (nullptr);
    execvp (arguments[0], arguments.data ());
    _exit (127);
}

} // namespace

ProgramResult run_program (std::vector<std::string> words, const fs::path& folder,
                           std::string_view input) {
    words[0] = build_path (words[0]);
    std::array<std::array<int, 2>, 3> pipes{};
    for (auto& ends : pipes) {
        if (pipe2 (ends.data (), O_CLOEXEC) != 0) std::abort ();
    }
    const pid_t child = fork ();
    if (child == 0) run_child (words, folder, {pipes[0][0], pipes[1][1], pipes[2][1]});
    close (pipes[0][0]);
    close (pipes[1][1]);
    close (pipes[2][1]);
    ProgramResult result;
    std::array<pollfd, 3> waits{pollfd{input.empty () ? -1 : pipes[0][1], POLLOUT, 0},
                                pollfd{pipes[1][0], POLLIN, 0}, pollfd{pipes[2][0], POLLIN, 0}};
    if (input.empty ()) close (pipes[0][1]);
    std::array<char, 1 << 16> block{};
    while (waits[1].fd >= 0 || waits[2].fd >= 0) {
        if (poll (waits.data (), waits.size (), -1) < 0) continue;
        if (waits[0].fd >= 0 && waits[0].revents != 0) {
            const ssize_t written =
                write (waits[0].fd, input.data (), std::min<std::size_t> (input.size (), 4096));
            if (written > 0) input.remove_prefix (static_cast<std::size_t> (written));
            if (written <= 0 || input.empty ()) {
                close (waits[0].fd);
                waits[0].fd = -1;
            }
        }
        for (std::size_t i = 1; i < 3; ++i) {
            if (waits[i].fd < 0 || waits[i].revents == 0) continue;
            const ssize_t got = read (waits[i].fd, block.data (), block.size ());
            if (got > 0) {
                (i == 1 ? result.out : result.error)
                    .append (block.data (), static_cast<std::size_t> (got));
            } else {
                close (waits[i].fd);
                waits[i].fd = -1;
            }
        }
    }
    if (waits[0].fd >= 0) close (waits[0].fd);
    int status = 0;
    waitpid (child, &status, 0);
    result.status = WIFEXITED (status) ? WEXITSTATUS (status) : 128 + WTERMSIG (status);
    return result;
}

fs::path source_path (std::string_view path) { return fs::path (OSTRAND_SOURCE_DIR) / path; }
std::optional<fs::path> models_folder () {
    const char* const told = std::getenv ("OSTRAND_MODELS");
    const fs::path folder = told != nullptr ? fs::path (told) : source_path ("../shared/data");
    std::error_code error;
    if (!fs::is_directory (folder, error)) return std::nullopt;
    return folder;
}
std::vector<fs::path> those_in_time (std::vector<fs::path> paths) {
    std::sort (paths.begin (), paths.end ());
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    constexpr std::size_t step = 3;
#else
    constexpr std::size_t step = 1;
#endif
    std::vector<fs::path> some;
    for (std::size_t i = 0; i < paths.size (); i += step) some.push_back (std::move (paths[i]));
    return some;
}

std::string source_file (std::string_view path) { return file_text (source_path (path)); }
std::string file_text (const fs::path& path) { return read_file (path).value_or (""); }

std::string unzipped_file (const fs::path& path) {
    std::string text;
    gzFile file = gzopen (path.c_str (), "rb");
    if (file == nullptr) return text;
    std::array<char, 1 << 16> block{};
    for (int got = 0; (got = gzread (file, block.data (), block.size ())) > 0;) {
        text.append (block.data (), static_cast<std::size_t> (got));
    }
    gzclose (file);
    return text;
}

bool wait_until (const std::function<bool ()>& condition, double seconds) {
    const auto end = std::chrono::steady_clock::now () + std::chrono::duration<double> (seconds);
    while (!condition ()) {
        if (std::chrono::steady_clock::now () > end) return false;
        std::this_thread::sleep_for (std::chrono::milliseconds (10));
    }
    return true;
}

} // namespace ostrand::testing
