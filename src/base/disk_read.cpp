// Reading whole inputs.
#include "base/disk.h"
#include "base/report.h"
#include "base/text.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace ostrand {
namespace {

namespace fs = std::filesystem;

/// Milliseconds between two looks for a stop while an input is silent.
constexpr int longest_wait = 10;

/// Gathers the bytes of an input, up to the bound. Where nobody knows how many there will be they
/// are gathered in pieces: a string that grows would be copied, hundreds of megabytes in one step.
class Gathered {
  public:
    /// expected  bytes of the input as far as is known, 0 when it is not
    Gathered (const ReadOptions& options, std::size_t expected) : options_ (options) {
        // With room for a little more the end is found without another piece.
        add_piece (expected + block_size);
    }

    /// False when there are more than may be.
    bool take (std::string_view block) {
        taken_ += block.size ();
        if (taken_ > options_.bound) return false;
        if (options_.text_mode) {
            take_text (block);
        } else {
            append (block);
        }
        return true;
    }

    /// All of it as one.
    Input whole () {
        if (std::exchange (return_waits_, false)) append ("\r");
        if (pieces_.size () == 1) return {ReadEnd::whole, std::move (pieces_.front ()), {}, {}};
        std::size_t size = 0;
        for (const std::string& piece : pieces_) size += piece.size ();
        Input input{ReadEnd::whole, {}, {}, {}};
        input.bytes.reserve (size);
        for (std::string& piece : pieces_) {
            if (options_.stop.stop_requested ()) return stopped ();
            input.bytes += piece;
            std::string ().swap (piece);
        }
        return input;
    }

    Input stopped () { return {ReadEnd::stopped, {}, {}, std::move (pieces_)}; }

    static constexpr std::size_t block_size = 1 << 16;

  private:
    static constexpr std::size_t piece_size = std::size_t{1} << 22;

    void add_piece (std::size_t size) { pieces_.emplace_back ().reserve (size); }

    void append (std::string_view bytes) {
        if (pieces_.back ().capacity () - pieces_.back ().size () < bytes.size ()) {
            add_piece (piece_size);
        }
        pieces_.back () += bytes;
    }

    /// Takes a block without the CR of each CR LF, which may stand in two blocks.
    void take_text (std::string_view block) {
        if (return_waits_ && !block.starts_with ('\n')) append ("\r");
        return_waits_ = false;
        while (!block.empty ()) {
            const std::size_t at = block.find ('\r');
            append (block.substr (0, at));
            if (at == std::string_view::npos) return;
            block.remove_prefix (at + 1);
            return_waits_ = block.empty ();
            if (!return_waits_ && !block.starts_with ('\n')) append ("\r");
        }
    }

    const ReadOptions& options_;
    std::vector<std::string> pieces_;
    std::size_t taken_ = 0;
    bool return_waits_ = false; // a CR, until it is known whether a LF follows
};

/// Waits until there is something to read; false when a stop comes first.
bool wait_for_input (int descriptor, const std::stop_token& stop) {
    if (!stop.stop_possible ()) return true;
    while (!stop.stop_requested ()) {
        pollfd wait{descriptor, POLLIN, 0};
        const int ready = poll (&wait, 1, longest_wait);
        if (ready > 0 || (ready < 0 && errno != EINTR)) return true;
    }
    return false;
}

/// Bytes of a regular file, 0 for what has no size.
std::size_t told_size (int descriptor) {
    struct stat file {};
    const bool known = fstat (descriptor, &file) == 0 && S_ISREG (file.st_mode);
    return known ? static_cast<std::size_t> (file.st_size) : 0;
}

Input too_large (const std::string& name, std::size_t bound) {
    const std::string most =
        bound == largest_input ? std::string ("1 GiB") : format_text ("%zu bytes", bound);
    return {ReadEnd::too_large,
            {},
            "'" + name + "' has more than " + most + ", the most that is read",
            {}};
}

Input read_descriptor (int descriptor, const std::string& name, const ReadOptions& options) {
    const std::size_t expected = told_size (descriptor);
    if (expected > options.bound) return too_large (name, options.bound);
    Gathered gathered (options, expected);
    std::array<char, Gathered::block_size> block{};
    for (;;) {
        if (!wait_for_input (descriptor, options.stop)) return gathered.stopped ();
        const ssize_t got = ::read (descriptor, block.data (), block.size ());
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) return {ReadEnd::failed, {}, {}, {}};
        if (got == 0) return gathered.whole ();
        if (!gathered.take ({block.data (), static_cast<std::size_t> (got)})) {
            return too_large (name, options.bound);
        }
    }
}

/// An open file that is closed with its scope.
struct Opened {
    explicit Opened (int open) : descriptor (open) {}
    ~Opened () {
        if (descriptor >= 0) ::close (descriptor);
    }
    Opened (const Opened&) = delete;
    Opened& operator= (const Opened&) = delete;
    int descriptor;
};

/// Opens for reading. With a stop in view a pipe is not waited for here but in the reading.
int open_input (const fs::path& path, const std::stop_token& stop) {
    if (!stop.stop_possible ()) return ::open (path.c_str (), O_RDONLY | O_CLOEXEC);
    const int descriptor = ::open (path.c_str (), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor >= 0) fcntl (descriptor, F_SETFL, 0);
    return descriptor;
}

std::optional<std::string> whole_bytes (Input input) {
    if (!input.fault.empty ()) report_message ("%s", input.fault.c_str ());
    if (!input.whole ()) return std::nullopt;
    return std::move (input.bytes);
}

} // namespace

std::size_t input_bound () {
    const char* const lowered = std::getenv ("OSTRAND_INPUT_BOUND");
    if (lowered == nullptr) return largest_input;
    const std::string_view text (lowered);
    std::size_t bound = largest_input;
    std::from_chars (text.data (), text.data () + text.size (), bound);
    return std::min (bound, largest_input);
}

Input read_input (const fs::path& path, const ReadOptions& options) {
    const Opened file (open_input (path, options.stop));
    if (file.descriptor < 0) return {};
    return read_descriptor (file.descriptor, path.string (), options);
}

std::optional<std::string> read_file (const fs::path& path, std::size_t bound) {
    return whole_bytes (read_input (path, {.bound = bound}));
}

std::optional<std::string> read_text_file (const fs::path& path, std::size_t bound) {
    return whole_bytes (read_input (path, {.text_mode = true, .bound = bound}));
}

TextFile::TextFile (const fs::path& path, std::stop_token stop) {
    Input input = read_input (path, {.text_mode = true, .stop = std::move (stop)});
    end = input.end;
    if (input.whole ()) text = std::move (input.bytes);
    fault = std::move (input.fault);
    left = std::move (input.left);
}

} // namespace ostrand
