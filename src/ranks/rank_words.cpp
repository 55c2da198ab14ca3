// Messages of ranks as bytes.
#include "ranks/rank_words.h"

#include "sweep/bytes.h"

#include <utility>

namespace ostrand::ranks {

using sweep::ByteReader;
using sweep::ByteWriter;

std::string Start::to_bytes () const {
    ByteWriter writer;
    writer.put_text (model);
    writer.put_word (choice.replicates);
    writer.put_byte (choice.stochastic ? 1 : 0);
    writer.put_byte (choice.seed ? 1 : 0);
    writer.put_long (choice.seed.value_or (0));
    const sweep::Shard shard = choice.shard.value_or (sweep::Shard{});
    writer.put_byte (choice.shard ? 1 : 0);
    writer.put_word (shard.index);
    writer.put_word (shard.count);
    writer.put_word (threads);
    return std::move (writer.bytes);
}

std::optional<Start> Start::from_bytes (std::string_view bytes) {
    ByteReader reader (bytes);
    Start start;
    start.model = reader.take_text ();
    start.choice.replicates = reader.take_word ();
    start.choice.stochastic = reader.take_byte () != 0;
    const bool seeded = reader.take_byte () != 0;
    const std::uint64_t seed = reader.take_long ();
    if (seeded) start.choice.seed = seed;
    const bool sharded = reader.take_byte () != 0;
    sweep::Shard shard;
    shard.index = reader.take_word ();
    shard.count = reader.take_word ();
    if (sharded) start.choice.shard = shard;
    start.threads = reader.take_word ();
    if (!reader.finished () || start.threads == 0) return std::nullopt;
    return start;
}

std::string Ask::to_bytes () const {
    ByteWriter writer;
    writer.put_word (thread);
    writer.put_byte (done ? 1 : 0);
    writer.put_long (done.value_or (0));
    writer.put_double (seconds);
    return std::move (writer.bytes);
}

std::optional<Ask> Ask::from_bytes (std::string_view bytes) {
    ByteReader reader (bytes);
    Ask ask;
    ask.thread = reader.take_word ();
    const bool has_done = reader.take_byte () != 0;
    const std::uint64_t number = reader.take_long ();
    if (has_done) ask.done = number;
    ask.seconds = reader.take_double ();
    if (!reader.finished ()) return std::nullopt;
    return ask;
}

std::string Finished::to_bytes () const {
    ByteWriter writer;
    writer.put_long (points);
    writer.put_word (static_cast<std::uint32_t> (kind));
    writer.put_text (content);
    return std::move (writer.bytes);
}

std::optional<Finished> Finished::from_bytes (std::string_view bytes) {
    ByteReader reader (bytes);
    Finished finished;
    finished.points = reader.take_long ();
    finished.kind = static_cast<sweep::RecordKind> (reader.take_word ());
    finished.content = reader.take_text ();
    if (!reader.finished ()) return std::nullopt;
    return finished;
}

std::string task_bytes (std::uint64_t number, const sweep::Task& task) {
    ByteWriter writer;
    writer.put_long (number);
    return std::move (writer.bytes) + task.to_bytes ();
}

std::optional<sweep::Task> read_task (std::string_view bytes, std::uint64_t& number) {
    ByteReader reader (bytes);
    number = reader.take_long ();
    if (!reader.well ()) return std::nullopt;
    return sweep::Task::from_bytes (reader.rest ());
}

} // namespace ostrand::ranks
