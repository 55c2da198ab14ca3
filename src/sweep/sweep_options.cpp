// Options of sweeps.
#include "sweep/sweep_options.h"

#include "base/text.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <string_view>

namespace ostrand::sweep {
namespace {

constexpr std::uint64_t most_words = std::numeric_limits<std::uint32_t>::max ();
constexpr std::uint64_t most_seed = std::numeric_limits<std::int64_t>::max ();
constexpr std::uint64_t most_threads = 1024;

std::optional<std::uint64_t> whole_number (std::string_view text, std::uint64_t least,
                                           std::uint64_t most) {
    std::uint64_t number = 0;
    const char* const end = text.data () + text.size ();
    const auto [rest, error] = std::from_chars (text.data (), end, number);
    if (error != std::errc () || rest != end || number < least || number > most) {
        return std::nullopt;
    }
    return number;
}

std::optional<Shard> read_shard (std::string_view text) {
    const std::size_t slash = text.find ('/');
    if (slash == std::string_view::npos) return std::nullopt;
    const auto count = whole_number (text.substr (slash + 1), 1, most_words);
    const auto index = whole_number (text.substr (0, slash), 1, count.value_or (0));
    if (!count || !index) return std::nullopt;
    return Shard{static_cast<std::uint32_t> (*index), static_cast<std::uint32_t> (*count)};
}

} // namespace

std::optional<SweepRequest> sweep_request (const std::string& model,
                                           const SweepOptionValues& values, std::string& fault) {
    SweepRequest request;
    request.model = model;
    request.show_progress = true;
    const auto number = [&] (const char* name, std::uint64_t least, std::uint64_t most, auto take) {
        const auto found = values.find (name);
        if (found == values.end () || !fault.empty ()) return;
        const auto read = whole_number (found->second, least, most);
        if (read) {
            take (*read);
        } else {
            fault = format_text ("%s needs a whole number from %llu to %llu, not '%s'", name,
                                 static_cast<unsigned long long> (least),
                                 static_cast<unsigned long long> (most), found->second.c_str ());
        }
    };
    const auto out = values.find ("-o");
    if (out == values.end () || out->second.empty ()) fault = "-o OUT is missing";
    if (out != values.end ()) request.out = out->second;
    number ("--replicates", 1, most_words, [&request] (std::uint64_t read) {
        request.choice.replicates = static_cast<std::uint32_t> (read);
    });
    number ("--threads", 1, most_words, [&request] (std::uint64_t read) {
        request.threads = static_cast<unsigned> (std::min (read, most_threads));
    });
    number ("--seed", 0, most_seed,
            [&request] (std::uint64_t read) { request.choice.seed = read; });
    request.choice.stochastic = values.find ("--deterministic") == values.end ();
    request.resume = values.find ("--resume") != values.end ();
    if (const auto shard = values.find ("--shard"); shard != values.end () && fault.empty ()) {
        request.choice.shard = read_shard (shard->second);
        if (!request.choice.shard) {
            fault = "--shard needs I/N, with I from 1 to N, not '" + shard->second + "'";
        }
    }
    if (!fault.empty ()) return std::nullopt;
    return request;
}

int tell_sweep_end (const char* program, const Outcome& outcome, const std::string& way_on,
                    const InterruptionStop& interruption) {
    if (outcome.done ()) return 0;
    const std::string text = outcome.stopped () ? "interrupted" : outcome.reason;
    std::fprintf (stderr, "%s: %s\n", program, text.c_str ());
    if (!way_on.empty ()) std::fprintf (stderr, "%s: %s\n", program, way_on.c_str ());
    if (!outcome.stopped ()) return 1;
    return interruption.status () != 0 ? interruption.status () : 130;
}

} // namespace ostrand::sweep
