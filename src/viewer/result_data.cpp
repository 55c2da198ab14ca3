// The loader of result files.
#include "viewer/result_data.h"

#include "base/platform.h"
#include "base/text.h"
#include "base/units.h"
#include "viewer/line_reader.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <new>
#include <optional>

namespace ostrand::viewer {
namespace {

class Loader {
  public:
    Loader (ResultData& data, gzFile stream, const LoadProgress& progress)
        : data_ (data), lines_ (stream), progress_ (progress) {}

    void load () {
        try {
            data_.error = !(load_head () && load_variables () && load_counts ());
        } catch (const std::bad_alloc&) {
            miss_count (0, 0, 0); // there was less memory than the system told
            data_.error = true;
        }
    }

  private:
    bool load_head ();
    bool load_variables ();
    bool load_variable (std::uint32_t v);
    bool load_counts ();

    /// Reports the failure and gives false.
    static bool fail (const std::string& message) {
        std::fputs (message.c_str (), stderr);
        return false;
    }

    std::optional<std::string_view> next_line () {
        const auto line = lines_.next ();
        if (progress_) lines_.on_block (progress_);
        return line;
    }

    /// A line without its end, up to a NUL.
    std::optional<std::string> next_name () {
        const auto line = next_line ();
        if (!line) return std::nullopt;
        return std::string (line->substr (0, line->find_first_of (std::string_view ("\n\0", 2))));
    }
    std::optional<std::uint32_t> next_unsigned () {
        const auto line = next_line ();
        return line ? scan_unsigned (*line) : std::nullopt;
    }

    static bool miss_count (std::uint32_t simulation, std::uint32_t species, std::uint32_t point) {
        return fail (format_text ("data error: <%u, %u, %u>\n", simulation, species, point));
    }

    /// Takes bytes off the memory that there is; false when they are not there.
    bool fits (std::uint64_t bytes) {
        if (bytes > memory_) return false;
        memory_ -= bytes;
        return true;
    }

    bool has_places () const;

    /// What a name, a colour or a label takes beside its letters.
    static constexpr std::uint64_t small_record = 128;
    /// Lines that are looked at, and not kept, of data that memory does not hold.
    static constexpr std::uint64_t most_unkept = std::uint64_t{1} << 28;

