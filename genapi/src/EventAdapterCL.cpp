// Event adapter for Camera Link: GenCP event packets behind the serial prefix.
#include <GenApi/GenApi.h>
#include <GenApi/EventAdapterCL.h>
#include "GenCpEvent.h"

using namespace GENAPI_NAMESPACE;

namespace {

// Preamble, CRC-16 of the command header, CRC-16 of the SCD, channel.
const size_t SerialPrefixSize = 8;
const uint16_t SerialPreamble = 0x0100;

}  // namespace

CEventAdapterCL::CEventAdapterCL(INodeMap* pNodeMap) : CEventAdapter(pNodeMap) {}

CEventAdapterCL::~CEventAdapterCL() {}

void CEventAdapterCL::DeliverMessage(const uint8_t msg[], uint32_t numBytes) {
    if (!msg || numBytes < SerialPrefixSize)
        throw RUNTIME_EXCEPTION("Malformed message - too small");
    const uint16_t preamble = GenApiEngine::littleEndian16(msg);
    if (preamble != SerialPreamble)
        throw RUNTIME_EXCEPTION("Malformed message - wrong preamble %04x (%04x expected)", preamble,
                                SerialPreamble);
    GenApiEngine::deliverGenCpEvent(*m_ppEventPorts, msg, numBytes, SerialPrefixSize);
}
