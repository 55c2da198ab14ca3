// Helpers of the tests of sweeps.
#include "sweep/sweep_support.h"

#include "sim/run.h"

#include <array>
#include <zlib.h>

namespace ostrand::sweep {

std::string plain_result (const testing::TemporaryFolder& folder, const std::string& model,
                          bool stochastic) {
    sim::SimulatorState state;
    const std::string out = (folder / "plain.gz").string ();
    sim::SimulationRun run ({.model = model, .out = out, .stochastic = stochastic}, state);
    if (!run.run ().done ()) throw std::runtime_error ("no plain run");
    std::string text = testing::unzipped_file (out);
    std::filesystem::remove (out);
    return text;
}

std::string unpacked (const std::string& bytes) {
    z_stream stream{};
    inflateInit2 (&stream, MAX_WBITS + 16);
    stream.next_in = reinterpret_cast<Bytef*> (const_cast<char*> (bytes.data ()));
    stream.avail_in = static_cast<uInt> (bytes.size ());
    std::string text;
    std::array<char, 65536> buffer{};
    int status = Z_OK;
    while (status == Z_OK) {
        stream.next_out = reinterpret_cast<Bytef*> (buffer.data ());
        stream.avail_out = buffer.size ();
        status = inflate (&stream, Z_NO_FLUSH);
        text.append (buffer.data (), buffer.size () - stream.avail_out);
    }
    const bool whole = status == Z_STREAM_END && stream.avail_in == 0;
    inflateEnd (&stream);
    return whole ? text : "(damaged)";
}

} // namespace ostrand::sweep
