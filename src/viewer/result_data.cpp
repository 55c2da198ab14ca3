// The loader of result files.
#include "viewer/result_data.h"

#include "base/text.h"
#include "base/units.h"
#include "viewer/line_reader.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <new>
#include <optional>
#include <stdexcept>

namespace ostrand::viewer {
namespace {

class Loader {
  public:
    Loader (ResultData& data, gzFile stream, const LoadProgress& progress)
        : data_ (data), lines_ (stream), progress_ (progress) {}

    void load () { data_.error = !(load_head () && load_variables () && load_counts ()); }

  private:
    bool load_head ();
    bool load_variables ();
    bool load_variable (std::uint32_t v);
    bool load_counts ();
    bool simulations_suffice () const;

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

    ResultData& data_;
    LineReader lines_;
    const LoadProgress& progress_;
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
        if (!name) return fail (format_text ("Colour-name error: c = %u\n", c));
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

bool Loader::load_variable (std::uint32_t v) {
    VarConc var;
    std::optional<std::string> name = next_name ();
    if (!name) return fail ("Variable-concentration error 1\n");
    var.name = std::move (*name);
    const auto nb = next_unsigned ();
    if (!nb) return fail (format_text ("Variable concentrations error 1: v = %u\n", v));
    var.nb = *nb;
    const auto missing = [v] (std::uint32_t i) {
        return fail (format_text ("Variable concentrations error 2: v = %u, i = %u\n", v, i));
    };
    if (var.nb == 0) return missing (0);
    for (std::uint32_t i = 0; i < var.nb; ++i) {
        const auto value = next_unsigned ();
        if (!value) return missing (i);
        var.values.push_back (*value);
        var.labels.push_back (
            "  [" + var.name +
            "] = " + concentration_text (static_cast<double> (static_cast<float> (*value))));
    }
    data_.vars.push_back (std::move (var));
    return true;
}

/// True when every combination of values has its simulation.
bool Loader::simulations_suffice () const {
    std::uint64_t combinations = 1;
    for (const VarConc& var : data_.vars) {
        combinations *= var.nb;
        if (combinations > data_.n_simul) return false;
    }
    return data_.n_simul > 0 || data_.vars.empty ();
}

bool Loader::load_counts () {
    const auto missing = [] (std::uint32_t simulation, std::uint32_t species, std::uint32_t point) {
        return fail (format_text ("data error: <%u, %u, %u>\n", simulation, species, point));
    };
    if (!simulations_suffice ()) return missing (data_.n_simul, 0, 0);
    for (std::uint32_t simulation = 0; simulation < data_.n_simul; ++simulation) {
        for (std::uint32_t species = 0; species < data_.n_displayed; ++species) {
            for (std::uint32_t point = 0; point < data_.n_points; ++point) {
                const auto value = next_unsigned ();
                if (!value) return missing (simulation, species, point);
                try {
                    data_.counts.push_back (*value);
                } catch (const std::bad_alloc&) {
                    return missing (simulation, species, point);
                } catch (const std::length_error&) {
                    return missing (simulation, species, point);
                }
                data_.max = std::max (data_.max, *value);
            }
        }
        // Nothing to read for anybody: do not count through four thousand million simulations.
        if (data_.n_displayed == 0 || data_.n_points == 0) break;
    }
    data_.counts.shrink_to_fit ();
    return true;
}

} // namespace

std::string concentration_text (double molecules) {
    const double u = molecules / molecules_per_micromolar;
    if (u >= 999) return format_g (u / 1000, 2) + " mM";
    return u < 1 ? format_g (u, 2) + " uM" : format_g (u, 3) + " uM";
}

void load_result (ResultData* data, gzFile stream, const LoadProgress& progress) {
    Loader (*data, stream, progress).load ();
}

} // namespace ostrand::viewer
