// Serving each port of a description by the user port connected to it, although Aravis sends every
// register transfer to one device: registers of the second and further ports get a tag in high address
// bits that the device decodes.
#ifndef GENAPI_ENGINE_PORTROUTING_H
#define GENAPI_ENGINE_PORTROUTING_H

#include "XmlIndex.h"
#include <cstdint>
#include <map>
#include <string>

struct _xmlDoc;

namespace GenApiEngine {

struct SPortRouting {
    // Tag 0 is the main port ("Device", or the first port); further ports count up in document order.
    std::map<std::string, int> tags;
    // Bit position of the tag: the highest bits below the sign bit; 0 when nothing is tagged.
    int shift = 0;

    int tagOf(const std::string& portName) const;
    // The tag of a port as an address offset.
    int64_t offsetOf(const std::string& portName) const;
    bool tagged() const { return shift > 0; }
};

// Chooses tags for the ports of a description; leaves it untagged when it has one port, or when the tags
// would not fit above the addresses it writes.
SPortRouting routePorts(const CXmlIndex& index);

// Edits the parsed description into what Aravis should see: registers of tagged ports carry their tag as an
// extra Address, and tagged ports lose their ChunkID and EventID, so that their transfers reach the device.
void tagPortAddresses(_xmlDoc* document, const SPortRouting& routing);

}  // namespace GenApiEngine

#endif
