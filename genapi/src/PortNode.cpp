// IPort on a port node: user ports take the transfer directly, device maps go through Aravis.
#include "PortNode.h"
#include "NodeMapImpl.h"
#include "PortDevice.h"
#include <cinttypes>

using namespace GENAPI_NAMESPACE;

namespace GenApiEngine {

CPortNode::CPortNode(CNodeMapImpl& map, const SNodeDescription& description)
    : CNodeBase(map, description, intfIPort) {}

GenICam::gcstring CPortNode::GetChunkID() const {
    return description().value("ChunkID").c_str();
}

EYesNo CPortNode::CacheChunkData() const {
    return description().value("CacheChunkData") == "Yes" ? Yes : No;
}

EAccessMode CPortNode::naturalAccessMode() const {
    if (IPort* port = map().userPort(name()))
        return port->GetAccessMode();
    // A chunk port waits for a chunk: it is there, but holds nothing yet.
    if (!description().value("ChunkID").empty())
        return NA;
    if (!map().servedByDevice())
        return NI;
    switch (map().deviceControl()) {
        case EDeviceControl::ControlledElsewhere:
            return RO;
        case EDeviceControl::Lost:
            return NA;
        default:
            return RW;
    }
}

void CPortNode::checkTransfer(const void* pBuffer, int64_t Length, const char* method) const {
    if (!pBuffer || Length < 0) {
        raise(EError::InvalidArgument, method, formatText("invalid buffer or length %" PRId64, Length));
    }
}

void CPortNode::Read(void* pBuffer, int64_t Address, int64_t Length) {
    CMapEntry entry(map());
    checkTransfer(pBuffer, Length, "Read");
    checkReadable("Read");
    if (IPort* port = map().userPort(name())) {
        try {
            port->Read(pBuffer, Address, Length);
        } catch (...) {
            rethrowPortError(std::current_exception(), name(), "Read");
        }
        return;
    }
    arvCall("Read", [&](GError** e) {
        return arv_device_read_memory(map().device(),
                                      static_cast<guint64>(Address + map().portOffset(name())),
                                      static_cast<guint32>(Length), pBuffer, e);
    });
}

void CPortNode::Write(const void* pBuffer, int64_t Address, int64_t Length) {
    CMapEntry entry(map());
    checkTransfer(pBuffer, Length, "Write");
    checkWritable("Write");
    if (IPort* port = map().userPort(name())) {
        try {
            port->Write(pBuffer, Address, Length);
        } catch (...) {
            rethrowPortError(std::current_exception(), name(), "Write");
        }
    } else {
        arvCall("Write", [&](GError** e) {
            return arv_device_write_memory(map().device(),
                                           static_cast<guint64>(Address + map().portOffset(name())),
                                           static_cast<guint32>(Length), const_cast<void*>(pBuffer), e);
        });
    }
    if (m_Recording)
        m_Recording->Write(pBuffer, Address, Length);
    InvalidateNode();
}

void CPortNode::Write(PORT_REGISTER_STACK_ENTRY* pEntries, size_t numEntries) {
    CMapEntry entry(map());
    if (!pEntries && numEntries > 0)
        raise(EError::InvalidArgument, "Write", "no entries");
    for (size_t i = 0; i < numEntries; ++i)
        Write(pEntries[i].pBuffer, static_cast<int64_t>(pEntries[i].Address),
              static_cast<int64_t>(pEntries[i].Size));
}

// Writes the list's entries through this port in their order, then tells the nodes behind it.
void CPortNode::Replay(IPortWriteList* pPortRecorder, bool Invalidate) {
    CMapEntry entry(map());
    if (pPortRecorder)
        pPortRecorder->Replay(this);
    if (Invalidate)
        InvalidateNode();
}

// Writes of the registers behind this port reach its user port through the map's device, so the device
// records them; the port's own writes are recorded here.
void CPortNode::StartRecording(IPortWriteList* pPortRecorder) {
    CMapEntry entry(map());
    recordThroughDevice(pPortRecorder);
    m_Recording = pPortRecorder;
}

void CPortNode::StopRecording() {
    CMapEntry entry(map());
    recordThroughDevice(nullptr);
    m_Recording = nullptr;
}

void CPortNode::recordThroughDevice(IPortWriteList* list) {
    IPort* port = map().userPort(name());
    ArvDevice* device = map().device();
    if (port && device && isPortDevice(device))
        setPortRecorder(device, port, list);
}

}  // namespace GenApiEngine
