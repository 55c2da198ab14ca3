// Judging what was found on a machine.
#include "tool/doctor.h"

#include "base/text.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <set>

namespace ostrand::tool {
namespace {

/// Exit status of a signal's end counts from here.
constexpr int signal_base = 128;
/// What the loader ends a program with when a library is missing.
constexpr int loader_status = 127;

struct LibraryPackage {
    std::string_view library; // the beginning of its file's name
    const char* package;
};
constexpr std::array<LibraryPackage, 28> library_packages{{
    {"libGL.so", "libgl1"},
    {"libGLU.so", "libglu1-mesa"},
    {"libX11.so", "libx11-6"},
    {"libXcursor.so", "libxcursor1"},
    {"libXfixes.so", "libxfixes3"},
    {"libXft.so", "libxft2"},
    {"libXext.so", "libxext6"},
    {"libICE.so", "libice6"},
    {"libSM.so", "libsm6"},
    {"libXinerama.so", "libxinerama1"},
    {"libXrender.so", "libxrender1"},
    {"libcairo.so", "libcairo2"},
    {"libcgraph.so", "libcgraph6"},
    {"libfontconfig.so", "libfontconfig1"},
    {"libgdk_pixbuf", "libgdk-pixbuf-2.0-0"},
    {"libgio-2.0.so", "libglib2.0-0"},
    {"libglib-2.0.so", "libglib2.0-0"},
    {"libgobject-2.0.so", "libglib2.0-0"},
    {"libgvc.so", "libgvc6"},
    {"libgvplugin_", "libgvc6"},
    {"libhpdf", "libhpdf-2.3.0"},
    {"libhwy.so", "libhwy1"},
    {"libjpeg.so", "libjpeg62-turbo"},
    {"libmpi.so", "libopenmpi3"},
    {"libpng16.so", "libpng16-16"},
    {"librsvg-2.so", "librsvg2-2"},
    {"libsbml.so", "libsbml5"},
    {"libz.so", "zlib1g"},
}};

/// Families whose letters are as wide as labels expect, of which one is needed.
constexpr std::array<std::string_view, 4> label_families{"Liberation Sans", "Arial", "Helvetica",
                                                         "Nimbus Sans"};

std::string first_line (std::string_view text) {
    return std::string (text.substr (0, text.find ('\n')));
}

/// What stands behind a word at the front of a line; nothing when no line begins so.
std::optional<std::string> line_of (std::string_view text, std::string_view word) {
    while (!text.empty ()) {
        const std::string line = first_line (text);
        if (line.starts_with (word) && line.size () > word.size () && line[word.size ()] == ' ')
            return line.substr (word.size () + 1);
        text.remove_prefix (std::min (line.size () + 1, text.size ()));
    }
    return std::nullopt;
}

std::set<std::string> families_of (std::string_view text) {
    std::set<std::string> families;
    constexpr std::string_view word = "font ";
    while (!text.empty ()) {
        const std::string line = first_line (text);
        if (line.starts_with (word)) families.insert (line.substr (word.size ()));
        text.remove_prefix (std::min (line.size () + 1, text.size ()));
    }
    return families;
}

/// What a program that did not answer well died of.
Finding fault_of (const std::string& subject, const std::string& program, const Answer& answer,
                  const std::string& package) {
    Finding finding{subject, "", false};
    switch (answer.end) {
    case Answer::End::not_there:
        finding.text = program + " is not there";
        finding.package = package;
        return finding;
    case Answer::End::no_answer: finding.text = program + " does not answer"; return finding;
    case Answer::End::not_asked:
        finding.text = program + " could not be asked: " + answer.error;
        return finding;
    case Answer::End::ended: break;
    }
    constexpr std::string_view loading = "error while loading shared libraries: ";
    const std::size_t at = answer.error.find (loading);
    if (answer.status == loader_status && at != std::string::npos) {
        const std::size_t begin = at + loading.size ();
        const std::string library =
            answer.error.substr (begin, answer.error.find (':', begin) - begin);
        finding.text = program + " needs " + library;
        finding.package = package_of_library (library);
    } else if (answer.status > signal_base) {
        finding.text = format_text ("%s was ended by signal %d", program.c_str (),
                                    answer.status - signal_base);
    } else {
        finding.text = answer.error.empty () ? format_text ("%s ended with status %d",
                                                            program.c_str (), answer.status)
                                             : first_line (answer.error);
    }
    return finding;
}

bool answered (const Answer& answer) {
    return answer.end == Answer::End::ended && answer.status == 0;
}

/// The part of a version line behind the program's name.
std::string version_in (const std::string& line) {
    const std::string one = first_line (line);
    const std::size_t blank = one.find (' ');
    return blank == std::string::npos ? one : one.substr (blank + 1);
}

Finding examine_editor (const MachineFacts& facts) {
    if (!answered (facts.editor)) return fault_of ("editor", "ostrand", facts.editor, "ostrand");
    const std::string other = version_in (facts.editor.out);
    const bool same = other == version_in (facts.version);
    return {"editor", "ostrand " + other + (same ? "" : ", which is another build than this one"),
            same};
}

void examine_display (const Answer& display, std::vector<Finding>& findings) {
    if (!answered (display)) {
        findings.push_back (fault_of ("display", "ostrand", display, "ostrand"));
        return;
    }
    findings.push_back ({"display", line_of (display.out, "screen").value_or ("of unknown size") +
                                        " at scale " +
                                        line_of (display.out, "scale").value_or ("1")});
    const auto renderer = line_of (display.out, "renderer");
    const auto version = line_of (display.out, "opengl");
    if (renderer && version)
        findings.push_back ({"opengl", *version + ", drawn by " + *renderer});
    else
        findings.push_back (
            {"opengl", "this display does not draw with OpenGL", false, "libgl1-mesa-dri"});
    const std::set<std::string> families = families_of (display.out);
    const auto known = std::ranges::find_if (label_families, [&families] (std::string_view name) {
        return families.contains (std::string (name));
    });
    if (known != label_families.end ())
        findings.push_back ({"fonts", format_text ("%zu families, %s for labels", families.size (),
                                                   std::string (*known).c_str ())});
    else
        findings.push_back ({"fonts",
                             format_text ("%zu families, but none for labels (%s)",
                                          families.size (), "Liberation Sans or Arial"),
                             false, "fonts-liberation"});
}

Finding examine_home (const MachineFacts& facts) {
    if (facts.home.empty ())
        return {"home", "there is none: the environment variable HOME is not set", false};
    if (facts.home_fault)
        return {"home",
                facts.home + " cannot be written: " + *facts.home_fault +
                    ". The editor keeps its history there",
                false};
    return {"home", facts.home + " can be written"};
}

void examine_histories (const std::vector<HistoryFile>& histories, std::vector<Finding>& findings) {
    std::string held;
    std::string left;
    for (const HistoryFile& file : histories) (file.held ? held : left) += ' ' + file.name;
    findings.push_back (
        {"locks", held.empty () ? "none held" : "held by editors that run:" + held});
    if (!left.empty ())
        findings.push_back (
            {"left",
             "by editors that did not end by themselves ('ostrand --restore' opens it):" + left});
}

Finding examine_ranks (const MachineFacts& facts) {
    if (facts.ranks.end == Answer::End::not_there)
        return {"ranks",
                "ostrand-mpi is not installed (package ostrand-mpi); it is needed only for "
                "sweeps on several machines"};
    if (!answered (facts.ranks))
        return fault_of ("ranks", "ostrand-mpi", facts.ranks, "ostrand-mpi");
    if (!facts.has_mpirun) return {"ranks", "mpirun is not there", false, "openmpi-bin"};
    return {"ranks", "ostrand-mpi " + version_in (facts.ranks.out)};
}

} // namespace

std::string package_of_library (std::string_view library) {
    for (const LibraryPackage& row : library_packages)
        if (library.starts_with (row.library)) return row.package;
    return {};
}

std::vector<Finding> examine (const MachineFacts& facts) {
    std::vector<Finding> findings;
    findings.push_back ({"version", first_line (facts.version)});
    findings.push_back (examine_editor (facts));
    if (answered (facts.editor)) examine_display (facts.display, findings);
    findings.push_back (examine_home (facts));
    examine_histories (facts.histories, findings);
    findings.push_back (examine_ranks (facts));
    return findings;
}

std::string doctor_text (const std::vector<Finding>& findings) {
    std::string text;
    std::set<std::string> packages;
    int faults = 0;
    for (const Finding& finding : findings) {
        text += format_text ("%-8s %s %s\n", finding.subject.c_str (), finding.fine ? "   " : "!! ",
                             finding.text.c_str ());
        if (!finding.fine) ++faults;
        if (!finding.package.empty ()) packages.insert (finding.package);
    }
    if (!packages.empty ()) {
        text += "To install:  apt install";
        for (const std::string& package : packages) text += ' ' + package;
        text += '\n';
    }
    if (faults == 0) return text + "All is fine.\n";
    return text +
           (faults == 1 ? "One thing is wrong.\n" : format_text ("%d things are wrong.\n", faults));
}

} // namespace ostrand::tool
