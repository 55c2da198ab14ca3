// Objects on their way from old places to new ones. The document has the new places all the time:
// what flies is a picture of it.
// Layer: editor (uses document).
#pragma once
#include "document/network.h"

#include <memory>
#include <unordered_map>
#include <vector>

namespace ostrand::editor {

/// Where everything stood.
struct FlightStart {
    explicit FlightStart (const document::Network& network);

    std::unordered_map<const document::Node*, document::Point> nodes;
    std::unordered_map<const document::Compart*, document::Extent> comparts;
};

class Flight {
  public:
    static constexpr double duration = 0.4;    // seconds
    static constexpr double next_wait = 0.016; // between two pictures

    /// From what stood at `start` to where the network's objects are. New clones come out of their
    /// species; objects that are gone are not seen.
    /// now  seconds, as `advance` takes them
    Flight (const document::Network& network, const FlightStart& start, double now);

    /// Brings the picture to a moment; false when the flight is over.
    bool advance (double now);
    /// The picture, laid out, with its origin where the document has it.
    const document::Network& picture (const document::Network& network) const;

  private:
    struct NodeWay {
        document::Point from;
        document::Point to;
    };
    struct BoxWay {
        document::Extent from;
        document::Extent to;
    };

    double begin_;
    std::unique_ptr<document::Network> picture_;
    std::vector<NodeWay> nodes_; // as in the picture
    std::vector<BoxWay> comparts_;
};

} // namespace ostrand::editor
