// Which gates are there for an output and a type?
#include "formula/library.h"

#include <array>
#include <utility>

namespace ostrand::formula {
namespace {

std::string signature (const std::vector<std::string>& inputs, const std::string& output) {
    std::string text;
    for (std::size_t i = 0; i < inputs.size (); ++i) {
        if (i > 0) text += '+';
        text += inputs[i];
    }
    return text + '=' + output;
}

std::vector<const LibGate*>
found (const std::unordered_map<std::string, std::vector<const LibGate*>>& map,
       const std::string& key) {
    const auto place = map.find (key);
    return place == map.end () ? std::vector<const LibGate*> () : place->second;
}

/// The name of a two-input gate type when its inputs change places.
std::string swapped_type (const std::string& type) {
    if (type == "ORNOT") return "NOTOR";
    if (type == "NOTOR") return "ORNOT";
    if (type == "ANDNOT") return "NOTAND";
    if (type == "NOTAND") return "ANDNOT";
    return type;
}

} // namespace

std::vector<const LibGate*> Lib_v1::find_signature (const std::vector<std::string>& inputs,
                                                    const std::string& output) const {
    return found (by_signature_, signature (inputs, output));
}

std::vector<const LibGate*> Lib_v1::query (const std::string& output,
                                           const std::string& type) const {
    return found (by_key_, output + '=' + type);
}

void Lib_v1::add_gate (std::unique_ptr<LibGate> gate) {
    by_signature_[signature (gate->inputs, gate->output)].push_back (gate.get ());
    by_key_[gate->output + '=' + gate->type].push_back (gate.get ());
    gates_.push_back (std::move (gate));
}

/// Files a gate under every order of its inputs.
void Lib_v1::file (std::unique_ptr<LibGate> gate) {
    species_.insert (gate->inputs.begin (), gate->inputs.end ());
    species_.insert (gate->output);
    if (gate->inputs.size () == 2) {
        auto copy = std::make_unique<LibGate> (*gate);
        std::swap (copy->inputs[0], copy->inputs[1]);
        copy->type = swapped_type (gate->type);
        add_gate (std::move (copy));
        add_gate (std::move (gate));
    } else if (gate->inputs.size () == 3) {
        static constexpr std::array<std::array<std::size_t, 3>, 6> orders{
            {{0, 1, 2}, {0, 2, 1}, {1, 0, 2}, {1, 2, 0}, {2, 0, 1}, {2, 1, 0}}};
        for (const auto& order : orders) {
            auto copy = std::make_unique<LibGate> (*gate);
            for (std::size_t i = 0; i < 3; ++i) copy->inputs[i] = gate->inputs[order[i]];
            add_gate (std::move (copy));
        }
    } else {
        add_gate (std::move (gate));
    }
}

} // namespace ostrand::formula
