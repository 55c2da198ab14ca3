// The curve viewer's command line.
#include "viewer/viewer_main.h"

#include "viewer/load_progress.h"
#include "viewer/result_data.h"
#include "viewer/viewer_window.h"

#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <unistd.h>
#include <zlib.h>

namespace ostrand::viewer {
namespace {

struct CloseStream {
    void operator() (gzFile stream) const { gzclose (stream); }
};
using Stream = std::unique_ptr<gzFile_s, CloseStream>;

int usage (const char* name) {
    std::fprintf (stderr, "Usage: %s [- / data_file] [-d][-r]\n", name);
    return 1;
}

/// What the words ask for.
struct Request {
    Stream stream;
    std::string file; // empty for standard input
    bool standard_input = false;
    bool remove = false;
    bool reverse_video = false;
};

/// Takes one word; false when it ends the program with a message.
bool take_word (const char* word, const char* name, Request& request) {
    if (word[0] != '-') {
        if (request.standard_input) {
            request.stream.reset ();
            usage (name);
            return false;
        }
        std::error_code error;
        if (!std::filesystem::is_directory (word, error)) {
            request.stream.reset (gzopen (word, "rb"));
        } else {
            request.stream.reset ();
        }
        if (!request.stream) std::fprintf (stderr, "Cannot open '%s'\n", word);
        request.file = word;
        return request.stream != nullptr;
    }
    switch (word[1]) {
    case 'd': request.remove = true; return true;
    case 'r': request.reverse_video = true; return true;
    case '\0':
        request.stream.reset (gzdopen (dup (STDIN_FILENO), "rb"));
        request.standard_input = true;
        request.file.clear ();
        return true;
    default: usage (name); return false;
    }
}

} // namespace

int viewer_main (int argc, char** argv) {
    if (argc < 2) return usage (argv[0]);
    Request request;
    for (int i = 1; i < argc; ++i) {
        if (!take_word (argv[i], argv[0], request)) return 1;
    }
    if (!request.stream) return usage (argv[0]);
    ResultData data;
    {
        LoadDisplay display (request.file);
        load_result (&data, request.stream.get (),
                     [&display] (std::uint64_t bytes) { display.show (bytes); });
    }
    request.stream.reset ();
    if (data.error) return 1;
    if (!run_viewer_window (data, request.reverse_video)) return 1;
    if (request.remove && !request.file.empty ()) {
        std::error_code error;
        std::filesystem::remove (request.file, error);
    }
    return 0;
}

} // namespace ostrand::viewer
