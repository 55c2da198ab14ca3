// The result file.
#include "sim/result_writer.h"

#include "base/disk.h"
#include "base/text.h"

#include <array>
#include <cerrno>
#include <charconv>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>
#include <utility>
#include <zlib.h>

namespace ostrand::sim {
namespace {

constexpr std::size_t piece_size = 1 << 18;
constexpr std::size_t longest_line = 12; // a count and its line end

std::string format_head (const ModelTables& tables, const Grid& grid) {
    std::uint32_t n_displayed = 0;
    for (const auto& species : tables.species) n_displayed += species->displayed ? 1U : 0U;
    std::string head = format_text ("%u %u %u\n", grid.n_simul, n_displayed, grid.n_points);
    for (const auto& species : tables.species) {
        if (species->displayed) {
            head += species->name;
            head += format_text ("\n%x\n", species->colour);
        }
    }
    head += format_text ("%u\n", grid.n_var_conc);
    for (const auto& species : tables.species) {
        if (species->nb == 1) continue;
        head += species->name;
        head += format_text ("\n%d\n", species->nb);
        for (std::int32_t v = 0; v < species->nb; ++v) {
            append_decimal (head, species->conc[static_cast<std::size_t> (v)]);
            head += '\n';
        }
    }
    return head;
}

/// A gzip stream on a copy of an open file's descriptor, which is closed with it and, like the
/// file's own, by any program that this process starts.
class GzipStream {
  public:
    explicit GzipStream (int descriptor) {
        const int copy = fcntl (descriptor, F_DUPFD_CLOEXEC, 0);
        if (copy < 0) return;
        stream_ = gzdopen (copy, "wb");
        if (stream_ == nullptr) {
            ::close (copy);
        } else {
            gzbuffer (stream_, piece_size);
        }
    }
    ~GzipStream () { close (); }
    GzipStream (const GzipStream&) = delete;
    GzipStream& operator= (const GzipStream&) = delete;

    bool write (std::string_view piece) {
        errno = 0;
        if (stream_ == nullptr) return false;
        const auto length = static_cast<unsigned> (piece.size ());
        return length == 0 || gzwrite (stream_, piece.data (), length) == static_cast<int> (length);
    }
    bool close () {
        if (stream_ == nullptr) return true;
        errno = 0;
        return gzclose (std::exchange (stream_, nullptr)) == Z_OK;
    }

  private:
    gzFile stream_ = nullptr;
};

} // namespace

bool format_result (const ModelTables& tables, const Grid& grid,
                    const std::function<bool (std::string_view piece)>& take) {
    if (!take (format_head (tables, grid))) return false;
    std::string piece (piece_size + 2 * longest_line, '\0');
    char* const begin = piece.data ();
    char* end = begin;
    for (const Simulation& simulation : grid.simulations) {
        for (std::size_t i = 0; i < tables.species.size (); ++i) {
            if (!tables.species[i]->displayed) continue;
            for (const std::uint32_t count :
                 simulation.all_pt.subspan (i * grid.n_points, grid.n_points)) {
                end = std::to_chars (end, end + longest_line, count).ptr;
                *end++ = '\n';
                if (end - begin < static_cast<std::ptrdiff_t> (piece_size)) continue;
                if (!take ({begin, end})) return false;
                end = begin;
            }
        }
    }
    return take ({begin, end});
}

ResultStatus write_result (const std::string& out, const ModelTables& tables, const Grid& grid,
                           std::string& error, const std::stop_token& stop) {
    OutputFile file = out == "-" ? OutputFile::standard_output () : OutputFile (out, stop);
    if (!file.ok ()) {
        error = file.error ();
        // Standard output that is closed is a result lost, not a name that cannot be created.
        return out == "-" ? ResultStatus::lost : ResultStatus::not_created;
    }
    GzipStream stream (file.descriptor ());
    const bool written = format_result (tables, grid,
                                        [&] (std::string_view piece) {
                                            return !stop.stop_requested () && stream.write (piece);
                                        }) &&
                         stream.close ();
    if (!written) {
        error = std::strerror (errno != 0 ? errno : EIO);
        return stop.stop_requested () ? ResultStatus::stopped : ResultStatus::lost;
    }
    if (!file.commit ()) {
        error = file.error ();
        return file.stopped () ? ResultStatus::stopped : ResultStatus::lost;
    }
    return ResultStatus::written;
}

} // namespace ostrand::sim