    ResultData& data_;
    LineReader lines_;
    const LoadProgress& progress_;
    std::uint64_t memory_ = available_memory ();
    std::uint64_t combinations_ = 1; // of the values of the variables but the last so far
    std::uint64_t unkept_ = 0;       // lines of values that were looked at and not kept
};

/// Three numbers with blanks between, anything behind.
std::optional<std::array<std::uint32_t, 3>> scan_three (std::string_view line) {
    std::array<std::uint32_t, 3> numbers{};
    for (std::uint32_t& number : numbers) {
        const auto value = scan_unsigned (line);
        if (!value) return std::nullopt;
        number = *value;
        std::size_t i = 0;
        while (i < line.size () && is_space (line[i])) ++i;
        if (i < line.size () && (line[i] == '-' || line[i] == '+')) ++i;
        while (i < line.size () && is_digit (line[i])) ++i;
        line.remove_prefix (i);
    }
    return numbers;
}

bool Loader::load_head () {
    const auto line = next_line ();
    const auto numbers = line ? scan_three (*line) : std::nullopt;
    if (!numbers) return fail ("Format error\n");
    data_.n_simul = (*numbers)[0];
    data_.n_displayed = (*numbers)[1];
    data_.n_points = (*numbers)[2];
    for (std::uint32_t c = 0; c < data_.n_displayed; ++c) {
        std::optional<std::string> name = next_name ();
        if (!name || !fits (name->size () + small_record)) {
            return fail (format_text ("Colour-name error: c = %u\n", c));
        }
        data_.names.push_back (std::move (*name));
        const auto colour_line = next_line ();
        const auto colour = colour_line ? scan_hexadecimal (*colour_line) : std::nullopt;
        if (!colour) return fail (format_text ("Colourmap-value error: c = %u\n", c));
        data_.colours.push_back (*colour);
    }
    return true;
}

bool Loader::load_variables () {
    // A file that ends here, or says nothing here, has no varying concentrations.
    data_.n_var = next_unsigned ().value_or (0);
    for (std::uint32_t v = 0; v < data_.n_var; ++v) {
        if (!load_variable (v)) return false;
    }
    return true;
}

/// False when a combination of values has no simulation. What counts are the planes and slider
/// places that can be shown: of two equal last values only the first is.
bool Loader::has_places () const {
    if (data_.n_var == 0) return true;
    if (data_.vars.size () < data_.n_var) return false; // values that no simulation has
    const std::uint64_t last_places = (combinations_ - 1) * data_.vars.back ().nb;
    return last_places + count_planes (data_) <= data_.n_simul;
}

bool Loader::load_variable (std::uint32_t v) {
    VarConc var;
    std::optional<std::string> name = next_name ();
    if (!name || !fits (name->size () + small_record)) {
        return fail ("Variable-concentration error 1\n");
    }
    var.name = std::move (*name);
    const auto nb = next_unsigned ();
    if (!nb) return fail (format_text ("Variable concentrations error 1: v = %u\n", v));
    var.nb = *nb;
    // Values that no simulation can have are read to see whether they are there, and not kept. Two
    // may be equal, and then count as one.
    const bool all_kept = data_.vars.size () == v;
    if (all_kept && v > 0) combinations_ *= data_.vars.back ().nb;
    const bool kept = all_kept && combinations_ <= std::max (data_.n_simul, 1U) &&
                      var.nb <= std::max (data_.n_simul, 2U);
    for (std::uint32_t i = 0; i < std::max (var.nb, 1U); ++i) {
        if (!kept) ++unkept_;
        const bool there = var.nb > 0 && unkept_ < most_unkept;
        const auto value = there ? next_unsigned () : std::nullopt;
        if (!value || (kept && !fits (var.name.size () + small_record))) {
            return fail (format_text ("Variable concentrations error 2: v = %u, i = %u\n", v, i));
        }
        if (!kept) continue;
        var.values.push_back (*value);
        var.labels.push_back (
            "  [" + var.name +
            "] = " + concentration_text (static_cast<double> (static_cast<float> (*value))));
    }
    if (kept) data_.vars.push_back (std::move (var));
    return true;
}

bool Loader::load_counts () {
    const bool sound = has_places ();
    std::uint64_t values = 0;
    // More than memory holds, or what cannot be shown, is not kept, only read up to where it ends.
    const bool kept = sound &&
                      !__builtin_mul_overflow (std::uint64_t{data_.n_simul} * data_.n_displayed,
                                               std::uint64_t{data_.n_points}, &values) &&
                      values <= memory_ / sizeof (std::uint32_t);
    // Nothing to read for anybody: do not count through four thousand million simulations.
    const bool any = data_.n_displayed > 0 && data_.n_points > 0;
    if (kept) data_.counts.reserve (values);
    std::uint64_t place = 0;
    for (std::uint32_t simulation = 0; any && simulation < data_.n_simul; ++simulation) {
        for (std::uint32_t species = 0; species < data_.n_displayed; ++species) {
            for (std::uint32_t point = 0; point < data_.n_points; ++point, ++place) {
                const auto value = kept || place < most_unkept ? next_unsigned () : std::nullopt;
                if (!value) return miss_count (simulation, species, point);
                if (kept) data_.counts.push_back (*value);
                data_.max = std::max (data_.max, *value);
            }
        }
    }
    if (!sound) return miss_count (data_.n_simul, 0, 0);
    return kept || miss_count (0, 0, 0);
}

} // namespace

std::uint32_t count_planes (const ResultData& data) {
    if (data.vars.empty ()) return 1;
    const VarConc& last = data.vars.back ();
    if (last.nb == 2 && last.values[0] == last.values[1]) return 1;
    return last.nb;
}

std::string concentration_text (double molecules) {
    const double u = molecules / molecules_per_micromolar;
    if (u >= 999) return format_g (u / 1000, 2) + " mM";
    return u < 1 ? format_g (u, 2) + " uM" : format_g (u, 3) + " uM";
}

void load_result (ResultData* data, gzFile stream, const LoadProgress& progress) {
    Loader (*data, stream, progress).load ();
}

} // namespace ostrand::viewer
