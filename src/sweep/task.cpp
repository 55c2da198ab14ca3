// Tasks as bytes.
#include "sweep/task.h"

#include "sweep/bytes.h"
#include "sweep/record.h"

#include <utility>

namespace ostrand::sweep {

std::string Task::to_bytes () const {
    ByteWriter writer;
    writer.put_byte (static_cast<std::uint8_t> (kind));
    writer.put_long (first_simulation);
    writer.put_long (simulations);
    writer.put_long (time_steps);
    writer.put_long (states.size ());
    for (const sim::SimulationState& state : states) put_state (writer, state);
    writer.put_byte (unit ? 1 : 0);
    writer.put_long (unit.value_or (0));
    writer.put_words (counts);
    return std::move (writer.bytes);
}

std::optional<Task> Task::from_bytes (std::string_view bytes) {
    ByteReader reader (bytes);
    Task task;
    task.kind = reader.take_byte () == 0 ? Kind::simulate : Kind::pack;
    task.first_simulation = reader.take_long ();
    task.simulations = reader.take_long ();
    task.time_steps = reader.take_long ();
    const std::uint64_t states = reader.take_long ();
    for (std::uint64_t i = 0; i < states && reader.well (); ++i) {
        task.states.push_back (take_state (reader));
    }
    const bool has_unit = reader.take_byte () != 0;
    const std::uint64_t unit = reader.take_long ();
    if (has_unit) task.unit = unit;
    task.counts = reader.take_words ();
    if (!reader.finished () || (task.kind == Kind::pack && !has_unit)) return std::nullopt;
    return task;
}

} // namespace ostrand::sweep
