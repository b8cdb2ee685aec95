// IPort on a port node: user ports take the transfer directly, device maps go through Aravis.
#include "PortNode.h"
#include "NodeMapImpl.h"
#include <cinttypes>

using namespace GENAPI_NAMESPACE;

namespace GenApiEngine {

CPortNode::CPortNode(CNodeMapImpl& map, const SNodeDescription& description, ArvGcNode* arvNode)
    : CNodeBase(map, description, arvNode, intfIPort) {}

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
    InvalidateNode();
}

}  // namespace GenApiEngine
